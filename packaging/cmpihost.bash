# Completion of cmpihost's verbs, options and classes: it is asked itself. Names of files where it knows nothing.
_cmpihost() {
    local line=${COMP_LINE:0:COMP_POINT} current kept
    local -a words

    # Whole words, as they were typed: bash's own are also cut at : and =, which stand in classes and options.
    read -r -a words <<<"$line"
    [[ $line == *[[:space:]] ]] && words+=("")
    mapfile -t COMPREPLY < <("${words[0]}" complete "${words[@]:1}" 2>/dev/null)

    # bash puts an answer in the place of what stands behind the last : or =.
    current=${words[-1]}
    kept=${current%"${current##*["${COMP_WORDBREAKS//[^:=]/}"]}"}
    [[ $COMP_WORDBREAKS == *[:=]* ]] || kept=
    COMPREPLY=("${COMPREPLY[@]#"$kept"}")
}
complete -o default -F _cmpihost cmpihost
