#!/bin/sh
# end_to_end.sh PROGRAM DATA: runs the built program as a user would; what only a real process shows.
program=$1
data=$2
failures=0

# check NAME EXPECTED_EXIT_CODE EXPECTED_TEXT COMMAND: the text must occur in what the command prints.
check() {
    printed=$(sh -c "$4" 2>&1)
    code=$?
    case "$code $printed" in
    "$2 "*"$3"*) ;;
    *)
        echo "FAILED: $1 (exit code $code): $printed"
        failures=$((failures + 1))
        ;;
    esac
}

question="--state diagnosis=malignant --test radius_mean"
check "a file" 0 "radius_mean,212,357,0,0.93751" "'$program' auc '$data/breast_cancer.csv' $question --format csv"
check "a pipe" 0 "radius_mean,212,357,0,0.93751" \
    "cat '$data/breast_cancer.csv' | '$program' auc - $question --format csv"
check "notes stay out of the results" 0 "radius_mean,5.981,1,1" \
    "'$program' curve '$data/breast_cancer.csv' $question --format csv 2>/dev/null | sed -n 2p"
if [ -c /dev/full ]; then
    check "a full disk" 4 "cannot write" "'$program' auc '$data/breast_cancer.csv' $question >/dev/full"
fi
check "standard output closed" 4 "cannot write" "'$program' --version >&-"

[ "$failures" -eq 0 ]
