#!/usr/bin/env bash
# Instruction counts of a print run's phases from a callgrind profile of
# kelvary (and, when given, of the floor on the same payloads): inclusive
# counts of the functions that make each phase, and their share of the run.
# The lines marked "in:" are parts of a phase above them, not extra work.
#
#   bench/callgrind-phases.sh KELVARY_PROFILE [FLOOR_PROFILE]
set -euo pipefail
[ $# -ge 1 ] || { sed -n '2,7p' "$0"; exit 2; }

inclusive() {
  callgrind_annotate --inclusive=yes --auto=no --threshold=100 "$1" 2>/dev/null
}

total() {
  callgrind_annotate --auto=no --threshold=100 "$1" 2>/dev/null | awk '/PROGRAM TOTALS/ { gsub(",", "", $1); print $1 }'
}

kelvary_total=$(total "$1")
report=$(inclusive "$1")

# phase label | pattern (a function name, matched after the file name)
phases=(

  "intake: application data file and period index|kelvary::clsAnlBasicInfo::LoadData(|kelvary::clsApply2Data::LoadData("
  "application payloads and symbols|kelvary::clsPrintMain_200804::mMakeApplicationPayloads("
  "application checks|kelvary::clsPrintMain_200804::mCheckApplication("
  "period import (rows into working tables)|kelvary::mCopyZaimuData("
  "period repairs|kelvary::mPutSpecialItemCode(|kelvary::mReplaceFixedAssets(|kelvary::mPref01Special(|kelvary::mCheckExcelConvData("
  "period payloads and symbols|kelvary::clsPrintMain_200804::mMakePeriodPayloads("
  "pages filled and drawn into the PDF|kelvary::PrintRun::mPrintPages("
  "PDF finished (fonts embedded)|kelvary::PdfFileWriter::commit("
  "in: pages drawn into the PDF|kelvary::PdfFileWriter::addPage("
  "in: QR symbols encoded|kelvary::qr::encodeSymbol("
  "in: ICU transliterator registry|Transliterator::initializeRegistry("
    "in: images stored as PNG in pages|png_write_image"
  "in: progress window|kelvary::gMsgForm("
  "in: SQL statements compiled|kelvary::SqliteConnection::compile("
  "in: print menu built and confirmed|kelvary::PrintRun::mShowMenu("
)

sum_of() {  # patterns separated by |: the sum of the first match of each
  local IFS='|' sum=0 n
  for pattern in $1; do
    [ -n "$pattern" ] || continue
    n=$(grep -F -- ":$pattern" <<<"$report" | head -1 | awk '{ gsub(",", "", $1); print $1 }' || true)
    sum=$((sum + ${n:-0}))
  done
  echo "$sum"
}

printf '%-52s %15s %7s\n' "phase (callgrind, sample run)" instructions share
named=0
for entry in "${phases[@]}"; do
  label=${entry%%|*}
  patterns=${entry#*|}
  [ -n "$patterns" ] || continue
  n=$(sum_of "$patterns")
  [[ $label == in:* ]] || named=$((named + n))
  printf '%-52s %15s %6.1f%%\n' "$label" "$n" "$(awk -v n="$n" -v t="$kelvary_total" 'BEGIN { print 100 * n / t }')"
done
rest=$((kelvary_total - named))
printf '%-52s %15s %6.1f%%\n' "start-up, shut-down and the rest" "$rest" "$(awk -v n="$rest" -v t="$kelvary_total" 'BEGIN { print 100 * n / t }')"
printf '%-52s %15s\n' "kelvary total" "$kelvary_total"
if [ $# -ge 2 ]; then
  floor_total=$(total "$2")
  printf '%-52s %15s\n' "floor total" "$floor_total"
  awk -v k="$kelvary_total" -v f="$floor_total" 'BEGIN { printf "%-52s %15.2f\n", "ratio (instructions)", k / f }'
fi
