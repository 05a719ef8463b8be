// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "ctl/arguments.h"

#include <string>
#include <vector>

// What the shell completion knows of one command: its name, the synopsis that
// its usage shows ("get CONFIG PATH [--schema SCHEMA]") and its options. The
// words of the synopsis tell what each argument takes, so that a new command
// is completed without a word of the completion script changing.
struct CompletionCommand
{
    std::string name;
    std::string synopsis;
    std::vector<OptionInfo> options;
};

// The hidden command that the completion script runs: "orvexctl __complete
// WORD...", the words of the command line after "orvexctl", the one being
// completed last (possibly empty).
extern char const *const completionHelper;

// What to offer for the last of `words`: the single entry ":files" for file
// names, else the words themselves, unfiltered (the shell keeps those that
// begin with what was typed). Services and parameter paths come from the
// schema in force, the one after --schema on the line or the one beside the
// executable; a schema that cannot be read offers nothing.
std::vector<std::string> completionCandidates(
    std::vector<CompletionCommand> const &commands, std::vector<std::string> const &words);

// Prints the candidates one a line. Always 0: a completion fails silently.
int answerCompletion(
    std::vector<CompletionCommand> const &commands, std::vector<std::string> const &words);

// The bash completion script, which asks the helper for every word.
std::string bashCompletionScript();

// "completion SHELL": prints the completion script of SHELL (bash only).
int runCompletion(Arguments const &args);
