#!/usr/bin/env bash
# Builds both programs and measures how long their printer selection takes to appear. Arguments go to selection.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $test_packages $windows_packages $bench_packages
for preset in linux windows; do
    cmake --preset $preset -DKRV_BENCH=ON >/dev/null
    cmake --build --preset $preset
done
# Wine's windows are to be on the display here, unlike in the tests.
prefix=build/windows/wineprefix
graphics() { tests/wine-run.sh $prefix reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d "$1" /f >/dev/null; tests/wine-prefix.sh --end $prefix; }
graphics x11
trap 'graphics null' EXIT
xvfb-run -a -s "-screen 0 1400x1000x24 -noreset" bench/selection.py build/linux build/windows "$@"
