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
    // with its editors, for as long as the stack lives (pinned by
    // onlyLastOfSeveralSearchPagesStaysInStack).
    if (_searchArea) {
        // Hidden before it is taken out, it is spared a useless repaint;
        // not while it holds the focus, which the next page must take over.
        if (currentWidget() == _searchArea
            && !_searchArea->isAncestorOf(QApplication::focusWidget()))
            _searchArea->hide();
        removeWidget(_searchArea);
        // Nothing shows it again; with updates off, later page switches skip it.
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
