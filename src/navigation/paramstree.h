// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QMap>
#include <QModelIndex>
#include <QString>
#include <QTreeView>

class ParamsArea;
class ParameterComplex;
class QItemSelectionModel;
class QStandardItem;
class QStandardItemModel;

// The tree of sections on the left. One build makes both the items and a
// page for each item; any change of tree or service rebuilds everything.
class ParamsTree : public QTreeView
{
    Q_OBJECT
    Q_DISABLE_COPY(ParamsTree)

public:
    explicit ParamsTree(QWidget *parent);
    ~ParamsTree() override;

    // Throws the old build away and makes items and pages for the sections
    // of root that are visible for service. Returns the map from item index
    // to page, owned by the tree; null for a null root.
    QMap<QModelIndex, ParamsArea *> *createAreas(ParameterComplex *root, const QString &service);

    // Emits clicked(index) so the whole page-switch chain runs, then selects
    // the row. Valid only after a build.
    void selectItem(const QModelIndex &index);
    void selectFirstItem();
    // Clears the selection; the current page is left alone.
    void unselectItems();

    QMap<QModelIndex, ParamsArea *> *getAreasPtrs();
    // Null when the index has no page.
    ParamsArea *getAreaPtr(const QModelIndex &index) const;
    // Invalid while there are no pages.
    QModelIndex getFirstIndexItem() const;
    // The first selected index; invalid when nothing is selected.
    QModelIndex getCurrentIndex() const;
    // Heading of the selected page; a null string when it has no page.
    QString getCurrentAreaName() const;

signals:
    void sig_valuesUpdate();
    void sig_parametersChenged();
    void sig_itemSelected(const QModelIndex &index);

private:
    void _setup();
    void _init();
    void _connect();
    void _createGeneralArea(ParameterComplex *root, const QString &service);
    void _clear();

    ParameterComplex *_root;
    QStandardItemModel *_model;
    QItemSelectionModel *_selectionModel;
    QMap<QModelIndex, ParamsArea *> *_areasMap;
    QList<QStandardItem *> _items;
    QList<ParamsArea *> _areas;
    QObject *_extra;
    QModelIndex _firstIndex;
    bool _isInit;
};
