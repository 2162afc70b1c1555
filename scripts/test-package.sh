#!/usr/bin/env bash
# Installs Kelvary the two ways a user would, and runs the sample from each:
#   1. cmake --install into a prefix;
#   2. the Debian package, installed on this machine with apt-get when run as
#      root (then removed again), otherwise unpacked into a fresh root.
# Either way the installed folder must come out of the run unchanged, and the
# run must work in the user's own folder under XDG_DATA_HOME.
#
# Usage: scripts/test-package.sh [BUILD_FOLDER]   (default: build, as scripts/build.sh makes it)
# KELVARY_PACKAGE_UNPACK_ONLY=1 unpacks the package even as root, leaving
# the machine's own packages alone.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
[ -x "$build/app/kelvary" ] || bash scripts/build.sh

work=$(mktemp -d)
chmod 755 "$work"
trap 'rm -rf "$work"' EXIT

fail() { echo "test-package: $*" >&2; exit 1; }

# run_sample PROGRAM FOLDER USERHOME [RUNNER…]: the sample, all periods, to PDF.
run_sample() {
  local program=$1 folder=$2 home=$3
  shift 3
  mkdir -p "$home"
  local pdf="$home/sample.pdf"
  (cd "$home" && env -u KELVARY_HOME HOME="$home" XDG_DATA_HOME="$home/.local/share" "$@" \
      "$program" --batch --mode 3 --periods all --pdf "$pdf" "$folder/sample/app.dat") ||
    fail "the sample run of $program ended with status $?"
  qpdf --check "$pdf" >/dev/null || fail "$pdf does not pass qpdf --check"
  local pages
  pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
  [ "$pages" = 6 ] || fail "$pdf has $pages pages, not 6"
  [ -f "$home/.local/share/kelvary/SystemData.mdb" ] || fail "no per-user folder in $home"
  ls "$home/.local/share/kelvary/Temp/"*.bmp >/dev/null 2>&1 || fail "no symbols in the per-user Temp"
  echo "test-package: $program wrote the sample ($pages pages) working in $home/.local/share/kelvary"
}

# check_qt_texts PROGRAM [RUNNER…]: on a C locale, the installed program words
# Qt's own file dialog in Japanese (the translations package is in place).
check_qt_texts() {
  local program=$1
  shift
  local texts
  texts=$(env LC_ALL=C LANG=C "$@" "$program" --qt-texts) || fail "$program --qt-texts ended with status $?"
  for line in "fileNameLabel: ファイル名(&N):" "fileTypeLabel: ファイルの種類:" "button: 開く(&O)" \
              "button: キャンセル" "column: 名前" "menu: コピー(&C)" "menu: すべてを選択"; do
    grep -qxF "$line" <<<"$texts" || fail "$program does not show \"$line\" in its file dialog: $texts"
  done
  echo "test-package: $program shows the file dialog in Japanese:" $(grep -E '^(fileNameLabel|button):' <<<"$texts")
}

# Digest of every file under a folder, to see that the run wrote nothing there.
digest() { (cd "$1" && find . -type f -print0 | sort -z | xargs -0 sha256sum); }

# 1. cmake --install into a prefix.
cmake --install "$build" --prefix "$work/prefix" >/dev/null
before=$(digest "$work/prefix")
run_sample "$work/prefix/bin/kelvary" "$work/prefix/lib/kelvary" "$work/user-prefix"
check_qt_texts "$work/prefix/bin/kelvary"
[ "$(digest "$work/prefix")" = "$before" ] || fail "the run changed the installed prefix"

# 2. The Debian package.
rm -f "$build"/kelvary_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls "$PWD/$build"/kelvary_*.deb)
contents=$(dpkg-deb -c "$deb")
for path in ./opt/kelvary/kelvary ./opt/kelvary/SystemData.mdb ./opt/kelvary/PrintFile/FSQRCode.w30 \
            ./opt/kelvary/DbtData0607H.txt ./opt/kelvary/sample/app.dat ./usr/bin/kelvary \
            ./usr/share/applications/kelvary.desktop ./usr/share/icons/hicolor/scalable/apps/kelvary.svg \
            ./usr/share/man/man1/kelvary.1.gz; do
  grep -q " $path\( \|$\)" <<<"$contents" || fail "$deb lacks $path"
done
depends=$(dpkg-deb -f "$deb" Depends)
for package in libqt6widgets6 libicu libqrencode libsqlite3 libmdb3 fonts-ipafont-gothic qt6-qpa-plugins qt6-translations-l10n; do
  grep -q "$package" <<<"$depends" || fail "$deb does not depend on $package ($depends)"
done
desktop-file-validate packaging/kelvary.desktop
echo "test-package: $deb has the program folder, the command, desktop entry, icon and manual"

if [ "$(id -u)" -eq 0 ] && [ -z "${KELVARY_PACKAGE_UNPACK_ONLY:-}" ]; then
  export DEBIAN_FRONTEND=noninteractive
  apt-get install -y -qq "$deb" >/dev/null
  trap 'apt-get remove -y -qq kelvary >/dev/null 2>&1 || true; rm -rf "$work"' EXIT
  [ "$(readlink -f /usr/bin/kelvary)" = /opt/kelvary/kelvary ] || fail "/usr/bin/kelvary does not lead to /opt/kelvary"
  man -w kelvary >/dev/null || fail "man kelvary finds no page"
  run_sample /usr/bin/kelvary /opt/kelvary "$work/root-home"
  check_qt_texts /usr/bin/kelvary
  # An ordinary user, for whom /opt/kelvary is not writable.
  if command -v setpriv >/dev/null; then
    mkdir -p "$work/nobody-home" && chown 65534:65534 "$work/nobody-home"
    run_sample /usr/bin/kelvary /opt/kelvary "$work/nobody-home" setpriv --reuid=65534 --regid=65534 --clear-groups
  fi
  dpkg --verify kelvary || fail "files of the installed package were changed"
  apt-get remove -y -qq kelvary >/dev/null
  [ ! -e /usr/bin/kelvary ] || fail "/usr/bin/kelvary is still there after removal"
  echo "test-package: installed with apt-get, ran the sample from /usr/bin/kelvary, removed"
else
  dpkg-deb -x "$deb" "$work/root"
  before=$(digest "$work/root")
  run_sample "$work/root/usr/bin/kelvary" "$work/root/opt/kelvary" "$work/user-root"
  check_qt_texts "$work/root/usr/bin/kelvary"
  [ "$(digest "$work/root")" = "$before" ] || fail "the run changed the unpacked package"
  echo "test-package: unpacked into a fresh root, ran the sample from its /usr/bin/kelvary"
fi
