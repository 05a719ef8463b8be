// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

// The catalog number field of a TLE, five columns. Numbers from 100000 on take
// the Alpha-5 form: a letter for the first two digits, A = 10 to Z = 33 without
// I and O, so 100000 is "A0000" and 339999 is "Z9999".
class Alpha5
{
public:
    static constexpr long highest = 339999;

    // The five columns of `number`, digits padded with zeros below 100000.
    // False, `field` untouched, for a negative number or one above `highest`.
    static bool encode(long number, std::string &field);
    // The same into the five bytes at `field`, for writers of whole lines.
    static bool encode(long number, char *field);
    // The number of a five-column field in either form; -1 when the field is
    // neither five digits nor a letter of the code and four digits.
    static long decode(std::string const &field);
    // Whether the field holds the letter form.
    static bool isLetterForm(std::string const &field);
};
