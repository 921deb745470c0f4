#!/usr/bin/env python3
"""Fails on an include against the arrows between rooms.

Each room lists the rooms it may include directly; what those may include, it may too. Headers in include/vexrocproc/
may be included from everywhere and include only src/host/ and each other.

    tools/check_includes.py [FOLDER]       check the tree
    tools/check_includes.py --arrows       print room and room for every arrow that the code uses
"""
import pathlib
import re
import sys

LIBRARY = {  # ground first; nothing upward
    "numeric": [],
    "host": [],
    "remarks": [],
    "labels": ["remarks"],
    "summary": ["numeric"],
    "inference": ["summary", "host"],
    "space": ["inference"],
    "stats": ["space"],
    "settings": ["host"],
    "results": ["stats"],
    "arraycalls": ["stats"],
    "driver": ["results", "settings"],
    "display": ["results", "settings"],
    "calls": ["driver", "arraycalls", "labels"],
}
PROGRAM = {  # what a page in a browser needs stands on words and study alone
    "words": [],
    "system": ["words"],
    "options": ["words"],
    "study": ["words"],
    "input": ["study"],
    "output": ["study"],
    "picture": ["study"],
    "sources": ["input", "system"],
    "commands": ["options", "sources", "output", "picture"],
}
# What a host application sees: the public headers and the host layer alone.
HOST_APPLICATIONS = ["examples", "benchmarks", "bindings"]

ARROWS = {"include": ["src/host"]}
ARROWS |= {f"src/{room}": [f"src/{below}" for below in rooms] + ["include"] for room, rooms in LIBRARY.items()}
ARROWS |= {f"cli/{room}": [f"cli/{below}" for below in rooms] + ["include"] for room, rooms in PROGRAM.items()}
ARROWS |= {room: ["include"] for room in HOST_APPLICATIONS}
ARROWS["cli"] = ["cli/commands"]  # main and the program around the commands

INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]')
SUFFIXES = {".h", ".cpp", ".c"}


def reachable(room):
    found = {room}
    for below in ARROWS[room]:
        found |= reachable(below) if below != "include" else {"include", "src/host"}
    return found


def room_of(include):
    """The room that an include names; none for a header from outside, or one that the build makes."""
    parts = include.removeprefix("src/").split("/")
    if parts[0] == "vexrocproc":
        return "include"
    if parts[0] == "cli":
        return f"cli/{parts[1]}" if len(parts) > 2 else "cli"
    return f"src/{parts[0]}" if len(parts) > 1 and parts[0] in LIBRARY else None


def files_of(root, room):
    folder = root / room
    return sorted(folder.iterdir() if room == "cli" else folder.rglob("*"))


def includes(root):
    """(room, included room, place) of every include of the project's own headers."""
    for room in ARROWS:
        for path in files_of(root, room):
            if path.suffix not in SUFFIXES:
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                match = INCLUDE.match(line)
                if match and (target := room_of(match.group(1))):
                    yield room, target, f"{path.relative_to(root)}:{number}"


def nameless(root):
    """Places of includes that do not name their room: relative to the file, or a header of a room by its name alone."""
    rooms = [room for room in ARROWS if room.startswith(("src/", "cli/"))]
    headers = {path.name for room in rooms for path in files_of(root, room) if path.suffix == ".h"}
    for path in (path for room in rooms for path in files_of(root, room) if path.suffix in SUFFIXES):
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if match and (match.group(1).startswith(".") or match.group(1) in headers):
                yield f"{path.relative_to(root)}:{number}"


def violations(root):
    for place in nameless(root):
        yield f"{place}: the include does not name its room; spell it \"room/header.h\""
    for room, target, place in includes(root):
        if target not in reachable(room):
            yield f"{place}: {room}/ may not include {target}/"
    for tree, rooms in (("src", LIBRARY), ("cli", PROGRAM)):
        for folder in sorted({path.parent.name for path in (root / tree).glob("*/*") if path.suffix in SUFFIXES}):
            if folder not in rooms:
                yield f"{tree}/{folder}/: a room without a floor: give it one in {pathlib.Path(__file__).name}"


def main():
    if sys.argv[1:] == ["--arrows"]:
        root = pathlib.Path(__file__).resolve().parent.parent
        print("\n".join(f"{a} {b}" for a, b in sorted({(a, b) for a, b, _ in includes(root) if a != b})))
        return 0
    found = list(violations(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")))
    print("\n".join(found) if found else "Includes follow the arrows between rooms.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
