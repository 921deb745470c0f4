"""Checks what callers give and turns it into what the library reads: contiguous float64, one value per case."""
from __future__ import annotations

import decimal
import numbers
from collections.abc import Iterable, Mapping
from typing import Any, Literal

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]
Mask = npt.NDArray[np.bool_]
NanPolicy = Literal["raise", "omit"]

MAX_CASES = 2**31 - 1
EXACT_INTEGERS = 2.0**53
"""Beyond it neighbouring integers become the same float64."""


def check_word(name: str, word: str, words: Iterable[str]) -> bytes:
    words = list(words)
    if not isinstance(word, str) or word not in words:
        raise ValueError(f"{name}={word!r} is not known; use " + " or ".join(map(repr, words)))
    return word.encode()


def check_level(confidence_level: float) -> float:
    if not 0.0 < confidence_level < 1.0:
        raise ValueError(f"confidence_level={confidence_level!r} is not between 0 and 1; give a share such as 0.95")
    return float(confidence_level)


def check_lengths(columns: Mapping[str, npt.NDArray[Any]]) -> None:
    """Throws unless all columns have one value per case, and no more cases than the library can count."""
    lengths = {name: len(column) for name, column in columns.items()}
    if len(set(lengths.values())) > 1:
        raise ValueError(", ".join(f"{name} has {length} values" for name, length in lengths.items())
                         + "; give one value per case in each")
    name, length = next(iter(lengths.items()))
    if length > MAX_CASES:
        raise ValueError(f"{name} has {length} values; the library counts up to {MAX_CASES} cases")


def _is_missing(value: object) -> bool:
    # pandas.NA and NaT by name: pandas need not be there, and NA answers no comparison.
    return value is None or type(value).__name__ in ("NAType", "NaTType") or (
        isinstance(value, (float, np.floating)) and bool(value != value))


def _array(name: str, values: Any) -> npt.NDArray[Any]:
    """A one-dimensional array; missing values are NaN in floats and None in objects."""
    dtype = getattr(values, "dtype", None)
    kind = getattr(dtype, "kind", "")
    array: npt.NDArray[Any]
    if dtype is not None and not isinstance(dtype, np.dtype) and kind in tuple("iufb"):
        array = values.to_numpy(dtype=np.float64, na_value=np.nan)  # a nullable column of pandas
        _check_exact(name, array, kind)
    elif isinstance(values, np.ma.MaskedArray):
        array = np.array(values.astype(object).tolist(), dtype=object)  # None where it is masked
    else:
        try:
            array = np.asarray(values)
        except ValueError:
            raise ValueError(f"{name} is ragged; give one value per case, one-dimensional") from None
    if array.ndim != 1:
        hint = "; take one column, such as scores[:, 1]" if array.ndim == 2 else ""
        raise ValueError(f"{name} has shape {array.shape}; one dimension is expected, one value per case{hint}")
    if array.dtype.kind == "U" and isinstance(values, (list, tuple)):
        array = np.array(values, dtype=object)  # NumPy would make the text "nan" of a missing value among texts
    if array.dtype.kind == "O":
        array = array.copy()
        array[[_is_missing(value) for value in array]] = None
    return array


def _check_exact(name: str, array: Floats, kind: str) -> None:
    if kind in tuple("iu") and len(array) and np.nanmax(np.abs(array), initial=0.0) > EXACT_INTEGERS:
        raise ValueError(f"{name} has integers beyond 2**53, which float64 cannot tell apart; "
                         "subtract a constant, or give ranks")


def _objects_to_numbers(name: str, array: npt.NDArray[Any]) -> Floats:
    for position, value in enumerate(array):
        if value is not None and not isinstance(value, (numbers.Real, decimal.Decimal, np.bool_)):
            raise TypeError(f"{name} has {value!r} ({type(value).__name__}) at position {position}; "
                            "convert it to numbers first")
        if isinstance(value, numbers.Integral) and abs(int(value)) > EXACT_INTEGERS:
            _check_exact(name, np.array([float(value)]), "i")
    return array.astype(np.float64)


