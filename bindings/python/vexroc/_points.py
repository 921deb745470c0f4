"""What thresholds make of the cases: operating points, best thresholds, net benefit."""
from __future__ import annotations

import ctypes
from dataclasses import replace
from typing import Any, Literal

import numpy as np

from ._cases import Cases, Directions, Summary, weights_of
from ._curves import CUT_OFFS, CutOff
from ._inputs import Floats, NanPolicy, check_level, check_number, check_share, check_word, to_numbers
from ._library import check, library
from ._options import PROPORTIONS, Proportion, ask, check_replicates, options_of
from ._results import BestThreshold, Estimate, FixedRate, NetBenefit, OperatingPoints, frozen, number
from ._structures import (RATES, BestResult, CalibrationResult, InferenceOptions, OperatingColumns, RateResult,
                          SummaryFacts, sized)

RateInterval = Literal["btii", "bootstrap", "none"]
RATE_INTERVALS = ("btii", "bootstrap", "none")
_COUNTS = ("true_positive", "false_positive", "true_negative", "false_negative")


def _at(name: str, values: Any) -> Floats:
    """Thresholds, given as one or as several."""
    column = to_numbers(name, [values] if np.ndim(values) == 0 else values)
    missing = np.isnan(column)
    if missing.any():
        raise ValueError(f"{name} has a missing value at position {int(missing.argmax())}; give numbers")
    return column


def _rows(summary: Summary, options: InferenceOptions, at: Floats | None, count: int, turned: bool) -> dict[str, Any]:
    """The rows of operating points as fields of OperatingPoints; turned: the last one first."""
    numbers, counts = np.empty((3 * len(RATES) + 1, count)), np.empty((len(_COUNTS), count), dtype=np.int64)
    if count:
        columns = sized(OperatingColumns)
        columns.cut_off = numbers[-1].ctypes.data
        for name, column in zip(_COUNTS, counts):
            setattr(columns, name, column.ctypes.data)
        for index, name in enumerate(RATES):
            addresses = (numbers[3 * index + part].ctypes.data for part in range(3))
            setattr(columns, name, (ctypes.c_void_p * 3)(*addresses))
        check(library().vexroc_operating_points(summary.address, ctypes.byref(options), None if at is None else
                                                at.ctypes.data, 0, count, ctypes.byref(columns)))
        numbers[np.isnan(numbers)] = np.nan  # of the library's missing value
    if turned:
        numbers, counts = numbers[:, ::-1], counts[:, ::-1]
    rows: dict[str, Any] = dict(zip(("tp", "fp", "tn", "fn"), map(frozen, counts)), thresholds=frozen(numbers[-1]))
    for index, name in enumerate(RATES):
        rows[name] = Estimate(*map(frozen, numbers[3 * index:3 * index + 3]))
    return rows


