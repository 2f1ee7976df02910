#!/bin/sh
# Holds count_cases.awk against reports of every kind: what must not pass unnoticed.
# usage: count_cases_test.sh FOLDER-OF-COUNT_CASES FOLDER-TO-WRITE-IN
set -eu
script=$1/count_cases.awk
reports=$2
mkdir -p "$reports"
rm -f "$reports"/*.xml

report() { # PROGRAM CASES FAILURES DISABLED [LINE]
    {
        echo '<?xml version="1.0" encoding="UTF-8"?>'
        echo "<testsuites tests=\"$2\" failures=\"$3\" disabled=\"$4\" errors=\"0\" time=\"0.1\" name=\"AllTests\">"
        echo "${5:-}"
        echo '</testsuites>'
    } >"$reports/$1.xml"
}

printf '%s\n' good bad off skipping empty crashed leaking absent >"$reports/programs"
report good 7 0 0
report bad 5 2 0
report off 3 0 1
report skipping 4 0 0 '      <skipped message="no" />'
report empty 0 0 0
report leaking 6 0 0
{
    echo '<testsuite name="(empty)"'
    for name in good bad off skipping empty crashed leaking by_itself broken; do
        case $name in
        bad | crashed | leaking | broken) status=fail ;;
        *) status=run ;;
        esac
        printf '\t<testcase name="%s" classname="%s" time="0.1" status="%s">\n' "$name" "$name" "$status"
        printf '\t\t<system-out>&lt;testcase name="quoted" status="run"&gt;</system-out>\n'
    done
} >"$reports/ctest.junit"

awk -v reports="$reports" -f "$script" "$reports/programs" "$reports/ctest.junit" >"$reports/got"
cat >"$reports/wanted" <<'END'
    bad: 2 of 5 cases failed or did not run
    off: 1 of 3 cases failed or did not run
    skipping: 1 of 4 cases failed or did not run
    empty: ran no case
    crashed: left no report: it crashed, hung or could not start
    leaking: all cases passed, but it ended with an error (a leak, a race, a time limit)
    broken: failed
    absent: did not run
22 9
END
# passed: 7 + 3 + 2 + 3 + 6 + 1; failed: 2 + 1 + 1 and the five programs above
diff -u "$reports/wanted" "$reports/got"
