// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

// Output of orvexctl: results on standard output, messages on standard error.
// Text is written as the bytes it holds, UTF-8 like the configuration files.
namespace Console {

// Exit statuses, on the engine's scale.
enum Status { Ok = 0, Remarks = 1, Failure = 2 };

// The worse of two statuses.
int worse(int left, int right);

// One line of a result.
void print(std::string const &line);
// One message of orvexctl itself, "orvexctl: " in front.
void message(std::string const &text);
// Lines of the engine or the TLE checker, from `from` on, as they stand.
void lines(std::vector<std::string> const &lines, std::size_t from = 0);

} // namespace Console