class _Asked:
    """What is asked of the thresholds of some cases."""

    def __init__(self, cases: Cases, cut_off: str, confidence_level: float, proportion: str, prevalence: Any,
                 **members: Any):
        self.cases, self.summary = cases, cases.summary()
        self.facts: SummaryFacts = self.summary.facts()
        self.proportion, self.level = proportion, check_level(confidence_level)
        check_word("proportion", proportion, PROPORTIONS)
        self.prevalence = None if prevalence is None else check_share("prevalence", prevalence)
        self.options = options_of(
            level=self.level, smaller_is_positive=cases.is_smaller(), proportion=proportion, prevalence=self.prevalence,
            exclude_cut_off=check_word("cut_off", cut_off, CUT_OFFS) == b"exclude", **members)
        self.has_both = self.facts.positive > 0 and self.facts.negative > 0

    def points(self, at: Floats | None) -> OperatingPoints:
        """The rows of these thresholds; None: of all of the curve, in its order. No rows without both states."""
        count = len(self.summary) if at is None else len(at)
        rows = _rows(self.summary, self.options, at, count if self.has_both else 0,
                     at is None and not self.cases.is_smaller())
        return self._told(rows)

    def _told(self, rows: dict[str, Any]) -> OperatingPoints:
        return OperatingPoints(**rows, n_positive=self.facts.positive, n_negative=self.facts.negative,
                               n_omitted=self.cases.n_omitted, confidence_level=self.level,
                               proportion=self.proportion, prevalence=self.prevalence)

    def points_of_ties(self, ties: Floats) -> OperatingPoints:
        """The rows of these thresholds of the curve. The one between two infinite scores is NaN, and is not found by
        its value."""
        if not np.isnan(ties).any():
            return self.points(ties)
        rows = _rows(self.summary, self.options, None, len(self.summary), False)
        tied = np.isin(rows["thresholds"], ties) | np.isnan(rows["thresholds"])
        return self._told({name: Estimate(*(frozen(part[tied]) for part in row)) if isinstance(row, Estimate)
                           else frozen(row[tied]) for name, row in rows.items()})

    def add_remarks(self, *codes: str) -> None:
        """Adds what there is to say of the cases, and remarks that hold where there are rows."""
        facts = self.facts
        self.cases.add_remarks_of(self.summary)
        if not self.has_both:
            return
        for code in codes:
            self.cases.remarks.add(code, self.cases.subject())
        if self.prevalence is None:
            share = facts.weighted_positive / (facts.weighted_positive + facts.weighted_negative)
            self.cases.remarks.add("sample-prevalence", "", f"{share:.4f}")


def confusion_at_thresholds(y_true: Any, y_score: Any, thresholds: Any = None, *, prevalence: float | None = None,
                            proportion: Proportion = "wilson", confidence_level: float = 0.95, pos_label: Any = None,
                            neg_label: Any = None, missing: Any = None, direction: Directions = "larger",
                            cut_off: CutOff = "include", count: Any = None, sample_weight: Any = None,
                            nan_policy: NanPolicy = "raise") -> OperatingPoints:
    """Confusion matrices at thresholds, and what follows from them, each with its interval: sensitivity, specificity,
    predictive values, likelihood ratios, odds ratio, accuracy, F1, Matthews' correlation, Youden's index, kappa.

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    thresholds : shape (rows,), or a number
        In the unit of the scores, infinite ones included; they need not be observed. Of float32 scores they are
        float32, too: 0.7 is 0.7. None: all thresholds of roc_curve, in its order.
    prevalence
        In (0, 1): that ppv and npv are asked at, with intervals of Mercaldo, Lau and Zhou (2007, Statist. Med. 26,
        2170-2183). None: that of the sample, which is right only where the cases are a sample of the population.
    proportion
        Intervals of shares: "wilson" (1927) or "exact" (Clopper and Pearson 1934). Others: Newcombe 1998 and Shan 2015
        (youden, balanced_accuracy), Simel 1991 and Woolf 1955 (ratios), Lam, Gopal and Qian 2023 (f1), Fleiss 1969
        (kappa).
    confidence_level
        Of each interval by itself, in (0, 1).
    sample_weight : shape (n,)
        As in auc: shares are those of weights, and bounds are NaN.
    pos_label, neg_label, missing, direction, cut_off, count, nan_policy
        As in roc_curve.

    Returns
    -------
    OperatingPoints
        Arrays of shape (rows,); rates are estimates with the fields value, lower and upper. Without rows where all
        cases have the same state.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or numbers that do not fit, a threshold that is NaN, missing values with
        nan_policy "raise".
    TypeError
        Scores or thresholds that are no numbers.

    Examples
    --------
    >>> points = vexroc.confusion_at_thresholds([1, 0, 1, 0, 1], [5, 1, 4, 4, 3], [3.5, 4.5])
    >>> points.tp, points.fp
    (array([2, 1]), array([1, 0]))
    >>> points.sensitivity.value.round(3), points.sensitivity.lower.round(3)
    (array([0.667, 0.333]), array([0.208, 0.061]))
    """
    at = None if thresholds is None else _at("thresholds", thresholds)
    precision = getattr(y_score, "dtype", None)
    if at is not None and precision in (np.float16, np.float32):
        at = at.astype(precision).astype(np.float64)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, sample_weight))
    asked = _Asked(cases, cut_off, confidence_level, proportion, prevalence)
    points = asked.points(at)
    asked.add_remarks()
    cautions, notes = cases.remarks.tell()
    return replace(points, cautions=cautions, notes=notes)


