"""What the commands answer: their numbers, which rows take part, what is said, and how a run ends."""
import csv
import io
import itertools
import math
import operator
import pathlib
import re
import shlex
import tempfile

import pytest
from harness import DATA, as_csv

CANCER = "breast_cancer.csv --state diagnosis=malignant "
FAWCETT = "fawcett_2006.csv --state class=1 --test score "
RADIUS = CANCER + "--test radius_mean "
ON_INPUT = "- --state s=1 --test "


def ends_as(vexroc, begin, endings, data=b"", folder=DATA):
    """Every line of endings is "arguments -> exit code: text among what is said"; only a run with code 0 prints."""
    for arguments, code, message in re.findall("^(.*) -> ([0-9]): ?(.*)$", endings, re.MULTILINE):
        ran = vexroc(*shlex.split(begin + arguments), data=data, cwd=folder)
        assert ran.code == int(code) and message in ran.err and (ran.out == "") == (ran.code != 0), (arguments, ran)


def tables(vexroc, arguments, data=b"", folder=DATA):
    """The rows of each table that a run writes as CSV, without its header, in their order."""
    with tempfile.TemporaryDirectory() as place:
        vexroc.done(*shlex.split(arguments), "--tables", place, data=data, cwd=folder)
        files = {file.stem: file.read_bytes().decode() for file in pathlib.Path(place).iterdir()}
    order = ["cases", "areas", "comparisons", "best_cut_offs", "points", "columns"]
    return [list(csv.reader(io.StringIO(files[name])))[1:] for name in order if name in files]


def test_curves_are_those_of_the_definition_in_every_command(vexroc, tmp_path):
    """Counted at every cut-off; the last digit of a number survives the way out."""
    cases = [(1, 2), (1, 1), (1, 1 + 2**-52), (0, 1), (0, 0.1), (0, 0.1 + 0.2), (1, -1), (0, 7)]
    data = as_csv("st", *cases)
    for options in "", "--smaller", "--exclude":
        sign = -1 if options == "--smaller" else 1
        values = sorted({value for _, value in cases})
        cut_offs = [values[0] - 1, *((a + b) * 0.5 for a, b in zip(values, values[1:])), values[-1] + 1]
        reaches = operator.gt if options == "--exclude" else operator.ge  # one cut-off is rounded to its value
        expected = [[cut, *(sum(reaches(sign * t, sign * cut) for s, t in cases if s == state) / 4 for state in (0, 1))]
                    for cut in cut_offs]
        tables(vexroc, f"analyze {ON_INPUT} t {options} --curve curve.csv", data, tmp_path)
        written = [line.split(",") for line in (tmp_path / "curve.csv").read_text().splitlines()]
        points = [list(map(float, row[1:])) for row in tables(vexroc, f"curve {ON_INPUT} t {options}", data)[0]]
        assert points == expected, options
        assert written[0] == ["test", "group", "cut_off", "sensitivity", "specificity"]
        assert [[float(cut), 1 - float(specificity), float(sensitivity)]
                for *_, cut, sensitivity, specificity in written[1:]] == points


def test_precision_recall_points_are_interpolated_as_asked(vexroc, tmp_path):
    data = as_csv("st", [1, 2], *3 * [[1, 1]], *5 * [[0, 1]], [0, 0])
    measured = [[0.5, 4 / 10, 1], [1.5, 1, 0.25], [3, 1, 0]]  # cut-off, precision, recall; that of 0 comes first
    measured[:1] = [[-1, 0.4, 1], [0.5, 4 / 9, 1]]
    between = {"": [[0.75, 3 / (3 + 10 / 3)], [0.5, 2 / (2 + 5 / 3)]],
               "--keilwagen": [[(1 + 3 * i / 5) / 4, (1 + 3 * i / 5) / (1 + 3 * i / 5 + i)] for i in (4, 3, 2, 1)]}
    for options, way in between.items():
        tables(vexroc, f"analyze {ON_INPUT} t --pr {options} --pr-curve pr.csv", data, tmp_path)
        header, *written = [line.split(",") for line in (tmp_path / "pr.csv").read_text().splitlines()]
        points = tables(vexroc, f"pr {ON_INPUT} t {options}", data)[0]
        assert header[2:] == ["cut_off", "recall", "precision", "interpolated"]
        assert [row[2:] for row in written] == [row[1:] for row in points]
        found = [[float(cell or "nan") for cell in row[1:]] for row in points]
        expected = [[cut, recall, precision, 0] for cut, precision, recall in measured]
        expected += [[math.nan, recall, precision, 1] for recall, precision in way]  # no cut-off makes them
        assert sorted(found, key=lambda row: (-row[1], row[2])) == [
            pytest.approx(row, nan_ok=True) for row in sorted(expected, key=lambda row: (-row[1], row[2]))], options


