// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// list, get, set and diff: the values of one configuration file.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/jsonvalues.h"
#include "ctl/valuetext.h"
#include "model/parameter.h"
#include "model/tlerecords.h"
#include "tle/checkertle.h"
#include "engine/textconv.h"

#include <QFile>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <optional>

namespace {

using ModelTLE = ParameterListTLEs::TLE;

bool _refuse(std::string &refusal, std::string const &text)
{
    refusal = text;
    return false;
}

std::vector<CheckerTLE::TLE> _toChecker(std::vector<ModelTLE> const &tles)
{
    return convertTLEs<CheckerTLE::TLE>(tles);
}

std::vector<ModelTLE> _toModel(std::vector<CheckerTLE::TLE> const &tles)
{
    return convertTLEs<ModelTLE>(tles);
}

// The sets as the TLE editor shows them: name, two data lines, an empty line
// between sets.
std::string _tleText(std::vector<ModelTLE> const &tles)
{
    std::vector<std::string> unused;
    std::string text;
    CheckerTLE::TLEs2text(unused, text, _toChecker(tles), false);
    return text;
}

// The sets of a text; false, with the checker's messages printed, unless
// every set in it passed.
bool _parseTLEs(std::string const &text, std::vector<ModelTLE> &tles)
{
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> parsed;
    int const status = CheckerTLE::parseTLEs(messages, parsed, text);
    if (status != 0) {
        Console::lines(messages);
        return false;
    }
    tles = _toModel(parsed);
    return true;
}

// ------------------------------------------------------------------- get

std::string _countText(std::size_t count)
{
    return "has " + itemsText(static_cast<long long>(count));
}

// One item of a list, one set of a TLE list or one line of a set, as a value
// of its own under its indexed path.
bool _getItem(
    Parameter const *node, ValuePath const &path, ParameterValue &out, std::string &refusal)
{
    std::size_t const index = static_cast<std::size_t>(path.index);
    out.path = pathOf(node) + "[" + std::to_string(index) + "]";
    if (node->getGlobalType() == Parameter::GlobalType::List && path.line < 0) {
        auto const *list = dynamic_cast<ParameterList const *>(node);
        std::vector<std::string> const items = list->getValues();
        if (index >= items.size())
            return _refuse(refusal, _countText(items.size()));
        out.type = typeName(list->getSimpleType());
        out.value = items[index];
        return true;
    }
    if (node->getGlobalType() != Parameter::GlobalType::ListTLEs) {
        refusal = path.line < 0 ? "is not a list" : "is not a TLE list";
        return false;
    }
    std::vector<ModelTLE> const tles = dynamic_cast<ParameterListTLEs const *>(node)->getTLEs();
    if (index >= tles.size())
        return _refuse(refusal, _countText(tles.size()));
    ModelTLE const &tle = tles[index];
    out.type = typeName(ParameterSimple::TLE);
    if (path.line < 0) {
        out.kind = ParameterValue::TLEs;
        out.sets = { tle };
        return true;
    }
    std::string const lines[] = { tle.line0, tle.line1, tle.line2 };
    out.path += "/Line" + std::to_string(path.line);
    out.value = lines[path.line];
    return true;
}

// A value as get prints it: a list one item a line, a TLE list as the text of its sets.
void _printValue(ParameterValue const &value)
{
    switch (value.kind) {
    case ParameterValue::Simple:
        Console::print(value.value);
        break;
    case ParameterValue::List:
        for (std::string const &item : value.values)
            Console::print(item);
        break;
    case ParameterValue::TLEs:
        if (!value.sets.empty())
            Console::print(_tleText(value.sets));
        break;
    }
}

// Values as list prints them, one line each.
void _printLines(std::vector<ParameterValue> const &values)
{
    for (ParameterValue const &value : values)
        for (ValueLine const &line : linesOf(value, true))
            Console::print(toText(line));
}

QJsonArray _jsonParameters(std::vector<ParameterValue> const &values)
{
    QJsonArray parameters;
    for (ParameterValue const &value : values)
        parameters.append(jsonParameter(value));
    return parameters;
}

// A section: every line below it, or {"path", "parameters"}.
void _showSection(Parameter const *node)
{
    std::vector<ParameterValue> const values = parameterValues(node);
    if (Console::json())
        Console::result({ { QStringLiteral("path"), jsonText(pathOf(node)) },
            { QStringLiteral("parameters"), _jsonParameters(values) } });
    else
        _printLines(values);
}

void _showValue(ParameterValue const &value)
{
    if (Console::json())
        Console::result(jsonParameter(value));
    else
        _printValue(value);
}

// ------------------------------------------------------------------- set

std::string _refusedValue(std::string const &value, ParameterSimple::Fasets const &fasets,
    ParameterSimple::SimpleType type)
{
    return "\"" + value + "\" is refused; allowed: " + allowedText(fasets, type);
}

bool _setSimple(ParameterSimple *leaf, std::vector<std::string> const &values, std::string &refusal)
{
    if (values.size() != 1)
        return _refuse(refusal, "takes exactly one value");
    if (!ParameterSimple::checkValue(values[0], leaf->getFasets(), leaf->getSimpleType()))
        return _refuse(refusal, _refusedValue(values[0], leaf->getFasets(), leaf->getSimpleType()));
    return leaf->setValue(values[0]);
}

// The same tests as ParameterList::setValues, told in words.
bool _setList(ParameterList *list, std::vector<std::string> const &items, std::string &refusal)
{
    ParameterSimple::Fasets const fasets = list->getFasets();
    long long const minimum = static_cast<long long>(fasets.minValue);
    long long const maximum = static_cast<long long>(fasets.maxValue);
    if (items.empty() && minimum >= 1)
        return _refuse(refusal, "needs at least " + itemsText(minimum));
    if (static_cast<long long>(items.size()) > maximum)
        return _refuse(refusal, "takes at most " + itemsText(maximum));
    ParameterSimple::SimpleType const type = list->getSimpleType();
    bool const numeric = type == ParameterSimple::Integer || type == ParameterSimple::Decimal;
    for (std::size_t i = 0; i < items.size(); ++i)
        if (!ParameterSimple::checkValue(items[i], fasets, type))
            return _refuse(refusal,
                "item " + std::to_string(i) + ": " + _refusedValue(items[i], fasets, type)
                    + (numeric ? " (the list's minimum count bounds its "
                                 "numbers too)"
                               : ""));
    return list->setValues(items);
}

bool _setListItem(ParameterList *list, std::size_t index, std::vector<std::string> const &values,
    std::string &refusal)
{
    if (values.size() != 1)
        return _refuse(refusal, "an item takes exactly one value");
    std::vector<std::string> items = list->getValues();
    if (index > items.size())
        return _refuse(refusal,
            _countText(items.size()) + "; [" + std::to_string(items.size()) + "] appends one");
    if (index == items.size())
        items.push_back(values[0]);
    else
        items[index] = values[0];
    return _setList(list, items, refusal);
}

bool _setRecordLine(ModelTLE &tle, int line, std::string const &value, std::string &refusal)
{
    std::string *const lines[] = { &tle.line0, &tle.line1, &tle.line2 };
    *lines[line] = value;
    std::string verdict;
    if (!_checkTLE(verdict, { tle.line0, tle.line1, tle.line2 }))
        return _refuse(refusal, "the set is refused (" + verdict + ")");
    return true;
}

bool _setTLEs(ParameterListTLEs *list, ValuePath const &path,
    std::vector<std::string> const &values, std::string &refusal)
{
    if (values.size() != 1)
        return _refuse(refusal, "takes exactly one value, the text of the sets");
    std::vector<ModelTLE> tles = list->getTLEs();
    std::vector<ModelTLE> given;
    if (path.index < 0) {
        // An empty text empties the list; the sets have no minimum.
        if (!values[0].empty() && !_parseTLEs(values[0], given))
            return _refuse(refusal, "the TLE text is refused");
        list->setTLEs(given);
        return true;
    }
    std::size_t const index = static_cast<std::size_t>(path.index);
    if (index > tles.size() || (path.line >= 0 && index == tles.size()))
        return _refuse(refusal, _countText(tles.size()));
    if (path.line >= 0) {
        if (!_setRecordLine(tles[index], path.line, values[0], refusal))
            return false;
    } else {
        if (!_parseTLEs(values[0], given) || given.size() != 1)
            return _refuse(refusal, "the value must be the text of exactly one set");
        if (index == tles.size())
            tles.push_back(given[0]);
        else
            tles[index] = given[0];
    }
    list->setTLEs(tles);
    return true;
}

bool _apply(Parameter *node, ValuePath const &path, std::vector<std::string> const &values,
    std::string &refusal)
{
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        if (path.index >= 0)
            return _refuse(refusal, "is not a list");
        return _setSimple(dynamic_cast<ParameterSimple *>(node), values, refusal);
    case Parameter::GlobalType::List:
        if (path.line >= 0)
            return _refuse(refusal, "is not a TLE list");
        if (path.index < 0)
            return _setList(dynamic_cast<ParameterList *>(node), values, refusal);
        return _setListItem(
            dynamic_cast<ParameterList *>(node), std::size_t(path.index), values, refusal);
    case Parameter::GlobalType::ListTLEs:
        return _setTLEs(dynamic_cast<ParameterListTLEs *>(node), path, values, refusal);
    case Parameter::GlobalType::Complex:
        break;
    }
    refusal = "is a section, not a parameter";
    return false;
}

