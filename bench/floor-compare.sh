#!/usr/bin/env bash
# Kelvary against the floor of a print run, side by side in one run. The
# floor (bench/floor/floor.cpp, or the measuring tool's own copy in
# ../shared/perf beside the work tree when it is there) starts Qt, encodes the
# same payloads with libqrencode, writes the same BMPs and a PDF of the same
# number of pages with the embedded font: the least work any program printing
# the application must do. For each case Kelvary runs first (batch, output
# mode 3, every period to one PDF); the floor then runs on the payloads that
# run left in Temp and on its page count. Runs alternate, so load from other
# work on the machine falls on both alike.
#
# Figures are processor time (user + system, to the microsecond: see
# bench/cpu-time.py), which other work on a shared machine blurs far less
# than wall time, the ratio of the quickest runs and of user time alone, and
# peak memory. Cases: the sample, the large application at 600, 1,200, 2,400
# and 4,800 items, and a start that stops at the menu against the floor's
# start (no payloads, no pages).
#
# Every run writes into a program folder (or, for the floor, an output
# folder) of its own, made before and removed only after all runs: a
# file system without a journal (ext4 as some machines have it) makes each
# new file search past every file deleted in the last minutes, so clearing
# the previous run's hundreds of symbol files just before a run made that
# search most of the large runs' system time, a different share from pass to
# pass, and twice as much for Kelvary, which writes each symbol's payload
# copy beside its image. The folders go on /dev/shm (memory) when it can be
# written, which keeps them apart from the work folder's deletions too.
#
#   bench/floor-compare.sh [-n RUNS] [-c] [-s SIZES] [-d FOLDER] BUILD_FOLDER
#
# -c also runs the sample once under callgrind and prints the instruction
#    counts of the run's phases (valgrind must be installed).
# -s SIZES: the item counts of the large application (default "600 1200 2400 4800").
# -d FOLDER: where the runs' folders go (default: /dev/shm, else the work
#    folder); a new folder inside it, removed at the end.
set -euo pipefail

runs=5
callgrind=0
sizes="600 1200 2400 4800"
runs_parent=
while getopts "n:cs:d:h" option; do
  case $option in
    n) runs=$OPTARG ;;
    c) callgrind=1 ;;
    s) sizes=$OPTARG ;;
    d) runs_parent=$OPTARG ;;
    *) sed -n '2,35p' "$0"; exit 2 ;;
  esac
