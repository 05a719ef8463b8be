// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// Every value of a parameter tree by its key path, to tell whether a refused
// file changed anything, and whether some text got into any value.

#include "model/parameter.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace hostile {

using Snapshot = QMap<QString, QStringList>;

inline QString _fromUtf8(std::string const &text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

inline void _rec_snapshot(Snapshot &values, Parameter const *node, QString const &path)
{
    QString const nodePath = path + QStringLiteral("->") + _fromUtf8(node->getParameterKey());
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        values[nodePath] << _fromUtf8(dynamic_cast<ParameterSimple const *>(node)->getValue());
        break;
    case Parameter::GlobalType::List:
        for (std::string const &item : dynamic_cast<ParameterList const *>(node)->getValues())
            values[nodePath] << _fromUtf8(item);
        values[nodePath] << QStringLiteral("(end of list)");
        break;
    case Parameter::GlobalType::ListTLEs:
        for (ParameterListTLEs::TLE const &tle :
            dynamic_cast<ParameterListTLEs const *>(node)->getTLEs())
            values[nodePath] << _fromUtf8(tle.line0) << _fromUtf8(tle.line1)
                             << _fromUtf8(tle.line2);
        values[nodePath] << QStringLiteral("(end of records)");
        break;
    case Parameter::GlobalType::Complex:
        for (Parameter const *child :
            dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
            _rec_snapshot(values, child, nodePath);
        break;
    }
}

inline Snapshot snapshot(ParameterComplex const *root)
{
    Snapshot values;
    if (root)
        _rec_snapshot(values, root, QString());
    return values;
}

// The leaf at a path of keys below `root`, such as {"Observatory",
// "SiteName"}; null when there is none.
inline ParameterSimple *leafAt(ParameterComplex *root, std::vector<std::string> const &keys)
{
    Parameter *node = root;
    for (std::string const &key : keys) {
        auto *section = dynamic_cast<ParameterComplex *>(node);
        node = nullptr;
        for (Parameter *child : section ? section->getChildrenPtrs() : std::vector<Parameter *>()) {
            if (child && child->getParameterKey() == key) {
                node = child;
                break;
            }
        }
    }
    return dynamic_cast<ParameterSimple *>(node);
}

// The key paths whose values contain `text`.
inline QStringList pathsHolding(Snapshot const &values, QString const &text)
{
    QStringList paths;
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        if (entry.value().join(QLatin1Char('\n')).contains(text))
            paths << entry.key();
    }
    return paths;
}

// The display texts of every node (name, unit, documentation, source).
inline void _rec_visualTexts(QStringList &texts, Parameter const *node)
{
    Parameter::VisualParams const visual = node->getVisualParams();
    texts << _fromUtf8(visual.name_en) << _fromUtf8(visual.dimension)
          << _fromUtf8(visual.documentation) << _fromUtf8(visual.source);
    if (node->getGlobalType() == Parameter::GlobalType::Complex) {
        for (Parameter const *child :
            dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
            _rec_visualTexts(texts, child);
    }
}

inline QStringList visualTexts(ParameterComplex const *root)
{
    QStringList texts;
    if (root)
        _rec_visualTexts(texts, root);
    return texts;
}

} // namespace hostile
