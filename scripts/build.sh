#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Configures and builds into build/ (or the directory given as $1).
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build}
shift || true
cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$dir" -j"$(nproc)"
