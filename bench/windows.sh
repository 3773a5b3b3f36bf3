#!/usr/bin/env bash
# Builds the Windows program and measures it under Wine. Arguments go to windows.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $test_packages $windows_packages
cmake --preset windows -DKRV_BENCH=ON >/dev/null
cmake --build --preset windows
exec bench/windows.py build/windows "$@"
