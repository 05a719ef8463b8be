// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "tle/checkertle.h"
#include "tle/ommfields.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

// Writes the two data lines of a TLE, and its name line, from the keywords of
// an OMM record (CCSDS Orbit Mean-Elements Message), each value as text the
// way the record spells it. Standard library only; numbers are read without
// the locale.
class TLEComposer
{
public:
    // Keyword -> value text, such as "MEAN_MOTION" -> "15.50103472".
    using Fields = OmmFields;

    // The keywords that a TLE is written from.
    enum Keyword {
        ObjectName,
        ObjectId,
        NoradCatId,
        ClassificationType,
        Epoch,
        MeanMotionDot,
        MeanMotionDdot,
        Bstar,
        EphemerisType,
        ElementSetNo,
        Inclination,
        RaOfAscNode,
        Eccentricity,
        ArgOfPericenter,
        MeanAnomaly,
        MeanMotion,
        RevAtEpoch,
        KeywordCount
    };
    // The value text of each keyword, as the record spells it; no value where
    // the record lacks the keyword. Views into the record, valid while it lives.
    using Values = std::array<std::optional<std::string_view>, KeywordCount>;

    // The OMM spelling of a keyword: "NORAD_CAT_ID".
    static char const *keywordName(Keyword keyword);
    // The keyword spelled `name`; KeywordCount when no TLE field comes from it.
    static Keyword keyword(std::string_view name);
    // The values of `fields`, the first where a keyword comes more than once.
    static Values values(Fields const &fields);

    // The set of one record: OBJECT_NAME as line 0, both data lines with their
    // check digits. False, `tle` untouched and the reason in `reason`, when a
    // keyword is missing or unreadable or a value doesn't fit its columns.
    static bool compose(Fields const &fields, CheckerTLE::TLE &tle, std::string &reason);
    // The same from the values of the keywords: readers that find the columns
    // once, such as CSV's, compose without building a record.
    static bool compose(Values const &values, CheckerTLE::TLE &tle, std::string &reason);
    // The set of one record appended to `text` as the TLE list writes its
    // sets, behind two line feeds when `text` holds sets already: a catalog of
    // tens of thousands goes into one text without a set of strings each.
    // False, `text` untouched and the reason in `reason`, as for compose.
    static bool appendSet(Values const &values, std::string &text, std::string &reason);

    // The fields below write one TLE field each; false, `field` untouched, when
    // the value can't be written in its columns.

    // "1998-067A" -> "98067A  ", eight columns; an empty id gives blanks.
    static bool designatorField(std::string const &objectId, std::string &field);
    // "2004-01-05T12:28:09.630623" (or "2004-005T...") -> "04005.51955591":
    // two-digit year and day of year with eight decimals, rounded to the
    // nearest and carried into the next day or year. Years 1957 to 2056.
    static bool epochField(std::string const &epoch, std::string &field);
    // A first derivative of mean motion with its point: " .00002078", "-.00000036".
    static bool rateField(double value, std::string &field);
    // Five digits with the point assumed in front and a one-digit exponent:
    // " 38550-4" is 0.38550e-4; zero is " 00000-0".
    static bool exponentField(double value, std::string &field);
    // Degrees with four decimals in eight columns: " 51.6297".
    static bool angleField(double degrees, std::string &field);
    // Seven digits, the point assumed in front: 0.0006431 -> "0006431".
    static bool eccentricityField(double value, std::string &field);
    // Revolutions per day with eight decimals in eleven columns: "15.66405366".
    static bool meanMotionField(double value, std::string &field);
    // A whole number right-aligned in `width` columns.
    static bool integerField(long value, int width, std::string &field);
    // Writes the check digit at index 68 of a line of 69 bytes.
    static void setCheckDigit(std::string &line);
};
