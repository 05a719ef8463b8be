// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/tlereport.h"

#include "tle/get_el.h"
#include "engine/textconv.h"

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

// The figures of one set that the report shows, in its units.
struct _Figures
{
    int status = 0; // of parse_elements; negative: not readable
    element_set set {};
    std::int64_t epochMs = 0;
    double ageDays = 0.0;
    // A high-precision set holds other quantities in these fields.
    bool highPrecision = false;
    double inclinationDeg = 0.0;
    double revolutionsPerDay = 0.0;
};

_Figures _figures(CheckerTLE::TLE const &tle, std::int64_t nowMs)
{
    _Figures figures;
    figures.status = parse_elements(tle.line1.c_str(), tle.line2.c_str(), &figures.set);
    if (figures.status < 0)
        return figures;
    figures.epochMs = julianToUnixMs(figures.set.epoch);
    figures.ageDays = static_cast<double>(nowMs - figures.epochMs) / _msPerDay;
    figures.highPrecision = figures.set.ephemeris_type == 'H';
    figures.inclinationDeg = figures.set.inclination * 180.0 / _pi;
    figures.revolutionsPerDay = figures.set.mean_motion * 1440.0 / (2.0 * _pi);
    return figures;
}

std::string _setRow(CheckerTLE::TLE const &tle, std::int64_t nowMs)
{
    _Figures const figures = _figures(tle, nowMs);
    if (figures.status < 0)
        return _row(
            "%7s  %-19s  not readable (%d)  %s", "-", "-", figures.status, _name(tle).c_str());
    int const catalog = int(figures.set.catalog_number);
    std::string const date = _dateText(figures.epochMs);
    if (figures.highPrecision)
        return _row("%7d  %s  %10.2f  %10s  %12s  %s", catalog, date.c_str(), figures.ageDays, "-",
            "-", _name(tle).c_str());
    return _row("%7d  %s  %10.2f  %10.4f  %12.8f  %s", catalog, date.c_str(), figures.ageDays,
        figures.inclinationDeg, figures.revolutionsPerDay, _name(tle).c_str());
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
        QJsonObject row { { QStringLiteral("name"), _toQString(_name(tle)) },
            { QStringLiteral("line1"), _toQString(tle.line1) },
            { QStringLiteral("line2"), _toQString(tle.line2) },
            { QStringLiteral("catalog"), QJsonValue() }, { QStringLiteral("epoch"), QJsonValue() },
            { QStringLiteral("age_days"), QJsonValue() },
            { QStringLiteral("inclination"), QJsonValue() },
            { QStringLiteral("mean_motion"), QJsonValue() } };
        _Figures const figures = _figures(tle, nowMs);
        if (figures.status >= 0) {
            row[QStringLiteral("catalog")] = qint64(figures.set.catalog_number);
            row[QStringLiteral("epoch")] = QDateTime::fromMSecsSinceEpoch(figures.epochMs, Qt::UTC)
                                               .toString(Qt::ISODateWithMs);
            row[QStringLiteral("age_days")] = figures.ageDays;
        }
        if (figures.status >= 0 && !figures.highPrecision) {
            row[QStringLiteral("inclination")] = figures.inclinationDeg;
            row[QStringLiteral("mean_motion")] = figures.revolutionsPerDay;
        }
        sets.append(row);
    }
    return sets;
}
