"""outputs.py PROGRAM ROOT: what the program writes for others to read: JSON, files, pictures, the report page.

JSON is checked against the documented schema, and names that break careless programs go through every output.
"""
import csv
import html.parser
import io
import json
import os
import pathlib
import stat
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

import jsonschema

PROGRAM, ROOT = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
SCHEMA = json.loads((ROOT / "docs/vexroc.schema.json").read_text())
CANCER = [ROOT / "examples/data/breast_cancer.csv", "--state", "diagnosis=malignant", "--test"]
HOSTILE = ["it's", 'say "hi"', "a,b;c", "new\nline", "tab\tcr\rend", "esc\x1b[31m\x7f", "`touch pwned`",
           "</script><script>alert(1)</script>", "<!--<script>", "$(touch pwned)", "{/*9 big}_x^y @&%d \\n ~",
           "'; system 'touch pwned' #", "größe…🙂"]
failures = []


def check(what, holds, shown=""):
    if not holds:
        failures.append(what)
        print(f"FAILED: {what}: {str(shown)[:2000]}")


def run(*args, data=None, path=None, folder=None):
    env = {**os.environ, **({"PATH": path} if path is not None else {})}
    return subprocess.run([PROGRAM, *map(str, args)], input=data, capture_output=True, env=env, cwd=folder, check=False)


def document(*args, data=None):
    result = run(*args, "--format", "json", data=data)
    check(f"exit code of {args}", result.returncode == 0, result.stderr)
    parsed = json.loads(result.stdout.decode("utf-8"), parse_constant=lambda word: check("no " + word, False))
    for error in jsonschema.Draft202012Validator(SCHEMA).iter_errors(parsed):
        check(f"schema: {args}", False, f"{error.json_path}: {error.message}")
    return parsed


def json_follows_its_schema():
    odd = b"s,t,u,g,n\n1,inf,2,a,1\n0,-inf,2,b,2\n1,1e308,NA,a,3\n0,-1,4,b,1\n1,inf,,b,1\n"
    odd_question = ["-", "--state", "s=1", "--test"]
    check("command", document("auc", *odd_question, "t,u", data=odd)["command"] == "auc")
    document("compare", *CANCER, "radius_mean,texture_mean,area_mean")
    document("compare", *odd_question, "t", "--group", "g=a,b", data=odd)
    document("pr", *odd_question, "t", "--keilwagen", data=odd)
    points = document("curve", *odd_question, "t", data=odd)["results"]["points"]
    check("infinite cut-offs", [points[0]["cut_off"], points[-1]["cut_off"]] == ["-Infinity", "Infinity"], points)
    document("analyze", *CANCER, "texture_mean", "--group", "area_mean", "--cut", "600", "--compare", "independent")
    full = document("analyze", *odd_question, "t,u", "--compare", "paired", "--weight", "n", "--best", data=odd)
    by_site = b"s,t,site\n" + 2 * b"1,3,a\n0,2,a\n1,2,a\n0,9,b\n"
    document("analyze", *odd_question, "t", "--best", "--by", "site", data=by_site)
    many = b"t,u\n" + b"".join(b"%d,x\n" % i for i in range(100_002))
    seen = json.loads(run("columns", "-", "--format", "json", data=many).stdout)
    for error in jsonschema.Draft202012Validator(SCHEMA).iter_errors(seen):
        check("schema: columns", False, error.message)
    check("columns", [seen["results"]["columns"][0]["distinct"], seen["results"]["columns"][1]["smallest"]]
          == [">100000", None], seen)
    check("missing is null", full["results"]["areas"][1]["standard_error"] is None, full["results"]["areas"])
    check("warnings", {"code": 430102, "name": "WARN_TieExist"}.items() <= full["warnings"][0].items(), full)
    areas = csv.DictReader(io.StringIO(run("auc", *CANCER, "radius_mean", "--format", "csv").stdout.decode()))
    check("the doubles of CSV", document("auc", *CANCER, "radius_mean")["results"]["areas"][0]["area"]
          == float(next(areas)["area"]))


def output_is_what_would_be_printed(folder):
    question = [*CANCER, "radius_mean,texture_mean"]
    for command in ("analyze", "auc", "compare", "curve", "pr"):
        for form in ("text", "csv", "json"):
            file = folder / "out"
            result = run(command, *question, "--format", form, "--output", file)
            printed = run(command, *question, "--format", form).stdout
            check(f"--output of {command} {form}", (result.stdout, file.read_bytes()) == (b"", printed), result)
    refused = run("auc", *question, "--output", folder / "no" / "place")
    check("no place", refused.returncode == 4 and b"cannot write" in refused.stderr, refused)
    check("nothing beside", os.listdir(folder) == ["out"], os.listdir(folder))


class Page(html.parser.HTMLParser):
    """The elements of a page, its cells, and what its scripts and style hold."""
    def __init__(self, text):
        super().__init__()
        self.elements, self.cells, self.scripts = [], [], []
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        self.elements.append(tag)
        if tag == "script":
            self.scripts.append("")

    def handle_data(self, data):
        if self.elements and self.elements[-1] == "script" and not self.scripts[-1]:
            self.scripts[-1] = data
        elif self.elements and self.elements[-1] in ("td", "bdi"):
            self.cells.append(data)


