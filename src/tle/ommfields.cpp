// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/ommfields.h"

#include <algorithm>

OmmFields::OmmFields(std::initializer_list<Field> fields) : _fields(fields)
{ }

std::string const *OmmFields::find(std::string_view key) const
{
    for (Field const &field : _fields)
        if (field.first == key)
            return &field.second;
    return nullptr;
}

std::string &OmmFields::operator[](std::string_view key)
{
    std::string const *value = find(key);
    if (value)
        return const_cast<std::string &>(*value);
    _fields.emplace_back(std::string(key), std::string());
    return _fields.back().second;
}

void OmmFields::append(std::string key, std::string value)
{
    _fields.emplace_back(std::move(key), std::move(value));
}

void OmmFields::erase(std::string_view key)
{
    _fields.erase(std::remove_if(_fields.begin(), _fields.end(),
                      [key](Field const &field) { return field.first == key; }),
        _fields.end());
}
