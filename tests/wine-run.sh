#!/usr/bin/env bash
# wine-run.sh FOLDER PROGRAM ARGUMENTS...: runs a Windows program (a file, or one of Wine's own by its name) in the private
# Wine prefix FOLDER, which is made first where it is missing. Its windows exist, but nobody sees them.
# Wine itself fails to start once in some thousand times and says why (exit code 1, "failed to map the shared user data").
# A 32-bit program where there is no 32-bit Wine is skipped: one line says so, the exit code is 77.
set -euo pipefail
prefix=$1
program=$2
shift 2
# The machine type stands behind the signature of the executable's header, 0x014C for 32-bit Intel.
machine=
if [ -f "$program" ]; then
    header=$(od -An -tu4 -j60 -N4 "$program")
    machine=$(od -An -tx2 -j$((header + 4)) -N2 "$program")
fi
if [ "${machine// /}" = 014c ] && [ ! -x /usr/lib/wine/wine ]; then
    echo "No 32-bit Wine here (package wine32:i386): $(basename "$program") was built, but not run."
    exit 77
fi

"$(dirname "$0")/wine-prefix.sh" "$prefix"
prefix=$(cd "$prefix" && pwd)
export WINEPREFIX=$prefix LOCPATH=$prefix/locale WINEDEBUG=${WINEDEBUG:--all,err+virtual}
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
exec env LC_ALL=de_DE.UTF-8 wine "$program" "$@"
