#!/bin/sh
# Pages in Debian's Chromium: starts servers and chromedriver, and has Node.js run pages.mjs.
# usage: pages.sh CMPIHOST FOLDER    an empty folder to work in is made there; screenshots stay in FOLDER
set -eu
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$2"
mkdir -p "$2"
folder=$(cd "$2" && pwd)
unset SWITCHSIM_SCENARIO
processes=

finish() {
    for process in $processes; do
        kill "$process" 2>/dev/null || true
    done
    wait
    rm -rf "$folder"/profile-*
}
trap finish EXIT
trap 'exit 1' INT TERM

fail() {
    printf 'pages.sh: %s\n' "$*" >&2
    exit 1
}

# await FILE TEXT: until a process has written the text
await() {
    tries=0
    until grep -qs "$2" "$1"; do
        tries=$((tries + 1))
        [ "$tries" -lt 600 ] || fail "$1: $(cat "$1")"
        sleep 0.1
    done
}

# start NAME OPTION...: a server, whose address goes to $address
start() {
    name=$1
    shift
    "$program" serve --listen 127.0.0.1:0 --quiet "$@" >"$folder/$name.out" 2>&1 &
    processes="$processes $!"
    await "$folder/$name.out" '^listening on '
    address=$(sed -n 's|^listening on \(http://[^/]*\)/.*|\1|p' "$folder/$name.out" | head -n 1)
}

scenarios=$here/../../scenarios
awk -f "$scenarios/traffic.awk" "$scenarios/two-site.toml" >"$folder/live.toml"
start live --scenario "$folder/live.toml"
LIVE=$address
start hostile --scenario "$here/hostile.toml"
HOSTILE=$address
start many --scenario "$scenarios/ten-thousand.toml"
MANY=$address
cat >"$folder/mapped.mof" <<'END'
class Test_Thing {
    [Key] string Name;
    [Key] uint32 Number;
    uint64 U64;
    sint64 S64;
    real64 Real;
    [ValueMap {"1", "255"}, Values {"Empty", "Full"}] uint8 U8;
    char16 Letter;
    [ValueMap {"7"}, Values {"Seven"}] uint16 List[];
};
END
start mapped --provider "$(dirname "$program")/../tests/providers/host_good_provider.so" --name Good \
    --schema "$folder/mapped.mof"
MAPPED=$address

cp "$here/package.json" "$here/package-lock.json" "$folder/"
(cd "$folder" && npm ci --no-audit --no-fund >npm.log 2>&1) || fail "$(cat "$folder/npm.log")"
AXE=$folder/node_modules/axe-core/axe.min.js

: >"$folder/driver.out"
chromedriver --port=0 >"$folder/driver.out" 2>&1 &
processes="$processes $!"
await "$folder/driver.out" 'successfully on port'
DRIVER=http://127.0.0.1:$(sed -n 's/.*successfully on port \([0-9]*\).*/\1/p' "$folder/driver.out")
SHOTS=$folder
CMPIHOST=$program
SWITCHSIM=$(dirname "$program")/switchsim
export LIVE HOSTILE MANY MAPPED AXE DRIVER SHOTS CMPIHOST SWITCHSIM
node --test "$here/pages.mjs"
