#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs what the build and the tests need from Debian 12's packages, and
# nothing when everything is present already. Safe to run again.
set -euo pipefail

packages=(g++ cmake make qtbase5-dev libqt5xmlpatterns5-dev libxml2-utils locales)
# The fuzzing harnesses: clang and its sanitizer and libFuzzer runtime.
packages+=(clang libclang-rt-14-dev)
# The independent side of the TLE import tests.
packages+=(python3-sgp4)
# A fixed-pitch face for the TLE field, which asks for "Console" or any typewriter face.
packages+=(fonts-dejavu-core)
# The manual pages, the shell completion and the checks of the package.
packages+=(help2man bash-completion lintian appstream desktop-file-utils reuse)
# The desktop program's manual page, the menu icons rendered from their SVG,
# the MIME database that the install test builds, and man, which renders the
# pages in their test.
packages+=(scdoc librsvg2-bin shared-mime-info man-db)
# Extra packages asked for on the command line (e.g. xvfb for screenshots).
packages+=("$@")

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The number-reading tests run under a German locale, which writes a decimal comma.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  echo "Generating the de_DE.UTF-8 locale"
  as_root sed -i 's/^# *\(de_DE.UTF-8 UTF-8\)/\1/' /etc/locale.gen
  grep -q '^de_DE.UTF-8 UTF-8' /etc/locale.gen || echo 'de_DE.UTF-8 UTF-8' | as_root tee -a /etc/locale.gen >/dev/null
  as_root locale-gen >/dev/null
fi
