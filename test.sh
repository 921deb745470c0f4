#!/usr/bin/env bash
# Builds the project and runs its tests. Installs what it needs from Debian.
#   ./test.sh         the release build
#   ./test.sh all     also clang, the checks of libstdc++'s debug mode, and the address, undefined-behaviour and
#                     thread sanitizers
set -euo pipefail
cd "$(dirname "$0")"

case "${1:-}" in
"") presets=(release) ;;
all) presets=(release clang dev asan tsan) ;;
*) echo "test.sh: '$1' is not known; call ./test.sh or ./test.sh all" >&2; exit 2 ;;
esac

tools/install_packages.sh build page run test
for preset in "${presets[@]}"; do
    echo "== $preset"
    targets=(all all_verify_interface_header_sets)
    selection=()
    if [ "$preset" = tsan ]; then # has something to say where threads run
        targets=(arraycalls_tests)
        selection=(-R Threads)
    fi
    cmake --preset "$preset" -DVEXROC_BUILD_BENCHMARKS=OFF >/dev/null
    cmake --build --preset "$preset" --target "${targets[@]}"
    ctest --preset "$preset" -j "$(nproc)" "${selection[@]}"
done
