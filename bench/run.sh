#!/usr/bin/env bash
# Installs the peers, builds KRVWinPr and measures it beside them. Arguments go to compare.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $bench_packages python3 cups-filters enscript ghostscript netpbm
cmake --preset linux -DKRV_BENCH=ON >/dev/null
cmake --build --preset linux
exec bench/compare.py build/linux "$@"
