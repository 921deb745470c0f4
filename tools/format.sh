#!/usr/bin/env bash
# format.sh [--check]: sets C and C++ as .clang-format says; with --check changes nothing and fails on what differs.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh style
mode=(-i)
[ "${1:-}" = --check ] && mode=(--dry-run --Werror)
git ls-files -z '*.h' '*.cpp' '*.c' | xargs -0 clang-format "${mode[@]}"
