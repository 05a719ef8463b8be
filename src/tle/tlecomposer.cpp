// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/tlecomposer.h"

#include "tle/alpha5.h"
#include "tle/get_el.h"
#include "tle/settext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace {

// The longest name that the checker reads as a name line.
constexpr std::size_t _longestName = 68;

inline bool _isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

inline std::string_view _trimmed(std::string_view text)
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
    static int const before[] = { 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334 };
    if (month < 1 || month > 12 || day < 1)
        return 0;
    int const leapDay = _isLeap(year) ? 1 : 0;
    if (day > lengths[month - 1] + (month == 2 ? leapDay : 0))
        return 0;
    return before[month - 1] + (month > 2 ? leapDay : 0) + day;
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

// Whether `text` is spelt as a field spells its number: an optional minus,
// whole digits without zeros in front, a point and exactly `decimals`
// decimals. Reading such a text and rounding it to its own decimals gives back
// its digits, so the fields below copy it as it stands; catalogs spell so.
bool _isWrittenWith(std::string_view text, std::size_t decimals)
{
    std::size_t const sign = !text.empty() && text[0] == '-' ? 1 : 0;
    if (text.size() < sign + decimals + 2)
        return false;
    std::size_t const point = text.size() - decimals - 1;
    return text[point] == '.' && (point == sign + 1 || text[sign] != '0')
        && _isDigits(text, sign, point - sign) && _isDigits(text, point + 1, decimals);
}

bool _copyRate(std::string_view text, char *at)
{
    bool const negative = text[0] == '-';
    std::string_view const digits = text.substr(negative ? 1 : 0);
    if (digits.size() != 10 || digits[0] != '0')
        return false;
    at[0] = negative ? '-' : ' ';
    std::memcpy(at + 1, digits.data() + 1, 9);
    return true;
}

bool _copyEccentricity(std::string_view text, char *at)
{
    if (text.size() != 9 || text[0] != '0')
        return false;
    std::memcpy(at, text.data() + 2, 7);
    return true;
}

// Degrees and revolutions per day know no sign.
template <std::size_t width> bool _copyRight(std::string_view text, char *at)
{
    return text[0] != '-' && _putRight(text, width, at);
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
        // Digits alone, as a catalog writes them, need no from_chars.
        if (!value.empty() && value.size() <= 9 && _isDigits(value, 0, value.size()))
            return _number(value, 0, value.size());
        long number = 0;
        char const *end = value.data() + value.size();
        auto const result = std::from_chars(value.data(), end, number);
        if (value.empty() || result.ec != std::errc() || result.ptr != end)
            _fail(_name(key) + " \"" + std::string(value) + "\" is not a whole number");
        return number;
    }

    // The trimmed text of a keyword that the record has and that is written
    // with `decimals` decimals; empty for any other.
    std::string_view written(Keyword key, std::size_t decimals) const
    {
        std::optional<std::string_view> const &value = _values[key];
        std::string_view const text = value ? _trimmed(*value) : std::string_view();
        return _isWrittenWith(text, decimals) ? text : std::string_view();
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

// A field of `decimals` decimals: a text already written so is copied by
// `copy`; any other text, or one that `copy` can't place, goes through its
// number and `put`, which also finds the fault of a value that doesn't fit.
template <typename Copy, typename Put>
void _decimalField(
    _Reader &reader, Keyword key, std::size_t decimals, char *at, Copy const &copy, Put const &put)
{
    std::string_view const text = reader.written(key, decimals);
    if (reader.ok() && !text.empty() && copy(text, at))
        return;
    reader.field(put(reader.decimal(key), at), key);
}

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
    // "yyyy-mm-ddT" or "yyyy-dddT": the T stands at 10 or 8, or nowhere that counts.
    std::size_t const t = text.size() > 10 && text[10] == 'T' ? 10
        : text.size() > 8 && text[8] == 'T'                   ? 8
                                                              : std::string_view::npos;
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

bool _nameLine(_Reader &reader, std::string_view &name)
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
    if (reader.ok() && !Alpha5::encode(number, at))
        reader.fail("NORAD_CAT_ID " + std::to_string(number) + " is "
            + (number < 0 ? std::string("negative")
                          : "above 339999, the last number of the Alpha-5 form"));
    return reader.ok();
}

