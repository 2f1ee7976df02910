# shellcheck shell=bash
# Reads the commands of the documents block by block, and compares what they print with what is shown. To be sourced.
#
# A block is what is indented by four spaces. Lines after `$ ` are commands with the output that follows them; there a
# line `...`, and `...` at the end of a line, stand for anything, and empty lines are not compared. A block without `$ `
# is commands alone. A comment before it tells where it is not run:
#
#   <!-- not run: REASON -->           nowhere
#   <!-- bare system only: REASON -->  on a bare system alone: it installs packages, builds, or changes the system
#   <!-- from here: REASON -->         on a bare system, this block and those after it begin on a fresh one
#
# The caller defines in_our_places, a filter for commands and what they print; run_in_place COMMAND, which runs one; and
# ended COMMAND, which is called when one has passed.

blocks=$(mktemp -d)
failures=0
ran=0

fault() {
    printf '%s: %s\n' "$document" "$*"
    failures=$((failures + 1))
}

# Writes each block of a document into a file of its own in $blocks. Those that are not run end in .never, those for a
# bare system in .bare, and those that begin on a fresh one have .fresh in their names.
# split DOCUMENT
split() {
    document=$1
    rm -f "$blocks"/*
    local comments='^[0-9]+:<!-- (not run|bare system only|from here): .+ -->$'
    grep -n '^<!--' "$1" | grep -vE "$comments" >"$blocks/unknown" && fault "no such comment: $(cat "$blocks/unknown")"
    awk -v folder="$blocks" '
        /^<!-- not run: .+ -->$/ { kind = kind ".never"; inside = 0; next }
        /^<!-- bare system only: .+ -->$/ { kind = kind ".bare"; inside = 0; next }
        /^<!-- from here: .+ -->$/ { kind = kind ".fresh"; inside = 0; next }
        /^```/ { fenced = !fenced }
        /^    / && !fenced && (empty || inside) {
            if (!inside)
                file = sprintf("%s/%03d%s", folder, ++count, kind)
            inside = 1
            print substr($0, 5) > file
            empty = 0
            next
        }
        /^$/ { empty = 1; next }
        { inside = 0; empty = 0; kind = "" }
    ' "$1"
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
    if ! run_in_place "$1" >"$blocks/printed" 2>&1 </dev/null; then
        fault "$1 failed: $(cat "$blocks/printed")"
    elif [ -n "$2" ] && ! found=$(matches "$2" "$blocks/printed"); then
        fault "$1 prints something else
$found"
    else
        ended "$1"
    fi
}

# Each command of a block with output, which has to follow it.
run_shown() {
    local line command=
    : >"$blocks/expected"
    while IFS= read -r line || [ -n "$command" ]; do
        if [ -z "$line" ] || [ "${line:0:2}" = '$ ' ]; then
            [ -z "$command" ] || run_command "$command" "$([ ! -s "$blocks/expected" ] || echo "$blocks/expected")"
            command=${line:2}
            : >"$blocks/expected"
        else
            printf '%s\n' "$line" >>"$blocks/expected"
        fi
        line=
    done
}

# run_block FILE
run_block() {
    in_our_places <"$1" >"$blocks/block"
    if grep -q '^\$ ' "$blocks/block"; then
        run_shown <"$blocks/block"
    else
        run_command "$(cat "$blocks/block")" ''
    fi
}
