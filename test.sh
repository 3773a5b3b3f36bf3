#!/usr/bin/env bash
# Installs what is missing, builds KRVWinPr with and without the sanitizers and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $test_packages

for preset in asan linux; do
    cmake --preset $preset -DKRV_TESTS=ON >/dev/null
    cmake --build --preset $preset
done
ctest --preset asan
ctest --preset linux
