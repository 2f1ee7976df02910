#!/bin/bash
# Runs the commands of the documents, block by block (see blocks.bash), in a folder that looks like this repository after
# a build. Nothing is built or downloaded here: bare_system.bash is for that.
#
#   run_documents.bash SOURCE BUILD DOCUMENT...
#
# Put in their places: for /usr an empty folder into which `cmake --install` installs, for localhost:5988 a server of
# our own, for the programs of CIM servers ones that look at what they are given.
set -u
source=$1
build=$2
shift 2
work=$(mktemp -d)
server=
unset SWITCHSIM_SCENARIO SWITCHSIM_CONTROL
# shellcheck source=tests/docs/blocks.bash
. "$source/tests/docs/blocks.bash"

finish() {
    [ -z "$server" ] || kill "$server"
    rm -rf "$work" "$blocks"
}
trap finish EXIT

prepare() {
    mkdir -p "$work/tree" "$work/bin" "$work/usr/bin"
    ln -s "$source"/* "$work/tree"
    rm -f "$work"/tree/build*
    ln -s "$build" "$work/tree/build"
    real_cmake=$(command -v cmake)
    {
        echo '#!/bin/bash'
        declare -p source build work real_cmake
        declare -f stand_in_cmake
        # To be expanded when it runs.
        # shellcheck disable=SC2016
        echo 'stand_in_cmake "$@"'
    } >"$work/bin/cmake"
    chmod +x "$work/bin/cmake"
    for program in cimmof cimprovider sfcbstage sfcbunstage sfcbrepos; do
        ln -s "$source/tests/docs/cim_server.bash" "$work/bin/$program"
    done
    export PATH="$work/bin:$build/bin:$PATH"
    : >"$work/log"
    "$build/bin/cmpihost" serve --listen 127.0.0.1:0 >"$work/log" 2>&1 &
    server=$!
    for _ in {1..1200}; do
        grep -q '^listening on ' "$work/log" && break
        sleep 0.1
    done
    address=$(sed -n 's|^listening on http://\([^/]*\)/.*|\1|p' "$work/log")
    [ -n "$address" ] || { cat "$work/log"; exit 1; }
}

# In the place of cmake. Nothing is built: presets and targets are looked for. Installs what is built.
stand_in_cmake() {
    case $1 in
    --preset)
        (cd "$source" && "$real_cmake" --list-presets=configure) | grep -q "\"$2\"" || { echo "no preset $2"; exit 1; }
        ;;
    --build)
        while [ $# -gt 0 ] && [ "$1" != --target ]; do shift; done
        [ $# -eq 0 ] || { shift && ninja -C "$build" -n "$@" >"$work/out"; } || { cat "$work/out"; exit 1; }
        ;;
    --install) "$real_cmake" "$@" >"$work/out" || { cat "$work/out"; exit 1; } ;;
    *) "$real_cmake" "$@" ;;
    esac
}

# What is not as it stands, in the places of commands and of what they print.
in_our_places() {
    sed -e "s|/usr/|$work/usr/|g; s|--prefix /usr\$|--prefix $work/usr|" -e "s/\(localhost\|127\.0\.0\.1\):5988/$address/g"
}

run_in_place() {
    (cd "$work/tree" && bash -e -c "$1")
}

ended() {
    :
}

prepare
for document; do
    split "$document"
    for block in "$blocks"/[0-9]*; do
        case $block in
        *.never* | *.bare*) ;;
        *) run_block "$block" ;;
        esac
    done
done
echo "$ran commands run, $failures wrong"
[ "$failures" -eq 0 ] && [ "$ran" -gt 0 ]
