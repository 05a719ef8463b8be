// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>
#include <ctime>

// What a start-up harness prints once its window is shown: the monotonic
// clock, which the launcher compares with the moment it started the process,
// and the CPU time the process has used so far, both in nanoseconds.
inline void reportShown()
{
    timespec wall{};
    timespec cpu{};
    clock_gettime(CLOCK_MONOTONIC, &wall);
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
    std::printf("shown %lld %lld\n", (long long)wall.tv_sec * 1000000000LL + wall.tv_nsec,
                (long long)cpu.tv_sec * 1000000000LL + cpu.tv_nsec);
    std::fflush(stdout);
}
