"""outputs.py PROGRAM ROOT: the pictures and the report page, with names that break careless programs."""
import csv
import html.parser
import io
import itertools
import json
import os
import pathlib
import random
import re
import struct
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


def run(*args, data=None, folder=None, **environment):
    return subprocess.run([PROGRAM, *map(str, args)], input=data, capture_output=True, cwd=folder, check=False,
                          env={**os.environ, **environment})


class Page(html.parser.HTMLParser):
    """The scripts of a page, the names of its curves, and the text of its cells."""
    def __init__(self, text):
        super().__init__()
        self.scripts, self.names, self.cells, self.tag = 0, [], [], ""
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        self.tag = tag
        self.scripts += tag == "script"
        self.names += [value for name, value in attrs if name == "data-name"]

    def handle_data(self, data):
        if self.tag in ("td", "bdi"):
            self.cells.append(data)


SVG = "{http://www.w3.org/2000/svg}"


def texts_of(picture):
    return [" ".join("".join(node.itertext()).split())
            for node in xml.etree.ElementTree.parse(picture).iter(SVG + "text")]


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
    result = run("analyze", *question, "--pr", "--best", "--compare", "paired", "--plot", "picture.svg", "--report",
                 "page.html", data=data, folder=folder)
    check("picture and page", result.returncode == 0, result)
    texts = texts_of(folder / "picture.svg")
    for name in shown:
        check(f"legend of {name}", name in texts, texts)
    page = Page((folder / "page.html").read_text(encoding="utf-8"))
    check("scripts of the page", page.scripts == 1, page.scripts)
    check("names in the page", page.names == 2 * shown, page.names) # in two panels
    check("names in its tables", set(shown) <= set(page.cells), page.cells)
    check("no command ran", not list(folder.glob("pwned*")), list(folder.iterdir()))


def pictures_come_in_three_kinds(folder):
    names = ["🙂👨‍👩‍👧", "漢字", "שלום (1)", "e\u0301\u0323" * 30, "\uffff"] # none of them stops the drawing
    data = ",".join(["s", *names]) + "".join(f"\n{row % 2}" + 5 * f",{row}" for row in range(9))
    question = ["analyze", "-", "--state", "s=1", "--test", "all", "--pr", "--plot"]
    for file in ("p.svg", "p.pdf", "P.PNG"):
        result = run(*question, file, data=data.encode(), folder=folder)
        check(f"picture {file}", result.returncode == 0, result)
    svg = xml.etree.ElementTree.parse(folder / "p.svg").getroot()
    png, pdf = (folder / "P.PNG").read_bytes(), (folder / "p.pdf").read_bytes()
    twice = struct.pack(">II", *(2 * int(svg.get(side)) for side in ("width", "height")))
    check("PNG of twice the size", png.startswith(b"\x89PNG") and png[16:24] == twice and len(png) > 50_000, png[:30])
    check("PDF without pixels", pdf.startswith(b"%PDF") and b"/Image" not in pdf and len(pdf) > 5000, pdf[:30])
    for option, file, said in (("--plot", "p.gif", b".svg, .pdf or .png"), ("--report", "page.pdf", b".html or .htm"),
                               ("--report", "page", b".html or .htm")):
        wrong = run("analyze", "no data", "--state", "s=1", "--test", "t", option, file, folder=folder)
        check(f"{option} {file}", wrong.returncode == 2 and said in wrong.stderr, wrong)
    (folder / "librsvg-2.so.2").touch()
    absent = run("analyze", "no data", "--state", "s=1", "--test", "t", "--plot", "q.pdf", folder=folder,
                 LD_LIBRARY_PATH=str(folder))
    check("no librsvg", absent.returncode == 4 and b"apt install librsvg2-2" in absent.stderr, absent)


def points_of(path):
    """The points of a path's lines, half a pixel apart."""
    x, y = 0, 0
    for command, numbers in re.findall("([MLHV])([^MLHV]*)", path):
        place = [float(number) for number in numbers.split()]
        to_x, to_y = place if command in "ML" else (place[0], y) if command == "H" else (x, place[0])
        steps = 1 if command == "M" else int(2 * (abs(to_x - x) + abs(to_y - y))) + 1
        yield from ((x + (to_x - x) * i / steps, y + (to_y - y) * i / steps) for i in range(1, steps + 1))
        x, y = to_x, to_y


def no_label_lies_over_anything(folder):
    labels = dots = 0
    for seed in range(40):
        chance = random.Random(seed)
        digits, tests = chance.choice([0, 1, 4]), 1 + seed % 4
        data = "s" + "".join(f",t{i}" for i in range(tests))
        for row in range(chance.choice([6, 20, 200])):
            data += f"\n{row % 3 % 2}" + "".join(f",{chance.gauss(row % 3 % 2 * 2 * chance.random(), 1):.{digits}f}"
                                               if chance.random() < 0.9 else "," for _ in range(tests))
        run("analyze", "-", "--state", "s=1", "--test", "all", "--pr", "--plot", "p.svg", data=data.encode(),
            folder=folder)
        for axes in xml.etree.ElementTree.parse(folder / "p.svg").iterfind(f".//{SVG}g[@class='axes']"):
            rects = ([float(rect.get(key)) for key in ("x", "y", "width", "height")] for rect in axes.iter(SVG + "rect"))
            boxes = [(x, y, x + width, y + height) for x, y, width, height in rects]
            circles = [(float(dot.get("cx")), float(dot.get("cy"))) for dot in axes.iter(SVG + "circle")]
            paths = axes.iterfind(f"{SVG}g[@data-curve]/{SVG}path")
            drawn = [*itertools.chain(*(points_of(path.get("d")) for path in paths)),
                     *((x + dx, y + dy) for x, y in circles for dx in (-5, 5) for dy in (-5, 5))]
            for left, top, right, bottom in boxes:
                check(f"{seed}: inside the axes", 0 < left < right < 440 and 0 < top < bottom < 440, boxes)
                check(f"{seed}: free", not any(left < x < right and top < y < bottom for x, y in drawn), (boxes, data))
            for a, b in itertools.combinations(boxes, 2):
                check(f"{seed}: apart", a[0] >= b[2] or b[0] >= a[2] or a[1] >= b[3] or b[1] >= a[3], boxes)
            labels, dots = labels + (len(boxes) if circles else 0), dots + len(circles)
    check("most dots have a label", labels > 0.7 * dots > 50, (labels, dots))


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
    texts = texts_of(folder / "many.svg")
    cut = f"{'x' * 40}…{'x' * 39}"
    named = ["a\\n", "a\\\\n", cut + " (1)", cut + " (2)", *(f"t{i}" for i in range(96))]
    check("every curve has its name", [text for text in texts if text in named] == named, texts)
    check("the level", "area [90 % confidence interval]" in texts, texts)
    root = xml.etree.ElementTree.parse(folder / "many.svg").getroot()
    lowest = max(float(node.get("y")) for node in root.iter(SVG + "text"))
    check("all of it in the picture", lowest < float(root.get("height")), lowest)


for test in (names_harm_no_output, pictures_come_in_three_kinds, no_label_lies_over_anything,
             every_curve_is_drawn_and_named):
    with tempfile.TemporaryDirectory() as made:
        test(pathlib.Path(made))
sys.exit(1 if failures else 0)
