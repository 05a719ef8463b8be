// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

class QJsonObject;

// Output of orvexctl: results on standard output, messages on standard error.
// Text is written as the bytes it holds, UTF-8 like the configuration files.
//
// With JSON output on, results are one document instead: a command hands its
// result over with `result`, printed lines are left out, and every message
// still goes to standard error and is also kept for the document's "messages".
namespace Console {

// Exit statuses, on the engine's scale.
enum Status { Ok = 0, Remarks = 1, Failure = 2 };

// The worse of two statuses.
int worse(int left, int right);

// One line of a result; nothing with JSON output on.
void print(std::string const &line);
// One message of orvexctl itself, "orvexctl: " in front.
void message(std::string const &text);
// Lines of the engine or the TLE checker, from `from` on, as they stand.
void lines(std::vector<std::string> const &lines, std::size_t from = 0);

// Turns JSON output on for the rest of the process.
void setJson(bool on);
bool json();
// The document of the command; a later call replaces an earlier one.
void result(QJsonObject const &document);
// Prints the document with its "messages" when JSON output is on; a command
// that failed before it had a result still gives a document of its messages.
void finish();

} // namespace Console
