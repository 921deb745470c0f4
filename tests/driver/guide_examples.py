"""guide_examples.py ROOT PROGRAMS PAGE: holds a documentation page to the examples.

Every block of code follows a line `<!-- FILE -->` and is a passage of that file, indentation aside. Every block of kind
"console" is a line "$ program", one of the examples in the folder PROGRAMS, and exactly what it prints. The page runs
every example.
"""
import pathlib
import re
import subprocess
import sys
import textwrap

CODE = re.compile(r"^(?:<!-- (\S+) -->\n)?```(?:cpp|c)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
CONSOLE = re.compile(r"^```console\n\$ (\S+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def is_passage(block, text):
    wanted = textwrap.dedent(block).splitlines()
    lines = text.splitlines()
    return any(textwrap.dedent("\n".join(lines[i:i + len(wanted)])).splitlines() == wanted for i in range(len(lines)))


def wrong_code(page, root):
    for file, block in CODE.findall(page):
        if not file:
            yield f"code without the file that it is from:\n{block}"
        elif not is_passage(block, (root / file).read_text(encoding="utf-8")):
            yield f"not a passage of {file}:\n{block}"


def wrong_output(page, root, programs):
    examples = {path.stem for path in (root / "examples").iterdir() if path.suffix in {".c", ".cpp"}}
    for program, expected in CONSOLE.findall(page):
        run = subprocess.run([programs / program], text=True, capture_output=True, check=False)
        if (run.returncode, run.stdout + run.stderr) != (0, expected):
            yield f"$ {program} ended with {run.returncode} and prints\n{run.stdout + run.stderr}instead of\n{expected}"
        examples.discard(program)
    for example in sorted(examples):
        yield f"the page does not run {example}"


def main(root, programs, page):
    root = pathlib.Path(root)
    text = pathlib.Path(page).read_text(encoding="utf-8")
    found = list(wrong_code(text, root)) + list(wrong_output(text, root, pathlib.Path(programs)))
    print("\n".join(found) if found else "The page and the examples agree.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
