"""Checks what callers give and turns it into what the library reads: contiguous float64, one value per case."""
from __future__ import annotations

import decimal
import numbers
from collections.abc import Iterable, Mapping
from collections.abc import Set as AbstractSet
from typing import Any, Literal

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]
Mask = npt.NDArray[np.bool_]
NanPolicy = Literal["raise", "omit"]

MAX_CASES = 2**31 - 1
EXACT_INTEGERS = 2.0**53
"""From it on neighbouring integers become the same float64."""


def check_word(name: str, word: str, words: Iterable[str]) -> bytes:
    words = list(words)
    if not isinstance(word, str) or word not in words:
        raise ValueError(f"{name}={word!r} is not known; use " + " or ".join(map(repr, words)))
    return word.encode()


def check_number(name: str, value: Any, hint: str) -> float:
    if not isinstance(value, numbers.Real):
        raise TypeError(f"{name}={value!r} ({type(value).__name__}) is no number; {hint}")
    if value != value:
        raise ValueError(f"{name} is NaN; {hint}")
    return float(value)


def check_level(confidence_level: float) -> float:
    level = check_number("confidence_level", confidence_level, "give a share such as 0.95")
    if not 0.0 < level < 1.0:
        raise ValueError(f"confidence_level={confidence_level!r} is not between 0 and 1; give a share such as 0.95")
    return level


def check_lengths(columns: Mapping[str, npt.NDArray[Any]]) -> None:
    """Throws unless all columns have one value per case, and no more cases than the library can count."""
    lengths = {name: len(column) for name, column in columns.items()}
    if len(set(lengths.values())) > 1:
        raise ValueError(", ".join(f"{name} has {length} values" for name, length in lengths.items())
                         + "; give one value per case in each")
    name, length = next(iter(lengths.items()))
    if length > MAX_CASES:
        raise ValueError(f"{name} has {length} values; the library counts up to {MAX_CASES} cases")


def is_missing(value: object) -> bool:
    # pandas.NA and NaT by name: pandas need not be there, and NA answers no comparison.
    return value is None or type(value).__name__ in ("NAType", "NaTType") or (
        isinstance(value, (float, np.floating)) and bool(value != value)) or (
        isinstance(value, decimal.Decimal) and value.is_nan()) or (
        isinstance(value, (np.datetime64, np.timedelta64)) and bool(np.isnat(value)))


def is_hashable(value: object) -> bool:
    try:
        hash(value)
    except TypeError:
        return False
    return True


def check_label(name: str, label: Any) -> Any:
    """The label, which is one value that could occur."""
    if isinstance(label, np.ndarray) and label.ndim == 0:
        label = label[()]
    if not is_hashable(label) or isinstance(label, AbstractSet):
        raise TypeError(f"{name}={label!r} ({type(label).__name__}) is no single label; give one, as it stands in the "
                        "column")
    if is_missing(label):
        raise ValueError(f"{name}={label!r} is a missing value, which no case has; give a label that occurs")
    return label


def _one_dimensional(name: str, array: npt.NDArray[Any]) -> npt.NDArray[Any]:
    if array.ndim != 1:
        hints = {0: "; give a list, an array or a column", 2: "; take one column, such as scores[:, 1]"}
        hint = hints.get(array.ndim, "")
        raise ValueError(f"{name} has shape {array.shape}; one dimension is expected, one value per case{hint}")
    return array


def _categorical(values: Any) -> Any:
    """The pandas.Categorical behind a column of categories; None for any other column."""
    if hasattr(getattr(values, "dtype", None), "categories"):
        held = getattr(values, "array", values)  # of a Series or an Index
        return held if hasattr(held, "codes") else None
    return None


def _masked(name: str, data: npt.NDArray[Any], mask: Mask) -> npt.NDArray[Any]:
    _one_dimensional(name, data)
    array: npt.NDArray[Any]
    if data.dtype.kind in tuple("iufb"):
        array = to_numbers(name, np.where(mask, data.dtype.type(0), data))
        array[mask] = np.nan
    else:
        array = data.astype(object)
        array[mask] = None
    return array


