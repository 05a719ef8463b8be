// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/get_el.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr double _twoPi = 6.283185307179586;
constexpr double _minutesPerDay = 1440.0;
constexpr double _minutesPerDaySquared = 2073600.0;
constexpr double _minutesPerDayCubed = 2985984000.0;
// Degrees with four implied decimals to radians: (pi / 180) * 1e-4.
constexpr double _tenThousandthDegree = 1.7453292519943296e-6;
constexpr double _julianDate1900 = 2415019.5;

// The check sum looks at bytes 0..67 as blocks rather than one by one: it runs twice
// for every set the editor reads. Bytes 64..67 make a last block, filled up with
// blanks, which lie in range and weigh nothing.

#if defined(__SSE2__)

// Block i of bytes 0..67; the last one holds bytes 64..67 and blanks.
__m128i _block(const char *line, int i)
{
    if (i < 4)
        return _mm_loadu_si128(reinterpret_cast<const __m128i *>(line + 16 * i));
    // Bytes 52..67, of which 52..63 are already counted and give way to blanks.
    const __m128i last = _mm_loadu_si128(reinterpret_cast<const __m128i *>(line + 52));
    const __m128i keep = _mm_set_epi32(-1, 0, 0, 0);
    return _mm_or_si128(_mm_and_si128(keep, last), _mm_andnot_si128(keep, _mm_set1_epi8(' ')));
}

// The sum of the byte weights over bytes 0..67: a digit its value, a "-" 1, any other
// byte 0; -1 when one of them lies outside 0x20..0x7A. All 68 bytes must be readable.
int _sumOfLine(const char *line)
{
    const __m128i flip = _mm_set1_epi8(static_cast<char>(0x80));
    const __m128i lowest = _mm_set1_epi8(static_cast<char>(0x20 ^ 0x80));
    const __m128i highest = _mm_set1_epi8(static_cast<char>(0x7A ^ 0x80));
    __m128i outOfRange = _mm_setzero_si128();
    __m128i sums = _mm_setzero_si128();
    for (int i = 0; i < 5; ++i) {
        const __m128i bytes = _block(line, i);
        // Unsigned range test by signed compares on bytes with the high bit flipped.
        const __m128i flipped = _mm_xor_si128(bytes, flip);
        outOfRange = _mm_or_si128(outOfRange, _mm_or_si128(_mm_cmplt_epi8(flipped, lowest),
                                                           _mm_cmpgt_epi8(flipped, highest)));
        const __m128i isDigit = _mm_and_si128(_mm_cmpgt_epi8(bytes, _mm_set1_epi8('0' - 1)),
                                              _mm_cmplt_epi8(bytes, _mm_set1_epi8('9' + 1)));
        const __m128i digits = _mm_and_si128(_mm_sub_epi8(bytes, _mm_set1_epi8('0')), isDigit);
        const __m128i minus =
            _mm_and_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('-')), _mm_set1_epi8(1));
        sums = _mm_add_epi64(sums, _mm_sad_epu8(_mm_add_epi8(digits, minus), _mm_setzero_si128()));
    }
    if (_mm_movemask_epi8(outOfRange) != 0)
        return -1;
    return _mm_cvtsi128_si32(sums) + _mm_cvtsi128_si32(_mm_unpackhi_epi64(sums, sums));
}

#else

struct _Tail
{
    explicit _Tail(const char *line)
    {
        std::memset(bytes, ' ', sizeof bytes);
        std::memcpy(bytes, line + 64, 4);
    }
    char bytes[8];
};

// Eight bytes to a word, each byte in its own lane, with no carry into the next.
constexpr std::uint64_t _ones = 0x0101010101010101ull;
constexpr std::uint64_t _highBits = 0x8080808080808080ull;
constexpr std::uint64_t _lowNibbles = 0x0F0F0F0F0F0F0F0Full;
constexpr std::uint64_t _lowSevenBits = 0x7F7F7F7F7F7F7F7Full;

// High bit of each byte that lies outside 0x20..0x7A.
std::uint64_t _outOfRange(std::uint64_t word)
{
    const std::uint64_t below = (word - _ones * 0x20) & ~word;
    const std::uint64_t above = (word + _ones * (127 - 0x7A)) | word;
    return (below | above) & _highBits;
}

