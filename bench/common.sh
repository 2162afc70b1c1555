# Shared by the whole-run benchmark scripts (sourced, not run): the built
# program and its folder template, generated applications, fresh program
# folders and the figures of a /usr/bin/time -v report.
#
# require_build BUILD_FOLDER WORK_NAME sets build, exe, template and work.
require_build() {
  build=$(cd "$1" && pwd)
  exe=$build/app/kelvary
  template=$build/app-template
  work=$build/$2
  [ -x "$exe" ] || { echo "no program at $exe: build first" >&2; exit 2; }
  [ -d "$template" ] || { echo "no program folder template at $template" >&2; exit 2; }
  [ -x /usr/bin/time ] || { echo "/usr/bin/time is missing: run scripts/install-deps.sh" >&2; exit 2; }
  mkdir -p "$work"
}

bench_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

# make_application FOLDER ITEMS RENAMED: the generated large application in
# $work/FOLDER, made again when the generator changes.
make_application() {
  local folder=$work/$1
  if [ ! -f "$folder/Ledra.mdb" ] || [ "$bench_dir/make_large_application.py" -nt "$folder/Ledra.mdb" ]; then
    python3 "$bench_dir/make_large_application.py" "$folder" --items "$2" --renamed "$3" >/dev/null
  fi
}

# fresh_home NAME: a new program folder, as an installation has it; prints its path.
# fresh_home NAME [FOLDER]: in FOLDER (default: the work folder).
fresh_home() {
  local home=${2:-$work}/home-$1
  rm -rf "$home"
  cp -r "$template" "$home"
  mkdir -p "$home/Temp"
  echo "$home"
}

# Figures of a /usr/bin/time -v REPORT: seconds of wall time, processor
# seconds (user + system), peak memory in MB.
wall_seconds() {  # "Elapsed (wall clock) time (h:mm:ss or m:ss): 0:00.45" -> 0.45
  awk -F': ' '/Elapsed \(wall clock\)/ { n = split($2, p, ":"); s = 0; for (k = 1; k <= n; k++) s = s * 60 + p[k]; print s }' "$1"
}
cpu_seconds() {
  awk -F': ' '/User time|System time/ { s += $2 } END { printf "%.6f", s }' "$1"
}
user_seconds() {
  awk -F': ' '/User time/ { printf "%.6f", $2 }' "$1"
}
peak_mb() {
  awk -F': ' '/Maximum resident set size/ { printf "%.1f", $2 / 1024 }' "$1"
}
