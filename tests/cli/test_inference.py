"""What the commands beyond the areas answer: cut-offs, partial and precision-recall areas, net benefit."""
import csv
import io
import math
import shlex

import pytest
from harness import CANCER, DATA, as_csv

TIES = as_csv("st", *((1, value) for value in (1, 3, 3)), *((0, value) for value in (1, 2, 2, 4)))
PERFECT = as_csv("st", (1, 3), (1, 4), (0, 1), (0, 2))
ASKED = ["-", "--state", "s=1", "--test", "t"]


def rows(vexroc, *args, **options):
    """The table of a run as CSV, with numbers where cells are numbers."""
    def cell(text):
        try:
            return math.nan if text == "NA" else float(text)
        except ValueError:
            return text
    text = vexroc.done(*args, "--format", "csv", **options)
    return [{name: cell(value) for name, value in row.items()} for row in csv.DictReader(io.StringIO(text))]


def wilson(x, n, z=1.959963984540054):
    middle, half = x / n + z * z / 2 / n, z * math.sqrt(x / n * (1 - x / n) / n + z * z / 4 / n / n)
    return [(middle - half) / (1 + z * z / n), (middle + half) / (1 + z * z / n)]


def test_rows_of_cut_offs_are_those_of_their_counts(vexroc):
    cases = [(row % 3 == 0, row * 7 % 10 + 3 * (row % 3 == 0)) for row in range(50)]
    data = as_csv("st", *((int(state), value) for state, value in cases))
    q = 0.1
    for options, reaches in [([], lambda v, c: v >= c), (["--exclude"], lambda v, c: v > c),
                             (["--smaller"], lambda v, c: v <= c)]:
        found = rows(vexroc, "points", *ASKED, "--at", "6,4.5,6", "--prevalence", q, *options, data=data)
        assert [row["cut_off"] for row in found] == [6, 4.5, 6]
        for row in found:
            tp, fp, fn, tn = (sum(state == s and reaches(value, row["cut_off"]) == r for state, value in cases)
                              for s, r in ((True, True), (False, True), (True, False), (False, False)))
            se, sp = tp / (tp + fn), tn / (tn + fp)
            expected = {"true_positive": tp, "false_positive": fp, "true_negative": tn, "false_negative": fn,
                        "prevalence": q, "sensitivity": se, "specificity": sp,
                        "ppv": se * q / (se * q + (1 - sp) * (1 - q)), "lr_positive": se / (1 - sp),
                        "lr_negative": (1 - se) / sp, "accuracy": (tp + tn) / 50, "f1": 2 * tp / (2 * tp + fp + fn),
                        "youden": se + sp - 1, "mcc_lower": math.nan,
                        **dict(zip(("specificity_lower", "specificity_upper"), wilson(tn, tn + fp)))}
            assert {name: row[name] for name in expected} == pytest.approx(expected, nan_ok=True)
    every = rows(vexroc, "points", *ASKED, data=data)
    assert [row["cut_off"] for row in every] == [row["cut_off"] for row in rows(vexroc, "curve", *ASKED, data=data)]


def test_answers_are_those_worked_by_hand(vexroc):
    def one(data, *args):
        return rows(vexroc, args[0], *ASKED, *args[1:], data=data)[0]
    half = one(TIES, "partial", "--fpr", "0,0.5")
    found = [half["partial_area"], half["std_error"] ** 2, half["standardized"]]
    assert found == pytest.approx([1 / 6, 5 / 144, 5 / 9])
    whole = one(PERFECT, "partial", "--tpr", "0.5,1", "--interval", "wald")
    assert [whole[name] for name in ("partial_area", "std_error", "lower", "standardized")] == [0.5, 0, 0.5, 1]
    assert one(TIES, "pr", "--area", "step")["pr_area"] == pytest.approx(0.587302, abs=5e-7)
    assert one(TIES, "pr", "--area", "integral")["pr_area"] == pytest.approx(0.439090, abs=5e-7)
    best = one(TIES, "best", "--criterion", "youden")
    assert [best["value"], best["cut_off"], best["chosen"]] == [pytest.approx(5 / 12), 2.5, 1]
    ties = rows(vexroc, "best", *ASKED, "--smaller", data=PERFECT)
    assert [(row["cut_off"], row["chosen"]) for row in ties] == [(0, 1), (5, 0)]
    data = as_csv("st", (1, 0.6), (1, 0.2), (0, 0.2), (0, 0.1))
    benefit = rows(vexroc, "benefit", *ASKED, "--at", "0.2,0.5", data=data)
    assert [row[name] for row in benefit for name in ("net_benefit", "treat_all", "mean_score", "observed")] == (
        pytest.approx([0.5 - 0.25 / 4, 0.5 - 0.5 / 4, 0.275, 0.5, 0.25, 0, 0.275, 0.5]))


