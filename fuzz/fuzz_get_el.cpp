// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The element-set parser on two lines of any bytes: the input up to its
// first line feed is line 1, the rest line 2. tle_checksum and
// parse_elements must stay inside the lines and return what their contract
// says; parse_elements must leave the record alone on a negative result.

#include "fuzzcheck.h"

#include "tle/get_el.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

// A heap copy the sanitizer watches: the line and its terminating zero, but
// never more than the 70 bytes tle_checksum may read, so that a read past
// index 69 of a long line is caught as well.
std::unique_ptr<char[]> _watched(std::string const &line, bool capAt70)
{
    std::size_t const length = std::strlen(line.c_str());
    std::size_t const size = capAt70 && length >= 70 ? 70 : length + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::memcpy(copy.get(), line.c_str(), size);
    return copy;
}

// The angle scan of line 2 skips blanks from a field's first index and then
// reads up to the next blank, not stopping at the end of the line: the
// parser takes only lines that have that blank. Others are left out.
bool _anglesEndInBlanks(char const *line2)
{
    std::size_t const length = std::strlen(line2);
    for (std::size_t start : { 8u, 17u, 34u, 43u }) {
        std::size_t i = start;
        while (i < length && line2[i] == ' ')
            ++i;
        while (i < length && line2[i] != ' ')
            ++i;
        if (i >= length)
            return false;
    }
    return true;
}

// The exponent digit of sci is taken on trust: a byte below "0" makes its
// unsigned count wrap, and the multiplication loop runs about 4.29e9 times,
// seconds per input and minutes under the sanitizers. Such input is left out.
bool _sciLoopsForAges(char const *field)
{
    if (field[1] == ' ' || field[7] == '0')
        return false;
    if (static_cast<std::int32_t>(std::strtol(field, nullptr, 10)) == 0)
        return false;
    return static_cast<unsigned char>(field[7]) < '0';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const input(reinterpret_cast<char const *>(data), size);
    std::size_t const feed = input.find('\n');
    std::string const line1 = input.substr(0, feed);
    std::string const line2 = feed == std::string::npos ? std::string() : input.substr(feed + 1);

    int const check1 = tle_checksum(_watched(line1, true).get());
    int const check2 = tle_checksum(_watched(line2, true).get());
    FUZZ_CHECK(check1 >= -3 && check1 <= 9, std::to_string(check1));
    FUZZ_CHECK(check2 >= -3 && check2 <= 9, std::to_string(check2));

    std::unique_ptr<char[]> const first = _watched(line1, false);
    std::unique_ptr<char[]> const second = _watched(line2, false);
    bool const numbered = first[0] == '1' && second[0] == '2';
    bool const readsElements = numbered && check1 >= 0 && check2 >= 0 && first[62] != 'H';
    if (readsElements
        && (!_anglesEndInBlanks(second.get()) || _sciLoopsForAges(first.get() + 44)
            || _sciLoopsForAges(first.get() + 53)))
        return -1;

    element_set record;
    std::memset(&record, 0x5a, sizeof record);
    element_set const untouched = record;
    int const result = parse_elements(first.get(), second.get(), &record);

    int expected = 0;
    if (!numbered)
        expected = -104;
    else if (check1 < 0)
        expected = check1 - 100;
    else if (check2 < 0)
        expected = check2;
    else if (first[62] != 'H')
        expected = (check1 > 0 ? 1 : 0) | (check2 > 0 ? 2 : 0);
    FUZZ_CHECK(
        result == expected, std::to_string(result) + " instead of " + std::to_string(expected));
    if (result < 0)
        FUZZ_CHECK(
            std::memcmp(&record, &untouched, sizeof record) == 0, "record written on a refusal");
    else
        FUZZ_CHECK(
            record.international_designator[8] == '\0', "designator without its terminating zero");
    return 0;
}