def to_numbers(name: str, values: Any) -> Floats:
    """One contiguous float64 per case, NaN for a missing one. Shares memory with the input where it can."""
    array = _array(name, values)
    if array.dtype.kind == "O":
        return _objects_to_numbers(name, array)
    if array.dtype.kind not in tuple("iufb"):
        raise TypeError(f"{name} holds {array.dtype}, not numbers; convert it first, for instance with float()")
    result = np.ascontiguousarray(array, dtype=np.float64)
    if array.dtype.itemsize == 8 and array.dtype.kind in tuple("iu"):
        _check_exact(name, result, array.dtype.kind)
    return result


def _distinct(labels: npt.NDArray[Any]) -> list[Any]:
    present = list(dict.fromkeys(label for label in labels.tolist() if not _is_missing(label)))
    return sorted(present, key=lambda label: (str(type(label)), label))


def _equal_to(labels: npt.NDArray[Any], label: object) -> Mask:
    texts = labels.dtype.kind in tuple("US")
    if labels.dtype.kind != "O" and texts != isinstance(label, (str, bytes)):
        return np.zeros(len(labels), dtype=np.bool_)
    return np.asarray(labels == label, dtype=np.bool_)


def missing_labels(labels: npt.NDArray[Any]) -> Mask:
    if labels.dtype.kind == "O":
        return np.array([label is None for label in labels], dtype=np.bool_)
    if labels.dtype.kind in tuple("fcmM"):
        return np.asarray(np.isnat(labels) if labels.dtype.kind in tuple("mM") else np.isnan(labels))
    return np.zeros(len(labels), dtype=np.bool_)


def _listed(labels: list[Any]) -> str:
    return ", ".join(map(repr, labels[:10])) + (f" and {len(labels) - 10} more" if len(labels) > 10 else "")


def to_states(name: str, values: Any, pos_label: Any) -> Floats:
    """1.0 for a positive case, 0.0 for a negative one, NaN for a missing label.

    pos_label None means 1, for labels that are all 0 and 1, or all -1 and 1, or bools.
    """
    labels = _array(name, values)
    usual = pos_label is None or (not isinstance(pos_label, (str, bytes)) and bool(pos_label == 1))
    positive = _equal_to(labels, 1 if usual else pos_label)
    if usual and bool((positive | _equal_to(labels, 0)).all()):
        return to_numbers(name, labels)  # these numbers are the states; no copy where they are float64
    missing = missing_labels(labels)
    if usual:
        usual = any(bool((positive | missing | _equal_to(labels, negative)).all()) for negative in (0, -1))
    if not usual and pos_label is None:
        raise ValueError(f"{name} has the labels {_listed(_distinct(labels))}; say with pos_label= which one is "
                         "positive")
    if not usual and not bool(positive.any()):
        raise ValueError(f"pos_label={pos_label!r} does not occur in {name}, whose labels are "
                         f"{_listed(_distinct(labels)) or '(none)'}; check its spelling and type")
    return np.where(missing, np.nan, positive)


def to_groups(name: str, values: Any, chosen: Any) -> tuple[Floats, tuple[Any, Any]]:
    """0.0 and 1.0 for the cases of the two groups, 2.0 for others, NaN for a missing label; and the two labels."""
    labels = _array(name, values)
    present = _distinct(labels)
    if chosen is None:
        if len(present) != 2:
            raise ValueError(f"{name} has the values {_listed(present)}; say with group_values=, group_cut= or "
                             "group_mid_point= how to make two groups of them")
        chosen = present
    if isinstance(chosen, (str, bytes)) or len(tuple(chosen)) != 2:
        raise ValueError(f"group_values={chosen!r} are not two values; give two of {_listed(present)}")
    first, second = chosen
    for label in (first, second):
        if not bool(_equal_to(labels, label).any()):
            raise ValueError(f"group_values: {label!r} does not occur in {name}, whose values are {_listed(present)}")
    groups = np.where(_equal_to(labels, first), 0.0, np.where(_equal_to(labels, second), 1.0, 2.0))
    groups[missing_labels(labels)] = np.nan
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
