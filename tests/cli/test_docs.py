"""The examples of the documentation are what the sources hold and print what they show.

A block of kind "console" is a line "$ command", then exactly what it prints, results before notes. It runs in the root
of the project, with the program and the examples of hosts found by their names.
"""
import os
import re
import signal
import subprocess
import textwrap

import pytest
from harness import ROOT

GUIDE = ROOT / "docs/host-guide.md"
PAGES = [ROOT / "README.md", *ROOT.glob("docs/vexroc*.md"),
         *(ROOT / "docs" / page for page in ("json.md", "outputs.md", "tutorial.md"))]
EXAMPLE = re.compile(r"^```console\n\$ (.*)\n((?:.*\n)*?)```$", re.MULTILINE)
CODE = re.compile(r"^(?:<!-- (\S+) -->\n)?```(?:cpp|c)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


@pytest.fixture
def hosts(pytestconfig):
    """The folder of the built examples."""
    return pytestconfig.getoption("--examples") or pytest.skip("the examples are not built")


def check_examples(page, programs):
    """The commands of a page."""
    environment = {**os.environ, "PATH": f"{programs}{os.pathsep}{os.environ['PATH']}",
                   "LC_ALL": "C.UTF-8"}  # for the other programs in the commands
    examples = EXAMPLE.findall(page.read_text(encoding="utf-8"))
    for command, shown in examples:
        result = subprocess.run(command, shell=True, cwd=ROOT, env=environment, encoding="utf-8", capture_output=True,
                                check=False)
        assert result.stdout + result.stderr == shown, command
    return {command for command, _ in examples}


@pytest.mark.parametrize("page", [page for page in PAGES if EXAMPLE.search(page.read_text(encoding="utf-8"))],
                         ids=lambda page: page.name)
def test_examples_print_what_they_show(vexroc, page):
    check_examples(page, vexroc.path.parent)


def test_the_guide_for_hosts_runs_every_example(hosts):
    sources = {path.stem for path in (ROOT / "examples").iterdir() if path.suffix in (".c", ".cpp")}
    assert check_examples(GUIDE, hosts) == sources


def test_code_in_the_guide_is_a_passage_of_the_file_named_above_it():
    for file, block in CODE.findall(GUIDE.read_text(encoding="utf-8")):
        wanted = textwrap.dedent(block).splitlines()
        lines = (ROOT / file).read_text(encoding="utf-8").splitlines()
        assert any(textwrap.dedent("\n".join(lines[i:i + len(wanted)])).splitlines() == wanted
                   for i in range(len(lines))), f"{file or 'no file'}:\n{block}"


def test_an_interrupt_cancels_the_example(hosts):
    """It announces its progress in more text than a pipe holds, so that it cannot end while nobody reads."""
    with subprocess.Popen([f"{hosts}/progress_and_cancel", "20000000"], stdout=subprocess.PIPE, text=True) as run:
        run.stdout.readline()
        run.send_signal(signal.SIGINT)
        last = run.stdout.readlines()[-1]
    assert (run.returncode, last) == (130, "cancelled, no results\n")
