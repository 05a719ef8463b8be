#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
# Installs what is missing, builds, and starts the program on the shipped example.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
scripts/build.sh build
exec build/orvex-config-manager build/orvex/conf/example.conf
