// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "model/parameter.h"

#include <string>
#include <vector>

// One line of a configuration as text: "Camera/Gain = 120". A list gives one
// line per item, "Tracking/PriorityNoradIds[0] = 25544", and a TLE list one per
// line of a set, "Tracking/Satellites[0]/Line1 = 1 25544U ...".
struct ValueLine
{
    std::string key;
    std::string value;
};

bool operator==(ValueLine const &left, ValueLine const &right);

// The key and value joined by " = ".
std::string toText(ValueLine const &line);

// The value of one parameter, as `list` shows it: the text of a simple
// parameter, the items of a list, or the sets of a TLE list.
struct ParameterValue
{
    enum Kind { Simple, List, TLEs };

    std::string path;
    std::string type; // the schema's name of the value's type, or of the items'
    Kind kind = Simple;
    std::string value;
    std::vector<std::string> values;
    std::vector<ParameterListTLEs::TLE> sets;
};

// The values of `node` and of every parameter below it, in schema order.
std::vector<ParameterValue> parameterValues(Parameter const *node);

// The lines of one parameter's value, as valueLines gives them.
std::vector<ValueLine> linesOf(ParameterValue const &value, bool emptyListLine);

// The lines of `node` and of every leaf below it, in schema order. With
// `emptyListLine` a list without items still gives one line, its bare key with
// an empty value, so that every parameter shows.
std::vector<ValueLine> valueLines(Parameter const *node, bool emptyListLine);

// A path as `get` and `set` take it: the parameter's path, then an item index
// in brackets for lists, then "/Line0", "/Line1" or "/Line2" for a TLE set.
struct ValuePath
{
    std::string parameter;
    int index = -1; // -1: the whole parameter
    int line = -1; // -1: the whole set
};

// False for text such as "a[x]" or "a[1]/Line7".
bool parseValuePath(std::string const &text, ValuePath &path);

// The schema's name of a type: "xs:integer", "DirpathType", ...
std::string typeName(ParameterSimple::SimpleType type);

// What checkValue lets through for these facets and this type, in words:
// "one of 1 | 2 | 4", "from 0 to 600, or empty", "any text".
std::string allowedText(ParameterSimple::Fasets const &fasets, ParameterSimple::SimpleType type);

// "1 item", "3 items".
std::string itemsText(long long count);

// A bound as the schema would write it: 9999999.9, -90, 0.001.
std::string numberText(double number);
