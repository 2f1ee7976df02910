#!/bin/bash
# Runs the commands of the documents, block by block (see blocks.bash), where nothing but Debian 12 without a compiler is
# installed; then installs the packages that were made there, uses them, and takes them away.
#
#   bare_system.bash [DOCUMENT...]
#
# It takes root, debootstrap, and a Debian mirror: the one that this system uses, if any. The tree is that of the last
# commit. Each document begins on a system of its own, but for the example's, which goes on where docs/cmpihost.md ended
# and has to follow it; packages that one makes are there for the next.
#
# Put in their places: for localhost:5988 a server of the cmpihost that is there, for the programs of CIM servers
# ones that look at what they are given, for a switch's libraries ones that do nothing. apt-get is told yes. Compilers
# are called by ccache, since several documents build the same.
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
tree=/srv/fcip # in the bare system

fail() {
    printf 'bare system: %s\n' "$*" >&2
    exit 1
}

# ------------------------------------------------------------------------------------------------ outside

# Everything is done in mount and process namespaces of its own, which end with whatever was mounted or started in them.
outside() {
    [ "$(id -u)" -eq 0 ] || fail 'needs root, for debootstrap and chroot'
    folder=$(mktemp -d "${TMPDIR:-/tmp}/bare-system.XXXXXX")
    inside=
    trap end_inside EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    unshare --mount --pid --fork --kill-child "$0" --inside "$folder" "$@" &
    inside=$!
    status=0
    wait "$inside" || status=$?
    inside=
    exit "$status"
}

# The first process of a namespace takes the others along. Neither a second Ctrl-C nor the end of who reads this is to
# leave half of it.
end_inside() {
    trap '' HUP INT PIPE TERM
    if [ -n "$inside" ]; then
        echo "bare system: removing $folder" >&2 || true # nobody may read it
        first=$(tr -d ' ' <"/proc/$inside/task/$inside/children") || first=
        kill -KILL "$inside" ${first:+"$first"} || true # they may just have ended
        wait "$inside" 2>/dev/null || true # that is how it ends
        for _ in {1..300}; do
            [ -d "/proc/${first:-none}" ] || break
            sleep 0.1
        done
    fi
    rm -rf --one-file-system "$folder"
}

# ------------------------------------------------------------------------------------------------ systems

# The Debian 12 archives of this machine, as lines of a sources.list; or Debian's own.
sources() {
    local own=http://deb.debian.org/debian found
    # apt-get is to see the dollars.
    # shellcheck disable=SC2016
    found=$(apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' |
        sed -n -E '/ bookworm(-updates|-security)? main$/p' | sort -u)
    if grep -q ' bookworm main$' <<<"$found"; then
        echo "$found"
    else
        printf 'deb %s %s main\n' "$own" bookworm "$own" bookworm-updates "$own-security" bookworm-security
    fi
}

# What all systems of this run begin with.
make_base() {
    sources >"$folder/sources.list"
    debootstrap --variant=minbase bookworm "$base" "$(awk '$3 == "bookworm" { print $2; exit }' "$folder/sources.list")"
    cp "$folder/sources.list" "$base/etc/apt/sources.list"
    echo 'APT::Get::Assume-Yes "true";' >"$base/etc/apt/apt.conf.d/answers"
    in_root "$base" / 'apt-get update && apt-get install --no-install-recommends ccache'
    mkdir -p "$base$tree"
    git -C "$source" archive HEAD | tar -x -C "$base$tree"
    for program in cimmof cimprovider sfcbstage sfcbunstage sfcbrepos; do
        ln -s "$tree/tests/docs/cim_server.bash" "$base/usr/local/bin/$program"
    done
}

# Becomes a command in a system. be_in_root ROOT FOLDER COMMAND
be_in_root() {
    # The inner shell expands them.
    # shellcheck disable=SC2016
    exec env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive ${http_proxy:+http_proxy="$http_proxy"} \
        CCACHE_DIR=/var/cache/ccache CCACHE_BASEDIR=/srv CCACHE_NOHASHDIR=1 \
        CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache \
        nice chroot "$1" /bin/bash -c 'cd "$1" && exec /bin/bash -e -c "$2"' - "$2" "$3"
}

# in_root ROOT FOLDER COMMAND
in_root() {
    (be_in_root "$@")
}

# Not on the left of ||, where a command that fails would not end it.
make_base_or_fail() {
    local made
    set +e
    (set -eo pipefail; make_base) >"$folder/base.log" 2>&1
    made=$?
    set -e
    [ "$made" -eq 0 ] || fail "$(cat "$folder/base.log")"
}

begin_afresh() {
    end_system
    mkdir -p "$folder/upper" "$folder/work"
    # Volatile: dpkg has not to wait for the disk.
    mount -t overlay overlay -o "lowerdir=$base,upperdir=$folder/upper,workdir=$folder/work,volatile" "$root"
    mount -t proc proc "$root/proc"
    mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
    mount -t tmpfs tmpfs "$root/dev/shm"
    mkdir -p "$folder/ccache" "$root/var/cache/ccache"
    mount --bind "$folder/ccache" "$root/var/cache/ccache"
    [ ! -d "$folder/packages" ] || cp -R "$folder/packages" "$root$tree/build-package"
}

end_system() {
    if [ -n "$server" ]; then
        kill "$server" 2>/dev/null || true # if it has ended, its status tells
        wait "$server" || fail "the server ended with $?: $(cat "$folder/server.log")"
        server=
    fi
    ! mountpoint -q "$root" || umount -R "$root"
    rm -rf --one-file-system "$folder/upper" "$folder/work"
}

