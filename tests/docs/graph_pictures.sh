#!/bin/sh
# docs/two-site-graph.txt and .svg show what cmpihost graph answers today: graph_pictures.sh DOCS CMPIHOST
set -eu
docs=$1
cmpihost=$2
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
unset SWITCHSIM_SCENARIO

"$cmpihost" graph >"$folder/text" 2>"$folder/notes"
diff "$docs/two-site-graph.txt" "$folder/text"

# The picture has the nodes and edges of its source by the same names, and each line of their labels.
"$cmpihost" graph --format dot 'ZANTO_FCIPProtocolEndPoint.Name="1_10.1.1.1_10.2.1.1"' >"$folder/dot" 2>"$folder/notes"
sed -n 's/^ *\(o[0-9]*\) \[label=.*/\1/p; s/^ *\(o[0-9]*\) -> \(o[0-9]*\) .*/\1\&#45;\&gt;\2/p' "$folder/dot" |
    sort >"$folder/asked"
sed -n 's|^<title>\(o[0-9].*\)</title>$|\1|p' "$docs/two-site-graph.svg" | sort >"$folder/shown"
[ "$(wc -l <"$folder/asked")" -gt 30 ]
diff "$folder/shown" "$folder/asked"
sed -n 's/.*label="\([^"]*\)".*/\1/p' "$folder/dot" | sed 's/\\n/\n/g' | sort >"$folder/asked"
sed -n 's|.*<text [^>]*>\(.*\)</text>.*|\1|p' "$docs/two-site-graph.svg" | sed 's/&#45;/-/g' | sort >"$folder/shown"
diff "$folder/shown" "$folder/asked"
