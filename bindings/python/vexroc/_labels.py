"""Labels of states and groups. Which are one value, which are missing and which make a state, the library says."""
from __future__ import annotations

import contextlib
import ctypes
import datetime
import enum
import numbers
from collections.abc import Iterator, Mapping
from collections.abc import Set as AbstractSet
from typing import Any, Final, NamedTuple

import numpy as np
import numpy.typing as npt

from ._inputs import Floats, array_of, categorical, check_label, is_hashable, is_missing, listed
from ._library import PYTHON_VOICE, check, library
from ._remarks import RemarkList
from ._structures import StateChoice

Codes = npt.NDArray[np.intp]


class Others(enum.Enum):
    """Its one member stands for all labels that are not named."""

    OTHERS = "others"

    def __repr__(self) -> str:
        return "vexroc.OTHERS"


OTHERS: Final = Others.OTHERS
"""As neg_label: every label that is not positive is negative."""

OTHER_STATE = 2.0
"""Of a case that is neither positive nor negative."""

_STATES = (0.0, 1.0, OTHER_STATE, np.nan)
_TEXT, _VALUE = 0, 1
_ABSENT = -2
_MANY_FRACTIONS = 10
_BOOLS = (bool, np.bool_)


def _text(label: Any) -> str | None:
    """What the label is for the library; None for one that equals itself only."""
    if isinstance(label, np.datetime64):
        return str(np.datetime_as_string(label, unit="auto"))
    if isinstance(label, np.generic):
        label = label.item()
    if isinstance(label, datetime.date):
        return str(label).removesuffix(" 00:00:00")
    return str(label) if isinstance(label, (str, numbers.Real)) else None


def _spelled(label: Any) -> tuple[bytes, int]:
    text = _text(label)
    spelling = repr(label) if text is None else text
    return spelling.encode(errors="surrogatepass"), _VALUE if text is None else _TEXT


def _factorized(name: str, values: Any) -> tuple[Codes, list[Any]]:
    """Codes of the labels, -1 where one is missing, and the labels in the order of the codes."""
    held = categorical(values)
    if held is not None:
        return np.asarray(held.codes, dtype=np.intp), list(held.categories)
    array = array_of(name, values)
    two = None if array.dtype.kind == "O" else _of_two(array)
    if two is None and array.dtype.kind in tuple("OUS"):
        return _factorized_objects(name, array.tolist())
    there, codes = two or np.unique(array, return_inverse=True)
    labels = list(there) if array.dtype.kind in tuple("mM") else there.tolist()
    known = sum(not is_missing(label) for label in labels)  # missing ones are the last
    return np.where(codes < known, codes, -1), labels[:known]


def _of_two(array: npt.NDArray[Any]) -> tuple[npt.NDArray[Any], Codes] | None:
    """What np.unique says of one or two labels but for their order, without sorting; None for more and missing ones."""
    if len(array) == 0:
        return None
    is_first = array == array[0]
    second = int(is_first.argmin())
    if is_first[second]:
        return array[:1], np.zeros(len(array), dtype=np.intp)
    if not bool((is_first | (array == array[second])).all()):
        return None
    return array[[0, second]], (~is_first).astype(np.intp)


def _factorized_objects(name: str, values: list[Any]) -> tuple[Codes, list[Any]]:
    try:
        labels = list(dict.fromkeys(values))
    except TypeError:
        position, label = next((p, v) for p, v in enumerate(values) if not is_hashable(v))
        raise TypeError(f"{name} has {label!r} ({type(label).__name__}) at position {position}, which cannot be a "
                        "label; give numbers, bools or texts") from None
    known = [label for label in labels if not is_missing(label)]
    codes = {**dict.fromkeys(labels, -1), **{label: code for code, label in enumerate(known)}}
    return np.fromiter(map(codes.__getitem__, values), dtype=np.intp, count=len(values)), known


@contextlib.contextmanager
def _words(missing: Any) -> Iterator[ctypes.c_void_p | None]:
    """The words that stand for a missing label: the usual ones, with more, or none."""
    if missing is None:
        yield None
        return
    words = ctypes.c_void_p()
    check(library().vexroc_words_new(ctypes.byref(words)))
    try:
        if missing is False:
            check(library().vexroc_words_clear(words))
        else:
            for word in _several("missing", missing, []):
                check(library().vexroc_words_add(words, _spelled(word)[0]))
        yield words
    finally:
        library().vexroc_words_free(words)


