#!/usr/bin/env bash
# Reads every .cpp under src with a static analyser, as the given build compiles it; any complaint is a failure.
# usage: cmake/check_static.sh clang-tidy|clazy BUILD [FILE...]     BUILD has a compile_commands.json
set -euo pipefail

tool=${1:-}
build=$(realpath -- "${2:?usage: cmake/check_static.sh clang-tidy|clazy BUILD [FILE...]}")
shift 2
files=()
[ $# -eq 0 ] || readarray -d '' -t files < <(realpath -z -- "$@")
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Switched off at level 1: notifying properties are of use to QML alone; a reference to what a QJsonArray hands out is one
# to a temporary; midRef() does not exist in Qt 6; at(0) instead of left(1) fails on an empty text.
clazy_checks=level1,no-qproperty-without-notify,no-range-loop-reference,no-qstring-ref,no-qstring-left

if [ ! -f "$build/compile_commands.json" ]; then
    echo "check_static: $build has no compile_commands.json: configure it first" >&2
    exit 2
fi
# Each file is read with what it includes itself: the headers that gcc has precompiled are not for clang.
commands=$(mktemp -d)
trap 'rm -rf "$commands"' EXIT
sed -E 's/ -Winvalid-pch -include (\\"[^"]*\\"|[^ "]+)//' "$build/compile_commands.json" >"$commands/compile_commands.json"

# The compiler's own warnings are the build's business: gcc gives them, and its names for some are not clang's.
shared=(-p "$commands" --extra-arg=-Wno-everything "--extra-arg=-include$PWD/cmake/analysis/ConstexprStrlen.h")
case $tool in
    clang-tidy) command=(clang-tidy-14 "${shared[@]}" --quiet) ;;
    clazy) command=(clazy-standalone "${shared[@]}" --checks="$clazy_checks" --header-filter=/src/) ;;
    *)
        echo "check_static: '$tool' is not one of clang-tidy, clazy" >&2
        exit 2
        ;;
esac

[ ${#files[@]} -gt 0 ] || readarray -d '' -t files < <(find "$PWD/src" -name '*.cpp' -print0 | sort -z)
# Each file's complaints are shown in one piece, however many files are read at once.
analyse='output=$("$@" 2>&1) && ! grep -qE "(warning|error): " <<<"$output" || { printf "%s\n" "$output"; exit 1; }'
if ! printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c "$analyse" "$tool" "${command[@]}"; then
    echo "$tool has complaints" >&2
    exit 1
fi
echo "$tool read ${#files[@]} files without complaint"
