// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "tle/checkertle.h"

#include "tle/get_el.h"
#include "tle/settext.h"

#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t _dataLineSize = 69;

// The verdict on a set, null when it is valid. The lines need only be readable
// up to index 69: a data line that sits in a text, followed by its line feed,
// reads the same as a copy of it that ends in a zero.
const char *_fault(std::size_t nameSize, const char *line1, const char *line2)
{
    // A name of exactly 69 bytes passes, although the text reader never takes one as a name
    // (pinned by checkGivesVerdict and nameOfSixtyNineBytesRunsIntoNextSet).
    if (nameSize > _dataLineSize)
        return "Line #0 has size > 69.";
    // A wrong check digit fails like a malformed line, and lines numbered "2" and "2" pass:
    // only the form and the check digits are tested (pinned by
    // dataLinesAreTestedOnlyForFormAndDigits).
    if (tle_checksum(line1) != 0)
        return "Line #1 is not TLE line.";
    if (tle_checksum(line2) != 0)
        return "Line #2 is not TLE line.";
    return nullptr;
}

const char *_fault(CheckerTLE::TLE const &tle)
{
    return _fault(tle.line0.size(), tle.line1.c_str(), tle.line2.c_str());
}

// Groups the lines of a text into sets. States count the lines collected for the
// set under construction; only line lengths decide the next state.
class _Grouper
{
public:
    _Grouper(std::vector<std::string> &messages, std::vector<CheckerTLE::TLE> &tles)
        : _messages(messages), _tles(tles)
    {}

    void take(std::string_view line, std::size_t lineIndex);
    bool hadProblem() const { return _problem; }

private:
    void _lineFault(std::size_t lineIndex);
    void _testGroup(std::string_view line2, std::size_t lineIndex);
    void _restart();

    std::vector<std::string> &_messages;
    std::vector<CheckerTLE::TLE> &_tles;
    int _state = 0;
    bool _problem = false;
    // Views into the text; copies are made only for sets that pass.
    std::string_view _line0;
    std::string_view _line1;
};

void _Grouper::take(std::string_view line, std::size_t lineIndex)
{
    const std::size_t size = line.size();
    if (_state == 0) {
        if (size == 0)
            return; // empty lines between sets
        if (size < _dataLineSize) {
            _line0 = line; // a name, whatever it holds
            _state = 1;
        } else if (size == _dataLineSize) {
            _line1 = line;
            _state = 2;
        } else {
            _lineFault(lineIndex);
        }
    } else if (size != _dataLineSize) {
        _lineFault(lineIndex);
    } else if (_state == 1) {
        _line1 = line;
        _state = 2;
    } else {
        _testGroup(line, lineIndex);
    }
}

void _Grouper::_lineFault(std::size_t lineIndex)
{
    _messages.push_back("TextLine #" + std::to_string(lineIndex) + " is not TLE line.");
    _problem = true;
    _restart();
}

void _Grouper::_testGroup(std::string_view line2, std::size_t lineIndex)
{
    if (const char *fault = _fault(_line0.size(), _line1.data(), line2.data())) {
        _messages.push_back("Line #" + std::to_string(lineIndex) + ". TLE is not valid. " + fault);
        _problem = true;
    } else {
        _tles.push_back({std::string(_line0), std::string(_line1), std::string(line2)});
    }
    // The line that closed the group is not looked at again as the name of the next.
    _restart();
}

void _Grouper::_restart()
{
    _state = 0;
    _line0 = {};
    _line1 = {};
}

// Room for every set with a name, its line feeds and the empty line behind it.
std::size_t _textSize(std::vector<CheckerTLE::TLE> const &tles)
{
    std::size_t size = 0;
    for (CheckerTLE::TLE const &tle : tles)
        size += tle.line0.size() + tle.line1.size() + tle.line2.size() + 4;
    return size;
}

void _appendSet(std::string &text, CheckerTLE::TLE const &tle)
{
    _appendSetText(text, tle.line0, tle.line1, tle.line2);
}

void _cannotRead(std::vector<std::string> &messages, std::string const &fileName)
{
    messages.push_back("The file " + fileName + " cannot be read.");
}

} // namespace

bool _checkTLE(std::string &message, CheckerTLE::TLE const &tle)
{
    const char *fault = _fault(tle);
    message = fault ? fault : "TLE validated successfully.";
    return fault == nullptr;
}

namespace CheckerTLE {

int parseTLEs(std::vector<std::string> &messages, std::vector<TLE> &tles, std::string const &text)
{
    if (text.empty()) {
        messages.push_back("TLEs text is empty.");
        return 2;
    }
    tles.clear();
    // A named set takes some 170 bytes of text; this rarely reallocates.
    tles.reserve(text.size() / (2 * _dataLineSize) + 1);
    _Grouper grouper(messages, tles);

    const char *const begin = text.data();
    const char *const end = begin + text.size();
    const char *cursor = begin;
    std::size_t lineIndex = 0;
    bool more = true;
    while (more) {
        const char *feed = static_cast<const char *>(std::memchr(cursor, '\n', end - cursor));
        // After a line feed that ends the text, one more (empty) line still goes through
        // the grouper: that is what reports a set left incomplete at the end.
        const char *lineEnd = feed ? feed : end;
        more = feed != nullptr;
        grouper.take(std::string_view(cursor, lineEnd - cursor), lineIndex);
        ++lineIndex;
        cursor = more ? feed + 1 : end;
    }

    // "TLEs" even for one: the text is kept as users know it (pinned by namedSetGivesOneRecord).
    messages.push_back(std::to_string(tles.size()) + " problem-free TLEs were parsed.");
    return grouper.hadProblem() ? 1 : 0;
}

int TLEs2text(std::vector<std::string> &messages, std::string &text, std::vector<TLE> const &tles,
              bool check)
{
    std::string written;
    written.reserve(_textSize(tles));
    for (std::size_t i = 0; i < tles.size(); ++i) {
        TLE const &tle = tles[i];
        if (check) {
            if (const char *fault = _fault(tle)) {
                messages.push_back("TLE #" + std::to_string(i) + " is not valid. " + fault);
                continue;
            }
        }
        // The separator goes by index, not by sets written: a refused first set still
        // leaves its two line feeds at the start of the text (pinned by
        // writerSeparatesByIndexAfterRefusal).
        if (i != 0)
            written.append("\n\n", 2);
        _appendSet(written, tle);
    }
    text.swap(written);
    // Counts the sets handed in, refused ones included, and the result stays 0: the
    // caller is not told of refusals (pinned by writerSeparatesByIndexAfterRefusal).
    messages.push_back("Successfully written " + std::to_string(tles.size()) + " TLEs.");
    return 0;
}

int LoadFromFile(std::vector<std::string> &messages, std::string &text, std::string const &fileName)
{
    std::FILE *file = std::fopen(fileName.c_str(), "rb");
    if (!file) {
        _cannotRead(messages, fileName);
        return 2;
    }
    std::string content;
    char buffer[65536];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        content.append(buffer, got);
    // A directory opens on this platform but gives no bytes: it counts as unreadable.
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed) {
        _cannotRead(messages, fileName);
        return 2;
    }
    text.swap(content);
    return 0;
}

} // namespace CheckerTLE
