"""The whole analysis of a table."""
import _thread
import copy
import multiprocessing
import signal
import subprocess
import sys
import threading

import numpy as np
import pytest
import vexroc

RANDOM = np.random.default_rng(7)
SICK = RANDOM.integers(0, 2, 400)
TABLE = {"sick": np.where(SICK, "yes", "no"), "sex": RANDOM.choice(["f", "m"], 400),
         "age": RANDOM.integers(20, 80, 400),
         "a": (SICK + RANDOM.normal(size=400)).round(1), "b": SICK + RANDOM.normal(size=400),
         "n": RANDOM.integers(1, 4, 400)}
OPTIONS = {"state": "sick", "pos_label": "yes"}


@pytest.mark.parametrize("direction", ["larger", "smaller"])
def test_records_agree_with_the_array_calls(direction):
    pandas = pytest.importorskip("pandas")
    result = vexroc.analyze(pandas.DataFrame(TABLE), tests=["a", "b"], comparison="paired", weight="n",
                            precision_recall=True, direction=direction, **OPTIONS)
    paired = vexroc.compare_paired(SICK, TABLE["a"], TABLE["b"], direction=direction)
    assert result.comparisons == (paired,)
    assert [pair.name for pair in result.compared[0]] == ["a", "b"]
    for record in result.records:
        curve = vexroc.roc_curve(SICK, TABLE[record.test], direction=direction)
        points = vexroc.pr_curve(SICK, TABLE[record.test], direction=direction)
        for name in ("fpr", "tpr", "thresholds"):
            np.testing.assert_array_equal(getattr(record.roc, name), getattr(curve, name))
        for name in ("precision", "recall", "thresholds", "interpolated"):
            np.testing.assert_array_equal(getattr(record.precision_recall, name), getattr(points, name))
        assert record.ks_maximum == pytest.approx((curve.tpr - curve.fpr).max())
        assert record.weighted_positive == TABLE["n"][SICK == 1].sum()
    assert "weight-counts-only" in {caution.code for caution in result.cautions}
    assert [record.ties for record in result] == [True, False]
    prevalence, = result.notes
    assert prevalence.code == "sample-prevalence" and f"note: {prevalence.text}" in repr(result)


def test_a_pair_is_compared_where_both_are_known_and_no_record_changes_for_it():
    table = {**TABLE, "a": np.where(np.arange(400) % 3, TABLE["a"], np.nan), "c": -TABLE["b"]}
    options = {"tests": ["a", "b", "c"], "comparison": "paired", "nan_policy": "omit",
               "direction": {"c": "smaller"}, **OPTIONS}
    result = vexroc.analyze(table, **options)
    assert [record.area for record in result] == [
        vexroc.auc(SICK, table["a"], nan_policy="omit"), *[vexroc.auc(SICK, table["b"])] * 2]
    pair = vexroc.compare_paired(SICK, table["a"], table["c"], direction={"y_score_2": "smaller"}, nan_policy="omit",
                                 interval="wald-delong")
    assert result.comparisons[1].difference == pair.difference
    assert result.comparisons[1].first is result["a"].area and result.comparisons[1].second.ci_lower == pytest.approx(
        pair.second.ci_lower, abs=1e-15)
    assert result.comparisons[2].difference == 0 and result.comparisons[2].second is result["c"].area
    complete = vexroc.analyze(table, **{**options, "cases": "complete"})
    assert {record.area.n_omitted for record in complete} == {pair.first.n_omitted} and "costly-test" in {
        note.code for note in complete.notes}


def test_counts_are_repeated_rows():
    repeated = {name: np.repeat(column, TABLE["n"]) for name, column in TABLE.items()}
    for options in {"comparison": "paired"}, {"group": "sex", "comparison": "independent"}:
        options.update(tests=["a", "b"], **OPTIONS)
        counted, whole = vexroc.analyze(TABLE, count="n", **options), vexroc.analyze(repeated, **options)
        assert counted.comparisons == whole.comparisons and counted.notes == whole.notes
    with pytest.raises(ValueError, match="count"):
        vexroc.analyze(TABLE, count="n", weight="n", tests="a", **OPTIONS)


