"""The library's handle of a whole analysis, and what its records become here."""
from __future__ import annotations

import ctypes
import math
from typing import Any

from ._aside import Aside, Progress, on_all_cores, stop_when_told
from ._cases import Cases
from ._inputs import Floats
from ._library import NO_RESULT, check, library
from ._options import AreaQuestion
from ._remarks import RemarkList, Remarks
from ._results import Area, Comparison, number
from ._structures import PairResult, RecordResult, RowsResult

_REMEDIES = {
    430004: "there is no positive case; check pos_label and which cases are missing",
    430006: "a paired comparison needs two tests or more; name them in tests=",
    430007: "an independent comparison needs two groups; name their column with group=",
    430010: "there is no case; check the filter before the analysis, or which cases are missing",
    430011: "an independent comparison needs two groups, but all values of the group column are equal",
    430012: "an independent comparison needs cases in both groups; choose another split",
}


class AnalysisError(ValueError):
    """An analysis that could not be computed; ``code`` is the library's status."""

    def __init__(self, code: int, message: str):
        super().__init__(message)
        self.code = code

    def __reduce__(self) -> tuple[type[AnalysisError], tuple[int, str]]:
        return type(self), (self.code, str(self))


class Handle:
    """An analysis of the library; keeps the columns alive that it reads."""

    def __init__(self) -> None:
        self._library = library()
        self.address = ctypes.c_void_p()
        self._columns: list[Floats] = []
        self.call("new", ctypes.byref(self.address), of_handle=False)

    def __del__(self) -> None:
        self._library.vexroc_analysis_free(self.address)

    def call(self, name: str, *arguments: Any, of_handle: bool = True) -> None:
        head = (self.address,) if of_handle else ()
        code = getattr(self._library, f"vexroc_analysis_{name}")(*head, *arguments)
        if code == NO_RESULT:
            status = ctypes.c_int()
            self._library.vexroc_analysis_status(self.address, ctypes.byref(status), None)
            message = self._library.vexroc_last_error().decode(errors="replace")
            raise AnalysisError(status.value, _REMEDIES.get(status.value, message))
        check(code)

    def count(self, name: str) -> int:
        return int(getattr(self._library, f"vexroc_analysis_{name}_count")(self.address))

    def add(self, name: str, values: Floats, part: str) -> int:
        """The index of the new column, which plays this part."""
        self._columns.append(values)
        index = ctypes.c_int()
        self.call("add_column", name.encode(errors="replace"), values.ctypes.data, len(values), ctypes.byref(index))
        self.call("set_column", part.encode(), index)
        return index.value

    def fetch(self, name: str, index: int, result: Any) -> Any:
        result.struct_size = ctypes.sizeof(result)
        self.call(name, index, ctypes.byref(result))
        return result

    def rows(self) -> RowsResult:
        result = RowsResult(struct_size=ctypes.sizeof(RowsResult))
        self.call("rows", ctypes.byref(result))
        return result

    def ask(self, asked: AreaQuestion) -> None:
        """Sets what is asked of every area."""
        for setting, word in (("interval", asked.interval or "recommended"), ("exact", asked.exact),
                              ("p_value", asked.p_method or "recommended"), ("alternative", asked.alternative),
                              ("distribution", asked.distribution)):
            self.call("set_word", setting.encode(), word.encode())
        for setting, value in (("confidence_level", asked.confidence_level), ("null_area", asked.null),
                               ("replicates", float(asked.n_resamples))):
            self.call("set_number", setting.encode(), value)
        self.call("set_seed", asked.random_state)

    def add_remarks(self, remarks: RemarkList) -> None:
        """Adds what there is to say of the run."""
        self.call("add_remarks", remarks.address, None)

    def numbers(self, name: str, index: int) -> tuple[int, int]:
        """The two numbers of rows that a call tells."""
        first, second = ctypes.c_longlong(), ctypes.c_longlong()
        self.call(name, index, ctypes.byref(first), ctypes.byref(second))
        return first.value, second.value

    def run(self, progress: Progress | None) -> None:
        """Runs so that this thread can see Ctrl-C and tell progress meanwhile."""
        aside = Aside()
        self.call("on_cancel", stop_when_told(), aside.user)
        self.call("on_parallel", on_all_cores(), None)
        if progress is not None:
            self.call("on_progress", aside.told, None)
        aside.run(lambda: self.call("run"), progress)


def area_of(record: RecordResult, n_omitted: int, asked: AreaQuestion) -> Area:
    interval = record.interval_rule.decode()
    return Area(number(record.area), number(record.std_error), number(record.p_value), number(record.ci_lower),
                number(record.ci_upper), record.n_positive, record.n_negative, n_omitted, asked.confidence_level,
                interval, record.error.decode(), record.p_method.decode(), record.alternative.decode(),
                record.null_area, number(record.log10_p), number(record.z), math.nan, number(record.bootstrap_error),
                *asked.drawn(interval), bool(record.distribution_changed))


def comparison_of(pair: PairResult, first: Area, second: Area, level: float, *remarks: Remarks) -> Comparison:
    return Comparison(first, second, number(pair.difference), number(pair.std_error), number(pair.z),
                      number(pair.p_value), number(pair.log10_p), number(pair.ci_lower), number(pair.ci_upper), level,
                      pair.error.decode(), pair.alternative.decode(), *remarks)


def paired(cases: Cases, asked: AreaQuestion) -> Comparison:
    """Compares the two scores of the cases."""
    handle = Handle()
    handle.add("y_true", cases.states, "state")
    for name, column, direction in zip(cases.names, cases.scores, cases.directions):
        handle.call("set_direction", handle.add(name, column, "test"), direction.encode())
    if cases.weights is not None:
        handle.add("count", cases.weights, "count")
    handle.ask(asked)
    handle.call("set_word", b"comparison", b"paired")
    handle.call("set_number", b"roc", 0.0)
    handle.call("run")
    first, second = (area_of(handle.fetch("record", index, RecordResult()), cases.n_omitted, asked)
                     for index in range(2))
    handle.add_remarks(cases.remarks)
    return comparison_of(handle.fetch("comparison", 0, PairResult()), first, second, asked.confidence_level,
                         *cases.remarks.tell())
