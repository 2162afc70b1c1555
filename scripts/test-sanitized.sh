#!/usr/bin/env bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer and
# runs the whole test suite on it (the programs the tests start are the
# sanitized ones too). Any finding fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKELVARY_SANITIZE=ON >/dev/null
cmake --build build-asan -j2
export QT_QPA_PLATFORM=offscreen
# Qt keeps some allocations for the life of the process; leaks are not what this run looks for.
export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build-asan --output-on-failure -j2 --timeout 600
