#!/usr/bin/env bash
# Installs what is missing, builds KRVWinPr and prints the sample invoice and the sample letter into PDFs.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages

cmake --preset release >/dev/null
cmake --build --preset release

rm -rf build/sample
mkdir -p build/sample
cp samples/RECHNUNG.OUT build/sample/
cp -r samples/BRIEF build/sample/
program=$PWD/build/release/KRVWinPr
(cd build/sample && "$program" RECHNUNG.OUT KEINEGRAFIK "Korvano PDF")
(cd build/sample/BRIEF && "$program" BRIEF.OUT HINTERGR.PCX "Korvano PDF")
for printed in RECHNUNG BRIEF/BRIEF; do
    test -s build/sample/$printed.pdf
    echo "Printed samples/$printed.OUT to $PWD/build/sample/$printed.pdf"
done
