#!/usr/bin/env bash
# Runs the tests where hosts run: under other locales, under valgrind, and as other compilers and levels of optimisation
# build the library. Installs what it needs from Debian; builds the presets release, clang and plain.
#   tools/environments.sh [locales] [valgrind] [bits]     all three without a word
set -euo pipefail
cd "$(dirname "$0")/.."
[ "$#" -gt 0 ] || set -- locales valgrind bits

tools/install_packages.sh build test environments

build() { # PRESET TARGET...
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target "$@" >/dev/null
}

# The suite under C, a locale with a decimal comma, and an 8-bit one in which the lower case of I is another letter.
locales() {
    build release all
    local folder=build/locales
    mkdir -p "$folder"
    [ -d "$folder/de_DE.utf8" ] || localedef -i de_DE -f UTF-8 "$folder/de_DE.utf8"
    [ -d "$folder/tr_TR.iso88599" ] || localedef -i tr_TR -f ISO-8859-9 "$folder/tr_TR.iso88599"
    local locale
    for locale in C de_DE.utf8 tr_TR.iso88599; do
        echo "== locale $locale"
        LOCPATH="$PWD/$folder" LC_ALL="$locale" \
            ctest --preset release -j "$(nproc)" -E '^(Witnesses|package)$' | tail -n 3
    done
}

# Memory errors, leaks and decisions on values that were never set, in the unit tests. Only those count: valgrind
# rounds long double to double, so that tests of the last digits may fail. Left out: programs that count allocations,
# samples of millions of cases, threads.
valgrind() {
    build release all
    local status slow='-Sizes.*:Threads.*:*Milli*'
    local program
    for program in host/host numeric/numeric summary/summary inference/inference space/space stats/stats \
        settings/settings results/results calls/analysis arraycalls/arraycalls \
        arraycalls/arraycalls_iterator display/component_display driver/driver driver/facade; do
        echo "== valgrind $program"
        status=0
        command valgrind --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite \
            "build/release/tests/${program}_tests" --gtest_brief=1 --gtest_filter="$slow" | tail -n 2 || status=$?
        [ "$status" -ne 99 ] || { echo "environments.sh: valgrind found errors in $program" >&2; exit 1; }
    done
}

# The same bits from g++ -O3, g++ -O0 and clang -O3.
bits() {
    local preset answer expected=""
    for preset in release plain clang; do
        build "$preset" roc_bits
        answer=$("build/$preset/tests/environments/roc_bits")
        echo "== bits, $preset: $(tail -n 1 <<<"$answer")"
        [ "$preset" != release ] || expected=$answer
        [ "$answer" = "$expected" ] || { echo "environments.sh: other bits than from release" >&2; exit 1; }
    done
}

for part in "$@"; do
    case "$part" in
    locales | valgrind | bits) "$part" ;;
    *) echo "environments.sh: '$part' is not known; choose from locales, valgrind, bits" >&2; exit 2 ;;
    esac
done
