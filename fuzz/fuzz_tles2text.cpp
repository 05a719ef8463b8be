// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// TLEs2text on records of any bytes, as the TLE editor hands over the
// records of a configuration file. The result is always 0, the count counts
// every record, a refused record is named with _checkTLE's verdict, the text
// is the sets joined as the format says, and sets that the text reader can
// take come back from it unchanged.
//
// Input layout (FuzzedDataProvider): the last byte chooses `check`; from the
// front, records of three strings each, every string ended by a backslash
// and a byte other than a backslash (a doubled backslash is one backslash).

#include "fuzzcheck.h"

#include "tle/checkertle.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::string _expectedText(std::vector<CheckerTLE::TLE> const &tles, bool check)
{
    std::string text;
    for (std::size_t i = 0; i < tles.size(); ++i) {
        std::string verdict;
        if (check && !_checkTLE(verdict, tles[i]))
            continue;
        if (i != 0)
            text += "\n\n";
        if (!tles[i].line0.empty())
            text += tles[i].line0 + "\n";
        text += tles[i].line1 + "\n" + tles[i].line2;
    }
    return text;
}

// A set that the text reader takes back as it stands: data lines of exactly
// 69 bytes, a name shorter than that, and no line feed anywhere.
bool _readsBack(CheckerTLE::TLE const &tle)
{
    return tle.line0.size() < 69 && tle.line1.size() == 69 && tle.line2.size() == 69
        && (tle.line0 + tle.line1 + tle.line2).find('\n') == std::string::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    bool const check = provider.ConsumeBool();
    std::vector<CheckerTLE::TLE> tles;
    while (provider.remaining_bytes() > 0 && tles.size() < 64) {
        CheckerTLE::TLE tle;
        tle.line0 = provider.ConsumeRandomLengthString();
        tle.line1 = provider.ConsumeRandomLengthString();
        tle.line2 = provider.ConsumeRandomLengthString();
        tles.push_back(tle);
    }

    std::vector<std::string> messages { "earlier" };
    std::string text = "earlier text";
    FUZZ_CHECK(CheckerTLE::TLEs2text(messages, text, tles, check) == 0, "result");
    FUZZ_CHECK(messages.front() == "earlier", "earlier message lost");
    FUZZ_CHECK(messages.back() == "Successfully written " + std::to_string(tles.size()) + " TLEs.",
        messages.back());
    FUZZ_CHECK(text == _expectedText(tles, check), "text");

    std::size_t refused = 0;
    bool allReadBack = true;
    for (std::size_t i = 0; i < tles.size(); ++i) {
        std::string verdict;
        bool const valid = _checkTLE(verdict, tles[i]);
        if (check && !valid) {
            FUZZ_CHECK(messages.at(1 + refused)
                    == "TLE #" + std::to_string(i) + " is not valid. " + verdict,
                messages.at(1 + refused));
            ++refused;
        }
        allReadBack = allReadBack && valid && _readsBack(tles[i]);
    }
    FUZZ_CHECK(messages.size() == refused + 2, "message count");

    if (check && allReadBack && !tles.empty()) {
        std::vector<std::string> reading;
        std::vector<CheckerTLE::TLE> back;
        FUZZ_CHECK(CheckerTLE::parseTLEs(reading, back, text) == 0, reading.front());
        FUZZ_CHECK(back.size() == tles.size(), "count read back");
        for (std::size_t i = 0; i < back.size(); ++i) {
            FUZZ_CHECK(back[i].line0 == tles[i].line0 && back[i].line1 == tles[i].line1
                    && back[i].line2 == tles[i].line2,
                "set " + std::to_string(i) + " read back otherwise");
        }
    }
    return 0;
}
