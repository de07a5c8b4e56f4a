# Completion of zvu's command lines for bash. It takes its words from zvu's own help.

# The commands, or with -- the options, in the help on standard input.
_zvu_words() {
    if [ "${1-}" = -- ]; then
        awk '/^  -/ { gsub(",", "\n", $1); print $1 }'
    else
        awk '/^Subcommands:/ { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }'
    fi
}

_zvu() {
    local current=${COMP_WORDS[COMP_CWORD]} word help words
    local command=("${COMP_WORDS[0]}")
    help=$("${command[@]}" --help 2>/dev/null)
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        grep -qxF -- "$word" <<<"$(_zvu_words <<<"$help")" || break
        command+=("$word")
        help=$("${command[@]}" --help 2>/dev/null)
    done
    if [[ $current == -* ]]; then
        words=$(_zvu_words -- <<<"$help")
    elif [ ${#command[@]} -gt "$((COMP_CWORD - 1))" ]; then   # behind an argument no command comes any more
        words=$(_zvu_words <<<"$help")
    fi
    mapfile -t COMPREPLY < <(compgen -W "${words-}" -- "$current")
}

# Where it has nothing to offer, a file's name may be wanted.
complete -o default -F _zvu zvu
