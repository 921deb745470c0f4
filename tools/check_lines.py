#!/usr/bin/env python3
"""Fails on a line of code above 120 columns, and names it.

    tools/check_lines.py [FOLDER]
"""
import pathlib
import sys

LONGEST = 120
CODE = {".c", ".cmake", ".cpp", ".css", ".go", ".h", ".java", ".js", ".map", ".mjs", ".py", ".R", ".sh"}


def code_files(root):
    """Sources of the tree and of its top, without what is built or hidden."""
    folders = [path for path in root.iterdir() if path.is_dir() and not path.name.startswith((".", "build"))]
    for path in sorted([*root.iterdir(), *(path for folder in folders for path in folder.rglob("*"))]):
        if path.is_file() and (path.suffix in CODE or path.name == "CMakeLists.txt"):
            yield path


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    found = [f"{path.relative_to(root)}:{number}: {len(line)} columns"
             for path in code_files(root)
             for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1) if len(line) > LONGEST]
    print("\n".join(found) if found else f"No line of code is above {LONGEST} columns.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
