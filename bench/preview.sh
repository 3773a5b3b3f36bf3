#!/usr/bin/env bash
# Builds the program and measures how long its preview keeps a user waiting. Arguments go to preview.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $bench_packages xvfb
cmake --preset linux -DKRV_BENCH=ON >/dev/null
cmake --build --preset linux
xvfb-run -a -s "-screen 0 1000x1000x24 -noreset" bench/preview.py build/linux "$@"
