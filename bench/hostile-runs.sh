#!/usr/bin/env bash
# Runs of input that no application holds, each of which must end within
# 10 s and 200 MB: an application file whose Remarks field is 10 MB of text,
# a FIFO (nothing ever writes to it) and /dev/zero as the application file.
# Each runs once under /usr/bin/time -v, killed after 60 s; a line per case
# gives the exit status, wall and processor seconds, peak memory and whether
# it kept to the limits. Exit status 1 when a case did not.
#
#   bench/hostile-runs.sh BUILD_FOLDER
#
# Scratch program folders and inputs go to BUILD_FOLDER/bench-runs.
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,10p' "$0"; exit 2; }
source "$(cd "$(dirname "$0")" && pwd)/common.sh"
require_build "$1" bench-runs/hostile
rm -rf "$work"
mkdir -p "$work"
home=$work/home
cp -r "$template" "$home"
mkdir -p "$home/Temp"

# The sample with its Remarks replaced by 10 MB of "あ" (CP932 82 A0).
python3 - "$home/sample/app.dat" "$home/sample/remarks-10mb.dat" <<'PY'
import sys
sample = open(sys.argv[1], 'rb').read()
start = sample.index(b'"Remarks",')
end = sample.index(b'\r\n', start)
remarks = b'"Remarks","' + b'\x82\xa0' * (5 * 1024 * 1024) + b'",2'
open(sys.argv[2], 'wb').write(sample[:start] + remarks + sample[end:])
PY
mkfifo "$work/application.fifo"

failed=0
run_case() {  # NAME APPLICATION_FILE
  local report=$work/time-$1.txt status=0
  /usr/bin/time -v -o "$report" timeout 60 "$exe" --batch --home "$home" --mode 3 --periods all \
    --pdf "$work/$1.pdf" "$2" >"$work/out-$1.txt" 2>"$work/err-$1.txt" || status=$?
  local wall cpu rss
  wall=$(wall_seconds "$report")
  cpu=$(cpu_seconds "$report")
  rss=$(peak_mb "$report")
  local verdict=ok
  if [ "$status" -eq 124 ] || awk -v w="$wall" -v r="$rss" 'BEGIN { exit !(w > 10 || r > 200) }'; then
    verdict="OVER THE LIMIT"
    failed=1
  fi
  printf '%-14s exit %3s  wall %6.2f s  cpu %6.2f s  peak %7.1f MB  %s\n' "$1" "$status" "$wall" "$cpu" "$rss" "$verdict"
  sed -n '/^内容：/p; /^kelvary:/p' "$work/err-$1.txt" | head -3 | sed 's/^/    /'
}
run_case remarks-10mb "$home/sample/remarks-10mb.dat"
run_case fifo "$work/application.fifo"
run_case dev-zero /dev/zero
exit $failed
