"""What the calls return. Arrays are read-only; a number that could not be computed is NaN."""
from __future__ import annotations

import math
from collections.abc import Callable, Iterator
from dataclasses import dataclass, field, fields
from typing import Any, NamedTuple, NoReturn

import numpy as np
import numpy.typing as npt

from ._inputs import Floats, Mask
from ._remarks import Remarks

Counted = npt.NDArray[np.int64]


def frozen(array: npt.NDArray[Any]) -> npt.NDArray[Any]:
    """The array, from now on read-only."""
    array.setflags(write=False)
    return array


class _Frozen:
    """Arrays of a copy, such as an unpickled one, are read-only too."""

    def __setstate__(self, state: dict[str, Any]) -> None:
        self.__dict__.update(state)
        for value in state.values():
            if isinstance(value, np.ndarray):
                frozen(value)


class Counts(dict[str, int]):
    """Numbers of cases by reason, which cannot be changed."""

    def _refuse(self, *_: Any, **__: Any) -> NoReturn:
        raise TypeError("the counts of a result cannot be changed; take a copy: dict(counts)")

    _any: Callable[..., Any] = _refuse
    __setitem__ = __delitem__ = __ior__ = update = clear = pop = popitem = setdefault = _any

    def __reduce__(self) -> tuple[type[Counts], tuple[dict[str, int]]]:
        return Counts, (dict(self),)


def _p(value: float) -> str:
    if math.isnan(value):
        return "no p value"
    return "p < 0.0001" if value < 0.0001 else f"p = {value:.4f}"


def case_text(n_positive: int, n_negative: int, n_omitted: int) -> str:
    omitted = f", {n_omitted} left out" if n_omitted else ""
    return f"{n_positive} positive and {n_negative} negative cases{omitted}"


def _interval(level: float, lower: float, upper: float, rule: str = "") -> str:
    if math.isnan(lower):
        return "no interval"
    return f"{level * 100:g} % interval {lower:.4f} to {upper:.4f}" + (f" ({rule})" if rule else "")


def _rule(result: Any) -> str:
    """How the bounds of a result were made."""
    drawn = "" if result.n_resamples is None else f", {result.n_resamples} replicates, seed {result.random_state}"
    return f"{result.interval}{drawn}"


def _with_remarks(text: str, cautions: Remarks, notes: Remarks) -> str:
    """The text, and a line below it for each caution and note."""
    return "\n".join([text, *(f"caution: {caution.text}" for caution in cautions),
                      *(f"note: {note.text}" for note in notes)])


