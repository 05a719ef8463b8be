// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "ctl/console.h"

#include <iostream>

namespace Console {

int worse(int left, int right)
{
    return left > right ? left : right;
}

void print(std::string const &line)
{
    std::cout << line << '\n';
}

void message(std::string const &text)
{
    std::cerr << "orvexctl: " << text << '\n';
}

void lines(std::vector<std::string> const &lines, std::size_t from)
{
    for (std::size_t i = from; i < lines.size(); ++i)
        std::cerr << lines[i] << '\n';
}

} // namespace Console
