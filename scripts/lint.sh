#!/usr/bin/env bash
# lint.sh [--touched | PATH...] [--fix] [--seconds N] [-j N]: checks the format of the sources (.clang-format), and runs
# clang-tidy (.clang-tidy) over those in src: each with the flags of its build, build/windows for src/platform/windows and
# build/linux for the others. A build folder that is not configured, or does not know a source, is configured; nothing is
# built.
#
#   PATH...      only these sources and headers, or those of these folders
#   --touched    only what a change touches: sources and headers that are uncommitted or untracked, or belong to commits that
#                the upstream branch does not have. Without an upstream branch, and where nothing differs from it, those
#                of the last commit (all, in a clone that has only one). What was only moved is not touched. A header is
#                checked through one source that includes it.
#   --fix        clang-format rewrites what has another format; nothing else is ever rewritten
#   --seconds N  gives clang-tidy N seconds, and names the sources that it has not come to; which they are depends on the commit
#   -j N         processes at a time, otherwise one for each processor
#
# All of src takes about a quarter of an hour of processor time. Exit code 0: nothing found; 1: findings; 77: nothing was
# looked at, because a tool is missing or the time was too short.
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
    echo "usage: scripts/lint.sh [--touched | PATH...] [--fix] [--seconds N] [-j N]" >&2
    exit 2
}
given=() touched='' fix='' seconds='' jobs=$(nproc)
while [ $# -gt 0 ]; do
    case $1 in
        --touched) touched=yes ;;
        --fix) fix=yes ;;
        --seconds) seconds=${2:-}; [[ $seconds =~ ^[0-9]+$ ]] || usage; shift ;;
        -j) jobs=${2:-}; [[ $jobs =~ ^[1-9][0-9]*$ ]] || usage; shift ;;
        -*) usage ;;
        *) given+=("$1") ;;
    esac
    shift
done

for tool in git clang-format clang-tidy cmake; do
    command -v $tool >/dev/null || { echo "lint: $tool is missing here (Debian package $tool); nothing was checked."; exit 77; }
done
# A checkout of another user is one all the same: it is only read.
git() { command git -c safe.directory='*' -c core.quotePath=false "$@"; }
git rev-parse --verify -q HEAD >/dev/null || { echo "lint: not a git checkout; nothing was checked."; exit 77; }

sources=('*.cpp' '*.h')
untracked() { git ls-files -z --others --exclude-standard -- "${sources[@]}"; }

# changed COMMIT [COMMIT]: what has content that the first one lacks, a name behind each zero byte.
changed() {
    git diff -z --name-status -M --diff-filter=AMR "$@" -- "${sources[@]}" |
        while IFS= read -r -d '' status && IFS= read -r -d '' name; do
            if [[ $status == R* ]]; then IFS= read -r -d '' name; fi
            if [ "$status" != R100 ]; then printf '%s\0' "$name"; fi
        done
}

