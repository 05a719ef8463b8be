// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QScrollArea>
#include <QString>

class ParamSimple;
class ParameterComplex;
class ParameterListTLEs;
class ParameterSimple;
class QStandardItem;

// One page of editors: a scrollable column of ParamSimple frames. The
// editors are built once, at construction, from the parameters as they stand.
class ParamsArea : public QScrollArea
{
    Q_OBJECT
    Q_DISABLE_COPY(ParamsArea)

public:
    // What the section holds, counting direct children whatever their visibility.
    enum AreaType { AreaEmpty = 0, AreaParams = 1, AreaSections = 2, AreaMixed = 3 };

    // A page of a ready list, such as "GENERAL".
    ParamsArea(const QList<ParameterSimple *> &params, QStandardItem *item, const QString &name,
               QWidget *parent);
    // The page of a TLE list: its one editor fills the page.
    ParamsArea(ParameterListTLEs *list, QStandardItem *item, const QString &service, QWidget *parent);
    // The page of a section: its visible non-complex children in schema order.
    ParamsArea(ParameterComplex *section, QStandardItem *item, const QString &service, QWidget *parent);
    // A search page: the parameters of params whose key or name holds filter.
    ParamsArea(const QList<ParameterSimple *> &params, const QString &filter, const QString &name,
               QWidget *parent);
    ~ParamsArea() override = default;

    ParameterComplex *getParameterPtr() const;
    QStandardItem *getItemPtr() const;
    AreaType getType() const;
    QString getAreaName() const;

signals:
    void sig_valuesUpdate();
    void sig_parametersChenged();
    void sig_serviceChenged(const QString &service);

public slots:
    void sl_scrollup();
    void sl_serviceChenged(const QString &service);

private:
    void _setup();
    void _init(const QList<ParameterSimple *> &params, QStandardItem *item, const QString &name);
    void _init(ParameterListTLEs *list, QStandardItem *item, const QString &service);
    void _init(ParameterComplex *section, QStandardItem *item, const QString &service);
    void _init(const QList<ParameterSimple *> &params, const QString &filter, const QString &name);
    void _connect();

    void _initType();
    void _createArea();
    void _createArea_byList(const QList<ParameterSimple *> &params);
    void _createArea_TLE(ParameterListTLEs *list);
    QList<ParameterSimple *> _selectSublist(const QList<ParameterSimple *> &params,
                                            const QString &filter) const;

    QWidget *_createHolder();
    void _addEditor(ParamSimple *editor);

    ParameterComplex *_parameter;
    QList<ParamSimple *> _paramSimples;
    QStandardItem *_item;
    QString _service;
    AreaType _type;
    QString _areaName;
};
