#!/usr/bin/env bash
# tidy.sh [FILE...]: what .clang-tidy checks, in the C++ files named, or in all of src/ and cli/ (2.5 minutes with two
# cores). Prints each finding once, then how many each file has; fails when there is one.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh build style
[ "$#" -gt 0 ] || { mapfile -t files < <(git ls-files 'src/*.cpp' 'cli/*.cpp') && set -- "${files[@]}"; }
cmake --preset release -B build/tidy -DVEXROC_BUILD_{TESTS,EXAMPLES,BENCHMARKS}=OFF >/dev/null
log=$(mktemp)
trap 'rm -f "$log"' EXIT

if printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 1 clang-tidy -p build/tidy --quiet >"$log" 2>&1; then
    echo "Nothing to tidy in $# files."
    exit
fi
findings=$(grep -E '(warning|error): ' "$log" | sed "s|^$PWD/||; s/,-warnings-as-errors]$/]/" | sort -u) || cat "$log"
printf '%s\n\n' "$findings"
cut -d: -f1 <<<"$findings" | sort | uniq -c
exit 1