@dataclass(frozen=True, repr=False, eq=False)
class RocCurve(_Frozen):
    """An empirical ROC curve: k distinct scores give k + 1 points.

    It goes from (0, 0) to (1, 1) unless a score is infinite or so large that adding 1 does not change it: no threshold
    lies beyond such a score, and an end point may be missing. Unpacks as in scikit-learn:
    ``fpr, tpr, thresholds = curve``.
    """

    fpr: Floats
    """1 - specificity, ascending, shape (points,)."""
    tpr: Floats
    """Sensitivity, ascending, shape (points,)."""
    thresholds: Floats
    """Midpoints between neighbouring scores, in their unit, shape (points,). At the ends 0 and 1 when all scores lie
    between them, otherwise the lowest score - 1 and the highest + 1."""
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    """Cases left out because a value is missing, or the label neither positive nor negative."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __iter__(self) -> Iterator[Floats]:
        return iter((self.fpr, self.tpr, self.thresholds))

    def __repr__(self) -> str:
        cases = case_text(self.n_positive, self.n_negative, self.n_omitted)
        return _with_remarks(f"<ROC curve: {len(self.fpr)} points, {cases}>", self.cautions, self.notes)


@dataclass(frozen=True, repr=False, eq=False)
class PrecisionRecallCurve(_Frozen):
    """A precision-recall curve, recall descending. Unpacks: ``precision, recall, thresholds = curve``."""

    precision: Floats
    """Shape (points,); NaN where nothing is classified as positive and no neighbour lends a value."""
    recall: Floats
    """Shape (points,)."""
    thresholds: Floats
    """Shape (points,), in the unit of the scores; NaN for an interpolated point, which no threshold gives."""
    interpolated: Mask
    """Shape (points,): True for a point between two measured ones."""
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __iter__(self) -> Iterator[Floats]:
        return iter((self.precision, self.recall, self.thresholds))

    def __repr__(self) -> str:
        text = (f"<precision-recall curve: {len(self.recall)} points, {int(np.count_nonzero(self.interpolated))} of "
                f"them interpolated, {case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


class _Framed:
    """A result of single numbers as a table of one row."""

    def to_frame(self) -> Any:
        """A pandas DataFrame with one row."""
        return pandas_for("to_frame").DataFrame([numbers_of(self)])


def pandas_for(purpose: str) -> Any:
    try:
        import pandas
    except ImportError as error:
        raise ImportError(f"{purpose} needs pandas: install python3-pandas, or pandas from PyPI") from error
    return pandas


def numbers_of(result: Any) -> dict[str, Any]:
    """The fields of a result that are no remarks."""
    return {one.name: getattr(result, one.name) for one in fields(result) if one.name not in ("cautions", "notes")}


@dataclass(frozen=True, repr=False)
class Area(_Framed):
    """Area under a ROC curve. ``float(result)`` is the area."""

    area: float
    """Share of (positive, negative) pairs in the right order, ties counting half; in [0, 1]. With sample_weight every
    pair has the product of its weights."""
    std_error: float
    """By the rule ``error``."""
    p_value: float
    """By the rule ``p_method``, against ``null_area``."""
    ci_lower: float
    """Lower confidence bound by the rule ``interval``."""
    ci_upper: float
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    """Cases left out because a value is missing. In an analysis: cases of the data, of the record's group where there
    are groups, that do not count here for want of a state, value or usable weight."""
    confidence_level: float = 0.95
    interval: str = "score"
    """The rule of the bounds: "score", "newcombe", "logit", "wald", "wald-delong", "bootstrap" or "bca". Where the one
    asked for is not defined it is the one in its place, and a note says so."""
    error: str = "delong"
    """The rule of the standard error: "delong", "hanley-mcneil", "bi-negative" or "weighted"."""
    p_method: str = "mann-whitney"
    """The rule of the p value: "mann-whitney-exact", "mann-whitney", "wald" or "wald-t"."""
    alternative: str = "two-sided"
    """Of the p value; the bounds are two-sided."""
    null_area: float = 0.5
    log10_p: float = math.nan
    """Decimal logarithm of p_value, also where that is 0 for being too small."""
    z: float = math.nan
    """Of the test; t with "wald-t"; NaN with an exact p."""
    freedom: float = math.nan
    """Degrees of freedom of "wald-t"."""
    bootstrap_error: float = math.nan
    """Standard deviation of the replicates, of "bootstrap" and "bca"."""
    n_resamples: int | None = None
    """Replicates of a bootstrap, and its seed."""
    random_state: int | None = None
    distribution_changed: bool = False
    """True when bi-negative was asked for and replaced."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __float__(self) -> float:
        return self.area

    def __repr__(self) -> str:
        error = f"{self.error}, not bi-negative" if self.distribution_changed else self.error
        interval = _interval(self.confidence_level, self.ci_lower, self.ci_upper, _rule(self))
        text = (f"<area {self.area:.4f}, standard error {self.std_error:.4f} ({error}), {_p(self.p_value)} "
                f"({self._test}), {interval}; {self.cases}>")
        return _with_remarks(text, self.cautions, self.notes)

    @property
    def _test(self) -> str:
        words = [self.p_method]
        words += [self.alternative] if self.alternative != "two-sided" else []
        words += [f"against {self.null_area:g}"] if self.null_area != 0.5 else []
        return ", ".join(words)

    @property
    def cases(self) -> str:
        """How many cases took part, in words."""
        return case_text(self.n_positive, self.n_negative, self.n_omitted)


