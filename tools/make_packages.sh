#!/usr/bin/env bash
# Makes the Debian packages of libraries, development, program and Python.
#   tools/make_packages.sh [FOLDER]     where they go; build/packages when not given
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-build/packages}
tools/install_packages.sh build page deb
cmake -S . -B build/demo -G Ninja -DCMAKE_BUILD_TYPE=Release -DVEXROC_BUILD_TESTS=OFF -DVEXROC_BUILD_EXAMPLES=OFF \
    -DVEXROC_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build build/demo
rm -rf "$folder"
cpack --config build/demo/CPackConfig.cmake -B "$folder" >/dev/null
ls "$folder"/*.deb
