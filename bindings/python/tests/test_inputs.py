"""What is taken, and what is turned away with which words."""
import decimal

import numpy as np
import pytest
import vexroc

STATES, SCORES = [1, 0, 1, 0, 1, 0], [5.0, 1.0, 4.0, 4.0, 3.0, 2.0]
NAN = float("nan")


def nullable(values, dtype):
    return pytest.importorskip("pandas").Series(values, dtype=dtype)


@pytest.mark.parametrize("states, pos_label", [
    (np.array(STATES, dtype=bool), None),
    ([1, -1, 1, -1, 1, -1], None),
    (np.array(STATES[::-1])[::-1], 1),
    ([0, 1, 0, 1, 0, 1], 0),
    (["ill", "well"] * 3, "ill"),
    (np.array(["ill", "well"] * 3), "ill"),
    (lambda: nullable(STATES, "Int64"), None),
    (lambda: nullable(STATES, "boolean"), True),
    (np.array(STATES, dtype=bool), "True"),
    (lambda: nullable(["ill", "well"] * 3, "category"), "ill"),
    (lambda: nullable(["ill", "well"] * 3, "string"), "ill"),
    (np.array(["2020-02-01", "2021-02-01"] * 3, "M8[D]"), "2020-02-01"),
    (np.ma.masked_array(["ill", "well"] * 3), "ill"),
])
@pytest.mark.parametrize("scores", [
    [int(score) for score in SCORES],
    tuple(map(decimal.Decimal, SCORES)),
    np.array(SCORES, dtype=np.float32),
    np.repeat(SCORES, 2)[::2],
    np.ma.masked_array(SCORES),
    lambda: nullable(SCORES, "Float64"),
    lambda: nullable(SCORES, "category"),
    lambda: nullable(list("zbyyxa"), pytest.importorskip("pandas").CategoricalDtype(list("baxyz"), ordered=True)),
])
def test_every_kind_of_column_gives_the_same_area(states, pos_label, scores):
    states, scores = (column() if callable(column) else column for column in (states, scores))
    area = vexroc.auc(states, scores, pos_label=pos_label)
    assert (area.area, area.n_positive, area.n_negative) == (7.5 / 9, 3, 3)


@pytest.mark.parametrize("states, scores", [
    ([*STATES, None, 1], [*SCORES, 9, NAN]),
    ([*STATES, NAN, 0], [*SCORES, 9, None]),
    (np.ma.masked_array([*STATES, 1, 1], [0] * 6 + [1, 0]), np.ma.masked_array([*SCORES, 9, 9], [0] * 7 + [1])),
    (lambda: nullable([*STATES, None, 1], "boolean"), lambda: nullable([*SCORES, 9, None], "Float64")),
    (lambda: nullable([*STATES, None, 1], object), lambda: nullable([*SCORES, 9, None], object)),
])
def test_missing_values_are_told_or_left_out(states, scores):
    states, scores = (column() if callable(column) else column for column in (states, scores))
    with pytest.raises(ValueError, match="y_true has 1 missing value, the first at position 6; .*nan_policy='omit'"):
        vexroc.auc(states, scores)
    area = vexroc.auc(states, scores, nan_policy="omit")
    assert (area.area, area.n_omitted) == (7.5 / 9, 2)
    assert vexroc.roc_curve(states, scores, nan_policy="omit").n_omitted == 2


