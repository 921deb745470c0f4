"""The whole analysis: many tests, groups, weights, comparisons, both curves, progress and Ctrl-C."""
from __future__ import annotations

import functools
import math
from collections import Counter
from collections.abc import Iterable
from collections.abc import Set as AbstractSet
from typing import Any, Literal

import numpy as np

from ._aside import Progress
from ._cases import Directions, check_probabilities
from ._curves import CUT_OFFS, INTERPOLATIONS, CutOff, Interpolation
from ._handle import Handle, area_of, comparison_of
from ._inputs import (MAX_CASES, Floats, NanPolicy, check_directions, check_lengths, check_number, check_order,
                      check_word, complete_cases, is_hashable, to_numbers)
from ._labels import to_groups, to_states
from ._library import library, normal_p
from ._options import Alternative, AreaQuestion, Distribution, Exact, Interval, PMethod, area_question
from ._remarks import RemarkList
from ._results import (Analysis, Area, Comparison, Counts, Group, PrecisionRecallCurve, Record, RocCurve, frozen,
                       number, pr_curve_of)
from ._structures import AreaResult, PairResult, RecordResult, RowsResult

ComparisonKind = Literal["none", "independent", "paired"]
PairCases = Literal["pairwise", "complete"]
WeightKind = Literal["unsaid", "counts", "probability"]


class _Request:
    """The checked columns and settings of one analysis."""

    def __init__(self, data: Any, state: Any, tests: Any, group: Any, weight: Any, count: Any,
                 are_probabilities: bool):
        if isinstance(data, np.ndarray) and data.dtype.names is None:
            raise TypeError("data is an array, whose columns have no names; give a DataFrame or a dict of arrays")
        self.data = data
        self.are_probabilities = are_probabilities
        tests = self._names(tests)
        for name in (state, *tests, group, weight, count):
            if not is_hashable(name):
                raise TypeError(f"{name!r} is a {type(name).__name__}, no name of a column; give the name of one")
        if state in tests:
            raise ValueError(f"tests names the state {state!r}; a test is another column")
        self.tests = tests
        given = {"state": state, "group": group, "weight": weight, "count": count}
        self.parts = {part: name for part, name in given.items() if name is not None}
        used = dict.fromkeys([*self.parts.values(), *tests])
        alike = Counter(map(str, used))
        self.texts = {name: str(name) if alike[str(name)] == 1 else repr(name) for name in used}
        self.group_labels: list[Any] | None = None

    def _names(self, tests: Any) -> list[Any]:
        if isinstance(tests, AbstractSet):
            raise TypeError("tests is a set, which has no order; give a list of names")
        one = isinstance(tests, (str, bytes)) or not isinstance(tests, Iterable)
        one = one or (isinstance(tests, tuple) and is_hashable(tests) and tests in self._columns())
        names = [tests] if one else list(tests)
        if not names:
            raise ValueError("tests is empty; name one column at least")
        return names

    def _columns(self) -> list[Any]:
        """Names of the columns, where the data tell them."""
        names = getattr(self.data, "columns", None)
        names = self.data.keys() if names is None and hasattr(self.data, "keys") else names
        return [] if names is None else list(names)

    def values(self, name: Any) -> Any:
        try:
            return self.data[name]
        except (KeyError, IndexError, ValueError):
            names = self._columns()
            known = "; its columns are " + ", ".join(map(repr, names)) if names else ""
            raise ValueError(f"data has no column {name!r}{known}") from None
        except TypeError:
            raise TypeError(f"data is a {type(self.data).__name__}; give a DataFrame or a dict of arrays") from None

    def load(self, labels: tuple[Any, Any, Any], group_values: Any, splits_by_number: bool, nan_policy: NanPolicy,
             remarks: RemarkList) -> None:
        """Reads the columns; with nan_policy "omit" the library leaves out what is missing."""
        check_order({self.texts[name]: self.values(name) for name in self.texts})
        self.test_columns = {name: to_numbers(self.texts[name], self.values(name)) for name in self.tests}
        self.required: dict[str, Floats] = {}
        for part, name in self.parts.items():
            text, values = self.texts[name], self.values(name)
            if part == "state":
                states = to_states(text, values, *labels, remarks)
                self.required[part], self.has_other_states = states.column, states.have_others()
            elif part == "group" and not splits_by_number:
                self.required[part], self.group_labels = to_groups(text, values, group_values, labels[2], remarks)
            else:
                self.required[part] = to_numbers(text, values)
        named = {self.texts[name]: column for name, column in self.test_columns.items()}
        required = {self.called(part): column for part, column in self.required.items()}
        check_lengths({**required, **named})
        if self.are_probabilities and "weight" in self.parts:
            check_probabilities(self.called("weight"), self.required["weight"])
        if nan_policy != "omit":
            complete_cases(required, nan_policy)
            complete_cases(named, nan_policy)
            if "weight" in self.parts and not self.are_probabilities:
                _check_weights(self.called("weight"), self.required["weight"])

    def called(self, part: str) -> str:
        """How messages call the column that plays the part."""
        return ("" if part == "state" else part + " ") + self.texts[self.parts[part]] if part in self.parts else part

    def add_to(self, handle: Handle, directions: dict[Any, str]) -> list[Any]:
        """Adds the columns; the name of each."""
        for part, values in self.required.items():
            index = handle.add(self.texts[self.parts[part]], values, part)
            if part == "state" and self.has_other_states:
                handle.call("add_negative", 0.0)
            for code, label in enumerate(self.group_labels or ()) if part == "group" else ():
                handle.call("name_value", index, float(code), str(label).encode(errors="replace"))
        for name in self.tests:
            index = handle.add(self.texts[name], self.test_columns[name], "test")
            handle.call("set_direction", index, directions[name].encode())
        return [*self.parts.values(), *self.tests]

    def omitted(self, rows: RowsResult, missing_tests: dict[Any, int]) -> Counter[str]:
        """Rows that were left out, of all tests or of one, by reason."""
        state, group, weight, count = map(self.called, ("state", "group", "weight", "count"))
        counts: Counter[str] = Counter()
        for reason, number_of_rows in (
                (f"missing {state}", rows.missing_state), (f"neither positive nor negative: {state}", rows.other_state),
                (f"missing {group}", rows.missing_group), (f"missing {weight}", rows.missing_weight),
                (f"missing {count}", rows.missing_count),
                *((f"missing {self.texts[name]}", number_of_rows) for name, number_of_rows in missing_tests.items()),
                (f"unusable {weight}: below 1 or beyond 2147483647", rows.unusable_weight),
                (f"other {group}", rows.other_group)):
            counts[reason] += number_of_rows
        return +counts  # what there is


