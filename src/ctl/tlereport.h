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

// A table of the sets, a heading and one row each: catalog number, epoch as a
// UTC date, its age in days at `nowMs`, inclination in degrees, mean motion in
// revolutions per day, and the name. The numbers come from parse_elements.
std::vector<std::string> tleReport(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs);

// The report as JSON: one object per set, {"name", "line1", "line2",
// "catalog", "epoch", "age_days", "inclination", "mean_motion"}, the catalog
// number as a number and the epoch in ISO 8601 UTC; null where the table
// shows "-".
QJsonArray tleReportJson(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs);
