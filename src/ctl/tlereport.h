// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "tle/checkertle.h"

#include <QJsonArray>

#include <cstdint>
#include <string>
#include <vector>

// A Julian date as milliseconds since 1970-01-01 00:00 UTC, rounded.
std::int64_t julianToUnixMs(double julianDate);

// One set of a TLE text as the report sees it, a set that the checker took or
// one that it refused, with the numbers of the set and what the report noticed.
struct TleReportEntry
{
    // Zero-based line of the text where the set begins, as the checker counts;
    // the set's index for entries made from sets alone.
    std::size_t textLine = 0;
    bool accepted = false;
    CheckerTLE::TLE tle;
    // "25544", "A0000 (100000)"; "-" when line 1 gives none.
    std::string catalog = "-";
    long catalogNumber = -1;
    // What parse_elements said; the numbers below only when it is not negative.
    int parseStatus = -104;
    bool highPrecision = false;
    std::int64_t epochMs = 0;
    double ageDays = 0.0;
    double inclinationDeg = 0.0;
    double revolutionsPerDay = 0.0;
    // Remarks in words: duplicates, old or future epochs, and for a refused
    // set the likely causes.
    std::vector<std::string> flags;
};

// What the report looks at besides the sets: the moment ages are counted at,
// and the age above which an epoch is flagged.
struct TleReportLimits
{
    std::int64_t nowMs = 0;
    double maxAgeDays = 14.0;
};

// The entries of every set of `text`, grouped as CheckerTLE::parseTLEs groups
// the lines, in text order; refused sets and broken groups included.
std::vector<TleReportEntry> tleReportEntries(
    std::string const &text, TleReportLimits const &limits);

// The entries of sets already taken, one each, with the same remarks.
std::vector<TleReportEntry> tleReportEntries(
    std::vector<CheckerTLE::TLE> const &tles, TleReportLimits const &limits);

// The entries as a table: a heading, then a row per set (catalog number, epoch
// as a UTC date, its age in days, inclination in degrees, mean motion in
// revolutions per day, the name) and an indented "!" line per flag.
std::vector<std::string> tleReportRows(std::vector<TleReportEntry> const &entries);

// The table of sets already taken, ages counted at `nowMs`.
std::vector<std::string> tleReport(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs);

// The entries as JSON: one object per row of the table, {"name", "line1",
// "line2", "catalog", "epoch", "age_days", "inclination", "mean_motion",
// "accepted", "flags"}, the catalog number as a number (an Alpha-5 number
// decoded) and the epoch in ISO 8601 UTC; null where the table shows none.
QJsonArray tleReportJson(std::vector<TleReportEntry> const &entries);
