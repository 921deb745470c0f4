"""The pictures as they are drawn: every curve with its name, no label over anything, three kinds of file."""
import itertools
import random
import re
import struct
import xml.etree.ElementTree

import pytest
from harness import as_csv

SVG = "{http://www.w3.org/2000/svg}"
QUESTION = ["analyze", "-", "--state", "s=1", "--test", "all"]


def texts_of(root):
    return [" ".join("".join(node.itertext()).split()) for node in root.iter(SVG + "text")]


def drawn(vexroc, folder, data, *options):
    """The root of the picture."""
    vexroc.done(*QUESTION, *options, "--plot", "p.svg", data=data, cwd=folder)
    return xml.etree.ElementTree.parse(folder / "p.svg").getroot()


def test_pictures_come_in_three_kinds(vexroc, tmp_path):
    names = ["🙂👨‍👩‍👧", "漢字", "שלום (1)", "e\u0301\u0323" * 30, "\uffff"]  # none of them stops the drawing
    data = as_csv(["s", *names], *([row % 2] + 5 * [row] for row in range(9)))
    svg = drawn(vexroc, tmp_path, data, "--pr")
    for file in ("p.pdf", "P.PNG"):
        vexroc.done(*QUESTION, "--pr", "--plot", file, data=data, cwd=tmp_path)
    png, pdf = (tmp_path / "P.PNG").read_bytes(), (tmp_path / "p.pdf").read_bytes()
    twice = struct.pack(">II", *(2 * int(svg.get(side)) for side in ("width", "height")))
    assert png.startswith(b"\x89PNG") and png[16:24] == twice and len(png) > 50_000
    assert pdf.startswith(b"%PDF") and b"/Image" not in pdf and len(pdf) > 5000  # no pixels
    for option, file, said in (("--plot", "p.gif", ".svg, .pdf or .png"), ("--report", "page.pdf", ".html or .htm"),
                               ("--report", "page", ".html or .htm")):
        vexroc.fails(2, said, "analyze", "no data", "--state", "s=1", "--test", "t", option, file, cwd=tmp_path)


def test_a_machine_without_librsvg_is_told_the_package(vexroc, tmp_path):
    (tmp_path / "librsvg-2.so.2").touch()
    vexroc.fails(4, "apt install librsvg2-2", *QUESTION, "--plot", "q.pdf", data=b"s,t\n1,1\n0,0\n", cwd=tmp_path,
                 env={"LD_LIBRARY_PATH": str(tmp_path)})


def points_of(path):
    """The points of a path's lines, half a pixel apart."""
    x, y = 0, 0
    for command, numbers in re.findall("([MLHV])([^MLHV]*)", path):
        place = [float(number) for number in numbers.split()]
        to_x, to_y = place if command in "ML" else (place[0], y) if command == "H" else (x, place[0])
        steps = 1 if command == "M" else int(2 * (abs(to_x - x) + abs(to_y - y))) + 1
        yield from ((x + (to_x - x) * i / steps, y + (to_y - y) * i / steps) for i in range(1, steps + 1))
        x, y = to_x, to_y


def made_up(seed):
    chance = random.Random(seed)
    digits, tests = chance.choice([0, 1, 4]), 1 + seed % 4
    return as_csv(["s", *(f"t{i}" for i in range(tests))],
                  *([row % 3 % 2, *(f"{chance.gauss(row % 3 % 2 * 2 * chance.random(), 1):.{digits}f}"
                                    if chance.random() < 0.9 else "" for _ in range(tests))]
                    for row in range(chance.choice([6, 20, 200]))))


def check_labels(axes):
    """The numbers of labels and dots."""
    rects = ([float(rect.get(key)) for key in ("x", "y", "width", "height")] for rect in axes.iter(SVG + "rect"))
    boxes = [(x, y, x + width, y + height) for x, y, width, height in rects]
    dots = [(float(dot.get("cx")), float(dot.get("cy"))) for dot in axes.iter(SVG + "circle")]
    paths = axes.iterfind(f"{SVG}g[@data-curve]/{SVG}path")
    below = [*itertools.chain(*(points_of(path.get("d")) for path in paths)),
             *((x + dx, y + dy) for x, y in dots for dx in (-5, 5) for dy in (-5, 5))]
    for left, top, right, bottom in boxes:
        assert 0 < left < right < 440 and 0 < top < bottom < 440
        assert not any(left < x < right and top < y < bottom for x, y in below)
    for a, b in itertools.combinations(boxes, 2):
        assert a[0] >= b[2] or b[0] >= a[2] or a[1] >= b[3] or b[1] >= a[3]
    return len(boxes) if dots else 0, len(dots)


