"""The table of cases.json: data that mislead or are ordinary, a question, and what every door has to say.

`data` are lines with " / " between them; " *6" behind a line stands for six of it, and the first word may be the name
of one of `tables`. The question is asked of the column `state` with the positive value "ill" and the test `t` unless it
says otherwise. Expected is either `refused`, words that the error has to name; or an answer with exactly these
`cautions`, at least these `notes`, words that stand in their texts (`says`), and right numbers as far as they are
known. A member named after a door replaces what is expected of `doors` names the doors that a question is for.

mtcars.csv (Motor Trend 1974, by Henderson and Velleman 1981), tooth_growth.csv (Crampton 1947) and air_quality.csv (New
York, May and July 1973, by Chambers and others 1983; missing cells are empty here) are data sets of R.
"""
import json
import pathlib
import re
from types import SimpleNamespace
from typing import NamedTuple

HERE = pathlib.Path(__file__).parent
ROOT = HERE.parents[1]
TABLE = json.loads((HERE / "cases.json").read_text(encoding="utf-8"))
DOORS = ("program", "python", "r", "c")
DEFAULTS = {
    "item": 0, "clean": False, "data": None, "file": None, "encoding": "utf-8", "ends": "\n", "times": 1, "copies": 0,
    "read": {}, "options": [], "command": None, "state": "state", "positive": ["ill"], "negative": [], "tests": ["t"],
    "direction": "larger", "group": None, "by": None, "count": None, "weight": None, "weight_kind": None,
    "compare": None, "cases": "pairwise", "interval": "score", "p_value": "mann-whitney", "missing": [], "roc": True,
    "refused": None, "cautions": [], "notes": [], "says": [], "shows": [], "missed": [], "area": None, "p": None,
    "counts": None, "difference": None, "pair": None, "alike": False, "interpolated": False,
}


class Said(NamedTuple):
    """What a door answered. Areas and pairs are dicts of numbers, None where there is none; remarks pairs of code and
    text."""
    refused: str | None
    cautions: list = []
    notes: list = []
    areas: list = []
    pairs: list = []


def about(wanted):
    """A test of those cases only."""
    def mark(function):
        function.wanted = wanted
        return function
    return mark


def listed(value):
    return value if isinstance(value, list) else [value]


def case_for(door, entry):
    """The entry with all its members, as this door has to answer it."""
    case = SimpleNamespace(**{**DEFAULTS, **entry, **entry.get(door, {})})
    case.positive = listed(case.positive)
    case.others = isinstance(case.negative, dict)
    case.negative = [] if case.others else listed(case.negative)
    if case.copies:
        case.tests = [f"t{i}" for i in range(case.copies)]
    return case


def cases_of(door):
    for entry in TABLE["cases"]:
        doors = TABLE["doors"][entry["doors"]][0] if "doors" in entry else " ".join(DOORS)
        if door in doors.split():
            yield case_for(door, entry)


def data_of(case):
    """The bytes of its file."""
    if case.file:
        path = HERE / case.file
        return (path if path.exists() else ROOT / case.file).read_bytes()
    name, _, rest = case.data.partition(" / ")
    lines = (TABLE["tables"].get(name, name) + (" / " + rest if rest else "")).split(" / ")
    rows = []
    for line in lines:
        text, times = re.fullmatch(r"(.*?)(?: \*(\d+))?", line).groups()
        rows += [text] * (int(times) * case.times if times else 1)
    if case.copies:  # one test, many times
        rows = [row + ("," + row.split(",")[1]) * (case.copies - 1) for row in rows]
        rows[0] = ",".join(["state", *case.tests])
    return case.ends.join([*rows, ""]).encode(case.encoding)