def test_one_question_has_one_answer_in_all_commands(vexroc):
    tests = CANCER + "--test radius_mean,texture_mean --test area_mean,area_worst "
    paired = "--compare paired --level 0.9 --smaller "
    _, areas, pairs = tables(vexroc, "analyze " + tests + paired)
    compared = tables(vexroc, "compare " + tests + "--level 0.9 --smaller")[0]
    assert compared == pairs == tables(vexroc, "analyze " + tests + paired + "--interval wald")[2]
    assert [row[:2] + row[5:9] for row in compared] == [
        [first[0], second[0], *first[5:7], *second[5:7]] for first, second in itertools.combinations(areas, 2)]
    seen = []
    bootstraps = [f"--interval bootstrap {more}" for more in ("", "--seed 2", "--replicates 99")]
    for options in ("", "--smaller", "--bi-negative", "--level 0.5", "--interval newcombe", "--interval logit",
                    "--interval wald", "--interval wald --p-value wald", "--interval wald-delong", "--interval bca",
                    *bootstraps, "--exact never", "--null 0.6", "--alternative greater", "--alternative less"):
        area = tables(vexroc, "auc " + FAWCETT + options)[0][0][4:]
        assert area == tables(vexroc, "analyze --no-curve " + FAWCETT + options)[1][0][5:16] and area not in seen
        seen.append(area)
    assert seen[0][0] == "0.68"  # as published
    assert tables(vexroc, "analyze --no-curve " + FAWCETT)[1][0][17] == "NA"


