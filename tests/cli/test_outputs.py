"""What the program writes for others to read: JSON after its schema, files, and names that break careless programs."""
import csv
import html.parser
import xml.etree.ElementTree

import pytest
from harness import CANCER, as_csv

ODD = b"s,t,u,g,n\n1,inf,2,a,1\n0,-inf,2,b,2\n1,1e308,NA,a,3\n0,-1,4,b,1\n1,inf,,b,1\n"
ODD_QUESTION = ["-", "--state", "s=1", "--test"]
HOSTILE = ["it's", 'say "hi"', "a,b;c", "new\nline", "tab\tcr\rend", "esc\x1b[31m\x7f", "`touch pwned`",
           "</script><script>alert(1)</script>", "<!--<script>", "$(touch pwned)", "{/*9 big}_x^y @&%d \\n ~",
           "'; system 'touch pwned' #", "größe…🙂"]


@pytest.mark.parametrize("question", [
    ["auc", *ODD_QUESTION, "t,u"],
    ["compare", *CANCER, "radius_mean,texture_mean,area_mean"],
    ["compare", *ODD_QUESTION, "t", "--group", "g=a,b"],
    ["pr", *ODD_QUESTION, "t", "--keilwagen"],
    ["pr", *ODD_QUESTION, "t", "--area", "step", "--prevalence", "0.1", "--interval", "bootstrap",
     "--replicates", "99"],
    ["points", *ODD_QUESTION, "t", "--by", "g"],
    ["best", *ODD_QUESTION, "t", "--criterion", "cost,sensitivity=0.5", "--replicates", "99"],
    ["partial", *ODD_QUESTION, "t,u", "--fpr", "0,0.5", "--group", "g=a,b"],
    ["benefit", *CANCER, "smoothness_mean", "--at", "0.1"],
    ["analyze", *CANCER, "texture_mean", "--pr"],
    ["analyze", *CANCER, "texture_mean", "--group", "area_mean", "--cut", "600", "--compare", "independent"],
    ["analyze", *ODD_QUESTION, "t", "--best", "--by", "g"],
], ids=lambda question: " ".join(map(str, [question[0], *question[4:]])))
def test_json_follows_its_schema(vexroc, question):
    assert vexroc.json(*question, data=ODD)["command"] == question[0]


def test_json_tells_every_number(vexroc):
    points = vexroc.json("curve", *ODD_QUESTION, "t", data=ODD)["results"]["points"]
    assert [points[0]["cut_off"], points[-1]["cut_off"]] == ["-Infinity", "Infinity"]
    full = vexroc.json("analyze", *ODD_QUESTION, "t,u", "--compare", "paired", "--cases", "complete", "--interval",
                       "wald-delong", "--weight", "n", "--best", data=ODD)
    assert full["results"]["areas"][1]["std_error"] is None
    assert {"costly-test", "weight-counts-only"} <= {remark["code"] for remark in full["notes"] + full["cautions"]}
    many = b"t,u\n" + b"".join(b"%d,x\n" % i for i in range(100_002))
    columns = vexroc.json("columns", "-", data=many)["results"]["columns"]
    assert [columns[0]["distinct"], columns[1]["smallest"]] == [">100000", None]


@pytest.mark.parametrize("command", ["analyze", "auc", "compare", "curve", "pr"])
def test_output_is_what_would_be_printed(vexroc, tmp_path, command):
    question = [command, *CANCER, "radius_mean,texture_mean"]
    for form in ("text", "csv", "json") if command != "analyze" else ("text", "json"):
        file = tmp_path / "out"
        assert vexroc.done(*question, "--format", form, "--output", file) == ""
        assert file.read_bytes().decode() == vexroc.done(*question, "--format", form)
    vexroc.fails(4, "cannot write", *question, "--output", tmp_path / "no" / "place")
    assert list(tmp_path.iterdir()) == [file]


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


def test_names_harm_no_output(vexroc, tmp_path):
    data = as_csv(["st\tate", *HOSTILE], *([row % 2, *(row * (3 + i) % 11 + row % 2 for i, _ in enumerate(HOSTILE))]
                                         for row in range(12)))
    question = ["analyze", "-", "--state", "st\tate=1", "--test", "all"]

    def printed(form):
        return vexroc.done(*question, "--format", form, data=data, cwd=tmp_path)
    document = vexroc.json(*question, data=data, cwd=tmp_path)
    assert [row["test"] for row in document["results"]["areas"]] == HOSTILE
    vexroc.done(*question, "--tables", "tables", data=data, cwd=tmp_path)
    rows = csv.DictReader((tmp_path / "tables/areas.csv").open(encoding="utf-8", newline=""))
    assert [row["test"] for row in rows] == HOSTILE
    text = printed("text")
    assert all(character == "\n" or character.isprintable() for character in text)

    vexroc.done(*question, "--pr", "--best", "--compare", "paired", "--plot", "p.svg", "--report", "page.html",
                data=data, cwd=tmp_path)
    picture = xml.etree.ElementTree.parse(tmp_path / "p.svg")
    texts = {" ".join("".join(node.itertext()).split()) for node in picture.iter("{http://www.w3.org/2000/svg}text")}
    page = Page((tmp_path / "page.html").read_text(encoding="utf-8"))
    shown = set(page.names)
    assert page.scripts == 1 and len(shown) == len(HOSTILE) and len(page.names) == 2 * len(shown)  # in two panels
    assert shown <= texts & set(page.cells)
    assert {file.name for file in tmp_path.iterdir()} == {"p.svg", "page.html", "tables"}, "a command ran"


def test_names_that_are_not_utf_8_are_replaced_in_json(vexroc, tmp_path):
    file = tmp_path / b"gr\xf6\xdfe.csv".decode(errors="surrogateescape")
    file.write_bytes(b"s,t\n1,2\n0,1\n1,3\n")
    assert "\ufffd" in vexroc.json("auc", file, "--state", "s=1", "--test", "t")["question"]["input"]
