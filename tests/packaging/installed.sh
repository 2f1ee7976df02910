#!/bin/sh
# Installs packages into an empty folder, uses them there with this system's libraries and tools, removes them and looks
# for what is left: installed.sh PACKAGE...
set -eu
here=$(cd "$(dirname "$0")" && pwd)
golden=$here/../golden/ein-ZANTO_FCIPProtocolEndPoint.txt
packages='cmpihost cmpihost-dev fcip-cim-provider switchsim'
[ "$(id -u)" -eq 0 ] || exec unshare --map-root-user "$0" "$@" # dpkg sets owners

root=$(mktemp -d)
finish() {
    status=$?
    [ "$status" -eq 0 ] || cat "$root.log" >&2
    rm -rf "$root" "$root.log"
}
trap finish EXIT

all_files() {
    find "$root" -path "$root/var" -prune -o ! -path "$root" -print | sort
}

# What is left of packages that were taken away.
expect_nothing_left() {
    [ "$1" = "$2" ] && return
    printf 'before the packages were installed and after they were removed:\n%s\n\n%s\n' "$1" "$2" >&2
    exit 1
}

mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
: >"$root/var/lib/dpkg/status"
before=$(all_files)
dpkg --root="$root" --force-depends -i "$@" >"$root.log" 2>&1
"$here/used.sh" "$root" "$golden"
# $packages is a list of words.
# shellcheck disable=SC2086
dpkg --root="$root" --purge $packages >"$root.log" 2>&1
expect_nothing_left "$before" "$(all_files)"
echo 'installed, used and removed'
