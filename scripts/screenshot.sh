#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Starts the real program under Xvfb on a copy of a shipped configuration and
# saves PNG pictures of the main window: the first page, then the pages of
# some sections, chosen with the keyboard in the section tree.
#
#   scripts/screenshot.sh [OUTDIR] [CONFIG] [NAME:ROW...]
#
# OUTDIR defaults to docs/screenshots, CONFIG to the tracking service's default
# configuration; each NAME:ROW saves the page of tree row ROW (0 = first) as
# NAME.png. Without any, the pages used in the documentation are taken.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh xvfb xauth x11-apps imagemagick xdotool
cmake -S . -B build >/dev/null
cmake --build build -j"$(nproc)" --target orvex-config-manager >/dev/null

out=${1:-docs/screenshots}
config=${2:-data/orvex/default/tracking-default.conf}
shift $(( $# > 2 ? 2 : $# )) || true
pages=("$@")
if [ ${#pages[@]} -eq 0 ]; then
  pages=(page-numbers:2 page-contact:4 page-paths:5 page-camera:6 page-header-keys:8
         page-tracking:9 page-tle:10 page-archive:11)
fi
mkdir -p "$out"

work=$(mktemp -d)
trap 'kill "${app:-}" "${xvfb:-}" 2>/dev/null || true; rm -rf "$work"' EXIT
cp "$config" "$work/config.conf"

display=:$(( 90 + RANDOM % 100 ))
Xvfb "$display" -screen 0 1000x600x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
export DISPLAY=$display
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

QT_QPA_PLATFORM=xcb build/orvex-config-manager "$work/config.conf" >/dev/null 2>&1 &
app=$!
wid=$(xdotool search --sync --onlyvisible --name "Orvex Config Manager" | head -n 1)
sleep 1 # let the first paint finish

shot() { import -window "$wid" "$1"; echo "saved $1"; }
shot "$out/main-window.png"

# The tree sits below the search box at the window's left; a click on its
# first row, then Down and Return (activated) choose the other rows.
for page in "${pages[@]}"; do
  name=${page%%:*}
  row=${page##*:}
  xdotool mousemove --window "$wid" 60 80 click 1
  for _ in $(seq "$row"); do xdotool key --window "$wid" Down; done
  xdotool key --window "$wid" Return
  sleep 0.5
  shot "$out/$name.png"
done