def names_harm_no_output(folder):
    text = io.StringIO()
    writer = csv.writer(text)
    writer.writerow(["state", *HOSTILE])
    for row in range(12):
        writer.writerow([row % 2, *(((row * (3 + i)) % 11) + row % 2 for i in range(len(HOSTILE)))])
    data = text.getvalue().encode()
    question = ["-", "--state", "state=1", "--test", "all"]
    parsed = document("analyze", *question, data=data)
    check("names in JSON", [row["variable"] for row in parsed["results"]["areas"]] == HOSTILE, parsed)
    rows = run("analyze", *question, "--format", "csv", data=data).stdout.decode().split("\n\n")[1]
    check("names in CSV", [row["variable"] for row in csv.DictReader(io.StringIO(rows, newline=""))] == HOSTILE, rows)
    result = run("analyze", *question, data=data)
    visible = result.stdout.decode()
    check("names in text", not set(map(chr, [*range(10), *range(11, 32), 127])) & set(visible), visible)
    latin = b"state,gr\xf6\xdfe\n1,2\n0,1\n1,3\n"
    check("not UTF-8", "\ufffd" in document("auc", "-", "--state", "state=1", "--test", b"gr\xf6\xdfe".decode(
        errors="surrogateescape"), data=latin)["results"]["areas"][0]["test"])

    shown = [line.split("  ")[0] for line in visible.split("Areas under")[1].split("\n\n")[0].splitlines()[2:]]
    for kind in ("svg", "pdf", "png"):
        result = run("analyze", *question, "--pr", "--plot", f"picture.{kind}", data=data, folder=folder)
        check(f"picture {kind}", result.returncode == 0 and (folder / f"picture.{kind}").stat().st_size > 5000, result)
    texts = [" ".join("".join(node.itertext()).split())
             for node in xml.etree.ElementTree.parse(folder / "picture.svg").iter("{http://www.w3.org/2000/svg}text")]
    for name in shown:
        check(f"legend of {name}", name in texts, texts)

    result = run("analyze", *question, "--report", "page.html", "--best", "--compare", "paired", data=data,
                 folder=folder)
    if b"built without" in result.stderr:
        print("the report page is not checked: the program was built without npm")
    else:
        page = Page((folder / "page.html").read_text(encoding="utf-8"))
        check("scripts of the page", len(page.scripts) == 2, len(page.scripts))
        check("names in the page", [curve["name"] for curve in json.loads(page.scripts[0])["curves"]] == shown)
        check("names in its tables", set(shown) <= set(page.cells), page.cells)
    check("no command ran", not list(folder.glob("pwned*")), list(folder.iterdir()))


def gnuplot_can_fail(folder):
    question = ["analyze", *CANCER, "radius_mean", "--plot", folder / "p.svg", "--curve", folder / "c.csv"]
    absent = run(*question, path="")
    check("no gnuplot", absent.returncode == 4 and b"gnuplot-nox" in absent.stderr, absent)
    fake = folder / "bin" / "gnuplot"
    fake.parent.mkdir()
    for script, said in (("echo >picture; echo; echo 'line 3: it broke'; exit 1", b"line 3: it broke"),
                         ("exit 7", b"exit status 7"), ("kill -11 $$", b"signal 11")):
        fake.write_text(f"#!/bin/sh\n{script}\n")
        fake.chmod(fake.stat().st_mode | stat.S_IXUSR)
        broken = run(*question, path=f"{fake.parent}:/bin:/usr/bin")
        check(f"gnuplot fails: {script}", broken.returncode == 4 and said in broken.stderr, broken)
    check("no file of a failed run", os.listdir(folder) == ["bin"], os.listdir(folder))
    for option, file, said in (("--plot", "p.gif", b".svg, .pdf or .png"), ("--report", "page.pdf", b".html or .htm"),
                               ("--report", "page", b".html or .htm")):
        wrong = run("analyze", *CANCER, "radius_mean", option, file, folder=folder)
        check(f"{option} {file}", wrong.returncode == 2 and said in wrong.stderr, wrong)
    check("capitals", run(*question[:-3], folder / "P.PNG").returncode == 0)


def every_curve_is_drawn_and_named(folder):
    """Up to a limit that is told; names that are shown alike, or only differ behind many characters, stay apart."""
    long = "x" * 150
    names = ["a\n", "a\\n", long + "1" + long, long + "2" + long, *(f"t{i}" for i in range(110))]
    text = io.StringIO()
    csv.writer(text).writerows([["s", *names]] + [[row % 2, *((row * 7 + i) % 11 for i, _ in enumerate(names))]
                                                  for row in range(12)])
    result = run("analyze", "-", "--state", "s=1", "--test", "all", "--level", "0.9", "--plot", "many.svg",
                 data=text.getvalue().encode(), folder=folder)
    check("the limit is told", result.returncode == 0 and b"the first 100 of 114 curves are drawn" in result.stderr,
          result)
    root = xml.etree.ElementTree.parse(folder / "many.svg")
    texts = ["".join(node.itertext()).strip() for node in root.iter("{http://www.w3.org/2000/svg}text")]
    cut = f"{'x' * 40}…{'x' * 39}"
    named = ["a\\n", "a\\\\n", cut + " (1)", cut + " (2)", *(f"t{i}" for i in range(96))]
    check("every curve has its name", [text for text in texts if text in named] == named, texts)
    check("the level", "area [90 % confidence interval]" in texts, texts)
    places = [node.get("transform") for node in root.iter("{http://www.w3.org/2000/svg}g") if node.get("transform")]
    lowest = max(float(place.split(",")[1].split(")")[0]) for place in places if place.startswith("translate("))
    check("all of it in the picture", lowest < float(root.getroot().get("height")), lowest)


json_follows_its_schema()
for test in (output_is_what_would_be_printed, names_harm_no_output, gnuplot_can_fail,
             every_curve_is_drawn_and_named):
    with tempfile.TemporaryDirectory() as made:
        test(pathlib.Path(made))
sys.exit(1 if failures else 0)