done
shift $((OPTIND - 1))
[ $# -eq 1 ] || { sed -n '2,35p' "$0"; exit 2; }

here=$(cd "$(dirname "$0")" && pwd)
source "$here/common.sh"
require_build "$1" bench-floor
command -v pdfinfo >/dev/null || { echo "pdfinfo is missing: run scripts/install-deps.sh" >&2; exit 2; }

# The floor, built once (again when its source changes).
floor_source=$here/floor
[ -f "$here/../../shared/perf/floor.cpp" ] && floor_source=$(cd "$here/../../shared/perf" && pwd)
floor_build=$work/floor-build
if [ ! -x "$floor_build/floor" ] || [ "$floor_source/floor.cpp" -nt "$floor_build/floor" ]; then
  cmake -S "$floor_source" -B "$floor_build" >/dev/null
  cmake --build "$floor_build" >/dev/null
fi
floor=$floor_build/floor

if [ -z "$runs_parent" ]; then
  runs_parent=$work
  [ -d /dev/shm ] && [ -w /dev/shm ] && runs_parent=/dev/shm
fi
run_folders=$(mktemp -d "$runs_parent/kelvary-floor-compare.XXXXXX")
trap 'rm -rf "$run_folders"' EXIT

# timed REPORT EXPECTED_STATUS ARGS...: one run; prints "cpu-seconds user-seconds rss-MB".
timed() {
  local report=$1 expected=$2 status=0
  shift 2
  python3 "$here/cpu-time.py" "$report" "$@" >"$report.out" 2>"$report.err" || status=$?
  if [ "$status" -ne "$expected" ]; then
    echo "$*: exit status $status, expected $expected; its standard error:" >&2
    sed -n '1,40p' "$report.err" >&2
    exit 1
  fi
  echo "$(cpu_seconds "$report") $(user_seconds "$report") $(peak_mb "$report")"
}

least() { tr ' ' '\n' <<<"$1" | grep -v '^$' | sort -g | head -1; }

median() {
  tr ' ' '\n' <<<"$1" | grep -v '^$' | sort -g | awk '{ v[NR] = $1 }
    END { printf "%.6f", (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}

ratio() { awk -v k="$1" -v f="$2" 'BEGIN { printf "%.2f", (f > 0) ? k / f : 0 }'; }

printf '%-14s %6s %6s %11s %11s %7s %6s %6s %10s %10s\n' case pages symbols "kelvary (s)" "floor (s)" ratio best user "kel. (MB)" "floor (MB)"
compare() {  # name application-folder [start]
  local name=$1 application=$2 start=${3:-} home pages symbols c u r
  local kc=() ku=() kr=() fc=() fu=() fr=()
  for ((i = 0; i < runs; i++)); do
    home=$(fresh_home "$name-$i" "$run_folders")
    local out=$run_folders/$name-$i.pdf floor_out=$run_folders/floor-$name-$i
    if [ -n "$start" ]; then
      read -r c u r <<<"$(timed "$work/time-$name" 1 "$exe" --home "$home" --batch --mode 3 --periods none \
        --no-application --no-statements --pdf "$out" "$application/app.dat")"
      pages=0
    else
      read -r c u r <<<"$(timed "$work/time-$name" 0 "$exe" --home "$home" --batch --mode 3 --periods all \
        --pdf "$out" "$application/app.dat")"
      pages=$(pdfinfo "$out" | awk '/^Pages:/ { print $2 }')
    fi
    kc+=("$c"); ku+=("$u"); kr+=("$r")
    symbols=$(find "$home/Temp" -maxdepth 1 -iname '*.txt' | wc -l)
    read -r c u r <<<"$(QT_QPA_PLATFORM=offscreen timed "$work/time-floor-$name" 0 "$floor" "$home/Temp" "$floor_out" "$pages")"
    fc+=("$c"); fu+=("$u"); fr+=("$r")
  done
  local k f user=-
  k=$(median "${kc[*]}"); f=$(median "${fc[*]}")
  # The kernel splits a process's time into user and system by clock ticks
  # (4 ms here): the split means something only for runs of many ticks.
  if awk -v k="$k" 'BEGIN { exit !(k >= 0.25) }'; then
    user=$(ratio "$(median "${ku[*]}")" "$(median "${fu[*]}")")
  fi
  printf '%-14s %6s %6s %11.3f %11.3f %7s %6s %6s %10.1f %10.1f\n' "$name" "$pages" "$symbols" "$k" "$f" \
    "$(ratio "$k" "$f")" "$(ratio "$(least "${kc[*]}")" "$(least "${fc[*]}")")" "$user" \
    "$(median "${kr[*]}")" "$(median "${fr[*]}")"
}

sample_home=$(fresh_home sample-data)
cp -r "$sample_home/sample" "$work/sample"
compare start "$work/sample" start
compare sample "$work/sample"
for items in $sizes; do
  make_application "large-$items" "$items" $((items * 17 / 600))  # renamed items in proportion
  compare "large-$items" "$work/large-$items"
done
echo "median of $runs runs; processor time (user + system); ratio = kelvary / floor; best = the same of each"
echo "side's quickest run, which other work on the machine can only lengthen; user = the ratio of user time"
echo "(runs of a quarter second and more); peak memory = maximum resident set; run folders in $runs_parent"

if [ "$callgrind" -eq 1 ]; then
  command -v valgrind >/dev/null || { echo "valgrind is missing" >&2; exit 2; }
  home=$(fresh_home callgrind)
  out=$work/callgrind.out
  QT_QPA_PLATFORM=offscreen valgrind --tool=callgrind --callgrind-out-file="$out" \
    "$exe" --home "$home" --batch --mode 3 --periods all --pdf "$work/callgrind.pdf" "$work/sample/app.dat" \
    >/dev/null 2>"$work/callgrind.err" || true
  pages=$(pdfinfo "$work/callgrind.pdf" | awk '/^Pages:/ { print $2 }')
  rm -rf "$work/floor-callgrind"
  QT_QPA_PLATFORM=offscreen valgrind --tool=callgrind --callgrind-out-file="$out.floor" \
    "$floor" "$home/Temp" "$work/floor-callgrind" "$pages" >/dev/null 2>>"$work/callgrind.err" || true
  "$here/callgrind-phases.sh" "$out" "$out.floor"
fi
