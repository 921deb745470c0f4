#!/usr/bin/env bash
# coverage.sh: which lines and branches of the component the tests reach. Prints a table by file; the pages with every
# line are in build/coverage/report.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install_packages.sh build test coverage
cmake -S . -B build/coverage -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="-O0 --coverage" \
    -DCMAKE_C_FLAGS=--coverage -DVEXROC_BUILD_{CLI,EXAMPLES,BENCHMARKS}=OFF >/dev/null
cmake --build build/coverage
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage -j "$(nproc)" --output-on-failure -E package
mkdir -p build/coverage/report
# Branches that only an exception takes are not counted: failing allocations have tests of their own.
gcovr --root . --object-directory build/coverage --filter '(src|include)/' \
    --exclude-directories '.*CompilerId.*' --exclude-throw-branches --exclude-unreachable-branches \
    --html-details build/coverage/report/index.html --txt build/coverage/report/lines.txt \
    --json build/coverage/report/all.json build/coverage/{CMakeFiles,tests,src}
cat build/coverage/report/lines.txt
gcovr --root . --add-tracefile build/coverage/report/all.json --branches
