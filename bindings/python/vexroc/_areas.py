"""Areas and their comparisons over arrays."""
from __future__ import annotations

from collections.abc import Mapping
from dataclasses import replace
from typing import Any

from ._cases import Cases, Directions, Summary, out_of_memory, weights_of
from ._handle import paired
from ._inputs import NanPolicy, check_directions
from ._library import library, normal_p
from ._options import (Alternative, AreaQuestion, Distribution, Exact, Interval, PMethod, area_question,
                       infer_area)
from ._remarks import RemarkList
from ._results import Area, Comparison, MannWhitney, number
from ._structures import AreaInference, AreaResult, ComparisonResult


def _add_remarks(cases: Cases, summary: Summary, r: AreaInference, asked: AreaQuestion, compared: bool = False) -> None:
    """compared: the standard error makes the p value of a difference, too."""
    cases.add_remarks(r.positive, r.negative, summary.facts().values, area=r.area, std_error=r.std_error,
                      lower=r.lower, upper=r.upper, interval=r.interval, p_method=b"wald" if compared else r.p_method,
                      alternative=asked.alternative.encode(), p_value=r.p_value, level=asked.confidence_level,
                      null_area=r.null_area, edge=r.edge, percentile=r.percentile, held=r.held)


def _area(cases: Cases, asked: AreaQuestion, compared: bool = False) -> Area:
    """The area of the only scores, after adding what there is to say of it."""
    if asked.distribution == "bi-negative":
        return _bi_negative(cases, asked)
    summary = cases.summary()
    r = infer_area(summary.address, cases.is_smaller(), asked)
    _add_remarks(cases, summary, r, asked, compared)
    interval = r.interval.decode()
    return Area(number(r.area), number(r.std_error), number(r.p_value), number(r.lower), number(r.upper), r.positive,
                r.negative, cases.n_omitted, asked.confidence_level, interval, r.error.decode(), r.p_method.decode(),
                asked.alternative, asked.null, number(r.log10_p), number(r.z), number(r.freedom),
                number(r.bootstrap_error), *asked.drawn(interval))


def _bi_negative(cases: Cases, asked: AreaQuestion) -> Area:
    """Of the call over arrays, the only one that knows this error."""
    cases.repeat()
    result: AreaResult = library().auc(*cases.arguments(*cases.scores), b"include", cases.directions[0].encode(),
                                       b"bi-negative", asked.confidence_level)
    states = cases.states_of()
    if (result.n_positive, result.n_negative) != states:
        out_of_memory()
    changed = states[0] != states[1]
    if changed:
        cases.remarks.add("distribution-changed")
    area, std_error, z, p_value, log10_p, lower, upper = number(result.area), number(result.std_error), *[number(
        float("nan"))] * 5
    if std_error != 0:  # of an error of 0 nothing can be said
        z = (area - asked.null) / std_error
        p_value, log10_p = normal_p(z, asked.alternative)
        lower, upper = number(result.ci_lower), number(result.ci_upper)
    cases.add_remarks(*states, area=area, std_error=std_error, lower=lower, upper=upper, interval=b"wald",
                      p_method=b"wald", alternative=asked.alternative.encode(), p_value=p_value,
                      level=asked.confidence_level, null_area=asked.null)
    return Area(area, std_error, p_value, lower, upper, *states, cases.n_omitted, asked.confidence_level, "wald",
                "hanley-mcneil" if changed else "bi-negative", "wald", asked.alternative, asked.null, log10_p, z,
                distribution_changed=changed)


