#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs each for
# SECONDS (default 600), one after the other. Usage:
#   scripts/fuzz.sh [SECONDS] [TARGET...]     targets: sequential_input profile rule_file layout jet_sql sibling_database sql_text
# Each target works on a copy of its seed corpus in the build folder; crash,
# timeout and out-of-memory inputs are left there and their paths printed.
# Exit status 1 when any target found something. KELVARY_FUZZ_BUILD names
# another build folder.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

seconds=${1:-600}
[ $# -gt 0 ] && shift
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(sequential_input profile rule_file layout jet_sql sibling_database sql_text)
build=${KELVARY_FUZZ_BUILD:-build-fuzzer}

bash scripts/install-deps.sh
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DKELVARY_FUZZ=ON -DKELVARY_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" -j2 --target "${targets[@]/#/fuzz_}"

export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
found=0
summary=()
for target in "${targets[@]}"; do
  work="$build/fuzz-work/$target"
  corpus="$work/corpus"
  artifacts="$work/artifacts"
  mkdir -p "$corpus" "$artifacts"
  for seed in "$root/tests/fuzz/corpus/$target/"*; do
    [ -e "$corpus/$(basename "$seed")" ] || cp "$seed" "$corpus/"
  done
  dict=()
  [ -f "$root/tests/fuzz/dict/$target.dict" ] && dict=("-dict=$root/tests/fuzz/dict/$target.dict")
  log="$work/run.log"
  before=$(find "$artifacts" -type f | sort)
  status=0
  # The program reads Qt and ICU data the first time, so the scratch folder of
  # the entries lives as long as the process; -fork is not used for that reason.
  "$build/tests/fuzz/fuzz_$target" "$corpus" "${dict[@]}" -max_total_time="$seconds" -timeout=10 \
    -rss_limit_mb=2048 -artifact_prefix="$artifacts/" -print_final_stats=1 >"$log" 2>&1 || status=$?
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  [ -z "$runs" ] && runs=$(sed -n 's/^#\([0-9]*\).*DONE.*/\1/p' "$log" | tail -1)
  last=$(grep -E '^#[0-9]+' "$log" | tail -1 || true)
  # The seconds actually run: a run that finds something stops early.
  ran=$(sed -n 's/^Done [0-9]* runs in \([0-9]*\) second.*/\1/p' "$log" | tail -1)
  cov=$(echo "$last" | sed -n 's/.*cov: \([0-9]*\).*/\1/p')
  ft=$(echo "$last" | sed -n 's/.* ft: \([0-9]*\).*/\1/p')
  corp=$(echo "$last" | sed -n 's/.* corp: \([0-9]*\/[0-9]*[A-Za-z]*\).*/\1/p')
  files=$(find "$corpus" -type f | wc -l)
  new=$(comm -13 <(echo "$before") <(find "$artifacts" -type f | sort) | sed '/^$/d')
  result="nothing found"
  if [ "$status" -ne 0 ] || [ -n "$new" ]; then
    found=1
    result="FOUND (exit $status; log $work/run.log)"
  fi
  summary+=("$(printf '%-17s %5ss %9s runs  cov %4s ft %5s  corpus %s (%s files)  %s' "$target" "${ran:-<$seconds}" \
    "${runs:-?}" "${cov:-?}" "${ft:-?}" "${corp:-?}" "$files" "$result")")
  echo "${summary[-1]}"
  if [ -n "$new" ]; then echo "$new" | sed "s/^/  input: /"; fi
done
echo
printf '%s\n' "${summary[@]}"
exit $found
