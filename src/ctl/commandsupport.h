// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctl/configtree.h"

#include <functional>
#include <string>
#include <vector>

class Arguments;

// The schema of a command: the one named with --schema, else the one beside
// the executable.
SchemaLocation locationOf(Arguments const &args);

// Builds `tree` from the schema; a refusal is printed. 0 or 2.
int openSchema(ConfigTree &tree, SchemaLocation const &location);

// Builds `tree` and lays the configuration over it; the engine's remarks are
// printed. 0, 1 (some parameters not in the file) or 2.
int openConfig(ConfigTree &tree, SchemaLocation const &location, std::string const &configPath);

// Lays a further file over an open tree, such as a service's default; the
// engine's remarks are printed under `what`. 0, 1 or 2.
int overlay(ConfigTree &tree, std::string const &path, std::string const &what);

// Tests the version and the service of the values in the tree as the desktop
// program tests a file just loaded; a refusal is printed with the program's
// text. True when both pass.
bool checkVersionAndService(ConfigTree const &tree, std::string const &configPath);

// Writes the tree over `path`; a failure is printed. 0, 1 or 2.
int writeTree(ConfigTree const &tree, std::string const &path);

// The items joined by ", ", for messages.
std::string joined(std::vector<std::string> const &items);

class Parameter;
struct ValuePath;

// What a caller of setValueAndWrite may do first with the node found at the
// path: refuse it (false, the reason in `refusal`) or change the values.
using SetPrelude = std::function<bool(Parameter const *node, ValuePath const &path,
    std::vector<std::string> &values, std::string &refusal)>;

// The work of `set`: opens CONFIG, sets the value at `pathText` with the tests
// of the schema and writes CONFIG back; on a refusal CONFIG is left untouched.
// 0, 1 or 2. (In commandsvalues.cpp.)
int setValueAndWrite(SchemaLocation const &location, std::string const &config,
    std::string const &pathText, std::vector<std::string> values, SetPrelude const &prelude = {});

// The sets of a TLE list as the TLE editor shows them, one empty line between
// sets. (In commandsvalues.cpp.)
std::string tleListText(Parameter const *list);