def _check_weights(name: str, weights: Floats) -> None:
    wrong = (weights < 0) | (weights != np.rint(weights)) | (weights > MAX_CASES)
    if wrong.any():
        position = int(wrong.argmax())
        raise ValueError(f"{name} has {weights[position]:g} at position {position}, which is no number of cases "
                         f"({int(wrong.sum())} such values); correct them, or call with nan_policy='omit', which "
                         "rounds halves up and leaves out what is less than 1 or too large")


def _split(request: _Request, handle: Handle, group_cut: float | None, group_mid_point: bool) -> None:
    if request.group_labels is not None:
        handle.call("set_number", b"group_first", 0.0)
        handle.call("set_number", b"group_second", 1.0)
    elif group_cut is not None:
        handle.call("set_number", b"group_cut", group_cut)
    elif group_mid_point:
        handle.call("set_number", b"group_mid_point", 1.0)


@functools.cache
def _critical_value(level: float) -> float:
    """Standard errors from an estimate to a bound of its interval."""
    return float(library().auc_comparison(AreaResult(std_error=1.0), AreaResult(), level).ci_upper)


class _Reader:
    """Turns what a run left in the handle into results."""

    def __init__(self, handle: Handle, request: _Request, names: list[Any], asked: AreaQuestion, with_roc: bool):
        self.handle, self.request, self.names, self.asked, self.with_roc = handle, request, names, asked, with_roc

    def _group(self, record: RecordResult) -> Group | None:
        if record.group < 0:
            return None
        labels = self.request.group_labels
        value = record.group_value if labels is None else labels[int(record.group_value)]
        return Group(self.request.texts[self.names[record.group]], ("==", ">=", "<")[record.group_operation], value)

    def _roc(self, index: int, record: RecordResult, omitted: int) -> RocCurve:
        thresholds, tpr, specificity = (np.empty(record.curve_rows) for _ in range(3))
        self.handle.call("curve", index, thresholds.ctypes.data, tpr.ctypes.data, specificity.ctypes.data)
        order = slice(None, None, 1 if record.smaller_is_positive else -1)  # ascending by 1 - specificity
        fpr, tpr, thresholds = (frozen(column[order].copy()) for column in (1.0 - specificity, tpr, thresholds))
        return RocCurve(fpr, tpr, thresholds, record.n_positive, record.n_negative, omitted)

    def _precision_recall(self, index: int, record: RecordResult, roc: RocCurve) -> PrecisionRecallCurve:
        precision, recall = np.empty(record.pr_rows), np.empty(record.pr_rows)
        flags = np.empty(record.pr_rows, dtype=np.uint8)
        self.handle.call("precision_recall", index, precision.ctypes.data, recall.ctypes.data, flags.ctypes.data)
        order = slice(None, None, -1 if record.smaller_is_positive else 1)
        interpolated = (flags != 0)[order].copy()
        thresholds = np.empty(record.pr_rows)
        thresholds[~interpolated] = roc.thresholds[::-1]
        return pr_curve_of(precision[order].copy(), recall[order].copy(), thresholds, interpolated, record.n_positive,
                           record.n_negative, roc.n_omitted)

    def record(self, index: int) -> Record:
        r = self.handle.fetch("record", index, RecordResult())
        omitted = self.handle.numbers("record_rows", index)[0] - r.n_positive - r.n_negative
        roc = self._roc(index, r, omitted)
        has_curve = r.ks_maximum != -1.0
        return Record(self.names[r.test], self._group(r), area_of(r, omitted, self.asked),
                      number(r.gini), r.ks_maximum if has_curve else np.nan,
                      number(r.ks_threshold) if has_curve else np.nan, bool(r.ties), number(r.weighted_positive),
                      number(r.weighted_negative), roc if self.with_roc else None,
                      self._precision_recall(index, r, roc) if r.pr_rows else None)

    def _area_in(self, pair: PairResult, area: float, std_error: float, record: Record) -> Area:
        """The area of a record on the cases of a comparison; its own where these are the same, else with DeLong's
        standard error."""
        whole = record.area
        if record.group is not None or (pair.n_positive, pair.n_negative) == (whole.n_positive, whole.n_negative):
            return whole
        half = _critical_value(self.asked.confidence_level) * std_error
        omitted = whole.n_positive + whole.n_negative + whole.n_omitted - pair.n_positive - pair.n_negative
        p_value, log10_p, z = math.nan, math.nan, math.nan
        if std_error != 0:  # of an error of 0 nothing can be said
            z = (area - self.asked.null) / std_error
            p_value, log10_p = normal_p(z, self.asked.alternative)
        lower, upper = (math.nan, math.nan) if std_error == 0 else (area - half, area + half)
        return Area(number(area), number(std_error), number(p_value), number(lower), number(upper), pair.n_positive,
                    pair.n_negative, omitted, self.asked.confidence_level, "wald-delong", pair.error.decode(), "wald",
                    self.asked.alternative, self.asked.null, number(log10_p), number(z))

    def comparison(self, index: int, records: tuple[Record, ...]) -> tuple[Comparison, tuple[Record, Record]]:
        pair = self.handle.fetch("comparison", index, PairResult())
        first, second = records[pair.first], records[pair.second]
        return comparison_of(pair, self._area_in(pair, pair.first_area, pair.first_std_error, first),
                             self._area_in(pair, pair.second_area, pair.second_std_error, second),
                             self.asked.confidence_level), (first, second)

    def analysis(self, remarks: RemarkList) -> Analysis:
        records = tuple(self.record(index) for index in range(self.handle.count("record")))
        compared = [self.comparison(index, records) for index in range(self.handle.count("comparison"))]
        missing = {self.names[column]: sum(self.handle.numbers("missing_test", column))
                   for column in range(len(self.request.parts), len(self.names))}
        self.handle.add_remarks(remarks)
        omitted = Counts(self.request.omitted(self.handle.rows(), missing))
        return Analysis(records, tuple(pair for pair, _ in compared), tuple(both for _, both in compared),
                        *remarks.tell(), omitted)


