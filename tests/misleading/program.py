"""The program as a door."""
import json
import subprocess

from table import ROOT, Said, data_of


def quoted(value):
    """A value that no option takes for a list or a word of its own."""
    return f'"{value}"' if any(sign in value for sign in ',=:"') or value in ("others", "none") else value


def joined(values):
    return ",".join(map(quoted, values))


def state_option(case):
    if case.positive[0].startswith((">", "<")):
        return case.state + case.positive[0]
    return f"{case.state}={joined(case.positive)}"


def test_option(case):
    directions = case.direction if isinstance(case.direction, dict) else {}
    return ",".join(quoted(test) + (":" + directions[test] if test in directions else "") for test in case.tests)


def question(case):
    """Options that every command takes."""
    options = ["--state", state_option(case), "--test", test_option(case), *case.options]
    if case.others or case.negative:
        options += ["--negative", "others" if case.others else joined(case.negative)]
    if case.direction == "smaller":
        options += ["--smaller"]
    for option, value in (("--count", case.count), ("--missing", ",".join(case.missing))):
        options += [option, value] if value else []
    return options


def inference(case):
    """Options of the commands with areas."""
    options = ["--interval", case.interval] if case.interval != "score" else []
    if case.p_value != "mann-whitney":
        options += ["--p-value", case.p_value]
    if case.weight:
        options += ["--weight", case.weight]
    if case.weight_kind:
        options += ["--weight-kind", case.weight_kind]
    if case.compare == "paired" and case.cases != "pairwise":
        options += ["--cases", case.cases]
    return options


class Program:
    def __init__(self, path, folder):
        self.path, self.folder = path, folder

    def run(self, case, *args):
        data = self.folder / "data.csv"
        data.write_bytes(data_of(case))
        options = [str(arg).replace("{folder}", str(self.folder)) for arg in args]
        return subprocess.run([self.path, options[0], data, *options[1:]], capture_output=True, check=False, cwd=ROOT,
                              encoding="utf-8", errors="replace")

    def arguments(self, case):
        """The command for the question, without the file."""
        if case.command:
            return [case.command, *([] if case.command == "columns" else question(case))]
        command = "analyze" if case.by or case.group or case.weight or case.compare or not case.roc else "auc"
        options = [*question(case), *inference(case)]
        if case.group:
            options += ["--group", case.group[0], "--select", joined(case.group[1:]), "--compare", "independent"]
        elif case.compare:
            options += ["--compare", case.compare]
        if case.by:
            options += ["--by", case.by]
        return [command, *options, *([] if case.roc else ["--no-curve"])]

    def document(self, case, arguments):
        ran = self.run(case, *arguments, "--format", "json")
        return (ran, json.loads(ran.stdout)) if ran.returncode == 0 else (ran, None)

    def answer(self, case):
        ran, document = self.document(case, self.arguments(case))
        if document is None:
            assert ran.returncode in (1, 2, 3) and ran.stdout == "", ran
            return Said(ran.stderr)
        return Said(None, *([(one["code"], one["text"]) for one in document[kind]] for kind in ("cautions", "notes")),
                    document["results"].get("areas", []), document["results"].get("comparisons", []))