@dataclass(frozen=True, repr=False)
class MannWhitney(_Framed):
    """Rank sum test of an area against 1/2. ``statistic, p_value = result``, as in scipy."""

    u: float
    """Pairs of a positive and a negative case in the right order, ties counting half."""
    p_value: float
    p_method: str
    """"mann-whitney-exact" or "mann-whitney" (by the normal distribution)."""
    alternative: str
    z: float
    """NaN with an exact p."""
    log10_p: float
    area: float
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    correction: bool = True
    """For continuity, of the normal distribution."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __iter__(self) -> Iterator[float]:
        return iter((self.u, self.p_value))

    def __repr__(self) -> str:
        text = (f"<U {self.u:g}, {_p(self.p_value)} ({self.p_method}, {self.alternative}), area {self.area:.4f}; "
                f"{case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False)
class Comparison:
    """Difference of two areas, the first less the second."""

    first: Area
    """On the cases that the difference is of."""
    second: Area
    difference: float
    std_error: float
    """By the rule ``error``."""
    z: float
    p_value: float
    """Of z."""
    log10_p: float
    """Decimal logarithm of p_value, also where that is 0 for being too small."""
    ci_lower: float
    """difference -+ z * std_error."""
    ci_upper: float
    confidence_level: float = 0.95
    error: str = "delong"
    """The rule of the standard error: "delong" (of the pair), or of independent samples the one of both areas:
    "delong", "hanley-mcneil", "bi-negative", "weighted"."""
    alternative: str = "two-sided"
    """Of the p value; the bounds are two-sided."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def to_frame(self) -> Any:
        """A pandas DataFrame with one row: the fields, those of the areas with first_ and second_ before them."""
        row = numbers_of(self)
        for name in ("first", "second"):
            row |= {f"{name}_{key}": value for key, value in numbers_of(row.pop(name)).items()}
        return pandas_for("to_frame").DataFrame([row])

    def __repr__(self) -> str:
        first, second = self.first.cases, self.second.cases
        cases = f"{first} in each" if first == second else f"{first} against {second}"
        test = "" if self.alternative == "two-sided" else f" ({self.alternative})"
        text = (f"<difference {self.difference:.4f} ({self.first.area:.4f} - {self.second.area:.4f}), "
                f"standard error {self.std_error:.4f} ({self.error}), z = {self.z:.4f}, {_p(self.p_value)}{test}, "
                f"{_interval(self.confidence_level, self.ci_lower, self.ci_upper)}; {cases}>")
        return _with_remarks(text, self.cautions, self.notes)


class Estimate(NamedTuple):
    """An estimate between its confidence bounds: numbers, or read-only arrays of one shape."""

    value: Any
    lower: Any
    upper: Any


