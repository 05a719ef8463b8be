// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The keywords of one OMM record and their values as text, in the order read.
// A record has some twenty keywords, so a look-up walks them: cheaper than a
// tree of nodes when a catalog brings tens of thousands of records.
class OmmFields
{
public:
    using Field = std::pair<std::string, std::string>;

    OmmFields() = default;
    OmmFields(std::initializer_list<Field> fields);

    // The value of a keyword; null when the record lacks it.
    std::string const *find(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    // The value of a keyword, added empty when the record lacks it.
    std::string &operator[](std::string_view key);
    // Adds a keyword that the record doesn't hold yet, without looking.
    void append(std::string key, std::string value);
    void erase(std::string_view key);
    void reserve(std::size_t count) { _fields.reserve(count); }

private:
    std::vector<Field> _fields;
};