@pytest.mark.parametrize("split, first, names", [
    ({"group": "sex"}, TABLE["sex"] == "f", ["sex == f", "sex == m"]),
    ({"group": "sex", "group_values": ("m", "f")}, TABLE["sex"] == "m", ["sex == m", "sex == f"]),
    ({"group": "category"}, TABLE["sex"] == "m", ["category == m", "category == f"]),
    ({"group": "age", "group_cut": 50}, TABLE["age"] < 50, ["age < 50", "age >= 50"]),
    ({"group": "age", "group_mid_point": True}, TABLE["age"] < 49.5, ["age < 49.5", "age >= 49.5"]),
])
def test_groups_are_compared_as_independent_samples(split, first, names):
    pandas = pytest.importorskip("pandas")
    table = {**TABLE, "category": pandas.Categorical(TABLE["sex"], ["m", "x", "f"])}
    result = vexroc.analyze(table, tests="a", comparison="independent", **split, **OPTIONS)
    assert [str(record.group) for record in result] == names
    assert [result["a", name] for name in names] == list(result) and result["a"] is result.records[0]
    samples = [column[cases] for cases in (first, ~first) for column in (SICK, TABLE["a"])]
    assert result.comparisons == (vexroc.compare_independent(*samples),)


def test_cases_left_out_are_counted_by_reason():
    table = {name: np.array(column, dtype=object) for name, column in TABLE.items()}
    table["sick"][:2], table["sex"][2:5], table["a"][5:9], table["n"][9], table["n"][10] = None, None, None, 0, 1.5
    table["sex"][11] = "x"
    options = {"tests": ["a", "b"], "group": "sex", "weight": "n", **OPTIONS,
               "group_values": ("f", "m")}
    with pytest.raises(ValueError, match="sick has 2 missing values, the first at position 0"):
        vexroc.analyze(table, **options)
    result = vexroc.analyze(table, nan_policy="omit", **options)
    assert result.omitted == {"missing sick": 2, "missing group sex": 3, "missing a": 4, "other group sex": 1,
                              "unusable weight n: below 1 or beyond 2147483647": 1}
    for record in result:  # every case of a group counts or is left out
        assert record.area.n_positive + record.area.n_negative + record.area.n_omitted == np.count_nonzero(
            table["sex"] == record.group.value)
    assert sum(result["a", sex].area.n_omitted - result["b", sex].area.n_omitted for sex in "fm") == 4
    used = [sum(record.area.n_positive + record.area.n_negative for record in result.records if record.test == test)
            for test in "ab"]
    assert used == [400 - 2 - 3 - 4 - 1 - 1, 400 - 2 - 3 - 1 - 1]
    assert {caution.code for caution in result.cautions} == {"weight-counts-only", "weights-rounded", "weights-dropped"}
    for n in ([*TABLE["n"][:-1], 1.5], [*TABLE["n"][:-1], -1]):
        with pytest.raises(ValueError, match="weight n has .* at position 399.* nan_policy='omit'"):
            vexroc.analyze({**TABLE, "n": n}, tests="a", weight="n", **OPTIONS)


@pytest.mark.parametrize("options, error, message", [
    ({"tests": "c"}, ValueError, "no column 'c'; its columns are 'sick', 'sex'"),
    ({"tests": []}, ValueError, "tests is empty"),
    ({"tests": ("a", "sick")}, ValueError, "tests names the state 'sick'"),
    ({"tests": "a", "group_cut": 1.0}, ValueError, "together with group="),
    ({"tests": b"a"}, ValueError, "no column b'a'"),
    ({"tests": {"a", "b"}}, TypeError, "tests is a set"),
    ({"tests": [["a"]]}, TypeError, r"\['a'\] is a list, no name of a column"),
    ({"tests": "a", "group": "sex", "group_values": {"f", "m"}}, ValueError, "is no list of two values; give"),
    ({"tests": "a", "group": "sex", "group_values": ("f", "f")}, ValueError, "the same value twice"),
    ({"tests": "a", "group": "age", "group_cut": float("nan")}, ValueError, "group_cut is NaN"),
    ({"tests": "a", "group": "age"}, ValueError, "age has the values 20, .* and 50 more; say with group_values="),
    ({"tests": "a", "group": "sex", "group_values": ("f", "w")}, ValueError, "'w' does not occur in sex"),
    ({"tests": "a", "comparison": "independent"}, vexroc.AnalysisError, "needs two groups; name .* group="),
    ({"tests": "a", "comparison": "paired"}, vexroc.AnalysisError, "needs two tests or more"),
    ({"tests": "a", "direction": {"b": "smaller"}}, ValueError, "direction names 'b', which is no test; .* 'a'"),
])
def test_what_does_not_fit_is_turned_away(options, error, message):
    with pytest.raises(error, match=message):
        vexroc.analyze(TABLE, **options, **OPTIONS)


