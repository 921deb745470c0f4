#!/usr/bin/env bash
# Installs the R package against a copy of the libraries and runs its tests; with --check, all of R CMD check.
#   tools/check_r.sh [--check] [BUILD_FOLDER]     build/release when no folder is given
# Exit code 77, with a reason, where R is not installed.
set -euo pipefail
check=
[ "${1:-}" != --check ] || { check=yes; shift; }
build=${1:+$(realpath -m "$1")}
cd "$(dirname "$0")/.."
build=${build:-build/release}
if ! command -v R >/dev/null || ! R CMD config CC >/dev/null 2>&1; then
    echo "skipped: R is not installed (tools/install_packages.sh r)"
    exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for component in runtime development; do
    cmake --install "$build" --prefix "$work/prefix" --component $component >/dev/null
done
export VEXROC_PREFIX=$work/prefix
package=$PWD/bindings/r/vexroc
cd "$work"
R CMD build "$package" >/dev/null
if [ -n "$check" ]; then
    _R_CHECK_FORCE_SUGGESTS_=false R CMD check --no-manual vexroc_*.tar.gz
else
    mkdir library
    R CMD INSTALL --library=library vexroc_*.tar.gz >install.log 2>&1 || { cat install.log; exit 1; }
    export R_LIBS=$work/library
    for test in "$package"/tests/*.R; do Rscript "$test"; done
    PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 -m pytest -q -p no:cacheprovider --door=r \
        "$package/../../../tests/misleading/test_misleading.py"
    PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 -m pytest -q -p no:cacheprovider --door=r \
        --library="$work/prefix/lib/libvexrocproc920r.so" "$package/../../../tests/truth"
fi
