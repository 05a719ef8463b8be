// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

class Arguments;

// The commands of orvexctl. Each takes its parsed arguments, whose count the
// caller has checked, and returns the exit status: 0 success, 1 done with
// remarks, 2 failure.
int runCheckSchema(Arguments const &args);
int runValidate(Arguments const &args);
int runList(Arguments const &args);
int runGet(Arguments const &args);
int runSet(Arguments const &args);
int runNew(Arguments const &args);
int runUpdate(Arguments const &args);
int runDiff(Arguments const &args);
int runTleCheck(Arguments const &args);
int runDescribe(Arguments const &args);
int runSearch(Arguments const &args);
int runTleImport(Arguments const &args);
