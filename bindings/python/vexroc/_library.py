"""Finds and loads the shared library and declares its calls, those of the headers in include/vexrocproc."""
from __future__ import annotations

import ctypes
import ctypes.util
import functools
import math
import os
import pathlib
import warnings
from ctypes import POINTER, c_char, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ulonglong, c_void_p

from ._structures import (CANCEL, PARALLEL, PROGRESS, AreaFacts, AreaInference, AreaResult, BestResult,
                          CalibrationResult, ComparisonResult, InferenceOptions, OperatingColumns, PairResult,
                          PartialResult, PrAreaResult, RateResult, RecordResult, RemarkResult, RocRows, RowsResult,
                          StateChoice, SummaryFacts)

ANALYSIS_VERSION = 4
"""The oldest library that will do: its vexroc_analysis_version() counts up with every addition."""

LIBRARY_NAME = "vexrocproc920r"
PYTHON_VOICE = 2
"""Texts of the library spell options as this package does."""

NO_RESULT, _INVALID, _NO_MEMORY = 2, 3, 4

_ARRAYS = [c_void_p, c_void_p, c_int]
_OPTIONS = POINTER(InferenceOptions)
_SIGNATURES: dict[str, tuple[object, list[object]]] = {
    "vexrocproc_version": (c_char_p, []),
    "roccurve": (RocRows, [*_ARRAYS, c_void_p, c_char_p, c_char_p]),
    "release_roccurve_res": (None, [RocRows]),
    "prcurve": (RocRows, [*_ARRAYS, c_void_p, c_char_p, c_char_p, c_char_p]),
    "release_prcurve_res": (None, [RocRows]),
    "auc": (AreaResult, [*_ARRAYS, c_void_p, c_char_p, c_char_p, c_char_p, c_double]),
    "auc_comparison": (ComparisonResult, [AreaResult, AreaResult, c_double]),
    "auc_pairedcomparison": (ComparisonResult, [c_void_p, *_ARRAYS, c_void_p, c_char_p, c_char_p, c_double]),
    "vexroc_analysis_version": (c_int, []),
    "vexroc_last_error": (c_char_p, []),
    "vexroc_analysis_new": (c_int, [POINTER(c_void_p)]),
    "vexroc_analysis_free": (None, [c_void_p]),
    "vexroc_analysis_add_column": (c_int, [c_void_p, c_char_p, c_void_p, c_longlong, POINTER(c_int)]),
    "vexroc_analysis_set_column": (c_int, [c_void_p, c_char_p, c_int]),
    "vexroc_analysis_set_number": (c_int, [c_void_p, c_char_p, c_double]),
    "vexroc_analysis_set_word": (c_int, [c_void_p, c_char_p, c_char_p]),
    "vexroc_analysis_add_negative": (c_int, [c_void_p, c_double]),
    "vexroc_analysis_set_direction": (c_int, [c_void_p, c_int, c_char_p]),
    "vexroc_analysis_name_value": (c_int, [c_void_p, c_int, c_double, c_char_p]),
    "vexroc_analysis_on_progress": (c_int, [c_void_p, PROGRESS, c_void_p]),
    "vexroc_analysis_on_cancel": (c_int, [c_void_p, CANCEL, c_void_p]),
    "vexroc_analysis_on_parallel": (c_int, [c_void_p, PARALLEL, c_void_p]),
    "vexroc_analysis_set_seed": (c_int, [c_void_p, c_ulonglong]),
    "vexroc_analysis_run": (c_int, [c_void_p]),
    "vexroc_analysis_status": (c_int, [c_void_p, POINTER(c_int), POINTER(c_char_p)]),
    "vexroc_analysis_record_count": (c_int, [c_void_p]),
    "vexroc_analysis_comparison_count": (c_int, [c_void_p]),
    "vexroc_analysis_rows": (c_int, [c_void_p, POINTER(RowsResult)]),
    "vexroc_analysis_missing_test": (c_int, [c_void_p, c_int, POINTER(c_longlong), POINTER(c_longlong)]),
    "vexroc_analysis_record_rows": (c_int, [c_void_p, c_int, POINTER(c_longlong), POINTER(c_longlong)]),
    "vexroc_analysis_record": (c_int, [c_void_p, c_int, POINTER(RecordResult)]),
    "vexroc_analysis_comparison": (c_int, [c_void_p, c_int, POINTER(PairResult)]),
    "vexroc_analysis_curve": (c_int, [c_void_p, c_int, c_void_p, c_void_p, c_void_p]),
    "vexroc_analysis_precision_recall": (c_int, [c_void_p, c_int, c_void_p, c_void_p, c_void_p]),
    "vexroc_analysis_add_remarks": (c_int, [c_void_p, c_void_p, c_char_p]),
    "vexroc_two_sided_p": (c_double, [c_double, POINTER(c_double)]),
    "vexroc_summary_new": (c_int, [POINTER(c_void_p)]),
    "vexroc_summary_free": (None, [c_void_p]),
    "vexroc_summary_add": (c_int, [c_void_p, c_void_p, c_void_p, c_double, c_void_p, c_int, c_longlong]),
    "vexroc_summary_tell": (c_int, [c_void_p, POINTER(SummaryFacts)]),
    "vexroc_inference_defaults": (c_int, [_OPTIONS]),
    "vexroc_area_inference": (c_int, [c_void_p, _OPTIONS, POINTER(AreaInference)]),
    "vexroc_cut_off_count": (c_longlong, [c_void_p]),
    "vexroc_operating_points": (c_int, [c_void_p, _OPTIONS, c_void_p, c_longlong, c_longlong,
                                        POINTER(OperatingColumns)]),
    "vexroc_best_cut_offs": (c_int, [c_void_p, _OPTIONS, c_char_p, c_longlong, c_void_p, POINTER(BestResult)]),
    "vexroc_rate_at": (c_int, [c_void_p, _OPTIONS, c_char_p, POINTER(RateResult)]),
    "vexroc_partial_area": (c_int, [c_void_p, _OPTIONS, c_char_p, c_double, c_double, POINTER(PartialResult)]),
    "vexroc_pr_area": (c_int, [c_void_p, _OPTIONS, c_char_p, POINTER(PrAreaResult)]),
    "vexroc_net_benefit": (c_int, [c_void_p, _OPTIONS, c_void_p, c_longlong, c_void_p, c_void_p, c_void_p, c_void_p]),
    "vexroc_calibration": (c_int, [c_void_p, _OPTIONS, POINTER(CalibrationResult)]),
    "vexroc_remarks_new": (c_int, [c_int, POINTER(c_void_p)]),
    "vexroc_remarks_free": (None, [c_void_p]),
    "vexroc_remarks_count": (c_int, [c_void_p]),
    "vexroc_remarks_get": (c_int, [c_void_p, c_int, POINTER(RemarkResult)]),
    "vexroc_remarks_add": (c_int, [c_void_p, c_char_p, c_char_p, c_char_p]),
    "vexroc_remarks_area": (c_int, [c_void_p, c_char_p, POINTER(AreaFacts)]),
    "vexroc_remarks_difference": (c_int, [c_void_p, c_char_p, c_double, c_double]),
    "vexroc_words_new": (c_int, [POINTER(c_void_p)]),
    "vexroc_words_free": (None, [c_void_p]),
    "vexroc_words_clear": (c_int, [c_void_p]),
    "vexroc_words_add": (c_int, [c_void_p, c_char_p]),
    "vexroc_labels_new": (c_int, [c_char_p, c_void_p, c_char, c_int, POINTER(c_void_p)]),
    "vexroc_labels_free": (None, [c_void_p]),
    "vexroc_labels_add": (c_int, [c_void_p, c_char_p, c_size_t, c_int, c_longlong, POINTER(c_int)]),
    "vexroc_labels_name": (c_int, [c_void_p, c_char_p, c_size_t]),
    "vexroc_labels_settle": (c_int, [c_void_p]),
    "vexroc_labels_count": (c_int, [c_void_p]),
    "vexroc_labels_value_of": (c_int, [c_void_p, c_int]),
    "vexroc_labels_find": (c_int, [c_void_p, c_char_p, c_size_t]),
    "vexroc_labels_choose": (c_int, [c_void_p, POINTER(StateChoice)]),
    "vexroc_labels_state_of": (c_int, [c_void_p, c_int]),
    "vexroc_labels_add_remarks": (c_int, [c_void_p, c_void_p]),
}


