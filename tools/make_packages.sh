#!/usr/bin/env bash
# Makes the Debian packages of libraries, development, program and Python.
#   tools/make_packages.sh [FOLDER]     where they go; build/release/packages when not given
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-build/release/packages}
tools/install_packages.sh build page deb
cmake --preset release >/dev/null
cmake --build --preset release
rm -rf "$folder"
cpack --config build/release/CPackConfig.cmake -B "$folder" >/dev/null
ls "$folder"/*.deb
