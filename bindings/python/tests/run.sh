#!/bin/sh
# run.sh LIBRARY [BUILD]: tests the Python package against the library, with a BUILD also as a wheel made of it.
# Answers 77, and says why, where the packages for it are missing.
python=/usr/bin/python3 # the one that Debian's packages are for
cd "$(dirname "$0")/.." || exit 1
for package in numpy pytest; do
    if ! "$python" -c "import $package" 2>/dev/null; then
        echo "skipped: python3-$package is missing; tools/install_packages.sh python python-test peers"
        exit 77
    fi
done
VEXROC_LIBRARY="$1" VEXROC_BUILD="$2" PYTHONDONTWRITEBYTECODE=1 \
    exec "$python" -m pytest -q -ra --doctest-glob='*.md' tests vexroc ../../docs/python.md
