"""The doors: each answers a question about a case with a dictionary, or a list of them, in the words of reference."""
import ctypes
import json
import math
import pathlib
import subprocess
import warnings
from ctypes import POINTER, Structure, byref, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ulonglong, c_void_p


class Refused(Exception):
    pass


def structure(name, members):
    """A structure of inference.h from "type name, name; type name"."""
    types = {"double": c_double, "int": c_int, "count": c_longlong, "text": c_char_p, "size": c_size_t,
             "seed": c_ulonglong, "call": c_void_p, "list": POINTER(c_double), "counts": POINTER(c_longlong),
             "three": POINTER(c_double) * 3}
    parts = (part.strip().split(" ", 1) for part in members.split(";"))
    fields = [(member.strip(), types[kind]) for kind, names in parts for member in names.split(",")]
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

    def calibration(self, summary, options, **_):
        return self.filled("calibration", Calibration, summary, byref(options))


# The program ---------------------------------------------------------------------------------------------------------


def renamed(row, names, *others):
    """Of a row of a door, the members that it shares with the library under its own names, and others as they are."""
    return {ours: row[theirs] for ours, theirs in names.items()} | {name: row[name] for name in others}


def number_of(value):
    """JSON has words for what is no number there."""
    return {"Infinity": math.inf, "-Infinity": -math.inf}.get(value, value) if isinstance(value, str) else value


def estimates_of(row, join):
    return {f"{name}.{part}": row[name if part == "value" else join(name, part)]
            for name in STATISTICS for part in ("value", "lower", "upper")}


class Program:
    def __init__(self, path, folder):
        self.path, self.folder = path, folder

    def can(self, case, question):
        """It has no Student's t and no test without correction; weights are of areas."""
        if {"small_sample", "uncorrected"} & set(question.words):
            return False
        return case.kind != "probability" or question.kind == "area_inference"

    def run(self, command, case, table, *options, **words):
        """The rows of a table of JSON. Words become options; those without a value are left out."""
        path = self.folder / f"{case.name}.csv"
        if not path.exists():
            rows = [("v", "s", "n"), *((repr(x), s, repr(c * w)) for x, s, c, w in case.rows())]
            path.write_text("\n".join(",".join(map(str, row)) for row in rows) + "\n", encoding="utf-8")
        call = [self.path, command, path, "--state", "s=1", "--negative", "0", "--test", "v", "--format", "json",
                "--quiet", *options]
        call += {"none": [], "count": ["--count", "n"],
                 "probability": ["--weight", "n", "--weight-kind", "probability"]}[case.kind]
        call += ["--smaller"] * case.smaller + ["--exclude"] * case.exclude
        if words.get("interval") in ("bootstrap", "bca", "btii"):
            words |= {"seed": case.seed, "replicates": case.replicates}
        if command != "benefit":
            words["level"] = case.level
        for name, value in words.items():
            if value is not None:
                value = ",".join(map(repr, value)) if isinstance(value, (list, tuple)) else value
                call.append(f"--{name.replace('_', '-')}={value}")
        ran = subprocess.run(list(map(str, call)), capture_output=True, check=False, encoding="utf-8")
        if ran.returncode != 0:
            raise Refused(ran.stderr)
        return [{name: number_of(value) for name, value in row.items()}
                for row in json.loads(ran.stdout)["results"][table]]

    def answer(self, case, question):
        return getattr(self, question.kind)(case, **question.words)

    def area_inference(self, case, p_method=None, **words):
        command = "analyze" if case.kind == "probability" else "auc"  # which has the weights
        row, = self.run(command, case, "areas", p_value=p_method, **words)
        return renamed(row, {}, "positive", "negative", "area", "std_error", "error", "p_value", "log10_p", "p_method",
                       "null_area", "lower", "upper", "interval")

    def operating_points(self, case, **words):
        return [renamed(row, {}, "cut_off", *CELLS) | estimates_of(row, "{}_{}".format)
                for row in self.run("points", case, "points", **words)]

    def best_cut_offs(self, case, **words):
        rows = self.run("best", case, "best_cut_offs", **words)
        chosen = [i for i, row in enumerate(rows) if row["chosen"]]
        return {"cut_offs": [row["cut_off"] for row in rows], "chosen": chosen[0] if rows else -1,
                "value": rows[0]["value"] if rows else None}

    def rate_at(self, case, criterion, **words):
        rows = self.run("best", case, "rates", criterion=criterion, **words)
        if not rows:
            return {"reached": None, "cut_off": None}
        row, = rows
        return renamed(row, {}, "reached", "cut_off", "interpolated", "lower", "upper", "interval", "std_error")

    def partial_area(self, case, rate, a, b, interval):
        row, = self.run("partial", case, "partial_areas", **{rate: (a, b)}, interval=interval)
        return renamed(row, {"area": "partial_area"}, "positive", "negative", "from", "to", "std_error", "lower",
                       "upper", "interval", "standardized", "standardized_error", "standardized_lower",
                       "standardized_upper")

    def pr_area(self, case, rule="integral", **words):
        row, = self.run("pr", case, "pr_areas", area=rule, **words)
        return renamed(row, {"area": "pr_area"}, "positive", "negative", "lower", "upper", "rule", "interval",
                       "prevalence", "lowest")

    def net_benefit(self, case, thresholds, prevalence):
        return [renamed(row, {"model": "net_benefit"}, "treat_all", "true_positive", "false_positive")
                for row in self.run("benefit", case, "net_benefits", at=thresholds, prevalence=prevalence)]

    def calibration(self, case, prevalence):
        row = self.run("benefit", case, "net_benefits", at=[0.5], prevalence=prevalence)[0]
        return renamed(row, {}, "mean_score", "observed")


