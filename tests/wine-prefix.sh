#!/usr/bin/env bash
# wine-prefix.sh FOLDER: makes a private Wine prefix in FOLDER, set up as a German user has Windows (code pages 1252 and
# 850), and keeps its server alive for half a minute of idleness, so that programs start quickly one after the other.
# wine-prefix.sh --end FOLDER: ends whatever runs in it, the server included.
#
# The locale lies in the prefix, so the machine need not have it. Windows are created without any display, unless
# DISPLAY is set and the program runs with KRV_WINE_DRIVER=x11 (see wine-run.sh). Packages: wine, wine64, locales, xvfb.
set -euo pipefail

end=
if [ "$1" = --end ]; then
    end=yes
    shift
fi
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
export WINEPREFIX=$prefix WINEDEBUG=-all WINEARCH=win64 LOCPATH=$prefix/locale LC_ALL=de_DE.UTF-8
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
wineserver=$(command -v wineserver || echo /usr/lib/wine/wineserver)

if [ -n "$end" ]; then
    "$wineserver" -k || true
    exit
fi

exec 9>"$prefix/lock"
flock 9
if [ ! -e "$prefix/ready" ]; then
    mkdir -p "$LOCPATH"
    localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"
    xvfb-run -a wine wineboot --init >/dev/null 2>&1 9>&-
    wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 9>&-
    "$wineserver" -w 9>&-
    touch "$prefix/ready"
fi
"$wineserver" -p30 9>&- 2>/dev/null || true
