"""Curves, areas and comparisons over arrays."""
from __future__ import annotations

import ctypes
from collections.abc import Mapping
from dataclasses import replace
from typing import Any, Literal, NoReturn

import numpy as np
import numpy.typing as npt

from ._inputs import (MAX_CASES, Floats, NanPolicy, check_directions, check_lengths, check_level, check_order,
                      check_word, complete_cases, distinct_values, to_numbers)
from ._labels import OTHER_STATE, to_states
from ._library import AreaResult, ComparisonResult, RocRows, library, two_sided_p
from ._remarks import RemarkList
from ._results import (Area, Asked, Comparison, PrecisionRecallCurve, RocCurve, area_of, frozen, number,
                       pr_curve_of)

Direction = Literal["larger", "smaller"]
Directions = Direction | Mapping[Any, Direction]
CutOff = Literal["include", "exclude"]
Distribution = Literal["nonparam", "bi-negative"]
Interpolation = Literal["davis-goadrich", "keilwagen"]
Interval = Literal["wald", "wald-delong"]

CUT_OFFS = ("include", "exclude")
DISTRIBUTIONS = ("nonparam", "bi-negative")
INTERPOLATIONS = ("davis-goadrich", "keilwagen")
INTERVALS = ("wald", "wald-delong")

_PR_ROW = np.dtype([("threshold", "f8"), ("recall", "f8"), ("precision", "f8"), ("interpolated", "i4")], align=True)


class _Cases:
    """Checked columns of the cases that take part, and what there is to say of them."""

    def __init__(self, y_true: tuple[str, Any], scores: Mapping[str, Any], labels: tuple[Any, Any, Any],
                 direction: Directions, nan_policy: NanPolicy, count: tuple[str, Any] = ("count", None),
                 remarks: RemarkList | None = None):
        name, states = y_true
        self.remarks = RemarkList() if remarks is None else remarks
        self.names, self.directions = list(scores), list(check_directions(direction, scores).values())
        counted = {count[0]: count[1]} if count[1] is not None else {}
        check_order({name: states, **scores, **counted})
        numbers = {test: to_numbers(test, values) for test, values in scores.items()}
        told = to_states(name, states, *labels, self.remarks)
        columns = {name: told.column, **numbers}
        sure = {name} if told.are_two and not counted else set()
        for count_name, counts in counted.items():
            columns = _repeated(columns, count_name, to_numbers(count_name, counts), nan_policy)
        check_lengths(columns)
        kept = complete_cases(columns, nan_policy, sure)
        if told.have_others():
            kept = (columns[name] != OTHER_STATE) & (True if kept is None else kept)
        self.n_omitted = 0 if kept is None else int(np.count_nonzero(~kept))
        self.states, *self.scores = (column if kept is None else column[kept] for column in columns.values())
        self.n_positive = int(np.count_nonzero(self.states))
        self.n_negative = len(self.states) - self.n_positive
        if self.n_omitted:
            self.remarks.add("left-out", "", f"{self.n_omitted} of {self.n_omitted + len(self.states)}")

    def arguments(self, *scores: Floats) -> list[int | None]:
        """Addresses, the number of cases, and null for the positive value: 1.0."""
        return [self.states.ctypes.data, *(column.ctypes.data for column in scores), len(self.states), None]

    def curve(self, call: Any, cut_off: bytes, *words: bytes) -> RocRows:
        """Rows of a curve of the only scores, to be released."""
        self._add_remarks(0)
        rows: RocRows = call(*self.arguments(*self.scores), cut_off, self.directions[0].encode(), *words)
        if not rows.rows:
            _out_of_memory()
        if self.n_positive and self.n_negative and not rows.count:
            self.remarks.add("no-curve")
        return rows

    def difference(self, level: float, first: int = 0, second: int = 1) -> ComparisonResult:
        """Of two scores, which may be the same twice. Their directions may differ: the library knows one only."""
        directions = self.directions[first], self.directions[second]
        alike = directions[0] == directions[1]
        scores = [column if alike or direction == "larger" else -column
                  for direction, column in zip(directions, (self.scores[first], self.scores[second]))]
        result: ComparisonResult = library().auc_pairedcomparison(
            *self.arguments(*scores), b"include", directions[0].encode() if alike else b"larger", level)
        return result

    def result(self, index: int, asked: Asked) -> AreaResult:
        """Of the scores with this index, with the standard error of the interval asked for."""
        if asked.interval == "wald-delong":
            result: AreaResult = self.difference(asked.confidence_level, index, index).first
            return result
        result = library().auc(*self.arguments(self.scores[index]), b"include",
                                           self.directions[index].encode(), asked.distribution.encode(),
                                           asked.confidence_level)
        return result

    def area(self, index: int, result: AreaResult, asked: Asked) -> Area:
        """The area, after adding what there is to say of it."""
        if (result.n_positive, result.n_negative) != (self.n_positive, self.n_negative):
            _out_of_memory()
        replaced = asked.distribution == "bi-negative" and self.n_positive != self.n_negative
        area = area_of(result, self.n_omitted, asked, "delong" if asked.interval == "wald-delong" else
                       "nonparam" if replaced else asked.distribution)
        if area.distribution_changed:
            self.remarks.add("distribution-changed")
        self._add_remarks(index, area.area, area.std_error, area.ci_lower, area.ci_upper)
        return area

    def _add_remarks(self, index: int, *numbers: float) -> None:
        name = self.names[index]
        self.remarks.add_area("" if name == "y_score" else name, name, self.n_positive, self.n_negative,
                              self.directions[index] == "smaller", distinct_values(self.scores[index]), *numbers)


