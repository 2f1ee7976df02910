#!/bin/sh
# cmpihost serve as a program: what it says when it is ready, how it ends, what it refuses to start with.
# usage: serve_test.sh CMPIHOST FOLDER    an empty folder to work in is made there
set -u
program=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder"
failures=0
unset SWITCHSIM_SCENARIO

# expect WHAT EXPECTED ACTUAL
expect() {
    [ "$2" = "$3" ] && return
    printf '%s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
}

# Starts a server in the background and waits until it is ready: $server is its process, $url where it listens.
start() {
    rm -f "$folder/out" # what the last one said is not to be read
    "$program" serve --listen 127.0.0.1:0 --log "$folder/log" "$@" >"$folder/out" 2>"$folder/err" &
    server=$!
    tries=0
    while ! grep -q -s '/cimom$' "$folder/out" && [ "$tries" -lt 1200 ] && kill -0 "$server" 2>/dev/null; do
        sleep 0.1
        tries=$((tries + 1))
    done
    url=$(sed -n 's/^listening on //p' "$folder/out")
    expect "where it listens: $*" 'http://127.0.0.1:PORT/cimom' "$(echo "$url" | sed 's,:[0-9][0-9]*/,:PORT/,')"
}

# end SIGNAL: the server ends with status 0, and nobody is left of its processes
end() {
    workers=$(pgrep -P "$server")
    kill -s "$1" "$server"
    wait "$server"
    expect "status after SIG$1" 0 $?
    for worker in $workers; do
        kill -0 "$worker" 2>/dev/null && expect "process $worker after SIG$1" gone 'still there'
    done
    expect "error output after SIG$1" '' "$(cat "$folder/err")"
}

start
expect 'processes for the providers' 1 "$(pgrep -P "$server" | wc -l)"
port=$(echo "$url" | sed 's/.*:\([0-9]*\)\/.*/\1/')
said=$("$program" serve --listen "127.0.0.1:$port" 2>&1)
expect 'status where the port is taken' 2 $?
expect 'a port that is taken' "cmpihost: 127.0.0.1:$port: cannot be listened on: Address already in use" "$said"
mv "$folder/log" "$folder/log.1"
kill -s HUP "$server"
tries=0
while [ ! -e "$folder/log" ] && [ "$tries" -lt 1200 ]; do
    sleep 0.1
    tries=$((tries + 1))
done
expect 'the log after SIGHUP' yes "$([ -e "$folder/log" ] && echo yes)"
end TERM
start
end INT
start --in-process
expect 'processes without those of the providers' 0 "$(pgrep -P "$server" | wc -l)"
end TERM

# refused WHAT ERROR ARGUMENT...: status 2; the line stands on standard error
refused() {
    what=$1
    wanted=$2
    shift 2
    said=$("$program" serve --listen 127.0.0.1:0 "$@" 2>&1 >/dev/null </dev/null)
    expect "status: $what" 2 $?
    expect "$what" "$wanted" "$(echo "$said" | grep -F -x -e "$wanted")"
}

refused 'no users file' "cmpihost: $folder/none: cannot be read: No such file or directory" --users "$folder/none"
refused 'no certificate' "cmpihost: $folder/none: cannot be used for TLS: No such file or directory" \
    --tls "$folder/none" "$folder/none"
refused 'no log' "cmpihost: $folder/none/log: the log cannot be opened: No such file or directory" \
    --log "$folder/none/log"
refused 'no usage' "Try cmpihost serve --help." --frob

for mode in '' --in-process; do
    # $mode is a word, or none.
    # shellcheck disable=SC2086
    said=$("$program" serve --listen 127.0.0.1:0 --provider "$folder/none.so" $mode 2>&1 >/dev/null </dev/null)
    expect "status without provider $mode" 2 $?
    expect "a provider that is not there $mode" 1 "$(echo "$said" | grep -c "$folder/none.so")"
done

[ "$failures" -eq 0 ]
