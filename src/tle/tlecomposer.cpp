// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/tlecomposer.h"

#include "tle/alpha5.h"
#include "tle/get_el.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace {

// The longest name that the checker reads as a name line.
constexpr std::size_t _longestName = 68;

std::string_view _trimmed(std::string_view text)
{
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return std::string_view();
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
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

bool _fits(std::string_view text, std::size_t width, std::string &field)
{
    if (text.size() > width)
        return false;
    field.assign(width - text.size(), ' ');
    field += text;
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
// far longer and a catalog has thousands of records.
bool _fixed(double value, int decimals, std::size_t width, std::string &field)
{
    static double const scales[] = { 1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8 };
    double const scaled = value * scales[decimals];
    if (!std::isfinite(value) || value < 0.0 || scaled >= 1e15)
        return false;
    unsigned long long number = static_cast<unsigned long long>(std::llround(scaled));
    unsigned long long const scale = static_cast<unsigned long long>(scales[decimals]);
    char buffer[40];
    char *start = _digitsBefore(buffer + sizeof buffer, number % scale, decimals);
    *--start = '.';
    start = _digitsBefore(start, number / scale, 1);
    return _fits(
        std::string_view(start, std::size_t(buffer + sizeof buffer - start)), width, field);
}

// ------------------------------------------------------------ the record

std::string _joined(std::initializer_list<std::string_view> pieces)
{
    std::string text;
    text.reserve(69);
    for (std::string_view const piece : pieces)
        text += piece;
    return text;
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

bool _designatorField(std::string_view objectId, std::string &field)
{
    std::string_view const id = _trimmed(objectId);
    if (id.empty()) {
        field = std::string(8, ' ');
        return true;
    }
    // yyyy-nnnP, with one to three letters for the piece.
    if (id.size() < 9 || id.size() > 11 || !_isDigits(id, 0, 4) || id[4] != '-'
        || !_isDigits(id, 5, 3))
        return false;
    for (std::size_t i = 8; i < id.size(); ++i)
        if (id[i] < 'A' || id[i] > 'Z')
            return false;
    field.assign(id.substr(2, 2));
    field.append(id.substr(5, 3));
    field.append(id.substr(8));
    field.resize(8, ' ');
    return true;
}

bool _epochField(std::string_view epoch, std::string &field)
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
    char buffer[14];
    char *start
        = _digitsBefore(buffer + sizeof buffer, static_cast<unsigned long long>(fraction), 8);
    *--start = '.';
    start = _digitsBefore(start, static_cast<unsigned long long>(day), 3);
    _digitsBefore(start, static_cast<unsigned long long>(year % 100), 2);
    field.assign(buffer, sizeof buffer);
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

bool _catalogField(_Reader &reader, std::string &field)
{
    long const number = reader.whole(TLEComposer::NoradCatId);
    if (reader.ok() && !Alpha5::encode(number, field))
        reader.fail("NORAD_CAT_ID " + std::to_string(number) + " is "
            + (number < 0 ? std::string("negative")
                          : "above 339999, the last number of the Alpha-5 form"));
    return reader.ok();
}

// One printable byte: the classification letter or the ephemeris type digit.
bool _oneByte(std::string const &text)
{
    return text.size() == 1 && text[0] > ' ' && text[0] <= 'z';
}

bool _line1(_Reader &reader, std::string &line)
{
    std::string catalog, designator, epoch, rate, accel, drag, number;
    _catalogField(reader, catalog);
    std::string const classification(reader.text(TLEComposer::ClassificationType, "U"));
    if (reader.ok() && !_oneByte(classification))
        reader.fail("CLASSIFICATION_TYPE \"" + classification + "\" is not one letter");
    reader.field(
        _designatorField(reader.text(TLEComposer::ObjectId), designator), TLEComposer::ObjectId);
    reader.field(_epochField(reader.text(TLEComposer::Epoch), epoch), TLEComposer::Epoch);
    reader.field(TLEComposer::rateField(reader.decimal(TLEComposer::MeanMotionDot), rate),
        TLEComposer::MeanMotionDot);
    reader.field(TLEComposer::exponentField(reader.decimal(TLEComposer::MeanMotionDdot), accel),
        TLEComposer::MeanMotionDdot);
    reader.field(
        TLEComposer::exponentField(reader.decimal(TLEComposer::Bstar), drag), TLEComposer::Bstar);
    long const type = reader.whole(TLEComposer::EphemerisType, "0");
    if (reader.ok() && (type < 0 || type > 9))
        reader.fail("EPHEMERIS_TYPE " + std::to_string(type) + " does not fit its column");
    reader.field(TLEComposer::integerField(reader.whole(TLEComposer::ElementSetNo), 4, number),
        TLEComposer::ElementSetNo);
    if (!reader.ok())
        return false;
    char const ephemeris[] = { char('0' + type), '\0' };
    line = _joined({ "1 ", catalog, classification, " ", designator, " ", epoch, " ", rate, " ",
        accel, " ", drag, " ", ephemeris, " ", number, "0" });
    TLEComposer::setCheckDigit(line);
    return true;
}

bool _line2(_Reader &reader, std::string const &catalog, std::string &line)
{
    std::string inclination, node, eccentricity, perigee, anomaly, motion, revolution;
    reader.field(TLEComposer::angleField(reader.decimal(TLEComposer::Inclination), inclination),
        TLEComposer::Inclination);
    reader.field(TLEComposer::angleField(reader.decimal(TLEComposer::RaOfAscNode), node),
        TLEComposer::RaOfAscNode);
    reader.field(
        TLEComposer::eccentricityField(reader.decimal(TLEComposer::Eccentricity), eccentricity),
        TLEComposer::Eccentricity);
    reader.field(TLEComposer::angleField(reader.decimal(TLEComposer::ArgOfPericenter), perigee),
        TLEComposer::ArgOfPericenter);
    reader.field(TLEComposer::angleField(reader.decimal(TLEComposer::MeanAnomaly), anomaly),
        TLEComposer::MeanAnomaly);
    reader.field(TLEComposer::meanMotionField(reader.decimal(TLEComposer::MeanMotion), motion),
        TLEComposer::MeanMotion);
    reader.field(TLEComposer::integerField(reader.whole(TLEComposer::RevAtEpoch), 5, revolution),
        TLEComposer::RevAtEpoch);
    if (!reader.ok())
        return false;
    line = _joined({ "2 ", catalog, " ", inclination, " ", node, " ", eccentricity, " ", perigee,
        " ", anomaly, " ", motion, revolution, "0" });
    TLEComposer::setCheckDigit(line);
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
        _line2(reader, line1.substr(2, 5), line2);
    if (!reader.ok()) {
        reason = reader.reason();
        return false;
    }
    tle = { std::move(name), std::move(line1), std::move(line2) };
    return true;
}

bool TLEComposer::designatorField(std::string const &objectId, std::string &field)
{
    return _designatorField(objectId, field);
}

bool TLEComposer::epochField(std::string const &epoch, std::string &field)
{
    return _epochField(epoch, field);
}

bool TLEComposer::rateField(double value, std::string &field)
{
    std::string digits;
    if (!_fixed(std::fabs(value), 8, 11, digits) || digits[0] != ' ' || digits[1] != '0')
        return false;
    // The zero in front gives way to the sign.
    field = digits.substr(1);
    field[0] = std::signbit(value) ? '-' : ' ';
    return true;
}

bool TLEComposer::exponentField(double value, std::string &field)
{
    if (!std::isfinite(value))
        return false;
    if (value == 0.0) {
        field = " 00000-0";
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
    field.assign(written, sizeof written);
    return true;
}

bool TLEComposer::angleField(double degrees, std::string &field)
{
    // The parser's angle scan knows no sign.
    return _fixed(degrees, 4, 8, field);
}

bool TLEComposer::eccentricityField(double value, std::string &field)
{
    std::string digits;
    if (!_fixed(value, 7, 9, digits) || digits[0] != '0')
        return false;
    field = digits.substr(2);
    return true;
}

bool TLEComposer::meanMotionField(double value, std::string &field)
{
    return _fixed(value, 8, 11, field);
}

bool TLEComposer::integerField(long value, int width, std::string &field)
{
    if (value < 0)
        return false;
    return _fits(std::to_string(value), static_cast<std::size_t>(width), field);
}

void TLEComposer::setCheckDigit(std::string &line)
{
    // With "0" as check digit, tle_checksum gives the sum modulo 10 itself.
    line[68] = '0';
    line[68] = char('0' + tle_checksum(line.c_str()));
}
