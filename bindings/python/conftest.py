"""What the tests, and the examples in docstrings and pages, start from."""
import pathlib

import pytest
import vexroc

ROOT = pathlib.Path(__file__).parents[2]
EXAMPLES_NEED = {"_display": ["matplotlib"], "python.md": ["matplotlib", "pandas"]}


@pytest.fixture(autouse=True)
def _start(request, doctest_namespace, monkeypatch):
    for part, packages in EXAMPLES_NEED.items():
        for package in packages if part in request.node.nodeid else []:
            pytest.importorskip(package)
    doctest_namespace["vexroc"] = vexroc
    monkeypatch.setenv("MPLBACKEND", "agg")
    monkeypatch.setenv("PYTHONPATH", str(pathlib.Path(vexroc.__file__).parents[1]))
    monkeypatch.chdir(ROOT)
