#!/usr/bin/env bash
# Installs the dependencies and builds the program folder build/app (and the tests).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKELVARY_BUILD_BENCH=ON >/dev/null
cmake --build build -j2
