#!/usr/bin/env bash
# make_windows.sh BUILD64 BUILD32 HANDBOOK OUT: makes the installer and the zip files for Windows in OUT, from two built
# folders of CMake and the folder with the finished handbook. The same input gives the same bytes: times of files are
# that of SOURCE_DATE_EPOCH, or of the last commit. KRV_SETUP_STUB=amd64-unicode makes an installer that runs without
# 32-bit Windows, for tests under Wine. Packages: nsis, zip.
set -euo pipefail
build64=$(realpath "$1") build32=$(realpath "$2") handbook=$(realpath "$3")
mkdir -p "$4"
out=$(realpath "$4")
cd "$(dirname "$0")/.."
. packaging/facts.sh
time=@$SOURCE_DATE_EPOCH

files=$(mktemp -d)
trap 'rm -rf "$files"' EXIT
python3 packaging/windows/make_picture.py src/platform/windows/program/krvwinpr.ico "$files/picture.bmp"
# What is linked into the programs wants its own terms to go with them.
{ cat LICENSE; printf '\n\n'; cat packaging/windows/third_party.txt; } | sed 's/$/\r/' >"$files/LIZENZ.txt"
cp "$handbook/KRVWinPr-Handbuch.html" "$handbook/KRVWinPr-Handbuch.pdf" "$files"
pack() { # pack BITS BUILD: the programs of one kind, and their zip file
    mkdir "$files/$1"
    cp "$2/KRVWinPr.exe" "$2/KRVWinPrBote.exe" "$files/LIZENZ.txt" "$files/$1"
    chmod 644 "$files/$1"/*
    touch -d "$time" "$files/$1"/*
    rm -f "$out/KRVWinPr-$version-$1.zip"
    (cd "$files/$1" && TZ=UTC zip -q -9 -X "$out/KRVWinPr-$version-$1.zip" KRVWinPr.exe KRVWinPrBote.exe LIZENZ.txt)
}
pack x64 "$build64"
pack x86 "$build32"
touch -d "$time" "$files"/*
size=$(du -ck --apparent-size "$files/x86" "$files"/KRVWinPr-Handbuch.* | tail -1 | cut -f1)
makensis -V2 -WX -INPUTCHARSET UTF8 -DSTUB="${KRV_SETUP_STUB:-x86-unicode}" -DVERSION="$version" -DFILES="$files" \
    -DSIZE="$size" -DICON="$PWD/src/platform/windows/program/krvwinpr.ico" -DPICTURE="$files/picture.bmp" \
    -DOUTPUT="$out/KRVWinPr-$version-Setup.exe" packaging/windows/setup.nsi