// ------------------------------------------------------------------ diff

// One line of diff: a value of the configuration against the default's; a
// side without the item or line is null, printed as "(none)".
struct _Difference
{
    std::string path;
    std::optional<std::string> value;
    std::optional<std::string> fallback;
};

std::string const _none = "(none)";

std::string const *_valueOf(std::vector<ValueLine> const &lines, std::string const &key)
{
    auto const it = std::find_if(
        lines.begin(), lines.end(), [&key](ValueLine const &line) { return line.key == key; });
    return it == lines.end() ? nullptr : &it->value;
}

QJsonValue _jsonOrNull(std::optional<std::string> const &text)
{
    return text ? jsonText(*text) : QJsonValue(QJsonValue::Null);
}

std::optional<std::string> _optional(std::string const *text)
{
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

class _Differ
{
public:
    void run(ParameterComplex const *mine, ParameterComplex const *theirs)
    {
        _rec_diff(mine, theirs);
        for (_Difference const &difference : _differences)
            Console::print(difference.path + " = " + difference.value.value_or(_none)
                + "  # default: " + difference.fallback.value_or(_none));
    }

    QJsonArray json() const
    {
        QJsonArray differences;
        for (_Difference const &difference : _differences)
            differences.append(QJsonObject { { QStringLiteral("path"), jsonText(difference.path) },
                { QStringLiteral("value"), _jsonOrNull(difference.value) },
                { QStringLiteral("default"), _jsonOrNull(difference.fallback) } });
        return differences;
    }

private:
    void _diffParameter(Parameter const *mine, Parameter const *theirs);
    void _rec_diff(ParameterComplex const *mine, ParameterComplex const *theirs);

    std::vector<_Difference> _differences;
};

// The lines of one parameter whose values differ, each with its default; an
// item on one side only stands against "(none)".
void _Differ::_diffParameter(Parameter const *mine, Parameter const *theirs)
{
    std::vector<ValueLine> const own = valueLines(mine, false);
    std::vector<ValueLine> const defaults = valueLines(theirs, false);
    if (own == defaults)
        return;
    for (ValueLine const &line : own) {
        std::string const *value = _valueOf(defaults, line.key);
        if (!value || *value != line.value)
            _differences.push_back({ line.key, line.value, _optional(value) });
    }
    for (ValueLine const &line : defaults)
        if (!_valueOf(own, line.key))
            _differences.push_back({ line.key, std::nullopt, line.value });
}

// Both trees come from one schema, so their children stand side by side.
void _Differ::_rec_diff(ParameterComplex const *mine, ParameterComplex const *theirs)
{
    std::vector<Parameter *> const own = mine->getChildrenPtrs();
    std::vector<Parameter *> const defaults = theirs->getChildrenPtrs();
    for (std::size_t i = 0; i < own.size() && i < defaults.size(); ++i) {
        if (!own[i] || !defaults[i])
            continue;
        if (own[i]->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_diff(dynamic_cast<ParameterComplex const *>(own[i]),
                dynamic_cast<ParameterComplex const *>(defaults[i]));
        else
            _diffParameter(own[i], defaults[i]);
    }
}

// ------------------------------------------------------------- from file

// The whole of a file, or of standard input for "-"; false when it can't be read.
bool _readValueText(std::string const &source, std::string &text)
{
    if (source == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        return !std::cin.bad();
    }
    QFile file(_toQString(source));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    text = file.readAll().toStdString();
    return true;
}

// The text without its last line end, as an editor leaves one behind.
std::string _withoutLastLineEnd(std::string text)
{
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    if (!text.empty() && text.back() == '\r')
        text.pop_back();
    return text;
}

// A whole list takes one item a line; everything else the text as one value.
std::vector<std::string> _valuesOfText(
    Parameter const *node, ValuePath const &path, std::string const &text)
{
    if (node->getGlobalType() != Parameter::GlobalType::List || path.index >= 0)
        return { _withoutLastLineEnd(text) };
    std::vector<std::string> items;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        items.push_back(_withoutLastLineEnd(text.substr(start, end - start)));
        start = end + 1;
    }
    return items;
}

// The values of set from --from-file, when it is given, in place of its arguments.
SetPrelude _valuesFromFile(Arguments const &args)
{
    if (!args.isSet("--from-file"))
        return {};
    std::string const source = args.value("--from-file");
    return [source](Parameter const *node, ValuePath const &path,
               std::vector<std::string> &values, std::string &refusal) {
        if (!values.empty()) {
            refusal = "give the value either as arguments or with --from-file, not both";
            return false;
        }
        std::string text;
        if (!_readValueText(source, text)) {
            refusal = (source == "-" ? std::string("standard input") : source) + " cannot be read";
            return false;
        }
        values = _valuesOfText(node, path, text);
        return true;
    };
}

} // namespace

