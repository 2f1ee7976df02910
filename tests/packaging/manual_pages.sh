#!/bin/sh
# The manual pages are clean, and tell of each verb, option, command and table of a scenario.
# usage: manual_pages.sh BUILD CMPIHOST
set -eu
pages=$1/man
cmpihost=$2
failures=0
backspace=$(printf '\b') # a letter is printed bold by being printed twice

# expect PAGE TEXT: in the page as it is read
expect() {
    mandoc -T ascii "$pages/$1" | sed "s/.$backspace//g" | tr -s ' \n' ' ' | grep -qF -- "$2" && return
    printf '%s lacks: %s\n' "$1" "$2"
    failures=$((failures + 1))
}

# expect_entry PAGE WORD: with a text of its own
expect_entry() {
    grep -q "^$2\\( .*\\)\\{0,1\\}$" "$pages/$1" && return
    printf '%s has no entry for %s\n' "$1" "$2"
    failures=$((failures + 1))
}

for page in cmpihost.1 switchdump.1 switchsim.1 switchsim-scenario.5; do
    mandoc -T lint -W warning "$pages/$page" || failures=$((failures + 1))
    gzip -t "$pages/$page.gz" || failures=$((failures + 1))
done

for verb in $("$cmpihost" complete ''); do
    expect_entry cmpihost.1 "$verb"
done
for option in $("$cmpihost" complete -); do
    expect cmpihost.1 "$option"
done
expect cmpihost.1 'NAME cmpihost - broker for CMPI providers'
expect switchdump.1 '--anonymous'
for command in check show set add remove fault delay clear step save; do
    expect_entry switchsim.1 "$command"
done
sed -n 's/^## //p' "$(dirname "$0")/../../docs/scenarios.md" | tr -d '`' | tr '[:lower:]' '[:upper:]' >"$1/man/headings"
while read -r heading; do
    expect switchsim-scenario.5 " $heading "
done <"$1/man/headings"

[ "$failures" -eq 0 ]
