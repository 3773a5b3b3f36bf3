#!/usr/bin/env bash
# wine-prefix.sh FOLDER: makes a private Wine prefix in FOLDER, set up as a German user has Windows (code pages 1252 and
# 850), and keeps its server alive for half a minute of idleness, so that programs start quickly one after the other.
# wine-prefix.sh --end FOLDER: ends whatever runs in it, the server included.
#
# The locale lies in the prefix, so the machine need not have it. Windows and message boxes work without any display;
# only the making of the prefix wants one and starts its own. Packages: wine, wine64, locales, xvfb, xauth.
set -euo pipefail

end=
if [ "$1" = --end ]; then
    end=yes
    shift
fi
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
export WINEPREFIX=$prefix WINEDEBUG=-all WINEARCH=win64 LOCPATH=$prefix/locale
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
wineserver=/usr/lib/wine/wineserver

if [ -n "$end" ]; then
    "$wineserver" -k || true
    exit
fi

# What Wine starts in the background must not hold on to the output of whoever waits for the end of a program.
quietly() {
    env LC_ALL=de_DE.UTF-8 "$@" </dev/null >/dev/null 2>&1 9>&-
}

exec 9>"$prefix/lock"
flock 9
if [ ! -e "$prefix/ready" ]; then
    mkdir -p "$LOCPATH"
    localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8"
    quietly xvfb-run -a wine wineboot --init
    quietly wine reg add 'HKCU\Control Panel\International' /v sShortDate /d dd.MM.yyyy /f
    quietly wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
    quietly "$wineserver" -w
    touch "$prefix/ready"
fi
if ! quietly "$wineserver" -k0; then
    quietly "$wineserver" -p30
    quietly wine wineboot
fi
