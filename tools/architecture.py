#!/usr/bin/env python3
"""Draws docs/architecture.svg from the arrows in tools/check_includes.py and the rooms' lines in docs/architecture.md.

    tools/architecture.py            draws it
    tools/architecture.py --check    fails when the drawing is not what would be drawn
"""
import html
import pathlib
import re
import sys
import textwrap

from check_includes import LIBRARY, PROGRAM

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs/architecture.svg"
BOX = (176, 76)  # pixels
STEP = (200, 108)  # from box to box
COLUMNS = 5

# Where a room stands: column, floor. Nobody looks upward.
LIBRARY_PLACES = {
    "numeric": (0.5, 0), "host": (2, 0), "remarks": (3, 0), "summary": (0.5, 1), "space": (0, 2), "inference": (1, 2),
    "stats": (0.5, 3), "arraycalls": (0, 4), "results": (1, 4), "settings": (2, 4), "driver": (1, 5),
    "display": (2, 5), "calls": (0.5, 6), "labels": (2, 3),
}
PROGRAM_PLACES = {
    "words": (2, 0), "system": (1, 1), "study": (3, 1), "input": (2, 2), "output": (3, 2), "picture": (4, 2),
    "options": (0, 3), "sources": (1, 3), "commands": (1.5, 4),
}
WIDE = {"words"}  # rooms as wide as the house
# Beside the library: who stands on it, and on what of it.
APPLICATIONS = {
    "applications": ((3.5, 5), "cli/, bindings/, examples/: see public headers and host/ alone"),
    "include/vexrocproc/": ((3.5, 3), "the public headers: every room may include them; they see host/ alone"),
}
STYLE = """text { font-family: "DejaVu Sans", Verdana, sans-serif; fill: #1c2833; text-anchor: middle; }
.name { font-size: 15px; font-weight: bold; }
.note { font-size: 11px; }
.title { font-size: 16px; text-anchor: start; fill: #5d6d7e; }
.room { fill: #ffffff; stroke: #33475b; stroke-width: 1.5; }
.panel { fill: #f3f6f9; stroke: #c5d0db; }
.ground { fill: #fdf6e3; }
line { stroke: #33475b; stroke-width: 1.6; marker-end: url(#head); }"""


class Panel:
    """One house: its floors, the highest first, with the ground at the bottom."""

    def __init__(self, title, top, places):
        self.top, self.floors = top, 1 + max(floor for _, floor in places.values())
        self.height = 34 + self.floors * STEP[1]
        width = COLUMNS * STEP[0] + 4
        self.shapes = [f'<rect class="panel" x="8" y="{top}" width="{width}" height="{self.height}" rx="10"/>',
                       f'<text class="title" x="22" y="{top + 24}">{title}</text>']

    def box(self, name, place):
        """Left, top, width, height."""
        left = 22 + (0 if name in WIDE else place[0] * STEP[0])
        width = COLUMNS * STEP[0] - 24 if name in WIDE else BOX[0]
        return left, self.top + 38 + (self.floors - 1 - place[1]) * STEP[1], width, BOX[1]

    def room(self, name, place, note):
        left, top, width, height = self.box(name, place)
        name += "" if name in APPLICATIONS else "/"
        lines = textwrap.wrap(note, width // 7)
        if len(lines) > 3:
            sys.exit(f"architecture.py: what {name} holds does not fit its box: {note}")
        kind = "room ground" if place[1] == 0 else "room"
        self.shapes.append(f'<rect class="{kind}" x="{left}" y="{top}" width="{width}" height="{height}" rx="6"/>')
        self.shapes.append(f'<text class="name" x="{left + width / 2}" y="{top + 21}">{name}</text>')
        self.shapes += [f'<text class="note" x="{left + width / 2}" y="{top + 37 + 14 * row}">{html.escape(line)}'
                        '</text>' for row, line in enumerate(lines)]

    def arrow(self, start, end):
        """Down from box to box, or sideways on one floor."""
        (x1, y1, w1, h1), (x2, y2, w2, h2) = start, end
        if y1 == y2:
            ends = (x1 + w1, y1 + h1 / 2, x2, y2 + h2 / 2)
        else:
            below = x1 + w1 / 2
            ends = (below, y1 + h1, below if w2 > BOX[0] else x2 + w2 / 2, y2)
        self.shapes.append('<line x1="{}" y1="{}" x2="{}" y2="{}"/>'.format(*ends))

    def draw(self, arrows, places, notes):
        for name, below in arrows.items():
            for other in below:
                self.arrow(self.box(name, places[name]), self.box(other, places[other]))
        for name in arrows:
            self.room(name, places[name], notes[name])


def notes_of(tree):
    """What each room holds, in the words of docs/architecture.md up to the first semicolon."""
    text = (ROOT / "docs/architecture.md").read_text(encoding="utf-8")
    rows = re.findall(rf"^\| \[(\w+)/\]\(\.\./{tree}/\w+\) \| ([^|;]+)", text, re.MULTILINE)
    return {room: note.replace("`", "").strip() for room, note in rows}


def library():
    panel = Panel("the library, src/", 8, LIBRARY_PLACES)
    panel.draw(LIBRARY, LIBRARY_PLACES, notes_of("src"))
    boxes = [panel.box(name, place) for name, (place, _) in APPLICATIONS.items()]
    panel.arrow(*boxes)
    panel.arrow(boxes[1], panel.box("host", LIBRARY_PLACES["host"]))
    for name, (place, note) in APPLICATIONS.items():
        panel.room(name, place, note)
    return panel


def drawing():
    upper = library()
    lower = Panel("the program, cli/", upper.top + upper.height + 14, PROGRAM_PLACES)
    lower.draw(PROGRAM, PROGRAM_PLACES, notes_of("cli"))
    width, height = COLUMNS * STEP[0] + 20, lower.top + lower.height + 8
    head = '<marker id="head" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="8" markerHeight="8" orient="auto">' \
           '<path d="M0 0 L10 5 L0 10 z" fill="#33475b"/></marker>'
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
        'role="img" aria-label="Rooms and the includes allowed between them">',
        f"<defs>{head}<style>\n{STYLE}\n</style></defs>", '<rect width="100%" height="100%" fill="#ffffff"/>',
        *upper.shapes, *lower.shapes, "</svg>\n"])


def main():
    if sys.argv[1:] != ["--check"]:
        PICTURE.write_text(drawing(), encoding="utf-8")
        return 0
    if PICTURE.read_text(encoding="utf-8") == drawing():
        return 0
    print("docs/architecture.svg is not what the arrows say: tools/architecture.py draws it")
    return 1


if __name__ == "__main__":
    sys.exit(main())