def auc(y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
        direction: Directions = "larger", distribution: Distribution = "nonparam", interval: Interval | None = None,
        p_method: PMethod | None = None, exact: Exact = "auto", null: float = 0.5,
        alternative: Alternative = "two-sided", small_sample: bool = False, n_resamples: int = 1999,
        random_state: int = 1, confidence_level: float = 0.95, count: Any = None, sample_weight: Any = None,
        nan_policy: NanPolicy = "raise") -> Area:
    """Area under the ROC curve with its standard error, interval and test. Takes states and scores; it is not the
    trapezoid rule for points of a curve, sklearn.metrics.auc(x, y).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    interval
        "score" (Newcombe 2006, Statist. Med. 25, 559-573, with DeLong's variance as guard), which covers what it
        promises also for few cases and areas near 1; "newcombe"; "logit" (Pepe 2003); "wald": area -+ z * std_error
        of Hanley and McNeil (1982, Radiology 143, 29-36), "wald-delong" that of DeLong, DeLong and Clarke-Pearson
        (1988, Biometrics 44, 837-845); "bootstrap" (percentiles) and "bca" (Efron 1987, J. Am. Statist. Assoc. 82,
        171-185). None: score; logit with sample_weight. The standard error is DeLong's but for "wald".
    p_method
        "mann-whitney", the rank sum test of the area 0.5; "wald": (area - null) / std_error as a standard normal
        number. None: mann-whitney; wald with another null and with sample_weight.
    exact
        Is the p of mann-whitney that of all ways in which the scores can fall to the states? "auto": up to 4e6 steps,
        about 10 ms; "always", up to 1e11; "never": by the normal distribution.
    null
        Area in (0, 1) that the p value is against.
    alternative
        "two-sided", "greater" or "less" (than null): of the p value. The interval stays two-sided.
    small_sample
        True: "wald" with DeLong's error takes Student's t (Brunner and Munzel 2000, Biometrical J. 42, 17-25).
    n_resamples, random_state
        Replicates of a bootstrap and its seed, integers: the same seed gives the same bits on every machine.
    distribution
        "bi-negative" (exponential): the standard error for equally many positive and negative cases, replaced
        otherwise, which the result tells. With "wald" as interval and p_method only, which it implies.
    confidence_level
        Of the interval, in (0, 1).
    sample_weight : shape (n,)
        Inverse sampling probabilities on any scale, 0 leaves a case out: they move area and error (Binder 1983, Int.
        Statist. Rev. 51, 279-292). For repeated cases give count.
    pos_label, neg_label, missing, direction, count, nan_policy
        As in roc_curve.

    Returns
    -------
    Area
        Numbers, and the names of the rules that made them. NaN where a rule defines none: in all statistics without a
        positive or without a negative case, in the standard error with a single one.

    Raises
    ------
    ValueError
        Shapes, lengths, labels, words or numbers that do not fit, or not together; missing values with nan_policy
        "raise".
    TypeError
        Scores or a confidence level that are no numbers.

    Examples
    --------
    >>> area = vexroc.auc([True, False, True, False] * 5, [5, 1, 3, 4] * 5)
    >>> round(area.ci_lower, 3), round(area.ci_upper, 3), area.interval
    (0.477, 0.902, 'score')
    >>> round(area.std_error, 3), area.error, round(area.p_value, 3), area.p_method
    (0.118, 'delong', 0.077, 'mann-whitney-exact')
    """
    asked = area_question(confidence_level, interval, p_method, exact, null, alternative, small_sample, n_resamples,
                          random_state, distribution)
    if distribution == "bi-negative" and (small_sample or sample_weight is not None):
        raise ValueError("distribution='bi-negative' goes neither with small_sample nor with sample_weight")
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, sample_weight))
    area = _area(cases, asked)
    cautions, notes = cases.remarks.tell()
    return replace(area, cautions=cautions, notes=notes) if cautions or notes else area


def mann_whitney(y_true: Any, y_score: Any, *, alternative: Alternative = "two-sided", exact: Exact = "auto",
                 correction: bool = True, pos_label: Any = None, neg_label: Any = None, missing: Any = None,
                 direction: Directions = "larger", count: Any = None, nan_policy: NanPolicy = "raise") -> MannWhitney:
    """Rank sum test of Mann and Whitney: do positive and negative cases have scores of one distribution?

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score : shape (n,)
        Test value of each case, as in roc_curve.
    alternative
        "two-sided", "greater" (positive cases have the scores of the positive end) or "less".
    exact
        As in auc. Ties are kept (Streitberg and Roehmel 1986, Statist. Software Newsletter 12, 10-17), and the
        two-sided p is the share of all ways that are as far from the middle or farther.
    correction
        For continuity, of the p by the normal distribution.
    pos_label, neg_label, missing, direction, count, nan_policy
        As in roc_curve.

    Returns
    -------
    MannWhitney
        Numbers; NaN without a positive or without a negative case.

    Raises
    ------
    ValueError, TypeError
        As in auc.

    Examples
    --------
    >>> statistic, p_value = vexroc.mann_whitney([0, 0, 1, 1, 1], [1, 2, 3, 4, 5])
    >>> statistic, round(p_value, 4)
    (6.0, 0.2)
    """
    asked = area_question(0.95, None, "mann-whitney", exact, 0.5, alternative)
    cases = Cases(("y_true", y_true), {"y_score": y_score}, (pos_label, neg_label, missing), direction, nan_policy,
                  weights_of(count, None))
    summary = cases.summary()
    r = infer_area(summary.address, cases.is_smaller(), asked, not correction)
    _add_remarks(cases, summary, r, asked)
    return MannWhitney(number(r.u), number(r.p_value), r.p_method.decode(), alternative, number(r.z),
                       number(r.log10_p), number(r.area), r.positive, r.negative, cases.n_omitted, bool(correction),
                       *cases.remarks.tell())