@dataclass(frozen=True, repr=False, eq=False)
class OperatingPoints(_Frozen):
    """What thresholds make of the cases. All arrays have the shape (rows,), an Estimate has three of them: ``value``,
    ``lower`` and ``upper``. A share 0/0 is NaN, c/0 infinite."""

    thresholds: Floats
    """In the unit of the scores."""
    tp: Counted
    """Numbers of cases: true positives."""
    fp: Counted
    tn: Counted
    fn: Counted
    sensitivity: Estimate
    specificity: Estimate
    ppv: Estimate
    """Positive predictive value, precision: at ``prevalence``, otherwise at that of the sample."""
    npv: Estimate
    lr_positive: Estimate
    """Likelihood ratio of a positive call: sensitivity / (1 - specificity)."""
    lr_negative: Estimate
    dor: Estimate
    """Diagnostic odds ratio."""
    accuracy: Estimate
    balanced_accuracy: Estimate
    f1: Estimate
    mcc: Estimate
    """Matthews' correlation; its bounds are NaN: no closed form holds."""
    youden: Estimate
    """sensitivity + specificity - 1."""
    kappa: Estimate
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    confidence_level: float = 0.95
    proportion: str = "wilson"
    """The rule of the bounds of shares: "wilson" or "exact"."""
    prevalence: float | None = None
    """That ppv and npv were asked for at; None: that of the sample."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __len__(self) -> int:
        return len(self.thresholds)

    def to_frame(self) -> Any:
        """A pandas DataFrame with a row for each threshold; bounds are in columns such as ppv_lower."""
        columns: dict[str, Any] = {}
        for name, value in numbers_of(self).items():
            if isinstance(value, Estimate):
                columns |= {name: value.value, f"{name}_lower": value.lower, f"{name}_upper": value.upper}
            elif isinstance(value, np.ndarray):
                columns[name] = value
        return pandas_for("to_frame").DataFrame(columns)

    def __repr__(self) -> str:
        at = "of the sample" if self.prevalence is None else f"{self.prevalence:g}"
        text = (f"<{len(self)} operating points, {self.confidence_level * 100:g} % intervals ({self.proportion}), "
                f"prevalence {at}; {case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False, eq=False)
class FixedRate(_Framed):
    """Sensitivity at a fixed specificity, or the reverse. The bounds know that the threshold was chosen on the same
    data."""

    rate: str
    """"sensitivity" or "specificity"."""
    share: float
    """That the other rate has at least."""
    reached: float
    """The rate at the threshold that has so much."""
    ci_lower: float
    """Of ``reached``, by the rule ``interval``: "btii", "bootstrap" or "none"."""
    ci_upper: float
    interpolated: float
    """The rate of the curve at just the share."""
    std_error: float
    interval: str
    confidence_level: float = 0.95
    n_resamples: int | None = None
    random_state: int | None = None

    def __str__(self) -> str:
        interval = _interval(self.confidence_level, self.ci_lower, self.ci_upper, _rule(self))
        other = "specificity" if self.rate == "sensitivity" else "sensitivity"
        return f"{self.rate} {self.reached:.4f} at {other} {self.share:g} or more, {interval}"

    def __repr__(self) -> str:
        return f"<{self}>"


@dataclass(frozen=True, repr=False, eq=False)
class BestThreshold(_Frozen, _Framed):
    """The threshold that is best by a criterion. ``float(result)`` is it."""

    threshold: float
    """Of tied ones the one that calls fewest cases positive; NaN where none meets the constraints."""
    value: float
    """Of the criterion: what is largest; of "closest" and "equal" the distance, which is smallest."""
    criterion: str
    thresholds: Floats
    """All tied ones, ascending, shape (ties,)."""
    points: OperatingPoints
    """Their rows."""
    rate: FixedRate | None = None
    """With "specificity=..." or "sensitivity=..."."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __float__(self) -> float:
        return self.threshold

    def to_frame(self) -> Any:
        """A pandas DataFrame: the rows of all ties, with criterion, value and whether it is the chosen one."""
        frame = self.points.to_frame()
        frame.insert(0, "criterion", self.criterion)
        frame.insert(1, "value", self.value)
        frame.insert(2, "chosen", self.thresholds == self.threshold)
        return frame

    def __repr__(self) -> str:
        ties = f", {len(self.thresholds)} ties" if len(self.thresholds) > 1 else ""
        cases = case_text(self.points.n_positive, self.points.n_negative, self.points.n_omitted)
        what = f"{self.criterion} {self.value:.4f}" if self.rate is None else str(self.rate)
        text = f"<threshold {self.threshold:g}: {what}{ties}; {cases}>"
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False)
class PartialArea(_Framed):
    """Part of the area under a ROC curve."""

    area: float
    """In the unit of the whole area: at most the width of the band."""
    std_error: float
    """Knows that the borders of the band are estimated; NaN with a single case of a state."""
    ci_lower: float
    """By the rule ``interval``."""
    ci_upper: float
    standardized: float
    """1/2 on the diagonal, 1 at the top (McClish 1989): the number of scikit-learn's max_fpr."""
    standardized_error: float
    standardized_lower: float
    standardized_upper: float
    rate: str
    """"fpr": the area under the curve over false positive rates; "tpr": that to its right over sensitivities."""
    band: tuple[float, float]
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    confidence_level: float = 0.95
    interval: str = "logit"
    bootstrap_error: float = math.nan
    n_resamples: int | None = None
    random_state: int | None = None
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __repr__(self) -> str:
        low, high = self.band
        specificity = f", specificity {1 - high:g} to {1 - low:g}" if self.rate == "fpr" else ""
        text = (f"<partial area {self.area:.4f} ({self.rate} {low:g} to {high:g}{specificity}), standard error "
                f"{self.std_error:.4f}, {_interval(self.confidence_level, self.ci_lower, self.ci_upper, _rule(self))}, "
                f"standardized {self.standardized:.4f}; "
                f"{case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False)
class PrecisionRecallArea(_Framed):
    """Area under a precision-recall curve. ``float(result)`` is the area."""

    area: float
    ci_lower: float
    """By the rule ``interval``."""
    ci_upper: float
    rule: str
    """"integral" (the interpolated curve), "step" (average precision) or "trapezoid"."""
    prevalence: float
    """That the area holds at."""
    chance: float
    """The area of a test that says nothing."""
    lowest: float
    """The lowest possible one of so many cases without ties; NaN where it is not defined."""
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    confidence_level: float = 0.95
    interval: str = "logit"
    bootstrap_error: float = math.nan
    n_resamples: int | None = None
    random_state: int | None = None
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __float__(self) -> float:
        return self.area

    def __repr__(self) -> str:
        text = (f"<precision-recall area {self.area:.4f} ({self.rule}), "
                f"{_interval(self.confidence_level, self.ci_lower, self.ci_upper, _rule(self))}, prevalence "
                f"{self.prevalence:.4f}; {case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False, eq=False)
class NetBenefit(_Frozen):
    """Net benefit of calling cases positive from a risk on. All arrays have the shape (thresholds,)."""

    thresholds: Floats
    """Risks in (0, 1)."""
    net_benefit: Floats
    """Of the scores."""
    treat_all: Floats
    """Of calling every case positive; that of calling none is 0."""
    tp: Counted
    fp: Counted
    prevalence: float
    """That the benefits hold at."""
    mean_score: float
    """Of the scores, which are risks; compare with ``observed``, the share of positive cases.

    At a stated prevalence q: q times the mean of the positive cases plus 1 - q times that of the negative ones,
    and q."""
    observed: float
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def to_frame(self) -> Any:
        """A pandas DataFrame with a row for each threshold."""
        return pandas_for("to_frame").DataFrame({
            name: getattr(self, name) for name in ("thresholds", "net_benefit", "treat_all", "tp", "fp")})

    def __repr__(self) -> str:
        text = (f"<net benefit at {len(self.thresholds)} thresholds, prevalence {self.prevalence:.4f}; mean score "
                f"{self.mean_score:.4f}, observed {self.observed:.4f}; "
                f"{case_text(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True)
class Group:
    """Which cases a record is about: those whose value in the column is ==, < or >= the value."""

    column: str
    operation: str
    value: Any

    def is_called(self, name: object) -> bool:
        """Does the name mean this group among those of its analysis?"""
        return name == str(self) or name == (self.value if self.operation == "==" else self.operation)

    def __str__(self) -> str:
        value = repr(float(self.value)).removesuffix(".0") if isinstance(self.value, float) else str(self.value)
        return f"{self.column} {self.operation} {value}"


@dataclass(frozen=True, repr=False, eq=False)
class Record:
    """Result of one test variable, over all cases or in one group."""

    test: Any
    """Name of its column, as it was given."""
    group: Group | None
    area: Area
    gini: float
    """2 * area - 1."""
    ks_maximum: float
    """Largest sensitivity + specificity - 1; NaN without a curve."""
    ks_threshold: float
    """Its threshold, in the unit of the test variable."""
    ties: bool
    """Whether positive and negative cases share a value."""
    weighted_positive: float
    """Sum of the weights; the number of cases without weights. Areas and curves count every case once."""
    weighted_negative: float
    roc: RocCurve | None = None
    precision_recall: PrecisionRecallCurve | None = None

    @property
    def name(self) -> str:
        return str(self.test) if self.group is None else f"{self.test} ({self.group})"

    def __repr__(self) -> str:
        return f"<{self.name}: {repr(self.area)[1:]}"


@dataclass(frozen=True, repr=False, eq=False)
class Analysis:
    """A whole analysis. Its records come in the order of the tests, with a group one for each group.

    ``analysis[test]`` is the record of a test, the first group's where there are groups; ``analysis[test, group]`` that
    of one group: its value, "<" or ">=", or its whole text such as "age < 50". Iterating gives the records.
    """

    records: tuple[Record, ...]
    comparisons: tuple[Comparison, ...] = ()
    """Paired: (0, 1), (0, 2), ..., (1, 2), ... Independent: one per test."""
    compared: tuple[tuple[Record, Record], ...] = ()
    """The records of each comparison."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)
    omitted: Counts = field(default_factory=Counts)
    """Number of cases left out, by reason; one case may count under several."""

    def __iter__(self) -> Iterator[Record]:
        return iter(self.records)

    def __len__(self) -> int:
        return len(self.records)

    def __contains__(self, test: object) -> bool:
        return any(record.test == test for record in self.records)

    def __getitem__(self, key: Any) -> Record:
        whole = key in self or not isinstance(key, tuple) or len(key) != 2  # the name of a column may be a tuple
        test, group = (key, None) if whole else key
        for record in self.records:
            if record.test == test and (whole or (record.group is not None and record.group.is_called(group))):
                return record
        raise KeyError(f"no record {key!r}; there are " + ", ".join(record.name for record in self.records))

    def to_frame(self) -> Any:
        """A pandas DataFrame with a row for each record."""
        shown = ("gini", "ks_maximum", "ks_threshold", "ties", "weighted_positive", "weighted_negative")
        return pandas_for("to_frame").DataFrame([
            {"test": record.test, "group": None if record.group is None else str(record.group),
             **numbers_of(record.area), **{name: getattr(record, name) for name in shown}} for record in self.records])

    def __repr__(self) -> str:
        lines = [repr(record) for record in self.records]
        lines += [f"{first.name} - {second.name}: {comparison!r}"
                  for comparison, (first, second) in zip(self.comparisons, self.compared)]
        lines += [f"left out: {count}, {reason}" for reason, count in self.omitted.items()]
        return _with_remarks("\n".join(lines), self.cautions, self.notes)


def number(value: float) -> float:
    """The value; for any NaN, the library's missing value included, the ordinary one."""
    return math.nan if value != value else value


def pr_curve_of(precision: Floats, recall: Floats, thresholds: Floats, interpolated: Mask, n_positive: int,
                n_negative: int, n_omitted: int, cautions: Remarks = (), notes: Remarks = ()) -> PrecisionRecallCurve:
    thresholds[interpolated] = math.nan
    return PrecisionRecallCurve(frozen(precision), frozen(recall), frozen(thresholds), frozen(interpolated),
                                n_positive, n_negative, n_omitted, cautions, notes)
