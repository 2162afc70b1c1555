#!/usr/bin/env bash
# Takes the README's pictures of the windows a user sees, on a virtual X
# server with a window manager, and checks every caption as the window manager
# shows it (_NET_WM_NAME): nothing may be appended to the program's own text.
#
#   docs/file-dialog.png      the file dialog of a start without a file
#   docs/print-menu.png       the print menu
#   docs/preview-window.png   the preview with a whole page
#   docs/problem-list.png     the problem list of an application with a finding
#
# Needs xvfb, openbox, x11-utils, xdotool and imagemagick; the build does not.
# Usage: scripts/take-screenshots.sh [BUILD_FOLDER]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
program="$PWD/$build/app/kelvary"
[ -x "$program" ] || { echo "take-screenshots: build first ($program)" >&2; exit 1; }
for tool in Xvfb openbox xprop xdotool import; do
  command -v "$tool" >/dev/null || { echo "take-screenshots: $tool is missing" >&2; exit 1; }
done

work=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "take-screenshots: $*" >&2
  cat "$work"/run*.log >&2 2>/dev/null || true
  exit 1
}

# A free display number, a screen of an ordinary office monitor.
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
pids+=($!)
for _ in $(seq 50); do [ -s "$work/display" ] && break; sleep 0.1; done
export DISPLAY=":$(cat "$work/display")"
openbox >/dev/null 2>&1 &
pids+=($!)
sleep 1

# The program folder and the user's home, both scratch; the user's desktop
# language is not Japanese.
cp -r "$build/app/." "$work/home"
mkdir -p "$work/user/.config/kelvary"
printf '[ApplicationFile]\nLastFolder=%s\n' "$work/home/sample" >"$work/user/.config/kelvary/kelvary.conf"
export HOME="$work/user" XDG_CONFIG_HOME="$work/user/.config" LC_ALL=C.UTF-8
unset KELVARY_HOME QT_QPA_PLATFORM
kelvary() { env LANG=C LC_ALL=C "$program" "$@"; }

# caption ID: the window's caption as the window manager got it.
caption() { xprop -id "$1" _NET_WM_NAME 2>/dev/null | sed -n 's/^_NET_WM_NAME(UTF8_STRING) = "\(.*\)"$/\1/p'; }

# wait_window REGEX: the id of the program's first visible window whose
# caption matches (xdotool's own name search does not read UTF-8 captions).
wait_window() {
  local id
  for _ in $(seq 600); do
    for id in $(xdotool search --onlyvisible --class kelvary 2>/dev/null); do
      if [[ "$(caption "$id")" =~ $1 ]]; then
        sleep 1  # let it paint
        echo "$id"
        return
      fi
    done
    sleep 0.1
  done
  fail "no window whose caption matches /$1/"
}

# check_caption ID TEXT: the caption the window manager got is TEXT exactly.
check_caption() {
  local name
  name=$(caption "$1")
  [ "$name" = "$2" ] || fail "caption \"$name\", expected \"$2\""
  echo "take-screenshots: caption \"$name\""
}

shot() { import -window "$1" -frame "docs/$2"; echo "take-screenshots: docs/$2"; }
press() { xdotool windowactivate --sync "$1" >/dev/null 2>&1 || true; xdotool key --clearmodifiers "${@:2}"; }

# 1. Started without a file: the file dialog, then the sample through it.
kelvary --home "$work/home" >"$work/run1.log" 2>&1 &
run=$!
pids+=($run)
id=$(wait_window '^申請データファイルを開く$')
check_caption "$id" "申請データファイルを開く"
shot "$id" file-dialog.png
press "$id" a p p period d a t Return

id=$(wait_window '^オプション：印刷$')
check_caption "$id" "オプション：印刷"
main=$(wait_window '^Kelvary\(')
[[ "$(caption "$main")" =~ ^Kelvary\([0-9.\ ]+\)$ ]] || fail "main window caption \"$(caption "$main")\""
shot "$id" print-menu.png
press "$id" Return

id=$(wait_window '^  \[1/[0-9]+ページ\]$')
pages=$(caption "$id" | sed -n 's/.*\[1\/\([0-9]*\)ページ\]$/\1/p')
check_caption "$id" "  [1/${pages}ページ]"
shot "$id" preview-window.png
press "$id" Escape
timeout 60 tail --pid="$run" -f /dev/null || fail "the first run did not end"

# 2. An application without its representative's name and office telephone:
# the problem list.
LC_ALL=C sed 's/^"\(PSName\|OfficeTel\)","[^"]*"/"\1",""/' "$work/home/sample/app.dat" >"$work/home/sample/problem.dat"
kelvary --home "$work/home" "$work/home/sample/problem.dat" >"$work/run2.log" 2>&1 &
run=$!
pids+=($run)
id=$(wait_window '^オプション：印刷$')
press "$id" Return
id=$(wait_window '^申請書：不正な項目の確認$')
check_caption "$id" "申請書：不正な項目の確認"
press "$id" Return
id=$(wait_window '^入力内容の問題点一覧$')
check_caption "$id" "入力内容の問題点一覧"
shot "$id" problem-list.png
kill "$run" 2>/dev/null || true
echo "take-screenshots: done"
