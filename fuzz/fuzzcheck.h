// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

// What the harnesses share: a check that stops the run with the reason, so
// that libFuzzer keeps the input and the report says what was broken.

#include <cstdio>
#include <cstdlib>
#include <string>

#define FUZZ_CHECK(condition, what)                                                                \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "FUZZ_CHECK failed: %s\n  %s\n  at %s:%d\n", #condition,          \
                std::string(what).c_str(), __FILE__, __LINE__);                                    \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

namespace fuzzcheck {

inline bool startsWith(std::string const &text, std::string const &prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

// Where the fuzzers find the shipped schema.
inline std::string sourceData(std::string const &name)
{
    return std::string(ORVEX_SOURCE_DATA_DIR "/") + name;
}

} // namespace fuzzcheck
