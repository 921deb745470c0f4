"""The whole analysis: many tests, groups, weights, comparisons, both curves, progress and Ctrl-C."""
from __future__ import annotations

import ctypes
import queue
import threading
from collections import Counter
from collections.abc import Callable, Iterable
from collections.abc import Set as AbstractSet
from typing import Any, Literal

import numpy as np

from ._arraycalls import (CUT_OFFS, DIRECTIONS, DISTRIBUTIONS, INTERPOLATIONS, CutOff, Direction, Distribution,
                          Interpolation)
from ._inputs import (Floats, NanPolicy, check_lengths, check_level, check_number, check_word, complete_cases,
                      is_hashable, to_groups, to_numbers, to_states)
from ._library import PROGRESS, PairResult, RecordResult, RowsResult, WarningResult, library, stop_when_told
from ._results import (Analysis, AnalysisWarning, Area, Comparison, Counts, Group, PrecisionRecallCurve, Record,
                       RocCurve, frozen, number)

ComparisonKind = Literal["none", "independent", "paired"]
Progress = Callable[[float, int], object]

_NO_RESULT, _INVALID, _NO_MEMORY = 2, 3, 4

_REMEDIES = {
    430004: "no case with the positive label is left; check pos_label and which cases are missing",
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


class _Handle:
    """An analysis of the library; keeps the columns alive that it reads."""

    def __init__(self) -> None:
        self._library = library()
        self._address = ctypes.c_void_p()
        self._columns: list[Floats] = []
        self.call("new", ctypes.byref(self._address), of_handle=False)

    def __del__(self) -> None:
        self._library.vexroc_analysis_free(self._address)

    def call(self, name: str, *arguments: Any, of_handle: bool = True) -> None:
        head = (self._address,) if of_handle else ()
        code = getattr(self._library, f"vexroc_analysis_{name}")(*head, *arguments)
        if code == 0:
            return
        message = self._library.vexroc_last_error().decode(errors="replace")
        if code == _NO_MEMORY:
            raise MemoryError(message)
        if code == _NO_RESULT:
            status = ctypes.c_int()
            self._library.vexroc_analysis_status(self._address, ctypes.byref(status), None)
            raise AnalysisError(status.value, _REMEDIES.get(status.value, message))
        raise ValueError(message) if code == _INVALID else RuntimeError(message)

    def count(self, name: str) -> int:
        return int(getattr(self._library, f"vexroc_analysis_{name}_count")(self._address))

    def add(self, name: str, values: Floats, *parts: str) -> None:
        self._columns.append(values)
        index = ctypes.c_int()
        self.call("add_column", name.encode(errors="replace"), values.ctypes.data, len(values), ctypes.byref(index))
        for part in parts:
            self.call("set_column", part.encode(), index)

    def fetch(self, name: str, index: int, result: Any) -> Any:
        result.struct_size = ctypes.sizeof(result)
        self.call(name, index, ctypes.byref(result))
        return result

    def rows(self) -> RowsResult:
        result = RowsResult(struct_size=ctypes.sizeof(RowsResult))
        self.call("rows", ctypes.byref(result))
        return result

    def numbers(self, name: str, index: int) -> tuple[int, int]:
        """The two numbers of rows that a call tells."""
        first, second = ctypes.c_longlong(), ctypes.c_longlong()
        self.call(name, index, ctypes.byref(first), ctypes.byref(second))
        return first.value, second.value

    def run(self, progress: Progress | None) -> None:
        """Runs on a thread of its own, so that this one can see Ctrl-C and tell progress meanwhile."""
        # The library asks before every record whether to stop. Python would answer slower than the analysis runs;
        # C reads the answer from this text.
        stop = ctypes.create_string_buffer(b"0")
        self.call("on_cancel", stop_when_told(), ctypes.addressof(stop))
        events: queue.SimpleQueue[tuple[float, int] | BaseException | None] = queue.SimpleQueue()
        told = PROGRESS(lambda share, records, _: events.put((share, records)))
        if progress is not None:
            self.call("on_progress", told, None)

        def work(keep: object = (stop, told)) -> None:
            try:
                self.call("run")
                events.put(None)
            except BaseException as error:  # raised again in the caller's thread
                events.put(error)

        thread = threading.Thread(target=work, name="vexroc analysis")
        try:
            thread.start()
            while isinstance(event := events.get(), tuple):
                if progress is not None:
                    progress(*event)
        except BaseException:
            stop[0] = b"1"
            raise
        finally:
            if thread.ident is not None:
                thread.join()
        if event is not None:
            raise event


class _Request:
    """The checked columns and settings of one analysis."""

    def __init__(self, data: Any, state: Any, tests: Any, group: Any, weight: Any):
        if isinstance(data, np.ndarray) and data.dtype.names is None:
            raise TypeError("data is an array, whose columns have no names; give a DataFrame or a dict of arrays")
        self.data = data
        tests = self._names(tests)
        for name in (state, *tests, group, weight):
            if not is_hashable(name):
                raise TypeError(f"{name!r} is a {type(name).__name__}, no name of a column; give the name of one")
        if state in tests:
            raise ValueError(f"tests names the state {state!r}; a test is another column")
        self.state, self.tests, self.group, self.weight = state, tests, group, weight
        used = dict.fromkeys(name for name in (state, *tests, group, weight) if name is not None)
        alike = Counter(map(str, used))
        self.texts = {name: str(name) if alike[str(name)] == 1 else repr(name) for name in used}
        self.group_labels: tuple[Any, Any] | None = None

    def _names(self, tests: Any) -> list[Any]:
        if isinstance(tests, AbstractSet):
            raise TypeError("tests is a set, which has no order; give a list of names")
        one = isinstance(tests, (str, bytes)) or not isinstance(tests, Iterable)
        one = one or (isinstance(tests, tuple) and is_hashable(tests) and tests in self._columns())
        names = [tests] if one else list(tests)
        if not names:
            raise ValueError("tests is empty; name one column at least")
        return names

    def _columns(self) -> list[Any]:
        """Names of the columns, where the data tell them."""
        names = getattr(self.data, "columns", None)
        names = self.data.keys() if names is None and hasattr(self.data, "keys") else names
        return [] if names is None else list(names)

    def values(self, name: Any) -> Any:
        try:
            return self.data[name]
        except (KeyError, IndexError, ValueError):
            names = self._columns()
            known = "; its columns are " + ", ".join(map(repr, names)) if names else ""
            raise ValueError(f"data has no column {name!r}{known}") from None
        except TypeError:
            raise TypeError(f"data is a {type(self.data).__name__}; give a DataFrame or a dict of arrays") from None

    def load(self, pos_label: Any, group_values: Any, splits_by_number: bool, nan_policy: NanPolicy) -> None:
        """Reads the columns; with nan_policy "omit" the library leaves out what is missing."""
        state = self.texts[self.state]
        required = {state: to_states(state, self.values(self.state), pos_label)}
        if self.group is not None:
            group = self.texts[self.group]
            if splits_by_number:
                codes = to_numbers(group, self.values(self.group))
            else:
                codes, self.group_labels = to_groups(group, self.values(self.group), group_values)
            required["group " + group] = codes
        if self.weight is not None:
            weight = self.texts[self.weight]
            required["weight " + weight] = to_numbers(weight, self.values(self.weight))
        tests = {name: to_numbers(self.texts[name], self.values(name)) for name in self.tests}
        named = {self.texts[name]: column for name, column in tests.items()}
        check_lengths({**required, **named})
        if nan_policy != "omit":
            complete_cases(required, nan_policy)
            complete_cases(named, nan_policy)
        self.required, self.test_columns = list(required.values()), tests

    def omitted(self, rows: RowsResult, missing_tests: dict[Any, int]) -> Counter[str]:
        """Rows that were left out, of all tests or of one, by reason."""
        group, weight = self.texts.get(self.group), self.texts.get(self.weight)
        counts: Counter[str] = Counter()
        for reason, count in ((f"missing {self.texts[self.state]}", rows.missing_state),
                              (f"missing group {group}", rows.missing_group),
                              (f"missing weight {weight}", rows.missing_weight),
                              *((f"missing {self.texts[name]}", count) for name, count in missing_tests.items()),
                              (f"unusable weight in {weight}: below 1 or beyond 2147483647", rows.unusable_weight),
                              (f"other {group}", rows.other_group)):
            counts[reason] += count
        return +counts  # what there is

    def notes(self, rows: RowsResult) -> list[AnalysisWarning]:
        if not rows.rounded_used:
            return []
        return [AnalysisWarning(0, f"weights in {self.texts[self.weight]} that are not whole numbers, rounded with "
                                   f"halves up: {rows.rounded_used}")]


def _split(request: _Request, handle: _Handle, group_cut: float | None, group_mid_point: bool) -> None:
    if request.group_labels is not None:
        handle.call("set_number", b"group_first", 0.0)
        handle.call("set_number", b"group_second", 1.0)
    elif group_cut is not None:
        handle.call("set_number", b"group_cut", group_cut)
    elif group_mid_point:
        handle.call("set_number", b"group_mid_point", 1.0)


class _Reader:
    """Turns what a run left in the handle into results."""

    def __init__(self, handle: _Handle, request: _Request, names: list[Any], level: float, direction: Direction,
                 comparison: ComparisonKind, distribution: Distribution, with_roc: bool):
        self.handle, self.request, self.names, self.level = handle, request, names, level
        self.descending, self.paired = direction == "larger", comparison == "paired"
        self.distribution, self.with_roc = distribution, with_roc

    def _group(self, record: RecordResult) -> Group | None:
        if record.group < 0:
            return None
        labels = self.request.group_labels
        value = record.group_value if labels is None else labels[int(record.group_value)]
        return Group(self.request.texts[self.request.group], ("==", ">=", "<")[record.group_operation], value)

    def _roc(self, index: int, record: RecordResult, omitted: int) -> RocCurve:
        thresholds, tpr, specificity = (np.empty(record.curve_rows) for _ in range(3))
        self.handle.call("curve", index, thresholds.ctypes.data, tpr.ctypes.data, specificity.ctypes.data)
        order = slice(None, None, -1 if self.descending else 1)  # ascending by 1 - specificity
        fpr, tpr, thresholds = (frozen(column[order].copy()) for column in (1.0 - specificity, tpr, thresholds))
        return RocCurve(fpr, tpr, thresholds, record.n_positive, record.n_negative, omitted)

    def _precision_recall(self, index: int, record: RecordResult, omitted: int,
                          thresholds: Floats) -> PrecisionRecallCurve:
        """thresholds: of the measured points, ascending."""
        precision, recall = np.empty(record.pr_rows), np.empty(record.pr_rows)
        flags = np.empty(record.pr_rows, dtype=np.uint8)
        self.handle.call("precision_recall", index, precision.ctypes.data, recall.ctypes.data, flags.ctypes.data)
        interpolated = flags != 0
        leads_to = np.cumsum(~interpolated) - ~interpolated  # the number of measured points before it
        order = slice(None, None, 1 if self.descending else -1)
        precision, recall, reached = (
            frozen(column[order].copy()) for column in (precision, recall, thresholds[leads_to]))
        return PrecisionRecallCurve(precision, recall, reached, frozen(interpolated[order].copy()),
                                    record.n_positive, record.n_negative, omitted)

    def record(self, index: int) -> Record:
        r = self.handle.fetch("record", index, RecordResult())
        omitted = self.handle.numbers("record_rows", index)[0] - r.n_positive - r.n_negative
        changed = self.distribution == "bi-negative" and (bool(r.distribution_changed) or self.paired)
        area = Area(number(r.area), number(r.std_error), number(r.p_value), number(r.ci_lower), number(r.ci_upper),
                    r.n_positive, r.n_negative, omitted, self.level,
                    "nonparam" if changed else self.distribution, changed)
        roc = self._roc(index, r, omitted)
        ascending = roc.thresholds[:: -1 if self.descending else 1]
        points = self._precision_recall(index, r, omitted, ascending) if r.pr_rows else None
        has_curve = r.ks_maximum != -1.0
        return Record(self.names[r.test], self._group(r), area, number(r.gini),
                      r.ks_maximum if has_curve else np.nan, number(r.ks_threshold) if has_curve else np.nan,
                      bool(r.ties), number(r.weighted_positive), number(r.weighted_negative),
                      roc if self.with_roc else None, points)

    def warning(self, index: int) -> AnalysisWarning:
        w = self.handle.fetch("warning", index, WarningResult())
        tests = ", ".join(self.request.texts[self.names[w.parameters[i]]] for i in range(w.parameter_count))
        messages = {430102: f"positive and negative cases share values, which count half: {tests}",
                    430103: "positive and negative cases are not equally many everywhere: all standard errors are "
                            "nonparametric",
                    430104: "the group is not used: results are over all cases"}
        return AnalysisWarning(w.code, messages.get(w.code, w.name.decode()))

    def analysis(self) -> Analysis:
        records = tuple(self.record(index) for index in range(self.handle.count("record")))
        pairs = [self.handle.fetch("comparison", index, PairResult())
                 for index in range(self.handle.count("comparison"))]
        compared = tuple((records[pair.first], records[pair.second]) for pair in pairs)
        comparisons = tuple(
            Comparison(first.area, second.area, number(pair.difference), number(pair.std_error), number(pair.z),
                       number(pair.p_value), number(pair.ci_lower), number(pair.ci_upper), self.level)
            for pair, (first, second) in zip(pairs, compared))
        rows = self.handle.rows()
        missing = {self.names[column]: sum(self.handle.numbers("missing_test", column))
                   for column in range(len(self.names) - len(self.request.tests), len(self.names))}
        warnings = [self.warning(index) for index in range(self.handle.count("warning"))] + self.request.notes(rows)
        return Analysis(records, comparisons, compared, tuple(warnings),
                        Counts(self.request.omitted(rows, missing)))


def analyze(data: Any, *, state: Any, tests: Any, pos_label: Any = None, group: Any = None,
            group_values: Any = None, group_cut: float | None = None, group_mid_point: bool = False,
            weight: Any = None, comparison: ComparisonKind = "none", direction: Direction = "larger",
            cut_off: CutOff = "include", distribution: Distribution = "nonparam",
            interpolation: Interpolation = "davis-goadrich", confidence_level: float = 0.95, roc: bool = True,
            precision_recall: bool = False, nan_policy: NanPolicy = "raise",
            progress: Progress | None = None) -> Analysis:
    """Runs a whole analysis over the columns of a table.

    Parameters
    ----------
    data
        A pandas DataFrame, a dict of arrays, or anything else that gives a column of shape (n,) by name.
    state, tests
        Names of the column of states and of the test variables (one name or a list).
    pos_label, direction, cut_off, distribution, confidence_level
        As in roc_curve and auc.
    group
        Column that splits the cases in two groups: those with its two values in ascending order (categories in
        theirs), or with the two of group_values (a list), or below and from group_cut on, or below and from the middle
        of its range on (group_mid_point).
    weight
        Column of whole numbers of cases that a row stands for. Weights enter the weighted counts only.
    comparison
        "none", "independent" (each test between the groups) or "paired" (all pairs of tests on the same cases).
    roc, precision_recall, interpolation
        Which curves the records hold (the Kolmogorov-Smirnov maximum is always there); interpolation as in pr_curve.
    nan_policy
        "raise", or "omit": cases without state, group or weight are left out, a missing test value leaves the case
        out of that test, in a paired comparison of all tests. ``omitted`` of the result counts them by reason.
    progress
        Called with the share of the work done, in [0, 1], and the records read so far. What it raises ends the run.

    Returns
    -------
    Analysis

    Raises
    ------
    AnalysisError
        A ValueError: the data do not allow this analysis.
    ValueError, TypeError
        As in roc_curve, and for columns that are not there.
    KeyboardInterrupt
        Ctrl-C during the run, which ends it before its next record or area.

    Examples
    --------
    >>> data = {"sick": [1, 1, 1, 0, 0, 0], "a": [5, 6, 4, 3, 2, 1], "b": [5, 2, 4, 3, 6, 1]}
    >>> result = vexroc.analyze(data, state="sick", tests=["a", "b"], comparison="paired")
    >>> round(result["b"].ks_maximum, 4), round(result.comparisons[0].difference, 4)
    (0.3333, 0.4444)
    """
    words = {"direction": check_word("direction", direction, DIRECTIONS),
             "cut_off": check_word("cut_off", cut_off, CUT_OFFS),
             "distribution": check_word("distribution", distribution, DISTRIBUTIONS),
             "interpolation": check_word("interpolation", interpolation, INTERPOLATIONS),
             "comparison": check_word("comparison", comparison, ("none", "independent", "paired"))}
    level = check_level(confidence_level)
    splits = [group_values is not None, group_cut is not None, bool(group_mid_point)]
    if sum(splits) > 1 or (group is None and any(splits)):
        raise ValueError("groups are made by one of group_values=, group_cut= and group_mid_point=, "
                         "together with group=")
    cut = None if group_cut is None else check_number("group_cut", group_cut, "give the first value of the upper group")
    request = _Request(data, state, tests, group, weight)
    request.load(pos_label, group_values, splits[1] or splits[2], nan_policy)

    handle = _Handle()
    parts = ["state"] + ["group"] * (group is not None) + ["weight"] * (weight is not None)
    names = [name for name in (state, group, weight) if name is not None]
    for name, values, part in zip(names, request.required, parts):
        handle.add(request.texts[name], values, part)
    for name in request.tests:
        handle.add(request.texts[name], request.test_columns[name], "test")
    for setting, word in words.items():
        handle.call("set_word", setting.encode(), word)
    handle.call("set_number", b"confidence_level", level)
    handle.call("set_number", b"pr", 1.0 if precision_recall else 0.0)
    _split(request, handle, cut, group_mid_point)
    handle.run(progress)
    return _Reader(handle, request, names + request.tests, level, direction, comparison, distribution, roc).analysis()
