# Counts the test cases of a ctest run. Prints the findings and, as its last line, "PASSED FAILED".
# Every program in the list (the GoogleTest ones) must have left a report; any other test counts as one case.
# usage: awk -v reports=FOLDER -f count_cases.awk FILE-WITH-PROGRAMS CTEST-JUNIT-FILE      reads FOLDER/PROGRAM.xml

function attribute(text, name) {
    if (!match(text, " " name "=\"[^\"]*\""))
        return ""
    text = substr(text, RSTART, RLENGTH)
    sub(/^[^"]*"/, "", text)
    sub(/"$/, "", text)
    return text
}

function finding(name, text) {
    printf "    %s: %s\n", name, text
    failed++
}

function count_program(name, ended_well,    file, line, seen, cases, bad) {
    file = reports "/" name ".xml"
    while ((getline line < file) > 0) {
        if (line ~ /^<testsuites /) {
            seen = 1
            cases = attribute(line, "tests") + 0
            bad += attribute(line, "failures") + attribute(line, "errors") + attribute(line, "disabled")
        } else if (line ~ /^ *<skipped/) {
            bad++
        }
    }
    close(file)
    if (!seen) {
        finding(name, "left no report: it crashed, hung or could not start")
        return
    }
    passed += cases - bad
    failed += bad
    if (cases == 0)
        finding(name, "ran no case")
    else if (bad > 0)
        printf "    %s: %d of %d cases failed or did not run\n", name, bad, cases
    else if (!ended_well)
        finding(name, "all cases passed, but it ended with an error (a leak, a race, a time limit)")
}

FILENAME == ARGV[1] {
    is_program[$0] = 1
    next
}

/^[ \t]*<testcase / {
    name = attribute($0, "name")
    ended_well = attribute($0, "status") == "run"
    ran[name] = 1
    if (name in is_program)
        count_program(name, ended_well)
    else if (ended_well)
        passed++
    else
        finding(name, "failed")
}

END {
    for (name in is_program)
        if (!(name in ran))
            finding(name, "did not run")
    print passed + 0, failed + 0
}
