#!/bin/bash
# In the place of the programs of CIM servers: looks at what each of them is given. It acts by the name under which it
# is called; what is staged goes to ../stage, seen from the link.
set -eu
sources=$(cd "$(dirname "$(readlink -f "$0")")/../.." && pwd)
stage=$(dirname "$0")/../stage

fail() {
    echo "$(basename "$0"): $*"
    exit 1
}

need_mof() {
    [ -f "$1" ] || fail "there is no file $1"
    ! grep -q '#pragma include' "$1" || fail "$1 includes files"
}

case $(basename "$0") in
cimmof) need_mof "${!#}" ;;
cimprovider)
    [ "$*" = '-r -m FCIPProviderModule' ] || fail "$*"
    grep -q '"FCIPProviderModule"' "$sources/schema/registration/openpegasus.mof"
    ;;
sfcbstage) # -n NAMESPACE -r REGISTRATION MOF
    if [ $# -ne 5 ] || [ "$1$3" != -n-r ]; then fail "$*"; fi
    need_mof "$5"
    mkdir -p "$stage"
    cp "$4" "$5" "$stage"
    ;;
sfcbunstage) # -n NAMESPACE -r REGISTRATION MOF, by the names that they have where they were copied to
    if [ $# -ne 5 ] || [ "$1$3" != -n-r ]; then fail "$*"; fi
    rm "$stage/$4" "$stage/$5"
    ;;
sfcbrepos) [ "$*" = -f ] || fail "$*" ;;
*) fail 'not a program of a CIM server' ;;
esac
