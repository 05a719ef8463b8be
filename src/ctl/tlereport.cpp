// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/tlereport.h"

#include "tle/alpha5.h"
#include "tle/get_el.h"
#include "tle/tlecomposer.h"
#include "engine/textconv.h"

#include <QDateTime>
#include <QJsonObject>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <map>

namespace {

constexpr double _julianAtUnixEpoch = 2440587.5;
constexpr double _msPerDay = 86400000.0;
constexpr double _pi = 3.14159265358979323846;
constexpr std::size_t _dataLineSize = 69;

std::string _row(char const *format, ...) __attribute__((format(printf, 1, 2)));

std::string _row(char const *format, ...)
{
    char buffer[512];
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

std::string _days(double days)
{
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.2f", days);
    return buffer;
}

std::string _at(std::size_t textLine)
{
    return "text line #" + std::to_string(textLine);
}

// ----------------------------------------------------------- hints

std::string _byteHint(std::size_t i, std::string const &what)
{
    return what + " at column " + std::to_string(i + 1);
}

// What in one line keeps it from being a data line: bytes the checker refuses,
// its length, its number, its check digit.
void _lineHints(std::string const &line, char const *role, std::vector<std::string> &flags)
{
    std::string const prefix = std::string(role) + " has ";
    for (std::size_t i = 0; i < line.size(); ++i) {
        unsigned char const c = static_cast<unsigned char>(line[i]);
        if (c == 0xC2 && i + 1 < line.size() && static_cast<unsigned char>(line[i + 1]) == 0xA0)
            flags.push_back(_byteHint(i++, prefix + "a non-breaking space"));
        else if (c == '\t')
            flags.push_back(_byteHint(i, prefix + "a tab"));
        else if (c == '\r' && i + 1 == line.size())
            flags.push_back(std::string(role) + " ends in a carriage return");
        else if (c >= 0x80 || c < 0x20 || c > 0x7A) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "0x%02X", c);
            flags.push_back(
                _byteHint(i, prefix + (c >= 0x80 ? "the non-ASCII byte " : "the byte ") + hex));
        }
    }
    if (line.empty()) {
        flags.push_back(std::string(role) + " is an empty line");
        return;
    }
    if (line.size() != _dataLineSize) {
        std::string hint = prefix + std::to_string(line.size())
            + (line.size() == 1 ? " byte" : " bytes") + ", a data line 69";
        if (!line.empty() && line.back() == ' ')
            hint += "; it ends in a blank";
        flags.push_back(hint);
        return;
    }
    int const fault = tle_checksum(line.c_str());
    if (fault == -1 && line.compare(0, 2, "0 ") == 0)
        flags.push_back(std::string(role) + " is the \"0 NAME\" line of a three-line catalog, "
            + "taken for a data line as it has 69 bytes");
    else if (fault == -1)
        flags.push_back(std::string(role) + " does not begin with \"1 \" or \"2 \"");
    if (fault > 0) {
        std::string expected = line;
        TLEComposer::setCheckDigit(expected);
        flags.push_back(prefix + "the check digit " + line.substr(68, 1) + ", its digits give "
            + expected.substr(68, 1));
    }
}

// What the two data lines say together, and the name line: the checker lets
// swapped lines and lines of two satellites through.
void _setHints(CheckerTLE::TLE const &tle, std::vector<std::string> &flags)
{
    if (tle.line0.compare(0, 2, "0 ") == 0)
        flags.push_back("the name line begins with \"0 \" as in a three-line catalog; the \"0 \" "
                        "stays in the name");
    auto const isDataLine = [](std::string const &line) {
        return line.size() >= 7 && (line[0] == '1' || line[0] == '2') && line[1] == ' ';
    };
    if (!isDataLine(tle.line1) || !isDataLine(tle.line2))
        return;
    if (tle.line1[0] == '2' && tle.line2[0] == '1')
        flags.push_back("lines 1 and 2 are swapped");
    std::string const first = tle.line1.substr(2, 5);
    std::string const second = tle.line2.substr(2, 5);
    if (first != second)
        flags.push_back(
            "lines 1 and 2 are of different satellites (" + first + " and " + second + ")");
}

// ----------------------------------------------------------- entries

std::string _catalogText(std::string const &field, long number)
{
    if (Alpha5::isLetterForm(field))
        return field + " (" + std::to_string(number) + ")";
    return std::to_string(number);
}

