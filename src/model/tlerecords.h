// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <vector>

// Copies element sets between two record types with the same three text
// fields, line0, line1 and line2 (the model's and the TLE checker's, which
// know nothing of each other). Order and count are kept; nothing is checked.
template <class To, class From>
std::vector<To> convertTLEs(std::vector<From> const &tles)
{
    std::vector<To> result(tles.size());
    for (std::size_t i = 0; i < tles.size(); ++i) {
        result[i].line0 = tles[i].line0;
        result[i].line1 = tles[i].line1;
        result[i].line2 = tles[i].line2;
    }
    return result;
}
