// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

class ConfigTree;
class QDomDocument;
struct SchemaLocation;

// The tree as an indented outline, one line per node, two blanks a level:
// sections end in "/", leaves give their type and what they allow, and the
// annotations follow: unit, display name, importance, hidden, services.
std::vector<std::string> schemaOutline(ConfigTree const &tree);

// What in a schema the program reads otherwise than its writer may think:
// declarations that make no parameter, unknown type names, lists whose records
// aren't read back, first children the program can't use, and
// default configurations that are missing, incomplete or refused in part.
// One remark a line; empty for a schema without surprises.
std::vector<std::string> schemaRemarks(
    QDomDocument const &schema, ConfigTree const &tree, SchemaLocation const &location);