def _candidates() -> list[tuple[str, str]]:
    """What to load, in this order, each with where it comes from."""
    chosen = os.environ.get("VEXROC_LIBRARY")
    folder = pathlib.Path(__file__).parent
    found = [(str(path), "the package folder") for path in sorted(folder.glob(f"lib{LIBRARY_NAME}.so*"))]
    if chosen:
        found.append((chosen, "the environment variable VEXROC_LIBRARY"))
        return found  # who names a library does not want the system's
    system = ctypes.util.find_library(LIBRARY_NAME) or f"lib{LIBRARY_NAME}.so.0"
    return [*found, (system, "the system")]


def _declare(loaded: ctypes.CDLL) -> ctypes.CDLL:
    for name, (result, arguments) in _SIGNATURES.items():
        call = getattr(loaded, name)
        call.restype, call.argtypes = result, arguments
    return loaded


def _tell_unused_choice(used: str) -> None:
    chosen = os.environ.get("VEXROC_LIBRARY")
    if chosen and os.path.realpath(chosen) != os.path.realpath(used):
        warnings.warn(f"VEXROC_LIBRARY={chosen} is not used: the package has a library of its own, {used}, which comes "
                      "first", RuntimeWarning, stacklevel=3)


@functools.cache
def library() -> ctypes.CDLL:
    """The loaded library. ImportError tells what was tried. ctypes releases the interpreter lock during its calls."""
    tried = []
    for path, origin in _candidates():
        try:
            loaded = ctypes.CDLL(path)
            version = loaded.vexroc_analysis_version()
            if version >= ANALYSIS_VERSION:
                _tell_unused_choice(path)
                return _declare(loaded)
            tried.append(f"{path} (from {origin}): its interface is version {version}, "
                         f"this package needs {ANALYSIS_VERSION}; update the library")
        except (OSError, AttributeError) as error:
            tried.append(f"{path} (from {origin}): {error}")
    raise ImportError("vexroc found no library to work with. Tried:\n  " + "\n  ".join(tried)
                      + f"\nInstall the wheel of tools/build_wheel.sh, which brings lib{LIBRARY_NAME}.so along, or set "
                        "VEXROC_LIBRARY to its path.")


def check(result: int) -> None:
    """Throws what a call of the library answered, unless it went well."""
    if result:
        message = library().vexroc_last_error().decode(errors="replace")
        raise {_INVALID: ValueError, _NO_MEMORY: MemoryError}.get(result, RuntimeError)(message)


def two_sided_p(z: float) -> tuple[float, float]:
    """The p value of a standard normal z, and its decimal logarithm, which is there where p underflows."""
    log10_p = c_double()
    p = library().vexroc_two_sided_p(z, ctypes.byref(log10_p))
    return p, log10_p.value


def normal_p(z: float, alternative: str) -> tuple[float, float]:
    """The p value of a standard normal z, and its decimal logarithm."""
    p, log10_p = two_sided_p(z)
    if alternative == "two-sided":
        return p, log10_p
    if (z > 0) == (alternative == "greater"):
        return p / 2, log10_p - math.log10(2)
    return 1 - p / 2, math.log1p(-p / 2) / math.log(10)


def library_path() -> str:
    """File of the loaded library, or the name by which the system found it."""
    return str(library()._name)


def library_version() -> str:
    """Version of the loaded library, such as "0.1.0"."""
    return str(library().vexrocproc_version().decode())
