#!/bin/sh
# Uses what the packages put below PREFIX, as their users would: used.sh PREFIX GOLDEN
# GOLDEN is what the names of the FCIP endpoints of the built-in switch look like.
set -eu
prefix=$1
golden=$2
bin=$prefix/usr/bin
data=$prefix/usr/share
work=$(mktemp -d)
server=
unset SWITCHSIM_SCENARIO

finish() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true # after a failure, which may be that it ended
    rm -rf "$work"
}
trap finish EXIT

fail() {
    printf 'installed packages: %s\n' "$*" >&2
    exit 1
}

# The command line asks the simulated switch.
"$bin/cmpihost" ein ZANTO_FCIPProtocolEndPoint >"$work/names"
cmp "$work/names" "$golden" || fail 'the installed cmpihost answers differently'
[ "$("$bin/cmpihost" classes | wc -l)" -gt 30 ] || fail 'cmpihost has no classes'
"$bin/cmpihost" --check ei ZANTO_FCIPProtocolEndPoint >"$work/checked" || fail 'the answer is not as the schema has it'
"$bin/cmpihost" --scenario "$data/switchsim/scenarios/single-tunnel.toml" ein ZANTO_FCIPProfile >"$work/scenario"
grep -q '^1 object$' "$work/scenario" || fail "a scenario is not read: $(cat "$work/scenario")"
[ "$("$bin/cmpihost" ein --count ZANTO_FCPort)" -gt 10 ] || fail "the switch's own provider is not there"

# The server serves it to a WBEM client.
"$bin/cmpihost" serve --listen 127.0.0.1:0 >"$work/log" 2>&1 &
server=$!
tries=0
until grep -q '^listening on ' "$work/log"; do
    kill -0 "$server" 2>/dev/null || fail "the server did not start: $(cat "$work/log")"
    tries=$((tries + 1))
    [ $tries -lt 1200 ] || fail "the server does not listen: $(cat "$work/log")"
    sleep 0.1
done
address=$(sed -n 's|^listening on http://\([^/]*\)/.*|\1|p' "$work/log")
wbemcli ein "http://$address/root/cimv2:ZANTO_FCIPProtocolEndPoint" >"$work/served"
tunnels=$(sed -n '/ZANTO_FCIPProtocolEndPoint.Name=/p' "$work/served" | wc -l)
expected=$(sed -n 's/ objects$//p' "$golden")
[ "$tunnels" = "$expected" ] || fail "wbemcli was told of $tunnels tunnels, expected $expected"
kill "$server"
wait "$server" || fail "the server did not end well: $(cat "$work/log")"
server=

# The provider for CIM servers has no platform, and says so.
provider=$prefix/usr/lib/cmpi/libFCIPProvider.so
status=0
"$bin/cmpihost" --provider "$provider" ein ZANTO_FCIPProfile >"$work/out" 2>"$work/error" || status=$?
[ "$status" -eq 2 ] || fail "without a platform the provider ended cmpihost with $status"
[ "$(wc -l <"$work/error")" -eq 1 ] || fail "more than one line: $(cat "$work/error")"
grep -q 'cannot be loaded: .*undefined symbol: [a-z_]*' "$work/error" || fail "it said: $(cat "$work/error")"

# The switch's own programs.
"$bin/switchdump" | grep -q 'FCIP Profile 1' || fail 'switchdump shows no profile'
"$bin/switchsim" check "$data"/switchsim/scenarios/*.toml || fail 'a scenario is wrong'

# A provider is written, with CMake and without.
cp -R "$data/doc/cmpihost-dev/examples" "$work/example"
cmake -S "$work/example" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix/usr" >"$work/log" || fail "$(cat "$work/log")"
cmake --build "$work/build" >"$work/log" || fail "$(cat "$work/log")"
"$bin/cmpihost" --provider "$work/build/liblamp.so" --name Lamp --schema "$work/example/lamp.mof" --check \
    ei Example_Lamp >"$work/lamps" || fail "the example answers $(cat "$work/lamps")"
grep -q '^2 objects$' "$work/lamps" || fail "the example answers $(cat "$work/lamps")"
flags=$(PKG_CONFIG_PATH="$data/pkgconfig" pkg-config --cflags cmpihost)
# $flags is a list of words.
# shellcheck disable=SC2086
cc -shared -fPIC -fvisibility=hidden $flags "$work/example/lamp_provider.c" -o "$work/liblamp.so"
"$bin/cmpihost" --provider "$work/liblamp.so" --name Lamp cm 'Example_Lamp.Name="door"' Switch On=TRUE >"$work/switched"
grep -q 'ReturnValue *uint32 *0' "$work/switched" || fail "the example's method answers $(cat "$work/switched")"

# What is read by others.
for page in man1/cmpihost.1 man1/switchdump.1 man1/switchsim.1 man5/switchsim-scenario.5; do
    [ -s "$data/man/$page.gz" ] || fail "no manual page $page"
done
[ -s "$data/bash-completion/completions/cmpihost" ] || fail 'no completion'
