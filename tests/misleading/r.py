"""The R package as a door: one process answers all cases, with what R's own reader makes of the files."""
import json
import pathlib
import subprocess

from table import Said, data_of

AREA = ("area", "std_error", "p_value", "log10_p", "lower", "upper", "positive", "negative")
PAIR = ("difference", "z", "p_value", "log10_p", "lower", "upper", "positive", "negative")


def spelled(value):
    """As R's parser reads it."""
    if isinstance(value, bool):
        return "TRUE" if value else "FALSE"
    if isinstance(value, dict):
        return "c(" + ", ".join(f"{spelled(name)} = {spelled(word)}" for name, word in value.items()) + ")"
    if isinstance(value, list):
        return "c(" + ", ".join(map(spelled, value)) + ")"
    return json.dumps(value, ensure_ascii=False)


def call_of(case):
    """The call of vexroc over `data`, and that of compare where there is one."""
    label = "labels[[%s]]"
    arguments = {"positive": spelled(case.positive), "direction": spelled(case.direction),
                 "ci.method": spelled(case.interval), "p.method": spelled(case.p_value),
                 "pr": spelled(case.interpolated)}
    if case.others or case.negative:
        arguments["negative"] = "others()" if case.others else spelled(case.negative)
    for name in ("count", "weight"):
        if value := getattr(case, name):
            arguments[name] = f"data[[{spelled(value)}]]"
    if case.weight_kind:
        arguments["weight.kind"] = spelled(case.weight_kind)
    if case.group:
        arguments.update(group=label % spelled(case.group[0]), groups=spelled(case.group[1:]))
    state = label % spelled(case.state)
    fit = f"vexroc(data[{spelled(case.tests)}], {state}, " + ", ".join(f"{k} = {v}" for k, v in arguments.items()) + ")"
    compare = "compare(fit)" if case.group else "NULL"
    if case.compare:
        compare = f"compare(fit, cases = {spelled(case.cases)})"
    return f"quote({fit}), quote({compare})"


class R:
    def __init__(self, folder, cases):
        script = [f"source({spelled(str(pathlib.Path(__file__).with_name('answers.R')))})"]
        for number, case in enumerate(cases):
            path = folder / f"{number}.csv"
            path.write_bytes(data_of(case))
            reading = {"fileEncoding": "UTF-8-BOM", "sep": ",", "dec": case.read.get("decimal", "."),
                       **{name: value for name, value in case.read.items() if name == "sep"}}
            script.append(f"answer({spelled(case.name)}, {call_of(case)}, {spelled(str(path))}, "
                          + ", ".join(f"{name} = {spelled(value)}" for name, value in reading.items()) + ")")
        (folder / "calls.R").write_text("\n".join(script), encoding="utf-8")
        ran = subprocess.run(["Rscript", "--vanilla", folder / "calls.R"], capture_output=True, check=False,
                             encoding="utf-8")
        assert ran.returncode == 0, ran.stderr
        self.lines = {}
        for line in ran.stdout.split("\x1e\n")[:-1]:
            name, kind, *rest = line.split("\x1f")
            self.lines.setdefault(name, []).append((kind, rest))

    def answer(self, case):
        said = Said(None, [], [], [], [])
        for kind, rest in self.lines[case.name]:
            if kind == "refused":
                return Said(rest[0])
            if kind in ("area", "pair"):
                values = [None if value in ("NA", "NaN") else float(value) for value in rest]
                getattr(said, kind + "s").append(dict(zip(AREA if kind == "area" else PAIR, values, strict=True)))
            else:
                getattr(said, kind).append(tuple(rest))
        return said