def _repeated(columns: dict[str, Floats], name: str, counts: Floats, nan_policy: NanPolicy) -> dict[str, Floats]:
    """Every case as often as its count says; one without a count loses its first column, the state."""
    check_lengths({**columns, name: counts})
    known = complete_cases({name: counts}, nan_policy)
    counts = counts if known is None else np.where(known, counts, 1.0)
    wrong = (counts < 0) | (counts != np.floor(counts)) | np.isinf(counts)
    if wrong.any():
        position = int(wrong.argmax())
        raise ValueError(f"{name} has {counts[position]:g} at position {position}; a count is a whole number from 0")
    if counts.sum() > MAX_CASES:
        raise ValueError(f"{name} makes {counts.sum():g} cases; the library counts up to {MAX_CASES}")
    repeated = {column: np.repeat(values, counts.astype(np.int64)) for column, values in columns.items()}
    if known is not None:
        first = next(iter(repeated))
        repeated[first] = np.where(np.repeat(known, counts.astype(np.int64)), repeated[first], np.nan)
    return repeated


def _out_of_memory() -> NoReturn:
    raise MemoryError("the library found no memory for this call")


def _table(rows: RocRows, row: npt.DTypeLike, width: int) -> npt.NDArray[Any]:
    """A view of the rows of a curve: good until they are released."""
    size = np.dtype(row).itemsize * width * rows.count
    if size == 0:
        return np.empty((0, width) if width > 1 else 0, dtype=row)
    table = np.frombuffer((ctypes.c_char * size).from_address(rows.rows), dtype=row)
    return table.reshape(-1, width) if width > 1 else table


def _asked(confidence_level: float, interval: Interval, distribution: Distribution = "nonparam") -> Asked:
    check_word("interval", interval, INTERVALS)
    check_word("distribution", distribution, DISTRIBUTIONS)
    return Asked(check_level(confidence_level), interval, distribution)


def _of_test(direction: Directions, test: str) -> Directions:
    return direction.get(test, "larger") if isinstance(direction, Mapping) else direction


def _comparison(result: ComparisonResult, first: Area, second: Area, level: float, remarks: RemarkList) -> Comparison:
    remarks.add_difference("", result.difference, result.std_error)
    return Comparison(first, second, number(result.difference), number(result.std_error), number(result.z),
                      *two_sided_p(result.z), number(result.ci_lower), number(result.ci_upper), level, *remarks.tell())


