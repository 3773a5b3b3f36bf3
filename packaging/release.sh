#!/usr/bin/env bash
# Makes the files of a release: packages for Debian, installer and archives for Windows, handbook, source, debug files, a list of what is
# in them, and checksums. Installs what is missing.
#
#   packaging/release.sh [FOLDER]      the folder, build/ausgabe by default, must not be there or be empty
#
# Of one commit, the same bytes come out of any folder at any time on a machine with the same packages.
set -euo pipefail
cd "$(dirname "$0")/.."
project=$PWD
folder=$(realpath -m "${1:-build/ausgabe}")

[ -z "$(git status --porcelain)" ] || { echo "release.sh: there are changes that are not committed; a release is of a commit." >&2; exit 1; }
[ -z "$(ls -A "$folder" 2>/dev/null)" ] || { echo "release.sh: $folder is not empty; nothing was overwritten." >&2; exit 1; }
unset SOURCE_DATE_EPOCH  # a release has its commit's
. packaging/facts.sh
grep -q "^## $version\b" CHANGELOG.md || { echo "release.sh: CHANGELOG.md says nothing of version $version." >&2; exit 1; }
export LC_ALL=C.UTF-8 TZ=UTC
umask 022

. scripts/packages.sh
# shellcheck disable=SC2086
need_packages $build_packages $windows_packages $handbook_packages $packaging_packages

# A clone, so that what is built is the commit, without anything of an earlier build.
mkdir -p build
clone=$(mktemp -d "$project/build/clone-XXXXXX")
trap 'rm -rf "$clone"' EXIT
git clone -q . "$clone"
cd "$clone"

for preset in release windows-release windows32-release; do
    cmake --preset $preset >/dev/null
    cmake --build --preset $preset
done
docs/handbuch/build.py --program build/release --out build/handbuch

mkdir -p "$folder"
packaging/make_deb.sh build/release build/handbuch "$folder"
packaging/make_windows.sh build/windows-release build/windows32-release build/handbuch "$folder"
cp build/handbuch/KRVWinPr-Handbuch.html "$folder/KRVWinPr-$version-Handbuch.html"
cp build/handbuch/KRVWinPr-Handbuch.pdf "$folder/KRVWinPr-$version-Handbuch.pdf"
git archive --format=tar --prefix="krvwinpr-$version/" HEAD | gzip -9n >"$folder/krvwinpr-$version.tar.gz"
# What finds the lines of error reports (scripts/trace_lines.py), for who supports this release.
tar -c --sort=name --owner=0 --group=0 --numeric-owner --mode=go=rX --mtime="@$SOURCE_DATE_EPOCH" \
    --exclude='*.map' --transform="s,^build,krvwinpr-$version-debug," build/{release,windows-release,windows32-release}/debug |
    xz -T1 >"$folder/krvwinpr-$version-debug.tar.xz"

cd "$folder"
files=(*)
"$clone/packaging/contents.py" "$version" "$clone/build/windows-release" "$clone/build/windows32-release" "${files[@]}" >INHALT.txt
sha256sum -- "${files[@]}" INHALT.txt >SHA256SUMS
sha256sum --quiet -c SHA256SUMS
echo "The release of version $version is in $folder:"
ls -l "$folder"
