"""The doors: each answers a question about a case with a dictionary, or a list of them, in the words of reference.py."""
import ctypes
import math
from ctypes import POINTER, Structure, byref, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ulonglong, c_void_p


class Refused(Exception):
    pass


def structure(name, members):
    """A structure of inference.h from "type name, name; type name"."""
    types = {"double": c_double, "int": c_int, "count": c_longlong, "text": c_char_p, "size": c_size_t,
             "seed": c_ulonglong, "call": c_void_p, "list": POINTER(c_double), "counts": POINTER(c_longlong),
             "three": POINTER(c_double) * 3}
    fields = [(member.strip(), types[kind]) for kind, names in (part.strip().split(" ", 1) for part in members.split(";"))
              for member in names.split(",")]
    return type(name, (Structure,), {"_fields_": [("struct_size", c_size_t), *fields]})


Options = structure("Options", """double level; int smaller_is_positive, exclude_cut_off; text interval, proportion,
    p_method, exact, alternative; double null_area; int small_sample, uncorrected; double prevalence, cost_ratio,
    min_sensitivity, min_specificity; count replicates; seed seed; call progress, cancel, parallel, user""")
Area = structure("Area", """count positive, negative; double area, std_error; text error; double lower, upper;
    text interval; int edge, percentile, held; double bootstrap_error, z, p_value, log10_p; text p_method;
    double freedom, u, exact_steps, null_area""")
STATISTICS = ("sensitivity", "specificity", "ppv", "npv", "lr_positive", "lr_negative", "dor", "accuracy",
              "balanced_accuracy", "f1", "mcc", "youden", "kappa")
CELLS = ("true_positive", "false_positive", "true_negative", "false_negative")
Columns = structure("Columns", f"list cut_off; counts {', '.join(CELLS)}; three {', '.join(STATISTICS)}")
Best = structure("Best", "count count, chosen; double value; text criterion; double share")
Rate = structure("Rate", "double reached, cut_off, interpolated, lower, upper; text interval; double std_error")
Partial = structure("Partial", """double from, to; count positive, negative; double area, std_error, lower, upper;
    text interval; double standardized, standardized_error, standardized_lower, standardized_upper;
    int edge, few, percentile, held; double bootstrap_error""")
Pr = structure("Pr", """double area, lower, upper; text interval, rule; double prevalence, chance, lowest;
    count positive, negative; int edge, percentile, held; double bootstrap_error""")
Calibration = structure("Calibration", "double mean_score, observed, std_error; int differs")


def doubles(values):
    return (c_double * max(1, len(values)))(*values)


def members(result):
    def plain(value):
        return value.decode() if isinstance(value, bytes) else value
    return {name: plain(getattr(result, name)) for name, _ in result._fields_ if name != "struct_size"}


class C:
    """The calls of inference.h."""

    def __init__(self, path):
        self.library = ctypes.CDLL(str(path))
        self.library.vexroc_last_error.restype = c_char_p
        self.library.vexroc_cut_off_count.restype = c_longlong

    def can(self, case, question):
        return True

    def call(self, name, *arguments):
        if getattr(self.library, "vexroc_" + name)(*arguments) != 0:
            raise Refused(self.library.vexroc_last_error().decode())

    def made(self, result):
        result.struct_size = ctypes.sizeof(result)
        return result

    def summary(self, case):
        summary = c_void_p()
        self.call("summary_new", byref(summary))
        kind = {"none": 0, "count": 1, "probability": 2}[case.kind]
        numbers = case.counts or case.weights
        self.call("summary_add", summary, doubles(case.values), doubles(case.states), c_double(1.0),
                  doubles(numbers) if numbers else None, c_int(kind), c_longlong(len(case.values)))
        return summary

    def options(self, case, words):
        options = self.made(Options())
        self.call("inference_defaults", byref(options))
        options.level, options.seed, options.replicates = case.level, case.seed, case.replicates
        options.smaller_is_positive, options.exclude_cut_off = case.smaller, case.exclude
        for name, value in words.items():
            name = {"null": "null_area"}.get(name, name)
            if value is not None and name in dict(Options._fields_):
                setattr(options, name, value.encode() if isinstance(value, str) else value)
        return options

    def answer(self, case, question):
        summary = self.summary(case)
        try:
            return getattr(self, question.kind)(summary, self.options(case, question.words), **question.words)
        finally:
            self.library.vexroc_summary_free(summary)

    def filled(self, call, structure, *arguments):
        result = self.made(structure())
        self.call(call, *arguments, byref(result))
        return members(result)

    def area_inference(self, summary, options, **_):
        return self.filled("area_inference", Area, summary, byref(options))

    def operating_points(self, summary, options, at=None, **_):
        count = self.library.vexroc_cut_off_count(summary) if at is None else len(at)
        columns = self.made(Columns(cut_off=doubles([0] * count)))
        lists = {"cut_off": doubles([0] * count)} | {name: (c_longlong * count)() for name in CELLS}
        for name, values in lists.items():
            setattr(columns, name, values)
        for name in STATISTICS:
            lists |= {f"{name}.{part}": doubles([0] * count) for part in ("value", "lower", "upper")}
            setattr(columns, name, (POINTER(c_double) * 3)(*(
                ctypes.cast(lists[f"{name}.{part}"], POINTER(c_double)) for part in ("value", "lower", "upper"))))
        self.call("operating_points", summary, byref(options), doubles(at) if at else None, c_longlong(0),
                  c_longlong(count), byref(columns))
        return [{name: values[i] for name, values in lists.items()} for i in range(count)]

    def best_cut_offs(self, summary, options, criterion, **_):
        count = self.library.vexroc_cut_off_count(summary)
        cut_offs, result = doubles([0] * count), self.made(Best())
        self.call("best_cut_offs", summary, byref(options), criterion.encode(), c_longlong(count), cut_offs,
                  byref(result))
        return members(result) | {"cut_offs": cut_offs[:result.count]}

    def rate_at(self, summary, options, criterion, **_):
        return self.filled("rate_at", Rate, summary, byref(options), criterion.encode())

    def partial_area(self, summary, options, rate, a, b, **_):
        return self.filled("partial_area", Partial, summary, byref(options), rate.encode(), c_double(a), c_double(b))

    def pr_area(self, summary, options, rule="integral", **_):
        return self.filled("pr_area", Pr, summary, byref(options), rule.encode())

    def net_benefit(self, summary, options, thresholds, **_):
        n = len(thresholds)
        lists = [doubles([0] * n), doubles([0] * n), (c_longlong * n)(), (c_longlong * n)()]
        self.call("net_benefit", summary, byref(options), doubles(thresholds), c_longlong(n), *lists)
        names = ("model", "treat_all", "true_positive", "false_positive")
        return [dict(zip(names, row)) for row in zip(*lists)]

    def calibration(self, summary, options):
        return self.filled("calibration", Calibration, summary)