def test_names_of_the_same_text_are_different_columns():
    result = vexroc.analyze({"y": SICK, 1: TABLE["a"], "1": TABLE["b"], ("a", "x"): SICK}, state="y", tests=[1, "1"])
    assert [float(result[name].area) for name in (1, "1")] == [vexroc.auc(SICK, TABLE[name]).area for name in "ab"]
    with pytest.raises(TypeError, match="give a DataFrame or a dict"):
        vexroc.analyze(np.ones((3, 2)), state=0, tests=1)


def test_results_and_errors_survive_a_process_pool():
    with multiprocessing.Pool(1) as pool, pytest.raises(vexroc.AnalysisError, match="two tests") as caught:
        pool.apply(vexroc.analyze, (TABLE,), {"tests": "a", "comparison": "paired", **OPTIONS})
    assert caught.value.code == 430006
    result = copy.deepcopy(vexroc.analyze({**TABLE, "n": TABLE["n"] - 1}, tests="a", weight="n", nan_policy="omit",
                                          **OPTIONS))
    with pytest.raises(TypeError, match="cannot be changed"):
        result.omitted["missing a"] = 1
    with pytest.raises(ValueError, match="read-only"):
        result["a"].roc.fpr[0] = 1
    assert result.omitted and result.to_frame().area.tolist() == [result["a"].area.area]


def test_without_curves_and_bi_negative_the_statistics_stay():
    half = np.concatenate([np.flatnonzero(SICK)[:50], np.flatnonzero(SICK == 0)[:50]])
    for cases, assumption in (half, "bi-negative"), (half[1:], "hanley-mcneil"):
        table = {name: column[cases] for name, column in TABLE.items()}
        result = vexroc.analyze(table, tests="a", roc=False, distribution="bi-negative", **OPTIONS)["a"]
        assert result.roc is None and result.ks_maximum > 0
        assert result.area == vexroc.auc(table["sick"], table["a"], pos_label="yes", distribution="bi-negative")
        assert result.area.error == assumption in repr(result)


LONG = """
import numpy, signal, sys, time, vexroc
signal.signal(signal.SIGINT, signal.default_int_handler)  # a background job would hand down that it is ignored
random = numpy.random.default_rng(1)
table = {"y": random.integers(0, 2, 200_000), **{f"t{i}": random.normal(size=200_000) for i in range(60)}}
def tell(share, records):
    print("running", flush=True)
start = time.process_time()
try:
    vexroc.analyze(table, state="y", tests=list(table)[1:], comparison="paired", progress=tell)
except KeyboardInterrupt:
    print("interrupted after", time.process_time() - start)
"""


def test_interrupt_ends_a_run_at_once():
    with subprocess.Popen([sys.executable, "-c", LONG], stdout=subprocess.PIPE, text=True) as process:
        assert process.stdout.readline() == "running\n"
        process.send_signal(signal.SIGINT)
        last = process.stdout.read().splitlines()[-1]
    assert last.startswith("interrupted after") and float(last.split()[-1]) < 1  # second; all 1770 pairs take many


def test_progress_comes_in_the_calling_thread_and_may_end_the_run():
    told = []
    vexroc.analyze(TABLE, tests="a", progress=lambda *event: told.append((*event, threading.get_ident())), **OPTIONS)
    assert told[-1] == (1.0, 400, _thread.get_ident()) and told == sorted(told)

    def stop(share, records):
        raise LookupError("enough")
    with pytest.raises(LookupError, match="enough"):
        vexroc.analyze(TABLE, tests="a", progress=stop, **OPTIONS)
