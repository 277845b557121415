#!/usr/bin/env bash
# Configures and builds one preset of CMakePresets.json, quietly unless something is wrong.
# usage: cmake/build.sh PRESET [TARGET...]
set -euo pipefail

preset=${1:?usage: cmake/build.sh PRESET [TARGET...]}
shift
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
cache=build/$preset/CMakeCache.txt

# ccache refuses to compile where it cannot write, as in a read-only home.
if [ -z "${CCACHE_DIR:-}" ]; then
    folder=${XDG_CACHE_HOME:-${HOME:-/nonexistent}/.cache}/ccache
    if ! { mkdir -p "$folder" && [ -w "$folder" ]; } 2>/dev/null; then
        export CCACHE_DIR=$root/build/ccache
    fi
fi

configure=(cmake --preset "$preset" --log-level=WARNING)
# A build folder that was copied with its tree still points at the old place: begin anew.
if [ -f "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
    configure+=(--fresh)
fi

started=$SECONDS
echo "Configuring build/$preset"
"${configure[@]}" >/dev/null
echo "Building build/$preset"
build=(cmake --build --preset "$preset")
[ $# -eq 0 ] || build+=(--target "$@")
[ -t 1 ] || build+=(-- --quiet)
"${build[@]}"
echo "Built in $((SECONDS - started)) s"
