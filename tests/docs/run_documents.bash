#!/bin/bash
# Runs the commands of the documents, block by block, in a folder that looks like this repository after a build, and
# compares what they print with what is shown.
#
#   run_documents.bash SOURCE BUILD DOCUMENT...
#
# A block is what is indented by four spaces. Lines after `$ ` are commands with the output that follows them; there a
# line `...`, and `...` at the end of a line, stand for anything, and empty lines are not compared. A block without `$ `
# is commands alone. One that is not run says why in a comment before it: <!-- not run: REASON -->.
#
# Put in their places: for /usr an empty folder into which `cmake --install` installs, for localhost:5988 a server of
# our own, for the programs of CIM servers ones that look for the files that they are given.
set -u
source=$1
build=$2
shift 2
work=$(mktemp -d)
server=
failures=0
ran=0
unset SWITCHSIM_SCENARIO SWITCHSIM_CONTROL

finish() {
    [ -z "$server" ] || kill "$server"
    rm -rf "$work"
}
trap finish EXIT

fault() {
    printf '%s: %s\n' "$document" "$*"
    failures=$((failures + 1))
}

# ------------------------------------------------------------------------------------------------ places and programs

prepare() {
    mkdir -p "$work/tree" "$work/blocks" "$work/bin" "$work/usr/bin"
    ln -s "$source"/* "$work/tree"
    rm -f "$work"/tree/build*
    ln -s "$build" "$work/tree/build"
    real_cmake=$(command -v cmake)
    stand_in cmake
    for program in cimmof cimprovider sfcbstage sfcbunstage sfcbrepos; do
        stand_in "$program"
    done
    export PATH="$work/bin:$build/bin:$PATH"
    "$build/bin/cmpihost" serve --listen 127.0.0.1:0 >"$work/log" 2>&1 &
    server=$!
    for _ in {1..1200}; do
        grep -q '^listening on ' "$work/log" && break
        sleep 0.1
    done
    address=$(sed -n 's|^listening on http://\([^/]*\)/.*|\1|p' "$work/log")
    [ -n "$address" ] || { cat "$work/log"; exit 1; }
}

# Programs that are not run as they are: the functions below.
stand_in() {
    printf '#!/bin/bash\n. "%s"\nstand_in_%s "$@"\n' "$work/stand_ins" "$1" >"$work/bin/$1"
    chmod +x "$work/bin/$1"
    {
        declare -p source build work real_cmake
        declare -f stand_in_cmake stand_in_cimmof stand_in_cimprovider stand_in_sfcbstage stand_in_sfcbunstage \
            stand_in_sfcbrepos need_file
    } >"$work/stand_ins"
}

need_file() {
    [ -f "$1" ] || { echo "there is no file $1"; exit 1; }
}

# Nothing is built: presets and targets are looked for. Installs what is built.
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

stand_in_cimmof() {
    need_file "${!#}"
    ! grep -q '#pragma include' "${!#}" || { echo "${!#} includes files"; exit 1; }
}

stand_in_cimprovider() {
    [ "$*" = '-r -m FCIPProviderModule' ] && grep -q '"FCIPProviderModule"' "$source/schema/registration/openpegasus.mof"
}

# sfcbstage -n NAMESPACE -r REGISTRATION MOF
stand_in_sfcbstage() {
    if [ $# -ne 5 ] || [ "$1$3" != -n-r ]; then
        echo "sfcbstage $*"
        exit 1
    fi
    need_file "$4"
    stand_in_cimmof "$5"
    mkdir -p "$work/stage"
    cp "$4" "$5" "$work/stage"
}

# sfcbunstage -n NAMESPACE -r REGISTRATION MOF: by the names that they have where they were copied to
stand_in_sfcbunstage() {
    need_file "$work/stage/$4"
    need_file "$work/stage/$5"
}

stand_in_sfcbrepos() {
    [ "$*" = -f ]
}

# ------------------------------------------------------------------------------------------------ blocks

# Writes each block of $document into a file of its own; those that are not run end in .skipped and have the reason.
split() {
    rm -f "$work"/blocks/*
    awk -v folder="$work/blocks" '
        /^<!-- not run: .+ -->$/ { reason = $0; inside = 0; next }
        /^```/ { fenced = !fenced }
        /^    / && !fenced && (empty || inside) {
            if (!inside)
                file = sprintf("%s/%03d%s", folder, ++count, reason == "" ? "" : ".skipped")
            inside = 1
            print substr($0, 5) > file
            empty = 0
            next
        }
        /^$/ { empty = 1; if (inside) held = 1; next }
        { inside = 0; empty = 0; reason = "" }
    ' "$document"
}

# What is not as it stands, in the places of commands and of what they print.
in_our_places() {
    sed -e "s|/usr/|$work/usr/|g; s|--prefix /usr\$|--prefix $work/usr|" -e "s/\(localhost\|127\.0\.0\.1\):5988/$address/g"
}

# matches EXPECTED ACTUAL: files
matches() {
    local -a expected actual
    local at=0 any=0 line found
    mapfile -t expected <"$1"
    mapfile -t actual < <(grep -v '^$' "$2")
    for line in "${expected[@]}"; do
        if [ "$line" = ... ]; then
            any=1
            continue
        fi
        found=0
        while [ $at -lt ${#actual[@]} ] && [ $found = 0 ]; do
            if [ "${actual[at]}" = "$line" ] || { [ "${line: -3}" = ... ] && [[ ${actual[at]} == "${line%...}"* ]]; }; then
                found=1
            elif [ $any = 0 ]; then
                break
            fi
            at=$((at + 1))
        done
        [ $found = 1 ] || { printf 'expected: %s\nthere is: %s\n' "$line" "${actual[at]-nothing}"; return 1; }
        any=0
    done
    [ $any = 1 ] || [ $at = ${#actual[@]} ] || { echo "further: ${actual[at]}"; return 1; }
}

# run_command COMMAND EXPECTED: what it prints is compared if EXPECTED names a file
run_command() {
    ran=$((ran + 1))
    if ! (cd "$work/tree" && bash -e -c "$1") >"$work/printed" 2>&1 </dev/null; then
        fault "$1 failed: $(cat "$work/printed")"
    elif [ -n "$2" ] && ! found=$(matches "$2" "$work/printed"); then
        fault "$1 prints something else
$found"
    fi
}

# Each command of a block with output, which has to follow it.
run_shown() {
    local line command=
    : >"$work/expected"
    while IFS= read -r line || [ -n "$command" ]; do
        if [ -z "$line" ] || [ "${line:0:2}" = '$ ' ]; then
            [ -z "$command" ] || run_command "$command" "$([ ! -s "$work/expected" ] || echo "$work/expected")"
            command=${line:2}
            : >"$work/expected"
        else
            printf '%s\n' "$line" >>"$work/expected"
        fi
        line=
    done
}

run_block() {
    in_our_places <"$1" >"$work/block"
    if grep -q '^\$ ' "$work/block"; then
        run_shown <"$work/block"
    else
        run_command "$(cat "$work/block")" ''
    fi
}

prepare
for document; do
    split
    for block in "$work"/blocks/*; do
        [ "${block%.skipped}" != "$block" ] || run_block "$block"
    done
done
echo "$ran commands run, $failures wrong"
[ "$failures" -eq 0 ] && [ "$ran" -gt 0 ]
