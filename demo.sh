#!/usr/bin/env bash
# Builds the program and judges measurements of real tumours with it. Installs what it needs from Debian.
set -euo pipefail
cd "$(dirname "$0")"

tools/install_packages.sh build
mkdir -p build
if ! { cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVEXROC_BUILD_TESTS=OFF \
           -DVEXROC_BUILD_EXAMPLES=OFF -DVEXROC_BUILD_BENCHMARKS=OFF && cmake --build build/demo; } >build/demo.log 2>&1; then
    cat build/demo.log >&2
    exit 1
fi

show() {
    printf '\n$ vexroc %s\n' "$*"
    build/demo/cli/vexroc "$@"
}
data=examples/data/breast_cancer.csv
show auc "$data" --state diagnosis=malignant --test radius_mean,texture_mean
show compare "$data" --state diagnosis=malignant --test radius_mean,texture_mean
