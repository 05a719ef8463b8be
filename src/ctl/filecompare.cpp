// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/filecompare.h"

#include "ctl/commandsupport.h"
#include "engine/textconv.h"
#include "model/parameter.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>

namespace {

std::string _text(QDomElement const &element)
{
    return _utf8(element.text());
}

std::vector<std::string> _itemTexts(QDomElement const &element)
{
    // The loader takes every child element as an item, whatever its tag.
    std::vector<std::string> items;
    for (QDomElement item = element.firstChildElement(); !item.isNull();
         item = item.nextSiblingElement())
        items.push_back(_text(item));
    return items;
}

Parameter const *_childByKey(ParameterComplex const *node, std::string const &key)
{
    for (Parameter const *child : node->getChildrenPtrs())
        if (child && child->getParameterKey() == key)
            return child;
    return nullptr;
}

std::string _listAllowed(ParameterList const *list)
{
    ParameterSimple::Fasets const fasets = list->getFasets();
    return "at least " + itemsText(static_cast<long long>(fasets.minValue)) + ", each "
        + allowedText(fasets, list->getSimpleType());
}

class _Comparer
{
public:
    explicit _Comparer(FileComparison &result) : _result(result) { }

    void run(ParameterComplex const *root, QDomElement const &fileRoot)
    {
        _rec_compare(root, fileRoot);
        _rec_findUnknown(root, fileRoot, std::string());
    }

private:
    void _rec_compare(ParameterComplex const *node, QDomElement const &element);
    void _rec_findUnknown(
        ParameterComplex const *node, QDomElement const &element, std::string const &prefix);
    void _compareSimple(ParameterSimple const *leaf, QDomElement const &element);
    void _compareList(ParameterList const *list, QDomElement const &element);
    void _take(Parameter const *node);

    FileComparison &_result;
};

void _Comparer::_take(Parameter const *node)
{
    for (ValueLine const &line : valueLines(node, true))
        _result.taken.push_back(line);
}

void _Comparer::_compareSimple(ParameterSimple const *leaf, QDomElement const &element)
{
    std::string const text = _text(element);
    if (text == leaf->getValue()) {
        _take(leaf);
        return;
    }
    _result.refused.push_back(pathOf(leaf) + " = " + text + "  # refused ("
        + allowedText(leaf->getFasets(), leaf->getSimpleType()) + "); kept: " + leaf->getValue());
}

void _Comparer::_compareList(ParameterList const *list, QDomElement const &element)
{
    std::vector<std::string> const items = _itemTexts(element);
    if (items == list->getValues()) {
        _take(list);
        return;
    }
    _result.refused.push_back(pathOf(list) + " = " + joined(items) + "  # refused ("
        + _listAllowed(list) + "); kept: " + joined(list->getValues()));
}

void _Comparer::_rec_compare(ParameterComplex const *node, QDomElement const &element)
{
    for (Parameter const *child : node->getChildrenPtrs()) {
        if (!child || child->getParameterKey().empty())
            continue;
        QDomElement const own
            = element.firstChildElement(_toQString(child->getParameterKey()));
        if (own.isNull()) {
            for (ValueLine const &line : valueLines(child, true))
                _result.lacking.push_back(line);
            continue;
        }
        switch (child->getGlobalType()) {
        case Parameter::GlobalType::Simple:
            _compareSimple(dynamic_cast<ParameterSimple const *>(child), own);
            break;
        case Parameter::GlobalType::List:
            _compareList(dynamic_cast<ParameterList const *>(child), own);
            break;
        case Parameter::GlobalType::ListTLEs:
            // Records are never refused: whatever could be read replaced the list.
            _take(child);
            break;
        case Parameter::GlobalType::Complex:
            _rec_compare(dynamic_cast<ParameterComplex const *>(child), own);
            break;
        }
    }
}

void _Comparer::_rec_findUnknown(
    ParameterComplex const *node, QDomElement const &element, std::string const &prefix)
{
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        std::string const key = _utf8(child.tagName());
        Parameter const *parameter = _childByKey(node, key);
        // Only the first element of a tag is read; later ones are passed over.
        bool const first = element.firstChildElement(child.tagName()) == child;
        if (parameter && first) {
            if (parameter->getGlobalType() == Parameter::GlobalType::Complex)
                _rec_findUnknown(
                    dynamic_cast<ParameterComplex const *>(parameter), child, prefix + key + "/");
            continue;
        }
        std::string line = prefix + key;
        line += child.firstChildElement().isNull() ? " = " + _text(child) : "/...";
        if (parameter)
            line += "  # repeated; only the first is read";
        _result.unknown.push_back(line);
    }
}

} // namespace

FileComparison compareFile(ParameterComplex const *root, QDomElement const &fileRoot)
{
    FileComparison result;
    if (!root || fileRoot.isNull())
        return result;
    _Comparer(result).run(root, fileRoot);
    return result;
}

bool readDocument(std::string const &path, QDomDocument &document)
{
    QFile file(_toQString(path));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return document.setContent(&file, false);
}
