#!/bin/sh
# Measures the WBEM server against a bare server that sends the same bytes, with wrk on one keep-alive connection:
#   bench/serve.sh BUILD_FOLDER [SECONDS]
# For each request it prints the median time at the server, that of the bare server, and their ratio.
set -eu
build=$1
seconds=${2:-5}
here=$(dirname "$0")
work=$(mktemp -d)
server=
bare=

finish() {
    for process in $server $bare; do
        kill "$process" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap finish EXIT
trap 'exit 1' INT TERM

# Waits for "listening on URL" in a file, and prints the URL.
url_in() {
    tries=0
    while [ $tries -lt 100 ]; do
        sed -n 's/^listening on \(http[^ ]*\).*/\1/p' "$1" | head -n 1 >"$work/url"
        [ ! -s "$work/url" ] || { cat "$work/url"; return; }
        tries=$((tries + 1))
        sleep 0.1
    done
    echo "serve.sh: no server came up" >&2
    exit 1
}

# body OPERATION PARAMETER
body() {
    printf '<?xml version="1.0" encoding="utf-8"?><CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0">'
    printf '<SIMPLEREQ><IMETHODCALL NAME="%s"><LOCALNAMESPACEPATH><NAMESPACE NAME="root"></NAMESPACE>' "$1"
    printf '<NAMESPACE NAME="cimv2"></NAMESPACE></LOCALNAMESPACEPATH>%s</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>' "$2"
}

class_parameter='<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="ZANTO_FCIPProtocolEndPoint"></CLASSNAME></IPARAMVALUE>'

# ask URL OPERATION FILE: one request, its reply's body into FILE
ask() {
    curl -sS --data-binary "@$work/body" -H 'Content-Type: application/xml; charset="utf-8"' -H 'CIMOperation: MethodCall' \
        -H "CIMMethod: $2" -H 'CIMObject: root/cimv2' "$1" >"$3"
}

# median URL OPERATION: microseconds
median() {
    BODY=$work/body METHOD=$2 wrk -t1 -c1 -d"${seconds}s" --latency -s "$here/request.lua" "$1" >"$work/wrk"
    if grep -q 'Non-2xx\|Socket errors' "$work/wrk"; then
        cat "$work/wrk" >&2
        exit 1
    fi
    sed -n 's/^ *50% *//p' "$work/wrk" | awk '
        /ms$/ { print $1 * 1000; next }
        /us$/ { print $1 + 0; next }
        /s$/ { print $1 * 1000000 }'
}

# measure TUNNELS OPERATION PARAMETER
measure() {
    body "$2" "$3" >"$work/body"
    ask "$url" "$2" "$work/reply"
    if grep -q '<ERROR' "$work/reply"; then
        cat "$work/reply" >&2
        exit 1
    fi
    ours=$(median "$url" "$2")
    "$build/bench/bare_server" "$work/reply" >"$work/bare" &
    bare=$!
    theirs=$(median "$(url_in "$work/bare")" "$2")
    kill "$bare"
    bare=
    awk -v tunnels="$1" -v operation="$2" -v bytes="$(wc -c <"$work/reply")" -v ours="$ours" -v theirs="$theirs" \
        'BEGIN { printf "%7d  %-22s  %9d bytes  %9.0f us  %9.0f us  %5.2f\n", tunnels, operation, bytes, ours, theirs, ours / theirs }'
}

# The first tunnel's path as a parameter, out of the reply with the names.
first_name() {
    body EnumerateInstanceNames "$class_parameter" >"$work/body"
    ask "$url" EnumerateInstanceNames "$work/names"
    sed 's/<INSTANCENAME/\n&/g' "$work/names" | grep -m 1 '^<INSTANCENAME' | sed 's|</INSTANCENAME>.*|</INSTANCENAME>|'
}

echo 'tunnels  operation                    reply      cmpihost  bare server  ratio'
for tunnels in 1 100 1000 10000; do
    printf '[switch]\nname = "bench"\n[generate]\ntunnels = %d\n' "$tunnels" >"$work/scenario.toml"
    : >"$work/server"
    "$build/bin/cmpihost" serve --listen 127.0.0.1:0 --scenario "$work/scenario.toml" --quiet >"$work/server" &
    server=$!
    url=$(url_in "$work/server")
    measure "$tunnels" EnumerateInstances "$class_parameter"
    measure "$tunnels" EnumerateInstanceNames "$class_parameter"
    measure "$tunnels" GetInstance "<IPARAMVALUE NAME=\"InstanceName\">$(first_name)</IPARAMVALUE>"
    kill "$server"
    wait "$server" # which ends well, or the measurement is none
    server=
done
