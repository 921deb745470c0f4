#!/usr/bin/env bash
# Builds the project and runs its tests. Installs what it needs from Debian.
#   ./test.sh         the release build
#   ./test.sh all     also the Python and R packages, other packages as witnesses, the interface against the kept one,
#                     clang, no optimisation, the checks of libstdc++'s debug mode, and the address, undefined-behaviour
#                     and thread sanitizers; first of all, what .clang-format and .clang-tidy say
set -euo pipefail
cd "$(dirname "$0")"

case "${1:-}" in
"") presets=(release) purposes=(build run test) ;;
all) presets=(release clang plain dev asan tsan)
    purposes=(build run test style python python-test peers r witness interface languages) ;;
*) echo "test.sh: '$1' is not known; call ./test.sh or ./test.sh all" >&2; exit 2 ;;
esac

tools/install_packages.sh "${purposes[@]}"
if [ "${1:-}" = all ]; then
    tools/format.sh --check
    tools/tidy.sh
fi
for preset in "${presets[@]}"; do
    echo "== $preset"
    targets=(all all_verify_interface_header_sets)
    selection=()
    if [ "$preset" = tsan ]; then # has something to say where threads run
        targets=(arraycalls_tests)
        selection=(-R Threads)
    fi
    if [ "$preset" = plain ]; then # the same code unoptimised: the same bits, and the description of the interface
        targets=(vexrocproc920r roc_bits)
        selection=(-R '^(Bits|Interface)')
    fi
    cmake --preset "$preset" -DVEXROC_BUILD_BENCHMARKS=OFF >/dev/null
    cmake --build --preset "$preset" --target "${targets[@]}"
    ctest --preset "$preset" -j "$(nproc)" "${selection[@]}"
done
