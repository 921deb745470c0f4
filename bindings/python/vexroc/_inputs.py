"""Checks what callers give and turns it into what the library reads: contiguous float64, one value per case."""
from __future__ import annotations

import decimal
import math
import numbers
from collections.abc import Collection, Iterable, Mapping
from collections.abc import Set as AbstractSet
from typing import Any, Literal

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]
Mask = npt.NDArray[np.bool_]
NanPolicy = Literal["raise", "omit"]

MAX_CASES = 2**31 - 1
_DIRECTIONS = ("larger", "smaller")
EXACT_INTEGERS = 2.0**53
"""From it on neighbouring integers become the same float64."""


def check_word(name: str, word: str, words: tuple[str, ...]) -> bytes:
    if not isinstance(word, str) or word not in words:
        raise ValueError(f"{name}={word!r} is not known; use " + " or ".join(map(repr, words)))
    return word.encode()


def check_number(name: str, value: Any, hint: str) -> float:
    if not isinstance(value, numbers.Real):
        raise TypeError(f"{name}={value!r} ({type(value).__name__}) is no number; {hint}")
    if value != value:
        raise ValueError(f"{name} is NaN; {hint}")
    return float(value)


def check_directions(direction: Any, tests: Iterable[Any]) -> dict[Any, str]:
    """The direction of each test, given as one word for all or as a word for some."""
    if not isinstance(direction, Mapping):
        check_word("direction", direction, _DIRECTIONS)
        return dict.fromkeys(tests, direction)
    words = dict.fromkeys(tests, "larger")
    for test, word in direction.items():
        if test not in words:
            raise ValueError(f"direction names {test!r}, which is no test; the tests are {listed(list(words))}")
        check_word("direction", word, _DIRECTIONS)
    return {**words, **direction}


def check_share(name: str, value: Any, hint: str = "give a share such as 0.5") -> float:
    share = check_number(name, value, hint)
    if not 0.0 < share < 1.0:
        raise ValueError(f"{name}={value!r} is not between 0 and 1; {hint}")
    return share


def check_level(confidence_level: Any) -> float:
    return check_share("confidence_level", confidence_level, "give a share such as 0.95")


def check_whole(name: str, value: Any, lowest: int, highest: int) -> int:
    if isinstance(value, bool) or not isinstance(value, numbers.Integral):
        raise TypeError(f"{name}={value!r} ({type(value).__name__}) is no integer; give one from {lowest} on")
    whole = int(value)
    if not lowest <= whole <= highest:
        raise ValueError(f"{name}={value!r} is not between {lowest} and {highest}")
    return whole


def check_lengths(columns: Mapping[str, npt.NDArray[Any]]) -> None:
    """Throws unless all columns have one value per case, and no more cases than the library can count."""
    lengths = {name: len(column) for name, column in columns.items()}
    if len(set(lengths.values())) > 1:
        raise ValueError(", ".join(f"{name} has {length} values" for name, length in lengths.items())
                         + "; give one value per case in each")
    name, length = next(iter(lengths.items()))
    if length > MAX_CASES:
        raise ValueError(f"{name} has {length} values; the library counts up to {MAX_CASES} cases")


def check_order(columns: Mapping[str, Any]) -> None:
    """Throws for two pandas columns with mostly the same index labels at other positions: which cases belong together
    is not clear."""
    indexes = [(name, values.index) for name, values in columns.items()
               if hasattr(getattr(values, "index", None), "equals")]
    for name, index in indexes[1:]:
        first_name, first = indexes[0]
        if index is not first and len(index) == len(first) and not index.equals(first) and _is_moved(index, first):
            raise ValueError(f"{first_name} and {name} have the same index labels in another order, most of them; pair "
                             f"the cases by label, with {name}.reindex({first_name}.index), or by position, with "
                             f"{name}.to_numpy()")


def _is_moved(index: Any, first: Any) -> bool:
    """Are more than half of the labels those of the first index, some of them at another position?"""
    positions = {label: position for position, label in enumerate(first)}
    shared = [(position, positions[label]) for position, label in enumerate(index) if label in positions]
    return 2 * len(shared) > len(index) and any(here != there for here, there in shared)


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


