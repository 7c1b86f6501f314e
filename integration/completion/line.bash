# _orfc_split LINE: splits a command line. `words` are its words without quotes, except for the last one, which is
# `current`, and as it was typed `typed`; `quote` is the quote that is open at the end. Expands nothing.
_orfc_split() {
    local at character next
    words=() current='' typed='' quote=''
    for ((at = 0; at < ${#1}; ++at)); do
        character=${1:at:1}
        typed+=$character
        if [[ $character == "$quote" ]]; then
            quote=''
        elif [[ $quote == \' ]]; then
            current+=$character
        elif [[ $character == \\ ]]; then
            ((++at))
            next=${1:at:1}
            typed+=$next
            [[ $quote != \" || $next == [\"\\\$\`] ]] || current+=\\
            current+=$next
        elif [[ -n $quote ]]; then
            current+=$character
        elif [[ $character == [\'\"] ]]; then
            quote=$character
        elif [[ $character == [[:space:]] ]]; then
            [[ $typed == "$character" ]] || words+=("$current")
            current='' typed=''
        else
            current+=$character
        fi
    done
}

# _orfc_offer REPLACED CANDIDATE...: offers those candidates that begin with the current word of `_orfc_split`, in any
# letter case. Readline replaces only the end of what was typed, REPLACED, after a colon or an open quote.
_orfc_offer() {
    local whole=${current,,} words current typed=$typed quote candidate
    _orfc_split "${typed%"$1"}"
    for candidate in "${@:2}"; do
        [[ -n $candidate && $candidate == "$current"* && ${candidate,,} == "$whole"* ]] || continue
        candidate=${candidate:${#current}}
        # In quotes, what would have to be quoted is left out: readline has ideas of its own about a quote there.
        case $quote in
        '')
            [[ -z $candidate ]] || printf -v candidate %q "$candidate"
            candidate=${candidate//\\,/,} # where braces are quoted, commas needn't be
            ;;
        \') [[ $candidate != *[\'[:cntrl:]]* ]] || continue ;;
        \") [[ $candidate != *[\"\\\$\`![:cntrl:]]* ]] || continue ;;
        esac
        COMPREPLY+=("$candidate")
    done
}
