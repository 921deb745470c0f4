#!/bin/bash
# completion.sh PROGRAM: completes in the shells themselves, as far as they are installed, and lints the manual page.
program=$1
failures=0
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1

# expect NAME PATTERN TEXT
expect() {
    [[ $3 =~ $2 ]] || { echo "FAILED: $1: $3"; failures=$((failures + 1)); }
}

eval "$("$program" completion bash)"
bash_completes() {
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _vexroc
    echo "${COMPREPLY[*]}"
}
expect "a command" "^auc$" "$(bash_completes vexroc au)"
expect "an option" "^--bi-negative$" "$(bash_completes vexroc auc --bi)"
expect "an option of all commands" "^--strict$" "$(bash_completes vexroc auc --stri)"
expect "a word" "^csv$" "$(bash_completes vexroc pr x --format c)"
expect "a shell" "^zsh$" "$(bash_completes vexroc completion z)"
expect "no word" "^$" "$(bash_completes vexroc auc x --state "")"
expect "a file" "^/dev/null$" "$(bash_completes vexroc auc /dev/nul)"
touch "two words.csv"
expect "a file with blanks" "^two words.csv$" "$(bash_completes vexroc auc two)"
expect "a command behind options" "^auc$" "$(bash_completes vexroc --quiet --config x --progress = json au)"
expect "a word behind =" "^json$" "$(bash_completes vexroc auc --format = j)"
expect "a delimiter" "^semicolon$" "$(bash_completes vexroc auc x --delimiter=s)"

if command -v fish >/dev/null; then
    "$program" completion fish >completion.fish
    fish_completes() { fish --no-config -c "source completion.fish; complete -C '$1'"; }
    expect "fish: a command" "^compare" "$(fish_completes 'vexroc comp')"
    expect "fish: a word" "independent" "$(fish_completes 'vexroc analyze x --compare ')"
else
    echo "fish is not installed: its completion was not tried"
fi
if command -v zsh >/dev/null; then
    zsh_completes() { # what a terminal shows when Tab follows the text
        timeout 20 zsh -f -c 'zmodload zsh/zpty; zpty shell zsh -f -i
            zpty -w shell "PS1=; PATH='"$(dirname "$program")"':\$PATH"
            zpty -w shell "autoload -Uz compinit && compinit -D -u && source <(vexroc completion zsh) && echo sour""ced"
            zpty -r shell said "*sourced*"
            zpty -w -n shell "$1"$'"'\t\n'"'; zpty -r shell said "*$2*"; print -r -- "$said"' zsh "$1" "$2"
    }
    expect "zsh: a command" "analyze" "$(zsh_completes 'vexroc --quiet an' analyze)"
    expect "zsh: a word behind =" "--compare=independent" "$(zsh_completes 'vexroc analyze --compare=ind' independent)"
else
    echo "zsh is not installed: its completion was not tried"
fi
if command -v mandoc >/dev/null; then
    expect "manual page" "^$" "$("$program" man-page | mandoc -T lint -W error 2>&1)"
else
    echo "mandoc is not installed: the manual page was not linted"
fi
[ "$failures" -eq 0 ]
