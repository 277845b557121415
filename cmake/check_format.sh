#!/usr/bin/env bash
# Holds every C++ file of src, tests and benchmarks against .clang-format; with --fix formats them.
# usage: cmake/check_format.sh [--fix] [ROOT]
set -euo pipefail

fix=no
if [ "${1:-}" = --fix ]; then
    fix=yes
    shift
fi
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/..}"

# Another version lays out the same code differently.
formatter=
for candidate in clang-format-14 clang-format; do
    if "$candidate" --version 2>/dev/null | grep -q 'version 14\.'; then
        formatter=$candidate
        break
    fi
done
if [ -z "$formatter" ]; then
    echo "clang-format 14 is needed: cmake/install_packages.sh test" >&2
    exit 2
fi

files=()
for folder in src tests benchmarks; do
    [ -d "$folder" ] || continue
    while IFS= read -r -d '' file; do
        files+=("$file")
    done < <(find "$folder" \( -name '*.cpp' -o -name '*.h' \) -print0 | sort -z)
done
if [ ${#files[@]} -eq 0 ]; then
    echo "there are no C++ files under src, tests or benchmarks in $PWD" >&2
    exit 2
fi

if [ "$fix" = yes ]; then
    exec "$formatter" --style=file -i "${files[@]}"
fi
if complaints=$("$formatter" --style=file --dry-run -Werror "${files[@]}" 2>&1); then
    echo "${#files[@]} files are formatted as .clang-format says"
    exit 0
fi
# The first place of each file is enough to find the others.
awk -F: '/: (error|warning): / && !seen[$1]++ { print $1 ":" $2 ": is not formatted as .clang-format says"; found = 1 }
         END { exit !found }' <<<"$complaints" || printf '%s\n' "$complaints"
echo "To format everything: cmake/check_format.sh --fix" >&2
exit 1
