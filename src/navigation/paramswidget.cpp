// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramswidget.h"

#include "navigation/paramsarea.h"

#include <QApplication>
#include <QScrollArea>

ParamsWidget::ParamsWidget(QWidget *parent) : QStackedWidget(parent)
{
    _setup();
    _init();
}

void ParamsWidget::setAreas(QMap<QModelIndex, ParamsArea *> *areas)
{
    _areas = areas;
    for (ParamsArea *page : qAsConst(*_areas)) {
        if (page)
            addWidget(page);
    }
}

void ParamsWidget::activeteArea(const QModelIndex &index)
{
    ParamsArea *page = getAreaPtr(index);
    if (page)
        setCurrentWidget(page);
    else
        activeteEmptyArea();
}

void ParamsWidget::activeteEmptyArea() { setCurrentWidget(_emptyArea); }

void ParamsWidget::activeteSearchArea()
{
    if (_searchArea)
        setCurrentWidget(_searchArea);
}

void ParamsWidget::setNewSearchArea(ParamsArea *area)
{
    // The replaced page is not deleted: it stays a hidden child of the stack,
    // with its editors, for as long as the stack lives.
    if (_searchArea) {
        // Taken out while on screen, the page would stay visible until the
        // stack has shown another one in its place, so that all its widgets
        // would be marked for repainting and then struck off again one by one.
        // Hidden first, it is spared that. Not when it holds the focus: its
        // hiding passes the focus on, and the page shown in its place must be
        // there to take it, as before.
        if (currentWidget() == _searchArea
            && !_searchArea->isAncestorOf(QApplication::focusWidget()))
            _searchArea->hide();
        removeWidget(_searchArea);
        // Nothing shows the page again. With its updates off, each later
        // change of page passes over it as a whole, where the stack would
        // otherwise switch the updates of all its editors off and on again.
        _searchArea->setUpdatesEnabled(false);
    }
    _searchArea = area;
    addWidget(area);
}

ParamsArea *ParamsWidget::getAreaPtr(const QModelIndex &index) const
{
    return _areas ? _areas->value(index, nullptr) : nullptr;
}

void ParamsWidget::_setup()
{
    _emptyArea = nullptr;
    _searchArea = nullptr;
    _areas = nullptr;
}

void ParamsWidget::_init()
{
    _emptyArea = new QScrollArea(this);
    addWidget(_emptyArea);
    activeteEmptyArea();
}
