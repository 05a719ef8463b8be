#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Builds the libFuzzer harnesses into build-fuzz/ (clang, with the address and
# undefined-behaviour sanitizers in every library) and runs one or all of them,
# one after the other, each for the given number of seconds.
#
#   scripts/fuzz.sh <get_el|parse_tles|tles2text|load_config|load_schema|all> <seconds>
#
# Each run starts from a copy of fuzz/corpus/<harness>; the checked-in corpus
# is never written to. Runs, grown corpora, logs and any crashing input go to
# build-fuzz/runs/<harness>-<date>/. The exit status is non-zero if a harness
# found something (a crash, a hang, a sanitizer report or a broken check); the
# input that did it is also copied to fuzz/regressions/<harness>/, which the
# test suite replays (tests/fuzz).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD

all=(get_el parse_tles tles2text load_config load_schema)
usage() {
  echo "usage: $0 <get_el|parse_tles|tles2text|load_config|load_schema|all> <seconds>" >&2
  exit 2
}
[ $# -eq 2 ] || usage
[[ $2 =~ ^[0-9]+$ ]] || usage
seconds=$2
if [ "$1" = all ]; then
  harnesses=("${all[@]}")
else
  [[ " ${all[*]} " == *" $1 "* ]] || usage
  harnesses=("$1")
fi

build=${ORVEX_FUZZ_BUILD:-build-fuzz}
CC=clang CXX=clang++ cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DORVEX_BUILD_FUZZERS=ON -DORVEX_SANITIZE=ON -DORVEX_BUILD_BENCHMARKS=OFF -DBUILD_TESTING=OFF >/dev/null
targets=()
for h in "${harnesses[@]}"; do targets+=("fuzz_$h"); done
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}"

# Leaks are reported as in the sanitizer build of the tests; the schema
# harness shows Qt XmlPatterns' own leak at every schema it loads.
export ASAN_OPTIONS="abort_on_error=1:detect_leaks=1:strict_string_checks=1"
export LSAN_OPTIONS="suppressions=$root/tests/sanitizer/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
# The engine's harnesses hand every input over as a file; in memory that is
# several times faster than on disk.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then
  export TMPDIR=/dev/shm
fi

status=0
for h in "${harnesses[@]}"; do
  run="$root/$build/runs/$h-$(date +%Y%m%d-%H%M%S)"
  mkdir -p "$run/corpus"
  cp -R "fuzz/corpus/$h/." "$run/corpus/"
  options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1
           -artifact_prefix="$run/" -jobs=1 -workers=1)
  case $h in
    load_config) options+=(-dict="$root/fuzz/dict/xml.dict" -max_len=8192) ;;
    # Qt XmlPatterns leaks at every schema it loads (see lsan.supp), which
    # would make the fuzzer run a full leak check after nearly every input,
    # fifty times slower. The engine's tests look for leaks of the tree.
    load_schema) options+=(-dict="$root/fuzz/dict/xml.dict" -max_len=8192 -detect_leaks=0) ;;
    *) options+=(-max_len=1024) ;;
  esac
  echo "== $h: $seconds s in $run"
  # With -jobs the fuzzer writes its log to fuzz-0.log in the working directory.
  if ! (cd "$run" && "$root/$build/fuzz/fuzz_$h" "${options[@]}" corpus >/dev/null 2>&1); then
    status=1
  fi
  log="$run/fuzz-0.log"
  grep -E '^#[0-9]+.*(DONE|pulse|NEW)' "$log" | tail -n 1 || true
  grep -E '^stat::' "$log" || true
  found=$(find "$run" -maxdepth 1 \( -name 'crash-*' -o -name 'timeout-*' -o -name 'leak-*' -o -name 'oom-*' \))
  if [ -n "$found" ]; then
    echo "!! $h found something (the log: $log):"
    echo "$found"
    # Kept in the source tree, where tests/fuzz replays it from then on once
    # it is committed.
    mkdir -p "fuzz/regressions/$h"
    while IFS= read -r input; do cp "$input" "fuzz/regressions/$h/"; done <<<"$found"
    echo "!! kept in fuzz/regressions/$h/"
    status=1
  fi
done
exit $status
