#!/usr/bin/env python3
"""Draws docs/coverage.svg from docs/coverage.csv, which the program coverage writes.

    build/release/benchmarks/coverage > docs/coverage.csv && benchmarks/coverage_picture.py
"""
import csv
import pathlib

import matplotlib

matplotlib.use("svg")
from matplotlib import pyplot  # noqa: E402: after the choice of what draws

DOCS = pathlib.Path(__file__).resolve().parent.parent / "docs"
COLOURS = {"wald": "#D55E00", "wald-delong": "#CC79A7", "logit": "#0072B2", "newcombe": "#999999", "score": "#009E73"}
MARKS = {"wald": "v", "wald-delong": "^", "logit": "s", "newcombe": "D", "score": "o"}


def main():
    rows = list(csv.DictReader((DOCS / "coverage.csv").open()))
    settings = list(dict.fromkeys((r["area"], r["positive"], r["negative"]) for r in rows))
    matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "vexroc", "font.family": "sans-serif"})
    figure, axes = pyplot.subplots(figsize=(7.5, 4.2))
    axes.axhline(95, color="#606060", linewidth=1, linestyle="--")
    for number, interval in enumerate(COLOURS):
        of = [r for r in rows if r["interval"] == interval]
        axes.plot([settings.index((r["area"], r["positive"], r["negative"])) + 0.12 * (number - 2) for r in of],
                  [float(r["coverage"]) for r in of], MARKS[interval], color=COLOURS[interval], label=interval,
                  markersize=6)
    axes.set_xticks(range(len(settings)), [f"{area}\n{p} / {n}" for area, p, n in settings])
    axes.set_xlabel("true area, and numbers of positive / negative cases")
    axes.set_ylabel("holds the true area, of 100")
    axes.set_ylim(76, 100)
    axes.grid(axis="y", color="#e4e4e4")
    axes.legend(loc="lower left", ncol=2, framealpha=1)
    figure.tight_layout()
    figure.savefig(DOCS / "coverage.svg", metadata={"Date": None, "Creator": None})


if __name__ == "__main__":
    main()