def compare_paired(y_true: Any, y_score_1: Any, y_score_2: Any, *, pos_label: Any = None, neg_label: Any = None,
                   missing: Any = None, direction: Directions = "larger", interval: Interval | None = None,
                   alternative: Alternative = "two-sided", confidence_level: float = 0.95, count: Any = None,
                   nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of two test variables of the same cases (DeLong, DeLong and Clarke-Pearson 1988, Biometrics
    44, 837-845).

    Parameters
    ----------
    y_true : shape (n,)
        State of each case, as in roc_curve.
    y_score_1, y_score_2 : shape (n,)
        Test values, the same cases in the same order. With nan_policy "omit" a case that misses either is left out.
    interval
        Of the two areas, as in auc.
    alternative
        "two-sided", "greater" (the first area) or "less": of the p value.
    pos_label, neg_label, missing, direction, confidence_level, count, nan_policy
        As in auc.

    Returns
    -------
    Comparison
        Numbers: the first area less the second. The areas are what auc says of these cases, the standard error of
        their difference is that of DeLong, its interval difference -+ z * std_error.

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
    asked = area_question(confidence_level, interval, alternative=alternative)
    cases = Cases(("y_true", y_true), {"y_score_1": y_score_1, "y_score_2": y_score_2},
                  (pos_label, neg_label, missing), direction, nan_policy, weights_of(count, None))
    return paired(cases, asked)


def compare_independent(y_true_1: Any, y_score_1: Any, y_true_2: Any, y_score_2: Any, *, pos_label: Any = None,
                        neg_label: Any = None, missing: Any = None, direction: Directions = "larger",
                        distribution: Distribution = "nonparam", interval: Interval | None = None,
                        alternative: Alternative = "two-sided", confidence_level: float = 0.95, count_1: Any = None,
                        count_2: Any = None, sample_weight_1: Any = None, sample_weight_2: Any = None,
                        nan_policy: NanPolicy = "raise") -> Comparison:
    """Compares the areas of one test variable in two independent samples: the difference by its standard error, the
    root of the sum of both squared standard errors (Hanley and McNeil 1982, Radiology 143, 29-36).

    Parameters
    ----------
    y_true_1, y_score_1 : shape (n,)
        The first sample.
    y_true_2, y_score_2 : shape (m,)
        The second sample.
    interval
        Of the two areas, as in auc. Their standard errors are DeLong's but for "wald".
    alternative
        "two-sided", "greater" (the first area) or "less": of the p value.
    pos_label, neg_label, missing, direction, distribution, confidence_level, nan_policy
        As in auc, for both samples.
    count_1, count_2, sample_weight_1, sample_weight_2
        The count and sample_weight of auc, for each sample.

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
    (0.75, 0.8333, 0.8445)
    """
    asked = area_question(confidence_level, interval, alternative=alternative, distribution=distribution)
    check_directions(direction, ("y_score_1", "y_score_2"))
    remarks = RemarkList()
    given = ((y_true_1, y_score_1, count_1, sample_weight_1), (y_true_2, y_score_2, count_2, sample_weight_2))
    first, second = (
        _area(Cases((f"y_true_{number}", y_true), {f"y_score_{number}": y_score}, (pos_label, neg_label, missing),
                    _of_test(direction, f"y_score_{number}"), nan_policy,
                    weights_of(count, sample_weight, f"_{number}"), remarks), asked, True)
        for number, (y_true, y_score, count, sample_weight) in enumerate(given, 1))
    result: ComparisonResult = library().auc_comparison(*map(_as_result, (first, second)), asked.confidence_level)
    remarks.add_difference("", result.difference, result.std_error)
    return Comparison(first, second, number(result.difference), number(result.std_error), number(result.z),
                      *normal_p(result.z, alternative), number(result.ci_lower), number(result.ci_upper),
                      asked.confidence_level, " and ".join(dict.fromkeys((first.error, second.error))), alternative,
                      *remarks.tell())


def _as_result(area: Area) -> AreaResult:
    return AreaResult(area.n_positive, area.n_negative, area.area, area.std_error)


def _of_test(direction: Directions, test: str) -> Directions:
    return direction.get(test, "larger") if isinstance(direction, Mapping) else direction
