#!/usr/bin/env bash
# Makes the Debian packages of libraries, development, program and Python.
#   tools/make_packages.sh [FOLDER]     where they go; build/packages of the repository when not given
# Packages of the same names that FOLDER already has are replaced; everything else in it stays.
set -euo pipefail
folder=${1:+$(realpath -m "$1")}
cd "$(dirname "$0")/.."
folder=${folder:-$PWD/build/packages}
tools/install_packages.sh build deb
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVEXROC_BUILD_{TESTS,EXAMPLES,BENCHMARKS}=OFF \
    >/dev/null
cmake --build build/demo
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack --config build/demo/CPackConfig.cmake -B "$work" >/dev/null
mkdir -p "$folder"
for package in "$work"/*.deb; do
    name=${package##*/}
    rm -f "$folder/${name%%_*}"_*.deb # an older version would be installed along with this one
    cp "$package" "$folder/"
    echo "$folder/$name"
done
