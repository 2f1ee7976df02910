#!/bin/sh
# Metrics as Prometheus sees them: promtool reads what /metrics gives, the documented configuration and rules, and
# Prometheus scrapes three simulated switches.
# usage: monitoring.sh CMPIHOST FOLDER    an empty folder to work in is made there
set -eu
program=$1
folder=$2
here=$(cd "$(dirname "$0")" && pwd)
documented=$here/../../docs/monitoring
rm -rf "$folder"
mkdir -p "$folder"
unset SWITCHSIM_SCENARIO
processes=

finish() {
    for process in $processes; do
        kill "$process" 2>/dev/null || true
    done
    wait
}
trap finish EXIT
trap 'exit 1' INT TERM

fail() {
    printf 'monitoring.sh: %s\n' "$*" >&2
    exit 1
}

# start NAME OPTION...: a server, whose address goes to $address
start() {
    name=$1
    shift
    "$program" serve --listen 127.0.0.1:0 --quiet "$@" >"$folder/$name.out" 2>"$folder/$name.err" &
    processes="$processes $!"
    tries=0
    until grep -q '^listening on ' "$folder/$name.out"; do
        tries=$((tries + 1))
        [ "$tries" -lt 600 ] || fail "$name does not listen: $(cat "$folder/$name.err")"
        sleep 0.1
    done
    address=$(sed -n 's|^listening on http://\([^/]*\)/.*|\1|p' "$folder/$name.out" | head -n 1)
}

# expect QUERY VALUE: waits until Prometheus answers so
expect() {
    tries=0
    while :; do
        answer=$(promtool query instant "http://$prometheus" "$1" 2>&1 | sed 's/ @\[.*//; s/.*=> //')
        [ "$answer" != "$2" ] || return 0
        tries=$((tries + 1))
        [ "$tries" -lt 300 ] || fail "$1: expected $2, got $answer"
        sleep 0.2
    done
}

start two-site --host Switch-1.example
two_site=$address
# status NAME: how a scrape under this name ends
status() {
    curl -sS -o /dev/null -w '%{http_code}' -H "Host: $1" "http://$two_site/metrics"
}
for each in "200 switch-1.example" "200 switch-1.example:${two_site##*:}" "421 switch-2.example" "200 $two_site"; do
    got=$(status "${each#* }")
    [ "$got" = "${each%% *}" ] || fail "Host: ${each#* }: expected ${each%% *}, got $got"
done
printf '[switch]\nname = "many"\n[generate]\ntunnels = 100\n' >"$folder/many.toml"
start many --scenario "$folder/many.toml"
many=$address
printf '[switch]\nname = "sw\\"\\\\odd\\"{}"\n[generate]\ntunnels = 3\n' >"$folder/odd.toml"
start odd --scenario "$folder/odd.toml"
odd=$address
start hostile --scenario "$here/hostile.toml"
hostile=$address

for each in "$two_site" "$many" "$odd" "$hostile"; do
    curl -sS "http://$each/metrics" >"$folder/metrics"
    promtool check metrics <"$folder/metrics" >"$folder/said" 2>&1 || fail "$each: $(cat "$folder/said")"
    [ ! -s "$folder/said" ] || fail "$each: $(cat "$folder/said")"
done

cp "$documented/prometheus.yml" "$documented/alerts.yml" "$here/alerts_test.yml" "$folder/"
echo secret >"$folder/password"
promtool check config "$folder/prometheus.yml" >"$folder/said" 2>&1 || fail "$(cat "$folder/said")"
grep -q '4 rules found' "$folder/said" || fail "not four rules: $(cat "$folder/said")"
promtool test rules "$folder/alerts_test.yml" >"$folder/said" 2>&1 || fail "$(cat "$folder/said")"

# The documented configuration, with these servers as targets.
sed -e "s|\"switch-1.*|\"$two_site\", \"$many\", \"$odd\"]|" -e 's/^    scheme: https/    scheme: http/' \
    -e '/^    basic_auth/,$d' -e 's/: 30s/: 1s/' -e 's/: 20s/: 1s/' "$folder/prometheus.yml" >"$folder/run.yml"
prometheus=127.0.0.1:$(awk 'BEGIN { srand(); print 20000 + int(rand() * 10000) }')
prometheus --config.file="$folder/run.yml" --storage.tsdb.path="$folder/data" --web.listen-address="$prometheus" \
    >"$folder/prometheus.out" 2>&1 &
processes="$processes $!"

expect 'sum(up)' 3
expect "count(zanto_fcip_protocol_end_point_committed_rate_bytes_per_second{instance=\"$two_site\"})" 10
expect "count(zanto_fcip_protocol_end_point_committed_rate_bytes_per_second{instance=\"$many\"})" 100
expect "count(zanto_fcip_protocol_end_point_committed_rate_bytes_per_second{instance=\"$odd\"})" 3
expect 'min(cmpihost_scrape_class_success)' 1
expect 'count(cmpihost_scrape_class_success)' 9
expect 'max(cmpihost_scrape_class_doubled_objects)' 0
expect 'min(cmpihost_provider_up)' 1
expect 'count(count by (__name__) ({__name__=~"zanto_.*"}))' 40
expect 'count(zanto_ethernet_port_statistics_received_bytes_total > 0) > bool 0' 1
expect 'sum(cmpihost_requests_total{operation="metrics",status="ok"}) > bool 3' 1
echo 'monitoring: 3 switches, 4 rules, all as expected'
