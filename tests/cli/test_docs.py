"""The console examples of the documentation print what they show.

An example is a block of kind "console": a line "$ command", then exactly what it prints, results before notes. It runs
in the root of the project, with the program found by its name.
"""
import os
import re
import subprocess

import pytest
from harness import ROOT

PAGES = [*ROOT.glob("docs/vexroc*.md"), *(ROOT / "docs" / page for page in ("json.md", "outputs.md", "tutorial.md"))]
EXAMPLE = re.compile(r"^```console\n\$ (.*)\n((?:.*\n)*?)```$", re.MULTILINE)


@pytest.mark.parametrize("page", [page for page in PAGES if EXAMPLE.search(page.read_text(encoding="utf-8"))],
                         ids=lambda page: page.name)
def test_examples_print_what_they_show(vexroc, page):
    environment = {**os.environ, "PATH": f"{vexroc.path.parent}{os.pathsep}{os.environ['PATH']}",
                   "LC_ALL": "C.UTF-8"}  # for the other programs in the commands
    for command, shown in EXAMPLE.findall(page.read_text(encoding="utf-8")):
        result = subprocess.run(command, shell=True, cwd=ROOT, env=environment, encoding="utf-8", capture_output=True,
                                check=False)
        assert result.stdout + result.stderr == shown, command
