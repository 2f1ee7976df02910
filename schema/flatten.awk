# Writes a MOF file with the files that it includes in their places, each once: awk -f flatten.awk fcip.mof
# Servers' tools copy the file that they are given, and no others.
function write_file(path,    folder, line, name, status) {
    if (path in written)
        return
    written[path] = 1
    folder = path
    sub(/[^\/]*$/, "", folder)
    while ((status = (getline line < path)) > 0) {
        if (line ~ /^#pragma include \(".*"\)$/) {
            name = line
            gsub(/^[^"]*"|"[^"]*$/, "", name)
            write_file(folder name)
        } else {
            print line
        }
    }
    if (status < 0) {
        print path ": cannot be read" > "/dev/stderr"
        failed = 1
        exit
    }
    close(path)
}

BEGIN {
    write_file(ARGV[1])
    exit
}

END {
    exit failed
}
