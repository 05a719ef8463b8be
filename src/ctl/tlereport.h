// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "tle/checkertle.h"

#include <cstdint>
#include <string>
#include <vector>

// A Julian date as milliseconds since 1970-01-01 00:00 UTC, rounded.
std::int64_t julianToUnixMs(double julianDate);

// A table of the sets, a heading and one row each: catalog number, epoch as a
// UTC date, its age in days at `nowMs`, inclination in degrees, mean motion in
// revolutions per day, and the name. The numbers come from parse_elements.
std::vector<std::string> tleReport(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs);
