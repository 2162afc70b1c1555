#!/usr/bin/env bash
# Whether a change to how a run works left what it makes alone: runs two
# builds of kelvary (batch, output mode 3, every period) with the clock held
# at one moment (bench/fixed-clock.c, preloaded), on the sample and on the
# large application, and compares
#   - the payload copies in Temp (*.Txt), byte for byte;
#   - the symbol images in Temp (*.bmp), by size, palette and pixels (the
#     padding at the end of a BMP row is not part of the image);
#   - the working database SystemData.mdb, table by table (sqlite3 .dump);
#   - the PDF's pages rendered by poppler at 300 dpi, pixel for pixel.
# Prints one line per case and comparison; exits 1 when anything differs.
#
#   bench/compare-runs.sh [-s SIZES] BUILD_BEFORE BUILD_AFTER
#
# -s SIZES: item counts of the large application (default "600").
set -euo pipefail

sizes="600"
while getopts "s:h" option; do
  case $option in
    s) sizes=$OPTARG ;;
    *) sed -n '2,15p' "$0"; exit 2 ;;
  esac
done
shift $((OPTIND - 1))
[ $# -eq 2 ] || { sed -n '2,15p' "$0"; exit 2; }

before=$(cd "$1" && pwd)
after=$(cd "$2" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
work=$after/bench-compare
mkdir -p "$work"
for b in "$before" "$after"; do
  [ -x "$b/app/kelvary" ] && [ -d "$b/app-template" ] || { echo "no program or template in $b" >&2; exit 2; }
done
cc -shared -fPIC -O1 -o "$work/fixed-clock.so" "$here/fixed-clock.c" -ldl

run() {  # build tag application-folder
  local out=$work/$2
  rm -rf "$out"
  mkdir -p "$out"
  cp -r "$1/app-template" "$out/home"
  mkdir -p "$out/home/Temp"
  LD_PRELOAD=$work/fixed-clock.so QT_QPA_PLATFORM=offscreen "$1/app/kelvary" --home "$out/home" --batch \
    --mode 3 --periods all --pdf "$out/run.pdf" "$3/app.dat" >"$out/log" 2>&1 || true
  pdftoppm -r 300 -gray "$out/run.pdf" "$out/page"
  sqlite3 "$out/home/SystemData.mdb" .dump >"$out/tables.sql"
}

# Size, palette and the image's own bits of every BMP in two folders.
same_bitmaps() {
  python3 - "$1" "$2" <<'PY'
import os, struct, sys
def image(path):
    d = open(path, 'rb').read()
    offset, = struct.unpack_from('<I', d, 10)
    width, height = struct.unpack_from('<ii', d, 18)
    bits, = struct.unpack_from('<H', d, 28)
    stride = (width * bits + 31) // 32 * 4
    rows = tuple(''.join(f'{b:08b}' for b in d[offset + y * stride:offset + (y + 1) * stride])[:width * bits]
                 for y in range(abs(height)))
    return width, height, bits, d[54:offset], rows
a, b = sys.argv[1:3]
names = sorted(f for f in os.listdir(a) if f.lower().endswith('.bmp'))
if names != sorted(f for f in os.listdir(b) if f.lower().endswith('.bmp')): sys.exit(1)
sys.exit(0 if all(image(os.path.join(a, n)) == image(os.path.join(b, n)) for n in names) else 1)
PY
}

status=0
verdict() {  # case what same?
  printf '%-14s %-28s %s\n' "$1" "$2" "$3"
  [ "$3" = same ] || status=1
}

compare() {  # case application-folder
  run "$before" "$1-before" "$2"
  run "$after" "$1-after" "$2"
  local a=$work/$1-before b=$work/$1-after n
  n=$(find "$a/home/Temp" -iname '*.txt' | wc -l)
  if diff -r -q -x '*.bmp' "$a/home/Temp" "$b/home/Temp" >/dev/null; then
    verdict "$1" "payloads ($n)" same
  else verdict "$1" "payloads ($n)" different; fi
  if same_bitmaps "$a/home/Temp" "$b/home/Temp"; then
    verdict "$1" "symbol images ($n)" same
  else verdict "$1" "symbol images ($n)" different; fi
  if cmp -s "$a/tables.sql" "$b/tables.sql"; then
    verdict "$1" "working tables" same
  else verdict "$1" "working tables" different; fi
  n=$(find "$a" -maxdepth 1 -name 'page-*.pgm' | wc -l)
  local pages=same
  [ "$n" -gt 0 ] || pages=different
  for page in "$a"/page-*.pgm; do
    cmp -s "$page" "$b/$(basename "$page")" || pages=different
  done
  verdict "$1" "PDF pages at 300 dpi ($n)" "$pages"
}

sample_home=$work/sample-data
rm -rf "$sample_home"
cp -r "$after/app-template" "$sample_home"
compare sample "$sample_home/sample"
for items in $sizes; do
  folder=$work/large-$items
  if [ ! -f "$folder/Ledra.mdb" ] || [ "$here/make_large_application.py" -nt "$folder/Ledra.mdb" ]; then
    python3 "$here/make_large_application.py" "$folder" --items "$items" --renamed $((items * 17 / 600)) >/dev/null
  fi
  compare "large-$items" "$folder"
done
exit $status
