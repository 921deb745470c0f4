#!/usr/bin/env bash
# Makes the API pages of the public headers in build/api/html; fails on a warning.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh api
mkdir -p build
doxygen docs/Doxyfile
echo "build/api/html/index.html"