def roc_curve(y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
              direction: Directions = "larger", cut_off: CutOff = "include", count: Any = None,
              nan_policy: NanPolicy = "raise") -> RocCurve:
    """Empirical ROC curve (Fawcett 2006, Pattern Recognition Letters 27, 861-874).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case: numbers, bools or texts, among which NA, N/A, NULL, NaN and the like are missing.
    y_score : shape (n,)
        Test value of each case, any scale, infinities allowed: the largest and smallest values. Of a categorical the
        order counts where its categories are no ascending numbers.
    pos_label
        The positive label or a list of them; may be left out for labels 0 and 1, -1 and 1, and bools. For dates also
        their text.
    neg_label
        The negative label or a list of them, or vexroc.OTHERS: all others. Needed with more than two labels; cases of
        labels that are neither are left out.
    missing
        A label, or a list of them, that stands for a missing one beside the usual words; False: no word does.
    direction
        "larger" or "smaller": which end of the scale is positive. Or a mapping of a word per test, such as
        {"y_score": "smaller"}.
    cut_off
        "include" or "exclude": is a case whose score equals the threshold positive?
    count : shape (n,)
        Number of cases that each entry stands for, a whole number from 0: the result is that of the repeated cases,
        to the bit.
    nan_policy
        "raise" or "omit": what to do about cases without a state or score (None, NaN, pandas.NA).

    Returns
    -------
    RocCurve
        fpr, tpr and thresholds of shape (points,): k distinct scores give k + 1 points, from (0, 0) to (1, 1) unless
        scores are infinite or huge (see RocCurve). Without points for fewer than 3 cases, or when all of them have the
        same state.

    Raises
    ------
    ValueError
        Shapes, lengths, labels or words that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores that are no numbers.

    Examples
    --------
    >>> curve = vexroc.roc_curve([1, 0, 1, 0] * 5, [0.9, 0.3, 0.6, 0.7] * 5)
    >>> curve
    <ROC curve: 5 points, 10 positive and 10 negative cases>
    >>> curve.fpr, curve.tpr
    (array([0. , 0. , 0.5, 0.5, 1. ]), array([0. , 0.5, 0.5, 1. , 1. ]))
    """
    word = check_word("cut_off", cut_off, CUT_OFFS)
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                   ("count", count))
    rows = cases.curve(library().roccurve, word)
    try:
        table = _table(rows, np.float64, 3)[:: -1 if cases.directions[0] == "larger" else 1]
        thresholds, fpr, tpr = (frozen(table[:, column].copy()) for column in range(3))
    finally:
        library().release_roccurve_res(rows)
    return RocCurve(fpr, tpr, thresholds, cases.n_positive, cases.n_negative, cases.n_omitted, *cases.remarks.tell())


def pr_curve(y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
             direction: Directions = "larger", cut_off: CutOff = "include",
             interpolation: Interpolation = "davis-goadrich", count: Any = None,
             nan_policy: NanPolicy = "raise") -> PrecisionRecallCurve:
    """Precision-recall curve (Davis and Goadrich 2006, ICML; Keilwagen, Grosse and Grau 2014, PLoS ONE 9(3) e92209).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    interpolation
        "davis-goadrich": a point for every whole true positive between two measured points; "keilwagen": for every
        whole false positive.
    pos_label, neg_label, missing, direction, cut_off, count, nan_policy
        As in roc_curve.

    Returns
    -------
    PrecisionRecallCurve
        precision, recall, thresholds (NaN for an interpolated point) and interpolated of shape (points,). Without
        points for fewer than 3 cases, or when all of them have the same state.

    Raises
    ------
    ValueError
        Shapes, lengths, labels or words that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores that are no numbers.

    Examples
    --------
    >>> curve = vexroc.pr_curve(["ill", "well", "ill", "well"], [0.9, 0.3, 0.6, 0.7], pos_label="ill")
    >>> curve.precision.round(2), curve.recall
    (array([0.5 , 0.67, 0.5 , 1.  , 1.  ]), array([1. , 1. , 0.5, 0.5, 0. ]))
    """
    words = check_word("cut_off", cut_off, CUT_OFFS), check_word("interpolation", interpolation, INTERPOLATIONS)
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                   ("count", count))
    rows = cases.curve(library().prcurve, *words)
    try:
        table = _table(rows, _PR_ROW, 1)[:: 1 if cases.directions[0] == "larger" else -1]
        precision, recall, thresholds = (table[name].copy() for name in ("precision", "recall", "threshold"))
        interpolated = table["interpolated"] != 0
    finally:
        library().release_prcurve_res(rows)
    if len(recall):
        cases.remarks.add("sample-prevalence", "", f"{cases.n_positive / len(cases.states):.4f}")
    return pr_curve_of(precision, recall, thresholds, interpolated, cases.n_positive, cases.n_negative,
                       cases.n_omitted, *cases.remarks.tell())


def auc(y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
        direction: Directions = "larger", distribution: Distribution = "nonparam", interval: Interval = "wald",
        confidence_level: float = 0.95, count: Any = None, nan_policy: NanPolicy = "raise") -> Area:
    """Area under the ROC curve, its standard error, test against 0.5 and interval (Hanley and McNeil 1982, Radiology
    143, 29-36). Takes states and scores; it is not the trapezoid rule for points of a curve, sklearn.metrics.auc(x, y).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    distribution
        "nonparam", or "bi-negative" (exponential), which applies only when positive and negative cases are equally
        many and is replaced otherwise, which the result tells: the assumption behind the standard error.
    interval
        "wald": area +- z * std_error, with the standard error that distribution says; "wald-delong": with that of
        DeLong.
    confidence_level
        Of the interval, in (0, 1).
    pos_label, neg_label, missing, direction, count, nan_policy
        As in roc_curve.

    Returns
    -------
    Area
        Numbers; NaN in all statistics without a positive or without a negative case, and in p value and interval
        where the standard error is 0.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or a confidence level that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores or a confidence level that are no numbers.

    Examples
    --------
    >>> area = vexroc.auc([True, False, True, False] * 5, [5, 1, 3, 4] * 5)
    >>> area
    <area 0.7500, standard error 0.1146, p = 0.0291, 95 % interval 0.5255 to 0.9745; 10 positive and 10 negative cases>
    >>> area.area
    0.75
    """
    asked = _asked(confidence_level, interval, distribution)
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                   ("count", count))
    area = cases.area(0, cases.result(0, asked), asked)
    cautions, notes = cases.remarks.tell()
    return replace(area, cautions=cautions, notes=notes) if cautions or notes else area


