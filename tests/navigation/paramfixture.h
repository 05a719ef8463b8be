// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "editors/paramsimple.h"
#include "model/parameter.h"

#include <QList>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Builders for small parameter trees, made straight with the model's
// constructors. A child links itself into its parent, and the root owns all.
namespace fixture {

struct Look
{
    Look(std::string name_, int importance_ = 2, bool visible_ = true,
         std::vector<std::string> services_ = {}, std::string doc_ = {})
        : name(std::move(name_)),
          importance(importance_),
          visible(visible_),
          services(std::move(services_)),
          doc(std::move(doc_))
    {}

    std::string name;
    int importance;
    bool visible;
    std::vector<std::string> services;
    std::string doc;
};

inline Parameter::VisualParams visual(const Look &look)
{
    Parameter::VisualParams vp;
    vp.name_en = look.name;
    vp.importance = look.importance;
    vp.isvisible = look.visible;
    vp.services = look.services;
    vp.documentation = look.doc;
    return vp;
}

inline std::unique_ptr<ParameterComplex> root()
{
    return std::make_unique<ParameterComplex>(nullptr, "config", Parameter::VisualParams());
}

inline ParameterComplex *section(ParameterComplex *parent, const std::string &key, const Look &look)
{
    return new ParameterComplex(parent, key, visual(look));
}

inline ParameterSimple *leaf(ParameterComplex *parent, const std::string &key, const Look &look,
                             ParameterSimple::SimpleType type = ParameterSimple::Boolean)
{
    return new ParameterSimple(parent, key, visual(look), type, ParameterSimple::Fasets());
}

inline ParameterList *list(ParameterComplex *parent, const std::string &key, const Look &look)
{
    return new ParameterList(parent, key, "item", visual(look), ParameterSimple::String,
                             ParameterSimple::Fasets());
}

inline ParameterListTLEs *tles(ParameterComplex *parent, const std::string &key, const Look &look)
{
    return new ParameterListTLEs(parent, key, "TLE", visual(look));
}

// The rows of a model as "A{B|C}|D": children in braces, siblings split by "|".
inline QString rowsOf(const QStandardItem *parent)
{
    QStringList rows;
    for (int r = 0; r < parent->rowCount(); ++r) {
        const QStandardItem *item = parent->child(r);
        QString row = item->text();
        if (item->rowCount() > 0)
            row += "{" + rowsOf(item) + "}";
        rows << row;
    }
    return rows.join("|");
}

inline QString rowsOf(const QStandardItemModel *model)
{
    return model ? rowsOf(model->invisibleRootItem()) : QString("<no model>");
}

// What the editors of a widget edit, told by their tool tips (the title of
// each parameter), in layout order.
inline QStringList editorTitles(const QWidget *page)
{
    QStringList titles;
    for (const ParamSimple *editor : page->findChildren<ParamSimple *>())
        titles << editor->toolTip();
    return titles;
}

} // namespace fixture
