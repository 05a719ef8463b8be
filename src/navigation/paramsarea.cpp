// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramsarea.h"

#include "editors/paramsimple.h"
#include "model/parameter.h"

#include <QGridLayout>
#include <QStandardItem>
#include <QVBoxLayout>

#include <string>
#include <vector>

ParamsArea::ParamsArea(const QList<ParameterSimple *> &params, QStandardItem *item, const QString &name,
                       QWidget *parent)
    : QScrollArea(parent)
{
    _setup();
    _init(params, item, name);
    _connect();
}

ParamsArea::ParamsArea(ParameterListTLEs *list, QStandardItem *item, const QString &service, QWidget *parent)
    : QScrollArea(parent)
{
    _setup();
    _init(list, item, service);
    _connect();
}

ParamsArea::ParamsArea(ParameterComplex *section, QStandardItem *item, const QString &service,
                       QWidget *parent)
    : QScrollArea(parent)
{
    _setup();
    _init(section, item, service);
    _connect();
}

ParamsArea::ParamsArea(const QList<ParameterSimple *> &params, const QString &filter, const QString &name,
                       QWidget *parent)
    : QScrollArea(parent)
{
    _setup();
    _init(params, filter, name);
    _connect();
}

ParameterComplex *ParamsArea::getParameterPtr() const { return _parameter; }

QStandardItem *ParamsArea::getItemPtr() const { return _item; }

ParamsArea::AreaType ParamsArea::getType() const { return _type; }

QString ParamsArea::getAreaName() const { return _areaName; }

void ParamsArea::sl_scrollup() { ensureVisible(0, 0, 50, 50); }

// Kept for a later use: nothing is connected to either end yet (pinned by
// serviceChangeIsOnlyPassedOn).
void ParamsArea::sl_serviceChenged(const QString &service) { emit sig_serviceChenged(service); }

void ParamsArea::_setup()
{
    _parameter = nullptr;
    _paramSimples.clear();
    _item = nullptr;
    _service.clear();
    _type = AreaEmpty;
    _areaName.clear();
}

void ParamsArea::_init(const QList<ParameterSimple *> &params, QStandardItem *item, const QString &name)
{
    _item = item;
    _type = AreaParams;
    _areaName = name;
    _createArea_byList(params);
}

void ParamsArea::_init(ParameterListTLEs *list, QStandardItem *item, const QString &service)
{
    _item = item;
    _service = service;
    _type = AreaParams;
    _createArea_TLE(list);
}

void ParamsArea::_init(ParameterComplex *section, QStandardItem *item, const QString &service)
{
    _parameter = section;
    _item = item;
    _service = service;
    _initType();
    _createArea();
}

void ParamsArea::_init(const QList<ParameterSimple *> &params, const QString &filter, const QString &name)
{
    _type = AreaParams;
    _areaName = name;
    _createArea_byList(_selectSublist(params, filter));
}

void ParamsArea::_connect()
{
    // Made after the editors' connections: on a refresh the editors reload
    // first and the page scrolls back to its top afterwards.
    connect(this, &ParamsArea::sig_valuesUpdate, this, &ParamsArea::sl_scrollup);
}

void ParamsArea::_initType()
{
    _type = AreaEmpty;
    if (!_parameter)
        return;
    const std::vector<Parameter *> children = _parameter->getChildrenPtrs();
    if (children.empty())
        return;

    int complexCount = 0;
    int otherCount = 0;
    for (const Parameter *child : children) {
        if (child && child->getGlobalType() == Parameter::GlobalType::Complex)
            ++complexCount;
        else
            ++otherCount;
    }

    if (otherCount == 0)
        _type = AreaSections;
    else if (complexCount > 0)
        _type = AreaMixed;
    else
        _type = AreaParams;
}

void ParamsArea::_createArea()
{
    // A section that only groups others returns before its name is taken:
    // it shows a blank page under a blank heading, on purpose (pinned by
    // sectionWithOnlySubsectionsHasBlankPageAndHeading).
    if (_type == AreaEmpty || _type == AreaSections || !_parameter)
        return;
    const std::vector<Parameter *> children = _parameter->getChildrenPtrs();
    if (children.empty())
        return;

    QWidget *holder = _createHolder();
    QVBoxLayout *layout = static_cast<QVBoxLayout *>(holder->layout());
    const std::string service = _service.toStdString();
    for (Parameter *child : children) {
        // A complex child has a page of its own; a TLE list is edited here too.
        if (!child || child->getGlobalType() == Parameter::GlobalType::Complex)
            continue;
        ParameterSimple *simple = dynamic_cast<ParameterSimple *>(child);
        if (!simple || !simple->isVisible(service))
            continue;
        ParamSimple *editor = new ParamSimple(simple, nullptr);
        layout->addWidget(editor, 0, Qt::Alignment());
        _addEditor(editor);
    }

    _areaName = QString::fromStdString(_parameter->getVisualParams().name_en);
    setWidget(holder);
}

void ParamsArea::_createArea_byList(const QList<ParameterSimple *> &params)
{
    // Without a hit the page has no content widget and shows blank.
    if (params.isEmpty())
        return;

    QWidget *holder = _createHolder();
    QVBoxLayout *layout = static_cast<QVBoxLayout *>(holder->layout());
    // The list comes filtered: no visibility test here.
    for (ParameterSimple *param : params) {
        ParamSimple *editor = new ParamSimple(param, nullptr);
        layout->addWidget(editor, 0, Qt::Alignment());
        _addEditor(editor);
    }
    setWidget(holder);
}

void ParamsArea::_createArea_TLE(ParameterListTLEs *list)
{
    if (!list)
        return;

    // A stand-alone node that only carries the page's name; it is outside the
    // parameter tree and deliberately never freed.
    _parameter = new ParameterComplex(nullptr, list->getParameterKey(), list->getVisualParams());

    ParamSimple *editor = new ParamSimple(list, nullptr);
    // The layout sits on the page itself: the editor fills the page and the
    // TLE editor's own text areas do the scrolling.
    QGridLayout *layout = new QGridLayout(this);
    layout->addWidget(editor);
    _addEditor(editor);

    _areaName = QString::fromStdString(_parameter->getVisualParams().name_en);
}

QList<ParameterSimple *> ParamsArea::_selectSublist(const QList<ParameterSimple *> &params,
                                                    const QString &filter) const
{
    const QString needle = filter.toLower();
    QList<ParameterSimple *> hits;
    for (ParameterSimple *param : params) {
        if (!param)
            continue;
        const QString key = QString::fromStdString(param->getParameterKey()).toLower();
        if (key.contains(needle, Qt::CaseSensitive)) {
            hits.append(param);
            continue;
        }
        const QString name = QString::fromStdString(param->getVisualParams().name_en).toLower();
        if (name.contains(needle, Qt::CaseSensitive))
            hits.append(param);
    }
    return hits;
}

QWidget *ParamsArea::_createHolder()
{
    // Widget-resizable stays off: the holder keeps the size its layout asks
    // for, and the scroll bars appear when it is larger than the page.
    QWidget *holder = new QWidget(nullptr);
    QVBoxLayout *layout = new QVBoxLayout(holder);
    layout->setContentsMargins(25, 25, 25, 25);
    layout->setSpacing(20);
    return holder;
}

void ParamsArea::_addEditor(ParamSimple *editor)
{
    _paramSimples.append(editor);
    connect(this, &ParamsArea::sig_valuesUpdate, editor, &ParamSimple::sig_update);
    connect(editor, &ParamSimple::sig_chenged, this, &ParamsArea::sig_parametersChenged);
}
