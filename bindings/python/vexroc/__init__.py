"""ROC analysis: curves, areas with standard error, test and interval, comparisons, and whole analyses of tables.

>>> import vexroc
>>> vexroc.auc([1, 0, 1, 0] * 5, [5, 1, 3, 4] * 5)
<area 0.7500, standard error 0.1146, p = 0.0291, 95 % interval 0.5255 to 0.9745; 10 positive and 10 negative cases>
"""
from ._analysis import analyze
from ._areas import auc, compare_independent, compare_paired, mann_whitney
from ._curves import pr_curve, roc_curve
from ._handle import AnalysisError
from ._display import PrecisionRecallDisplay, RocCurveDisplay
from ._library import library as _library
from ._labels import OTHERS
from ._library import library_path, library_version
from ._remarks import CautionWarning, Remark
from ._results import (Analysis, Area, Comparison, Group, PrecisionRecallCurve, Record, RocCurve)

__version__ = "0.1.0"

__all__ = [
    "OTHERS", "Analysis", "AnalysisError", "Area", "CautionWarning", "Comparison", "Group", "PrecisionRecallCurve",
    "PrecisionRecallDisplay", "Record", "Remark", "RocCurve", "RocCurveDisplay", "analyze", "auc",
    "compare_independent", "compare_paired", "library_path", "library_version", "pr_curve", "roc_curve",
]

_library()  # a package without its library says so when it is imported
