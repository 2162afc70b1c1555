#!/usr/bin/env bash
# Installs what Kelvary needs to build, run and test on a Debian machine.
# Idempotent: packages already present are skipped, so a second run costs one dpkg query.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev libqt6opengl6-dev libgl-dev qt6-translations-l10n
  libicu-dev libfontconfig-dev libqrencode-dev libsqlite3-dev sqlite3
  mdbtools-dev libmdb3
  fonts-ipafont-gothic
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  zbar-tools poppler-utils qpdf
  time python3 valgrind
  dpkg-dev desktop-file-utils man-db
  clang libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
