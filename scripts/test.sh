#!/usr/bin/env bash
# Installs, builds and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j2 --timeout 300
