// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The TLE text checker on any text: only its own messages, the summary
// last, only valid sets of 69-byte lines returned, and what TLEs2text writes
// of them reads back as the same sets.

#include "fuzzcheck.h"

#include "tle/checkertle.h"

#include <cstdint>
#include <string>
#include <vector>

using fuzzcheck::startsWith;

namespace {

bool _same(std::vector<CheckerTLE::TLE> const &a, std::vector<CheckerTLE::TLE> const &b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i].line0 != b[i].line0 || a[i].line1 != b[i].line1 || a[i].line2 != b[i].line2)
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    CheckerTLE::TLE const before { "before", "before", "before" };
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles { before };
    int const result = CheckerTLE::parseTLEs(messages, tles, text);

    if (text.empty()) {
        FUZZ_CHECK(result == 2 && messages == std::vector<std::string> { "TLEs text is empty." },
            "empty text");
        FUZZ_CHECK(_same(tles, { before }), "records of an empty text changed");
        return 0;
    }
    FUZZ_CHECK(result == 0 || result == 1, std::to_string(result));
    FUZZ_CHECK(!messages.empty(), "no summary");
    FUZZ_CHECK(messages.back() == std::to_string(tles.size()) + " problem-free TLEs were parsed.",
        messages.back());
    FUZZ_CHECK((result == 1) == (messages.size() > 1), "result and messages disagree");
    for (std::size_t i = 0; i + 1 < messages.size(); ++i)
        FUZZ_CHECK(startsWith(messages[i], "TextLine #") || startsWith(messages[i], "Line #"),
            messages[i]);
    for (CheckerTLE::TLE const &tle : tles) {
        std::string verdict;
        FUZZ_CHECK(_checkTLE(verdict, tle), verdict);
        FUZZ_CHECK(tle.line0.size() < 69 && tle.line1.size() == 69 && tle.line2.size() == 69,
            "line sizes");
        FUZZ_CHECK((tle.line0 + tle.line1 + tle.line2).find('\n') == std::string::npos,
            "line feed in a line");
    }

    std::vector<std::string> writing;
    std::string written;
    FUZZ_CHECK(CheckerTLE::TLEs2text(writing, written, tles, true) == 0, "TLEs2text");
    FUZZ_CHECK(writing
            == std::vector<std::string> { "Successfully written " + std::to_string(tles.size())
                + " TLEs." },
        writing.front());
    if (tles.empty()) {
        FUZZ_CHECK(written.empty(), "text of no sets");
        return 0;
    }
    std::vector<std::string> reading;
    std::vector<CheckerTLE::TLE> back;
    FUZZ_CHECK(CheckerTLE::parseTLEs(reading, back, written) == 0, reading.front());
    FUZZ_CHECK(_same(back, tles), "the written sets read back otherwise");
    return 0;
}