def best_threshold(y_true: Any, y_score: Any, *, criterion: str = "youden", cost_ratio: float = 1.0,
                   prevalence: float | None = None, min_sensitivity: float = 0.0, min_specificity: float = 0.0,
                   interval: RateInterval = "btii", n_resamples: int = 1999, random_state: int = 1,
                   proportion: Proportion = "wilson", confidence_level: float = 0.95, pos_label: Any = None,
                   neg_label: Any = None, missing: Any = None, direction: Directions = "larger",
                   cut_off: CutOff = "include", count: Any = None, nan_policy: NanPolicy = "raise") -> BestThreshold:
    """The threshold that is best by a criterion, with all ties, which are decided by integers.

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    criterion
        "youden" (1950), "closest" to sensitivity and specificity 1 (Perkins and Schisterman 2006), "accuracy", "cost"
        (Metz 1978), "f1", "mcc", "equal" (sensitivity and specificity), "specificity=0.9" (most sensitivity with at
        least this specificity) or "sensitivity=0.9".
    cost_ratio
        Above 0, of "cost": cost of a missed positive case over that of a false alarm.
    prevalence
        In (0, 1): of "cost", and of ppv and npv in the rows. None: that of the sample.
    min_sensitivity, min_specificity
        In [0, 1], of "youden": what a threshold must reach to take part.
    interval, n_resamples, random_state
        Of the rate that "specificity=..." or "sensitivity=..." makes largest, in ``rate``: "btii" (Zhou and Qin 2005,
        Statist. Med. 24, 465-477), which knows that the threshold was chosen on the same data, "bootstrap" or "none";
        replicates and seed as in auc.
    proportion, confidence_level
        As in confusion_at_thresholds.
    pos_label, neg_label, missing, direction, cut_off, count, nan_policy
        As in roc_curve.

    Returns
    -------
    BestThreshold
        The threshold, all ties and their operating points. Rates of a threshold chosen on the same data look too good,
        which a note says. NaN and no rows where none meets the constraints, or all cases have the same state.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or numbers that do not fit, missing values with nan_policy "raise".
    TypeError
        Scores or options that are no numbers.

    Examples
    --------
    >>> best = vexroc.best_threshold([1, 0, 1, 0, 1], [5, 1, 4, 4, 3])
    >>> best.threshold, round(best.value, 4), best.thresholds
    (2.0, 0.5, array([2.]))
    """
    if not isinstance(criterion, str):
        raise TypeError(f"criterion={criterion!r} is no text; give one such as 'youden' or 'specificity=0.9'")
    check_word("interval", interval, RATE_INTERVALS)
    for name, value, unused, its in (("cost_ratio", cost_ratio, 1, "cost"),
                                     ("min_sensitivity", min_sensitivity, 0, "youden"),
                                     ("min_specificity", min_specificity, 0, "youden")):
        if value != unused and criterion.lower() != its:
            raise ValueError(f"{name}={value!r} is of criterion={its!r}, not of {criterion!r}; leave one of them out")
    check_replicates(interval, check_level(confidence_level), n_resamples, random_state)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, None))
    asked = _Asked(cases, cut_off, confidence_level, proportion, prevalence, replicates=n_resamples, seed=random_state,
                   cost_ratio=check_number("cost_ratio", cost_ratio, "give a number above 0"),
                   min_sensitivity=check_number("min_sensitivity", min_sensitivity, "give a share from 0 to 1"),
                   min_specificity=check_number("min_specificity", min_specificity, "give a share from 0 to 1"))
    result, ties = _best(asked, criterion)
    has_rate = asked.has_both and result.share == result.share
    rate = _fixed_rate(asked, criterion, result, interval) if has_rate else None
    chosen = float(ties[result.chosen]) if result.count else float("nan")
    points = asked.points_of_ties(ties)
    asked.add_remarks("best-on-same-data" if result.count else "criterion-unmet")
    if rate is not None and rate.std_error == 0:
        cases.remarks.add("zero-error", cases.subject())
    return BestThreshold(chosen, number(result.value), criterion, frozen(ties), points, rate, *cases.remarks.tell())


