#!/bin/sh
# Puts load on the WBEM server and looks after its memory and descriptors:
#   bench/load.sh BUILD_FOLDER [REQUESTS]
# One large reply, REQUESTS mixed requests (100,000 if not given), and 200 connections at once, alone and beside slow
# and broken ones. Exits with another status than 0 if a request fails, or if the server does not end well.
set -eu
build=$1
requests=${2:-100000}
case $requests in
'' | *[!0-9]* | 0*) requests=0 ;;
esac
if [ "$requests" -lt 1000 ] || [ "$requests" -gt 10000000 ]; then
    echo "load.sh: expected a number of requests from 1000 to 10000000" >&2
    exit 2
fi
work=$(mktemp -d)
server=

finish() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM

# ------------------------------------------------------------------------------------------------ the server

# start TUNNELS: a server for a switch with so many tunnels; sets $server, $worker, $port
start() {
    printf '[switch]\nname = "bench"\n[generate]\ntunnels = %d\n' "$1" >"$work/scenario.toml"
    : >"$work/server"
    "$build/bin/cmpihost" serve --listen 127.0.0.1:0 --scenario "$work/scenario.toml" --quiet \
        >"$work/server" 2>"$work/log" &
    server=$!
    tries=0
    until grep -q '^listening on ' "$work/server"; do
        tries=$((tries + 1))
        [ $tries -lt 300 ] || { echo "load.sh: no server came up" >&2; exit 1; }
        sleep 0.1
    done
    port=$(sed -n 's|^listening on http://127.0.0.1:\([0-9]*\)/.*|\1|p' "$work/server")
    worker=$(cat "/proc/$server/task/$server/children")
    worker=${worker% }
}

# stop: ends the server, which has to end well and to have had one worker
stop() {
    [ "$(grep -c 'is ready' "$work/log")" -eq 1 ] || { cat "$work/log" >&2; exit 1; }
    kill "$server"
    ended=0
    wait "$server" || ended=$?
    server=
    [ "$ended" -eq 0 ] || { echo "load.sh: the server ended with status $ended" >&2; exit 1; }
}

# kilobytes PROCESS FIELD: a line of its status
kilobytes() {
    sed -n "s/^$2:[^0-9]*\([0-9]*\) kB/\1/p" "/proc/$1/status"
}

descriptors() {
    find "/proc/$1/fd" -mindepth 1 | wc -l
}

# ------------------------------------------------------------------------------------------------ requests

# request FILE OPERATION NAMESPACE PARAMETERS: a request as it is sent; its body alone in $work/body
request() {
    body="<?xml version=\"1.0\" encoding=\"utf-8\"?><CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1\" "
    body="${body}PROTOCOLVERSION=\"1.0\"><SIMPLEREQ><IMETHODCALL NAME=\"$2\"><LOCALNAMESPACEPATH>"
    body="$body$(printf '%s' "$3" | sed 's|\([^/]*\)/*|<NAMESPACE NAME="\1"/>|g')</LOCALNAMESPACEPATH>$4"
    body="$body</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>"
    printf '%s' "$body" >"$work/body"
    printf 'POST /cimom HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/xml; charset="utf-8"\r\n' >"$work/$1"
    printf 'Content-Length: %d\r\nCIMOperation: MethodCall\r\nCIMMethod: %s\r\n' "${#body}" "$2" >>"$work/$1"
    printf 'CIMObject: %s\r\n\r\n%s' "$3" "$body" >>"$work/$1"
}

class() {
    printf '<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="%s"/></IPARAMVALUE>' "$1"
}

# path PARAMETER TUNNEL: the path of a tunnel's endpoint, by its Name
path() {
    printf '<IPARAMVALUE NAME="%s"><INSTANCENAME CLASSNAME="ZANTO_FCIPProtocolEndPoint">' "$1"
    printf '<KEYBINDING NAME="Name"><KEYVALUE VALUETYPE="string">%s</KEYVALUE></KEYBINDING>' "$2"
    printf '</INSTANCENAME></IPARAMVALUE>'
}

