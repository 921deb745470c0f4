"""The cases of a function of arrays: checked columns of states, scores and weights, and a summary of them."""
from __future__ import annotations

import ctypes
from collections.abc import Mapping
from typing import Any, Literal, NamedTuple, NoReturn

import numpy as np

from ._inputs import (MAX_CASES, Floats, Mask, NanPolicy, check_directions, check_lengths, check_order,
                      complete_cases, distinct_values, to_numbers)
from ._labels import OTHER_STATE, to_states
from ._library import check, library
from ._options import AreaQuestion, infer_area
from ._remarks import RemarkList
from ._structures import SummaryFacts, sized

Direction = Literal["larger", "smaller"]
Directions = Direction | Mapping[Any, Direction]

_NO_WEIGHTS, _FREQUENCY, _PROBABILITY = range(3)


class Weights(NamedTuple):
    """The numbers beside the cases, of which there may be none: how many cases each row stands for, or probability
    weights."""

    kind: int = _NO_WEIGHTS
    name: str = ""
    values: Any = None

    def column(self) -> Floats:
        """As numbers, after checking them; NaN where one is missing."""
        column = to_numbers(self.name, self.values)
        if self.kind == _FREQUENCY:
            wrong = (column < 0) | np.isinf(column) | ((column != np.floor(column)) & (column == column))
            refuse_weights(self.name, column, wrong, "a count is a whole number from 0")
        else:
            check_probabilities(self.name, column)
        return column


def refuse_weights(name: str, column: Floats, wrong: Mask, hint: str) -> None:
    """Throws where a weight is wrong."""
    if wrong.any():
        position = int(wrong.argmax())
        raise ValueError(f"{name} has {column[position]:g} at position {position}; {hint}")


def check_probabilities(name: str, column: Floats) -> None:
    """Throws for what is no inverse sampling probability."""
    refuse_weights(name, column, (column < 0) | np.isinf(column), "a weight is a finite number from 0")


def weights_of(count: Any, sample_weight: Any, suffix: str = "") -> Weights:
    """The one of the two that is given."""
    if count is not None and sample_weight is not None:
        raise ValueError("count and sample_weight do not go together; repeat the cases, or multiply the weights")
    if count is not None:
        return Weights(_FREQUENCY, "count" + suffix, count)
    return Weights() if sample_weight is None else Weights(_PROBABILITY, "sample_weight" + suffix, sample_weight)