class _Labels:
    """The labels of a column, and what the library makes of them."""

    def __init__(self, name: str, values: Any):
        self.name = name
        self._library = library()
        self._address = ctypes.c_void_p()
        self._codes, self.known = _factorized(name, values)
        self._has_bools = any(isinstance(label, _BOOLS) for label in self.known)
        self._has_numbers = any(isinstance(label, numbers.Number) and not isinstance(label, bool)
                                for label in self.known)

    def __del__(self) -> None:
        self._library.vexroc_labels_free(self._address)

    def settle(self, missing: Any, named: list[Any]) -> None:
        """Tells the library which labels there are, which are missing, and which the caller names as values."""
        with _words(missing) as words:
            check(self._library.vexroc_labels_new(self.name.encode(errors="replace"), words, b".", PYTHON_VOICE,
                                                  ctypes.byref(self._address)))
        counts = np.bincount(self._codes + 1, minlength=len(self.known) + 1)[1:].tolist()
        self._spellings = [self._add(label, count) for label, count in zip(self.known, counts)]
        for label in named:
            text = self._given(label)
            check(self._library.vexroc_labels_name(self._address, text, len(text)))
        check(self._library.vexroc_labels_settle(self._address))

    def _add(self, label: Any, count: int) -> int:
        """The library's index of the label; a category need not have a case."""
        if count == 0:
            return _ABSENT
        text, kind = _spelled(self._plain(label))
        index = ctypes.c_int()
        check(self._library.vexroc_labels_add(self._address, text, len(text), kind, count, ctypes.byref(index)))
        return index.value

    def _given(self, label: Any) -> bytes:
        """The text of a label that the caller gives; a text may name a date."""
        if isinstance(label, (str, datetime.date)) and self.known and isinstance(self.known[0], np.datetime64):
            try:
                label = np.datetime64(label)
            except ValueError:
                pass  # no date, so it never occurs, which is told later
        if self._has_bools and (_equals(label, 0) or _equals(label, 1)):
            label = bool(label)
        return _spelled(self._plain(label))[0]

    def _plain(self, label: Any) -> Any:
        """Bools are True and False, or 1 and 0 in a column of numbers."""
        return int(label) if isinstance(label, _BOOLS) and self._has_numbers else label

    def spread(self, of_labels: list[float]) -> Floats:
        """The number of each case's label, NaN for a missing one."""
        return np.asarray(np.array([*of_labels, np.nan])[self._codes])

    def choose(self, positive: list[Any], negative: list[Any], others: bool) -> Floats:
        """The states. Throws what else to say when these labels do not make two states of the column."""
        texts = [[self._given(label) for label in chosen] for chosen in (positive, negative)]
        arrays = [(ctypes.c_char_p * len(chosen))(*chosen) for chosen in texts]
        choice = StateChoice(ctypes.sizeof(StateChoice), arrays[0], len(positive), arrays[1], len(negative), others)
        check(self._library.vexroc_labels_choose(self._address, ctypes.byref(choice)))
        state_of = self._library.vexroc_labels_state_of
        return self.spread([_STATES[state_of(self._address, index)] for index in self._spellings])

    def values(self) -> list[int]:
        """The value of each label, negative where it is missing or absent."""
        return [self._library.vexroc_labels_value_of(self._address, index) for index in self._spellings]

    def find(self, label: Any) -> int:
        """The value that a given label is; negative when no case has it."""
        text = self._given(label)
        return int(self._library.vexroc_labels_find(self._address, text, len(text)))

    def add_remarks(self, remarks: RemarkList) -> None:
        check(self._library.vexroc_labels_add_remarks(self._address, remarks.address))


def _equals(label: Any, number: int) -> bool:
    return isinstance(label, (numbers.Number, np.bool_)) and bool(label == number)


def _several(name: str, given: Any, known: list[Any]) -> list[Any]:
    """The labels that the caller gives as one or as a list."""
    several = isinstance(given, (list, AbstractSet)) or getattr(given, "ndim", 0) == 1 or (
        isinstance(given, tuple) and given not in known)
    return [check_label(name, label) for label in (given if several else [given])]


