# Puts the text of the files that a file of CMake's includes in its place, so that clang-tidy takes it for the file's own:
# it looks less closely at what is included.
# usage: awk -f lint_paste.awk unity_0_cxx.cxx >pasted
/^#include "/ {
    file = $0
    gsub(/^#include "|"$/, "", file)
    print "#line 1 \"" file "\""
    while ((got = (getline line < file)) > 0)
        print line
    if (got < 0) {
        print "lint_paste: cannot read " file >"/dev/stderr"
        exit 1
    }
    close(file)
    next
}
{ print }
