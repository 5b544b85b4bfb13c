# Completion of garnel for bash. The names of commands are completed, too, where the links of garnel come first in PATH
# when this file is read.

# What a command takes: words, and the kind of its operands.
_garnel_table() {
    case $1 in
@TABLE@
    esac
}

_garnel_reply() {
    local reply
    reply=$(compgen "$@") && mapfile -t COMPREPLY <<<"$reply"
}

_garnel() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} name=${1##*/} first=1 kind=none words=
    COMPREPLY=()
    if [[ $name == *garnel* ]]; then
        if ((COMP_CWORD == 1)); then
            _garnel_reply -W "@NAMES@ help --list --version --install --uninstall" -- "$current"
            return
        fi
        name=${COMP_WORDS[1]} first=2
    fi
    _garnel_table "$name"
    # NAME=VALUE comes as three words.
    if [[ $before == = || $current == = ]]; then
        [[ $current == = ]] && current= || before=${COMP_WORDS[COMP_CWORD - 2]}
        local word values=
        for word in $words; do [[ $word != "$before"=?* ]] || values+=" ${word#*=}"; done
        if [[ $values ]]; then
            _garnel_reply -W "$values" -- "$current"
            return
        fi
        kind=files words=
    fi
    local word given=() operands=0
    if [[ $current == -* ]]; then
        _garnel_reply -W "$words" -- "$current"
        return
    fi
    for word in "${COMP_WORDS[@]:first:COMP_CWORD-first}"; do [[ $word == -* ]] || operands=1; done
    ((operands == 0)) || [[ $kind != commands ]] || kind=files
    for word in $words; do [[ $word == -* ]] || ((operands)) && [[ $word != *= ]] || given+=("$word"); done
    case $kind in
    files) compopt -o filenames 2>/dev/null; _garnel_reply -f -W "${given[*]}" -- "$current" ;;
    directories) compopt -o filenames 2>/dev/null; _garnel_reply -d -- "$current" ;;
    commands) _garnel_reply -c -- "$current" ;;
    users) _garnel_reply -u -- "$current" ;;
    *) _garnel_reply -W "${given[*]}" -- "$current" ;;
    esac
    [[ ${COMPREPLY[0]-} != *= ]] || compopt -o nospace 2>/dev/null
}

complete -F _garnel garnel

_garnel_links() {
    local name path
    for name in @NAMES@; do
        path=$(type -P -- "$name") || continue
        case $(type -t -- "$name") in
        file | alias) [[ ! $path -ef $1 ]] || complete -F _garnel -- "$name" ;;
        esac
    done
}
if type -P garnel >/dev/null; then _garnel_links "$(type -P garnel)"; fi
unset -f _garnel_links
