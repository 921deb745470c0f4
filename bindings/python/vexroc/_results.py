"""What the calls return. Arrays are read-only; a number that could not be computed is NaN."""
from __future__ import annotations

import math
from collections.abc import Callable, Iterator
from dataclasses import dataclass, field, fields
from typing import Any, NamedTuple, NoReturn

import numpy as np
import numpy.typing as npt

from ._inputs import Floats, Mask
from ._library import AreaResult, RecordResult, two_sided_p
from ._remarks import Remarks


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
    return "p < 0.0001" if value < 0.0001 else f"p = {value:.4f}"


def _cases(n_positive: int, n_negative: int, n_omitted: int) -> str:
    omitted = f", {n_omitted} left out" if n_omitted else ""
    return f"{n_positive} positive and {n_negative} negative cases{omitted}"


def _interval(level: float, lower: float, upper: float) -> str:
    return f"{level * 100:g} % interval {lower:.4f} to {upper:.4f}"


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
        cases = _cases(self.n_positive, self.n_negative, self.n_omitted)
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
                f"them interpolated, {_cases(self.n_positive, self.n_negative, self.n_omitted)}>")
        return _with_remarks(text, self.cautions, self.notes)


@dataclass(frozen=True, repr=False)
class Area:
    """Area under a ROC curve. ``float(result)`` is the area."""

    area: float
    """Share of (positive, negative) pairs in the right order, ties counting half; in [0, 1]."""
    std_error: float
    p_value: float
    """Two-sided, against the area 0.5; NaN, as are both bounds, where the standard error is 0."""
    ci_lower: float
    """Lower confidence bound, not clipped to [0, 1]."""
    ci_upper: float
    n_positive: int
    n_negative: int
    n_omitted: int = 0
    """Cases left out because a value is missing. In an analysis: cases of the data, of the record's group where there
    are groups, that do not count here for want of a state, value or usable weight."""
    confidence_level: float = 0.95
    interval: str = "wald"
    """What the interval is: "wald" or "wald-delong"."""
    distribution: str = "nonparam"
    """What the standard error is: "nonparam", "bi-negative" or "delong"."""
    distribution_changed: bool = False
    """True when bi-negative was asked for and replaced."""
    log10_p: float = math.nan
    """Decimal logarithm of p_value, also where that is 0 for being too small."""
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __float__(self) -> float:
        return self.area

    def __repr__(self) -> str:
        assumption = " (nonparam, not bi-negative)" if self.distribution_changed else (
            "" if self.distribution == "nonparam" else f" ({self.distribution})")
        inference = "no p value and interval" if math.isnan(self.p_value) else (
            f"{_p(self.p_value)}, {_interval(self.confidence_level, self.ci_lower, self.ci_upper)}")
        text = f"<area {self.area:.4f}, standard error {self.std_error:.4f}{assumption}, {inference}; {self.cases}>"
        return _with_remarks(text, self.cautions, self.notes)

    @property
    def cases(self) -> str:
        """How many cases took part, in words."""
        return _cases(self.n_positive, self.n_negative, self.n_omitted)


@dataclass(frozen=True, repr=False)
class Comparison:
    """Difference of two areas, the first less the second."""

    first: Area
    """On the cases that the difference is of."""
    second: Area
    difference: float
    std_error: float
    z: float
    p_value: float
    """Two-sided, of z."""
    log10_p: float
    """Decimal logarithm of p_value, also where that is 0 for being too small."""
    ci_lower: float
    ci_upper: float
    confidence_level: float = 0.95
    cautions: Remarks = field(default=(), compare=False)
    notes: Remarks = field(default=(), compare=False)

    def __repr__(self) -> str:
        first, second = self.first.cases, self.second.cases
        cases = f"{first} in each" if first == second else f"{first} against {second}"
        text = (f"<difference {self.difference:.4f} ({self.first.area:.4f} - {self.second.area:.4f}), "
                f"standard error {self.std_error:.4f}, z = {self.z:.4f}, {_p(self.p_value)}, "
                f"{_interval(self.confidence_level, self.ci_lower, self.ci_upper)}; {cases}>")
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
        try:
            import pandas
        except ImportError as error:
            raise ImportError("to_frame needs pandas: install python3-pandas, or pandas from PyPI") from error
        shown = ("gini", "ks_maximum", "ks_threshold", "ties", "weighted_positive", "weighted_negative")
        of_area = [one.name for one in fields(Area) if one.name not in ("cautions", "notes")]  # of the whole analysis
        return pandas.DataFrame([
            {"test": record.test, "group": None if record.group is None else str(record.group),
             **{name: getattr(record.area, name) for name in of_area},
             **{name: getattr(record, name) for name in shown}} for record in self.records])

    def __repr__(self) -> str:
        lines = [repr(record) for record in self.records]
        lines += [f"{first.name} - {second.name}: {comparison!r}"
                  for comparison, (first, second) in zip(self.comparisons, self.compared)]
        lines += [f"left out: {count}, {reason}" for reason, count in self.omitted.items()]
        return _with_remarks("\n".join(lines), self.cautions, self.notes)


def number(value: float) -> float:
    """The value; for any NaN, the library's missing value included, the ordinary one."""
    return math.nan if value != value else value


class Asked(NamedTuple):
    """What kind of area is asked for."""

    confidence_level: float
    interval: str
    distribution: str


def area_of(result: AreaResult | RecordResult, n_omitted: int, asked: Asked, used: str) -> Area:
    """used: what the standard error is."""
    std_error = number(result.std_error)
    area = number(result.area)
    p_value, log10_p, lower, upper = math.nan, math.nan, math.nan, math.nan
    if std_error != 0:  # of an error of 0 nothing can be said
        p_value, log10_p = two_sided_p((area - 0.5) / std_error)
        lower, upper = number(result.ci_lower), number(result.ci_upper)
    return Area(area, std_error, p_value, lower, upper, int(result.n_positive), int(result.n_negative), n_omitted,
                asked.confidence_level, asked.interval, used,
                asked.distribution == "bi-negative" and used == "nonparam", log10_p)


def pr_curve_of(precision: Floats, recall: Floats, thresholds: Floats, interpolated: Mask, n_positive: int,
                n_negative: int, n_omitted: int, cautions: Remarks = (), notes: Remarks = ()) -> PrecisionRecallCurve:
    thresholds[interpolated] = math.nan
    return PrecisionRecallCurve(frozen(precision), frozen(recall), frozen(thresholds), frozen(interpolated),
                                n_positive, n_negative, n_omitted, cautions, notes)
