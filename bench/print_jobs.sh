#!/usr/bin/env bash
# Builds the program and measures what the jobs of a long queue cost. Arguments go to print_jobs.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $bench_packages cups-daemon cups-client cups-filters xvfb
cmake --preset linux -DKRV_BENCH=ON >/dev/null
cmake --build --preset linux
xvfb-run -a -s "-screen 0 1400x1000x24 -noreset" bench/print_jobs.py build/linux "$@"