// Per byte: a digit its value, a "-" 1, any other byte 0. Bytes must lie in 0x20..0x7A.
std::uint64_t _byteWeights(std::uint64_t word)
{
    const std::uint64_t fromZero = word + _ones * (0x80 - '0');
    const std::uint64_t fromColon = word + _ones * (0x80 - ':');
    const std::uint64_t isDigit = (fromZero & ~fromColon & _highBits) >> 7;
    const std::uint64_t digits = word & _lowNibbles & (isDigit * 0xFF);
    const std::uint64_t dashless = word ^ (_ones * '-');
    const std::uint64_t isMinus =
        (~(((dashless & _lowSevenBits) + _lowSevenBits) | dashless) & _highBits) >> 7;
    return digits + isMinus;
}

// As the block version above, eight bytes at a time.
int _sumOfLine(const char *line)
{
    const _Tail tail(line);
    std::uint64_t outOfRange = 0;
    std::uint64_t lanes = 0; // at most 9 * 9 per lane
    for (int i = 0; i < 9; ++i) {
        std::uint64_t word;
        std::memcpy(&word, i < 8 ? line + 8 * i : tail.bytes, sizeof word);
        outOfRange |= _outOfRange(word);
        lanes += _byteWeights(word);
    }
    if (outOfRange != 0)
        return -1;
    const std::uint64_t pairs =
        (lanes & 0x00FF00FF00FF00FFull) + ((lanes >> 8) & 0x00FF00FF00FF00FFull);
    return static_cast<int>((pairs * 0x0001000100010001ull) >> 48);
}

#endif

// Every number of a line is kept as a signed 32-bit value, whatever strtol made of it.
std::int32_t _readInt(const char *text)
{
    return static_cast<std::int32_t>(std::strtol(text, nullptr, 10));
}

// strtol on `count` bytes only, so that the field's neighbour doesn't join it.
template <std::size_t count>
std::int32_t _readField(const char *field)
{
    char buffer[count + 1];
    std::memcpy(buffer, field, count);
    buffer[count] = '\0';
    return _readInt(buffer);
}

// Sign, five digits, exponent sign, exponent digit. The scaling is done by repeated
// multiplication on purpose: the last bits of the result depend on it (pinned by
// exponentFieldScalesByRepeatedMultiplication).
double sci(const char *field)
{
    if (field[1] == ' ')
        return 0.0;
    const std::int32_t mantissa = _readInt(field);
    if (mantissa == 0)
        return 0.0;
    double x = static_cast<double>(mantissa) * 1e-5;
    if (field[7] == '0')
        return x;
    // The exponent digit is trusted: a byte below "0" wraps to some four thousand
    // million multiplications, one above "9" simply counts on.
    const std::uint32_t k = static_cast<std::uint32_t>(field[7] - '0');
    if (field[6] == '-') {
        for (std::uint32_t i = 0; i < k; ++i)
            x *= 0.1;
    } else {
        for (std::uint32_t i = 0; i < k; ++i)
            x *= 10.0;
    }
    return x;
}

// Sign and eight hexadecimal digits; anything else reads as 0.0.
double get_high_value(const char *field)
{
    if (field[0] != '+' && field[0] != '-')
        return 0.0;
    unsigned int value = 0;
    int consumed = 0;
    if (std::sscanf(field + 1, "%x%n", &value, &consumed) != 1 || consumed != 8)
        return 0.0;
    const double magnitude = static_cast<double>(static_cast<std::uint32_t>(value));
    return field[0] == '-' ? -magnitude : magnitude;
}

// Degrees with four decimals, ended by the blank behind the field. The decimals are
// assumed, not counted, and the bytes are not tested to be digits.
double _scanAngle(const char *field)
{
    while (*field == ' ')
        ++field;
    // Unsigned arithmetic gives the wrap-around of a 32-bit accumulator without overflow.
    std::uint32_t accumulator = 0;
    for (; *field != ' '; ++field) {
        if (*field == '.')
            continue;
        accumulator = 10u * accumulator + static_cast<std::uint32_t>(*field - '0');
    }
    return static_cast<double>(static_cast<std::int32_t>(accumulator)) * _tenThousandthDegree;
}

// Two-digit years 57..99 are 1957..1999, 00..56 are 2000..2056.
double _epoch(const char *line1)
{
    int y = line1[19] - '0';
    // Only a byte above "/" counts as the tens digit, so a blank there means 0.
    if (static_cast<signed char>(line1[18]) > '/')
        y += 10 * (line1[18] - '0');
    if (y < 57)
        y += 100;
    const int j = y * 365 + (y - 1) / 4;
    const std::int32_t day = _readInt(line1 + 20);
    const std::int32_t fraction = _readInt(line1 + 24);
    return static_cast<double>(fraction) * 1e-8 + day + _julianDate1900 + static_cast<double>(j);
}

