#!/usr/bin/env bash
# Installs what is missing, builds KRVWinPr for Linux (with and without the sanitizers) and for Windows, and runs every
# test, the fuzzers for a few seconds each; those of the Windows programs under Wine.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $test_packages $windows_packages $packaging_packages $handbook_packages

presets="asan tsan fuzz windows32 windows linux"
for preset in $presets; do
    cmake --preset $preset -DKRV_TESTS=ON >/dev/null
    cmake --build --preset $preset
done
[ -x /usr/lib/wine/wine ] || echo "No 32-bit Wine here: the 32-bit Windows program is built, its tests are not run."
for preset in $presets; do
    ctest --preset $preset
done
