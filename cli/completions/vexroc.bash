# bash completion for vexroc. What there is to complete, the program's own help says.

# The lines "--level P", "--quiet ", "FILE TEXT" of a help, and its commands.
_vexroc_offer()
{
    "$@" --help 2>/dev/null |
        sed -nE 's/^  (-h,)?(--[a-z-]+|[A-Z]+) ?([^ ]*).*/\2 \3/p; s/^  ([a-z]+)  .*/\1/p'
}

# Sets value to what stands for the value of an option, or of the argument [A-Z]+; empty for a flag.
_vexroc_value()
{
    [[ $'\n'$offer =~ $'\n'$1\ ([^$'\n']*) ]] && value=${BASH_REMATCH[1]} || value=
}

_vexroc()
{
    local program=${1/#\~\//$HOME/} current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local command= offer value= words= before= i
    case $current in # --option=value is three words or one, as COMP_WORDBREAKS says
    =) current= ;;
    --*=*) previous=${current%%=*} before=$previous= current=${current#*=} ;;
    *) [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD-2]} ;;
    esac
    offer=$(_vexroc_offer "$program")
    for ((i = 1; i < COMP_CWORD; i++)); do
        [[ ${COMP_WORDS[i]} == -* ]] || { command=${COMP_WORDS[i]} && break; }
        _vexroc_value "${COMP_WORDS[i]}"
        [[ -n $value ]] && ((i++)) && [[ ${COMP_WORDS[i]} == = ]] && ((i++))
    done
    [[ -n $command ]] && offer=$(_vexroc_offer "$program" "$command")
    case $previous in
    -*) _vexroc_value "$previous" ;;
    "$command") _vexroc_value '[A-Z]+' ;;
    *) value= ;;
    esac
    case $value:$current in
    *"|"*:*) words=${value//|/ } ;;
    :-* | TEXT:-*) words=$(grep -o -e '^--[a-z-]*' <<<"$offer") ;;
    :* | FILE*:* | TEXT:*) [[ -z $command && -z $value ]] && words=$(grep -e '^[a-z]' <<<"$offer") ;;
    *) COMPREPLY=() && return ;;
    esac
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
    COMPREPLY=("${COMPREPLY[@]/#/$before}")
}
complete -F _vexroc vexroc
