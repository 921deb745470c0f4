#!/usr/bin/env bash
# languages.sh LANGUAGE LIBRARIES EXAMPLES WORK: runs the example of a language against the built libraries.
# Exit code 77, with a reason, where the language is not installed.
set -euo pipefail
language=$1 libraries=$2 examples=$3 work=$4

skip() { echo "skipped: $1"; exit 77; }
mkdir -p "$work"
cd "$work"
case $language in
go)
    command -v go >/dev/null || skip "go is not installed"
    printed=$(CGO_CFLAGS="-I$examples/../../include" CGO_LDFLAGS="-L$libraries -lvexrocproc920r -Wl,-rpath,$libraries" \
        GOCACHE=$work/cache go run "$examples/auc.go")
    ;;
java)
    command -v java >/dev/null || skip "java is not installed"
    [ -f /usr/share/java/jna.jar ] || skip "JNA is not installed (libjna-java)"
    printed=$(java -cp /usr/share/java/jna.jar "-Djna.library.path=$libraries" "$examples/Auc.java")
    ;;
node)
    command -v npm >/dev/null || skip "npm is not installed"
    [ -d node_modules/koffi ] || npm install --silent --no-audit --no-fund --prefix "$work" koffi@3 >/dev/null 2>&1 \
        || skip "koffi cannot be installed by npm"
    cp "$examples/auc.mjs" .
    printed=$(LD_LIBRARY_PATH=$libraries node auc.mjs)
    ;;
esac
expected='area 0.940, standard error 0.076
10 points, the first at cut-off 2.30'
[ "$printed" = "$expected" ] || { printf 'expected:\n%s\nprinted:\n%s\n' "$expected" "$printed"; exit 1; }