void _readNumbers(TleReportEntry &entry, TleReportLimits const &limits)
{
    CheckerTLE::TLE const &tle = entry.tle;
    if (tle.line1.size() >= 7) {
        entry.catalogNumber = Alpha5::decode(tle.line1.substr(2, 5));
        if (entry.catalogNumber >= 0)
            entry.catalog = _catalogText(tle.line1.substr(2, 5), entry.catalogNumber);
    }
    if (tle.line1.size() != _dataLineSize || tle.line2.size() != _dataLineSize)
        return;
    element_set set {};
    entry.parseStatus = parse_elements(tle.line1.c_str(), tle.line2.c_str(), &set);
    if (entry.parseStatus < 0)
        return;
    entry.highPrecision = set.ephemeris_type == 'H';
    entry.epochMs = julianToUnixMs(set.epoch);
    entry.ageDays = static_cast<double>(limits.nowMs - entry.epochMs) / _msPerDay;
    entry.inclinationDeg = set.inclination * 180.0 / _pi;
    entry.revolutionsPerDay = set.mean_motion * 1440.0 / (2.0 * _pi);
    if (entry.catalogNumber < 0)
        entry.catalog = std::to_string(set.catalog_number);
}

void _epochFlags(TleReportEntry &entry, TleReportLimits const &limits)
{
    if (!entry.accepted || entry.parseStatus < 0)
        return;
    if (entry.ageDays > limits.maxAgeDays)
        entry.flags.push_back("the epoch is " + _days(entry.ageDays) + " days old, more than "
            + _days(limits.maxAgeDays));
    else if (entry.ageDays < 0.0)
        entry.flags.push_back("the epoch is " + _days(-entry.ageDays) + " days in the future");
}

TleReportEntry _entry(
    std::size_t textLine, CheckerTLE::TLE const &tle, bool accepted, TleReportLimits const &limits)
{
    TleReportEntry entry;
    entry.textLine = textLine;
    entry.accepted = accepted;
    entry.tle = tle;
    _readNumbers(entry, limits);
    if (!accepted) {
        _lineHints(tle.line1, "line 1", entry.flags);
        if (!tle.line2.empty() || tle.line1.size() == _dataLineSize)
            _lineHints(tle.line2, "line 2", entry.flags);
    }
    _setHints(tle, entry.flags);
    _epochFlags(entry, limits);
    return entry;
}

// A set broken off by a line of the wrong length. The line stands in the
// place it was fetched for; an orphaned line 2 in the place of line 1 means
// the line before it was refused.
TleReportEntry _brokenEntry(std::size_t textLine, CheckerTLE::TLE tle, std::string const &line,
    TleReportLimits const &limits)
{
    bool const asLine2 = !tle.line1.empty();
    (asLine2 ? tle.line2 : tle.line1) = line;
    TleReportEntry entry = _entry(textLine, tle, false, limits);
    if (asLine2 && tle.line1.compare(0, 2, "2 ") == 0)
        entry.flags.push_back("a line 2 stands in the place of line 1: the line before it was "
                              "refused, or the set's line 1 is missing");
    return entry;
}

void _duplicateFlags(std::vector<TleReportEntry> &entries)
{
    std::map<long, std::size_t> first;
    for (TleReportEntry &entry : entries) {
        if (!entry.accepted || entry.catalogNumber < 0)
            continue;
        auto const seen = first.emplace(entry.catalogNumber, entry.textLine);
        if (!seen.second)
            entry.flags.push_back("catalog number " + entry.catalog + " again; the first set "
                + "with it is at " + _at(seen.first->second));
    }
}

// The lines of a text as the checker fetches them: a line feed at the very
// end gives one more, empty line.
std::vector<std::string> _textLines(std::string const &text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
        lines.push_back(text.substr(start, end - start));
    lines.push_back(text.substr(start));
    return lines;
}

std::string _setRow(TleReportEntry const &entry)
{
    std::string const name = _name(entry.tle);
    if (!entry.accepted)
        return _row("%7s  refused at %s  %s", entry.catalog.c_str(), _at(entry.textLine).c_str(),
            name.c_str());
    if (entry.parseStatus < 0)
        return _row("%7s  %-19s  not readable (%d)  %s", "-", "-", entry.parseStatus, name.c_str());
    std::string const date = _dateText(entry.epochMs);
    // A high-precision set holds other quantities in these fields.
    if (entry.highPrecision)
        return _row("%7s  %s  %10.2f  %10s  %12s  %s", entry.catalog.c_str(), date.c_str(),
            entry.ageDays, "-", "-", name.c_str());
    return _row("%7s  %s  %10.2f  %10.4f  %12.8f  %s", entry.catalog.c_str(), date.c_str(),
        entry.ageDays, entry.inclinationDeg, entry.revolutionsPerDay, name.c_str());
}

} // namespace

