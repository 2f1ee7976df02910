#!/bin/sh
# Installs packages where nothing is installed, uses them there, removes them and looks for what is left:
#
#   installed.sh --check PACKAGE...   in an empty folder, with this system's libraries and tools
#   installed.sh --fresh PACKAGE...   in a Debian of its own, made by debootstrap from this system's package sources;
#                                     their dependencies are installed by apt
set -eu
here=$(cd "$(dirname "$0")" && pwd)
golden=$here/../golden/ein-ZANTO_FCIPProtocolEndPoint.txt
packages='cmpihost cmpihost-dev fcip-cim-provider switchsim'
[ "$(id -u)" -eq 0 ] || exec unshare --map-root-user "$0" "$@" # dpkg sets owners
how=$1
shift

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

in_a_folder() {
    mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
    : >"$root/var/lib/dpkg/status"
    before=$(all_files)
    dpkg --root="$root" --force-depends -i "$@" >"$root.log" 2>&1
    "$here/used.sh" "$root" "$golden"
    # $packages is a list of words.
    # shellcheck disable=SC2086
    dpkg --root="$root" --purge $packages >"$root.log" 2>&1
    expect_nothing_left "$before" "$(all_files)"
}

in_a_debian() {
    mirror=$(apt-get indextargets --format "\$(REPO_URI)" 'Created-By: Packages' | head -n 1)
    debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" 2>&1
    in_root="env DEBIAN_FRONTEND=noninteractive chroot $root"
    # $in_root and $packages are lists of words.
    # shellcheck disable=SC2086
    {
        $in_root apt-get install -y --no-install-recommends sblim-wbemcli cmake make gcc libc6-dev pkg-config \
            >"$root.log" 2>&1
        mkdir "$root/var/tmp/packages"
        cp "$@" "$here/used.sh" "$golden" "$root/var/tmp/packages"
        before=$($in_root find /usr /etc /lib /opt ! -type d | sort)
        $in_root sh -c 'apt-get install -y --no-install-recommends /var/tmp/packages/*.deb' >"$root.log" 2>&1
        $in_root /var/tmp/packages/used.sh '' "/var/tmp/packages/$(basename "$golden")"
        $in_root apt-get purge -y $packages >"$root.log" 2>&1
        $in_root apt-get autoremove --purge -y >"$root.log" 2>&1
        expect_nothing_left "$before" "$($in_root find /usr /etc /lib /opt ! -type d | sort)"
    }
}

case $how in
--check) in_a_folder "$@" ;;
--fresh) in_a_debian "$@" ;;
esac
echo 'installed, used and removed'
