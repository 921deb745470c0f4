"""The handle of analysis.h, with the labels of labels.h, as a door."""
import csv
import ctypes
import io
import math
from ctypes import POINTER, Structure, byref, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ubyte, c_void_p

from table import Said, data_of

VOICE_C = 0


class Remark(Structure):
    _fields_ = [("struct_size", c_size_t), ("code", c_char_p), ("caution", c_int), ("count", c_longlong),
                ("text", c_char_p)]


class Choice(Structure):
    _fields_ = [("struct_size", c_size_t), ("positive", POINTER(c_char_p)), ("positive_count", c_int),
                ("negative", POINTER(c_char_p)), ("negative_count", c_int), ("others", c_int), ("sign", c_char_p),
                ("bound", c_char_p)]


class Record(Structure):
    _fields_ = [("struct_size", c_size_t), ("test", c_int), ("group", c_int), ("group_operation", c_int),
                ("ties", c_int), ("group_value", c_double), ("positive", c_int), ("negative", c_int),
                *((name, c_double) for name in (
                    "weighted_positive", "weighted_negative", "area", "std_error", "significance", "lower",
                    "upper", "gini", "ks_maximum", "ks_cut_off")),
                ("curve_rows", c_int), ("pr_rows", c_int), ("distribution_changed", c_int),
                ("smaller_is_positive", c_int), ("distinct_values", c_int), ("p_value", c_double),
                ("log10_p", c_double), *((name, c_char_p) for name in ("distribution", "error", "interval")),
                *((name, c_int) for name in ("edge", "percentile", "held")), ("p_method", c_char_p)]


class Pair(Structure):
    _fields_ = [("struct_size", c_size_t), ("first", c_int), ("second", c_int),
                *((name, c_double) for name in ("difference", "standard_error_difference", "z", "significance",
                                                "lower", "upper", "p_value", "log10_p")),
                ("positive", c_longlong), ("negative", c_longlong),
                *((name, c_double) for name in ("first_area", "first_std_error", "second_area", "second_std_error"))]


class Refused(Exception):
    pass


def numbers(structure):
    """Its members, None for a number that is missing."""
    return {name: None if isinstance(value := getattr(structure, name), float) and math.isnan(value) else value
            for name, *_ in structure._fields_}


class Library:
    """The calls; what fails raises Refused with the library's words."""

    def __init__(self, path):
        self.library = ctypes.CDLL(str(path))
        self.library.vexroc_last_error.restype = c_char_p

    def __call__(self, name, *arguments):
        call = getattr(self.library, "vexroc_" + name)
        if call(*arguments) != 0:
            raise Refused(self.library.vexroc_last_error().decode())

    def count(self, name, *arguments):
        return getattr(self.library, "vexroc_" + name)(*arguments)


def texts(values):
    encoded = [value.encode() for value in values]
    return (c_char_p * max(1, len(encoded)))(*encoded), len(encoded)