def analyze(data: Any, *, state: Any, tests: Any, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
            group: Any = None, group_values: Any = None, group_cut: float | None = None,
            group_mid_point: bool = False, weight: Any = None, weight_kind: WeightKind = "unsaid", count: Any = None,
            comparison: ComparisonKind = "none", cases: PairCases = "pairwise", direction: Directions = "larger",
            cut_off: CutOff = "include", distribution: Distribution = "nonparam", interval: Interval | None = None,
            p_method: PMethod | None = None, exact: Exact = "auto", null: float = 0.5,
            alternative: Alternative = "two-sided", n_resamples: int = 1999, random_state: int = 1,
            interpolation: Interpolation = "davis-goadrich", confidence_level: float = 0.95, roc: bool = True,
            precision_recall: bool = False, nan_policy: NanPolicy = "raise",
            progress: Progress | None = None) -> Analysis:
    """Runs a whole analysis over the columns of a table.

    Parameters
    ----------
    data
        A pandas DataFrame, a dict of arrays, or anything else that gives a column of shape (n,) by name.
    state, tests
        Names of the column of states and of the test variables (one name or a list).
    pos_label, neg_label, missing, direction, cut_off
        As in roc_curve. direction may map tests to words: {"b": "smaller"}.
    distribution, interval, p_method, exact, null, alternative, n_resamples, random_state, confidence_level
        As in auc, of every area. The alternative is that of the differences, too, whose errors are those beside the
        areas: DeLong's unless interval is "wald".
    group
        Column that splits the cases in two groups: those with its two values in ascending order (categories in
        theirs), or with the two of group_values (a list), or below and from group_cut on, or below and from the middle
        of its range on (group_mid_point).
    count
        Column of the whole number of cases that each row stands for: the results are those of as many rows.
    weight, weight_kind
        Column of weights. They enter the weighted counts only, not areas, errors and curves: a caution says so unless
        weight_kind is "counts". With "probability" they are inverse sampling probabilities, as sample_weight of auc,
        and move all of them.
    comparison
        "none", "independent" (each test between the groups) or "paired" (all pairs of tests on the same cases).
    cases
        Of a paired comparison. "pairwise": two tests are compared on the cases in which both are known; "complete":
        every test is looked at in the cases in which all are known.
    roc, precision_recall, interpolation
        Which curves the records hold (the Kolmogorov-Smirnov maximum is always there); interpolation as in pr_curve.
    nan_policy
        "raise", also for weights that would be rounded or left out; or "omit": cases without state, group, weight or
        count are left out, a missing test value leaves the case out of that test. ``omitted`` of the result counts
        them by reason.
    progress
        Called with the share of the work done, in [0, 1], and the records read so far. What it raises ends the run.

    Returns
    -------
    Analysis

    Raises
    ------
    AnalysisError
        A ValueError: the data do not allow this analysis.
    ValueError, TypeError
        As in roc_curve, and for columns that are not there.
    KeyboardInterrupt
        Ctrl-C during the run, which ends it before its next record or area.

    Examples
    --------
    >>> data = {"sick": [1, 1, 1, 0, 0, 0], "a": [5, 6, 4, 3, 2, 1], "b": [5, 2, 4, 3, 6, 1]}
    >>> result = vexroc.analyze(data, state="sick", tests=["a", "b"], comparison="paired")
    >>> round(result["b"].ks_maximum, 4), round(result.comparisons[0].difference, 4)
    (0.3333, 0.4444)
    """
    words = {"cut_off": check_word("cut_off", cut_off, CUT_OFFS),
             "interpolation": check_word("interpolation", interpolation, INTERPOLATIONS),
             "comparison": check_word("comparison", comparison, ("none", "independent", "paired")),
             "cases": check_word("cases", cases, ("pairwise", "complete")),
             "weight_kind": check_word("weight_kind", weight_kind, ("unsaid", "counts", "probability"))}
    asked = area_question(confidence_level, interval, p_method, exact, null, alternative, False, n_resamples,
                          random_state, distribution)
    splits = [group_values is not None, group_cut is not None, bool(group_mid_point)]
    if sum(splits) > 1 or (group is None and any(splits)):
        raise ValueError("groups are made by one of group_values=, group_cut= and group_mid_point=, "
                         "together with group=")
    cut = None if group_cut is None else check_number("group_cut", group_cut, "give the first value of the upper group")
    request = _Request(data, state, tests, group, weight, count, weight_kind == "probability")
    directions = check_directions(direction, request.tests)
    remarks = RemarkList()
    request.load((pos_label, neg_label, missing), group_values, splits[1] or splits[2], nan_policy, remarks)

    handle = Handle()
    names = request.add_to(handle, directions)
    for setting, word in words.items():
        handle.call("set_word", setting.encode(), word)
    handle.ask(asked)
    handle.call("set_number", b"pr", 1.0 if precision_recall else 0.0)
    _split(request, handle, cut, group_mid_point)
    handle.run(progress)
    return _Reader(handle, request, names, asked, roc).analysis(remarks)
