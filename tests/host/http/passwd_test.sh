#!/bin/sh
# cmpihost passwd as a program: what it reads, what it writes, what it says.
# usage: passwd_test.sh CMPIHOST FOLDER    an empty folder to work in is made there
set -u
program=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder"
users=$folder/users
failures=0

# expect WHAT EXPECTED ACTUAL
expect() {
    [ "$2" = "$3" ] && return
    printf '%s\n  expected: %s\n  actual:   %s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
}

# The names and what their hashes begin with.
content() {
    sed 's/\(:.y.j9T[$]\).*/\1/' "$users" | tr '\n' ' '
}

expect 'output' '' "$(echo secret | "$program" passwd "$users" anna 2>&1)"
# The dollar signs belong to the hashes.
# shellcheck disable=SC2016
expect 'a file that is made' 'anna:$y$j9T$ ' "$(content)"
expect 'its mode' 600 "$(stat -c %a "$users")"
before=$(cat "$users")
printf 'other' | "$program" passwd "$users" bert
# shellcheck disable=SC2016
expect 'a second user, from a line without an end' 'anna:$y$j9T$ bert:$y$j9T$ ' "$(content)"
expect 'the first one as before' "$before" "$(head -n 1 "$users")"
echo new | "$program" passwd "$users" anna
[ "$before" != "$(tail -n 1 "$users")" ]
expect 'a changed password is another hash' 0 $?
"$program" passwd --delete "$users" bert
# shellcheck disable=SC2016
expect 'a user less' 'anna:$y$j9T$ ' "$(content)"

# refused WHAT ERROR COMMAND...: status 2 and one line; the file stays as it is
refused() {
    what=$1
    wanted=$2
    shift 2
    kept=$(cat "$users")
    said=$("$program" passwd "$@" 2>&1 </dev/null)
    expect "status: $what" 2 $?
    expect "$what" "cmpihost: $wanted" "$said"
    expect "file: $what" "$kept" "$(cat "$users")"
}

refused 'no such user' "$users: there is no user bert" --delete "$users" bert
refused 'no password' 'expected a password of 1 to 512 bytes without control characters' "$users" anna
refused 'no name' 'USER: expected a name of 1 to 255 bytes without colon and control characters' "$users" a:b
refused 'no user' 'passwd: USER is required' "$users"
refused 'no folder' "$folder/none/users: cannot be read: No such file or directory" --delete "$folder/none/users" anna
expect 'no folder to write to' "cmpihost: $folder/none/users: cannot be written: No such file or directory" \
    "$(echo secret | "$program" passwd "$folder/none/users" anna 2>&1)"
expect 'no files are left beside' 'users' "$(ls "$folder")"

[ "$failures" -eq 0 ]