class Handle:
    def __init__(self, path):
        self.library = Library(path)

    def labels(self, column, cells):
        labels = c_void_p()
        self.library("labels_new", column.encode(), None, ctypes.c_char(b"."), VOICE_C, byref(labels))
        spellings = []
        for cell in cells:
            index = c_int()
            self.library("labels_add", labels, cell.encode(), c_size_t(len(cell.encode())), 0, c_longlong(1),
                         byref(index))
            spellings.append(index.value)
        return labels, spellings

    def states(self, case, cells, remarks):
        """1 and 0 as the labels say, missing for the others."""
        labels, spellings = self.labels(case.state, cells)
        try:
            for name in case.positive + case.negative:
                self.library("labels_name", labels, name.encode(), c_size_t(len(name.encode())))
            self.library("labels_settle", labels)
            choice = Choice(ctypes.sizeof(Choice), *texts(case.positive), *texts(case.negative), int(case.others))
            first = case.positive[0]
            if first[0] in "<>":
                sign = first.rstrip("0123456789.")
                choice.sign, choice.bound, choice.positive_count = sign.encode(), first[len(sign):].encode(), 0
            self.library("labels_choose", labels, byref(choice))
            self.library("labels_add_remarks", labels, remarks)
            return [(0.0, 1.0, math.nan, math.nan)[self.library.count("labels_state_of", labels, spelling)]
                    for spelling in spellings]
        finally:
            self.library.library.vexroc_labels_free(labels)

    def numbers(self, cells):
        words = c_void_p()
        self.library("words_new", byref(words))
        missing = [self.library.count("words_missing_in_test", words, cell.encode(), c_size_t(len(cell.encode())))
                   for cell in cells]
        self.library.library.vexroc_words_free(words)
        return [math.nan if gone else float(cell) for gone, cell in zip(missing, cells)]

    def column(self, analysis, name, values, part, keep):
        index = c_int()
        keep.append((c_double * max(1, len(values)))(*values))
        self.library("analysis_add_column", analysis, name.encode(), keep[-1], c_longlong(len(values)), byref(index))
        self.library("analysis_set_column", analysis, part.encode(), index)
        return index

    def load(self, analysis, case, columns, remarks, keep):
        """Gives the columns to the analysis. States of numbers go as they are, as a C program has them."""
        cells = columns[case.state]
        try:
            as_numbers = case.positive[0][0] not in "<>" and [float(cell) for cell in cells]
        except ValueError:
            as_numbers = False
        if as_numbers:
            self.column(analysis, case.state, as_numbers, "state", keep)
            self.library("analysis_set_number", analysis, b"positive_value", c_double(float(case.positive[0])))
            for value in case.negative:
                self.library("analysis_add_negative", analysis, c_double(float(value)))
        else:
            self.column(analysis, case.state, self.states(case, cells, remarks), "state", keep)
        for name in case.tests:
            test = self.column(analysis, name, self.numbers(columns[name]), "test", keep)
            word = case.direction.get(name) if isinstance(case.direction, dict) else case.direction
            self.library("analysis_set_direction", analysis, test, word.encode() if word else None)
        for part in ("count", "weight"):
            if name := getattr(case, part):
                self.column(analysis, name, self.numbers(columns[name]), part, keep)
        if case.group:
            self.group(analysis, case, columns[case.group[0]], remarks, keep)

    def group(self, analysis, case, cells, remarks, keep):
        labels, spellings = self.labels(case.group[0], cells)
        self.library("labels_settle", labels)
        self.library("labels_add_remarks", labels, remarks)
        values = [float(self.library.count("labels_value_of", labels, spelling)) for spelling in spellings]
        column = self.column(analysis, case.group[0], [math.nan if v < 0 else v for v in values], "group", keep)
        for setting, name in zip((b"group_first", b"group_second"), case.group[1:]):
            value = c_double(self.library.count("labels_find", labels, name.encode(), c_size_t(len(name.encode()))))
            self.library("analysis_set_number", analysis, setting, value)
            self.library("analysis_name_value", analysis, column, value, name.encode())
        self.library.library.vexroc_labels_free(labels)

    def settings(self, analysis, case):
        words = {"comparison": "independent" if case.group else case.compare or "none", "cases": case.cases,
                 "interval": case.interval, "p_value": case.p_value, "weight_kind": case.weight_kind or "unsaid"}
        for setting, word in words.items():
            self.library("analysis_set_word", analysis, setting.encode(), word.encode())
        self.library("analysis_set_number", analysis, b"roc", c_double(case.roc))
        self.library("analysis_set_number", analysis, b"pr", c_double(case.interpolated))

    def answer(self, case):
        analysis, remarks, keep = c_void_p(), c_void_p(), []
        self.library("analysis_new", byref(analysis))
        self.library("remarks_new", VOICE_C, byref(remarks))
        try:
            rows = list(csv.DictReader(io.StringIO(data_of(case).decode("utf-8-sig"), newline=""),
                                       delimiter=case.read.get("sep", ",")))
            sign = case.read.get("decimal", ".")
            columns = {name: [row[name].replace(sign, ".") for row in rows] for name in rows[0]}
            self.load(analysis, case, columns, remarks, keep)
            self.settings(analysis, case)
            self.library("analysis_run", analysis)
            self.library("analysis_add_remarks", analysis, remarks, None)
            return self.said(analysis, remarks, case)
        except Refused as error:
            return Said(str(error))
        finally:
            self.library.library.vexroc_analysis_free(analysis)
            self.library.library.vexroc_remarks_free(remarks)

    def fetch(self, name, handle, index, structure):
        structure.struct_size = ctypes.sizeof(structure)
        self.library(name, handle, index, byref(structure))
        return structure

    def said(self, analysis, remarks, case):
        read = [self.fetch("remarks_get", remarks, i, Remark())
                for i in range(self.library.count("remarks_count", remarks))]
        told = [[(one.code.decode(), one.text.decode()) for one in read if bool(one.caution) == caution]
                for caution in (True, False)]
        areas = [self.fetch("analysis_record", analysis, i, Record())
                 for i in range(self.library.count("analysis_record_count", analysis))]
        pairs = [self.fetch("analysis_comparison", analysis, i, Pair())
                 for i in range(self.library.count("analysis_comparison_count", analysis))]
        if case.interpolated:
            self.check_interpolated(analysis, areas[0])
        return Said(None, *told, [numbers(area) for area in areas], [numbers(pair) for pair in pairs])

    def check_interpolated(self, analysis, record):
        precision, recall = ((c_double * record.pr_rows)() for _ in range(2))
        flags, rows = (c_ubyte * record.pr_rows)(), (c_int * record.pr_rows)()
        self.library("analysis_precision_recall", analysis, 0, precision, recall, flags)
        self.library("analysis_precision_recall_rows", analysis, 0, rows)
        assert any(flags) and all((row == -1) == bool(flag) for row, flag in zip(rows, flags))
