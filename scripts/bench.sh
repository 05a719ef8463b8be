#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Builds the benchmarks in Release and runs them all: the TLE checker, the
# engine at 300, 3,000 and 30,000 parameters, the pages, search and TLE paste
# on the offscreen platform, memory, start-up, orvexctl's validate of 1,000
# files beside xmllint, list --json of 3,000 parameters, and the OMM import.
# Prints one table, the goals
# met or missed, and writes bench-results/bench.csv (and engine.png where
# gnuplot is installed).
#
#   scripts/bench.sh [--quick] [--clock cpu|wall] [build dir]
#
# --quick   fewer runs and no 30,000-parameter engine run, to see that it all works.
# --clock   what the timings count: the process's CPU time (default; the machine
#           may be shared) or wall time. bench_tle always reports wall time.
set -euo pipefail
cd "$(dirname "$0")/.."

quick=0
clock=cpu
build=build-release
while [ $# -gt 0 ]; do
  case "$1" in
    --quick) quick=1 ;;
    --clock) clock=$2; shift ;;
    -h|--help) sed -n '2,14p' "$0"; exit 0 ;;
    *) build=$1 ;;
  esac
  shift
done

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DORVEX_BUILD_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j"$(nproc)" --target bench_tle bench_engine_scale bench_gui_scale bench_startup bench_orvexctl bench_tleimport

out=bench-results
csv=$out/bench.csv
mkdir -p "$out"
rm -f "$csv" "$out/engine.dat" "$out/engine.png" "$out/goals.txt"
bin=$build/bench

runs=()
sizes=300,3000,30000
tleRuns=15
if [ "$quick" = 1 ]; then
  runs=(--runs 3)
  sizes=300,3000
  tleRuns=3
fi

echo "== TLE checker"
tmp=$(mktemp)
trap 'rm -f "$tmp"' EXIT
for sets in 1000 20000; do
  rm -f "$tmp"
  "$bin/bench_tle" --sets "$sets" --runs "$tleRuns" --csv "$tmp"
  # bench_tle names its rows without the size and gives MB/s.
  awk -F, -v sets="$sets" 'NR > 1 { printf "%s_%s_MBps,%s,%s,%s\n", $1, sets, $2, $3, $4 }' "$tmp" >> "$csv.tle"
done
{ echo "figure,value,baseline,ratio"; cat "$csv.tle"; } > "$csv"
rm -f "$csv.tle"

echo "== engine"
"$bin/bench_engine_scale" --sizes "$sizes" --clock "$clock" --csv "$csv" "${runs[@]}"
echo "== pages, search, memory, TLE paste"
"$bin/bench_gui_scale" --clock "$clock" --csv "$csv" "${runs[@]}"
echo "== start-up"
"$bin/bench_startup" --csv "$csv" "${runs[@]}"
echo "== orvexctl: validate beside xmllint, list --json"
"$bin/bench_orvexctl" --clock "$clock" --csv "$csv" "${runs[@]}"
echo "== OMM import"
"$bin/bench_tleimport" --objects 20000 --clock "$clock" --csv "$csv" "${runs[@]}"

echo
echo "== results: times in ms ($clock time), speeds in MB/s, memory in MB;"
echo "   ratio = time (or memory) of the figure over that of its baseline"
column -t -s, "$csv"

