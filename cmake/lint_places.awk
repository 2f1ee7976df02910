# Puts the places in the pasted files' own files into clang-tidy's findings.
# usage: awk -f lint_places.awk findings
function read_map(file,    line, at) {
    read[file] = 1
    while ((getline line < file) > 0) {
        ++at
        if (line ~ /^#line 1 "/) {
            gsub(/^#line 1 "|"$/, "", line)
            ++files[file]
            first[file, files[file]] = at
            name[file, files[file]] = line
        }
    }
    close(file)
}
match($0, /^[^:]*\/Unity\/[^:]*:[0-9]+:/) {
    split(substr($0, 1, RLENGTH), place, ":")
    file = place[1]
    if (!read[file])
        read_map(file)
    for (i = files[file]; i > 1 && first[file, i] >= place[2]; --i) {}
    $0 = name[file, i] ":" (place[2] - first[file, i]) substr($0, RLENGTH)
}
{ print }
