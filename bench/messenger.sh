#!/usr/bin/env bash
# Builds the programs and measures how long hosts in an emulator wait for them. Arguments go to messenger.py.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages dosbox
cmake --preset linux -DKRV_TESTS=ON >/dev/null
cmake --build --preset linux
bench/messenger.py build/linux "$@"
