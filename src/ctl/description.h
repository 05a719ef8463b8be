// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctl/valuetext.h"

#include <QJsonObject>

#include <optional>
#include <string>
#include <utility>
#include <vector>

// What the schema says of one node, as describe and check-schema --json tell it.
struct Description
{
    std::string path;
    std::string name; // the display name
    std::string kind; // "value", "list", "tle-list" or "section"
    std::string type; // the schema's type name of the value or of the items; empty for a section
    std::string allowed; // what a value or an item may be, in words; empty for a section
    std::string itemTag; // the tag of one item of a list
    std::optional<double> minimum; // the bounds applied; for a list, the least count
    std::optional<double> maximum;
    std::vector<std::string> enumeration;
    std::string unit;
    std::string documentation;
    std::string source;
    std::vector<std::string> services; // empty: every service
    std::string servicesFrom; // the section that restricts them; empty for the node's own
    int importance = 2;
    bool visible = true;
    // The value of the service's default configuration, for each service whose
    // default file holds the parameter.
    std::vector<std::pair<std::string, ParameterValue>> defaults;
};

// The services to which a node belongs: its own, else those of the nearest
// section that names any, as the window shows a restricted section whole. Empty
// for every service; `from` gets the path of the section that named them.
std::vector<std::string> servicesOf(Parameter const *node, std::string *from = nullptr);

// The node's description, without defaults.
Description describeNode(Parameter const *node);

// The description as lines of text: the path, then "  Field: text".
std::vector<std::string> descriptionLines(Description const &description);

// {"path", "name", "kind", "type", "allowed", "unit", "minimum", "maximum",
// "enumeration", "documentation", "source", "services", "importance",
// "visible"}, with "item" for lists; "defaults" only when `withDefaults`.
QJsonObject jsonDescription(Description const &description, bool withDefaults);
