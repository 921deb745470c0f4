"""Notes and cautions. The library says what, when and in which words; results keep them, cautions also warn."""
from __future__ import annotations

import ctypes
import math
import sys
import warnings
from typing import Any, NamedTuple

from ._library import PYTHON_VOICE, check, library
from ._structures import AreaFacts, RemarkResult


class CautionWarning(UserWarning):
    """The data make a printed number misleading. ``code`` tells the kind; docs/remarks.md lists them all."""

    def __init__(self, text: str = "", code: str = ""):
        super().__init__(text)
        self.code = code


class Remark(NamedTuple):
    """A note or a caution: its kind, the number of tests, columns or pairs that it is about, and a line of text."""

    code: str
    count: int  # type: ignore[assignment]  # a tuple's own method gives way
    text: str


Remarks = tuple[Remark, ...]


class RemarkList:
    """The remarks of one call, as the library collects them."""

    def __init__(self) -> None:
        self._library = library()
        self.address = ctypes.c_void_p()
        check(self._library.vexroc_remarks_new(PYTHON_VOICE, ctypes.byref(self.address)))

    def __del__(self) -> None:
        self._library.vexroc_remarks_free(self.address)

    def add(self, code: str, subject: str = "", detail: str = "") -> None:
        check(self._library.vexroc_remarks_add(self.address, code.encode(), subject.encode(errors="replace"),
                                               detail.encode(errors="replace")))

    def add_area(self, subject: str, **facts: Any) -> None:
        """Of an area with these members of AreaFacts."""
        told = AreaFacts(_AREA_FACTS)
        told.area = told.std_error = told.lower = told.upper = told.p_value = math.nan
        for name, value in facts.items():
            setattr(told, name, value)
        check(self._library.vexroc_remarks_area(self.address, subject.encode(), ctypes.byref(told)))

    def add_difference(self, subject: str, difference: float, std_error: float) -> None:
        check(self._library.vexroc_remarks_difference(self.address, subject.encode(), difference, std_error))

    def tell(self) -> tuple[Remarks, Remarks]:
        """Cautions and notes; warns of the cautions where the package was called."""
        cautions: list[Remark] = []
        notes: list[Remark] = []
        for index in range(self._library.vexroc_remarks_count(self.address)):
            remark = RemarkResult(ctypes.sizeof(RemarkResult))
            check(self._library.vexroc_remarks_get(self.address, index, ctypes.byref(remark)))
            kept = Remark(remark.code.decode(), remark.count, remark.text.decode(errors="replace"))
            (cautions if remark.caution else notes).append(kept)
        for caution in cautions:
            warnings.warn(CautionWarning(caution.text, caution.code), stacklevel=_depth_of_caller())
        return tuple(cautions), tuple(notes)


_AREA_FACTS = ctypes.sizeof(AreaFacts)


def _depth_of_caller() -> int:
    """As stacklevel of a function that calls this one: the first frame outside of the package."""
    frame: Any = sys._getframe(1)
    depth = 1
    while frame.f_back is not None and frame.f_globals.get("__package__") == __package__:
        frame, depth = frame.f_back, depth + 1
    return depth