start_server() {
    : >"$folder/server.log"
    be_in_root "$root" "$tree" "PATH=\$PATH:$tree/build/bin; exec cmpihost serve --listen 127.0.0.1:0" \
        >"$folder/server.log" 2>&1 &
    server=$!
    for _ in {1..1200}; do
        ! grep -q '^listening on ' "$folder/server.log" || break
        kill -0 "$server" 2>/dev/null || break
        sleep 0.1
    done
    address=$(sed -n 's|^listening on http://\([^/]*\)/.*|\1|p' "$folder/server.log")
    [ -n "$address" ] || fail "the server does not listen: $(cat "$folder/server.log")"
}

# Libraries that have all functions of a switch, which do nothing, for the processor that the system's compiler is for.
make_switch_libraries() {
    mkdir -p "$root/sdk/lib"
    awk -f "$source/tests/support/platform_stub.awk" "$source/platform/services.h" >"$root/sdk/stub.c"
    # The inner shell expands it.
    # shellcheck disable=SC2016
    in_root "$root" /sdk 'compiler=$(command -v powerpc-linux-gnu-gcc || command -v gcc)
        $compiler -shared -fPIC stub.c -o lib/libfcip.so
        echo | $compiler -shared -fPIC -x c - -o lib/libpm.so'
}

# ------------------------------------------------------------------------------------------------ blocks

in_our_places() {
    sed "s/\(localhost\|127\.0\.0\.1\):5988/$address/g"
}

run_in_place() {
    in_root "$root" "$place" "$1"
}

ended() {
    printf 'passed %5d s  %s\n' $((SECONDS - began)) "${1//$'\n'/$'\n'                }"
    began=$SECONDS
}

# What a block needs that a reader has.
prepare_block() {
    ! grep -q '/sdk/lib/' "$1" || [ -d "$root/sdk" ] || make_switch_libraries
    ! grep -q '\(localhost\|127\.0\.0\.1\):5988' "$1" || [ -n "$server" ] || start_server
}

# A reader who comes to a command that fails does not get any further. That of the example is a reader of
# docs/cmpihost.md, in the copy that is made there.
run_document() {
    local before=$failures block
    printf '==> %s\n' "$1"
    place=$tree/lamp
    if [ "$1" != examples/README.md ]; then
        place=$tree
        begin_afresh
    fi
    split "$source/$1"
    for block in "$blocks"/[0-9]*; do
        [[ $block != *.never* ]] || continue
        [[ $block != *.fresh* ]] || begin_afresh
        prepare_block "$block"
        began=$SECONDS
        run_block "$block"
        [ "$failures" -eq "$before" ] || break
        keep_packages
    done
}

keep_packages() {
    [ ! -d "$folder/packages" ] || return 0
    if compgen -G "$root$tree/build-package/*.deb" >/dev/null; then
        mkdir "$folder/packages"
        cp "$root$tree"/build-package/*.deb "$folder/packages"
    fi
}

# ------------------------------------------------------------------------------------------------ packages

all_files() {
    find "$root" -xdev \( -path "$root/var" -o -path "$root/tmp" -o -path "$root$tree" -o -path "$root/root" \) -prune -o \
        -print | sort
}

# step COMMAND: in the system
step() {
    place=$tree
    began=$SECONDS
    run_command "$1" ''
}

# What the packages depend on is all that they need, and nothing stays behind. Then what they recommend, and the tools of
# people who use them.
use_packages() {
    document=packages # for what fault says
    printf '==> %s\n' "$document"
    begin_afresh
    all_files >"$folder/before"
    step 'apt-get install --no-install-recommends ./build-package/*.deb'
    step 'cmpihost ein ZANTO_FCIPProtocolEndPoint | cmp - tests/golden/ein-ZANTO_FCIPProtocolEndPoint.txt'
    step 'switchdump | grep "FCIP Profile 1"'
    step 'apt-get purge --autoremove cmpihost cmpihost-dev switchsim fcip-cim-provider'
    all_files >"$folder/after"
    diff "$folder/before" "$folder/after" || fault 'files came or went with the packages'
    step 'apt-get install ./build-package/*.deb sblim-wbemcli gcc cmake make pkg-config'
    step 'tests/packaging/used.sh "" tests/golden/ein-ZANTO_FCIPProtocolEndPoint.txt'
    step 'apt-get purge cmpihost cmpihost-dev switchsim fcip-cim-provider'
}

inside() {
    folder=$1
    shift
    base=$folder/base
    root=$folder/root
    server=
    address=
    export TMPDIR=$folder
    # shellcheck source=tests/docs/blocks.bash
    . "$source/tests/docs/blocks.bash"
    mkdir "$base" "$root"
    make_base_or_fail
    printf 'the bare system was made in %d s\n' "$SECONDS"
    for document; do
        run_document "$document"
    done
    [ ! -d "$folder/packages" ] || use_packages
    end_system
    printf '%d commands run on bare systems in %d s, %d wrong\n' "$ran" "$SECONDS" "$failures"
    [ "$failures" -eq 0 ] && [ "$ran" -gt 0 ]
}

if [ "${1:-}" = --inside ]; then
    shift
    inside "$@"
else
    [ $# -gt 0 ] || set -- README.md docs/porting.md docs/deploying.md docs/cmpihost.md examples/README.md
    outside "$@"
fi
