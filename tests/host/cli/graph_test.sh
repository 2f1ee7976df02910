#!/bin/sh
# The graph of a switch with ten thousand tunnels, as far as its limit goes: all of it is shown, tied, and told of.
# usage: graph_test.sh SCENARIO CMPIHOST...    the program, behind an emulator if it needs one
set -u
scenario=$1
shift
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
"$@" --scenario "$scenario" graph >"$folder/out" 2>"$folder/err" || { cat "$folder/err"; exit 1; }
failures=0

# expect WHAT TEXT FILE
expect() {
    grep -q "$2" "$folder/$3" && return
    printf '%s: no line %s in\n' "$1" "$2"
    tail -n 3 "$folder/$3"
    failures=$((failures + 1))
}

expect 'as many objects as the limit admits' '^10000 objects, [0-9]\{5,\} associations$' out
expect 'the limit is told' '^note: there are more than 10000 objects; --limit takes another number$' err
expect 'how ties were found is told' '^note: of so many objects, ties are those that ' err
[ "$failures" -eq 0 ]