# Python --------------------------------------------------------------------------------------------------------------


class Python:
    def __init__(self):
        import vexroc
        self.package = vexroc

    def can(self, case, question):
        return case.kind != "probability" or question.kind in ("area_inference", "operating_points", "pr_area")

    def ask(self, name, case, *arguments, cut_off=False, drawn=False, level=True, **words):
        words = {name: value for name, value in words.items() if value is not None}
        if case.kind != "none":
            words |= {"count": case.counts} if case.counts else {"sample_weight": case.weights}
        if name != "net_benefit":
            words |= {"direction": "smaller" if case.smaller else "larger"}
        if level:
            words["confidence_level"] = case.level
        if cut_off:
            words["cut_off"] = "exclude" if case.exclude else "include"
        if drawn:
            words |= {"n_resamples": case.replicates, "random_state": case.seed}
        with warnings.catch_warnings():
            warnings.simplefilter("ignore")
            try:
                return getattr(self.package, name)(case.states, case.values, *arguments, **words)
            except ValueError as error:
                raise Refused(str(error)) from error

    def answer(self, case, question):
        return getattr(self, question.kind)(case, **question.words)

    COUNTS = {"positive": "n_positive", "negative": "n_negative"}
    LIMITS = {"lower": "ci_lower", "upper": "ci_upper"}

    def area_inference(self, case, uncorrected=False, **words):
        if uncorrected:
            row = vars(self.ask("mann_whitney", case, correction=False, exact=words["exact"], level=False))
            return renamed(row, self.COUNTS, "area", "u", "z", "p_value", "log10_p", "p_method")
        row = vars(self.ask("auc", case, drawn=True, **words))
        return renamed(row, self.COUNTS | self.LIMITS, "area", "std_error", "error", "interval", "z", "p_value",
                       "log10_p", "p_method", "freedom", "bootstrap_error", "null_area")

    def operating_points(self, case, at=None, **words):
        rows = self.rows(self.ask("confusion_at_thresholds", case, at, cut_off=True, **words))
        return rows if at or case.smaller else rows[::-1]  # those of a curve come from the strictest on

    def rows(self, points):
        def row(i):
            cells = {"cut_off": points.thresholds[i]} | dict(zip(CELLS, (points.tp[i], points.fp[i], points.tn[i],
                                                                         points.fn[i])))
            parts = {f"{name}.{part}": getattr(getattr(points, name), part)[i] for name in STATISTICS
                     for part in ("value", "lower", "upper")}
            return {name: value.item() for name, value in (cells | parts).items()}
        return [row(i) for i in range(len(points.thresholds))]

    def best_cut_offs(self, case, **words):
        best = self.ask("best_threshold", case, cut_off=True, interval="none", **words)
        cut_offs = best.thresholds.tolist()
        chosen = [i for i, cut_off in enumerate(cut_offs) if cut_off == best.threshold]
        place = chosen[0 if case.smaller else -1] if chosen else -1
        return {"cut_offs": cut_offs, "chosen": place, "value": best.value}

    def rate_at(self, case, **words):
        best = self.ask("best_threshold", case, cut_off=True, drawn=True, **words)
        return renamed(vars(best.rate), self.LIMITS, "reached", "interpolated", "interval", "std_error"
                       ) | {"cut_off": best.threshold}

    def partial_area(self, case, rate, a, b, interval):
        row = vars(self.ask("partial_auc", case, drawn=True, interval=interval, **{rate: (a, b)}))
        return renamed(row, self.COUNTS | self.LIMITS, "area", "std_error", "interval", "standardized",
                       "standardized_error", "standardized_lower", "standardized_upper", "bootstrap_error")

    def pr_area(self, case, **words):
        row = vars(self.ask("pr_auc", case, drawn=True, **words))
        return renamed(row, self.COUNTS | self.LIMITS, "area", "rule", "interval", "prevalence", "chance", "lowest",
                       "bootstrap_error")

    def net_benefit(self, case, thresholds, prevalence):
        found = self.ask("net_benefit", case, thresholds, prevalence=prevalence, level=False)
        return [dict(zip(("model", "treat_all", "true_positive", "false_positive"), (value.item() for value in row)))
                for row in zip(found.net_benefit, found.treat_all, found.tp, found.fp)]

    def calibration(self, case, prevalence):
        found = self.ask("net_benefit", case, [0.5], prevalence=prevalence, level=False)
        return renamed(vars(found), {}, "mean_score", "observed")