# The goals, each met or missed, from the figures above.
echo
echo "== goals"
awk -F, '
  function goal(text, ok) { printf "%-7s %s\n", ok ? "met" : "MISSED", text; }
  NR > 1 { value[$1] = $2; base[$1] = $3; ratio[$1] = $4; }
  END {
    for (f in value) {
      if (f ~ /_growth_/ && base[f] > 0)
        goal(sprintf("%s: growth %.2f within 1.15 x its floor'"'"'s %.2f (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 1.15);
      else if (f ~ /^loadXML_knStruct_(3000|30000)_ms$/)
        goal(sprintf("%s: %.1f ms <= 1.3 x setContent %.1f ms (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 1.3);
      else if (f ~ /^writeXML_(3000|30000)_ms$/)
        goal(sprintf("%s: %.1f ms <= 1.5 x toString %.1f ms (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 1.5);
      else if (f ~ /^parseTLEs_[0-9]+_MBps$/)
        goal(sprintf("%s: %.0f MB/s >= 300, time <= 1.5 x line split (%.2f)", f, value[f], ratio[f]), value[f] >= 300 && ratio[f] <= 1.5);
      else if (f ~ /^TLEs2text_[0-9]+_MBps$/)
        goal(sprintf("%s: %.0f MB/s >= 1000, time <= 0.5 x line split (%.2f)", f, value[f], ratio[f]), value[f] >= 1000 && ratio[f] <= 0.5);
      else if (f ~ /^startup_shown_/)
        goal(sprintf("%s: %.1f ms <= 1.5 x bare QMainWindow %.1f ms (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 1.5);
      else if (f == "createAreas_3000_ms")
        goal(sprintf("%s: %.0f ms < 1000", f, value[f]), value[f] < 1000);
      else if (f == "select_3000_ms")
        goal(sprintf("%s: %.1f ms < 50", f, value[f]), value[f] < 50);
      else if (f ~ /^search_[0-9]+hits_of_3000_ms$/)
        goal(sprintf("%s: %.0f ms < 250", f, value[f]), value[f] < 250);
      else if (f ~ /^tle_import_[a-z]+_[0-9]+_ms$/)
        goal(sprintf("%s: %.1f ms <= 3 x the bare parse %.1f ms (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 3);
      else if (f == "paste_20000_sets_ms")
        goal(sprintf("%s: %.0f ms < 1500", f, value[f]), value[f] < 1500);
      else if (f ~ /^validate_[0-9]+_files_one_call_ms$/) {
        n = f; gsub(/[^0-9]/, "", n);
        goal(sprintf("%s: %.0f ms <= 0.1 x one call per file (%.0f ms); %.1f x xmllint", f, value[f],
                     n * value["validate_1_file_per_call_ms"], ratio[f]),
             value[f] <= 0.1 * n * value["validate_1_file_per_call_ms"]);
      }
      else if (f ~ /^list_json_[0-9]+_ms$/)
        goal(sprintf("%s: %.0f ms <= 1.5 x plain list %.0f ms (%.2f)", f, value[f], base[f], ratio[f]), ratio[f] <= 1.5);
      else if (f == "peak_rss_open_3000_MB")
        goal(sprintf("%s: %.1f MB < 150", f, value[f]), value[f] < 150);
    }
  }' "$csv" | sort -k2 | tee "$out/goals.txt"

# Time against size for the engine's functions and their floors.
awk -F, '
  NR > 1 && match($1, /^(loadXSD|loadXML_knStruct|writeXML)_([0-9]+)_ms$/) {
    k = split($1, part, "_"); n = part[k - 1]; name = substr($1, 1, length($1) - length(n) - 4);
    t[n, name] = $2; f[n, name] = $3; sizes[n] = 1;
  }
  END {
    print "# N loadXSD setContent(xsd) loadXML_knStruct setContent(conf) writeXML toString";
    for (n in sizes)
      printf "%s %s %s %s %s %s %s\n", n, t[n, "loadXSD"], f[n, "loadXSD"], t[n, "loadXML_knStruct"],
             f[n, "loadXML_knStruct"], t[n, "writeXML"], f[n, "writeXML"];
  }' "$csv" | sort -n > "$out/engine.dat"
if command -v gnuplot >/dev/null 2>&1; then
  gnuplot <<EOF
set terminal png size 900,600 noenhanced
set output "$out/engine.png"
set title "Engine time against parameters ($clock time, medians)"
set logscale xy
set xlabel "parameters"
set ylabel "ms"
set key top left
set grid
plot "$out/engine.dat" using 1:2 with linespoints title "loadXSD", \
     "$out/engine.dat" using 1:3 with linespoints dashtype 2 title "setContent (schema)", \
     "$out/engine.dat" using 1:4 with linespoints title "loadXML_knStruct", \
     "$out/engine.dat" using 1:5 with linespoints dashtype 2 title "setContent (configuration)", \
     "$out/engine.dat" using 1:6 with linespoints title "writeXML", \
     "$out/engine.dat" using 1:7 with linespoints dashtype 2 title "toString(1)"
EOF
  echo "wrote $out/engine.png"
fi
echo "wrote $csv"
