# Makes a manual page of a document: headings, paragraphs, lists, commands and tables, as our documents have them.
# awk -f from_markdown.awk -v name=NAME -v section=5 -v about=TEXT -v date=DATE -v source=PROJECT -v version=VERSION FILE

# Text with its marks, as roff.
function marked(text,    before, code, rest) {
    gsub(/\\/, "\\e", text)
    text = without_links(text)
    before = ""
    while (match(text, /`[^`]*`/)) {
        code = substr(text, RSTART + 1, RLENGTH - 2)
        gsub(/-/, "\\-", code)
        rest = substr(text, RSTART + RLENGTH)
        before = before emphasized(substr(text, 1, RSTART - 1)) "\\fB" code "\\fP"
        text = rest
    }
    return before emphasized(text)
}

# *text* in italics.
function emphasized(text,    before) {
    before = ""
    while (match(text, /\*[^*]+\*/)) {
        before = before substr(text, 1, RSTART - 1) "\\fI" substr(text, RSTART + 1, RLENGTH - 2) "\\fP"
        text = substr(text, RSTART + RLENGTH)
    }
    return before text
}

# [text](address) is its text.
function without_links(text,    before, link) {
    before = ""
    while (match(text, /\[[^]]*\]\([^)]*\)/)) {
        link = substr(text, RSTART + 1, RLENGTH - 1)
        sub(/\]\(.*/, "", link)
        before = before substr(text, 1, RSTART - 1) link
        text = substr(text, RSTART + RLENGTH)
    }
    return before text
}

function put(text) {
    if (text ~ /^[.']/)
        text = "\\&" text
    print text
}

# A line of an example, as it stands.
function put_literally(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    put(text)
}

function begin_example() {
    if (!example)
        print (first ? "" : ".PP\n") ".in +4n\n.nf"
    example = 1
    first = 0
}

function end_example() {
    if (example)
        print ".fi\n.in"
    example = 0
}

# One entry of a table: its first cell, and below it the others with their heads.
function put_row(cells, from, to,    i, text) {
    print ".TP"
    put(marked(cells[from]))
    text = ""
    for (i = from + 1; i <= to; ++i)
        if (cells[i] != "")
            text = text (text == "" ? "" : "; ") (i < to || cells[i] ~ /^[0-9]/ ? heads[i] " " : "") cells[i]
    put(text == "" ? "\\&" : marked(text))
}

function table_line(line,    count, cells, i, half) {
    sub(/^\| */, "", line)
    sub(/ *\|$/, "", line)
    count = split(line, cells, / *\| */)
    if (!in_table) {
        for (i = 1; i <= count; ++i)
            heads[i] = cells[i]
        in_table = 1
        return
    }
    if (line ~ /^-+ *\|/)
        return
    half = count / 2
    if (count == 4 && heads[1] == heads[3]) {
        put_row(cells, 1, half)
        put_row(cells, half + 1, count)
    } else {
        put_row(cells, 1, count)
    }
}

BEGIN {
    printf ".TH %s %s %s \"%s %s\" \"%s\"\n", toupper(name), section, date, source, version, source
    printf ".SH NAME\n%s \\- %s\n.SH DESCRIPTION\n", name, about
    first = 1
}

# Ends the paragraph or the entry of a list whose lines were collected.
function end_text() {
    if (text != "") {
        if (in_list)
            print ".IP \\(bu 2"
        else if (!first)
            print ".PP"
        put(marked(text))
        first = 0
    }
    text = ""
    in_list = 0
}

/^# / { next }
/^```/ {
    end_text()
    fenced = !fenced
    if (fenced) begin_example(); else end_example()
    next
}
fenced { put_literally($0); next }
/^    / && !in_list { end_text(); begin_example(); put_literally(substr($0, 5)); next }
/^$/ { end_text(); in_table = 0; next }
{ end_example() }
/^\|/ { table_line($0); next }
/^<!--/ { next }
/^##* / {
    sub(/^##* /, "")
    gsub(/`/, "")
    print ".SH " toupper($0)
    first = 1
    next
}
/^- / {
    end_text()
    in_list = 1
    text = substr($0, 3)
    next
}
{
    sub(/^ +/, "")
    text = text (text == "" ? "" : " ") $0
}
END { end_text() }
