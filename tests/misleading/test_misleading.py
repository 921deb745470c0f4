"""Nobody is misled: every case of the table is refused, or answered with all that has to be said and no word more."""
import math

import pytest
from table import about


def codes(remarks):
    return {code for code, _ in remarks}


def as_list(value):
    return value if isinstance(value, list) else [value]


def check_refusal(case, said):
    assert said.refused is not None, said
    for word in case.refused:
        assert word in said.refused


def check_absent(case, said):
    """The error says which cases there are none of."""
    for code in case.missed:
        assert code.replace("-", " ") in said.refused


def check_remarks(case, said):
    assert codes(said.cautions) == {*case.cautions, *case.missed}, said
    assert codes(said.notes) >= set(case.notes), said
    once = [code for code, _ in said.cautions + said.notes]
    assert len(once) == len(set(once)), said
    texts = "\n".join(text for _, text in said.cautions + said.notes)
    for word in case.says:
        assert word in texts
    if case.clean:
        assert len(said.notes) <= 1, said.notes


def check_numbers(case, said):
    if case.area is not None:
        areas = [area["area"] for area in said.areas]
        assert [area if area is None else round(area, 4) for area in areas] == as_list(case.area) * (case.copies or 1)
    if case.p is not None:
        assert round(said.areas[0]["p_value"], 4) == case.p
    if case.counts is not None:
        assert [said.areas[0][state] for state in ("positive", "negative")] == case.counts
    if case.difference is not None:
        assert round(said.pairs[0]["difference"], 4) == case.difference
    if case.pair is not None:
        assert [said.pairs[0][state] for state in ("positive", "negative")] == case.pair


def check_p(value, distance, error):
    """Of a normal z: its tail. No p where there is no error; one by an error of 0 tells all or nothing."""
    if error is None or error == 0:
        assert value["p_value"] in (None, 0, 1)
    else:
        z = abs(distance) / error
        assert value["p_value"] == pytest.approx(math.erfc(z / math.sqrt(2)), rel=1e-12, abs=0)
        tail = -z * z / 2 / math.log(10)
        assert tail - 0.4 - math.log10(1 + z) < value["log10_p"] <= min(0, tail + 0.31)


@about(lambda case: not case.shows)
def test_says(case, door):
    said = door.answer(case)
    if case.refused is not None:
        return check_refusal(case, said)
    if case.missed and said.refused:  # a door may as well end with it
        return check_absent(case, said)
    assert said.refused is None, said.refused
    check_remarks(case, said)
    check_numbers(case, said)
    for area in said.areas:
        if area["area"] is not None and case.p_value == "wald":
            check_p(area, area["area"] - 0.5, area["std_error"])