def _array(name: str, values: Any) -> npt.NDArray[Any]:
    """A one-dimensional array; missing numbers are NaN."""
    dtype = getattr(values, "dtype", None)
    kind = getattr(dtype, "kind", "")
    array: npt.NDArray[Any]
    if dtype is not None and not isinstance(dtype, np.dtype) and kind in tuple("iufb"):
        array = values.to_numpy(dtype=np.float64, na_value=np.nan)  # a nullable column of pandas
        if kind in tuple("iu"):
            _check_exact(name, values.to_numpy(dtype=dtype.numpy_dtype, na_value=0), array)
        return _one_dimensional(name, array)
    if isinstance(values, np.ma.MaskedArray):
        return _masked(name, np.asarray(values.data), np.zeros(values.shape, np.bool_) | values.mask)
    texts = isinstance(values, (list, tuple)) and len(values) > 0 and isinstance(values[0], (str, bytes))
    try:
        array = np.array(values, dtype=object) if texts else np.asarray(values)
    except ValueError:
        raise ValueError(f"{name} is ragged; give one value per case, one-dimensional") from None
    _one_dimensional(name, array)
    if isinstance(values, (list, tuple)) and (array.dtype.kind in tuple("US") or (
            array.dtype.kind == "f" and bool((np.abs(array) >= EXACT_INTEGERS).any()))):
        # NumPy would make the text "nan" of a missing value among texts, and round integers among floats.
        array = np.array(values, dtype=object)
    return array


def _check_exact(name: str, given: npt.NDArray[Any], result: Floats) -> None:
    """Throws for an integer that the float64 made of it does not equal."""
    for position in np.flatnonzero(np.abs(result) >= EXACT_INTEGERS):
        value = given[position]
        if isinstance(value, numbers.Integral) and int(value) != int(result[position]):
            raise ValueError(f"{name} has integers beyond 2**53, which float64 cannot tell apart: {value} at position "
                             f"{position}; subtract a constant, or give ranks")


def _check_long(name: str, given: npt.NDArray[np.longdouble], result: Floats) -> None:
    lost = (given != result) & ~np.isnan(result)
    if lost.any():
        raise ValueError(f"{name} has longdouble values that float64 cannot hold, the first at position "
                         f"{int(lost.argmax())}; round them, or give ranks")


def _objects_to_numbers(name: str, array: npt.NDArray[Any]) -> Floats:
    values = array.tolist()
    types = set(map(type, values))
    strange = tuple(kind for kind in types if not issubclass(kind, (numbers.Real, decimal.Decimal, np.bool_)))
    if strange:
        for position, value in enumerate(values):
            if isinstance(value, strange) and not is_missing(value):
                raise TypeError(f"{name} has {value!r} ({type(value).__name__}) at position {position}; "
                                "convert it to numbers first")
        values = [None if isinstance(value, strange) else value for value in values]
    try:
        with np.errstate(over="ignore"):  # of a longdouble, which is told below
            result = np.array(values, dtype=np.float64)  # None becomes NaN
    except OverflowError:
        raise ValueError(f"{name} has integers beyond 2**53, which float64 cannot tell apart; give ranks") from None
    _check_exact(name, array, result)
    if np.longdouble in types:
        long = [index for index, value in enumerate(values) if isinstance(value, np.longdouble)]
        _check_long(name, np.array([values[index] for index in long]), result[long])
    return result


def _categories_to_numbers(name: str, held: Any) -> Floats:
    """The numbers that the categories are, or their order where it is all there is."""
    usable = getattr(held.categories.dtype, "kind", "O") in tuple("iufb")
    if not usable and not held.ordered:
        raise TypeError(f"{name} has categories without an order, such as {_listed(list(held.categories[:1]))}; "
                        "make it ordered, or convert it to numbers")
    scale = to_numbers(name, held.categories) if usable else np.empty(0)
    if held.ordered and not (usable and bool(np.all(scale[1:] > scale[:-1]))):
        scale = np.arange(float(len(held.categories)))
    return np.asarray(np.append(scale, np.nan)[held.codes])  # the code of a missing one is -1


