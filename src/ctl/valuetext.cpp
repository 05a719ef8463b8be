// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/valuetext.h"

#include "ctl/configtree.h"

#include <cmath>
#include <cstdlib>
#include <locale>
#include <sstream>

namespace {

// Bounds truncated toward zero, as checkValue holds integers against them.
long long _truncated(double bound)
{
    if (std::isnan(bound))
        return 0;
    if (bound >= 2147483647.0)
        return 2147483647;
    if (bound <= -2147483648.0)
        return -2147483648LL;
    return static_cast<long long>(bound);
}

void _rec_appendValues(std::vector<ParameterValue> &values, Parameter const *node)
{
    if (!node)
        return;
    ParameterValue value;
    value.path = pathOf(node);
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple: {
        auto const *leaf = dynamic_cast<ParameterSimple const *>(node);
        value.type = typeName(leaf->getSimpleType());
        value.value = leaf->getValue();
        break;
    }
    case Parameter::GlobalType::List: {
        auto const *list = dynamic_cast<ParameterList const *>(node);
        value.kind = ParameterValue::List;
        value.type = typeName(list->getSimpleType());
        value.values = list->getValues();
        break;
    }
    case Parameter::GlobalType::ListTLEs:
        value.kind = ParameterValue::TLEs;
        value.type = typeName(ParameterSimple::TLE);
        value.sets = dynamic_cast<ParameterListTLEs const *>(node)->getTLEs();
        break;
    case Parameter::GlobalType::Complex:
        for (Parameter const *child :
            dynamic_cast<ParameterComplex const *>(node)->getChildrenPtrs())
            _rec_appendValues(values, child);
        return;
    }
    values.push_back(std::move(value));
}

bool _allDigits(std::string const &text)
{
    if (text.empty())
        return false;
    for (char c : text)
        if (c < '0' || c > '9')
            return false;
    return true;
}

} // namespace

bool operator==(ValueLine const &left, ValueLine const &right)
{
    return left.key == right.key && left.value == right.value;
}

std::string toText(ValueLine const &line)
{
    return line.key + " = " + line.value;
}

std::vector<ParameterValue> parameterValues(Parameter const *node)
{
    std::vector<ParameterValue> values;
    _rec_appendValues(values, node);
    return values;
}

std::vector<ValueLine> linesOf(ParameterValue const &value, bool emptyListLine)
{
    std::vector<ValueLine> lines;
    std::size_t const count
        = value.kind == ParameterValue::List ? value.values.size() : value.sets.size();
    if (value.kind == ParameterValue::Simple)
        lines.push_back({ value.path, value.value });
    else if (count == 0 && emptyListLine)
        lines.push_back({ value.path, std::string() });
    for (std::size_t i = 0; i < count; ++i) {
        std::string const key = value.path + "[" + std::to_string(i) + "]";
        if (value.kind == ParameterValue::List) {
            lines.push_back({ key, value.values[i] });
            continue;
        }
        ParameterListTLEs::TLE const &tle = value.sets[i];
        lines.push_back({ key + "/Line0", tle.line0 });
        lines.push_back({ key + "/Line1", tle.line1 });
        lines.push_back({ key + "/Line2", tle.line2 });
    }
    return lines;
}

std::vector<ValueLine> valueLines(Parameter const *node, bool emptyListLine)
{
    std::vector<ValueLine> lines;
    for (ParameterValue const &value : parameterValues(node)) {
        std::vector<ValueLine> const own = linesOf(value, emptyListLine);
        lines.insert(lines.end(), own.begin(), own.end());
    }
    return lines;
}

bool parseValuePath(std::string const &text, ValuePath &path)
{
    path = ValuePath();
    std::string rest = text;
    std::size_t const lineAt = rest.rfind("]/Line");
    if (lineAt != std::string::npos && lineAt + 7 == rest.size()) {
        char const digit = rest.back();
        if (digit < '0' || digit > '2')
            return false;
        path.line = digit - '0';
        rest.erase(lineAt + 1);
    }
    if (!rest.empty() && rest.back() == ']') {
        std::size_t const open = rest.rfind('[');
        if (open == std::string::npos)
            return false;
        std::string const digits = rest.substr(open + 1, rest.size() - open - 2);
        if (!_allDigits(digits) || digits.size() > 9)
            return false;
        path.index = std::atoi(digits.c_str());
        rest.erase(open);
    }
    // Keys are XML names: brackets can't be part of them.
    if (rest.find_first_of("[]") != std::string::npos)
        return false;
    path.parameter = rest;
    return true;
}

std::string typeName(ParameterSimple::SimpleType type)
{
    switch (type) {
    case ParameterSimple::Integer:
        return "xs:integer";
    case ParameterSimple::Decimal:
        return "xs:decimal";
    case ParameterSimple::Boolean:
        return "xs:boolean";
    case ParameterSimple::String:
        return "xs:string";
    case ParameterSimple::Dirpath:
        return "DirpathType";
    case ParameterSimple::Filepath:
        return "FilepathType";
    case ParameterSimple::Email:
        return "EmailType";
    case ParameterSimple::Password:
        return "PasswordType";
    case ParameterSimple::HeaderKeys:
        return "headerKeysType";
    case ParameterSimple::FilterKeys:
        return "filterKeysType";
    case ParameterSimple::TLE:
        return "TLEType";
    }
    return "xs:string";
}

std::string itemsText(long long count)
{
    return std::to_string(count) + (count == 1 ? " item" : " items");
}

std::string numberText(double number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(15);
    stream << number;
    return stream.str();
}

std::string allowedText(ParameterSimple::Fasets const &fasets, ParameterSimple::SimpleType type)
{
    if (!fasets.enumeration.empty()) {
        std::string text = "one of ";
        for (std::size_t i = 0; i < fasets.enumeration.size(); ++i) {
            std::string const &entry = fasets.enumeration[i];
            text += (i ? " | " : "") + (entry.empty() ? std::string("\"\"") : entry);
        }
        return text;
    }
    if (type == ParameterSimple::Integer)
        return "from " + std::to_string(_truncated(fasets.minValue)) + " to "
            + std::to_string(_truncated(fasets.maxValue)) + ", or empty";
    if (type == ParameterSimple::Decimal)
        return "from " + numberText(fasets.minValue) + " to " + numberText(fasets.maxValue)
            + ", or empty";
    return "any text";
}