def compare_paired(y_true: Any, y_score_1: Any, y_score_2: Any, *, pos_label: Any = None, neg_label: Any = None,
                   missing: Any = None, direction: Directions = "larger", interval: Interval = "wald",
                   confidence_level: float = 0.95, count: Any = None,
                   nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of two test variables of the same cases (DeLong, DeLong and Clarke-Pearson 1988, Biometrics
    44, 837-845).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score_1, y_score_2 : shape (n,)
        Test values, the same cases in the same order. With nan_policy "omit" a case that misses either is left out.
    pos_label, neg_label, missing, direction, interval, confidence_level, count, nan_policy
        As in auc.

    Returns
    -------
    Comparison
        Numbers: the first area less the second. The areas are what auc says of these cases, the standard error of
        their difference is that of DeLong.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or a confidence level that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores or a confidence level that are no numbers.

    Examples
    --------
    >>> result = vexroc.compare_paired([1, 1, 1, 0, 0, 0], [5, 6, 4, 3, 2, 1], [5, 2, 4, 3, 6, 1])
    >>> round(result.difference, 4), round(result.z, 4), round(result.p_value, 4)
    (0.4444, 1.4142, 0.1573)
    """
    asked = _asked(confidence_level, interval)
    cases = _Cases(("y_true", y_true), {"y_score_1": y_score_1, "y_score_2": y_score_2},
                   (pos_label, neg_label, missing), direction, nan_policy, ("count", count))
    result = cases.difference(asked.confidence_level)
    results = (result.first, result.second) if interval == "wald-delong" else (
        cases.result(index, asked) for index in range(2))
    first, second = (cases.area(index, one, asked) for index, one in enumerate(results))
    return _comparison(result, first, second, asked.confidence_level, cases.remarks)


def compare_independent(y_true_1: Any, y_score_1: Any, y_true_2: Any, y_score_2: Any, *, pos_label: Any = None,
                        neg_label: Any = None, missing: Any = None, direction: Directions = "larger",
                        distribution: Distribution = "nonparam", interval: Interval = "wald",
                        confidence_level: float = 0.95, count_1: Any = None, count_2: Any = None,
                        nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of one test variable in two independent samples: the difference by its standard error, the
    root of the sum of both squared standard errors (Hanley and McNeil 1982, Radiology 143, 29-36).

    Parameters
    ----------
    y_true_1, y_score_1 : shape (n,)
        The first sample.
    y_true_2, y_score_2 : shape (m,)
        The second sample.
    pos_label, neg_label, missing, direction, distribution, interval, confidence_level, nan_policy
        As in auc, for both samples.
    count_1, count_2
        The count of auc, for each sample.

    Returns
    -------
    Comparison
        Numbers: the area of the first sample less that of the second.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or a confidence level that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores or a confidence level that are no numbers.

    Examples
    --------
    >>> result = vexroc.compare_independent([1, 1, 0, 0], [4, 2, 3, 1], [1, 1, 0, 0, 0], [4, 2, 3, 1, 0])
    >>> result.first.area, round(result.second.area, 4), round(result.p_value, 4)
    (0.75, 0.8333, 0.8097)
    """
    asked = _asked(confidence_level, interval, distribution)
    check_directions(direction, ("y_score_1", "y_score_2"))
    remarks = RemarkList()
    samples = [_Cases((f"y_true_{number}", y_true), {name: y_score}, (pos_label, neg_label, missing),
                      _of_test(direction, name), nan_policy, (f"count_{number}", count), remarks)
               for number, (name, y_true, y_score, count) in enumerate(
                   (("y_score_1", y_true_1, y_score_1, count_1), ("y_score_2", y_true_2, y_score_2, count_2)), 1)]
    results = [cases.result(0, asked) for cases in samples]
    first, second = (cases.area(0, result, asked) for result, cases in zip(results, samples))
    return _comparison(library().auc_comparison(*results, asked.confidence_level), first, second,
                       asked.confidence_level, remarks)