def to_numbers(name: str, values: Any) -> Floats:
    """One contiguous float64 per case, NaN for a missing one. Shares memory with the input where it can."""
    held = _categorical(values)
    if held is not None:
        return _categories_to_numbers(name, held)
    array = _array(name, values)
    kind = array.dtype.kind
    if kind == "O":
        return _objects_to_numbers(name, array)
    if kind not in tuple("iufb"):
        raise TypeError(f"{name} holds {array.dtype}, not numbers; convert it first, for instance with float()")
    with np.errstate(over="ignore"):  # of a longdouble, which is told below
        result = np.ascontiguousarray(array, dtype=np.float64)
    if array.dtype.itemsize == 8 and kind in tuple("iu"):
        _check_exact(name, array, result)
    elif array.dtype.itemsize > 8:
        _check_long(name, array, result)
    return result


def _sorted(labels: list[Any]) -> list[Any]:
    """In ascending order, by type first; TypeError where there is none."""
    return sorted(labels, key=lambda label: (str(type(label)), label))


def _listed(labels: list[Any]) -> str:
    try:
        labels = _sorted(labels)
    except TypeError:  # labels without an order stay in that of the cases
        pass
    shown = [str(label) if isinstance(label, np.generic) else repr(label) for label in labels[:10]]
    return ", ".join(shown) + (f" and {len(labels) - 10} more" if len(labels) > 10 else "")


class _Labels:
    """The labels of a column: as the array that it is, or as codes of the different ones, -1 for a missing one."""

    def __init__(self, name: str, values: Any):
        self.name = name
        self.array: npt.NDArray[Any] | None = None
        held = _categorical(values)
        if held is not None:
            self.codes = np.asarray(held.codes)
            self.table = {label: code for code, label in enumerate(held.categories)}
            return
        array = _array(name, values)
        if array.dtype.kind == "O":
            self._factorize(array)
        else:
            self.array = array

    def _factorize(self, array: npt.NDArray[Any]) -> None:
        labels = array.tolist()
        try:
            self.table = table = {label: code for code, label in enumerate(dict.fromkeys(labels))}
        except TypeError:
            position, label = next((p, v) for p, v in enumerate(array) if not is_hashable(v))
            raise TypeError(f"{self.name} has {label!r} ({type(label).__name__}) at position {position}, which cannot "
                            "be a label; give numbers, bools or texts") from None
        self.codes = np.fromiter(map(table.__getitem__, labels), dtype=np.int64, count=len(labels))
        lacking = [code for label, code in table.items() if is_missing(label)]
        if lacking:
            self.codes[np.isin(self.codes, lacking)] = -1

    def distinct(self) -> list[Any]:
        """The labels that occur: categories in their order, others as they come."""
        if self.array is None:
            present = set(np.unique(self.codes).tolist())
            return [label for label, code in self.table.items() if code in present]
        there = self.array[~self.missing()]
        return list(np.unique(there)) if self.array.dtype.kind in tuple("mM") else list(dict.fromkeys(there.tolist()))

    def missing(self) -> Mask:
        if self.array is None:
            return np.asarray(self.codes < 0)
        if self.array.dtype.kind in tuple("mM"):
            return np.asarray(np.isnat(self.array))
        if self.array.dtype.kind in tuple("fc"):
            return np.asarray(np.isnan(self.array))
        return np.zeros(len(self.array), dtype=np.bool_)

    def equal_to(self, label: Any) -> Mask:
        if self.array is None:
            return np.asarray(self.codes == self.table.get(label, -2))
        kind = self.array.dtype.kind
        if kind in tuple("mM"):
            try:
                label = np.datetime64(label) if kind == "M" else np.timedelta64(label)
            except (TypeError, ValueError):
                return np.zeros(len(self.array), dtype=np.bool_)
        elif not isinstance(label, {"U": (str,), "S": (bytes,)}.get(kind, (numbers.Number, np.bool_))):
            return np.zeros(len(self.array), dtype=np.bool_)
        return np.asarray(self.array == label, dtype=np.bool_)


