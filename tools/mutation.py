#!/usr/bin/env python3
"""Changes the code in small ways and asks the tests: a change that no test notices is a gap in them.

    tools/mutation.py [--sample N] [--seed S] [--only PREFIX] [--jobs J]

Works on a copy of the tree in build/mutation; only what a change touches is built again. A change counts as killed
when a test program fails, crashes or runs far beyond its usual time. Changes that cannot matter, or are accepted, are
listed with their reasons in tools/mutation_accepted.txt and are not tried. Survivors are printed as they come; an
interrupt ends the run with the figures so far. The exit code is 1 when fewer than 90 % of the changes tried were
killed.
"""
import argparse
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutation"
TREE = WORK / "tree"
BUILD = WORK / "out"
ACCEPTED = ROOT / "tools" / "mutation_accepted.txt"
REQUIRED_SHARE = 0.9

FOLDERS = ["src/numeric", "src/summary", "src/inference", "src/space", "src/stats", "src/arraycalls", "src/driver"]
# The first failure ends a trial, and what comes later is not even built. The programs behind the shared library come
# first: they need no compiling themselves.
SHARED = ["arraycalls_tests", "facade_tests"]
PROGRAMS = {
    "src/numeric": SHARED + ["numeric_tests", "inference_tests"],
    "src/summary": SHARED + ["summary_tests", "space_tests", "results_tests"],
    "src/inference": SHARED + ["inference_tests", "space_tests", "stats_tests", "results_tests"],
    "src/space": SHARED + ["space_tests", "stats_tests"],
    "src/stats": SHARED + ["stats_tests"],
    "src/arraycalls": ["arraycalls_tests", "arraycalls_iterator_tests", "arraycalls_allocation_tests"],
    "src/driver": ["facade_tests", "driver_tests", "facade_interruption_tests"],
}
RANDOM_CASES = "1000"  # in each test of random data
MEMORY_LIMIT = 6 << 30

# What is replaced, in code whose comments and texts are blanked. Operators stand between blanks in this code, so that
# pointers, references and template brackets are not taken for them.
SWAPS = [
    (r"(?<= )<(?= )", "<="), (r"(?<= )<=(?= )", "<"), (r"(?<= )>(?= )", ">="), (r"(?<= )>=(?= )", ">"),
    (r"(?<= )==(?= )", "!="), (r"(?<= )!=(?= )", "=="), (r"(?<= )\+(?= )", "-"), (r"(?<= )-(?= )", "+"),
    (r"(?<= )\*(?= )", "/"), (r"(?<= )/(?= )", "*"), (r"(?<= )%(?= )", "/"), (r"\+=", "-="), (r"-=", "+="),
    (r"(?<= )<<(?= )", ">>"), (r"(?<= )>>(?= )", "<<"), (r"&&(?= )(?<= &&)", "||"), (r"(?<= )\|\|(?= )", "&&"),
    (r"(?<= )&(?= )", "|"), (r"(?<= )\|(?= )", "&"), (r"\+\+", "--"), (r"--", "++"), (r"!(?=[\w(])", ""),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\bmin\b(?=[(<])", "max"), (r"\bmax\b(?=[(<])", "min"),
    (r"\bfront\(\)", "back()"), (r"\bback\(\)", "front()"), (r"\bfloor\b", "ceil"), (r"\bany_of\b", "all_of"),
    (r"\bnone_of\b", "all_of"), (r"(?<![\w.])0\.0(?!\w)", "1.0"), (r"(?<![\w.])1\.0(?!\w)", "2.0"),
    (r"(?<![\w.])0\.5(?!\w)", "0.25"), (r"(?<![\w.])0(?![\w.])", "1"), (r"(?<![\w.])1(?![\w.])", "2"),
    (r"(?<![\w.])([2-9]|\d\d+)(?![\w.])", lambda m: str(int(m.group()) + 1)),
    (r"\b(break|continue)(?=;)", ""),
]
NOT_CODE = re.compile(r"\s*(#|template|namespace|using|static_assert|enum|class|struct|public:|private:|friend|case "
                      r"|.*\bvirtual\b)")
DROPPABLE = re.compile(r"\s*((\+\+|--)?[\w.:\[\]]+(->\w+|\.\w+)*(\(.*\))?;|[\w.\[\]>()-]+ [-+|&*/]?= .*;)$")
STATEMENT_END = re.compile(r"([;{}:]|\)|\belse|^)$")


def blanked(line):
    """The line with comments and texts as blanks, so that positions stay."""
    line = re.sub(r'"(\\.|[^"\\])*"', lambda m: " " * len(m.group()), line)
    return re.sub(r"//.*", lambda m: " " * len(m.group()), line)


def changes_of(name, text):
    """(file, line number, changed line) for every change of a file."""
    lines = text.split("\n")
    previous = ""
    for number, line in enumerate(lines):
        code = blanked(line)
        if not code.strip() or NOT_CODE.match(code):
            continue
        for pattern, replacement in SWAPS:
            for match in re.finditer(pattern, code):
                new = replacement(match) if callable(replacement) else replacement
                yield name, number, line[:match.start()] + new + line[match.end():]
        if DROPPABLE.match(code.rstrip()) and STATEMENT_END.search(previous):
            yield name, number, re.match(r"\s*", line).group() + ";"
        previous = code.rstrip()


def accepted_changes():
    """{(file, line, changed line)}; a changed line '*' stands for every change of the line."""
    accepted, name, old = set(), None, None
    for line in ACCEPTED.read_text().splitlines() if ACCEPTED.exists() else []:
        mark, rest = line[:2], line[2:].strip()
        if mark == "= ":
            name = rest
        elif mark == "- ":
            old = rest
        elif mark == "+ ":
            accepted.add((name, old, rest))
    return accepted


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


def refresh_tree():
    """Copies the tree, leaving what has not changed untouched: the build of the last run stays of use."""
    names = run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT).stdout.splitlines()
    for name in names:
        source, target = ROOT / name, TREE / name
        if not source.is_file():
            continue
        content = source.read_bytes()
        if name == "cmake/flags.cmake":
            content = content.replace(b"-Werror", b"-w")  # a change may leave something unused
        if name == "CMakeLists.txt":  # one compilation, whichever header is changed
            content += (b"set_target_properties(vexrocproc_objects PROPERTIES UNITY_BUILD ON "
                        b"UNITY_BUILD_BATCH_SIZE 0)\n"
                        b"target_compile_options(vexrocproc_objects PRIVATE -g0)\n")
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)


