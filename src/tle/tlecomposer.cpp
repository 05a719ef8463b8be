// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/tlecomposer.h"

#include "tle/alpha5.h"
#include "tle/get_el.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

// The longest name that the checker reads as a name line.
constexpr std::size_t _longestName = 68;

bool _isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view _trimmed(std::string_view text)
{
    while (!text.empty() && _isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && _isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// A decimal such as "15.50103472" or "-.00000036", of at most 15 digits, read
// as one division of two whole numbers that a double holds exactly: correctly
// rounded, so the same double as from_chars gives, at a fraction of its cost.
// False for anything else (exponents, long digit strings), left to from_chars.
bool _plainDecimal(std::string_view text, double &number)
{
    static constexpr double powers[]
        = { 1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15 };
    bool const negative = !text.empty() && text[0] == '-';
    char const *at = text.data() + (negative ? 1 : 0);
    char const *const end = text.data() + text.size();
    std::uint64_t digits = 0;
    char const *const first = at;
    for (; at < end && unsigned(*at - '0') < 10; ++at)
        digits = digits * 10 + unsigned(*at - '0');
    long const whole = at - first;
    long decimals = 0;
    if (at < end && *at == '.') {
        char const *const point = ++at;
        for (; at < end && unsigned(*at - '0') < 10; ++at)
            digits = digits * 10 + unsigned(*at - '0');
        decimals = at - point;
    }
    if (at != end || whole + decimals == 0 || whole + decimals > 15)
        return false;
    number = double(digits) / powers[decimals];
    if (negative)
        number = -number;
    return true;
}

bool _isDigits(std::string_view text, std::size_t from, std::size_t count)
{
    if (from + count > text.size())
        return false;
    for (std::size_t i = from; i < from + count; ++i)
        if (text[i] < '0' || text[i] > '9')
            return false;
    return true;
}

int _number(std::string_view text, std::size_t from, std::size_t count)
{
    int value = 0;
    for (std::size_t i = from; i < from + count; ++i)
        value = value * 10 + (text[i] - '0');
    return value;
}

bool _isLeap(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int _daysIn(int year)
{
    return _isLeap(year) ? 366 : 365;
}

// The day of the year of a calendar date; 0 for an impossible date.
int _dayOfYear(int year, int month, int day)
{
    static int const lengths[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    if (month < 1 || month > 12 || day < 1)
        return 0;
    int const length = lengths[month - 1] + (month == 2 && _isLeap(year) ? 1 : 0);
    if (day > length)
        return 0;
    int before = 0;
    for (int m = 1; m < month; ++m)
        before += lengths[m - 1] + (m == 2 && _isLeap(year) ? 1 : 0);
    return before + day;
}

// Nanoseconds since midnight of "HH:MM:SS[.fraction]"; -1 when unreadable.
// Digits past the ninth decimal are dropped: they are far below a TLE's 0.864 ms.
std::int64_t _timeOfDayNs(std::string_view text)
{
    if (text.size() < 8 || !_isDigits(text, 0, 2) || text[2] != ':' || !_isDigits(text, 3, 2)
        || text[5] != ':' || !_isDigits(text, 6, 2))
        return -1;
    int const hours = _number(text, 0, 2);
    int const minutes = _number(text, 3, 2);
    int const seconds = _number(text, 6, 2);
    if (hours > 23 || minutes > 59 || seconds > 59)
        return -1;
    std::int64_t ns = ((hours * 60LL + minutes) * 60LL + seconds) * 1000000000LL;
    if (text.size() == 8)
        return ns;
    if (text[8] != '.' || text.size() == 9 || !_isDigits(text, 9, text.size() - 9))
        return -1;
    std::int64_t scale = 100000000;
    for (std::size_t i = 9; i < text.size() && scale > 0; ++i, scale /= 10)
        ns += (text[i] - '0') * scale;
    return ns;
}

// The field writers below put one TLE field at `at`, filling exactly its
// columns, and return false, `at` untouched, when the value doesn't fit. They
// write into the line itself: a catalog has tens of thousands of records.

// `text` right-aligned in `width` columns.
bool _putRight(std::string_view text, std::size_t width, char *at)
{
    if (text.size() > width)
        return false;
    // Byte by byte: a field is a few bytes, shorter than a call to memcpy.
    std::size_t const blanks = width - text.size();
    for (std::size_t i = 0; i < blanks; ++i)
        at[i] = ' ';
    for (std::size_t i = 0; i < text.size(); ++i)
        at[blanks + i] = text[i];
    return true;
}

// The digits of a whole number, at least `count` of them with zeros in front,
// written backwards from `end`; the new start.
char *_digitsBefore(char *end, unsigned long long number, int count)
{
    do {
        *--end = char('0' + number % 10);
        number /= 10;
    } while (--count > 0 || number > 0);
    return end;
}

// A number of at least 0 with `decimals` decimals, rounded to the nearest,
// right-aligned in `width` columns. Done with whole numbers, as printf takes
// far longer.
bool _putFixed(double value, int decimals, std::size_t width, char *at)
{
    static double const scales[] = { 1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8 };
    double const scaled = value * scales[decimals];
    if (!std::isfinite(value) || value < 0.0 || scaled >= 1e15)
        return false;
    // llround for a value of at least 0, without the call: below 2^53 the
    // whole part and the remainder are exact.
    unsigned long long number = static_cast<unsigned long long>(scaled);
    number += scaled - static_cast<double>(number) >= 0.5 ? 1 : 0;
    // The decimals peeled off one by one: dividing by a power of ten that is
    // known only at run time costs a true division, by ten a multiplication.
    char buffer[40];
    char *const end = buffer + sizeof buffer;
    char *start = end;
    for (int i = 0; i < decimals; ++i, number /= 10)
        *--start = char('0' + number % 10);
    *--start = '.';
    start = _digitsBefore(start, number, 1);
    return _putRight(std::string_view(start, std::size_t(end - start)), width, at);
}

// Ten columns: " .00002078", "-.00000036".
bool _putRate(double value, char *at)
{
    char digits[11];
    if (!_putFixed(std::fabs(value), 8, sizeof digits, digits) || digits[0] != ' '
        || digits[1] != '0')
        return false;
    // The zero in front gives way to the sign.
    at[0] = std::signbit(value) ? '-' : ' ';
    std::memcpy(at + 1, digits + 2, 9);
    return true;
}

// Eight columns: " 38550-4", " 00000-0".
bool _putExponent(double value, char *at)
{
    if (!std::isfinite(value))
        return false;
    if (value == 0.0) {
        std::memcpy(at, " 00000-0", 8);
        return true;
    }
    // "d.dddde-XX" rounds the mantissa to five digits, carrying into the
    // exponent; to_chars writes what printf's "%.4e" does, without its cost.
    char printed[32];
    char const *const end = std::to_chars(
        printed, printed + sizeof printed, std::fabs(value), std::chars_format::scientific, 4)
                                .ptr;
    int exponent = 0;
    std::from_chars(printed + 7 + (printed[7] == '+' ? 1 : 0), end, exponent);
    exponent += 1;
    if (exponent < -9 || exponent > 9)
        return false;
    char const written[] = { value < 0 ? '-' : ' ', printed[0], printed[2], printed[3], printed[4],
        printed[5], exponent < 0 ? '-' : '+', char('0' + std::abs(exponent)) };
    std::memcpy(at, written, sizeof written);
    return true;
}

// Eight columns; the parser's angle scan knows no sign.
bool _putAngle(double degrees, char *at)
{
    return _putFixed(degrees, 4, 8, at);
}

// Seven columns, the point assumed in front.
bool _putEccentricity(double value, char *at)
{
    char digits[9];
    if (!_putFixed(value, 7, sizeof digits, digits) || digits[0] != '0')
        return false;
    std::memcpy(at, digits + 2, 7);
    return true;
}

// Eleven columns.
bool _putMeanMotion(double value, char *at)
{
    return _putFixed(value, 8, 11, at);
}

bool _putInteger(long value, std::size_t width, char *at)
{
    if (value < 0)
        return false;
    char buffer[24];
    char *const end = buffer + sizeof buffer;
    char const *const start = _digitsBefore(end, static_cast<unsigned long long>(value), 1);
    return _putRight(std::string_view(start, std::size_t(end - start)), width, at);
}

// A field of `width` columns as a string of its own, for the public writers.
template <typename Put> bool _field(std::size_t width, std::string &field, Put const &put)
{
    char buffer[16];
    if (!put(buffer))
        return false;
    field.assign(buffer, width);
    return true;
}

using Keyword = TLEComposer::Keyword;

// The spellings of the keywords, in the order of TLEComposer::Keyword.
char const *const _keywordNames[] = { "OBJECT_NAME", "OBJECT_ID", "NORAD_CAT_ID",
    "CLASSIFICATION_TYPE", "EPOCH", "MEAN_MOTION_DOT", "MEAN_MOTION_DDOT", "BSTAR",
    "EPHEMERIS_TYPE", "ELEMENT_SET_NO", "INCLINATION", "RA_OF_ASC_NODE", "ECCENTRICITY",
    "ARG_OF_PERICENTER", "MEAN_ANOMALY", "MEAN_MOTION", "REV_AT_EPOCH" };
static_assert(sizeof _keywordNames / sizeof *_keywordNames == TLEComposer::KeywordCount);

std::string _name(Keyword key)
{
    return _keywordNames[key];
}

// Reads the keywords of one record, remembering the first fault.
class _Reader
{
public:
    explicit _Reader(TLEComposer::Values const &values) : _values(values) { }

    bool ok() const { return _reason.empty(); }
    std::string const &reason() const { return _reason; }

    // The trimmed text of a keyword; `fallback` when the record lacks it, or
    // a fault when there is none.
    std::string_view text(Keyword key, char const *fallback = nullptr)
    {
        if (std::optional<std::string_view> const &value = _values[key])
            return _trimmed(*value);
        if (fallback)
            return fallback;
        _fail("has no " + _name(key));
        return std::string_view();
    }

    double decimal(Keyword key)
    {
        std::string_view const value = text(key);
        if (!ok())
            return 0.0;
        // from_chars takes no "+" in front, and the locale has no say in it.
        std::size_t const start = !value.empty() && value[0] == '+' ? 1 : 0;
        double number = 0.0;
        if (_plainDecimal(value.substr(start), number))
            return number;
        char const *end = value.data() + value.size();
        auto const result = std::from_chars(value.data() + start, end, number);
        if (value.size() == start || result.ec != std::errc() || result.ptr != end
            || !std::isfinite(number))
            _fail(_name(key) + " \"" + std::string(value) + "\" is not a number");
        return number;
    }

    long whole(Keyword key, char const *fallback = nullptr)
    {
        std::string_view const value = text(key, fallback);
        if (!ok())
            return 0;
        long number = 0;
        char const *end = value.data() + value.size();
        auto const result = std::from_chars(value.data(), end, number);
        if (value.empty() || result.ec != std::errc() || result.ptr != end)
            _fail(_name(key) + " \"" + std::string(value) + "\" is not a whole number");
        return number;
    }

    // Writes a field, or fails naming the keyword and its value.
    void field(bool written, Keyword key)
    {
        if (ok() && !written)
            _fail(_name(key) + " " + std::string(text(key)) + " does not fit its columns");
    }

    void fail(std::string const &reason) { _fail(reason); }

private:
    void _fail(std::string const &reason)
    {
        if (_reason.empty())
            _reason = reason;
    }

    TLEComposer::Values const &_values;
    std::string _reason;
};

// Eight columns: "98067A  ".
bool _putDesignator(std::string_view objectId, char *at)
{
    std::string_view const id = _trimmed(objectId);
    if (id.empty()) {
        std::memset(at, ' ', 8);
        return true;
    }
    // yyyy-nnnP, with one to three letters for the piece.
    if (id.size() < 9 || id.size() > 11 || !_isDigits(id, 0, 4) || id[4] != '-'
        || !_isDigits(id, 5, 3))
        return false;
    for (std::size_t i = 8; i < id.size(); ++i)
        if (id[i] < 'A' || id[i] > 'Z')
            return false;
    std::memcpy(at, id.data() + 2, 2);
    std::memcpy(at + 2, id.data() + 5, 3);
    std::memset(at + 5, ' ', 3);
    std::memcpy(at + 5, id.data() + 8, id.size() - 8);
    return true;
}

// Fourteen columns: "04005.51955591".
bool _putEpoch(std::string_view epoch, char *at)
{
    std::string_view text = _trimmed(epoch);
    if (!text.empty() && text.back() == 'Z')
        text.remove_suffix(1);
    std::size_t const t = text.find('T');
    if (t == std::string_view::npos || !_isDigits(text, 0, 4) || text.size() < 5 || text[4] != '-')
        return false;
    int year = _number(text, 0, 4);
    int day = 0;
    if (t == 8 && _isDigits(text, 5, 3)) {
        day = _number(text, 5, 3);
        if (day < 1 || day > _daysIn(year))
            return false;
    } else if (t == 10 && _isDigits(text, 5, 2) && text[7] == '-' && _isDigits(text, 8, 2)) {
        day = _dayOfYear(year, _number(text, 5, 2), _number(text, 8, 2));
    }
    std::int64_t const ns = _timeOfDayNs(text.substr(t + 1));
    if (day == 0 || ns < 0)
        return false;
    // 1e-8 day is 864000 ns; round to the nearest and carry.
    std::int64_t fraction = (ns + 432000) / 864000;
    if (fraction == 100000000) {
        fraction = 0;
        if (++day > _daysIn(year)) {
            day = 1;
            ++year;
        }
    }
    // The parser reads 57 to 99 as 1957 to 1999 and 00 to 56 as 2000 to 2056.
    if (year < 1957 || year > 2056)
        return false;
    // "yyddd.dddddddd", written with whole numbers as printf takes far longer.
    char *start = _digitsBefore(at + 14, static_cast<unsigned long long>(fraction), 8);
    *--start = '.';
    start = _digitsBefore(start, static_cast<unsigned long long>(day), 3);
    _digitsBefore(start, static_cast<unsigned long long>(year % 100), 2);
    return true;
}

bool _nameLine(_Reader &reader, std::string &name)
{
    name = reader.text(TLEComposer::ObjectName);
    if (!reader.ok())
        return false;
    if (name.size() > _longestName) {
        reader.fail("OBJECT_NAME has " + std::to_string(name.size())
            + " bytes; a name line holds 68 at most");
        return false;
    }
    for (char const c : name)
        if (static_cast<unsigned char>(c) < 0x20) {
            reader.fail("OBJECT_NAME holds a control character");
            return false;
        }
    return true;
}

// Five columns, in the Alpha-5 form from 100000 on.
bool _putCatalog(_Reader &reader, char *at)
{
    long const number = reader.whole(TLEComposer::NoradCatId);
    std::string field;
    if (reader.ok() && !Alpha5::encode(number, field))
        reader.fail("NORAD_CAT_ID " + std::to_string(number) + " is "
            + (number < 0 ? std::string("negative")
                          : "above 339999, the last number of the Alpha-5 form"));
    if (!reader.ok())
        return false;
    std::memcpy(at, field.data(), 5);
    return true;
}

// One printable byte: the classification letter or the ephemeris type digit.
bool _oneByte(std::string_view text)
{
    return text.size() == 1 && text[0] > ' ' && text[0] <= 'z';
}

// The line with its check digit, from the 69 columns written.
std::string _finished(char const (&columns)[69])
{
    std::string line(columns, sizeof columns);
    TLEComposer::setCheckDigit(line);
    return line;
}

// The columns between the fields are blanks, but for the line number.
bool _line1(_Reader &reader, std::string &line)
{
    char columns[69];
    std::memset(columns, ' ', sizeof columns);
    columns[0] = '1';
    _putCatalog(reader, columns + 2);
    std::string_view const classification = reader.text(TLEComposer::ClassificationType, "U");
    if (reader.ok() && !_oneByte(classification))
        reader.fail(
            "CLASSIFICATION_TYPE \"" + std::string(classification) + "\" is not one letter");
    columns[7] = classification.empty() ? ' ' : classification[0];
    reader.field(
        _putDesignator(reader.text(TLEComposer::ObjectId), columns + 9), TLEComposer::ObjectId);
    reader.field(_putEpoch(reader.text(TLEComposer::Epoch), columns + 18), TLEComposer::Epoch);
    reader.field(_putRate(reader.decimal(TLEComposer::MeanMotionDot), columns + 33),
        TLEComposer::MeanMotionDot);
    reader.field(_putExponent(reader.decimal(TLEComposer::MeanMotionDdot), columns + 44),
        TLEComposer::MeanMotionDdot);
    reader.field(
        _putExponent(reader.decimal(TLEComposer::Bstar), columns + 53), TLEComposer::Bstar);
    long const type = reader.whole(TLEComposer::EphemerisType, "0");
    if (reader.ok() && (type < 0 || type > 9))
        reader.fail("EPHEMERIS_TYPE " + std::to_string(type) + " does not fit its column");
    columns[62] = char('0' + type);
    reader.field(_putInteger(reader.whole(TLEComposer::ElementSetNo), 4, columns + 64),
        TLEComposer::ElementSetNo);
    if (!reader.ok())
        return false;
    line = _finished(columns);
    return true;
}

bool _line2(_Reader &reader, std::string_view catalog, std::string &line)
{
    char columns[69];
    std::memset(columns, ' ', sizeof columns);
    columns[0] = '2';
    std::memcpy(columns + 2, catalog.data(), 5);
    reader.field(
        _putAngle(reader.decimal(TLEComposer::Inclination), columns + 8), TLEComposer::Inclination);
    reader.field(_putAngle(reader.decimal(TLEComposer::RaOfAscNode), columns + 17),
        TLEComposer::RaOfAscNode);
    reader.field(_putEccentricity(reader.decimal(TLEComposer::Eccentricity), columns + 26),
        TLEComposer::Eccentricity);
    reader.field(_putAngle(reader.decimal(TLEComposer::ArgOfPericenter), columns + 34),
        TLEComposer::ArgOfPericenter);
    reader.field(_putAngle(reader.decimal(TLEComposer::MeanAnomaly), columns + 43),
        TLEComposer::MeanAnomaly);
    reader.field(_putMeanMotion(reader.decimal(TLEComposer::MeanMotion), columns + 52),
        TLEComposer::MeanMotion);
    reader.field(_putInteger(reader.whole(TLEComposer::RevAtEpoch), 5, columns + 63),
        TLEComposer::RevAtEpoch);
    if (!reader.ok())
        return false;
    line = _finished(columns);
    return true;
}

} // namespace

char const *TLEComposer::keywordName(Keyword keyword)
{
    return _keywordNames[keyword];
}

TLEComposer::Keyword TLEComposer::keyword(std::string_view name)
{
    int k = 0;
    while (k < KeywordCount && name != _keywordNames[k])
        ++k;
    return Keyword(k);
}

TLEComposer::Values TLEComposer::values(Fields const &fields)
{
    Values values;
    for (int k = 0; k < KeywordCount; ++k)
        if (std::string const *value = fields.find(_keywordNames[k]))
            values[k] = *value;
    return values;
}

bool TLEComposer::compose(Fields const &fields, CheckerTLE::TLE &tle, std::string &reason)
{
    return compose(values(fields), tle, reason);
}

bool TLEComposer::compose(Values const &values, CheckerTLE::TLE &tle, std::string &reason)
{
    _Reader reader(values);
    std::string name, line1, line2;
    if (_nameLine(reader, name) && _line1(reader, line1))
        _line2(reader, std::string_view(line1).substr(2, 5), line2);
    if (!reader.ok()) {
        reason = reader.reason();
        return false;
    }
    tle = { std::move(name), std::move(line1), std::move(line2) };
    return true;
}

bool TLEComposer::designatorField(std::string const &objectId, std::string &field)
{
    return _field(8, field, [&](char *at) { return _putDesignator(objectId, at); });
}

bool TLEComposer::epochField(std::string const &epoch, std::string &field)
{
    return _field(14, field, [&](char *at) { return _putEpoch(epoch, at); });
}

bool TLEComposer::rateField(double value, std::string &field)
{
    return _field(10, field, [&](char *at) { return _putRate(value, at); });
}

bool TLEComposer::exponentField(double value, std::string &field)
{
    return _field(8, field, [&](char *at) { return _putExponent(value, at); });
}

bool TLEComposer::angleField(double degrees, std::string &field)
{
    return _field(8, field, [&](char *at) { return _putAngle(degrees, at); });
}

bool TLEComposer::eccentricityField(double value, std::string &field)
{
    return _field(7, field, [&](char *at) { return _putEccentricity(value, at); });
}

bool TLEComposer::meanMotionField(double value, std::string &field)
{
    return _field(11, field, [&](char *at) { return _putMeanMotion(value, at); });
}

bool TLEComposer::integerField(long value, int width, std::string &field)
{
    std::string text;
    if (value < 0 || width < 1)
        return false;
    text.resize(static_cast<std::size_t>(width));
    if (!_putInteger(value, text.size(), text.data()))
        return false;
    field = std::move(text);
    return true;
}

void TLEComposer::setCheckDigit(std::string &line)
{
    // With "0" as check digit, tle_checksum gives the sum modulo 10 itself.
    line[68] = '0';
    line[68] = char('0' + tle_checksum(line.c_str()));
}
