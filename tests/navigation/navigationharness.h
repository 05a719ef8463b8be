// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "navigation/filter.h"
#include "navigation/paramsarea.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"
#include "navigation/paramtitle.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>

class ParameterComplex;
class ParameterSimple;

// The search box, the tree, the heading and the stack wired the way the
// main window wires them, with its three slots for selection, search and
// reset, so that the chains between the widgets can be driven in a test.
class NavigationHarness : public QObject
{
    Q_OBJECT

public:
    NavigationHarness()
    {
        auto *layout = new QVBoxLayout(&window);
        filter = new Filter(&window);
        tree = new ParamsTree(&window);
        title = new ParamTitle(&window);
        stack = new ParamsWidget(&window);
        layout->addWidget(filter);
        layout->addWidget(tree);
        layout->addWidget(title);
        layout->addWidget(stack);

        // Same order as the main window: the page changes before the box is cleared.
        connect(tree, &ParamsTree::sig_itemSelected, this, &NavigationHarness::treeItemSelected);
        connect(filter, &Filter::sig_searchQuery, this, &NavigationHarness::searchAreaUpdate);
        connect(filter, &Filter::sig_reset, this, &NavigationHarness::resetWidgets);
        connect(tree, &ParamsTree::sig_itemSelected, filter, &Filter::sl_textForcedCleared);
    }

    // A load: rebuild, refresh, then select the first section.
    void open(ParameterComplex *root, const QString &service)
    {
        stack->setAreas(tree->createAreas(root, service));
        emit tree->sig_valuesUpdate();
        resetWidgets(true);
    }
    void close() { resetWidgets(false); }

    QModelIndex row(const QString &text) const
    {
        const QModelIndexList hits = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, text,
                                                          1, Qt::MatchExactly | Qt::MatchRecursive);
        return hits.isEmpty() ? QModelIndex() : hits.first();
    }
    QWidget *shown() const { return stack->currentWidget(); }

    QWidget window;
    Filter *filter = nullptr;
    ParamsTree *tree = nullptr;
    ParamTitle *title = nullptr;
    ParamsWidget *stack = nullptr;
    QList<ParameterSimple *> searchList;
    QList<ParamsArea *> searchPages;

public slots:
    void treeItemSelected(const QModelIndex &index)
    {
        stack->activeteArea(index);
        ParamsArea *page = stack->getAreaPtr(index);
        title->setText(page ? page->getAreaName() : QString());
        emit tree->sig_valuesUpdate();
    }

    void searchAreaUpdate(const QString &text)
    {
        tree->unselectItems();
        auto *page = new ParamsArea(searchList, text, "Search results", nullptr);
        searchPages << page;
        stack->setNewSearchArea(page);
        stack->activeteSearchArea();
        title->setText("Search results");
    }

    void resetWidgets(bool isOpened)
    {
        if (isOpened) {
            tree->selectItem(tree->getFirstIndexItem());
            return;
        }
        tree->unselectItems();
        title->setEmptyText();
        stack->activeteEmptyArea();
    }
};