def _best(asked: _Asked, criterion: str) -> tuple[BestResult, Floats]:
    """What the criterion finds, and the tied thresholds, ascending."""
    result = sized(BestResult)
    ties = np.empty(0)
    while True:  # once to count the ties, once to read them
        check(library().vexroc_best_cut_offs(asked.summary.address, ctypes.byref(asked.options), criterion.encode(),
                                             len(ties), ties.ctypes.data, ctypes.byref(result)))
        if result.count <= len(ties):
            return result, ties
        ties = np.empty(result.count)


def _fixed_rate(asked: _Asked, criterion: str, best: BestResult, interval: str) -> FixedRate:
    result, options = sized(RateResult), asked.options
    options.interval = interval.encode()
    ask(library().vexroc_rate_at, options, asked.summary.address, criterion.encode(), ctypes.byref(result))
    drawn = (None, None) if interval == "none" else (options.replicates, options.seed)
    rate = "sensitivity" if best.criterion == b"specificity" else "specificity"
    return FixedRate(rate, best.share, number(result.reached), number(result.lower), number(result.upper),
                     number(result.interpolated), number(result.std_error), result.interval.decode(), asked.level,
                     *drawn)


def net_benefit(y_true: Any, y_score: Any, thresholds: Any, *, prevalence: float | None = None, pos_label: Any = None,
                neg_label: Any = None, missing: Any = None, count: Any = None,
                nan_policy: NanPolicy = "raise") -> NetBenefit:
    """Net benefit of treating the cases whose risk reaches a threshold: a decision curve (Vickers and Elkin 2006, Med.
    Decis. Making 26, 565-574).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Risk of each case: its probability of being positive, in [0, 1].
    thresholds : shape (rows,), or a number
        Risks in (0, 1) from which on a case is treated.
    prevalence
        In (0, 1). None: that of the sample.
    pos_label, neg_label, missing, count, nan_policy
        As in roc_curve.

    Returns
    -------
    NetBenefit
        Arrays of shape (rows,), and how well the scores agree with the share of positive cases on the whole: a caution
        says so where they do not, for thresholds are no risks then.

    Raises
    ------
    ValueError
        As in roc_curve, for scores and thresholds that are no such probabilities, and when all cases have the same
        state.
    TypeError
        Scores or thresholds that are no numbers.

    Examples
    --------
    >>> benefit = vexroc.net_benefit([1, 0, 1, 0, 0], [0.8, 0.3, 0.4, 0.4, 0.1], [0.2, 0.5])
    >>> benefit.net_benefit.round(2), benefit.treat_all.round(2)
    (array([0.3, 0.2]), array([ 0.25, -0.2 ]))
    """
    at = _at("thresholds", thresholds)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), "larger", nan_policy,
                  weights_of(count, None))
    asked = _Asked(cases, "include", 0.95, "wilson", prevalence)
    model, treat_all = np.empty(len(at)), np.empty(len(at))
    tp, fp = (np.empty(len(at), dtype=np.int64) for _ in range(2))
    check(library().vexroc_net_benefit(asked.summary.address, ctypes.byref(asked.options), at.ctypes.data, len(at),
                                       model.ctypes.data, treat_all.ctypes.data, tp.ctypes.data, fp.ctypes.data))
    calibration = sized(CalibrationResult)
    check(library().vexroc_calibration(asked.summary.address, ctypes.byref(asked.options),
                                       ctypes.byref(calibration)))
    asked.add_remarks(*["not-calibrated"] * calibration.differs)
    facts = asked.facts
    held_at = asked.prevalence or facts.positive / (facts.positive + facts.negative)
    return NetBenefit(frozen(at.copy()), frozen(model), frozen(treat_all), frozen(tp), frozen(fp), held_at,
                      calibration.mean_score, calibration.observed, facts.positive, facts.negative, cases.n_omitted,
                      *cases.remarks.tell())