def build(program, jobs):
    return run(["cmake", "--build", BUILD, "-j", str(jobs), "--target", program])


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def passes(program, seconds):
    path = next(p for p in BUILD.rglob(program) if p.is_file())
    try:
        options = ["--gtest_fail_fast", "--gtest_brief=1"]
        environment = os.environ | {"VEXROC_RANDOM_CASES": RANDOM_CASES}
        return run([path, *options], timeout=seconds, preexec_fn=limit_memory, cwd=BUILD,
                   env=environment).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def prepare(jobs):
    """Builds the unchanged tree; the time that each test program may take."""
    refresh_tree()
    flags = "-O1 -g0 -D_GLIBCXX_ASSERTIONS"
    options = ["CMAKE_BUILD_TYPE=Debug", f"CMAKE_CXX_FLAGS={flags}", "VEXROC_BUILD_CLI=OFF",
               "VEXROC_BUILD_EXAMPLES=OFF", "VEXROC_BUILD_BENCHMARKS=OFF",
               "CMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold", "CMAKE_SHARED_LINKER_FLAGS=-fuse-ld=gold",
               "CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]  # a changed program may hang when asked
    configured = run(["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", *[f"-D{o}" for o in options]])
    if configured.returncode != 0:
        sys.exit(configured.stdout)
    limits = {}
    for program in sorted({p for programs in PROGRAMS.values() for p in programs}):
        built = build(program, jobs)
        if built.returncode != 0:
            sys.exit(built.stdout)
        start = time.monotonic()
        if not passes(program, 600):
            sys.exit(f"{program} fails on the unchanged tree")
        print(f"{program}: {time.monotonic() - start:.1f} s", flush=True)
        limits[program] = 20 + 6 * (time.monotonic() - start)
    return limits


def verdict(folder, limits, jobs):
    """'killed', 'survived', or 'not built' for a change that does not compile."""
    for program in PROGRAMS[folder]:
        if build(program, jobs).returncode != 0:
            return "not built"
        if not passes(program, limits[program]):
            return "killed"
    return "survived"


def tried(change, limits, jobs):
    name, number, changed = change
    target = TREE / name
    text = target.read_text()
    lines = text.split("\n")
    lines[number] = changed
    target.write_text("\n".join(lines))
    try:
        return verdict("/".join(name.split("/")[:2]), limits, jobs)
    finally:
        target.write_text(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--sample", type=int, default=150, help="number of changes to try; 0 for all")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", default="", help="beginning of the file names to change")
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()

    files = sorted(p for f in FOLDERS for p in (ROOT / f).iterdir() if p.suffix in (".h", ".cpp"))
    texts = {str(p.relative_to(ROOT)): p.read_text() for p in files}
    everything = [c for name, text in texts.items() if name.startswith(options.only) for c in changes_of(name, text)]
    accepted = accepted_changes()

    def is_accepted(change):
        name, number, changed = change
        old = texts[name].split("\n")[number].strip()
        return (name, old, "*") in accepted or (name, old, changed.strip()) in accepted

    everything = sorted(set(everything))
    open_changes = [c for c in everything if not is_accepted(c)]
    accepted = len(everything) - len(open_changes)
    print(f"{len(everything)} changes, {accepted} of them accepted with a reason", flush=True)
    random.Random(options.seed).shuffle(open_changes)
    wanted = options.sample or len(open_changes)

    limits = prepare(options.jobs)
    counts = {"killed": 0, "survived": 0, "not built": 0}
    start = time.monotonic()
    for ending in (signal.SIGINT, signal.SIGTERM):  # also where a shell started it in the background
        signal.signal(ending, signal.default_int_handler)
    try:
        for change in open_changes:
            if counts["killed"] + counts["survived"] == wanted:
                break
            result = tried(change, limits, options.jobs)
            counts[result] += 1
            if counts["killed"] % 25 == 0 and result == "killed":
                print(f"{counts['killed']} killed so far", flush=True)
            if result == "survived":
                name, number, changed = change
                old = texts[name].split("\n")[number].strip()
                print(f"= {name}  line {number + 1}\n- {old}\n+ {changed.strip()}", flush=True)
    except KeyboardInterrupt:
        print("interrupted; so far:")
    tried_count = counts["killed"] + counts["survived"]
    share = counts["killed"] / max(tried_count, 1)
    print(f"{counts['killed']} of {tried_count} killed ({share:.1%}), {counts['survived']} survived, "
          f"{counts['not built']} did not compile; {(time.monotonic() - start) / 60:.0f} minutes")
    return 0 if share >= REQUIRED_SHARE else 1


if __name__ == "__main__":
    sys.exit(main())
