"""ROC analysis: curves, areas with standard error, test and interval, comparisons, and whole analyses of tables.

>>> import vexroc
>>> area = vexroc.auc([1, 0, 1, 0] * 5, [5, 1, 3, 4] * 5)
>>> print(f"area {area.area:.2f}, {area.interval} interval {area.ci_lower:.2f} to {area.ci_upper:.2f}")
area 0.75, score interval 0.48 to 0.90
"""
from ._analysis import analyze
from ._areas import auc, compare_independent, compare_paired, mann_whitney
from ._curves import pr_curve, roc_curve
from ._display import PrecisionRecallDisplay, RocCurveDisplay
from ._handle import AnalysisError
from ._labels import OTHERS
from ._library import library as _library
from ._library import library_path, library_version
from ._parts import average_precision, partial_auc, pr_auc
from ._points import best_threshold, confusion_at_thresholds, net_benefit
from ._remarks import CautionWarning, Remark
from ._results import (Analysis, Area, BestThreshold, Comparison, Estimate, FixedRate, Group, MannWhitney, NetBenefit,
                       OperatingPoints, PartialArea, PrecisionRecallArea, PrecisionRecallCurve, Record, RocCurve)

__version__ = "0.1.0"

__all__ = [
    "OTHERS", "Analysis", "AnalysisError", "Area", "BestThreshold", "CautionWarning", "Comparison", "Estimate",
    "FixedRate", "Group", "MannWhitney", "NetBenefit", "OperatingPoints", "PartialArea", "PrecisionRecallArea",
    "PrecisionRecallCurve", "PrecisionRecallDisplay", "Record", "Remark", "RocCurve", "RocCurveDisplay", "analyze",
    "auc", "average_precision", "best_threshold", "compare_independent", "compare_paired", "confusion_at_thresholds",
    "library_path", "library_version", "mann_whitney", "net_benefit", "partial_auc", "pr_auc", "pr_curve", "roc_curve",
]

_library()  # a package without its library says so when it is imported
