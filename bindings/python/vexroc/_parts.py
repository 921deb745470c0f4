"""Parts of the area under a ROC curve, and the area under a precision-recall curve."""
from __future__ import annotations

import ctypes
from typing import Any, Literal

from ._cases import Cases, Directions, weights_of
from ._inputs import NanPolicy, check_level, check_number, check_share, check_word
from ._library import library
from ._options import BOOTSTRAPS, ask, check_replicates, options_of
from ._results import PartialArea, PrecisionRecallArea, number
from ._structures import PartialResult, PrAreaResult, sized

PartialInterval = Literal["logit", "wald", "bootstrap", "bca"]
PrecisionRecallInterval = Literal["logit", "binomial", "bootstrap", "bca"]
Rule = Literal["integral", "step", "trapezoid"]

PARTIAL_INTERVALS = ("logit", "wald", "bootstrap", "bca")
PR_INTERVALS = ("logit", "binomial", "bootstrap", "bca")
RULES = ("integral", "step", "trapezoid")


def _band(name: str, given: Any) -> tuple[float, float]:
    try:
        first, last = given
    except (TypeError, ValueError):
        raise ValueError(f"{name}={given!r} is no pair; give a band such as {name}=(0, 0.1)") from None
    low, high = (check_number(name, end, "give two shares such as (0, 0.1)") for end in (first, last))
    if not 0.0 <= low < high <= 1.0:
        raise ValueError(f"{name}={given!r} is no band; give two shares in ascending order, from 0 to 1")
    return low, high


def partial_auc(y_true: Any, y_score: Any, *, fpr: tuple[float, float] | None = None,
                tpr: tuple[float, float] | None = None, interval: PartialInterval = "logit", n_resamples: int = 1999,
                random_state: int = 1, confidence_level: float = 0.95, pos_label: Any = None, neg_label: Any = None,
                missing: Any = None, direction: Directions = "larger", count: Any = None,
                nan_policy: NanPolicy = "raise") -> PartialArea:
    """Partial area under the ROC curve, with an error that knows that the borders of the band are estimated (McClish
    1989, Med. Decis. Making 9, 190-195; Wieand and others 1989, Biometrika 76, 585-592; Yu and others 2016, Statist.
    Med. 35, 2251-2282).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    fpr : pair
        Band of false positive rates in [0, 1]: the area under the curve over them.
    tpr : pair
        Instead, a band of sensitivities: the area to the right of the curve.
    interval
        "logit" (of the area over the width of the band), "wald", "bootstrap" or "bca".
    n_resamples, random_state, confidence_level
        As in auc.
    pos_label, neg_label, missing, direction, count, nan_policy
        As in roc_curve.

    Returns
    -------
    PartialArea
        Numbers, NaN where they are not defined. ``area`` is in the unit of the whole area; ``standardized`` is what
        scikit-learn's roc_auc_score(max_fpr=) says.

    Raises
    ------
    ValueError
        As in roc_curve; a band that is none, both or none of fpr and tpr.
    TypeError
        Scores or numbers that are none.

    Examples
    --------
    >>> part = vexroc.partial_auc([1, 0, 1, 0] * 5, [5, 1, 3, 4] * 5, fpr=(0, 0.5))
    >>> part.area, round(part.standardized, 4)
    (0.25, 0.6667)
    """
    if (fpr is None) == (tpr is None):
        raise ValueError("give one of fpr= and tpr=, a band such as fpr=(0, 0.1)")
    rate, band = ("fpr", _band("fpr", fpr)) if tpr is None else ("tpr", _band("tpr", tpr))
    check_word("interval", interval, PARTIAL_INTERVALS)
    level = check_level(confidence_level)
    check_replicates(interval, level, n_resamples, random_state)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, None))
    summary, r = cases.summary(), sized(PartialResult)
    options = options_of(level=level, smaller_is_positive=cases.is_smaller(), interval=interval,
                         replicates=n_resamples, seed=random_state)
    ask(library().vexroc_partial_area, options, summary.address, rate.encode(), *band, ctypes.byref(r))
    used = r.interval.decode()
    cases.add_remarks_of(summary, std_error=r.std_error, interval=r.interval, p_method=b"wald",
                         percentile=r.percentile, held=r.held)
    if r.few and r.positive and r.negative:
        cases.remarks.add("few-in-band", cases.subject())
    drawn = (n_resamples, random_state) if used in BOOTSTRAPS else (None, None)
    return PartialArea(number(r.area), number(r.std_error), number(r.lower), number(r.upper), number(r.standardized),
                       number(r.standardized_error), number(r.standardized_lower), number(r.standardized_upper), rate,
                       band, r.positive, r.negative, cases.n_omitted, level, used, number(r.bootstrap_error), *drawn,
                       *cases.remarks.tell())