std::int64_t julianToUnixMs(double julianDate)
{
    return std::llround((julianDate - _julianAtUnixEpoch) * _msPerDay);
}

std::vector<TleReportEntry> tleReportEntries(std::string const &text, TleReportLimits const &limits)
{
    // The grouping of CheckerTLE::parseTLEs, told by line lengths alone.
    std::vector<TleReportEntry> entries;
    std::vector<std::string> const lines = _textLines(text);
    CheckerTLE::TLE tle;
    std::size_t start = 0;
    int state = 0;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        std::string const &line = lines[n];
        if (state == 0)
            start = n;
        if (state == 0 && line.empty())
            continue;
        if (line.size() == _dataLineSize && state < 2) {
            tle.line1 = line;
            state = 2;
        } else if (line.size() == _dataLineSize) {
            tle.line2 = line;
            std::string verdict;
            entries.push_back(_entry(start, tle, _checkTLE(verdict, tle), limits));
            tle = {};
            state = 0;
        } else if (state == 0 && line.size() < _dataLineSize) {
            tle.line0 = line;
            state = 1;
        } else {
            entries.push_back(_brokenEntry(start, tle, line, limits));
            tle = {};
            state = 0;
        }
    }
    _duplicateFlags(entries);
    return entries;
}

std::vector<TleReportEntry> tleReportEntries(
    std::vector<CheckerTLE::TLE> const &tles, TleReportLimits const &limits)
{
    std::vector<TleReportEntry> entries;
    for (std::size_t i = 0; i < tles.size(); ++i)
        entries.push_back(_entry(i, tles[i], true, limits));
    _duplicateFlags(entries);
    return entries;
}

std::vector<std::string> tleReportRows(std::vector<TleReportEntry> const &entries)
{
    std::vector<std::string> rows;
    rows.push_back(_row("%7s  %-19s  %10s  %10s  %12s  %s", "Catalog", "Epoch (UTC)", "Age (d)",
        "Incl (deg)", "Rev/day", "Name"));
    for (TleReportEntry const &entry : entries) {
        rows.push_back(_setRow(entry));
        for (std::string const &flag : entry.flags)
            rows.push_back("         ! " + flag);
    }
    return rows;
}

std::vector<std::string> tleReport(std::vector<CheckerTLE::TLE> const &tles, std::int64_t nowMs)
{
    TleReportLimits limits;
    limits.nowMs = nowMs;
    return tleReportRows(tleReportEntries(tles, limits));
}

QJsonArray tleReportJson(std::vector<TleReportEntry> const &entries)
{
    QJsonArray sets;
    for (TleReportEntry const &entry : entries) {
        bool const readable = entry.accepted && entry.parseStatus >= 0;
        bool const figures = readable && !entry.highPrecision;
        QJsonArray flags;
        for (std::string const &flag : entry.flags)
            flags.append(_toQString(flag));
        sets.append(QJsonObject { { QStringLiteral("name"), _toQString(_name(entry.tle)) },
            { QStringLiteral("line1"), _toQString(entry.tle.line1) },
            { QStringLiteral("line2"), _toQString(entry.tle.line2) },
            { QStringLiteral("catalog"),
                entry.catalogNumber >= 0 ? QJsonValue(qint64(entry.catalogNumber)) : QJsonValue() },
            { QStringLiteral("epoch"),
                readable ? QJsonValue(QDateTime::fromMSecsSinceEpoch(entry.epochMs, Qt::UTC)
                                          .toString(Qt::ISODateWithMs))
                         : QJsonValue() },
            { QStringLiteral("age_days"), readable ? QJsonValue(entry.ageDays) : QJsonValue() },
            { QStringLiteral("inclination"),
                figures ? QJsonValue(entry.inclinationDeg) : QJsonValue() },
            { QStringLiteral("mean_motion"),
                figures ? QJsonValue(entry.revolutionsPerDay) : QJsonValue() },
            { QStringLiteral("accepted"), entry.accepted },
            { QStringLiteral("flags"), flags } });
    }
    return sets;
}
