#!/usr/bin/env bash
# Installs what is missing, builds KRVWinPr and prints the sample invoice into a PDF.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages

cmake --preset linux -DKRV_TESTS=OFF >/dev/null
cmake --build --preset linux

rm -rf build/sample
mkdir -p build/sample
cp samples/RECHNUNG.OUT build/sample/
program=$PWD/build/linux/KRVWinPr
(cd build/sample && "$program" RECHNUNG.OUT KEINEGRAFIK "Korvano PDF")
test -s build/sample/RECHNUNG.pdf
echo "Printed samples/RECHNUNG.OUT to $PWD/build/sample/RECHNUNG.pdf"
