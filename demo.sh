#!/usr/bin/env bash
# Builds the program and judges measurements of real tumours with it. Installs what it needs from Debian.
set -euo pipefail
cd "$(dirname "$0")"
mkdir -p build
log=build/demo.log

# Keeps what it reads in the log and shows how far ninja is: counting up in place on a terminal, else by quarters.
follow() {
    local line share quarter=0
    while IFS= read -r line; do
        echo "$line" >>"$log"
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
        share=$((100 * BASH_REMATCH[1] / BASH_REMATCH[2]))
        if [ -t 1 ]; then
            printf '\r    %d of %d, %d %% ' "${BASH_REMATCH[@]:1:2}" "$share"
        elif [ "$((share / 25))" -gt "$quarter" ]; then
            quarter=$((share / 25))
            echo "    $share %"
        fi
    done
    [ ! -t 1 ] || printf '\r\033[K'
}

build() {
    echo "Configuring ..."
    cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVEXROC_BUILD_{TESTS,EXAMPLES,BENCHMARKS}=OFF \
        >"$log" 2>&1 || return
    echo "Compiling; with two cores this takes about two minutes the first time ..."
    cmake --build build/demo 2>&1 | follow
}

echo "Installing from Debian what is missing for the build ..."
tools/install_packages.sh build
if ! build; then
    cat "$log" >&2
    exit 1
fi
echo "Ready after $((SECONDS / 60)) min $((SECONDS % 60)) s: build/demo/cli/vexroc"

show() {
    printf '\n$ vexroc %s\n' "$*"
    build/demo/cli/vexroc "$@"
}
data=examples/data/breast_cancer.csv
show auc "$data" --state diagnosis=malignant --test radius_mean,texture_mean
show compare "$data" --state diagnosis=malignant --test radius_mean,texture_mean
