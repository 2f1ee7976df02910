#!/bin/bash
# What bash offers on a command line of cmpihost, by the function that it would call.
# usage: completion_test.bash COMPLETION CMPIHOST...    the program, behind an emulator if it needs one
set -u
completion=$1
shift
failures=0
program=("$@")

cmpihost() {
    "${program[@]}" "$@"
}

# shellcheck source=packaging/cmpihost.bash
. "$completion"

# expect LINE OFFER...: what is offered when the cursor stands at the end of the line
expect() {
    COMP_LINE=$1
    COMP_POINT=${#COMP_LINE}
    shift
    COMPREPLY=()
    _cmpihost
    [ "${COMPREPLY[*]}" = "$*" ] && return
    printf '%s\n  expected: %s\n  offered:  %s\n' "$COMP_LINE" "$*" "${COMPREPLY[*]}"
    failures=$((failures + 1))
}

usual_breaks=$COMP_WORDBREAKS
for breaks in "$usual_breaks" $' \t\n"\'><;|&('; do
    COMP_WORDBREAKS=$breaks
    expect 'cmpihost gr' graph
    expect 'cmpihost ein --no' --no-fork
    expect 'cmpihost -o json ei ZANTO_FCIPProf' ZANTO_FCIPProfile
    expect 'cmpihost ei --color ' auto always never
    expect 'cmpihost gi --provider '
done

COMP_WORDBREAKS=$usual_breaks # which has : and =
expect 'cmpihost ei root/cimv2:ZANTO_FCIPProf' ZANTO_FCIPProfile
expect 'cmpihost ain --ac=ZANTO_FCIPP' ZANTO_FCIPPEBasedOn
expect 'cmpihost ain --ac=' "$("${program[@]}" complete ain --ac '' | tr '\n' ' ' | sed 's/ $//')"
COMP_WORDBREAKS=${usual_breaks//[:=]/}
expect 'cmpihost ei root/cimv2:ZANTO_FCIPProf' root/cimv2:ZANTO_FCIPProfile
expect 'cmpihost ain --ac=ZANTO_FCIPP' --ac=ZANTO_FCIPPEBasedOn

COMP_LINE='cmpihost ei --schema x'
COMP_POINT=13 # the cursor stands behind "ei -"
COMPREPLY=()
_cmpihost
case " ${COMPREPLY[*]} " in
*' --schema '*) ;;
*)
    echo "in the middle of a line: ${COMPREPLY[*]}"
    failures=$((failures + 1))
    ;;
esac

[ "$failures" -eq 0 ]
