// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctl/valuetext.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include <string>
#include <vector>

// The pieces of orvexctl's JSON documents. Their field names are part of the
// command-line interface: scripts read them.

// A UTF-8 text as a JSON string.
QJsonValue jsonText(std::string const &text);
// Texts as an array of strings.
QJsonArray jsonTexts(std::vector<std::string> const &texts);
// A set as {"line0", "line1", "line2"}.
QJsonObject jsonSet(ParameterListTLEs::TLE const &tle);

// {"path", "type", "value"} for a simple parameter, {"path", "type", "values"}
// for a list, {"path", "type", "sets"} for a TLE list.
QJsonObject jsonParameter(ParameterValue const &value);
// The "value", "values" or "sets" part of it alone, as a JSON value.
QJsonValue jsonValueOf(ParameterValue const &value);
