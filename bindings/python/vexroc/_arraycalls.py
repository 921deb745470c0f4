"""Curves, areas and comparisons over arrays."""
from __future__ import annotations

import ctypes
from collections.abc import Mapping
from typing import Any, Literal, NoReturn

import numpy as np
import numpy.typing as npt

from ._inputs import (Floats, NanPolicy, check_lengths, check_level, check_word, complete_cases, to_numbers, to_states)
from ._library import AreaResult, ComparisonResult, RocRows, library
from ._results import Area, Comparison, PrecisionRecallCurve, RocCurve, frozen, number

Direction = Literal["larger", "smaller"]
CutOff = Literal["include", "exclude"]
Distribution = Literal["nonparam", "bi-negative"]
Interpolation = Literal["davis-goadrich", "keilwagen"]

DIRECTIONS = ("larger", "smaller")
CUT_OFFS = ("include", "exclude")
DISTRIBUTIONS = ("nonparam", "bi-negative")
INTERPOLATIONS = ("davis-goadrich", "keilwagen")

_PR_ROW = np.dtype([("threshold", "f8"), ("recall", "f8"), ("precision", "f8"), ("interpolated", "i4")], align=True)


class _Cases:
    """Checked columns of the cases that take part, states first."""

    def __init__(self, y_true: tuple[str, Any], scores: Mapping[str, Any], pos_label: Any, nan_policy: NanPolicy):
        state_name, states = y_true
        columns = {name: to_numbers(name, values) for name, values in scores.items()}
        columns = {state_name: to_states(state_name, states, pos_label), **columns}
        check_lengths(columns)
        complete = complete_cases(columns, nan_policy)
        self.n_omitted = 0 if complete is None else int(np.count_nonzero(~complete))
        self.columns: list[Floats] = [c if complete is None else c[complete] for c in columns.values()]
        self.n_positive = int(np.count_nonzero(self.columns[0]))
        self.n_negative = len(self.columns[0]) - self.n_positive

    @property
    def arguments(self) -> list[int | None]:
        """Addresses, the number of cases, and null for the positive value: 1.0."""
        return [*(column.ctypes.data for column in self.columns), len(self.columns[0]), None]


def _out_of_memory() -> NoReturn:
    raise MemoryError("the library found no memory for this call")


def _table(rows: RocRows, row: npt.DTypeLike, width: int) -> npt.NDArray[Any]:
    """A view of the rows of a curve: good until they are released."""
    size = np.dtype(row).itemsize * width * rows.count
    if size == 0:
        return np.empty((0, width) if width > 1 else 0, dtype=row)
    table = np.frombuffer((ctypes.c_char * size).from_address(rows.rows), dtype=row)
    return table.reshape(-1, width) if width > 1 else table


def _area(result: AreaResult, level: float, cases: _Cases, distribution: Distribution = "nonparam") -> Area:
    n_positive, n_negative = int(result.n_positive), int(result.n_negative)
    if (n_positive, n_negative) != (cases.n_positive, cases.n_negative):
        _out_of_memory()
    changed = distribution == "bi-negative" and n_positive != n_negative
    return Area(number(result.area), number(result.std_error), number(result.p_value), number(result.ci_lower),
                number(result.ci_upper), n_positive, n_negative, cases.n_omitted, level,
                "nonparam" if changed else distribution, changed)


def _comparison(result: ComparisonResult, first: Area, second: Area, level: float) -> Comparison:
    return Comparison(first, second, number(result.difference), number(result.std_error), number(result.z),
                      number(result.p_value), number(result.ci_lower), number(result.ci_upper), level)


def roc_curve(y_true: Any, y_score: Any, *, pos_label: Any = None, direction: Direction = "larger",
              cut_off: CutOff = "include", nan_policy: NanPolicy = "raise") -> RocCurve:
    """Empirical ROC curve (Fawcett 2006, Pattern Recognition Letters 27, 861-874).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case: numbers, bools or texts. Every label but the positive one is negative.
    y_score : shape (n,)
        Test value of each case, any scale, infinities allowed: the largest and smallest values. Of a categorical the
        order counts where its categories are no ascending numbers.
    pos_label
        The positive label; may be left out for labels 0 and 1, -1 and 1, and bools. For dates also their text.
    direction
        "larger" or "smaller": which end of the scale is positive.
    cut_off
        "include" or "exclude": is a case whose score equals the threshold positive?
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
    >>> curve = vexroc.roc_curve([1, 0, 1, 0], [0.9, 0.3, 0.6, 0.7])
    >>> curve
    <ROC curve: 5 points, 2 positive and 2 negative cases>
    >>> curve.fpr, curve.tpr
    (array([0. , 0. , 0.5, 0.5, 1. ]), array([0. , 0.5, 0.5, 1. , 1. ]))
    """
    words = check_word("cut_off", cut_off, CUT_OFFS), check_word("direction", direction, DIRECTIONS)
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, pos_label, nan_policy)
    rows = library().roccurve(*cases.arguments, *words)
    try:
        if not rows.rows:
            _out_of_memory()
        table = _table(rows, np.float64, 3)[:: -1 if direction == "larger" else 1]
        thresholds, fpr, tpr = (frozen(table[:, column].copy()) for column in range(3))
    finally:
        library().release_roccurve_res(rows)
    return RocCurve(fpr, tpr, thresholds, cases.n_positive, cases.n_negative, cases.n_omitted)