def _refuse_scores(labels: _Labels) -> None:
    fractions = sum(isinstance(label, float) and not label.is_integer() for label in labels.known)
    if fractions > _MANY_FRACTIONS:
        raise ValueError(f"{labels.name} has {len(labels.known)} different numbers, {fractions} of them fractional: "
                         "these are scores, not labels; are states and scores swapped?")


class States(NamedTuple):
    """1.0 for a positive case, 0.0 for a negative one, OTHER_STATE for one that is neither, NaN for a missing label."""

    column: Floats
    are_two: bool
    """Known to be 0.0 and 1.0 only."""

    def have_others(self) -> bool:
        return not self.are_two and bool(np.fmax.reduce(self.column, initial=0.0) == OTHER_STATE)


def _usual_states(name: str, values: Any) -> States | None:
    """Of numbers and bools that are their own states: without a copy where they are float64."""
    array = array_of(name, values)
    if array.dtype.kind not in tuple("iufb"):
        return None
    known = np.count_nonzero(array == 1) + np.count_nonzero(array == 0)
    are_two = bool(known == len(array))
    if not are_two and known + np.count_nonzero(array != array) != len(array):
        return None
    return States(np.ascontiguousarray(array, dtype=np.float64), are_two)


def to_states(name: str, values: Any, pos_label: Any, neg_label: Any, missing: Any, remarks: RemarkList) -> States:
    """pos_label None means 1, for labels that are all 0 and 1, or all -1 and 1, or bools."""
    may_be_usual = neg_label is None and (missing is None or missing is False) and (
        pos_label is None or _equals(pos_label, 1))
    if may_be_usual and categorical(values) is None and (usual := _usual_states(name, values)) is not None:
        return usual
    labels = _Labels(name, values)
    if may_be_usual and any(all(_equals(label, 1) or _equals(label, negative) for label in labels.known)
                            for negative in (0, -1)):
        return States(labels.spread([float(_equals(label, 1)) for label in labels.known]), False)
    _refuse_scores(labels)
    positive = [] if pos_label is None else _several("pos_label", pos_label, labels.known)
    named = neg_label is not None and neg_label is not OTHERS
    negative = _several("neg_label", neg_label, labels.known) if named else []
    labels.settle(missing, [])
    states = labels.choose(positive, negative, neg_label is OTHERS)
    labels.add_remarks(remarks)
    return States(states, False)


def _chosen(chosen: Any, shown: str) -> list[Any]:
    """The labels of the two groups that the caller chose."""
    if isinstance(chosen, (str, bytes, AbstractSet, Mapping)) or not hasattr(chosen, "__len__"):
        raise ValueError(f"group_values={chosen!r} ({type(chosen).__name__}) is no list of two values; give them in "
                         "the order in which to compare them")
    if len(chosen) != 2:
        raise ValueError(f"group_values={chosen!r} are not two values; give two of {shown}")
    return [check_label("group_values", label) for label in chosen]


def _values_of(pair: list[Any], labels: _Labels, shown: str) -> tuple[int, int]:
    first, second = (labels.find(label) for label in pair)
    for value, label in (first, pair[0]), (second, pair[1]):
        if value < 0:
            raise ValueError(f"group_values: {label!r} does not occur in {labels.name}, whose values are {shown}")
    if first == second:
        raise ValueError(f"group_values={pair!r} are the same value twice; give two of {shown}")
    return first, second


def to_groups(name: str, values: Any, chosen: Any, missing: Any, remarks: RemarkList) -> tuple[Floats, list[Any]]:
    """0.0 and 1.0 for the cases of the two groups, 2.0 for others, NaN for a missing label; and the two labels."""
    labels = _Labels(name, values)
    pair = [] if chosen is None else _chosen(chosen, listed(labels.known))
    labels.settle(missing, pair)
    labels.add_remarks(remarks)
    of_labels = labels.values()
    present = {value: label for value, label in zip(of_labels[::-1], labels.known[::-1]) if value >= 0}
    order = reversed(present) if categorical(values) is not None else sorted(present)
    there = [present[value] for value in order]
    if chosen is None and len(there) != 2:
        raise ValueError(f"{name} has the values {listed(there)}; say with group_values=, group_cut= or "
                         "group_mid_point= how to make two groups of them")
    pair = pair or there
    first, second = _values_of(pair, labels, listed(there))
    codes = {first: 0.0, second: 1.0}
    return labels.spread([codes.get(value, 2.0) if value >= 0 else np.nan for value in of_labels]), pair
