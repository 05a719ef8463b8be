// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "app/version.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

using Ranks = std::vector<std::uint32_t>;
using Compare = std::function<bool(std::uint32_t, std::uint32_t)>;

static std::uint32_t _toRank(std::string const &part)
{
    // strtol takes white space and a sign and stops at the first unusable
    // character; the result is cut to 32 bits, so "-1" becomes 4294967295
    // (pinned by textIsNormalised).
    return static_cast<std::uint32_t>(static_cast<unsigned long>(std::strtol(part.c_str(), nullptr, 10)));
}

static bool _compareSameLength(Ranks const &left, Ranks const &right, Compare const &comp)
{
    for (std::size_t i = 0; i < left.size(); ++i)
        if (left[i] != right[i])
            return comp(left[i], right[i]);
    return comp(left.back(), right.back());
}

static bool _compareDifferentLength(Ranks const &left, Ranks const &right, Compare const &comp)
{
    if (left.size() == right.size())
        return _compareSameLength(left, right, comp);
    // Missing ranks count as 0; the left operand stays on the left.
    if (left.size() < right.size()) {
        Ranks padded = left;
        padded.resize(right.size(), 0);
        return _compareSameLength(padded, right, comp);
    }
    Ranks padded = right;
    padded.resize(left.size(), 0);
    return _compareSameLength(left, padded, comp);
}

Version::Version() { _setup(); }

Version::Version(std::string const &text) { init(text); }

Version::Version(std::vector<std::uint32_t> const &ranks) { init(ranks); }

void Version::init(std::string const &text)
{
    _string = text;
    _string2ranks();
    _ranks2string();
}

void Version::init(std::vector<std::uint32_t> const &ranks)
{
    _ranks = ranks;
    _ranks2string();
}

std::string Version::getString() const { return _string; }

void Version::_setup()
{
    _string = "0";
    _ranks = {0};
}

void Version::_string2ranks()
{
    _ranks.clear();
    if (_string.empty()) {
        _setup();
        return;
    }
    std::string rest = _string;
    std::string::size_type dot;
    while ((dot = rest.find('.')) != std::string::npos) {
        _ranks.push_back(_toRank(rest.substr(0, dot)));
        rest.erase(0, dot + 1);
    }
    _ranks.push_back(_toRank(rest));
}

void Version::_ranks2string()
{
    _string.clear();
    if (_ranks.empty()) {
        _setup();
        return;
    }
    char buffer[16];
    for (std::size_t i = 0; i + 1 < _ranks.size(); ++i) {
        std::snprintf(buffer, sizeof buffer, "%u.", static_cast<unsigned>(_ranks[i]));
        _string += buffer;
    }
    std::snprintf(buffer, sizeof buffer, "%u", static_cast<unsigned>(_ranks.back()));
    _string += buffer;
}

bool operator==(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::equal_to<std::uint32_t>()); }
bool operator!=(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::not_equal_to<std::uint32_t>()); }
bool operator>(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::greater<std::uint32_t>()); }
bool operator<(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::less<std::uint32_t>()); }
bool operator>=(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::greater_equal<std::uint32_t>()); }
bool operator<=(Version const &l, Version const &r) { return _compareDifferentLength(l.ranks(), r.ranks(), std::less_equal<std::uint32_t>()); }