def pr_auc(y_true: Any, y_score: Any, *, rule: Rule = "integral", interval: PrecisionRecallInterval = "logit",
           prevalence: float | None = None, n_resamples: int = 1999, random_state: int = 1,
           confidence_level: float = 0.95, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
           direction: Directions = "larger", count: Any = None, sample_weight: Any = None,
           nan_policy: NanPolicy = "raise") -> PrecisionRecallArea:
    """Area under the precision-recall curve.

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    rule
        "integral": under the interpolated curve (Davis and Goadrich 2006; Keilwagen, Grosse and Grau 2014); "step":
        average precision; "trapezoid": straight lines between points, too high.
    interval
        "logit" or "binomial" (Boyd, Eng and Page 2013, ECML PKDD, 451-466), "bootstrap" or "bca".
    prevalence
        In (0, 1): the area in a population with this share of positive cases; with bootstrap bounds only. None: that
        of the sample.
    n_resamples, random_state, confidence_level
        As in auc.
    sample_weight : shape (n,)
        As in auc; the bounds are NaN.
    pos_label, neg_label, missing, direction, count, nan_policy
        As in roc_curve.

    Returns
    -------
    PrecisionRecallArea
        Numbers, NaN without a positive or without a negative case.

    Raises
    ------
    ValueError, TypeError
        As in auc.

    Examples
    --------
    >>> area = vexroc.pr_auc([1, 0, 1, 0] * 5, [5, 1, 3, 4] * 5)
    >>> round(area.area, 4), area.rule, area.chance
    (0.7973, 'integral', 0.5)
    """
    check_word("rule", rule, RULES)
    check_word("interval", interval, PR_INTERVALS)
    level = check_level(confidence_level)
    check_replicates(interval, level, n_resamples, random_state)
    stated = None if prevalence is None else check_share("prevalence", prevalence)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, sample_weight))
    summary, r = cases.summary(), sized(PrAreaResult)
    options = options_of(level=level, smaller_is_positive=cases.is_smaller(), interval=interval, prevalence=stated,
                         replicates=n_resamples, seed=random_state)
    ask(library().vexroc_pr_area, options, summary.address, rule.encode(), ctypes.byref(r))
    used = r.interval.decode()
    cases.add_remarks_of(summary, percentile=r.percentile, held=r.held)
    if r.edge:
        cases.remarks.add("pr-edge", cases.subject())
    if stated is not None and interval not in BOOTSTRAPS:
        cases.remarks.add("no-interval-at-prevalence")
    if stated is None and r.positive and r.negative:
        cases.remarks.add("sample-prevalence", "", f"{r.prevalence:.4f}")
    drawn = (n_resamples, random_state) if used in BOOTSTRAPS else (None, None)
    return PrecisionRecallArea(number(r.area), number(r.lower), number(r.upper), r.rule.decode(), number(r.prevalence),
                               number(r.chance), number(r.lowest), r.positive, r.negative, cases.n_omitted, level, used,
                               number(r.bootstrap_error), *drawn, *cases.remarks.tell())


def average_precision(y_true: Any, y_score: Any, *, interval: PrecisionRecallInterval = "logit",
                      prevalence: float | None = None, n_resamples: int = 1999, random_state: int = 1,
                      confidence_level: float = 0.95, pos_label: Any = None, neg_label: Any = None,
                      missing: Any = None, direction: Directions = "larger", count: Any = None,
                      sample_weight: Any = None, nan_policy: NanPolicy = "raise") -> PrecisionRecallArea:
    """Average precision: pr_auc with the rule "step", whose other parameters it has.

    >>> round(vexroc.average_precision([0, 0, 1, 1], [0.1, 0.4, 0.35, 0.8]).area, 4)
    0.8333
    """
    return pr_auc(y_true, y_score, rule="step", interval=interval, prevalence=prevalence, n_resamples=n_resamples,
                  random_state=random_state, confidence_level=confidence_level, pos_label=pos_label,
                  neg_label=neg_label, missing=missing, direction=direction, count=count, sample_weight=sample_weight,
                  nan_policy=nan_policy)
