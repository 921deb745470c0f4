"""The structures of the headers in include/vexrocproc, member by member."""
from __future__ import annotations

import ctypes
from ctypes import POINTER, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ulonglong, c_void_p
from typing import Any, TypeVar

Sized = TypeVar("Sized", bound=ctypes.Structure)

PROGRESS = ctypes.CFUNCTYPE(None, c_double, c_int, c_void_p)
CANCEL = ctypes.CFUNCTYPE(c_int, c_void_p)
PIECE = ctypes.CFUNCTYPE(None, c_void_p, c_int)
PARALLEL = ctypes.CFUNCTYPE(None, c_int, PIECE, c_void_p, c_void_p)


def sized(kind: type[Sized]) -> Sized:
    """A structure that begins with its size."""
    made = kind()
    made.struct_size = ctypes.sizeof(kind)
    return made


def _of(kind: Any, *names: str) -> list[tuple[str, Any]]:
    return [(name, kind) for name in names]


class RocRows(ctypes.Structure):
    _fields_ = [("rows", c_void_p), ("count", c_int)]


class AreaResult(ctypes.Structure):
    _fields_ = [(name, c_double) for name in (
        "n_positive", "n_negative", "area", "std_error", "p_value", "ci_lower", "ci_upper")]


class ComparisonResult(ctypes.Structure):
    _fields_ = [("first", AreaResult), ("second", AreaResult)] + [(name, c_double) for name in (
        "z", "p_value", "difference", "std_error", "ci_lower", "ci_upper")]


class RecordResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t)] + [(name, c_int) for name in (
        "test", "group", "group_operation", "ties")] + [
        ("group_value", c_double), ("n_positive", c_int), ("n_negative", c_int)] + [(name, c_double) for name in (
            "weighted_positive", "weighted_negative", "area", "std_error", "significance", "ci_lower", "ci_upper",
            "gini", "ks_maximum", "ks_threshold")] + [(name, c_int) for name in (
                "curve_rows", "pr_rows", "distribution_changed", "smaller_is_positive", "distinct_values")] + [
                    ("p_value", c_double), ("log10_p", c_double),
                    *_of(c_char_p, "interval", "error", "interval_rule"), *_of(c_int, "edge", "percentile", "held"),
                    *_of(c_char_p, "p_method", "alternative"),
                    *_of(c_double, "null_area", "z", "u", "exact_steps", "bootstrap_error")]


class RowsResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t)] + [(name, c_longlong) for name in (
        "read", "missing_state", "missing_group", "missing_weight", "other_group", "unusable_weight", "incomplete",
        "n_positive", "n_negative")] + [("weighted_positive", c_double), ("weighted_negative", c_double)] + [
            (name, c_longlong) for name in ("rounded_weights", "rounded_used", "too_heavy", "other_state",
                                            "missing_count", "given")]


class PairResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("first", c_int), ("second", c_int)] + [(name, c_double) for name in (
        "difference", "std_error", "z", "significance", "ci_lower", "ci_upper", "p_value", "log10_p")] + [
            (name, c_longlong) for name in ("n_positive", "n_negative")] + [(name, c_double) for name in (
                "first_area", "first_std_error", "second_area", "second_std_error")] + _of(
                    c_char_p, "error", "alternative")


class RemarkResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("code", c_char_p), ("caution", c_int), ("count", c_longlong),
                ("text", c_char_p)]


class AreaFacts(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("n_positive", c_longlong), ("n_negative", c_longlong)] + [
        (name, c_double) for name in ("area", "std_error", "lower", "upper")] + [
            ("smaller_is_positive", c_int), ("distinct_values", c_int), ("test", c_char_p), ("ties", c_int),
            *_of(c_char_p, "interval", "p_method", "alternative"), *_of(c_double, "p_value", "level", "null_area"),
            *_of(c_int, "edge", "percentile", "held")]


class StateChoice(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("positive", POINTER(c_char_p)), ("positive_count", c_int),
                ("negative", POINTER(c_char_p)), ("negative_count", c_int), ("others", c_int), ("sign", c_char_p),
                ("bound", c_char_p)]


class InferenceOptions(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("level", c_double), *_of(c_int, "smaller_is_positive", "exclude_cut_off"),
                *_of(c_char_p, "interval", "proportion", "p_method", "exact", "alternative"), ("null_area", c_double),
                *_of(c_int, "small_sample", "uncorrected"),
                *_of(c_double, "prevalence", "cost_ratio", "min_sensitivity", "min_specificity"),
                ("replicates", c_longlong), ("seed", c_ulonglong), ("progress", PROGRESS), ("cancel", CANCEL),
                ("parallel", PARALLEL), ("user", c_void_p)]


class SummaryFacts(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_longlong, "values", "positive", "negative", "left_out"),
                ("kind", c_int), *_of(c_double, "weighted_positive", "weighted_negative", "lowest", "highest")]


class AreaInference(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_longlong, "positive", "negative"),
                *_of(c_double, "area", "std_error"), ("error", c_char_p), *_of(c_double, "lower", "upper"),
                ("interval", c_char_p), *_of(c_int, "edge", "percentile", "held"),
                *_of(c_double, "bootstrap_error", "z", "p_value", "log10_p"), ("p_method", c_char_p),
                *_of(c_double, "freedom", "u", "exact_steps", "null_area")]


RATES = ("sensitivity", "specificity", "ppv", "npv", "lr_positive", "lr_negative", "dor", "accuracy",
         "balanced_accuracy", "f1", "mcc", "youden", "kappa")


class OperatingColumns(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t),
                *_of(c_void_p, "cut_off", "true_positive", "false_positive", "true_negative", "false_negative"),
                *_of(c_void_p * 3, *RATES)]


class BestResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_longlong, "count", "chosen"), ("value", c_double),
                ("criterion", c_char_p), ("share", c_double)]


class RateResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_double, "reached", "cut_off", "interpolated", "lower", "upper"),
                ("interval", c_char_p), ("std_error", c_double)]


class PartialResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), ("from", c_double), ("to", c_double),
                *_of(c_longlong, "positive", "negative"), *_of(c_double, "area", "std_error", "lower", "upper"),
                ("interval", c_char_p),
                *_of(c_double, "standardized", "standardized_error", "standardized_lower", "standardized_upper"),
                *_of(c_int, "edge", "few", "percentile", "held"), ("bootstrap_error", c_double)]


class PrAreaResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_double, "area", "lower", "upper"),
                *_of(c_char_p, "interval", "rule"), *_of(c_double, "prevalence", "chance", "lowest"),
                *_of(c_longlong, "positive", "negative"), *_of(c_int, "edge", "percentile", "held"),
                ("bootstrap_error", c_double)]


class CalibrationResult(ctypes.Structure):
    _fields_ = [("struct_size", c_size_t), *_of(c_double, "mean_score", "observed", "std_error"), ("differs", c_int)]
