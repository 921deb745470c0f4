"""What the shells themselves complete, and the manual pages as a linter reads them."""
import os
import re
import shutil
import subprocess

import pytest
from harness import ROOT

# What shows the completions of $1, of the files in the folder $3. zsh shows them in a terminal, up to the pattern $2.
COMPLETE = {
    "bash": ["bash", "-c", """source "$3/vexroc.bash"
        IFS='|' read -ra COMP_WORDS <<<"$1|" # "|" ends the words that the shell makes of the line
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _vexroc vexroc
        echo "${COMPREPLY[*]}" """, "bash"],
    "fish": ["fish", "--no-config", "-c", "source $argv[3]/vexroc.fish; complete -C $argv[1]"],
    "zsh": ["zsh", "-f", "-c", r"""zmodload zsh/zpty; zpty shell zsh -f -i
        zpty -w shell "PS1=; autoload -Uz compinit && compinit -D -u && source $3/_vexroc && echo sour""ced"
        zpty -r shell said "*sourced*"
        zpty -w -n shell "$1"$'\t\n'; zpty -r shell said "*$2*"; print -r -- "$said" """, "zsh"],
}
CASES = """
bash: vexroc|au -> ^auc$
bash: vexroc|auc|--bi -> ^--bi-negative$
bash: vexroc|help|cur -> ^curve$
bash: vexroc|auc|x|--state| -> ^$
bash: vexroc|auc|two -> ^two words.csv$
bash: vexroc|auc|x|--output|=|two -> ^two words.csv$
bash: vexroc|--quiet|--config|x|--progress|=|never|au -> ^auc$
bash: vexroc|auc|--format|=|j -> ^json$
bash: vexroc|auc|x|--delimiter=s -> ^--delimiter=semicolon$
fish: vexroc --quiet comp -> ^compare
fish: vexroc analyze x --compare  -> independent
fish: vexroc auc --sqlite two -> ^two words.csv$
zsh: vexroc --config x --progress ne -> never
zsh: vexroc analyze --compare=ind -> --compare=independent
zsh: vexroc auc two -> words.csv
"""


@pytest.mark.parametrize("shell, typed, pattern", re.findall("(.*?): (.*) -> (.*)", CASES))
def test_the_shell_completes(vexroc, tmp_path, shell, typed, pattern):
    if not shutil.which(shell):
        pytest.skip(f"{shell} is not installed")
    (tmp_path / "two words.csv").touch()
    path = f"{vexroc.path.parent}{os.pathsep}{os.environ['PATH']}"
    shown = subprocess.run([*COMPLETE[shell], typed, pattern, ROOT / "cli/completions"], cwd=tmp_path, timeout=20,
                           env={**os.environ, "PATH": path}, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                           encoding="utf-8", check=False).stdout.strip()
    assert re.search(pattern, shown), shown


def test_the_manual_pages_are_well_formed(vexroc):
    pages = list(vexroc.path.parent.glob("man1/*.1"))
    if not pages or not shutil.which("mandoc"):
        pytest.skip("no manual pages were made, or mandoc is not installed")
    linted = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", *pages], capture_output=True, encoding="utf-8",
                            check=False)
    assert linted.returncode == 0, linted.stdout + linted.stderr
