#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs what is missing, builds with AddressSanitizer and
# UndefinedBehaviorSanitizer into build-asan/, and runs the whole test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build-asan -DORVEX_SANITIZE=ON -DORVEX_BUILD_BENCHMARKS=OFF
supp="$PWD/tests/sanitizer/lsan.supp"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export LSAN_OPTIONS="suppressions=$supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
ctest --test-dir build-asan --output-on-failure -j"$(nproc)"
