"""outputs.py PROGRAM ROOT: the pictures and the report page, with names that break careless programs."""
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

PROGRAM, ROOT = os.path.abspath(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
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
    result = run("analyze", *question, data=data)
    visible = result.stdout.decode()
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


for test in (names_harm_no_output, gnuplot_can_fail, every_curve_is_drawn_and_named):
    with tempfile.TemporaryDirectory() as made:
        test(pathlib.Path(made))
sys.exit(1 if failures else 0)