// One printable byte: the classification letter or the ephemeris type digit.
bool _oneByte(std::string_view text)
{
    return text.size() == 1 && text[0] > ' ' && text[0] <= 'z';
}

// The check digit at index 68 of a line of 69 bytes, read up to the one after.
void _putCheckDigit(char *line)
{
    // With "0" as check digit, tle_checksum gives the sum modulo 10 itself.
    line[68] = '0';
    line[68] = char('0' + tle_checksum(line));
}

// The set of one record as written: the name a view into the record, each
// data line its 69 columns and a NUL, as tle_checksum reads a line.
struct _Set
{
    std::string_view name;
    char line1[70];
    char line2[70];
};

// The columns of a data line: blanks, but for the line number.
char *_blankLine(char (&columns)[70], char number)
{
    std::memset(columns, ' ', 69);
    columns[0] = number;
    columns[69] = '\0';
    return columns;
}

bool _line1(_Reader &reader, char (&line)[70])
{
    char *const columns = _blankLine(line, '1');
    _putCatalog(reader, columns + 2);
    std::string_view const classification = reader.text(TLEComposer::ClassificationType, "U");
    if (reader.ok() && !_oneByte(classification))
        reader.fail(
            "CLASSIFICATION_TYPE \"" + std::string(classification) + "\" is not one letter");
    columns[7] = classification.empty() ? ' ' : classification[0];
    reader.field(
        _putDesignator(reader.text(TLEComposer::ObjectId), columns + 9), TLEComposer::ObjectId);
    reader.field(_putEpoch(reader.text(TLEComposer::Epoch), columns + 18), TLEComposer::Epoch);
    _decimalField(reader, TLEComposer::MeanMotionDot, 8, columns + 33, _copyRate, _putRate);
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
    _putCheckDigit(columns);
    return true;
}

bool _line2(_Reader &reader, char const *catalog, char (&line)[70])
{
    char *const columns = _blankLine(line, '2');
    std::memcpy(columns + 2, catalog, 5);
    _decimalField(reader, TLEComposer::Inclination, 4, columns + 8, _copyRight<8>, _putAngle);
    _decimalField(reader, TLEComposer::RaOfAscNode, 4, columns + 17, _copyRight<8>, _putAngle);
    _decimalField(reader, TLEComposer::Eccentricity, 7, columns + 26, _copyEccentricity,
        _putEccentricity);
    _decimalField(
        reader, TLEComposer::ArgOfPericenter, 4, columns + 34, _copyRight<8>, _putAngle);
    _decimalField(reader, TLEComposer::MeanAnomaly, 4, columns + 43, _copyRight<8>, _putAngle);
    _decimalField(
        reader, TLEComposer::MeanMotion, 8, columns + 52, _copyRight<11>, _putMeanMotion);
    reader.field(_putInteger(reader.whole(TLEComposer::RevAtEpoch), 5, columns + 63),
        TLEComposer::RevAtEpoch);
    if (!reader.ok())
        return false;
    _putCheckDigit(columns);
    return true;
}

// The set of one record; false with the reason when it can't be written.
bool _compose(TLEComposer::Values const &values, _Set &set, std::string &reason)
{
    _Reader reader(values);
    if (_nameLine(reader, set.name) && _line1(reader, set.line1))
        _line2(reader, set.line1 + 2, set.line2);
    if (!reader.ok()) {
        reason = reader.reason();
        return false;
    }
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
    _Set set;
    if (!_compose(values, set, reason))
        return false;
    tle = { std::string(set.name), std::string(set.line1, 69), std::string(set.line2, 69) };
    return true;
}

bool TLEComposer::appendSet(Values const &values, std::string &text, std::string &reason)
{
    _Set set;
    if (!_compose(values, set, reason))
        return false;
    if (!text.empty())
        text += "\n\n";
    _appendSetText(text, set.name, std::string_view(set.line1, 69), std::string_view(set.line2, 69));
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
    // data() of a string of 69 bytes ends with a NUL at index 69.
    _putCheckDigit(line.data());
}
