#!/bin/sh
# What cmpihost does with the standard output of its own process, which no test inside one can see: answers go there and
# nothing else does, an answer that cannot be written ends it with status 3, and a closed pipe with its signal. And that
# it learns how a provider ended, whoever started it.
# usage: program_test.sh BAD_PROVIDER CMPIHOST...    the program, behind an emulator if it needs one
set -u
bad_provider=$1
shift
failures=0
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT

# expect WHAT EXPECTED ACTUAL
expect() {
    [ "$2" = "$3" ] && return
    printf '%s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
}

names='ein ZANTO_FCIPProfile'
unset SWITCHSIM_SCENARIO

# $names is a list of words. Standard error is what the captures take.
# shellcheck disable=SC2086
{
    expect 'the answer stands alone, without what the provider prints' 'InstanceID 1 2 3 4 200 5 objects' \
        "$("$@" $names | tr -s ' \n' ' ' | sed 's/ $//')"
    expect 'the trace goes where it is sent' 'Entering get_all_fcip_profile_references' \
        "$("$@" --trace - $names 2>&1 >/dev/null | head -n 1)"

    error=$("$@" $names 2>&1 >/dev/full)
    expect 'status with a full device' 3 $?
    expect 'error with a full device' 'cmpihost: output could not be written: No space left on device' "$error"

    error=$("$@" $names 2>&1 >&-)
    expect 'status without a standard output' 3 $?
    expect 'error without a standard output' 'cmpihost: there is no standard output: Bad file descriptor' "$error"

    error=$({
        {
            while [ ! -e "$folder/closed" ]; do sleep 0.1; done
            "$@" $names
            echo "status $?" >&2
        } | {
            exec <&-
            : >"$folder/closed"
        }
    } 2>&1)
    expect 'a broken pipe ends it quietly' 'status 141' "$error"
}

expect 'how a provider ended is told where SIGCHLD was ignored' \
    'cmpihost: the provider died of signal 6 (SIGABRT) in enumerateInstanceNames of root/cimv2:Bad_Abort' \
    "$(env --ignore-signal=CHLD "$@" --provider "$bad_provider" --name Bad ein Bad_Abort 2>&1 >/dev/null |
        grep '^cmpihost:')" # an emulator tells of the signal, too

[ "$failures" -eq 0 ]