# Where a list cannot be made, the script ends instead of finding nothing.
files=()
if [ ${#given[@]} -gt 0 ]; then
    mapfile -d '' files < <(git ls-files -z --cached --others --error-unmatch -- "${given[@]}")
    wait $!
elif [ -z "$touched" ]; then
    mapfile -d '' files < <(git ls-files -z -- "${sources[@]}" && untracked)
    wait $!
else
    if base=$(git merge-base HEAD '@{upstream}' 2>/dev/null); then
        mapfile -d '' files < <(changed "$base" && untracked)
        wait $!
    fi
    if [ ${#files[@]} -eq 0 ]; then
        # A clone of depth 1 has nothing that its commit could be compared with: everything is new in it.
        last=$(git rev-parse --verify -q 'HEAD^') || last=$(printf '' | git hash-object -t tree --stdin)
        mapfile -d '' files < <(changed "$last" && untracked)
        wait $!
    fi
fi
present=()
for file in "${files[@]}"; do
    if [[ -f $file && $file =~ \.(cpp|h)$ ]]; then present+=("$file"); fi
done
if [ ${#present[@]} -eq 0 ]; then
    echo "lint: no source was touched."
    exit
fi

failed=''
if [ -n "$fix" ]; then
    clang-format -i "${present[@]}"
else
    clang-format --dry-run -Werror "${present[@]}" || failed=yes
fi

# includer HEADER: a source that includes it: the one of its name, or one that is looked at anyway, or any; through another
# header where none does directly.
includer() {
    local header=$1 name found source
    for _ in 1 2 3; do
        name="#include \"${header#src/}\""
        found=$(grep -rlF --include='*.cpp' -- "$name" src | LC_ALL=C sort || true)
        for source in ${header%.h}.cpp "${!chosen[@]}" $found; do
            if grep -qxF "$source" <<<"$found"; then
                echo "$source"
                return
            fi
        done
        header=$(grep -rlF --include='*.h' -- "$name" src | LC_ALL=C sort | head -n 1 || true)
        [ -n "$header" ] || return 0
    done
}

# Sources for clang-tidy. Of headers those chosen count; where all sources are looked at, those that .clang-tidy names.
declare -A chosen=()
headers=()
for file in "${present[@]}"; do
    case $file in
        src/*.cpp) chosen[$file]=1 ;;
        src/*.h) headers+=("$file") ;;
    esac
done
filter=''
if [ -n "$touched" ] || [ ${#given[@]} -gt 0 ]; then
    filter='^$'
    for header in "${headers[@]}"; do
        source=$(includer "$header")
        if [ -n "$source" ]; then chosen[$source]=1; else echo "lint: no source includes $header"; fi
        filter+="|/${header//./\\.}\$"
    done
    filter=--header-filter=$filter
fi
list=()
if [ ${#chosen[@]} -gt 0 ]; then
    mapfile -t list < <(printf '%s\n' "${!chosen[@]}" | LC_ALL=C sort)
fi
if [ -n "$seconds" ] && [ ${#list[@]} -gt 0 ]; then
    mapfile -t list < <(printf '%s\n' "${list[@]}" | shuf --random-source=<(yes "$(git rev-parse HEAD)"))
fi

preset_of() { case $1 in src/platform/windows/*) echo windows ;; *) echo linux ;; esac; }
known() { grep -qsF "/$1\"" "build/$(preset_of "$1")/compile_commands.json"; }

compiler=x86_64-w64-mingw32-g++-posix
declare -A configured=()
checked=()
for file in "${list[@]}"; do
    preset=$(preset_of "$file")
    if [ $preset = windows ] && ! command -v $compiler >/dev/null; then
        echo "lint: $file was not checked, $compiler is missing here."
        continue
    fi
    if ! known "$file" && [ -z "${configured[$preset]:-}" ]; then
        configured[$preset]=yes
        output=$(cmake --preset $preset 2>&1) || echo "$output"
    fi
    if known "$file"; then
        checked+=("$file")
    else
        echo "lint: $file is not part of the build."
        failed=yes
    fi
done
if [ ${#checked[@]} -eq 0 ]; then
    [ -z "$failed" ]
    exit
fi

# Clang reads the Windows sources with the headers of the cross compiler, but for those that belong to a compiler itself;
# and it refuses one of that compiler's options.
if [[ " ${checked[*]}" == *" src/platform/windows/"* ]]; then
    flags=--target=x86_64-w64-mingw32
    while IFS= read -r folder; do
        case $folder in
            */gcc/*/include | */include-fixed) ;;
            *) flags+=" -isystem $folder" ;;
        esac
    done < <($compiler -E -x c++ -v /dev/null 2>&1 | sed -n '/^#include </,/^End/s/^ //p')
    mkdir -p build/windows/lint
    sed "s| -fno-keep-inline-dllexport||; s|$compiler |&$flags |" build/windows/compile_commands.json \
        >build/windows/lint/compile_commands.json
fi

# What clang-tidy says of a source, in one piece.
check='
left=${seconds:+$((until - $(date +%s)))}
case $1 in src/platform/windows/*) folder=build/windows/lint ;; *) folder=build/linux ;; esac
found= result=124
if [ "${left:-1}" -gt 0 ]; then
    found=$(timeout "${left:-0}" clang-tidy --quiet -p $folder ${filter:+"$filter"} "$1" 2>&1)
    result=$?
fi
if [ $result = 124 ]; then
    echo "lint: no time left for $1"
    exit
fi
grep -Ev "^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$" <<<"$found" | grep .
exit $result'
until=$(($(date +%s) + ${seconds:-0}))
export seconds until filter

echo "lint: clang-tidy on ${#checked[@]} sources of src"
# A finding in a header is printed once, however many sources include it.
result=0
printf '%s\0' "${checked[@]}" | xargs -0 -n 1 -P "$jobs" bash -c "$check" lint | awk -v sources=${#checked[@]} '
    /^[^ ].*:[0-9]+:[0-9]+: (error|warning): / { again = $0 in seen; seen[$0] }
    /^lint: no time left / { again = 0; left++ }
    !again { print; fflush() }
    END { if (left == sources) exit 77 }' || result=$?
if [ -n "$failed" ]; then exit 1; fi
if [ $result = 77 ]; then exit 77; fi
[ $result = 0 ]