@pytest.mark.parametrize("states, scores, options, error, message", [
    (STATES, SCORES[1:], {}, ValueError, "y_true has 6 values, y_score has 5 values"),
    (STATES, np.ones((6, 2)), {}, ValueError, r"y_score has shape \(6, 2\).*scores\[:, 1\]"),
    (STATES, [[1], [1, 2]], {}, ValueError, "y_score is ragged"),
    (STATES, 5.0, {}, ValueError, r"y_score has shape \(\).*give a list"),
    (STATES, list("abcdef"), {}, TypeError, "y_score has 'a' .* at position 0"),
    (STATES, np.array(SCORES) * 1j, {}, TypeError, "y_score holds complex128"),
    (STATES, [2**60 + i for i in range(6)], {}, ValueError, r"integers beyond 2\*\*53"),
    (STATES, np.arange(6, dtype=np.uint64) + 2**63, {}, ValueError, r"integers beyond 2\*\*53"),
    (STATES, [2**53 + 1, 2**53, 1, 2, 3, 4], {}, ValueError, r"9007199254740993 at position 0"),
    (STATES, [2**53, 2**53 + 1, 1, 2, 3, 0.5], {}, ValueError, r"9007199254740993 at position 1"),
    (STATES, np.array([1, 2, 3, 4, 5, 10**400], object), {}, ValueError, r"integers beyond 2\*\*53"),
    (STATES, np.arange(6) + np.longdouble(2)**-60, {}, ValueError, "longdouble values .* the first at position 1"),
    (STATES, lambda: nullable(list("abcdef"), "category"), {}, TypeError, "without an order, such as 'a'"),
    (STATES, ["3", "1", "<5", "1", "2", "0"], {}, TypeError, "y_score has '<5' .* at position 2; replace it by"),
    ([1, 2] * 3, SCORES, {}, ValueError, '"1" .3., "2" .3.*say pos_label=1 or pos_label=2'),
    (["ill", "well"] * 3, SCORES, {"pos_label": 1}, ValueError, 'never holds "1"; it holds "ill" .3., "well" .3.'),
    ([True, False] * 3, SCORES, {"pos_label": "ill"}, ValueError, 'it holds "False" .3., "True" .3.'),
    (["ill", "well", "dead"] * 2, SCORES, {"pos_label": "ill"}, ValueError, 'pos_label="ill", neg_label="dead" or'),
    (["ill", "well", "dead"] * 2, SCORES, {"pos_label": ["ill", "dead"], "neg_label": "Well"}, ValueError, '"Well"'),
    (["ill", "well"] * 3, SCORES, {"pos_label": "ill", "neg_label": "others"}, ValueError, 'never holds "others"'),
    (np.array([{}] * 6), SCORES, {}, TypeError, "y_true has {} .*at position 0, which cannot be a label"),
    ([1j, 2j] * 3, SCORES, {"pos_label": 3}, ValueError, 'it holds "1j" .3., "2j" .3.'),
    (np.array(["2020", "2021"] * 3, "M8[Y]"), SCORES, {}, ValueError, 'pos_label="2021-01-01"'),
    (np.linspace(0, 1, 20), [0, 1] * 10, {"pos_label": 1, "neg_label": vexroc.OTHERS}, ValueError, "swapped"),
    (lambda: nullable(STATES, "int"), lambda: nullable(SCORES, "float").rename(lambda row: row + 1), {}, ValueError,
     r"another order.*y_score.reindex\(y_true.index\).*y_score.to_numpy\(\)"),
    (STATES, SCORES, {"pos_label": {}}, TypeError, "pos_label=.* is no single label"),
    (STATES, SCORES, {"pos_label": NAN}, ValueError, "pos_label=nan is a missing value"),
    (STATES, SCORES, {"confidence_level": "0.95"}, TypeError, r"confidence_level='0.95' \(str\) is no number"),
    (STATES, SCORES, {"direction": "bigger"}, ValueError, "direction='bigger' is not known; use 'larger' or 'smaller'"),
    (STATES, SCORES, {"confidence_level": 95}, ValueError, "confidence_level=95 is not between 0 and 1"),
    (STATES, SCORES, {"nan_policy": "drop"}, ValueError, "nan_policy='drop'"),
])
def test_what_does_not_fit_is_turned_away(states, scores, options, error, message):
    states, scores = (column() if callable(column) else column for column in (states, scores))
    with pytest.raises(error, match=message):
        vexroc.auc(states, scores, **options)


def test_more_cases_than_the_library_counts_are_turned_away():
    many = np.broadcast_to(np.float64(1), 2**31)
    with pytest.raises(ValueError, match="has 2147483648 values; the library counts up to 2147483647"):
        vexroc._inputs.check_lengths({"y_true": many, "y_score": many})


