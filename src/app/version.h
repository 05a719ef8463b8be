// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <vector>

// A dotted version number such as 0.9.240601: its text in normal form and its
// ranks, compared rank by rank with missing ranks counting as 0. Every text is
// a version: what is not a number reads as 0.
class Version
{
public:
    Version();
    explicit Version(std::string const &text);
    explicit Version(std::vector<std::uint32_t> const &ranks);

    // Parses the text and rebuilds it from the ranks, so "1.02" is kept as "1.2".
    void init(std::string const &text);
    // Takes the ranks; an empty vector gives the default version "0".
    void init(std::vector<std::uint32_t> const &ranks);

    std::string getString() const;
    std::vector<std::uint32_t> const &ranks() const { return _ranks; }

private:
    void _setup();
    void _string2ranks();
    void _ranks2string();

    std::string _string;
    std::vector<std::uint32_t> _ranks;
};

bool operator==(Version const &left, Version const &right);
bool operator!=(Version const &left, Version const &right);
bool operator>(Version const &left, Version const &right);
bool operator<(Version const &left, Version const &right);
bool operator>=(Version const &left, Version const &right);
bool operator<=(Version const &left, Version const &right);
