// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/tlereport.h"

#include "tle/get_el.h"

#include <QDateTime>
#include <QJsonObject>

#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace {

constexpr double _julianAtUnixEpoch = 2440587.5;
constexpr double _msPerDay = 86400000.0;
constexpr double _pi = 3.14159265358979323846;

std::string _row(char const *format, ...) __attribute__((format(printf, 1, 2)));

std::string _row(char const *format, ...)
{
    char buffer[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    // A set without a name leaves no blanks at the end of its row.
    std::string row = buffer;
    row.erase(row.find_last_not_of(' ') + 1);
    return row;
}

std::string _name(CheckerTLE::TLE const &tle)
{
    // Names are often padded to 24 bytes, and files from elsewhere end in CR.
    std::string name = tle.line0;
    while (!name.empty() && (name.back() == ' ' || name.back() == '\r'))
        name.pop_back();
    return name;
}

std::string _dateText(std::int64_t ms)
{
    QDateTime const date = QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC);
    return date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")).toStdString();
}

std::string _setRow(CheckerTLE::TLE const &tle, std::int64_t nowMs)
{
    element_set set {};
    int const status = parse_elements(tle.line1.c_str(), tle.line2.c_str(), &set);
    if (status < 0)
        return _row("%7s  %-19s  not readable (%d)  %s", "-", "-", status, _name(tle).c_str());
    std::int64_t const epochMs = julianToUnixMs(set.epoch);
    double const ageDays = static_cast<double>(nowMs - epochMs) / _msPerDay;
    std::string const date = _dateText(epochMs);
    // A high-precision set holds other quantities in these fields.
    if (set.ephemeris_type == 'H')
        return _row("%7d  %s  %10.2f  %10s  %12s  %s", int(set.catalog_number), date.c_str(),
            ageDays, "-", "-", _name(tle).c_str());
    return _row("%7d  %s  %10.2f  %10.4f  %12.8f  %s", int(set.catalog_number), date.c_str(),
        ageDays, set.inclination * 180.0 / _pi, set.mean_motion * 1440.0 / (2.0 * _pi),
        _name(tle).c_str());
}

} // namespace

std::int64_t julianToUnixMs(double julianDate)
{
    return std::llround((julianDate - _julianAtUnixEpoch) * _msPerDay);
}

std::vector<std::string> tleReport(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs)
{
    std::vector<std::string> rows;
    rows.push_back(_row("%7s  %-19s  %10s  %10s  %12s  %s", "Catalog", "Epoch (UTC)", "Age (d)",
        "Incl (deg)", "Rev/day", "Name"));
    for (CheckerTLE::TLE const &tle : tles)
        rows.push_back(_setRow(tle, nowMs));
    return rows;
}

QJsonArray tleReportJson(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs)
{
    QJsonArray sets;
    for (CheckerTLE::TLE const &tle : tles) {
        QJsonObject row { { QStringLiteral("name"), QString::fromUtf8(_name(tle).c_str()) },
            { QStringLiteral("line1"), QString::fromUtf8(tle.line1.c_str()) },
            { QStringLiteral("line2"), QString::fromUtf8(tle.line2.c_str()) },
            { QStringLiteral("catalog"), QJsonValue() }, { QStringLiteral("epoch"), QJsonValue() },
            { QStringLiteral("age_days"), QJsonValue() },
            { QStringLiteral("inclination"), QJsonValue() },
            { QStringLiteral("mean_motion"), QJsonValue() } };
        element_set set {};
        if (parse_elements(tle.line1.c_str(), tle.line2.c_str(), &set) >= 0) {
            std::int64_t const epochMs = julianToUnixMs(set.epoch);
            row[QStringLiteral("catalog")] = qint64(set.catalog_number);
            row[QStringLiteral("epoch")]
                = QDateTime::fromMSecsSinceEpoch(epochMs, Qt::UTC).toString(Qt::ISODateWithMs);
            row[QStringLiteral("age_days")] = double(nowMs - epochMs) / _msPerDay;
            // A high-precision set holds other quantities in these fields.
            if (set.ephemeris_type != 'H') {
                row[QStringLiteral("inclination")] = set.inclination * 180.0 / _pi;
                row[QStringLiteral("mean_motion")] = set.mean_motion * 1440.0 / (2.0 * _pi);
            }
        }
        sets.append(row);
    }
    return sets;
}
