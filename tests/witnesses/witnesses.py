#!/usr/bin/env python3
"""Compares the array calls with scikit-learn and SciPy and, in witnesses.R, with pROC.

    witnesses.py LIBRARY    exit status 77 where one of the packages is not installed
"""
import collections
import pathlib
import subprocess
import sys
import tempfile

try:
    import numpy as np
    from scipy.stats import mannwhitneyu, norm
    from sklearn.metrics import precision_recall_curve, roc_auc_score, roc_curve
except ImportError as missing:
    print(f"skipped: {missing} (tools/install_packages.sh witness)")
    sys.exit(77)

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from arraycalls import Library  # noqa: E402

SMALL_SETS = 3000
LARGE_SETS = 6

SCALES = {
    "ratings": lambda x: np.round(2 * x),
    "normal": lambda x: x,
    "tenths": lambda x: np.round(x, 1),
    "probabilities": lambda x: norm.cdf(x),
    "negative": lambda x: -np.exp(x),
    "huge": lambda x: np.round(3 * x) * 1e300,
    "tiny": lambda x: np.round(3 * x) * 1e-300,
    "denormals": lambda x: np.round(3 * x) * 5e-324,
    "neighbours": lambda x: 0.75 + np.round(3 * x) * 2.0**-53,
    "both infinities": lambda x: np.where(np.abs(x) > 1.5, np.sign(x) * np.inf, np.round(2 * x)),
}


def data_sets():
    """(scale, states, first, second); the share of positive cases goes from one case to all but one."""
    random = np.random.default_rng(20240131)
    for number in range(SMALL_SETS + LARGE_SETS):
        cases = int(random.integers(3, 60)) if number < SMALL_SETS else 20_000
        drawn = int(random.integers(1, cases))
        positives = (1, cases - 1, max(1, cases // 20), cases // 2, cases // 2, drawn, drawn, drawn)[number % 8]
        y = np.zeros(cases)
        y[random.permutation(cases)[:positives]] = 1.0
        signal = random.normal(size=cases) + random.choice([0.0, 1.0, 4.0]) * y
        scale = list(SCALES)[number % len(SCALES)]
        first, second = (SCALES[scale](signal + 0.5 * random.normal(size=cases)) for _ in range(2))
        yield scale, y, first, first.copy() if number % 50 == 7 else second


def cut_offs_separate(values):
    """Does every cut-off lie strictly between its neighbours? Otherwise our curve follows the rounded cut-off."""
    distinct = np.unique(values)
    middle = (distinct[:-1] + distinct[1:]) * 0.5
    return (np.all((distinct[:-1] < middle) & (middle < distinct[1:])) and distinct[0] - 1 < distinct[0]
            and distinct[-1] + 1 > distinct[-1])


class Tally:
    """Numbers compared and the largest difference, by what was compared."""

    def __init__(self):
        self.sets = collections.Counter()
        self.worst = collections.defaultdict(float)

    def take(self, what, ours, theirs, tolerance):
        ours, theirs = np.atleast_1d(ours), np.atleast_1d(theirs)
        assert ours.shape == theirs.shape, f"{what}: {ours.shape} numbers against {theirs.shape}"
        both_lack = np.isnan(ours) & np.isnan(theirs)
        difference = np.where(both_lack | (ours == theirs), 0.0, np.abs(ours - theirs))
        assert np.all(difference <= tolerance), f"{what}: {ours} against {theirs}"
        self.sets[what] += 1
        self.worst[what] = max(self.worst[what], float(np.max(difference)))

    def print(self):
        for what, sets in self.sets.items():
            print(f"{what}: {sets} data sets, largest difference {self.worst[what]:.1e}")


def compare_one(library, tally, number, y, first, second):
    larger = number % 3 != 0
    words = (b"exclude" if number % 2 else b"include", b"larger" if larger else b"smaller")
    score = first if larger else -first
    columns = library.columns(y, first)
    ours = library.auc(columns, words[1])

    ranked = score if np.all(np.isfinite(score)) else np.clip(score, -9, 9)  # SciPy reads both infinities as NaN
    u = mannwhitneyu(ranked[y == 1], ranked[y == 0], method="asymptotic").statistic
    tally.take("Mann-Whitney U over its maximum (SciPy)", ours.area, u / (ours.posCount * ours.negCount), 0)
    z = (ours.area - 0.5) / ours.stdError if ours.stdError > 0 else np.inf
    if ours.area != 0.5:
        tally.take("significance (SciPy)", ours.asymptoticSig, 2 * norm.sf(abs(z)), 1e-15)
    half = norm.ppf(0.975) * ours.stdError
    tally.take("bounds (SciPy)", [ours.ciLower, ours.ciUpper], [ours.area - half, ours.area + half], 1e-14)
    other = library.auc(library.columns(y, second), words[1])
    independent = library.comparison(ours, other)
    if independent.areaDiff != 0 and independent.stdErrorDiff > 0:
        z = (ours.area - other.area) / np.hypot(ours.stdError, other.stdError)
        tally.take("independent z and p (SciPy)", [independent.z, independent.zSig], [z, 2 * norm.sf(abs(z))],
                   1e-12 * max(1, abs(z)))
    if not np.all(np.isfinite(first)):
        return
    tally.take("area (scikit-learn)", ours.area, roc_auc_score(y, score), 1e-12)
    if not cut_offs_separate(first):
        return
    rows = library.roc_curve(columns, True, words)[::-1 if larger else 1, 1:]
    tally.take("curve points (scikit-learn)", rows,
               np.column_stack(roc_curve(y, score, drop_intermediate=False)[:2]), 1e-15)
    points = np.array(library.pr_curve(columns, True, words))[::1 if larger else -1]
    theirs = np.column_stack(precision_recall_curve(y, score)[:2])
    tally.take("precision-recall points (scikit-learn)", points[:-1], theirs[:-1], 1e-15)


def compare(library):
    tally = Tally()
    for number, (scale, y, first, second) in enumerate(data_sets()):
        try:
            compare_one(library, tally, number, y, first, second)
        except AssertionError as difference:
            sys.exit(f"data set {number} ({scale}): {difference}")
    tally.print()


def write(library, path):
    """As doubles: per set the number of cases, states, both test variables, 1 when smaller values are positive, and
    what pROC computes too."""
    with open(path, "wb") as file:
        for number, (scale, y, first, second) in enumerate(data_sets()):
            if scale == "both infinities":
                continue  # pROC refuses them
            smaller = number % 3 == 0
            res = library.paired(library.columns(y, first, second), b"smaller" if smaller else b"larger")
            variances = res.first.stdError**2, res.second.stdError**2
            ours = [res.first.area, res.second.area, *variances,
                    (sum(variances) - res.stdErrorDiff**2) / 2, res.z, res.zSig]
            np.concatenate([[len(y)], y, first, second, [smaller], ours]).tofile(file)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    library = Library(sys.argv[1])
    compare(library)
    try:
        subprocess.run(["Rscript", "-e", "library(pROC)"], check=True, capture_output=True)
    except (OSError, subprocess.CalledProcessError):
        print("skipped: R or its package pROC is not installed (tools/install_packages.sh witness)")
        sys.exit(77)
    with tempfile.TemporaryDirectory() as folder:
        write(library, f"{folder}/sets")
        sys.exit(subprocess.run(["Rscript", pathlib.Path(__file__).with_suffix(".R"), f"{folder}/sets"]).returncode)


if __name__ == "__main__":
    main()