@pytest.mark.parametrize("question", ["points --at 15", "best --criterion cost --cost-ratio 3", "partial --tpr 0.9,1",
                                      "pr --area integral"])
def test_groups_and_slices_are_tables_of_their_own(vexroc, question):
    command, *options = question.split()
    lines = (DATA / "breast_cancer.csv").read_text().splitlines()
    half = ["a" if row % 2 else "b" for row in range(len(lines) - 1)]
    data = "\n".join([lines[0] + ",half", *map(",".join, zip(lines[1:], half))]).encode()
    asked = ["-", "--state", "diagnosis=malignant", "--test", "radius_mean,area_mean:smaller", *options]
    parts = {part: rows(vexroc, command, *asked,
                        data="\n".join([lines[0], *(line for line, h in zip(lines[1:], half) if h == part)]).encode())
             for part in "ab"}
    sliced = rows(vexroc, command, *asked, "--by", "half", data=data)
    assert sliced == [{"by": part, **row} for part in "ab" for row in parts[part]]
    grouped = rows(vexroc, command, *asked, "--group", "half=b,a", data=data)
    alike = {(row["test"], row["group"]): row for row in grouped}
    for part, found in parts.items():
        for row in found:
            mine = alike[row["test"], f"half = {part}"]
            assert {**mine, "group": 0, "left_out": 0} == {**row, "group": 0, "left_out": 0}, mine


def test_what_cannot_be_asked_is_named(vexroc):
    for call, code, message in [
            ("points --at 1,x", 2, "--at 'x': expected cut-offs"), ("points --prevalence 1", 2, "--prevalence '1'"),
            ("points --sentence", 2, "name them with --at"), ("points --by s", 2, "--by names the state column"),
            ("best --criterion youdn", 2, "did you mean 'youden'?"), ("best --criterion specificity=2", 2, "'2'"),
            ("best --cost-ratio 2", 2, "--criterion cost"), ("best --criterion cost --cost-ratio 0", 2, "above 0"),
            ("best --seed 3", 2, "--interval, --replicates and --seed are about"),
            ("best --criterion sensitivity=1 --format csv", 2, "--tables FOLDER"),
            ("partial", 2, "name one band"), ("partial --fpr 0.2,0.1", 2, "the smaller first"),
            ("partial --tpr 0,1 --interval bca --replicates 38", 2, "give at least 39"),
            ("pr --prevalence 0.2", 2, "--area integral"), ("pr --area step --keilwagen", 2, "give one of them"),
            ("benefit --at 1", 2, "--at '1': expected thresholds"), ("benefit --at 0.5 --smaller", 2, "leave that out"),
            ("benefit --at 0.5", 3, "--test 't': net benefit takes scores for probabilities"),
            ("auc --sentence --format json", 2, "give one of them")]:
        command, *options = call.split()
        vexroc.fails(code, message, command, *ASKED, *options, data=TIES)


def test_tables_and_sentences_for_a_paper(vexroc):
    name = "a_b|c%$"
    data = as_csv(["s", name, "[x]--{y}"], *((row % 2, row * 7 % 11, row * 5 % 13) for row in range(40)))
    asked = ["-", "--state", "s=1", "--test", f"{name},[x]--{{y}}"]
    latex = vexroc.done("auc", *asked, "--format", "latex", data=data)
    assert latex.count("\\begin{table}") == latex.count("\\toprule") == latex.count("\\bottomrule") == 1
    assert "\na\\_b\\textbar{}c\\%\\$ " in latex and "\n{[}x]-{}-\\{y\\}" in latex and "level 0.95" in latex
    wide = vexroc.done("analyze", *asked, "--compare", "paired", "--format", "markdown", data=data)
    lines = [line for line in wide.splitlines() if line.startswith("|")]
    assert any(line.startswith("| a\\_b\\|c%\\$") for line in lines)
    cells = [shlex.split(line.replace("\\|", "").replace("|", " ")) for line in lines if "---" in line]
    assert all(set("".join(row)) <= set(":-") for row in cells) and len(cells) == 5  # panels of three tables
    said = vexroc.done("auc", *CANCER, "radius_mean", "--sentence")
    assert said.startswith("The area under the ROC curve of radius_mean for diagnosis = malignant was 0.9375 (95% "
                           "score interval 0.9121 to 0.9556; p < 0.0001, Mann-Whitney test against 0.5")
    for question in (["compare", *CANCER, "radius_mean,area_mean"], ["points", *CANCER, "radius_mean", "--at", "15"],
                     ["best", *CANCER, "radius_mean", "--criterion", "youden,sensitivity=0.9"],
                     ["partial", *CANCER, "radius_mean", "--fpr", "0,0.1"],
                     ["pr", *CANCER, "radius_mean", "--area", "step"]):
        sentences = vexroc.done(*question, "--sentence").splitlines()
        assert len(sentences) == (2 if question[0] == "best" else 1)
        assert all("95% " in said and " to " in said and said.endswith(").") for said in sentences)