int runList(Arguments const &args)
{
    std::string const &config = args.positional()[0];
    ConfigTree tree;
    int const status = openConfig(tree, locationOf(args), config);
    if (status == Console::Failure)
        return Console::Failure;
    std::vector<ParameterValue> const values = parameterValues(tree.root());
    if (!Console::json()) {
        _printLines(values);
        return status;
    }
    Console::result({ { QStringLiteral("file"), jsonText(config) },
        { QStringLiteral("version"), jsonText(tree.version()) },
        { QStringLiteral("service"), jsonText(tree.service()) },
        { QStringLiteral("parameters"), _jsonParameters(values) } });
    return status;
}

int runGet(Arguments const &args)
{
    std::string const &pathText = args.positional()[1];
    ValuePath path;
    if (!parseValuePath(pathText, path)) {
        Console::message(pathText + " is not a parameter path");
        return Console::Failure;
    }
    ConfigTree tree;
    int const status = openConfig(tree, locationOf(args), args.positional()[0]);
    if (status == Console::Failure)
        return Console::Failure;
    Parameter const *node = tree.find(path.parameter);
    if (!node) {
        Console::message("the schema has no parameter " + path.parameter);
        return Console::Failure;
    }
    if (path.index < 0 && node->getGlobalType() == Parameter::GlobalType::Complex) {
        _showSection(node);
        return status;
    }
    if (path.index < 0) {
        _showValue(parameterValues(node).front());
        return status;
    }
    ParameterValue item;
    std::string refusal;
    if (!_getItem(node, path, item, refusal)) {
        Console::message(path.parameter + " " + refusal);
        return Console::Failure;
    }
    _showValue(item);
    return status;
}

