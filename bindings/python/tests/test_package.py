"""The package as it is installed: library, pictures, wheel."""
import ctypes
import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest
import vexroc
from vexroc import _structures

ROOT = pathlib.Path(__file__).parents[3]


def run(*command, **environment):
    return subprocess.run(command, env={**os.environ, **environment}, text=True, capture_output=True, check=False)


def test_versions_of_package_and_library_agree():
    assert vexroc.__version__ == vexroc.library_version()


@pytest.mark.parametrize("path, reason", [("/nowhere/lib.so", "cannot open"), ("libm.so.6", "undefined symbol")])
def test_a_library_that_does_not_do_is_told_with_what_was_tried(path, reason):
    result = run(sys.executable, "-c", "import vexroc", VEXROC_LIBRARY=path)
    assert result.returncode == 1
    assert re.search(rf"(?s)Tried:.*{path} \(from the environment variable VEXROC_LIBRARY\): .*{reason}", result.stderr)


def test_structures_are_those_of_the_headers(tmp_path):
    """Sizes, and where the members of the same name lie, by the C compiler."""
    compiler = shutil.which("cc")
    if compiler is None:
        pytest.skip("there is no C compiler")
    kinds = {"inference_options": _structures.InferenceOptions, "summary_facts": _structures.SummaryFacts,
             "area_result": _structures.AreaInference, "operating_columns": _structures.OperatingColumns,
             "best_result": _structures.BestResult, "rate_result": _structures.RateResult,
             "partial_result": _structures.PartialResult, "pr_result": _structures.PrAreaResult,
             "calibration_result": _structures.CalibrationResult, "record": _structures.RecordResult,
             "comparison": _structures.PairResult, "rows": _structures.RowsResult, "remark": _structures.RemarkResult,
             "area_facts": _structures.AreaFacts}
    measures = [(f"sizeof(vexroc_{name})", ctypes.sizeof(kind)) for name, kind in kinds.items()]
    for name, kind in kinds.items():
        measures += [(f"offsetof(vexroc_{name}, {part[0].removeprefix('n_')})", getattr(kind, part[0]).offset)
                     for part in kind._fields_ if part[0] != "ks_threshold"]
    (tmp_path / "sizes.c").write_text("#include <vexrocproc/inference.h>\n" + "".join(
        f'_Static_assert({measure} == {value}, "{measure}");\n' for measure, value in measures))
    made = run(compiler, "-std=c11", "-fsyntax-only", "-I", ROOT / "include", tmp_path / "sizes.c")
    assert made.returncode == 0, made.stderr


def test_pictures_show_the_curves_and_may_share_axes():
    pytest.importorskip("matplotlib")
    states, scores = [1, 0, 1, 0, 1], [5, 1, 4, 4, 3]
    roc = vexroc.RocCurveDisplay.from_predictions(states, scores, name="a", color="red")
    assert roc.line_.get_xydata().tolist() == list(map(list, zip(roc.curve.fpr, roc.curve.tpr)))
    assert roc.line_.get_color() == "red" and roc.area == vexroc.auc(states, scores)
    other = vexroc.RocCurveDisplay.from_predictions(states, scores, name="b", ax=roc.ax_)
    assert other.ax_ is roc.ax_ and len(roc.ax_.lines) == 3  # two curves, one chance line
    pr = vexroc.PrecisionRecallDisplay(vexroc.pr_curve(states, scores)).plot()
    assert pr.line_.get_xdata().tolist() == pr.curve.recall.tolist()


def test_types_are_complete(tmp_path):
    pytest.importorskip("mypy", reason="python3-mypy is missing")
    checked = subprocess.run([sys.executable, "-m", "mypy", "--cache-dir", tmp_path], cwd=ROOT / "bindings/python",
                             text=True, capture_output=True, check=False)
    assert checked.returncode == 0, checked.stdout


@pytest.mark.skipif(not os.environ.get("VEXROC_BUILD"), reason="no complete release build to make a wheel of")
def test_wheel_works_in_an_environment_of_its_own(tmp_path):
    for module, package in ("build.__main__", "build"), ("wheel", "wheel"), ("ensurepip", "venv"):
        pytest.importorskip(module, reason=f"python3-{package} is missing")
    made = run(ROOT / "tools/build_wheel.sh", tmp_path, os.environ["VEXROC_BUILD"])
    assert made.returncode == 0, made.stdout + made.stderr
    wheel, = tmp_path.glob("vexroc-*-py3-none-linux_*.whl")
    for command in ((sys.executable, "-m", "venv", "--system-site-packages", tmp_path / "venv"),
                    (tmp_path / "venv/bin/pip", "install", "--quiet", "--no-index", wheel)):
        done = run(*command)
        assert done.returncode == 0, done.stdout + done.stderr
    example = "import vexroc; print(vexroc.__file__, vexroc.auc([1, 0, 1, 0], [4, 2, 3, 3]).area)"
    environment = {name: value for name, value in os.environ.items() if name not in ("VEXROC_LIBRARY", "PYTHONPATH")}
    shown = subprocess.run([tmp_path / "venv/bin/python", "-c", example], env=environment, cwd=tmp_path, text=True,
                           capture_output=True, check=False)
    assert shown.stdout.startswith(str(tmp_path)) and shown.stdout.endswith(" 0.875\n"), shown.stderr
    told = subprocess.run([tmp_path / "venv/bin/python", "-c", "import vexroc"], cwd=tmp_path, text=True,
                          env={**environment, "VEXROC_LIBRARY": "/other.so"}, capture_output=True, check=False)
    assert "VEXROC_LIBRARY=/other.so is not used: the package has a library of its own" in told.stderr
