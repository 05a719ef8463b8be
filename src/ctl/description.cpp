// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/description.h"

#include "ctl/commandsupport.h"
#include "ctl/configtree.h"
#include "ctl/jsonvalues.h"
#include "engine/textconv.h"

namespace {

bool _isNumeric(ParameterSimple::SimpleType type)
{
    return type == ParameterSimple::Integer || type == ParameterSimple::Decimal;
}

void _describeLeaf(Description &description, ParameterSimple const *leaf)
{
    ParameterSimple::Fasets const fasets = leaf->getFasets();
    description.kind = "value";
    description.type = typeName(leaf->getSimpleType());
    description.allowed = allowedText(fasets, leaf->getSimpleType());
    description.enumeration = fasets.enumeration;
    // Only numbers are held against the bounds, and only without an enumeration.
    if (_isNumeric(leaf->getSimpleType()) && fasets.enumeration.empty()) {
        description.minimum = fasets.minValue;
        description.maximum = fasets.maxValue;
    }
}

void _describeList(Description &description, ParameterList const *list)
{
    ParameterSimple::Fasets const fasets = list->getFasets();
    description.kind = "list";
    description.type = typeName(list->getSimpleType());
    description.itemTag = list->getListKey();
    // The least count bounds the numbers of the items too, as the schema reader makes it.
    description.allowed = "at least " + itemsText(static_cast<long long>(fasets.minValue))
        + ", each " + allowedText(fasets, list->getSimpleType());
    description.minimum = static_cast<double>(static_cast<long long>(fasets.minValue));
}

std::string _defaultText(ParameterValue const &value)
{
    switch (value.kind) {
    case ParameterValue::Simple:
        break;
    case ParameterValue::List:
        return value.values.empty() ? std::string("(no items)") : joined(value.values);
    case ParameterValue::TLEs: {
        std::vector<std::string> names;
        for (ParameterListTLEs::TLE const &tle : value.sets)
            names.push_back(tle.line0);
        std::size_t const count = value.sets.size();
        if (count == 0)
            return "(no sets)";
        return std::to_string(count) + (count == 1 ? " set: " : " sets: ") + joined(names);
    }
    }
    return value.value;
}

void _field(std::vector<std::string> &lines, std::string const &name, std::string const &text)
{
    if (!text.empty())
        lines.push_back("  " + name + ": " + text);
}

QJsonValue _number(std::optional<double> const &number)
{
    return number ? QJsonValue(*number) : QJsonValue(QJsonValue::Null);
}

} // namespace

std::vector<std::string> servicesOf(Parameter const *node, std::string *from)
{
    for (Parameter const *up = node; up; up = up->getParantPtr()) {
        std::vector<std::string> const services = up->getVisualParams().services;
        if (services.empty())
            continue;
        if (from && up != node)
            *from = pathOf(up);
        return services;
    }
    return {};
}

Description describeNode(Parameter const *node)
{
    Description description;
    Parameter::VisualParams const visual = node->getVisualParams();
    description.path = pathOf(node);
    description.name = visual.name_en;
    description.unit = visual.dimension;
    description.documentation = visual.documentation;
    description.source = visual.source;
    description.services = servicesOf(node, &description.servicesFrom);
    description.importance = visual.importance;
    description.visible = visual.isvisible;
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        _describeLeaf(description, dynamic_cast<ParameterSimple const *>(node));
        break;
    case Parameter::GlobalType::List:
        _describeList(description, dynamic_cast<ParameterList const *>(node));
        break;
    case Parameter::GlobalType::ListTLEs:
        description.kind = "tle-list";
        description.type = typeName(ParameterSimple::TLE);
        description.itemTag = dynamic_cast<ParameterListTLEs const *>(node)->getListKey();
        description.allowed = "element sets that the TLE checker passes";
        break;
    case Parameter::GlobalType::Complex:
        description.kind = "section";
        break;
    }
    return description;
}

std::vector<std::string> descriptionLines(Description const &description)
{
    std::vector<std::string> lines { description.path };
    _field(lines, "Name", description.name);
    std::string type = description.kind == "section" ? std::string("section") : description.type;
    if (description.kind == "list")
        type = "list of " + description.type + ", items <" + description.itemTag + ">";
    if (description.kind == "tle-list")
        type = "TLE list, records <" + description.itemTag + ">";
    _field(lines, "Type", type);
    _field(lines, "Allowed", description.allowed);
    _field(lines, "Unit", description.unit);
    for (auto const &entry : description.defaults)
        lines.push_back("  Default (" + entry.first + "): " + _defaultText(entry.second));
    _field(lines, "Documentation", description.documentation);
    _field(lines, "Source", description.source);
    std::string services
        = description.services.empty() ? std::string("all") : joined(description.services);
    if (!description.servicesFrom.empty())
        services += " (of the section " + description.servicesFrom + ")";
    _field(lines, "Services", services);
    _field(lines, "Importance", std::to_string(description.importance));
    _field(lines, "Visible", description.visible ? "yes" : "no");
    return lines;
}

QJsonObject jsonDescription(Description const &description, bool withDefaults)
{
    QJsonObject object { { QStringLiteral("path"), jsonText(description.path) },
        { QStringLiteral("name"), jsonText(description.name) },
        { QStringLiteral("kind"), jsonText(description.kind) },
        { QStringLiteral("type"), jsonText(description.type) },
        { QStringLiteral("allowed"), jsonText(description.allowed) },
        { QStringLiteral("unit"), jsonText(description.unit) },
        { QStringLiteral("minimum"), _number(description.minimum) },
        { QStringLiteral("maximum"), _number(description.maximum) },
        { QStringLiteral("enumeration"), jsonTexts(description.enumeration) },
        { QStringLiteral("documentation"), jsonText(description.documentation) },
        { QStringLiteral("source"), jsonText(description.source) },
        { QStringLiteral("services"), jsonTexts(description.services) },
        { QStringLiteral("importance"), description.importance },
        { QStringLiteral("visible"), description.visible } };
    if (!description.itemTag.empty())
        object.insert(QStringLiteral("item"), jsonText(description.itemTag));
    if (withDefaults) {
        QJsonObject defaults;
        for (auto const &entry : description.defaults)
            defaults.insert(_toQString(entry.first), jsonValueOf(entry.second));
        object.insert(QStringLiteral("defaults"), defaults);
    }
    return object;
}
