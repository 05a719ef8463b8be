#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs what is missing, builds, and runs the whole test suite through ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build
ctest --test-dir build --output-on-failure -j"$(nproc)"
