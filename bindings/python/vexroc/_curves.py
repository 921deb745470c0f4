"""Curves over arrays."""
from __future__ import annotations

import ctypes
from typing import Any, Literal

import numpy as np
import numpy.typing as npt

from ._cases import Cases, Directions, out_of_memory, weights_of
from ._inputs import NanPolicy, check_word
from ._library import check, library
from ._options import options_of
from ._results import PrecisionRecallCurve, RocCurve, frozen, pr_curve_of
from ._structures import OperatingColumns, RocRows, sized

CutOff = Literal["include", "exclude"]
Interpolation = Literal["davis-goadrich", "keilwagen"]

CUT_OFFS = ("include", "exclude")
INTERPOLATIONS = ("davis-goadrich", "keilwagen")

_PR_ROW = np.dtype([("threshold", "f8"), ("recall", "f8"), ("precision", "f8"), ("interpolated", "i4")], align=True)


def _rows(cases: Cases, call: Any, *words: bytes) -> RocRows:
    """Rows of a curve of the only scores, to be released."""
    cases.repeat()
    n_positive, n_negative = cases.states_of()
    cases.add_remarks(n_positive, n_negative)
    cut_off, *further = words
    rows: RocRows = call(*cases.arguments(*cases.scores), cut_off, cases.directions[0].encode(), *further)
    if not rows.rows:
        out_of_memory()
    if n_positive and n_negative and not rows.count:
        cases.remarks.add("no-curve")
    return rows


def _table(rows: RocRows, row: npt.DTypeLike, width: int) -> npt.NDArray[Any]:
    """A view of the rows of a curve: good until they are released."""
    size = np.dtype(row).itemsize * width * rows.count
    if size == 0:
        return np.empty((0, width) if width > 1 else 0, dtype=row)
    table = np.frombuffer((ctypes.c_char * size).from_address(rows.rows), dtype=row)
    return table.reshape(-1, width) if width > 1 else table


def _weighted_curve(cases: Cases, cut_off: bytes) -> RocCurve:
    summary = cases.summary()
    facts = summary.facts()
    cases.add_remarks(facts.positive, facts.negative, facts.values)
    count = len(summary) if facts.positive and facts.negative else 0
    thresholds, tpr, specificity = (np.empty(count) for _ in range(3))
    columns = sized(OperatingColumns)
    columns.cut_off, columns.sensitivity[0], columns.specificity[0] = (
        column.ctypes.data for column in (thresholds, tpr, specificity))
    options = options_of(smaller_is_positive=cases.is_smaller(), exclude_cut_off=cut_off == b"exclude")
    if count:
        check(library().vexroc_operating_points(summary.address, ctypes.byref(options), None, 0, count,
                                                ctypes.byref(columns)))
    order = slice(None, None, 1 if cases.is_smaller() else -1)
    fpr, tpr, thresholds = (frozen(column[order].copy()) for column in (1.0 - specificity, tpr, thresholds))
    return RocCurve(fpr, tpr, thresholds, facts.positive, facts.negative, cases.n_omitted, *cases.remarks.tell())


def roc_curve(y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
              direction: Directions = "larger", cut_off: CutOff = "include", count: Any = None,
              sample_weight: Any = None, nan_policy: NanPolicy = "raise") -> RocCurve:
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
    sample_weight : shape (n,)
        Inverse sampling probabilities, as in auc: rates are shares of weights.
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
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, sample_weight))
    if sample_weight is not None:
        return _weighted_curve(cases, word)
    rows = _rows(cases, library().roccurve, word)
    try:
        table = _table(rows, np.float64, 3)[:: -1 if cases.directions[0] == "larger" else 1]
        thresholds, fpr, tpr = (frozen(table[:, column].copy()) for column in range(3))
    finally:
        library().release_roccurve_res(rows)
    return RocCurve(fpr, tpr, thresholds, *cases.states_of(), cases.n_omitted, *cases.remarks.tell())


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
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, None))
    rows = _rows(cases, library().prcurve, *words)
    try:
        table = _table(rows, _PR_ROW, 1)[:: 1 if cases.directions[0] == "larger" else -1]
        precision, recall, thresholds = (table[name].copy() for name in ("precision", "recall", "threshold"))
        interpolated = table["interpolated"] != 0
    finally:
        library().release_prcurve_res(rows)
    if len(recall):
        cases.remarks.add("sample-prevalence", "", f"{cases.states_of()[0] / len(cases.states):.4f}")
    return pr_curve_of(precision, recall, thresholds, interpolated, *cases.states_of(), cases.n_omitted,
                       *cases.remarks.tell())
