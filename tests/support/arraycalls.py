"""The array calls from Python, over NumPy arrays of doubles."""
import ctypes

import numpy as np

DOUBLES = ctypes.POINTER(ctypes.c_double)


class CurveRes(ctypes.Structure):
    _fields_ = [("rows", DOUBLES), ("count", ctypes.c_int)]


class PrRow(ctypes.Structure):
    _fields_ = [("cutOff", ctypes.c_double), ("recall", ctypes.c_double), ("precision", ctypes.c_double),
                ("interpolated", ctypes.c_int)]


class PrRes(ctypes.Structure):
    _fields_ = [("rows", ctypes.POINTER(PrRow)), ("count", ctypes.c_int)]


class AucRes(ctypes.Structure):
    _fields_ = [(name, ctypes.c_double) for name in
                ("posCount", "negCount", "area", "stdError", "asymptoticSig", "ciLower", "ciUpper")]


class ComparisonRes(ctypes.Structure):
    _fields_ = [("first", AucRes), ("second", AucRes)] + [
        (name, ctypes.c_double) for name in ("z", "zSig", "areaDiff", "stdErrorDiff", "ciLower", "ciUpper")]


class Library:
    """The array calls over NumPy arrays of doubles."""

    def __init__(self, path):
        self.lib = ctypes.CDLL(str(path))
        for name, result in (("roccurve", CurveRes), ("prcurve", PrRes), ("auc", AucRes),
                             ("auc_comparison", ComparisonRes), ("auc_pairedcomparison", ComparisonRes)):
            getattr(self.lib, name).restype = result
        self.lib.release_roccurve_res.restype = None
        self.lib.release_prcurve_res.restype = None

    @staticmethod
    def columns(*arrays):
        """Arguments that stand for NumPy arrays, made once: a host in C has them as they are."""
        return [array.ctypes.data_as(DOUBLES) for array in arrays] + [ctypes.c_int(len(arrays[0])), None]

    def auc(self, columns, larger=b"larger"):
        return self.lib.auc(*columns, b"include", larger, b"nonparam", ctypes.c_double(0.95))

    def comparison(self, first, second):
        return self.lib.auc_comparison(first, second, ctypes.c_double(0.95))

    def roc_curve(self, columns, keep=False, words=(b"include", b"larger")):
        res = self.lib.roccurve(*columns, *words)
        rows = np.ctypeslib.as_array(res.rows, (res.count, 3)).copy() if keep else None
        self.lib.release_roccurve_res(res)
        return rows

    def pr_curve(self, columns, keep=False, words=(b"include", b"larger")):
        res = self.lib.prcurve(*columns, *words, b"davis-goadrich")
        rows = [(r.precision, r.recall) for r in res.rows[:res.count] if not r.interpolated] if keep else None
        self.lib.release_prcurve_res(res)
        return rows

    def paired(self, columns, larger=b"larger"):
        return self.lib.auc_pairedcomparison(*columns, b"include", larger, ctypes.c_double(0.95))
