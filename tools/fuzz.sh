#!/usr/bin/env bash
# fuzz.sh [SECONDS]: lets libFuzzer look for inputs on which a target breaks, so many seconds per target (180). Starts
# from the kept corpus; what it finds on the way stays in build/fuzz/found. An input that breaks a target is named in
# the output: give it to the target once more to see it alone, and keep it in tests/fuzz/corpus once it is mended.
#   fuzz.sh keep    adds the fewest inputs found that reach the code which the kept corpus does not reach
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install_packages.sh build test
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target fuzz_array_calls fuzz_facade fuzz_reader
for target in array_calls facade reader; do
    program=build/fuzz/tests/fuzz/fuzz_$target
    kept=tests/fuzz/corpus/$target
    found=build/fuzz/found/$target
    mkdir -p "$found" "$kept"
    if [ "${1:-}" = keep ]; then
        "$program" -set_cover_merge=1 -use_counters=0 -max_len=300 "$kept" "$found" 2>&1 | grep MERGE-OUTER
        continue
    fi
    echo "== $target"
    "$program" -max_total_time="${1:-180}" -max_len=1024 -timeout=20 -print_final_stats=1 -artifact_prefix="$found/" \
        "$found" "$kept" 2>&1 | grep -vE '^#|NEW_FUNC|^INFO'
done
