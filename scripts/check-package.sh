#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Builds the Debian package the README's way and runs Debian's checkers on it:
# lintian (no error, no warning; info tags are shown), the AppStream and
# desktop-entry validators on the installed files, and reuse on the sources.
# Usage: scripts/check-package.sh [BUILD_DIR]   (default: build, as the tests use)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
build=${1:-build}

scripts/build.sh "$build" >/dev/null
rm -f "$build"/orvex-config-manager_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
debs=("$build"/orvex-config-manager_*.deb)
deb=${debs[0]}
echo "== package: $deb"

echo "== lintian"
lintian --display-info --fail-on error,warning "$deb"
echo "lintian: no error, no warning"

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$deb" "$unpacked"

echo "== appstreamcli validate --no-net"
appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.metainfo.xml

echo "== desktop-file-validate"
desktop-file-validate "$unpacked"/usr/share/applications/*.desktop
echo "desktop-file-validate: no fault"

echo "== reuse lint"
reuse lint
