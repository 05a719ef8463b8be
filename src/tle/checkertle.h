// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

// Element sets as text: grouping lines into sets, checking them, writing them
// back. Every function appends to `messages` and never clears it.
namespace CheckerTLE {

// One set as raw text lines without line terminators; `line0` is the name,
// empty when the set has none.
struct TLE
{
    std::string line0;
    std::string line1;
    std::string line2;
};

// Replaces `tles` by the sets of `text` that passed, in text order, and ends the
// messages with the count. 0 no problem, 1 at least one problem, 2 empty text
// (then `tles` is untouched and no count is added).
int parseTLEs(std::vector<std::string> &messages, std::vector<TLE> &tles, std::string const &text);

// Replaces `text` by the sets, one empty line between them, no line feed at the
// end. With `check`, a set that fails is left out with a message. Always 0.
int TLEs2text(std::vector<std::string> &messages, std::string &text, std::vector<TLE> const &tles,
              bool check);

// Replaces `text` by the bytes of the file. 0 read, 2 could not be read (`text`
// untouched).
int LoadFromFile(std::vector<std::string> &messages, std::string &text,
                 std::string const &fileName);

} // namespace CheckerTLE

// Tests the name length and both data lines of one set; `message` is replaced
// by the verdict. True when the set is valid.
bool _checkTLE(std::string &message, CheckerTLE::TLE const &tle);