def pr_curve(y_true: Any, y_score: Any, *, pos_label: Any = None, direction: Direction = "larger",
             cut_off: CutOff = "include", interpolation: Interpolation = "davis-goadrich",
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
    pos_label, direction, cut_off, nan_policy
        As in roc_curve.

    Returns
    -------
    PrecisionRecallCurve
        precision, recall, thresholds and interpolated of shape (points,). Without points for fewer than 3 cases, or
        when all of them have the same state.

    Raises
    ------
    ValueError
        Shapes, lengths, labels or words that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores that are no numbers.

    Examples
    --------
    >>> curve = vexroc.pr_curve(["ill", "well", "ill", "well"], [0.9, 0.3, 0.6, 0.7], pos_label="ill")
    >>> curve
    <precision-recall curve: 5 points, 0 of them interpolated, 2 positive and 2 negative cases>
    >>> curve.precision.round(2), curve.recall
    (array([0.5 , 0.67, 0.5 , 1.  , 1.  ]), array([1. , 1. , 0.5, 0.5, 0. ]))
    """
    words = (check_word("cut_off", cut_off, CUT_OFFS), check_word("direction", direction, DIRECTIONS),
             check_word("interpolation", interpolation, INTERPOLATIONS))
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, pos_label, nan_policy)
    rows = library().prcurve(*cases.arguments, *words)
    try:
        if not rows.rows:
            _out_of_memory()
        table = _table(rows, _PR_ROW, 1)[:: 1 if direction == "larger" else -1]
        precision, recall, thresholds = (frozen(table[name].copy()) for name in ("precision", "recall", "threshold"))
        interpolated = frozen(table["interpolated"] != 0)
    finally:
        library().release_prcurve_res(rows)
    return PrecisionRecallCurve(precision, recall, thresholds, interpolated, cases.n_positive, cases.n_negative,
                                cases.n_omitted)


def auc(y_true: Any, y_score: Any, *, pos_label: Any = None, direction: Direction = "larger",
        distribution: Distribution = "nonparam", confidence_level: float = 0.95,
        nan_policy: NanPolicy = "raise") -> Area:
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
    confidence_level
        Of the interval, in (0, 1).
    pos_label, direction, nan_policy
        As in roc_curve.

    Returns
    -------
    Area
        Numbers; NaN in all statistics without a positive or without a negative case.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or a confidence level that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores or a confidence level that are no numbers.

    Examples
    --------
    >>> area = vexroc.auc([True, False, True, False, True], [5, 1, 4, 4, 3])
    >>> area
    <area 0.7500, standard error 0.2485, p = 0.3143, 95 % interval 0.2630 to 1.2370; 3 positive and 2 negative cases>
    >>> area.area
    0.75
    """
    words = (b"include", check_word("direction", direction, DIRECTIONS),
             check_word("distribution", distribution, DISTRIBUTIONS))
    level = check_level(confidence_level)
    cases = _Cases(("y_true", y_true), {"y_score": y_score}, pos_label, nan_policy)
    return _area(library().auc(*cases.arguments, *words, level), level, cases, distribution)


def compare_paired(y_true: Any, y_score_1: Any, y_score_2: Any, *, pos_label: Any = None,
                   direction: Direction = "larger", confidence_level: float = 0.95,
                   nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of two test variables of the same cases (DeLong, DeLong and Clarke-Pearson 1988, Biometrics
    44, 837-845).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score_1, y_score_2 : shape (n,)
        Test values, the same cases in the same order. With nan_policy "omit" a case that misses either is left out.
    pos_label, direction, confidence_level, nan_policy
        As in auc.

    Returns
    -------
    Comparison
        Numbers: the first area less the second. The standard errors of both areas are those of DeLong.

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
    words = b"include", check_word("direction", direction, DIRECTIONS)
    level = check_level(confidence_level)
    cases = _Cases(("y_true", y_true), {"y_score_1": y_score_1, "y_score_2": y_score_2}, pos_label, nan_policy)
    result = library().auc_pairedcomparison(*cases.arguments, *words, level)
    return _comparison(result, _area(result.first, level, cases), _area(result.second, level, cases), level)


def compare_independent(y_true_1: Any, y_score_1: Any, y_true_2: Any, y_score_2: Any, *, pos_label: Any = None,
                        direction: Direction = "larger", distribution: Distribution = "nonparam",
                        confidence_level: float = 0.95, nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of one test variable in two independent samples: the difference by its standard error, the
    root of the sum of both squared standard errors (Hanley and McNeil 1982, Radiology 143, 29-36).

    Parameters
    ----------
    y_true_1, y_score_1 : shape (n,)
        The first sample.
    y_true_2, y_score_2 : shape (m,)
        The second sample.
    pos_label, direction, distribution, confidence_level, nan_policy
        As in auc, for both samples.

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
    words = (b"include", check_word("direction", direction, DIRECTIONS),
             check_word("distribution", distribution, DISTRIBUTIONS))
    level = check_level(confidence_level)
    samples = [_Cases(("y_true_1", y_true_1), {"y_score_1": y_score_1}, pos_label, nan_policy),
               _Cases(("y_true_2", y_true_2), {"y_score_2": y_score_2}, pos_label, nan_policy)]
    results = [library().auc(*cases.arguments, *words, level) for cases in samples]
    first, second = (_area(result, level, cases, distribution) for result, cases in zip(results, samples))
    return _comparison(library().auc_comparison(*results, level), first, second, level)