def test_no_label_lies_over_anything(vexroc, tmp_path):
    counts = [check_labels(axes) for seed in range(40)
              for axes in drawn(vexroc, tmp_path, made_up(seed), "--pr").iterfind(f".//{SVG}g[@class='axes']")]
    labels, dots = map(sum, zip(*counts))
    assert labels > 0.7 * dots > 50


def test_every_curve_is_drawn_and_named(vexroc, tmp_path):
    """Up to a limit that is told; names that are shown alike, or only differ behind many characters, stay apart."""
    long = "x" * 150
    names = ["a\n", "a\\n", long + "1" + long, long + "2" + long, *(f"t{i}" for i in range(110))]
    data = as_csv(["s", *names], *([row % 2, *((row * 7 + i) % 11 for i, _ in enumerate(names))] for row in range(12)))
    root = drawn(vexroc, tmp_path, data, "--level", "0.9")
    said = vexroc(*QUESTION, "--plot", "p.svg", data=data, cwd=tmp_path).err
    assert "only the 100 largest areas of 114 are drawn" in said
    texts = texts_of(root)
    cut = f"{'x' * 40}…{'x' * 39}"
    names = ["a\\n", "a\\\\n", cut + " (1)", cut + " (2)", *names[4:]]
    areas = [row["area"] for row in vexroc.json(*QUESTION, data=data)["results"]["areas"]]
    largest = sorted(range(len(names)), key=lambda i: -areas[i])[:100]
    named = [names[i] for i in sorted(largest)]
    assert [text for text in texts if text in named] == named
    assert "area [90 % score interval]" in texts
    lowest = max(float(node.get("y")) for node in root.iter(SVG + "text"))
    assert lowest < float(root.get("height"))


def test_a_picture_has_the_size_and_the_looks_that_are_asked_for(vexroc, tmp_path):
    """At 85 mm text is as large as ever; grey has no colour."""
    data = made_up(1)
    root = drawn(vexroc, tmp_path, data, "--pr", "--plot-size", "85mm", "--grey", "--no-title")
    assert float(root.get("width")) == pytest.approx(85 / 25.4 * 96, abs=0.01)
    assert float(root.get("viewBox").split()[2]) == float(root.get("width"))
    assert "ROC curve" not in texts_of(root)
    colours = {node.get("color") for node in root.iter() if node.get("color")}
    assert all(colour[1:3] == colour[3:5] == colour[5:7] for colour in colours)
    for size, message in ("85", "expected a width"), ("85mmx20mm", "expected a width"), ("170mmx61mm", "too low"):
        vexroc.fails(2, message, *QUESTION, "--plot", "x.svg", "--plot-size", size, data=data, cwd=tmp_path)
    vexroc.fails(1, "no curve to draw: there is no negative case", *QUESTION, "--plot", "x.svg",
                 data=b"s,t\n1,1\n1,2\n", cwd=tmp_path)


def test_answers_are_drawn(vexroc, tmp_path):
    data = b"s,t\n" + b"".join(b"%d,0.%02d\n" % (i % 3 == 0, (i * 37) % 100) for i in range(1, 60))
    for question, drawn in [("points --at 0.5", ["sensitivity", "specificity", "cut-off of t"]),
                            ("benefit --at 0.2", ["treat all", "treat none", "threshold of risk"]),
                            ("best --criterion specificity=0.8", ["the criterion specificity=0.8", "<circle"])]:
        command, *options = question.split()
        vexroc.done(command, "-", "--state", "s=1", "--test", "t", *options, "--plot", "x.svg", data=data, cwd=tmp_path)
        svg = (tmp_path / "x.svg").read_text()
        assert all(text in svg for text in drawn) and "no curve" not in svg
    vexroc.fails(2, "one criterion", "best", "-", "--state", "s=1", "--test", "t", "--criterion", "f1,mcc", "--plot",
                 "x.svg", data=data, cwd=tmp_path)
