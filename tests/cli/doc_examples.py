"""doc_examples.py PROGRAM ROOT PAGE...: runs the console examples of documentation pages and compares what they show.

An example is a block of kind "console": a line "$ command", then exactly what it prints, results before notes. Examples
run in ROOT, with PROGRAM found by its name.
"""
import os
import re
import subprocess
import sys


def printed(command, program, root):
    path = os.path.dirname(os.path.abspath(program)) + os.pathsep + os.environ["PATH"]
    result = subprocess.run(command, shell=True, cwd=root, env={**os.environ, "PATH": path}, text=True,
                            capture_output=True, check=False)
    return result.stdout + result.stderr


def main(program, root, *pages):
    examples, wrong = 0, 0
    for page in pages:
        with open(page, encoding="utf-8") as text:
            blocks = re.findall(r"^```console\n\$ (.*)\n((?:.*\n)*?)```$", text.read(), re.MULTILINE)
        for command, expected in blocks:
            examples += 1
            actual = printed(command, program, root)
            if actual != expected:
                wrong += 1
                print(f"{page}: $ {command}\nshows:\n{expected}prints:\n{actual}")
    print(f"{examples} examples, {wrong} wrong")
    return 1 if wrong or not examples else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
