#!/bin/bash
# completion.sh PROGRAM COMPLETIONS PAGES: completes in the shells themselves, as far as they are installed, and lints
# the manual pages, as far as they are made.
program=$1 completions=$2 pages=$3
export PATH=$(dirname "$program"):$PATH
failures=0
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" && touch "two words.csv" || exit 1

fail() { echo "FAILED: $*" && failures=$((failures + 1)); }
# expect COMPLETER, then from standard input lines "what is typed -> pattern of what it completes to"
expect() {
    command -v "$1" >/dev/null || { echo "$1 is not installed: its completion was not tried"; return; }
    local line reply
    while IFS= read -r line; do
        reply=$("complete_in_$1" "${line% -> *}" "${line#* -> }" </dev/null)
        [[ $reply =~ ${line#* -> } ]] || fail "$1: $line: $reply"
    done
}

source "$completions/vexroc.bash"
complete_in_bash() { # "|" ends the words that the shell makes of the line
    IFS='|' read -ra COMP_WORDS <<<"$1|"
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _vexroc vexroc
    echo "${COMPREPLY[*]}"
}
complete_in_fish() { fish --no-config -c "source '$completions/vexroc.fish'; complete -C '$1'"; }
complete_in_zsh() { # what a terminal shows when Tab follows the text
    timeout 20 zsh -f -c 'zmodload zsh/zpty; zpty shell zsh -f -i
        zpty -w shell "PS1=; autoload -Uz compinit && compinit -D -u && source $3/_vexroc && echo sour""ced"
        zpty -r shell said "*sourced*"
        zpty -w -n shell "$1"$'"'\t\n'"'; zpty -r shell said "*$2*"; print -r -- "$said"' zsh "$1" "$2" "$completions"
}

expect bash <<'LINES'
vexroc|au -> ^auc$
vexroc|auc|--bi -> ^--bi-negative$
vexroc|help|cur -> ^curve$
vexroc|auc|x|--state| -> ^$
vexroc|auc|two -> ^two words.csv$
vexroc|auc|x|--output|=|two -> ^two words.csv$
vexroc|--quiet|--config|x|--progress|=|never|au -> ^auc$
vexroc|auc|--format|=|j -> ^json$
vexroc|auc|x|--delimiter=s -> ^--delimiter=semicolon$
LINES
expect fish <<'LINES'
vexroc --quiet comp -> ^compare
vexroc analyze x --compare  -> independent
vexroc auc --sqlite two -> ^two words.csv$
LINES
expect zsh <<'LINES'
vexroc --config x --progress ne -> never
vexroc analyze --compare=ind -> --compare=independent
vexroc auc two -> words.csv
LINES
for page in "$pages"/*.1; do
    [ -f "$page" ] && command -v mandoc >/dev/null || { echo "no manual page, or no mandoc: not linted"; break; }
    said=$(mandoc -T lint -W warning "$page" 2>&1) || fail "$said"
done
[ "$failures" -eq 0 ]