@pytest.mark.parametrize("states, options, cases", [
    (["ill", "Ill", "well", "", "n/a", "dead"], {"pos_label": ["ill", "Ill"], "neg_label": "well"}, (2, 1, 3)),
    (["ill", "Ill", "well", "", "n/a", "dead"], {"pos_label": "ill", "neg_label": vexroc.OTHERS}, (1, 3, 2)),
    (["ill", "na", "well", "NA", "x", "x"], {"pos_label": "ill", "neg_label": "NA"}, (1, 1, 4)),
    (["ill", "well", "ill", "well", "?", "x"], {"pos_label": "ill", "missing": ["x"]}, (2, 2, 2)),
    (["ill", "NULL", "ill", "NULL", "ill", "ill"], {"pos_label": "ill", "missing": False}, (4, 2, 0)),
    (["1", "1.0", "+1", "2", "2e0", "02"], {"pos_label": 1, "neg_label": 2}, (3, 2, 1)),
    ([9007199254740993, 9007199254740992, 1, 1, 1, 1], {"pos_label": 9007199254740993, "neg_label": 1}, (1, 4, 1)),
    ([1.5, 1.5, 2.0, 3.0, NAN, 2.0], {"pos_label": 1.5, "neg_label": [2, 3]}, (2, 3, 1)),
])
def test_labels_make_the_states_that_are_asked_for(states, options, cases):
    area = vexroc.auc(states, SCORES, nan_policy="omit", **options)
    assert (area.n_positive, area.n_negative, area.n_omitted) == cases
    assert ("left-out" in {note.code for note in area.notes}) == (area.n_omitted > 0)


def test_cautions_warn_where_the_call_is_and_stay_in_the_result():
    few = [[1, 0, 1, 0, 1], [5, 1, 4, 4, 3]]
    for call in (lambda: vexroc.auc(*few, interval="wald"), lambda: vexroc.roc_curve(*few),
                 lambda: vexroc.pr_curve(*few),
                 lambda: vexroc.compare_paired(*few, few[1]), lambda: vexroc.compare_independent(*few, *few),
                 lambda: vexroc.partial_auc(*few, fpr=(0, 0.5)),
                 lambda: vexroc.analyze({"y": few[0], "t": few[1]}, state="y", tests="t", p_method="wald")):
        with pytest.warns(vexroc.CautionWarning) as caught:
            result = call()
        assert [(one.message.code, str(one.message)) for one in caught] == [
            (caution.code, caution.text) for caution in result.cautions]
        assert f"\ncaution: {result.cautions[0].text}" in repr(result)
        assert result.cautions[0].code == "few-cases" and {one.filename for one in caught} == {__file__}
    wrong = vexroc.auc(np.tile([0, 1], 20), np.tile([2, 1, 4, 3], 10), direction="larger")
    assert [caution.code for caution in wrong.cautions] == ["below-chance"]
    assert wrong.cautions[0].text.endswith('direction={"y_score": "smaller"}')
    for call in vexroc.best_threshold, vexroc.pr_auc, vexroc.confusion_at_thresholds:
        assert call(np.tile([0, 1], 20), np.tile([2, 1, 4, 3], 10)).cautions == wrong.cautions
    mapped = vexroc.auc(np.tile([0, 1], 20), np.tile([2, 1, 4, 3], 10), direction={"y_score": "smaller"})
    assert not mapped.cautions and mapped.area == 1 - wrong.area
    perfect = vexroc.auc([0] * 12 + [1] * 12, range(24), interval="wald", p_method="wald")
    assert perfect.area == 1 and [caution.code for caution in perfect.cautions] == ["zero-error"]
    assert not vexroc.auc([0] * 12 + [1] * 12, range(24)).cautions  # its default rules need no standard error
    classes = vexroc.auc([0, 1] * 20, [0, 1, 1, 1] * 10)
    assert [note.code for note in classes.notes] == ["two-values"] and "\nnote: area of a yes/no test" in repr(classes)


def test_an_absent_state_is_named_and_gives_no_points_and_nan():
    for states, absent in ([1, 1, 1], "no-negative"), ([0, 0, 0], "no-positive"), ([], "no-case"):
        area, curve = vexroc.auc(states, range(len(states))), vexroc.roc_curve(states, range(len(states)))
        assert [[caution.code for caution in result.cautions] for result in (area, curve)] == [[absent]] * 2
        assert len(curve.fpr) == len(vexroc.pr_curve(states, range(len(states))).recall) == 0 and np.isnan(float(area))
        with pytest.raises(ValueError, match="nothing to draw: .* 0 (positive|negative)|0 negative"):
            vexroc.RocCurveDisplay(curve).plot()
