// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QListView>
#include <QModelIndex>
#include <QObject>
#include <QString>
#include <QStringList>

class ParameterList;
class QItemSelectionModel;
class QStringListModel;

// The rows of a list parameter, one per item. Adding and deleting write
// through to the parameter at once.
class ListView : public QListView
{
    Q_OBJECT
    Q_DISABLE_COPY(ListView)

public:
    // The list is not owned.
    ListView(ParameterList *parameter, QWidget *parent);
    ~ListView() override;

    // Appends to parameter and view and selects the new row.
    void addItem(const QString &item);
    void addItems(const QStringList &items);
    // Removes the row and the item of the same index; nothing stays selected.
    void deleteItem(const QModelIndex &index);
    int getItemsAmount();
    // True at or below the list's minimum number of items.
    bool isWithMimimumItems();
    // The selected row, or an invalid index.
    QModelIndex getCurrentIndex();

signals:
    void sig_isSelected(bool selected);

public slots:
    // Rebuilds the rows from the parameter; the selection is lost.
    void sl_reinit();

private:
    void _setup();
    void _init(ParameterList *parameter);
    void _connect();
    void _initVListAndModel();

    ParameterList *_parameter;
    QStringListModel *_model;
    QItemSelectionModel *_selectionModel;
};