class Cases:
    """Checked columns of the cases that take part, and what there is to say of them."""

    def __init__(self, y_true: tuple[str, Any], scores: Mapping[str, Any], labels: tuple[Any, Any, Any],
                 direction: Directions, nan_policy: NanPolicy, weights: Weights = Weights(),
                 remarks: RemarkList | None = None):
        name, states = y_true
        self.remarks = RemarkList() if remarks is None else remarks
        self.names, self.directions = list(scores), list(check_directions(direction, scores).values())
        self.kind = weights.kind
        weighted = {weights.name: weights.values} if weights.kind else {}
        check_order({name: states, **scores, **weighted})
        numbers = {test: to_numbers(test, values) for test, values in scores.items()}
        told = to_states(name, states, *labels, self.remarks)
        columns = {name: told.column, **numbers, **{weight: weights.column() for weight in weighted}}
        check_lengths(columns)
        if weights.kind:
            columns = _with_weight(columns, weights.name)
        kept = complete_cases(columns, nan_policy, {name} if told.are_two else ())
        if told.have_others():
            kept = (columns[name] != OTHER_STATE) & (True if kept is None else kept)
        if weights.kind == _PROBABILITY and not columns[weights.name].all():
            kept = (columns[weights.name] != 0) & (True if kept is None else kept)
        self.n_omitted = 0 if kept is None else self._number_of(~kept, columns.get(weights.name))
        chosen = [column if kept is None else column[kept] for column in columns.values()]
        self.weights = chosen.pop() if weights.kind else None
        self.states, *self.scores = chosen
        if self.n_omitted:
            self.remarks.add("left-out", "", f"{self.n_omitted} of {self.n_omitted + self.count()}")

    def _number_of(self, rows: Mask, weights: Floats | None) -> int:
        """The cases that these rows are; one where the number is missing."""
        if self.kind != _FREQUENCY or weights is None:
            return int(np.count_nonzero(rows))
        return int(np.nan_to_num(weights[rows], nan=1.0).sum())

    def count(self) -> int:
        """The cases that take part."""
        return len(self.states) if self.weights is None or self.kind != _FREQUENCY else int(self.weights.sum())

    def repeat(self) -> None:
        """Makes of every row as many as its count says, for calls that take no counts."""
        if self.weights is None or self.kind != _FREQUENCY:
            return
        if self.count() > MAX_CASES:
            raise ValueError(f"count makes {self.count()} cases; the library counts up to {MAX_CASES} here")
        times = self.weights.astype(np.int64)
        self.states, *self.scores = (np.repeat(column, times) for column in (self.states, *self.scores))
        self.weights, self.kind = None, _NO_WEIGHTS

    def arguments(self, *scores: Floats) -> list[int | None]:
        """Addresses, the number of cases, and null for the positive value: 1.0."""
        return [self.states.ctypes.data, *(column.ctypes.data for column in scores), len(self.states), None]

    def states_of(self) -> tuple[int, int]:
        """How many cases are positive, and negative."""
        positive = int(np.count_nonzero(self.states))
        return positive, len(self.states) - positive

    def is_smaller(self) -> bool:
        return self.directions[0] == "smaller"

    def subject(self) -> str:
        """How remarks call the scores: not at all where they are the only ones of a call."""
        return "" if self.names[0] == "y_score" else self.names[0]

    def add_remarks(self, n_positive: int, n_negative: int, distinct: int = -1, **facts: Any) -> None:
        """Adds what there is to say of an area, or of a curve, with these facts."""
        if distinct < 0:
            distinct = distinct_values(self.scores[0])
        self.remarks.add_area(self.subject(), test=self.names[0].encode(), n_positive=n_positive,
                              n_negative=n_negative, smaller_is_positive=self.is_smaller(),
                              distinct_values=min(distinct, 3), **facts)

    def add_remarks_of(self, summary: Summary, **facts: Any) -> None:
        """Adds what there is to say of the cases of a summary, of which something else than the area is asked; facts:
        of that. The standard error of the area is not shown, so that it lacks is not said."""
        r, told = infer_area(summary.address, self.is_smaller(), AreaQuestion(exact="never")), summary.facts()
        shown = {"interval": b"score", "p_method": b"mann-whitney", "std_error": 1.0, **facts}
        many = 3  # what a yes/no test's ROC area is, is not said of another number
        self.add_remarks(told.positive, told.negative, many, area=r.area, lower=r.lower, upper=r.upper, **shown)

    def summary(self) -> Summary:
        """Of the only scores."""
        return Summary(self.states, self.scores[0], self.weights, self.kind)


def _with_weight(columns: dict[str, Floats], name: str) -> dict[str, Floats]:
    """What a row of weight 0 misses does not matter."""
    weights = columns[name]
    unused = weights == 0
    if not unused.any():
        return columns
    return {key: column if column is weights else np.where(unused, 0.0, column) for key, column in columns.items()}


class Summary:
    """Distinct scores with their numbers of cases: all that inference on one curve asks of them."""

    def __init__(self, states: Floats, scores: Floats, weights: Floats | None, kind: int):
        self._library = library()
        self.address = ctypes.c_void_p()
        check(self._library.vexroc_summary_new(ctypes.byref(self.address)))
        check(self._library.vexroc_summary_add(self.address, scores.ctypes.data, states.ctypes.data, 1.0,
                                               None if weights is None else weights.ctypes.data, kind, len(states)))

    def __del__(self) -> None:
        self._library.vexroc_summary_free(self.address)

    def facts(self) -> SummaryFacts:
        facts = sized(SummaryFacts)
        check(self._library.vexroc_summary_tell(self.address, ctypes.byref(facts)))
        return facts

    def __len__(self) -> int:
        """Cut-offs of the curve."""
        return int(self._library.vexroc_cut_off_count(self.address))


def out_of_memory() -> NoReturn:
    raise MemoryError("the library found no memory for this call")
