// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

// The numbers of one two-line element set. A plain record owned by the caller;
// parse_elements writes into it and never clears it first.
struct element_set
{
    double epoch;             // Julian date
    double mean_motion_rate;  // radians per minute squared
    double mean_motion_accel; // radians per minute cubed
    double drag_term;         // as the line gives it
    double inclination;       // radians
    double ascending_node;    // radians
    double eccentricity;
    double perigee_argument; // radians
    double mean_anomaly;     // radians
    double mean_motion;      // radians per minute
    std::int32_t catalog_number;
    std::int32_t element_number;
    std::int32_t revolution_number;
    char classification;
    char ephemeris_type;
    char international_designator[9];
};

// Checks the form and the check digit of one zero-terminated line.
// 0: well formed, check digit right; 1 to 9: well formed, (sum - digit) mod 10;
// -1: no "1 " or "2 " in front; -2: a byte of 0..67 outside 0x20..0x7A;
// -3: a visible byte at index 69. Reads no further than index 69.
int tle_checksum(const char *line);

// Reads the two zero-terminated lines of a set into `sat`.
// 0: both check digits right (or a high-precision set); 1, 2, 3: check digit
// of line 1, line 2, both wrong, record filled all the same; -1..-3: line 2
// malformed; -101..-103: line 1 malformed; -104: a line without its own line
// number. On a negative result `sat` is untouched. Only for lines that carry
// the blank behind each angle field.
int parse_elements(const char *line1, const char *line2, element_set *sat);
