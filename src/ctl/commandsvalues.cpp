// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// list, get, set and diff: the values of one configuration file.
#include "ctl/arguments.h"
#include "ctl/commands.h"
#include "ctl/commandsupport.h"
#include "ctl/console.h"
#include "ctl/valuetext.h"
#include "model/parameter.h"
#include "tle/checkertle.h"

#include <algorithm>

namespace {

using ModelTLE = ParameterListTLEs::TLE;

bool _refuse(std::string &refusal, std::string const &text)
{
    refusal = text;
    return false;
}

std::vector<CheckerTLE::TLE> _toChecker(std::vector<ModelTLE> const &tles)
{
    std::vector<CheckerTLE::TLE> result;
    for (ModelTLE const &tle : tles)
        result.push_back({ tle.line0, tle.line1, tle.line2 });
    return result;
}

std::vector<ModelTLE> _toModel(std::vector<CheckerTLE::TLE> const &tles)
{
    std::vector<ModelTLE> result;
    for (CheckerTLE::TLE const &tle : tles)
        result.push_back({ tle.line0, tle.line1, tle.line2 });
    return result;
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

bool _getWhole(Parameter const *node, std::vector<std::string> &out)
{
    switch (node->getGlobalType()) {
    case Parameter::GlobalType::Simple:
        out.push_back(dynamic_cast<ParameterSimple const *>(node)->getValue());
        break;
    case Parameter::GlobalType::List:
        out = dynamic_cast<ParameterList const *>(node)->getValues();
        break;
    case Parameter::GlobalType::ListTLEs: {
        std::vector<ModelTLE> const tles = dynamic_cast<ParameterListTLEs const *>(node)->getTLEs();
        if (!tles.empty())
            out.push_back(_tleText(tles));
        break;
    }
    case Parameter::GlobalType::Complex:
        for (ValueLine const &line : valueLines(node, true))
            out.push_back(toText(line));
        break;
    }
    return true;
}

std::string _countText(std::size_t count)
{
    return "has " + itemsText(static_cast<long long>(count));
}

bool _getItem(Parameter const *node, ValuePath const &path, std::vector<std::string> &out,
    std::string &refusal)
{
    std::size_t const index = static_cast<std::size_t>(path.index);
    if (node->getGlobalType() == Parameter::GlobalType::List && path.line < 0) {
        std::vector<std::string> const items
            = dynamic_cast<ParameterList const *>(node)->getValues();
        if (index >= items.size())
            return _refuse(refusal, _countText(items.size()));
        out.push_back(items[index]);
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
    std::string const lines[] = { tle.line0, tle.line1, tle.line2 };
    out.push_back(path.line < 0 ? _tleText({ tle }) : lines[path.line]);
    return true;
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

std::string const _none = "(none)";

std::string const *_valueOf(std::vector<ValueLine> const &lines, std::string const &key)
{
    auto const it = std::find_if(
        lines.begin(), lines.end(), [&key](ValueLine const &line) { return line.key == key; });
    return it == lines.end() ? nullptr : &it->value;
}

// The lines of one parameter whose values differ, each with its default; an
// item on one side only stands against "(none)".
void _diffParameter(Parameter const *mine, Parameter const *theirs)
{
    std::vector<ValueLine> const own = valueLines(mine, false);
    std::vector<ValueLine> const defaults = valueLines(theirs, false);
    if (own == defaults)
        return;
    for (ValueLine const &line : own) {
        std::string const *value = _valueOf(defaults, line.key);
        if (!value || *value != line.value)
            Console::print(toText(line) + "  # default: " + (value ? *value : _none));
    }
    for (ValueLine const &line : defaults)
        if (!_valueOf(own, line.key))
            Console::print(line.key + " = " + _none + "  # default: " + line.value);
}

// Both trees come from one schema, so their children stand side by side.
void _rec_diff(ParameterComplex const *mine, ParameterComplex const *theirs)
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

} // namespace

int runList(Arguments const &args)
{
    ConfigTree tree;
    int const status = openConfig(tree, locationOf(args), args.positional()[0]);
    if (status == Console::Failure)
        return Console::Failure;
    for (ValueLine const &line : valueLines(tree.root(), true))
        Console::print(toText(line));
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
    std::vector<std::string> out;
    std::string refusal;
    bool const found = path.index < 0 ? _getWhole(node, out) : _getItem(node, path, out, refusal);
    if (!found) {
        Console::message(path.parameter + " " + refusal);
        return Console::Failure;
    }
    for (std::string const &line : out)
        Console::print(line);
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
        std::vector<std::string>(positional.begin() + 2, positional.end()));
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
    _rec_diff(tree.root(), defaults.root());
    return Console::worse(status, defaultStatus);
}
