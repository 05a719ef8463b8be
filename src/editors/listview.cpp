// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/listview.h"

#include "model/parameter.h"

#include <QItemSelectionModel>
#include <QStringListModel>

#include <string>
#include <vector>

ListView::ListView(ParameterList *parameter, QWidget *parent) : QListView(parent)
{
    _setup();
    _init(parameter);
    _connect();
}

ListView::~ListView() = default;

void ListView::_setup()
{
    _parameter = nullptr;
    _model = nullptr;
    _selectionModel = nullptr;
}

void ListView::_init(ParameterList *parameter)
{
    _parameter = parameter;
    _initVListAndModel();
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void ListView::_connect()
{
    // Only a click selects for the Delete button; keyboard moves say nothing.
    connect(this, &QAbstractItemView::clicked, this, [this]() { emit sig_isSelected(true); });
}

void ListView::_initVListAndModel()
{
    QStringList rows;
    for (const std::string &value : _parameter->getValues()) {
        // Latin-1 on reload, UTF-8 on add: a non-ASCII item reads differently
        // after a refresh, and that is kept as it is (pinned by
        // addItemKeepsNonAsciiButReloadShowsLatin1).
        rows.append(QString::fromLatin1(value.data(), static_cast<int>(value.size())));
    }
    if (_model && _model->stringList() == rows) {
        // Every tree selection reloads every list: rows that did not change
        // keep their model and are only brought to the state a new one has,
        // nothing selected, nothing current, scrolled to the top.
        _selectionModel->clear();
        scrollToTop();
        return;
    }
    delete _model;
    _model = new QStringListModel(this);
    _model->setStringList(rows);
    setModel(_model);
    _selectionModel = selectionModel();
}

void ListView::sl_reinit()
{
    _initVListAndModel();
}

void ListView::addItem(const QString &item)
{
    // A refused item still gets its row; view and list part until the next reload.
    _parameter->addValue(item.toStdString());
    const int row = _model->rowCount();
    _model->insertRows(row, 1);
    const QModelIndex index = _model->index(row, 0);
    _model->setData(index, item, Qt::EditRole);
    _selectionModel->select(index, QItemSelectionModel::ClearAndSelect);
    emit sig_isSelected(true);
}

void ListView::addItems(const QStringList &items)
{
    for (const QString &item : items)
        addItem(item);
}

void ListView::deleteItem(const QModelIndex &index)
{
    // An invalid index gives row -1, which both sides refuse.
    const int row = index.row();
    _parameter->removeValue(static_cast<unsigned int>(row));
    _model->removeRows(row, 1);
    _selectionModel->reset();
    emit sig_isSelected(false);
}

int ListView::getItemsAmount()
{
    return _model->rowCount();
}

bool ListView::isWithMimimumItems()
{
    // True below the minimum as well, despite the name (pinned by minimumRule).
    return static_cast<int>(_parameter->getFasets().minValue) >= getItemsAmount();
}

QModelIndex ListView::getCurrentIndex()
{
    const QModelIndexList selected = _selectionModel->selectedIndexes();
    return selected.isEmpty() ? QModelIndex() : selected.first();
}