# R -------------------------------------------------------------------------------------------------------------------


def spelled(value):
    """As R's parser reads it, to the bit."""
    if isinstance(value, (list, tuple)):
        return f"c({', '.join(map(spelled, value))})"
    if isinstance(value, bool):
        return str(value).upper()
    if isinstance(value, str):
        return json.dumps(value.replace("two-sided", "two.sided"))
    if isinstance(value, float) and math.isinf(value):
        return "Inf" if value > 0 else "-Inf"
    return value.hex() if isinstance(value, float) else f"{value}"


class R:
    """One process answers everything."""

    NAMES = {"null": "null", "p_method": "p.method", "interval": "ci.method", "cost_ratio": "cost.ratio",
             "min_sensitivity": "min.sensitivity", "min_specificity": "min.specificity", "criterion": "method",
             "proportion": "ci.method"}

    def __init__(self, folder, cases):
        script = folder / "calls.R"
        lines = [pathlib.Path(__file__).with_name("answers.R").read_text(encoding="utf-8")]
        for case in cases:
            lines.append(f"v <- {spelled(case.values)}; s <- {spelled(case.states)}; "
                         f"n <- {spelled(case.counts or [])}; "
                         f"w <- {spelled(case.weights or [])}; delayedAssign('fit', {self.fit(case)})")
            lines += [f"tell({json.dumps(f'{case}{question}')}, "
                      f"{getattr(self, question.kind)(case, **question.words)})"
                      for question in case.questions if self.can(case, question)]
        script.write_text("\n".join(lines) + "\n", encoding="utf-8")
        ran = subprocess.run(["Rscript", "--vanilla", script], capture_output=True, check=False, encoding="utf-8")
        assert ran.returncode == 0, ran.stderr
        self.answers = {}
        for line in ran.stdout.splitlines():
            name, *cells = line.split("\x1f")
            row = dict(zip(cells[::2], map(self.value, cells[1::2])))
            self.answers.setdefault(name, []).append(row)

    @staticmethod
    def value(cell):
        kind, text = cell[0], cell[1:]
        if text in ("NA", "NaN"):
            return None
        return text if kind == "c" else text == "TRUE" if kind == "l" else float.fromhex(text)

    def can(self, case, question):
        """R has no integers of 64 bits and no Student's t."""
        drawn = question.words.get("interval") in ("bootstrap", "bca", "btii")
        if case.seed > 2 ** 53 and drawn or question.words.get("small_sample"):
            return False
        return case.kind != "probability" or question.kind in ("area_inference", "operating_points", "pr_area")

    def words(self, case, words, drawn=False):
        words = {self.NAMES.get(name, name): value for name, value in words.items() if value is not None}
        if drawn and case.seed <= 2 ** 53:
            words |= {"boot.n": case.replicates, "seed": case.seed}
        return "".join(f", {name} = {spelled(value)}" for name, value in words.items())

    def fit(self, case, **words):
        numbers = {"none": "", "count": ", count = n", "probability": ", weight = w, weight.kind = \"probability\""}
        return (f"vexroc(data.frame(v = v), s, positive = 1, direction = {'larger smaller'.split()[case.smaller]!r}, "
                f"cut_off = {'include exclude'.split()[case.exclude]!r}, level = {case.level!r}"
                f"{numbers[case.kind]}{self.words(case, words, drawn=True)})")

    def area_inference(self, case, uncorrected=False, **words):
        if uncorrected:
            return f"mann_whitney(fit, exact = {spelled(words['exact'])}, correct = FALSE)"
        return f"{self.fit(case, **words)}$areas"

    def operating_points(self, case, **words):
        return f"operating_points(fit{self.words(case, words)}, ret = quantities)"

    def best_cut_offs(self, case, **words):
        return f"best_cut_offs(fit{self.words(case, words)}, rate.method = 'none')"

    def rate_at(self, case, criterion, interval):
        return f"best_cut_offs(fit{self.words(case, {'criterion': criterion}, True)}, rate.method = {interval!r})"

    def partial_area(self, case, rate, a, b, interval):
        band = (1.0 - a, 1.0 - b) if rate == "fpr" else (a, b)
        focus = "specificity" if rate == "fpr" else "sensitivity"
        return (f"partial_area(fit, {spelled(band)}, {spelled(focus)}"
                f"{self.words(case, {'interval': interval}, True)})")

    def pr_area(self, case, **words):
        return f"pr_area(fit{self.words(case, words, True)})"

    def net_benefit(self, case, thresholds, prevalence):
        return f"net_benefit(fit, {spelled(thresholds)}{self.words(case, {'prevalence': prevalence})})"

    def calibration(self, case, prevalence):
        return f"net_benefit(fit, 0.5{self.words(case, {'prevalence': prevalence})})"

    def answer(self, case, question):
        rows = self.answers[str(case) + str(question)]
        if "refused" in rows[0]:
            raise Refused(rows[0]["refused"])
        rows = [row for row in rows if "none" not in row]
        limits = ("lower", "upper")
        if question.kind == "area_inference":
            names = ("u", "z", "p_value", "log10_p", "p_method", "area") if question.words.get("uncorrected") else (
                "area", "std_error", "error", "interval", "p_value", "log10_p", "p_method", *limits)
            return renamed(rows[0], {}, "positive", "negative", *names)
        if question.kind == "operating_points":
            return [renamed(row, {}, "cut_off", *CELLS) | estimates_of(row, "{}_{}".format) for row in rows]
        if question.kind == "best_cut_offs":
            chosen = [i for i, row in enumerate(rows) if row["chosen"]]
            return {"cut_offs": [row["cut_off"] for row in rows], "chosen": chosen[0] if rows else -1,
                    "value": rows[0]["value"] if rows else None}
        if question.kind == "rate_at":
            if not rows:
                return {"reached": None}
            return renamed(rows[0], {"lower": "reached_lower", "upper": "reached_upper", "std_error": "reached_error",
                                     "interval": "reached_interval"}, "reached", "interpolated")
        if question.kind == "partial_area":
            return renamed(rows[0], {"area": "partial_area"}, "positive", "negative", "std_error", *limits, "interval",
                           "standardized", "standardized_error", "standardized_lower", "standardized_upper")
        if question.kind == "pr_area":
            return renamed(rows[0], {"area": "pr_area"}, "positive", "negative", *limits, "rule", "interval",
                           "prevalence", "lowest")
        if question.kind == "net_benefit":
            return [renamed(row, {"model": "net_benefit"}, "treat_all", "true_positive", "false_positive")
                    for row in rows]
        return renamed(rows[0], {}, "mean_score", "observed")
