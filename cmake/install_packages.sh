#!/usr/bin/env bash
# Installs the Debian packages of the named groups, as far as they are missing.
# usage: cmake/install_packages.sh GROUP...     a GROUP is the name of a list in cmake/packages/
set -euo pipefail

lists=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/packages

fail() {
    printf 'install_packages: %s\n' "$1" >&2
    exit 1
}

wanted=()
for group in "$@"; do
    [ -f "$lists/$group.txt" ] || fail "there is no list of packages named '$group' in cmake/packages"
    while read -r package _; do
        case $package in '' | '#'*) ;; *) wanted+=("$package") ;; esac
    done <"$lists/$group.txt"
done
[ ${#wanted[@]} -gt 0 ] || fail "name at least one group: build, run, test, analysis, fuzz"

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian system, so nothing is installed. The equivalents of these packages are needed: ${wanted[*]}" >&2
    exit 0
fi

declare -A installed=()
while read -r package status; do
    [ "$status" != installed ] || installed[$package]=yes
done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)

missing=()
for package in "${wanted[@]}"; do
    [ -n "${installed[$package]:-}" ] || missing+=("$package")
    installed[$package]=yes
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=(env)
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "these packages are missing, and without sudo only root can install them:
  apt-get install --no-install-recommends ${missing[*]}"
    as_root=(sudo env)
    [ -t 0 ] || as_root=(sudo -n env)
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT

apt() {
    "${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o Acquire::Retries=3 -o Dpkg::Use-Pty=0 \
        -o DPkg::Lock::Timeout=300 "$@" >>"$log" 2>&1 </dev/null
}

echo "Installing ${#missing[@]} missing packages: ${missing[*]}"
# A list that cannot be refreshed may still be good enough: only the installation decides.
apt update || echo "install_packages: the package lists could not be refreshed" >&2
if ! apt install --no-install-recommends "${missing[@]}"; then
    cat "$log" >&2
    fail "apt-get could not install the missing packages; its output stands above"
fi