# The requests that are mixed: gets, names, instances, associations, classes, a namespace, and some that are refused.
mix() {
    mkdir "$work/mixed"
    request mixed/get GetInstance root/cimv2 "$(path InstanceName 1)"
    request mixed/names EnumerateInstanceNames root/cimv2 "$(class ZANTO_FCIPProtocolEndPoint)"
    request mixed/instances EnumerateInstances root/cimv2 "$(class ZANTO_FCIPSettings)"
    request mixed/ends Associators root/cimv2 "$(path ObjectName 2)"
    request mixed/paths ReferenceNames root/cimv2 "$(path ObjectName 1)"
    request mixed/class GetClass root/cimv2 "$(class ZANTO_TCPSettings)"
    request mixed/managers EnumerateInstances interop "$(class CIM_ObjectManager)"
    request mixed/unknown EnumerateInstances root/cimv2 "$(class No_Such)"
    request mixed/missing GetInstance root/cimv2 "$(path InstanceName no-such-tunnel)"
    request mixed/foreign EnumerateInstances no/such "$(class ZANTO_FCIPSettings)"
}

# load REQUESTS CONNECTIONS SLOW FILE...: prints the median in microseconds; fails if a request does
load() {
    timeout 3600 "$build/bench/load_client" "$port" "$@" >"$work/load" || { cat "$work/load" >&2; exit 1; }
    read -r good bad median <"$work/load"
    [ "$bad" -eq 0 ] || { echo "load.sh: $bad of $((good + bad)) requests failed" >&2; exit 1; }
    echo "$median"
}

# ------------------------------------------------------------------------------------------------ what is measured

one_large_reply() {
    start 10000
    load 100 1 0 "$work/mixed/get" >/dev/null
    idle=$(($(kilobytes "$server" VmRSS) + $(kilobytes "$worker" VmRSS)))
    echo "idle:                front $(kilobytes "$server" VmRSS) kB, worker $(kilobytes "$worker" VmRSS) kB"
    request large EnumerateInstances root/cimv2 "$(class ZANTO_FCIPProtocolEndPoint)"
    curl -sS -o "$work/reply" --data-binary "@$work/body" -H 'CIMOperation: MethodCall' -H 'CIMObject: root/cimv2' \
        -H 'CIMMethod: EnumerateInstances' -H 'Content-Type: application/xml' "http://127.0.0.1:$port/cimom"
    peak=$(($(kilobytes "$server" VmHWM) + $(kilobytes "$worker" VmHWM)))
    size=$(($(wc -c <"$work/reply") / 1024))
    echo "10,000 endpoints:    front $(kilobytes "$server" VmHWM) kB, worker $(kilobytes "$worker" VmHWM) kB" \
        "at the most, for a reply of $size kB"
    sleep 1
    echo "afterwards:          front $(kilobytes "$server" VmRSS) kB, worker $(kilobytes "$worker" VmRSS) kB"
    awk -v idle=$idle -v peak=$peak -v size=$size \
        'BEGIN { printf "above idle:          %d kB, %.2f times the reply\n", peak - idle, (peak - idle) / size }'
    stop
}

many_requests() {
    start 2
    echo
    echo 'requests   front kB  descriptors  worker kB  descriptors'
    tenth=0
    while [ $tenth -le 10 ]; do
        printf '%8d  %9d  %11d  %9d  %11d\n' $((requests * tenth / 10)) "$(kilobytes "$server" VmRSS)" \
            "$(descriptors "$server")" "$(kilobytes "$worker" VmRSS)" "$(descriptors "$worker")"
        [ $tenth -eq 10 ] || load $((requests / 10)) 4 0 "$work"/mixed/* >/dev/null
        tenth=$((tenth + 1))
    done
    stop
}

many_connections() {
    start 100
    load 20000 200 0 "$work/mixed/names" "$work/mixed/get" >/dev/null
    echo
    echo '200 connections      median alone  beside 20 slow or broken ones  change'
    turn=0
    while [ $turn -lt 3 ]; do
        alone=$(load 20000 200 0 "$work/mixed/names" "$work/mixed/get")
        beside=$(load 20000 200 20 "$work/mixed/names" "$work/mixed/get")
        echo "$alone $beside"
        turn=$((turn + 1))
    done >"$work/medians"
    while read -r alone beside; do
        awk -v alone="$alone" -v beside="$beside" 'BEGIN {
            printf "%30.1f ms  %26.1f ms  %+5.1f %%\n", alone / 1000, beside / 1000, 100 * (beside - alone) / alone }'
    done <"$work/medians"
    awk -v alone="$(cut -d ' ' -f 1 "$work/medians" | sort -n | sed -n 2p)" \
        -v beside="$(cut -d ' ' -f 2 "$work/medians" | sort -n | sed -n 2p)" \
        'BEGIN { printf "median of these: %+.1f %%\n", 100 * (beside - alone) / alone }'
    stop
}

mix
one_large_reply
many_requests
many_connections
