#!/usr/bin/env bash
# Whole-run benchmark: runs the built kelvary as a parent program would
# (batch, output mode 3, every period to one PDF) on the sample application,
# on a large generated one and on one with twice its items, several times
# each, and prints the median and spread (min-max) of wall time, processor
# time (user + system) and peak memory as /usr/bin/time -v reports them. On a
# machine shared with other work the wall times wander; the processor times
# show what the run itself costs. It also times --version and a
# start-up run that stops at the print menu with nothing chosen, so the part
# of a run that is not start-up can be compared between the two sizes.
#
#   bench/run-bench.sh [-n RUNS] BUILD_FOLDER
#
# BUILD_FOLDER is a configured and built tree (an optimised build gives the
# figures that matter). Generated applications and scratch program folders
# go to BUILD_FOLDER/bench-runs; nothing is written into the source tree.
set -euo pipefail

runs=7
while getopts "n:h" option; do
  case $option in
    n) runs=$OPTARG ;;
    *) sed -n '2,15p' "$0"; exit 2 ;;
  esac
done
shift $((OPTIND - 1))
[ $# -eq 1 ] || { sed -n '2,15p' "$0"; exit 2; }

here=$(cd "$(dirname "$0")" && pwd)
source "$here/common.sh"
require_build "$1" bench-runs
make_application large 600 17
make_application large-x2 1200 34


# measure NAME EXPECTED_STATUS ARGS...: RUNS runs; one line "name wall... | rss..." per case.
declare -A wall_list cpu_list rss_list
measure() {
  local name=$1 expected=$2
  shift 2
  local walls=() cpus=() rsses=() report=$work/time-$name.txt
  for ((i = 0; i < runs; i++)); do
    local status=0
    /usr/bin/time -v -o "$report" "$@" >"$work/out-$name.txt" 2>"$work/err-$name.txt" || status=$?
    if [ "$status" -ne "$expected" ]; then
      echo "$name: exit status $status, expected $expected; its standard error:" >&2
      sed -n '1,40p' "$work/err-$name.txt" >&2
      exit 1
    fi
    walls+=("$(wall_seconds "$report")")
    cpus+=("$(cpu_seconds "$report")")
    rsses+=("$(peak_mb "$report")")
  done
  wall_list[$name]="${walls[*]}"
  cpu_list[$name]="${cpus[*]}"
  rss_list[$name]="${rsses[*]}"
}

# median and spread of a list of numbers: "median min max"
stats() {
  tr ' ' '\n' <<<"$1" | sort -g | awk '{ v[NR] = $1 }
    END { m = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2
          printf "%.3f %.3f %.3f", m, v[1], v[NR] }'
}

pdf_pages() {
  if command -v pdfinfo >/dev/null && [ -f "$1" ]; then
    pdfinfo "$1" 2>/dev/null | awk '/^Pages:/ { print $2 }'
  else
    echo "-"
  fi
}

run_case() {  # name application-folder
  local name=$1 application=$2 home
  home=$(fresh_home "$name")
  measure "$name" 0 "$exe" --home "$home" --batch --mode 3 --periods all \
    --pdf "$work/$name.pdf" "$application/app.dat"
}

startup_case() {  # name application-folder: stops at the menu with nothing marked
  local name=$1 application=$2 home
  home=$(fresh_home "$name")
  measure "$name" 1 "$exe" --home "$home" --batch --mode 3 --periods none \
    --no-application --no-statements --pdf "$work/$name.pdf" "$application/app.dat"
}

measure version 0 "$exe" --version
sample_home=$(fresh_home sample-data)
run_case sample "$sample_home/sample"
startup_case start-large "$work/large"
run_case large "$work/large"
startup_case start-large-x2 "$work/large-x2"
run_case large-x2 "$work/large-x2"
# The large application with its sibling database as a Jet file: the first of
# the runs in its program folder makes the SQLite copy, the later ones find it,
# so the median is a run that reads the Jet file through the copy.
# The Jet file is written from the generated one by a Jet writer the project
# does not ship (KELVARY_JET_WRITER, by default the shared folder's sqlite2jet);
# without one the case is left out.
cases=(version sample start-large large start-large-x2 large-x2)
writer=${KELVARY_JET_WRITER:-$here/../../shared/jet/tool/sqlite2jet}
if [ -x "$writer" ]; then
  mkdir -p "$work/large-jet"
  cp "$work/large/app.dat" "$work/large-jet/app.dat"
  if [ ! -f "$work/large-jet/Ledra.mdb" ] || [ "$work/large/Ledra.mdb" -nt "$work/large-jet/Ledra.mdb" ]; then
    "$writer" "$work/large/Ledra.mdb" "$work/large-jet/Ledra.mdb" V2000 --coerce >/dev/null
  fi
  run_case large-jet "$work/large-jet"
  cases+=(large-jet)
else
  echo "no Jet writer at $writer: the large-jet case is left out" >&2
fi

echo "kelvary whole-run benchmark: $runs runs per case; median [min-max]"
printf '%-16s %24s %24s %26s %6s\n' case "wall time (s)" "processor time (s)" "peak memory (MB)" pages
for name in "${cases[@]}"; do
  read -r wm wlo whi <<<"$(stats "${wall_list[$name]}")"
  read -r cm clo chi <<<"$(stats "${cpu_list[$name]}")"
  read -r rm rlo rhi <<<"$(stats "${rss_list[$name]}")"
  pages=-
  [ "$name" = version ] || pages=$(pdf_pages "$work/$name.pdf")
  printf '%-16s %8.3f [%6.3f-%6.3f] %8.3f [%6.3f-%6.3f] %9.1f [%6.1f-%6.1f] %6s\n' \
    "$name" "$wm" "$wlo" "$whi" "$cm" "$clo" "$chi" "$rm" "$rlo" "$rhi" "$pages"
done

# Growth of the part of the run after start-up when the items double.
growth() {  # label list-name
  local -n lists=$2
  local a b sa sb
  read -r a _ <<<"$(stats "${lists[large]}")"
  read -r b _ <<<"$(stats "${lists[large-x2]}")"
  read -r sa _ <<<"$(stats "${lists[start-large]}")"
  read -r sb _ <<<"$(stats "${lists[start-large-x2]}")"
  awk -v label="$1" -v a="$a" -v b="$b" -v sa="$sa" -v sb="$sb" 'BEGIN {
    da = a - sa; db = b - sb
    if (da > 0) printf "twice the items, %s after start-up: %.3f s against %.3f s, %.2f times\n", label, db, da, db / da
    else printf "twice the items, %s: the large run takes no longer than its start-up\n", label }'
}
growth "wall time" wall_list
growth "processor time" cpu_list

# What the Jet file adds to the large run, its copy made by an earlier run.
# On a shared machine the runs wander by more than this; the intake itself is
# measured more closely by kelvary_bench (BM_SiblingIntake, BM_JetFirstCopy).
jet_added() {  # label list-name
  local -n lists=$2
  local s j
  read -r s _ <<<"$(stats "${lists[large]}")"
  read -r j _ <<<"$(stats "${lists[large-jet]}")"
  awk -v label="$1" -v s="$s" -v j="$j" 'BEGIN {
    printf "the sibling database as a Jet file, %s: %+.0f ms on the large run\n", label, (j - s) * 1000 }'
}
if [[ " ${cases[*]} " == *" large-jet "* ]]; then
  jet_added "wall time" wall_list
  jet_added "processor time" cpu_list
fi
