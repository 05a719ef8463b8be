// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

// One set as the TLE list's text holds it: its name line, line 1, line 2,
// joined by line feeds. An empty name writes nothing, not even an empty line.
inline void _appendSetText(
    std::string &text, std::string_view line0, std::string_view line1, std::string_view line2)
{
    if (!line0.empty()) {
        text += line0;
        text += '\n';
    }
    text += line1;
    text += '\n';
    text += line2;
}
