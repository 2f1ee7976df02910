#!/bin/sh
# Findings in texts of several files are told at the places in these files.
# usage: lint_places_test.sh FOLDER-OF-THE-SCRIPTS FOLDER-TO-WRITE-IN
set -eu
scripts=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder/Unity"
cd "$folder"

printf 'int one;\nint two;\n' >one.cpp
printf 'int three;\n' >three.cpp
printf '/* made */\n#include "one.cpp"\n\n#include "three.cpp"\n' >made.cxx
awk -f "$scripts/lint_paste.awk" made.cxx >Unity/all.cxx
cat >pasted <<'END'
/* made */
#line 1 "one.cpp"
int one;
int two;

#line 1 "three.cpp"
int three;
END
diff pasted Unity/all.cxx

printf '%s\n' './Unity/all.cxx:3:5: error: first line' 'int one;' './Unity/all.cxx:4:5: error: second line' \
    './Unity/all.cxx:7:1: note: other file' 'alone.cpp:7:1: error: stays' >findings
printf '%s\n' 'one.cpp:1:5: error: first line' 'int one;' 'one.cpp:2:5: error: second line' \
    'three.cpp:1:1: note: other file' 'alone.cpp:7:1: error: stays' >wanted
awk -f "$scripts/lint_places.awk" findings | diff wanted -

if echo '#include "absent.cpp"' | awk -f "$scripts/lint_paste.awk" >nothing 2>said; then
    echo 'a file that cannot be read goes unnoticed' >&2
    exit 1
fi
