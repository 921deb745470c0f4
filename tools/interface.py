#!/usr/bin/env python3
"""Compares what the two shared libraries show to hosts with what is kept in cmake/interface/.

    tools/interface.py symbols FOLDER    exported symbols of the libraries built in FOLDER
    tools/interface.py types FOLDER      functions, classes, layouts, from debug information (a `plain` build; abidiff)
    tools/interface.py update            builds the preset `plain` and keeps its interface, after a change on purpose

Exit status 0 when nothing differs, 1 when something does, 77 when a tool that the comparison needs is not installed.
"""
import lzma
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
KEPT = ROOT / "cmake/interface"
LIBRARIES = {"vexrocproc920r": "libvexrocproc920r.so", "vexcommon920r": "libvexcommon920r.so"}
HEADERS = [ROOT / "include", ROOT / "src/host"]
CHANGED = "If the change is meant: tools/interface.py update, and a line in CHANGELOG.md."


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def headers(option):
    return [word for folder in HEADERS for word in (option, folder)]


def symbols(library):
    """Names as a reader knows them, one a line; what only the compiler tells apart is one name. Left out are constants
    of headers (weak objects), of which every user has a copy: whether a library has one depends on the compiler."""
    entries = [line[17:].split(" ", 1) for line in output("nm", "-D", "--defined-only", "-C", library).splitlines()]
    names = {name for kind, name in entries if kind not in "uV" or name.startswith(("vtable for", "typeinfo"))}
    return "".join(f"{name}\n" for name in sorted(names))


def description(library):
    """What abidiff compares: no path of this machine, nothing that a host cannot see."""
    text = output("abidw", *headers("--headers-dir"), "--drop-private-types", "--exported-interfaces-only",
                  "--drop-undefined-syms", "--no-corpus-path", "--no-comp-dir-path", "--no-show-locs",
                  "--no-parameter-names", "--type-id-style", "hash", library)
    return text.replace(f"{ROOT}/", "")


def same_symbols(name, library):
    kept, now = (set(text.splitlines()) for text in ((KEPT / f"{name}.symbols").read_text(), symbols(library)))
    for sign, names in (("-", kept - now), ("+", now - kept)):
        for symbol in sorted(names):
            print(f"{name}: {sign} {symbol}")
    return kept == now


def same_types(name, library):
    with tempfile.NamedTemporaryFile("w", suffix=".abi") as kept:
        kept.write(lzma.open(KEPT / f"{name}.abi.xz", "rt").read())
        kept.flush()
        answer = subprocess.run(["abidiff", *headers("--headers-dir2"), "--drop-private-types", "--no-show-locs",
                                 "--harmless", "--fail-no-debug-info", kept.name, library])
    return answer.returncode == 0


def update():
    subprocess.run(["cmake", "--preset", "plain"], cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", "--preset", "plain", "--target", "vexrocproc920r"], cwd=ROOT, check=True)
    for name, file in LIBRARIES.items():
        library = str(ROOT / "build/plain" / file)
        (KEPT / f"{name}.symbols").write_text(symbols(library))
        (KEPT / f"{name}.abi.xz").write_bytes(lzma.compress(description(library).encode(), preset=9))


def main():
    if sys.argv[1:] == ["update"]:
        return update()
    if len(sys.argv) != 3 or sys.argv[1] not in ("symbols", "types"):
        sys.exit(__doc__)
    if sys.argv[1] == "types" and shutil.which("abidiff") is None:
        print("skipped: abidiff is not installed (tools/install_packages.sh interface)")
        sys.exit(77)
    same = {"symbols": same_symbols, "types": same_types}[sys.argv[1]]
    if not all([same(name, str(pathlib.Path(sys.argv[2]) / file)) for name, file in LIBRARIES.items()]):
        sys.exit(CHANGED)


if __name__ == "__main__":
    main()