def categorical(values: Any) -> Any:
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


def array_of(name: str, values: Any) -> npt.NDArray[Any]:
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


def _spells_number(value: Any) -> bool:
    try:
        return isinstance(value, str) and math.isfinite(float(value))
    except ValueError:
        return False


def _refuse_strange(name: str, values: list[tuple[int, Any]]) -> None:
    """Names, of values with their positions that are no numbers, one that does not even spell a number."""
    for position, value in sorted(values, key=lambda pair: _spells_number(pair[1]))[:1]:
        replace = isinstance(value, str) and not _spells_number(value)
        raise TypeError(f"{name} has {value!r} ({type(value).__name__}) at position {position}; "
                        + "replace it by a number or None, and " * replace + "convert the column to numbers first")


def _objects_to_numbers(name: str, array: npt.NDArray[Any]) -> Floats:
    values = array.tolist()
    types = set(map(type, values))
    strange = tuple(kind for kind in types if not issubclass(kind, (numbers.Real, decimal.Decimal, np.bool_)))
    if strange:
        _refuse_strange(name, [(position, value) for position, value in enumerate(values)
                               if isinstance(value, strange) and not is_missing(value)])
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
        raise TypeError(f"{name} has categories without an order, such as {listed(list(held.categories[:1]))}; "
                        "make it ordered, or convert it to numbers")
    scale = to_numbers(name, held.categories) if usable else np.empty(0)
    if held.ordered and not (usable and bool(np.all(scale[1:] > scale[:-1]))):
        scale = np.arange(float(len(held.categories)))
    return np.asarray(np.append(scale, np.nan)[held.codes])  # the code of a missing one is -1


def to_numbers(name: str, values: Any) -> Floats:
    """One contiguous float64 per case, NaN for a missing one. Shares memory with the input where it can."""
    held = categorical(values)
    if held is not None:
        return _categories_to_numbers(name, held)
    array = array_of(name, values)
    kind = array.dtype.kind
    if kind in tuple("OU"):
        return _objects_to_numbers(name, array)
    if kind not in tuple("iufb"):
        raise TypeError(f"{name} holds {array.dtype}, not numbers; convert it first, for instance with float()")
    if array.dtype.itemsize > 8:
        with np.errstate(over="ignore"):  # it is told below
            result = array.astype(np.float64)
        _check_long(name, array, result)
        return result
    result = np.ascontiguousarray(array, dtype=np.float64)
    if array.dtype.itemsize == 8 and kind in tuple("iu"):
        _check_exact(name, array, result)
    return result


def listed(labels: list[Any]) -> str:
    shown = [str(label) if isinstance(label, np.generic) else repr(label) for label in labels[:10]]
    return ", ".join(shown) + (f" and {len(labels) - 10} more" if len(labels) > 10 else "")


def distinct_values(values: Floats) -> int:
    """Number of different ones; 3 for three and more."""
    if len(set(values[:20].tolist())) > 2:
        return 3
    lowest, highest = values.min(initial=np.inf), values.max(initial=-np.inf)
    between = bool(((values != lowest) & (values != highest)).any())
    return 3 if between else int(len(values) > 0) + int(lowest < highest)


def complete_cases(columns: Mapping[str, Floats], nan_policy: NanPolicy, without_nan: Collection[str] = (),
                   ) -> Mask | None:
    """Cases without a NaN in any column; None when these are all. Throws with nan_policy "raise" when they are not."""
    check_word("nan_policy", nan_policy, ("raise", "omit"))
    complete: Mask | None = None
    for name, column in columns.items():
        lowest = 0.0 if name in without_nan else np.minimum.reduce(column, initial=0.0)
        if lowest == lowest:  # a minimum is NaN when a value is, and needs no array for the answer
            continue
        missing = np.isnan(column)
        if nan_policy == "raise":
            count = int(missing.sum())
            raise ValueError(f"{name} has {count} missing value{'s' * (count > 1)}, the first at position "
                             f"{int(missing.argmax())}; remove these cases, or call with nan_policy='omit'")
        complete = ~missing if complete is None else complete & ~missing
    return complete
