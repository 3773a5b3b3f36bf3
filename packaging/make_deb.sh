#!/usr/bin/env bash
# Makes the Debian packages of what is built already: packaging/make_deb.sh BUILD HANDBOOK OUT
#
#   BUILD     a build folder of CMake (build/release)
#   HANDBOOK  the folder with the finished handbook (docs/handbuch/build.py)
#   OUT       where the .deb files go
#
# Dates in them are those of SOURCE_DATE_EPOCH, without it of the last commit: the same inputs give the same bytes.
# Needs debhelper.
set -euo pipefail
[ $# -eq 3 ] || { sed -n '2s/^# //p' "$0" >&2; exit 2; }
project=$(cd "$(dirname "$0")/.." && pwd)
mkdir -p "$3"
build=$(realpath "$1") handbook=$(realpath "$2") out=$(realpath "$3")
cd "$project"
. packaging/facts.sh
export LC_ALL=C.UTF-8
umask 022

tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
cp -r "$project/packaging/debian" "$tree/debian"
cp "$project/CHANGELOG.md" "$handbook"/KRVWinPr-Handbuch.{html,pdf} "$tree/"
cat >"$tree/debian/changelog" <<END
krvwinpr ($version-1+$(. /etc/os-release; echo "$ID$VERSION_ID")) stable; urgency=medium

  * Version $version; /usr/share/doc/krvwinpr/changelog.gz says what is new.

 -- $(sed -n 's/^Maintainer: //p' "$tree/debian/control")  $(date -uR -d "@$SOURCE_DATE_EPOCH")
END

cd "$tree"
BUILD=$build OUT=$out debian/rules binary >"$tree/log" 2>&1 || { cat "$tree/log" >&2; exit 1; }
