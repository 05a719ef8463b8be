// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "model/parameter.h"

#include <string>
#include <utility>
#include <vector>

// Facets as the schema reader gives them, for parameters the tests build by hand.
namespace builders {

// Values from minValue to maxValue; for a list, the count of items and each item.
inline ParameterSimple::Fasets range(double minValue, double maxValue)
{
    ParameterSimple::Fasets fasets;
    fasets.kind = ParameterSimple::FasetRange;
    fasets.minValue = minValue;
    fasets.maxValue = maxValue;
    return fasets;
}

// Only a lower bound, as a list's minOccurs; the upper bound keeps its default.
inline ParameterSimple::Fasets atLeast(double minValue)
{
    ParameterSimple::Fasets fasets;
    fasets.kind = ParameterSimple::FasetRange;
    fasets.minValue = minValue;
    return fasets;
}

// One of these entries.
inline ParameterSimple::Fasets enumeration(std::vector<std::string> entries)
{
    ParameterSimple::Fasets fasets;
    fasets.kind = ParameterSimple::FasetEnumeration;
    fasets.enumeration = std::move(entries);
    return fasets;
}

} // namespace builders
