#!/usr/bin/env python3
"""Fails on an include against the arrows between folders.

Each folder lists the folders it may include directly; what those may include, it may too. Headers in
include/vexrocproc/ may be included from everywhere and include only host/ and each other.
"""
import pathlib
import re
import sys

ARROWS = {
    "host": [],
    "space": ["host"],
    "stats": ["space"],
    "results": ["stats"],
    "settings": ["host"],
    "driver": ["results", "settings"],
    "display": ["results", "settings"],
    "arraycalls": ["stats"],
    "analysis": ["driver"],
    "include": ["host"],
    "cli": [],
    "examples": [],
    "benchmarks": [],
    "bindings": [],
}
# What a host application sees: it builds on the public headers and the host layer alone.
HOST_APPLICATIONS = {"analysis", "cli", "examples", "benchmarks", "bindings"}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')
SUFFIXES = {".h", ".cpp", ".c"}


def reachable(folder):
    found = {folder, "include"}
    if folder in HOST_APPLICATIONS:
        found.add("host")
    for below in ARROWS[folder]:
        found |= reachable(below)
    return found


def folder_of(include):
    first = include.split("/")[0]
    return "include" if first == "vexrocproc" else first


def violations(root):
    for folder in ARROWS:
        allowed = reachable(folder)
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in SUFFIXES:
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                match = INCLUDE.match(line)
                target = folder_of(match.group(1)) if match else folder
                if target in ARROWS and target not in allowed:
                    yield f"{path.relative_to(root)}:{number}: {folder}/ may not include {target}/"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    found = list(violations(root))
    print("\n".join(found) if found else "Includes follow the arrows between folders.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