def to_states(name: str, values: Any, pos_label: Any) -> Floats:
    """1.0 for a positive case, 0.0 for a negative one, NaN for a missing label.

    pos_label None means 1, for labels that are all 0 and 1, or all -1 and 1, or bools.
    """
    labels = _Labels(name, values)
    label = 1 if pos_label is None else check_label("pos_label", pos_label)
    usual = isinstance(label, (numbers.Number, np.bool_)) and bool(label == 1)
    positive = labels.equal_to(label)
    if usual and labels.array is not None and bool((positive | labels.equal_to(0)).all()):
        return to_numbers(name, labels.array)  # these numbers are the states; no copy where they are float64
    missing = labels.missing()
    if usual:
        usual = any(bool((positive | missing | labels.equal_to(negative)).all()) for negative in (0, -1))
    if not usual and pos_label is None:
        raise ValueError(f"{name} has the labels {_listed(labels.distinct())}; say with pos_label= which one is "
                         "positive")
    if not usual and not bool(positive.any()):
        raise ValueError(f"pos_label={pos_label!r} does not occur in {name}, whose labels are "
                         f"{_listed(labels.distinct()) or '(none)'}; check its spelling and type")
    return np.where(missing, np.nan, positive)


def _two_values(name: str, chosen: Any, present: list[Any]) -> tuple[Any, Any]:
    """The two group values that the caller chose."""
    if isinstance(chosen, (str, bytes, AbstractSet, Mapping)) or not hasattr(chosen, "__len__"):
        raise ValueError(f"group_values={chosen!r} ({type(chosen).__name__}) is no list of two values; give them in "
                         "the order in which to compare them")
    if len(chosen) != 2:
        raise ValueError(f"group_values={chosen!r} are not two values; give two of {_listed(present)}")
    first, second = (check_label("group_values", label) for label in chosen)
    if bool(first == second):
        raise ValueError(f"group_values={chosen!r} are the same value twice; give two of {_listed(present)}")
    return first, second


def to_groups(name: str, values: Any, chosen: Any) -> tuple[Floats, tuple[Any, Any]]:
    """0.0 and 1.0 for the cases of the two groups, 2.0 for others, NaN for a missing label; and the two labels."""
    labels = _Labels(name, values)
    present = labels.distinct()
    if chosen is not None:
        first, second = _two_values(name, chosen, present)
    elif len(present) != 2:
        raise ValueError(f"{name} has the values {_listed(present)}; say with group_values=, group_cut= or "
                         "group_mid_point= how to make two groups of them")
    else:
        try:
            first, second = present if _categorical(values) is not None else _sorted(present)
        except TypeError:
            raise ValueError(f"{name} has the values {_listed(present)}, which have no order; say with group_values= "
                             "which one is the first") from None
    for label in (first, second):
        if not bool(labels.equal_to(label).any()):
            raise ValueError(f"group_values: {label!r} does not occur in {name}, whose values are {_listed(present)}")
    groups = np.where(labels.equal_to(first), 0.0, np.where(labels.equal_to(second), 1.0, 2.0))
    groups[labels.missing()] = np.nan
    return groups, (first, second)


def complete_cases(columns: Mapping[str, Floats], nan_policy: NanPolicy) -> Mask | None:
    """Cases without a NaN in any column; None when these are all. Throws with nan_policy "raise" when they are not."""
    check_word("nan_policy", nan_policy, ("raise", "omit"))
    complete: Mask | None = None
    for name, column in columns.items():
        if not np.isnan(column.min(initial=0.0)):  # a minimum is NaN when a value is, and needs no array for the answer
            continue
        missing = np.isnan(column)
        if nan_policy == "raise":
            count = int(missing.sum())
            raise ValueError(f"{name} has {count} missing value{'s' * (count > 1)}, the first at position "
                             f"{int(missing.argmax())}; remove these cases, or call with nan_policy='omit'")
        complete = ~missing if complete is None else complete & ~missing
    return complete