void _readIdentity(const char *line1, const char *line2, element_set *sat)
{
    sat->epoch = _epoch(line1);
    sat->catalog_number = _readInt(line1 + 2);
    sat->element_number = _readField<4>(line1 + 64);
    sat->classification = line1[7];
    std::memcpy(sat->international_designator, line1 + 9, 8);
    sat->international_designator[8] = '\0';
    sat->revolution_number = _readField<5>(line2 + 63);
    sat->ephemeris_type = line1[62];
}

// Six raw values in place of the elements; the rates and the drag term stay as they were.
void _readHighPrecision(const char *line1, const char *line2, element_set *sat)
{
    double *const values[6] = {&sat->inclination,      &sat->ascending_node, &sat->eccentricity,
                               &sat->perigee_argument, &sat->mean_anomaly,   &sat->mean_motion};
    for (int i = 0; i < 3; ++i) {
        *values[i] = get_high_value(line1 + 33 + 10 * i);
        *values[i + 3] = get_high_value(line2 + 33 + 10 * i) * 0.0001;
    }
}

void _readElements(const char *line1, const char *line2, element_set *sat)
{
    sat->mean_anomaly = _scanAngle(line2 + 43);
    sat->ascending_node = _scanAngle(line2 + 17);
    sat->perigee_argument = _scanAngle(line2 + 34);
    sat->inclination = _scanAngle(line2 + 8);
    sat->eccentricity = static_cast<double>(_readInt(line2 + 26)) * 1e-7;

    char motion[13];
    std::memcpy(motion, line2 + 51, 12);
    motion[12] = '\0';
    const std::int32_t revolutions = _readInt(motion);
    const std::int32_t revolutionFraction = _readInt(motion + 4);
    sat->mean_motion =
        (static_cast<double>(revolutionFraction) * 1e-8 + revolutions) * _twoPi / _minutesPerDay;

    const std::int32_t rate = _readInt(line1 + 35);
    sat->mean_motion_rate = (static_cast<double>(rate) * 1e-8) * _twoPi / _minutesPerDaySquared;
    // A "-" with all digits zero gives a negative zero; that is kept (pinned by
    // negativeRateOfZeroIsNegativeZero).
    if (line1[33] == '-')
        sat->mean_motion_rate = -sat->mean_motion_rate;

    sat->mean_motion_accel =
        line1[45] == ' ' ? 0.0 : sci(line1 + 44) * _twoPi / _minutesPerDayCubed;
    sat->drag_term = line1[54] == ' ' ? 0.0 : sci(line1 + 53);
}

} // namespace

int tle_checksum(const char *line)
{
    if ((line[0] != '1' && line[0] != '2') || line[1] != ' ')
        return -1;
    // A zero before index 68 ends the line early; past this test bytes 0..67 can be
    // read as a block.
    if (std::memchr(line, '\0', 68) != nullptr)
        return -2;
    const int sum = _sumOfLine(line);
    if (sum < 0)
        return -2;
    // A line of 68 bytes ends at index 68: there is no index 69 to look at.
    if (line[68] != '\0' && static_cast<signed char>(line[69]) > 0x20)
        return -3;
    // The check digit is not required to be a digit; its byte value takes part as it is.
    const int digit = static_cast<signed char>(line[68]) - 0x30;
    int difference = (sum - digit) % 10;
    if (difference < 0)
        difference += 10;
    return difference;
}

int parse_elements(const char *line1, const char *line2, element_set *sat)
{
    if (line1[0] != '1' || line2[0] != '2')
        return -104;
    int result = 0;
    const int check1 = tle_checksum(line1);
    if (check1 < 0)
        return check1 - 100;
    if (check1 > 0)
        result |= 1;
    const int check2 = tle_checksum(line2);
    // A malformed line 2 reports the bare checksum value, without the offset of line 1;
    // the asymmetry is kept on purpose (pinned by parseReportsMalformedLinesAsymmetrically).
    if (check2 < 0)
        return check2;
    if (check2 > 0)
        result |= 2;

    _readIdentity(line1, line2, sat);
    if (sat->ephemeris_type == 'H') {
        _readHighPrecision(line1, line2, sat);
        // A high-precision set counts as read whatever its check digits said.
        return 0;
    }
    _readElements(line1, line2, sat);
    return result;
}
