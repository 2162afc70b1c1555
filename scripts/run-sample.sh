#!/usr/bin/env bash
# Installs, builds, and runs the main job: the program's version, then a batch
# run that prints the bundled sample application into out/sample.pdf.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
build/app/kelvary --version
mkdir -p out
status=0
build/app/kelvary --batch --mode 3 --periods all --pdf out/sample.pdf build/app/sample/app.dat || status=$?
echo "kelvary finished with exit status $status"
if [ -f out/sample.pdf ]; then echo "The PDF is at out/sample.pdf"; fi