def test_a_marker_has_one_line_whatever_else_is_asked(vexroc):
    """A direction is the negated column, a count as many rows, and neither pairs nor neighbours change an area."""
    rows = [[row % 3 == 0, row * 7 % 10, -(row * 5 % 8) if row % 4 else "", row // 3 % 3] for row in range(60)]
    data = as_csv(["s", "a", "b:smaller", "n"], *(map(int, row) if "" not in row else row for row in rows))
    data = data.replace(b"True", b"1").replace(b"False", b"0")
    named, plain = data, data.replace(b"b:smaller", b"b")
    turned = plain.replace(b",-", b",")
    lines = data.splitlines()
    repeated = b"\n".join([lines[0], *(line for line in lines[1:] for _ in range(int(line[-1:])))]) + b"\n"
    for options in "", "--interval wald", "--interval bca --replicates 99", "--bi-negative":
        own = tables(vexroc, f"auc {ON_INPUT} a,b:smaller {options}", plain)[0]
        assert own == tables(vexroc, f"auc {ON_INPUT} a,b {options}", turned)[0]
        assert own[1:] == tables(vexroc, f"auc {ON_INPUT} b --smaller {options}", plain)[0]
        assert own[1][1:] != tables(vexroc, f"auc {ON_INPUT} b:smaller {options}", named)[0][0][1:]  # a column's name
        counted = f"analyze {ON_INPUT} a,b:smaller {options} --no-curve"
        assert tables(vexroc, counted + " --count n", named)[1:] == tables(vexroc, counted, repeated)[1:]
        if options != "--bi-negative":
            whole = tables(vexroc, f"analyze {ON_INPUT} a,b:smaller {options} --compare paired", plain)
            assert [row[:1] + row[2:16] for row in whole[1]] == own
            assert whole[2] == tables(vexroc, f"compare {ON_INPUT} a,b:smaller", plain)[0]
    ends_as(vexroc, f"compare {ON_INPUT} a,", """
b,b:smaller -> 2: --test names 'b' with two directions
b --count a,b -> 3: no column 'a,b'
b --count b -> 3: column 'b', data row 2: '-5' is no count; --count takes whole numbers from 0
b --group n=1,2 --cases complete -> 2: it does not go with --group
b --interval delong -> 2: the words are 'wald-delong', 'wald'
""", plain)
    ends_as(vexroc, f"analyze {ON_INPUT} a ", """
--weight n --count n -> 2: give one of them
--weight-kind counts -> 2: name them with --weight
--weight n --weight-kind probability --interval score -> 2: its standard error counts cases, whatever their weights;
--weight n --weight-kind probability --p-value mann-whitney -> 2: ranks count cases; give wald
--weight n --weight-kind probability --bi-negative -> 2: does not go with probability weights
--bi-negative --interval score -> 2: two standard errors
--bi-negative --p-value mann-whitney -> 2: two tests
--null 0.6 --p-value mann-whitney -> 2: tests the area 0.5; for --null 0.6 give --p-value wald, or leave it out
--null 1 -> 2: --null '1': expected a number between 0 and 1
--p-value wald --exact always -> 2: --exact is about the p value of Mann and Whitney
--seed 7 -> 2: ask for one with --interval bootstrap or bca
--interval bca --replicates 38 -> 2: too few for the level 0.95: give at least 39
--interval bca --seed -1 -> 2: --seed '-1': expected a whole number from 0
--cases complete -> 2: ask for that with --compare paired
""", plain)
    ran = vexroc(*f"analyze {ON_INPUT} a --weight n --weight-kind counts".split(), data=plain)
    assert ran.code == 0 and "--weight-kind" not in ran.err


def test_cases_are_split_in_every_way(vexroc):
    data = b"s,t,sex,age,flag\n1,2,m,20,0\n0,1,f,40,1\n1,3,f,60,1\n0,1,m,20,0\n1,1,f,60.0,0\n0,4,m,40,1\n"
    for split, first, second in re.findall("(.*) -> (.*); (.*)", """
sex -> sex = f,2,1; sex = m,1,2
sex=m,f -> sex = m,1,2; sex = f,2,1
sex --select m,f -> sex = m,1,2; sex = f,2,1
flag -> flag = 0,2,1; flag = 1,1,2
age --select 60,2e1 -> age = 60,2,0; age = 2e1,1,1
age --cut 20.5 -> age < 20.5,1,1; age >= 20.5,2,2
age --mid-point -> age < 40,1,1; age >= 40,2,2
"""):
        question = f"analyze {ON_INPUT} t --compare independent --group {split}"
        _, areas, differences = tables(vexroc, question, data)
        assert [",".join(row[1:4]) for row in areas] == [first, second], split
        assert differences[0][:3] == ["t", first.split(",")[0], second.split(",")[0]], split
        if "age --" not in split or "--select" in split:
            assert tables(vexroc, f"compare {ON_INPUT} t,t --group {split}", data)[0] == 2 * differences


def test_every_row_is_accounted_for(vexroc):
    data = (b"s,a,b,g,w\n,1,1,x,1\n1,1,1,,\n1,1,1,x,NA\n1,1,1,z,1\n1,1,1,x,0.4\n0,1,1,y,-2\n0,1,1,y,inf\n1,1,,x,1\n"
            b"1,2,2,x,2.5\n1,3,NA,y,3\n0,1,2,x,0.5\n0,NA,3,y,1\n0,.,.,y,1\n")
    counts, areas = tables(vexroc, f"analyze {ON_INPUT} a,b --group g --select x,y --weight w", data)
    assert [",".join(row) for row in counts] == [
        "rows read,13", "left out,7", "left out: missing state,1", "left out: missing group,1",
        "left out: missing weight,1", "left out: in neither group,1", "left out: unusable weight,3", "used,6",
        "positive,3", "negative,3", "weighted positive,7", "weighted negative,3", "missing: a,2", "missing: b,3"]
    assert areas[0][:7] == ["a", "g = x", "2", "1", "3", "4", "1"]
    ends_as(vexroc, f"analyze {ON_INPUT} a,b --weight w", " -> 0: whole numbers are rounded, halves up: 2 rows", data)
    counts, areas, _ = tables(vexroc, f"analyze {ON_INPUT} a,b --compare paired --cases complete", data)
    assert [",".join(row) for row in counts] == [
        "rows read,13", "left out,5", "left out: missing state,1", "left out: missing test,4", "used,8", "positive,5",
        "negative,3", "missing: a,2", "missing: b,3"]
    assert [row[:4] for row in areas] == [[test, "all cases", "5", "3"] for test in "ab"]

    data = (b"s,a,b,g,none\n1,1,1,x,\n1,2,NA,x,\n0,3,1,x,\n0,.,2,y,\n,5,5,y,\n0,1,1,,\n1,4,4,y,\n1,4,3,z,\n0,2,2,y,\n")
    for question, row in [("auc - --test a", "a,4,3,2"), ("auc - --test b", "b,3,4,2"),
                          ("auc - --test none", "none,0,0,9"), ("compare - --test a,b", "a,b,3,3,3"),
                          ("compare - --test a --group g=x,y", "a,g = x,g = y,2,1,1,1,3")]:
        assert ",".join(tables(vexroc, question + " --state s=1", data)[0][0]).startswith(row + ",")
    ends_as(vexroc, "", """
compare - --state s=1 --test a --group g=x,y -> 0: note: rows left out: 3 of 9: missing state 1, missing group 1
curve - --state s=1 --test a -> 0: note: rows left out: 1 of 9: missing state 1, a (2 of 9)
""", data)


def test_states_are_what_is_said_of_their_values(vexroc):
    words = b'state,t,g\nill,3,a\nill,4,a\nwell,1,a\nwell,2,b\nN/A,9,b\n"ill ",6,b\nothers,5,a\n'
    grades = b"grade,grade>,a=b,t,g\n1,3,x,1,a\n2.0,3,x,2,a\n3,3,y,3,a\n10,4,y,4,b\nNA,NA,NA,5,b\n"
    for data, options, counts in [
            (words, "state=ill --negative well", "2,2,3"),
            (words, "state=ill --negative others", "2,4,1"),
            (words, """'state=ill,"ill "' --negative '"others"'""", "3,1,3"),
            (words, "state=N/A --negative well", "1,2,4"),
            (words, "state=ill --missing none,Others --negative others", "2,4,1"),
            (grades, "'grade>=3'", "3,1,1"),  # a column of that name goes first
            (grades, "'\"grade\">=3'", "2,2,1"),
            (grades, "'grade<=2.0'", "2,2,1"),
            (grades, "grade=2,1e1 --missing 1,3", "2,0,3"),
            (grades, "'\"a=b\"=y'", "2,2,1")]:
        row = tables(vexroc, f"auc - --test t --state {options}", data)[0][0]
        assert ",".join(row[1:4]) == counts, options
    document = vexroc.json("auc", "-", "--test", "t", "--state", "state=ill", "--negative", "others", data=words)
    assert document["question"]["positive"] == ["ill"]
    assert document["question"]["negative"] == ["ill ", "others", "well"]
    assert "state_cut" not in document["question"]
    document = vexroc.json("auc", "-", "--test", "t", "--state", "grade>2", data=grades)
    assert document["question"]["state_cut"] == ">2" and "positive" not in document["question"]
    counts = tables(vexroc, "analyze - --test t --state state=ill --negative well --by g", words)[0]
    assert ["a", "left out: other state", "1"] in counts and ["b", "positive", "0"] in counts
    ends_as(vexroc, "auc - --test t --state ", """
state=Ill -> 3: standard input: column 'state' never holds 'Ill'; it holds 'ill' (2), 'well' (2), 'ill ' (1)
state=ill -> 3: 'ill ' (1), 'others' (1), and which are negative is not said; say
state=ill --negative well,others -> 2: the word others stands alone
state=ill --negative well,ill -> 3: cannot be positive and negative
'state>5' -> 3: column 'state' is cut as numbers, and also holds 'ill' (2)
'states>5' -> 3: did you mean 'state'?
'state>high' -> 2: expected COLUMN=VALUE[,VALUE...], or COLUMN>=NUMBER
'state>=' -> 2: expected COLUMN=VALUE[,VALUE...], or COLUMN>=NUMBER
""", words)
    ends_as(vexroc, "auc - --test t --state 'grade>2' --negative 1", " -> 3: no positive or negative values go", grades)


def test_missing_words_are_those_of_the_list(vexroc):
    data = b"s,t\nill,1\nill,-\nill,n/a\nwell,?\nwell,-9\nwell,-9.0\nwell,2\nill,unsure\nill,5\nnull,3\n"
    for options, counts, words in [("--missing unsure", "2,3,5", "t ('-': 1, '?': 1, 'n/a': 1, 'unsure': 1)"),
                                   ("--missing Unsure,-9", "2,1,7", "'-9': 1, '-9.0': 1")]:
        ran = vexroc(*shlex.split(f"auc - --state s=ill --test t --format csv {options}"), data=data)
        assert ",".join(ran.out.splitlines()[1].split(",")[1:4]) == counts and words in ran.err, ran
    ends_as(vexroc, "auc - --state s=ill --test t", """
 -> 3: line 9, column 't': 'unsure' is neither a number nor missing; write a number, or leave the cell empty; if it
 --missing none,unsure -> 3: line 3, column 't': '-' is neither
""", data)


def test_best_cut_offs_are_all_ties_with_their_counts_in_the_cases(vexroc):
    # Youden's index is 1/3 at 1.5 and at 3.5; as 1 - specificity is rounded, the two differ in the last digit.
    upper = ["1.5,3,2,1,0", "3.5,2,1,2,1", "4.5,1,0,3,2"]
    for options, expected in (("", upper), ("--exclude", upper),
                              ("--smaller", ["0,0,0,3,3", "2.5,1,1,2,2", "6,3,3,0,0"])):
        rows = tables(vexroc, f"analyze {ON_INPUT} t --best {options}", b"s,t\n0,1\n1,2\n0,3\n1,4\n0,4\n1,5\n")[2]
        assert [",".join([row[2], *row[6:]]) for row in rows] == expected
        for _, _, _, youden, sensitivity, specificity, *counts in rows:
            tp, fp, tn, _ = map(int, counts)
            assert list(map(float, (youden, sensitivity, specificity))) == pytest.approx(
                [(tp - fp) / 3, tp / 3, tn / 3])


def test_one_analysis_by_value_is_that_of_its_rows(vexroc, tmp_path):
    header, nine = "s,t,u,g,site\n", "1,2,1,a,9\n0,1,3,b,9.0\n1,1,2,a,9\n0,3,1,a,9\n1,0,3,b,9\n"
    ten = "0,1,2,a,10\n1,5,2,b,10\n0,2,0,b,10\n1,2,NA,a,10\n"
    data = header + "0,1,1,a,x\n1,1,1,a,\n0,2,1,b,x\n" + ten + nine

    def written(options, rows):
        with tempfile.TemporaryDirectory(dir=tmp_path) as place:
            ran = vexroc(*shlex.split(f"analyze {ON_INPUT} t,u --tables . --curve c --pr-curve p {options}"),
                         data=rows.encode(), cwd=place)
            assert ran.code == 0, ran.err
            return ran.err, [line for file in sorted(pathlib.Path(place).iterdir())
                             for line in file.read_text().splitlines()]
    for options in "--group g --compare independent", "--compare paired", "--weight u --pr":
        said, together = written(options + " --by site", data)
        for part in ("site = x; check --state", "site = 9: t", "1 without a value of site\n"):
            assert part in said
        for value, rows in ("9", nine), ("10", ten):
            alone = written(options, header + rows)[1]
            assert set(together) >= {line if line in together else f"{value},{line}" for line in alone
                                     if f"by,{line}" not in together}
        values = [line.split(",")[0] for line in together]
        assert values.index("9") < values.index("10")
    by_id = f"analyze {ON_INPUT} t --by id"
    for code, message, rows in [
            (3, "'id' holds 1001 different values; --by takes 1000 at most", [[1, 2, i] for i in range(1001)]),
            (3, "column 'id' holds missing cells only", [[1, 2, ""]]),
            (0, "there is no negative case, so there is no area: id = a: t", [[1, 2, "a"], [1, 3, "b"]]),
            (1, "no value of 'id' gave a result", [[0, 2, "a"], [1, 3, ""]])]:
        ends_as(vexroc, by_id, f" -> {code}: {message}", as_csv(["s", "t", "id"], *rows))
    none_ill = b"s,t,u,id\n1,2,1,a\n0,1,1,a\n1,3,2,a\n0,5,,b\n0,6,7,b\n"  # among b
    counts, areas = tables(vexroc, f"analyze {ON_INPUT} t,u --by id", none_ill)
    assert ["b", "rows read", "2"] in counts
    assert [row[:7] for row in areas[2:]] == [["b", *row.split(";"), "NA"]
                                              for row in ("t;all cases;0;2;0", "u;all cases;0;1;1")]


def test_all_tests_are_the_numbers_without_another_part(vexroc):
    data = b"s,a,word,w,g,,,b\n1,1,x,1,1,,,3\n0,NA,2,1,2,,,4\n0,5,3,1,1,,,inf\n"  # two without a name
    areas = tables(vexroc, f"analyze {ON_INPUT} all --weight w --group g --cut 0", data)[1]
    assert [row[0] for row in areas] == ["a", "a", "b", "b"]
    for code, data in (1, b"s,t\n1,x\n0,y\n"), (3, b"s,a,a\n1,1,2\n0,3,4\n"):
        vexroc.fails(code, "", "analyze", "-", "--state", "s=1", "--test", "all", data=data)


def test_notes_cautions_and_refusals_say_what_to_do(vexroc):
    ends_as(vexroc, f"analyze {ON_INPUT}", """
t,u --compare paired --group g -> 0: caution: the groups are not used: a paired comparison takes all cases
u --bi-negative -> 0: caution: the standard error is nonparametric
u,s -> 0: note: the state is not also a test: s
u --pr -> 0: note: the points of --pr are not shown; --plot and --report draw them, --pr-curve FILE writes
t,one --compare paired -> 0: nor p value and interval by one: one (1 positive, 1 negative), t
""", b"s,t,u,g,one\n1,2,1,x,7\n0,2,2,x,\n1,3,3,y,\n0,1,4,y,8\n1,4,5,y,\n")
    ends_as(vexroc, f"analyze {ON_INPUT}", """
t --group g -> 1: note: rows left out: 2 of 4: missing group 2
t --group g -> 1: vexroc: error: status 430004 Setting_Error_StateValue_NotExist: there is no positive
s -> 1: vexroc: error: status 430005 Setting_Error_TestVar: no test is left; name columns of numbers other than
t --compare paired -> 1: 430006 Setting_Error_AtLeast2Test: a paired comparison needs two tests; name them with --test
t --compare independent -> 1: 430007 Setting_Error_Group_Required: an independent comparison needs two groups
t --group none --cut 1 -> 1: 430010 Error_NoData: no row is left; check the rows that were left out
t --compare independent --group n --mid-point -> 1: 430011 Error_GroupConst_IndCompare: all rows have the same value
t --group n --cut 9 --compare independent -> 1: 430012 Error_No2Group_IndCompare: a group holds no case
""", b"s,t,g,n,none\n1,2,,5,\n1,3,,5,\n0,1,x,5,\n0,3,y,5,\n")
    ends_as(vexroc, f"analyze {ON_INPUT}", """
t --cut 1 -> 2: name it with --group
t --group n --cut 6 --mid-point -> 2: give one of them
t --group n --cut six -> 2: --cut 'six': expected a number
t --group g --select x -> 2: --select 'x': expected two values
t --group g --select x,NA -> 3: never holds 'NA'
t --group n --select 5,5.0 -> 3: '5', '5.0' are one value
t --group g=x,y --select x,y -> 2: give one of them
t --group g=x,y --cut 2 -> 2: give --group without values
t,n --compare paired --bi-negative -> 2: --bi-negative does not go with tests on the same
t --keilwagen -> 2: --pr or --pr-curve
t --no-curve --curve x -> 2: --no-curve
t --no-curve --best -> 2: --no-curve
t --curve x --pr-curve x -> 2: the same file
t --curve x --plot ./x -> 2: name the same file
t --report x.html --output x.html -> 2: --output and --report name the same file
t --curve - -> 2: --curve -: only --output goes to standard output
t --group g -> 3: holds 'x' (1), 'y' (1), 'z' (2); it needs two values: pick them with --select
t --group g --mid-point -> 3: line 2, column 'g': 'x' is neither a number
t --group g --select x,w -> 3: column 'g' never holds 'w'
t --by s -> 2: --by names the state column
t --weight v -> 3: no column 'v'
t --curve /no/such/place.csv -> 4: cannot write /no/such/place.csv: No such file
t --curve / -> 4: cannot write /: Is a directory
""", b"s,t,g,n\n1,2,x,5\n0,1,y,7\n1,3,z,8\n0,2,z,9\n")
    ends_as(vexroc, "", """
curve - --state s=1 --test t -> 0: there is no positive case, so there is no area: t
compare - --state s=1 --test u,u -> 0: fewer than 2 cases of a state, so there is no standard error
""", b"s,t,u\n1,NA,2\n0,3,1\n0,4,3\n0,5,NA\n")
    ends_as(vexroc, "", """
pr - --state s=1 --test t -> 0: fewer than 3 cases, so there is no curve: t
analyze - --state s=1 --test t -> 0: fewer than 3 cases, so there is no curve: t
""", b"s,t\n1,2\n0,3\n")


def test_misuse_ends_with_what_is_wrong_and_what_to_do(vexroc):
    ends_as(vexroc, "", f"""
 -> 2: Examples:
aux -> 2: no command 'aux'; did you mean 'auc'?
--quiet -> 2: no command: name one of 'analyze', 
--quiet aux -> 2: no command 'aux'; did you mean 'auc'?
auc -> 2: --state is required; see vexroc auc --help
auc {FAWCETT} --smaler -> 2: no option '--smaler' in auc; did you mean '--smaller'?
auc {RADIUS} more -> 2: unexpected argument 'more'
auc fawcett_2006.csv --test score --state class -> 2: expected COLUMN=VALUE
auc fawcett_2006.csv --test score --state class=NA -> 3: never holds 'NA'
auc {CANCER} --test radius_mean, -> 2: an item of the list is empty
auc {RADIUS} --level 1 -> 2: --level '1': expected a number between 0 and 1
auc {RADIUS} --format cvs -> 2: no word 'cvs'; did you mean 'csv'?
auc {RADIUS} --delimiter x -> 2: expected comma, tab or semicolon
auc {RADIUS} --plot x.svg -> 2: no option '--plot' in auc; 'analyze', 'benefit', 'best', 'points' have it
auc {RADIUS} --group s=1,2 -> 2: no option '--group' in auc; 'analyze', 'benefit',
auc {RADIUS} -- --level .5 -> 2: '--level' stands behind --
auc {RADIUS} --level .9 --level .8 -> 2: --level: At Most 1 required but received 2
auc {RADIUS} --smaller=maybe -> 2: --smaller = maybe
auc {RADIUS} --level -> 2: --level: 1 required P missing; see vexroc auc --help
auc {RADIUS} --output --quiet -> 2: --output: needs a value; the option --quiet follows
auc {RADIUS} --output= -> 2: --output: 
curve {RADIUS} --level 0.9 -> 2: no option '--level'
compare {RADIUS} -> 2: name two or more tests
compare {RADIUS} --group diagnosis=benign -> 2: expected two values
compare {RADIUS} --select 1,2 -> 2: name it with --group
compare {RADIUS} --group area_mean=1001,1001.0 -> 3: are one value
compare {RADIUS} --test area_mean --bi-negative -> 2: --bi-negative does not go with tests on the same cases
auc nothing.csv --state a=1 --test b -> 3: cannot read nothing.csv: No such file or directory
auc . --state a=1 --test b -> 3: Is a directory
auc {CANCER} --test radius_men -> 3: did you mean 'radius_mean'?
auc {CANCER} --test diagnosis -> 3: line 2, column 'diagnosis': 'malignant' is neither
auc {RADIUS} --delimiter tab -> 3: no column 'diagnosis' in the header
auc {RADIUS} --test all -> 3: analyze alone takes --test all
auc {RADIUS} --config nothing.toml -> 3: file nothing.toml: no such file
columns - -> 3: standard input is empty: a header row with column names and rows of data are expected
""")


def test_columns_points_out_what_misleads_and_ends_with_the_next_call(vexroc, tmp_path):
    (tmp_path / "it's.csv").write_text("patient;ill;age;psa;limit;crp;site\n" + "".join(
        f"P{i // 2:02};{'yes' if i % 3 else 'No'};{-9 if i % 7 == 0 else 30 + i};{i},{i % 10};"
        f"{'<5' if i % 4 else i};1,2{i:02};{'A' if i else 'a'}\n" for i in range(24)))
    found = {remark["code"]: remark["text"] for remark in vexroc.json("columns", tmp_path / "it's.csv")["notes"]}
    for code, words in [("repeated-ids", "patient (12 values"), ("likely-codes", "age (-9 in 4 rows)"),
                        ("decimal-sign", "psa (read with --decimal comma)"), ("nearly-numbers", "limit ('<5' in 18"),
                        ("nearly-numbers", "crp ('1,200' in 24 rows: --thousands comma or --decimal comma)")]:
        assert words in found[code], found
    text = vexroc.done("columns", "it's.csv", cwd=tmp_path)
    assert re.search("site +a +1\n", text) and "differ only in case" in text and "tell ill = yes?" in text
    call = shlex.split(text.splitlines()[-1])
    assert call == ["vexroc", "auc", "it's.csv", "--decimal", "comma", "--state", "ill=yes", "--test", "psa"]
    vexroc.done(*call[1:], cwd=tmp_path)
    coded = b'state,t\n' + b"".join(b'%s,%d\n' % ([b"ill", b'"ill "', b"well"][i % 3], i % 4 - (i % 4 == 0) * 9)
                                     for i in range(24))
    text = vexroc.done("columns", "-", data=coded)
    for words in "state   'ill '     8\n", "t (-9 in 6 rows)", "if -9 stands for a missing value?":
        assert words in text
    for line in text.splitlines()[-3::2]:
        vexroc.done(*shlex.split(line)[1:], data=coded)
    odd = b'"a=b","x,y",-z,"q""uote"\n' + b"".join(b"%d,%d,%d,%d.5\n" % (i % 2, i, i * i, i) for i in (1, 4, 2, 6))
    call = vexroc.json("columns", "-", data=odd)["results"]["next"][0]
    assert call["complete"] and not call["sure"]
    vexroc.done(*shlex.split(call["call"])[1:], data=odd)
    assert vexroc.done("columns", "-", data=b"a,b\nx,y\n").endswith("--state COLUMN=VALUE --test COLUMN\n")


def test_help_names_every_command_and_its_options(vexroc):
    assert vexroc.done("--version").startswith("vexroc ") and vexroc.done("help") == vexroc.done("--help")
    for command in "analyze", "auc", "compare", "curve", "pr":
        assert command in vexroc.done("help") and "--state COLUMN=VALUE" in vexroc.done("help", command)
        assert vexroc.done("help", command) == vexroc.done(command, "--help")


def test_each_remark_is_one_line_that_json_tells_with_code_and_count(vexroc):
    tests = [f"t{i}" for i in range(7)]
    data = as_csv(["s", *tests], *([row % 2, *(row % (3 + i) for i in range(7))] for row in range(12)))
    document = vexroc.json("compare", "-", "--state", "s=1", "--test", ",".join(tests), data=data)
    remarks = {remark["code"]: remark for remark in document["notes"] + document["cautions"]}
    assert remarks["many-comparisons"]["text"].endswith(": 21")
    assert remarks["few-cases"]["count"] == 7 and remarks["few-cases"]["text"].endswith("and more, 7 in all")


def test_a_config_file_fills_in_what_the_arguments_do_not_say(vexroc, tmp_path):
    def configured(text):
        (tmp_path / "config.toml").write_text(text, encoding="utf-8", newline="")
        return f"--config {tmp_path / 'config.toml'} "
    config = configured(f"FILE = \"{DATA / 'breast_cancer.csv'}\" # a comment\nstate = 'diagnosis=malignant'\n"
                        "test = [ 'radius_mean' , # one\n\n'area_mean',\n]\nlevel = 0.9\n[auc]\nlevel = 0.5\n"
                        "[compare]\nformat = 'csv'\nsmaller = true\n")
    tests = CANCER + "--test radius_mean,area_mean "
    for arguments, same in [("auc", "auc " + tests + "--level 0.5"),  # a section goes before the rest
                            ("auc --level 0.6 --test area_mean", f"auc {CANCER} --test area_mean --level 0.6"),
                            ("compare", "compare " + tests + "--level 0.9 --smaller --format csv"),
                            ("curve", "curve " + tests)]:  # which has no --level
        printed = vexroc.done(*shlex.split(f"{config} {arguments}"))
        assert printed.replace(str(DATA) + "/", "") == vexroc.done(*shlex.split(same), cwd=DATA), arguments

    data = b"s,\"a,b\",c#d,a,b\n1,1,4,2,9\n0,2,1,7,3\n1,3,3,2,2\n0,0,1,1,1\n"
    for value, argument in [("'\"a,b\"'", '"a,b"'), ("['\"a,b\"', \"c#d\"]", '"a,b",c#d'), ("'a,b'\r", "a,b"),
                            ('"c#d"', "c#d"), ('["b"]', "b")]:
        config = configured('\ufeffstate = "s=1"\ntest = ' + value)
        assert vexroc.done("auc", "-", *config.split(), data=data) == vexroc.done(
            "auc", "-", "--state", "s=1", "--test", argument, data=data), value

    for text, message in [
            ("\nstat = 'x'", "config.toml: no option 'stat'; did you mean 'state'?"),
            ("[auk]\n", "no command 'auk'; did you mean 'auc'?"),
            ("[auc.x]\nlevel = 1", "no command 'auc.x'"),
            ("[auc]\ntset = 'a'", "auc has no option 'tset'; did you mean 'test'?"),
            ("level = 1\nquiet = true\nlevel = 2", "'level' is given twice"),
            ("\nstate = ", "config.toml: line 2: 'state =' is neither KEY = VALUE nor [COMMAND]"),
            ("state = 's=1", "line 1: a quote is not closed"),
            ("state = \"s=\\n\"", "line 1: there are no escapes"),
            ("test = ['a',\n'b'\n", "line 2: the brackets do not match"),
            ("test = ['a'] 'b'", "line 1: text behind a closing bracket"),
            ("smaller = 'maybe'", "--smaller"),
            ("config = 'other'", "'config' is not allowed in a file")]:
        ends_as(vexroc, f"auc {RADIUS} {configured(text)}", f" -> 2: {message}")

    state = "state = 'diagnosis=malignant'\ntest = 'radius_mean'\n"
    for text, arguments, ending in [  # an argument replaces the whole source
            ("sqlite = 'no.db'\nquery = 'x'\n" + state, "breast_cancer.csv", "0: "),
            ("sqlite = 'no.db'\nquery = 'x'\n" + state, "--table t", "3: cannot read no.db"),
            ("FILE = 'no.csv'\ndelimiter = 'tab'\n" + state, "--sqlite some.db --table t", "3: cannot read some.db"),
            ("FILE = 'no.csv'\n[auc]\nsqlite = 'section.db'\ntable = 't'\n" + state, "", "3: cannot read section.db")]:
        ends_as(vexroc, f"auc {configured(text)} {arguments}", f" -> {ending}")


def test_files_that_are_written_are_none_that_are_read(vexroc, tmp_path):
    tied = b"s,t\n1,1\n0,1\n1,2\n"
    (tmp_path / "data.csv").write_bytes(tied)
    (tmp_path / "link.csv").symlink_to("data.csv")
    (tmp_path / "config.toml").write_text("state = 's=1'\ntest = 't'\n")
    written = [f"analyze data.csv {option} {path} -> 2: {option} names the input data.csv; choose another file"
               for option in ("--output", "--curve", "--pr-curve", "--plot", "--report")
               for path in ("data.csv", f"{tmp_path}/./data.csv", "link.csv")]
    ends_as(vexroc, "--config config.toml ", "\n".join(written) + """
columns ./data.csv --output data.csv -> 2: --output names the input
columns data.csv --output config.toml -> 2: --output names the --config file
columns --sqlite data.csv --table t --output data.csv -> 2: names the input data.csv
columns data.csv --output - -> 0: 
""", folder=tmp_path)
    assert (tmp_path / "data.csv").read_bytes() == tied


def test_files_are_written_completely_or_not_at_all(vexroc, tmp_path):
    curve, link = tmp_path / "curve.csv", tmp_path / "link.csv"
    curve.write_text("old")
    curve.chmod(0o640)
    link.symlink_to(curve.name)
    analyze = ["analyze", *FAWCETT.split(), "--curve"]
    too_long = tmp_path / ("x" * 250)  # with what is added while it is written: the first must not appear either
    vexroc.fails(4, "cannot write", *analyze, curve, "--pr-curve", too_long, cwd=DATA)
    assert curve.read_text() == "old"
    vexroc.done(*analyze, link, cwd=DATA)
    assert curve.read_text().startswith("test,group,") and link.is_symlink()
    assert curve.stat().st_mode & 0o777 == 0o640 and len(list(tmp_path.iterdir())) == 2