std::string tleListText(Parameter const *list)
{
    return _tleText(dynamic_cast<ParameterListTLEs const *>(list)->getTLEs());
}

int setValueAndWrite(SchemaLocation const &location, std::string const &config,
    std::string const &pathText, std::vector<std::string> values, SetPrelude const &prelude)
{
    ValuePath path;
    if (!parseValuePath(pathText, path)) {
        Console::message(pathText + " is not a parameter path");
        return Console::Failure;
    }
    ConfigTree tree;
    int const status = openConfig(tree, location, config);
    if (status == Console::Failure)
        return Console::Failure;
    Parameter *node = tree.find(path.parameter);
    if (!node) {
        Console::message("the schema has no parameter " + path.parameter);
        return Console::Failure;
    }
    std::string refusal;
    if ((prelude && !prelude(node, path, values, refusal))
        || !_apply(node, path, values, refusal)) {
        Console::message(pathText + ": " + refusal + "; " + config + " is left as it was");
        return Console::Failure;
    }
    return Console::worse(status, writeTree(tree, config));
}

int runSet(Arguments const &args)
{
    std::vector<std::string> const &positional = args.positional();
    return setValueAndWrite(locationOf(args), positional[0], positional[1],
        std::vector<std::string>(positional.begin() + 2, positional.end()), _valuesFromFile(args));
}

int runDiff(Arguments const &args)
{
    std::string const &config = args.positional()[0];
    SchemaLocation const location = locationOf(args);
    ConfigTree tree;
    int const status = openConfig(tree, location, config);
    if (status == Console::Failure || !checkVersionAndService(tree, config))
        return Console::Failure;
    ConfigTree defaults;
    if (openSchema(defaults, location) != Console::Ok)
        return Console::Failure;
    int const defaultStatus
        = overlay(defaults, location.defaultConfig(tree.service()), "the default configuration");
    if (defaultStatus == Console::Failure)
        return Console::Failure;
    _Differ differ;
    differ.run(tree.root(), defaults.root());
    if (Console::json())
        Console::result({ { QStringLiteral("file"), jsonText(config) },
            { QStringLiteral("service"), jsonText(tree.service()) },
            { QStringLiteral("differences"), differ.json() } });
    return Console::worse(status, defaultStatus);
}
