#!/bin/sh
# pages.sh PROGRAM FOLDER: makes the manual pages vexroc(1) and, per command, vexroc-COMMAND(1) from the help texts.
set -e
here=$(dirname "$0")
program=$1
folder=$2
mkdir -p "$folder"
rm -f "$folder"/*.1

page() { # NAME SUMMARY [COMMAND]
    help2man --no-info --name="$2" --include="$here/all.h2m" --output="$folder/$1.made" "$program${3:+ $3}"
    # The name of a command's page; a day for mandoc; examples on lines of their own.
    sed -e "/^\.TH/s/ VEXROC / $(echo "$1" | tr '[:lower:]' '[:upper:]') /" -e "s/^vexroc \\\\-/$1 \\\\-/" \
        -e '/^\.TH/s/"\([A-Z][a-z]*\) \([0-9]\{4\}\)"/"\1 1, \2"/' \
        -e 's/^vexroc [a-z]* [a-z]*\.csv/.br\n&/' "$folder/$1.made" >"$folder/$1.1"
    rm "$folder/$1.made"
}

"$program" --help | sed -n 's/^  \([a-z][a-z]*\)   *\(.*\)/\1 \2/p' | while read -r command summary; do
    [ "$command" = help ] || page "vexroc-$command" "$summary" "$command"
done
page vexroc 'ROC analysis of a data file' # last: where it is, all others are
