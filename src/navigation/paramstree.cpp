// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramstree.h"

#include "model/parameter.h"
#include "navigation/paramsarea.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QStandardItem>
#include <QStandardItemModel>

#include <string>
#include <vector>

namespace {

// Re-emits one of the view's own item signals as sig_itemSelected.
class ItemSelectedEmitter
{
public:
    explicit ItemSelectedEmitter(ParamsTree *tree) : _tree(tree) {}
    void operator()(const QModelIndex &index) const { emit _tree->sig_itemSelected(index); }

private:
    ParamsTree *_tree;
};

} // namespace

// Gathers the importance-0 leaves below node, depth first in schema order,
// for the "GENERAL" page. TLE lists never go there.
static void _rec_selectGeneralParams(QList<ParameterSimple *> &params, const QString &service,
                                     const ParameterComplex *node)
{
    // A hidden section hides its whole subtree from this page.
    for (ParameterSimple *leaf : node->getVisibleLeaves(service.toStdString())) {
        if (leaf->getVisualParams().importance == 0)
            params.append(leaf);
    }
}

// Every visible section with a visible leaf below it, and every visible TLE
// list, becomes an item with a page; a parent's page comes before those of
// its descendants.
static void _rec_createAreas(QList<QStandardItem *> &items, QList<ParamsArea *> &areas,
                             const QString &service, const std::vector<Parameter *> &children)
{
    const std::string serviceText = service.toStdString();
    for (Parameter *child : children) {
        if (!child || !child->isVisible(serviceText))
            continue;
        switch (child->getGlobalType()) {
        case Parameter::GlobalType::Complex: {
            ParameterComplex *complex = dynamic_cast<ParameterComplex *>(child);
            if (!complex || !complex->isVisible_rec(serviceText))
                continue;
            // No fall-back to the key: a section without a name shows an empty row.
            QStandardItem *item =
                new QStandardItem(QString::fromStdString(complex->getVisualParams().name_en));
            items.append(item);
            areas.append(new ParamsArea(complex, item, service, nullptr));

            QList<QStandardItem *> subItems;
            _rec_createAreas(subItems, areas, service, complex->getChildrenPtrs());
            for (QStandardItem *subItem : subItems)
                item->insertRow(item->rowCount(), subItem);
            break;
        }
        case Parameter::GlobalType::ListTLEs: {
            ParameterListTLEs *list = dynamic_cast<ParameterListTLEs *>(child);
            if (!list)
                continue;
            QStandardItem *item = new QStandardItem(QString::fromStdString(list->getVisualParams().name_en));
            items.append(item);
            areas.append(new ParamsArea(list, item, service, nullptr));
            break;
        }
        case Parameter::GlobalType::Simple:
        case Parameter::GlobalType::List:
            break; // edited on its parent's page
        }
    }
}

ParamsTree::ParamsTree(QWidget *parent) : QTreeView(parent)
{
    _setup();
    _init();
    _connect();
}

// Only the two lists go with the tree. The pages die with the stack that
// holds them; the model and the map are left to the end of the process.
ParamsTree::~ParamsTree() = default;

QMap<QModelIndex, ParamsArea *> *ParamsTree::createAreas(ParameterComplex *root, const QString &service)
{
    _clear();
    if (!root)
        return _areasMap;

    _root = root;
    _model = new QStandardItemModel(nullptr);
    _areasMap = new QMap<QModelIndex, ParamsArea *>();

    _createGeneralArea(root, service);
    _rec_createAreas(_items, _areas, service, root->getChildrenPtrs());

    // Items go into the model before any index is taken: an index is only
    // right once its item sits in the model.
    for (QStandardItem *item : qAsConst(_items))
        _model->appendRow(item);

    for (ParamsArea *page : qAsConst(_areas)) {
        _areasMap->insert(page->getItemPtr()->index(), page);
        connect(this, &ParamsTree::sig_valuesUpdate, page, &ParamsArea::sig_valuesUpdate);
        connect(page, &ParamsArea::sig_parametersChenged, this, &ParamsTree::sig_parametersChenged);
    }
    if (!_areas.isEmpty())
        _firstIndex = _areas.first()->getItemPtr()->index();

    setModel(_model);
    _selectionModel = selectionModel();
    expandAll();
    _isInit = true;
    return _areasMap;
}

void ParamsTree::selectItem(const QModelIndex &index)
{
    // clicked first, so the page switch and everything behind it run before
    // the row shows as selected.
    emit clicked(index);
    _selectionModel->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void ParamsTree::selectFirstItem() { selectItem(_firstIndex); }

void ParamsTree::unselectItems()
{
    if (_selectionModel)
        _selectionModel->clearSelection();
}

QMap<QModelIndex, ParamsArea *> *ParamsTree::getAreasPtrs() { return _areasMap; }

ParamsArea *ParamsTree::getAreaPtr(const QModelIndex &index) const
{
    return _areasMap ? _areasMap->value(index, nullptr) : nullptr;
}

QModelIndex ParamsTree::getFirstIndexItem() const { return _firstIndex; }

QModelIndex ParamsTree::getCurrentIndex() const
{
    if (!_selectionModel)
        return QModelIndex();
    const QModelIndexList selected = _selectionModel->selectedIndexes();
    return selected.isEmpty() ? QModelIndex() : selected.first();
}

QString ParamsTree::getCurrentAreaName() const
{
    const ParamsArea *page = getAreaPtr(getCurrentIndex());
    return page ? page->getAreaName() : QString();
}

void ParamsTree::_setup()
{
    _root = nullptr;
    _model = nullptr;
    _selectionModel = nullptr;
    _areasMap = nullptr;
    _items.clear();
    _areas.clear();
    _extra = nullptr;
    _firstIndex = QModelIndex();
    _isInit = false;
}

void ParamsTree::_init()
{
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAlternatingRowColors(true);
    header()->setStretchLastSection(true);
    header()->setDefaultAlignment(Qt::AlignCenter);
    header()->hide();
}

void ParamsTree::_connect()
{
    // Every way of choosing an item ends in sig_itemSelected; one gesture may
    // emit it more than once, and the receivers cope with that.
    connect(this, &QAbstractItemView::clicked, this, ItemSelectedEmitter(this));
    connect(this, &QAbstractItemView::activated, this, ItemSelectedEmitter(this));
    connect(this, &QAbstractItemView::doubleClicked, this, ItemSelectedEmitter(this));
    connect(this, &QAbstractItemView::entered, this, ItemSelectedEmitter(this));
}

void ParamsTree::_createGeneralArea(ParameterComplex *root, const QString &service)
{
    QList<ParameterSimple *> params;
    _rec_selectGeneralParams(params, service, root);
    if (params.isEmpty())
        return;

    QStandardItem *item = new QStandardItem("GENERAL");
    ParamsArea *page = new ParamsArea(params, item, "GENERAL", nullptr);
    // Both lists are still empty and all later entries are appended, so
    // "GENERAL" is always the first item and the first page.
    _items.prepend(item);
    _areas.prepend(page);
}

void ParamsTree::_clear()
{
    if (!_isInit)
        return;
    // A deleted page leaves the stack of pages by itself.
    for (ParamsArea *page : qAsConst(_areas))
        delete page;
    _areasMap->clear();
    delete _areasMap;
    delete _model; // with all its items
    delete _extra;
    _setup();
}
