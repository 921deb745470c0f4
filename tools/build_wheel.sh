#!/usr/bin/env bash
# build_wheel.sh [FOLDER [BUILD]]: makes the Python package with both shared libraries in it, as one wheel in FOLDER,
# or here.
# BUILD is a complete build of the project; without one the libraries are built in build/wheel.
# The wheel is for Linux with the C library and libstdc++ of this system or newer ones: hence linux_*, not manylinux.
# Needs tools/install_packages.sh build python; nothing is fetched.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
folder="$(mkdir -p "${1:-.}" && cd "${1:-.}" && pwd)"
build="${2:-}"
python=/usr/bin/python3 # the one that Debian's packages are for

if [ -z "$build" ]; then
    build="$root/build/wheel"
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DVEXROC_BUILD_{CLI,EXAMPLES,TESTS,BENCHMARKS}=OFF >/dev/null
    cmake --build "$build"
fi

stage="$(mktemp -d)"
trap 'rm -rf "$stage"' EXIT
cmake --install "$build" --prefix "$stage/prefix" --strip >/dev/null
cp -r "$root/bindings/python" "$stage/python"
cp "$root/LICENSE" "$stage/python/"
for library in vexcommon920r vexrocproc920r; do
    # Under the name by which it is loaded; the installed copy finds its neighbour ($ORIGIN).
    soname="$(find "$stage/prefix" -name "lib$library.so.*" -type l)"
    cp -L "$soname" "$stage/python/vexroc/"
done
cd "$stage/python"
"$python" -m build --wheel --no-isolation --outdir "$folder" . >"$stage/log" 2>&1 || { cat "$stage/log" >&2; exit 1; }
ls "$folder"/vexroc-*.whl
