// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QModelIndex>
#include <QStackedWidget>

class ParamsArea;
class QScrollArea;

// The stack that shows one page at a time: a blank page, the pages of the
// section tree, and the latest search page.
class ParamsWidget : public QStackedWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(ParamsWidget)

public:
    explicit ParamsWidget(QWidget *parent);
    ~ParamsWidget() override = default;

    // Keeps the map (owned by the section tree) and adds its pages in key
    // order. Removes nothing: pages of an earlier build left the stack when
    // they were deleted. areas must not be null.
    void setAreas(QMap<QModelIndex, ParamsArea *> *areas);
    // Shows the page of index, or the blank page when it has none.
    void activeteArea(const QModelIndex &index);
    void activeteEmptyArea();
    // Shows the search page; nothing happens before the first search.
    void activeteSearchArea();
    // Puts area in place of the current search page without showing it.
    void setNewSearchArea(ParamsArea *area);
    // Null when the index has no page.
    ParamsArea *getAreaPtr(const QModelIndex &index) const;

private:
    void _setup();
    void _init();

    QScrollArea *_emptyArea;
    ParamsArea *_searchArea;
    QMap<QModelIndex, ParamsArea *> *_areas;
};
