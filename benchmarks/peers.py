#!/usr/bin/env python3
"""Times the array calls against other packages, in one process, on the same arrays.

    tools/install_packages.sh peers
    cmake --preset release && cmake --build --preset release
    benchmarks/peers.py [--library build/release/libvexrocproc920r.so] [--largest 10000000] [--python]

Peers: scikit-learn (roc_auc_score, roc_curve, precision_recall_curve) and, for the paired comparison, the
O(n log n) DeLong method in NumPy below. Before anything is timed the results are compared. Calls alternate, and each
line shows the median of the ratios of neighbouring times, so that a slow moment of the machine hits both sides.
--python times the Python package instead, against scikit-learn and against the bare array calls.
"""
import argparse
import os
import pathlib
import statistics
import sys
import time

import numpy as np
from scipy.stats import rankdata
from sklearn.metrics import precision_recall_curve, roc_auc_score, roc_curve

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/support"))
from arraycalls import Library  # noqa: E402: the bindings that the tests use


def numpy_delong(y, first, second):
    """Areas, standard errors and the standard error of their difference (Sun and Xu 2014, IEEE Signal Processing
    Letters 21, 1389-1393): placements from midranks, three sorts a variable."""
    positive = y == 1.0
    m, n = int(positive.sum()), int((~positive).sum())
    v, w = np.empty((2, m)), np.empty((2, n))
    for row, score in enumerate((first, second)):
        pos, neg = score[positive], score[~positive]
        ranks = rankdata(np.concatenate([pos, neg]))
        v[row] = (ranks[:m] - rankdata(pos)) / n
        w[row] = 1.0 - (ranks[m:] - rankdata(neg)) / m
    cov = np.cov(v) / m + np.cov(w) / n
    return v.mean(axis=1), np.sqrt(np.diag(cov)), np.sqrt(cov[0, 0] + cov[1, 1] - 2 * cov[0, 1])


def sample(shape, cases):
    """10 % positive cases whose scores lie higher."""
    random = np.random.default_rng(20240131)
    y = (random.random(cases) < 0.1).astype(float)
    signal = random.normal(size=cases) + y
    first = signal + 0.5 * random.normal(size=cases)
    second = signal + 0.5 * random.normal(size=cases)
    if shape == "100 distinct values":
        first, second = (np.clip(np.floor((s + 4) / 9 * 100), 0, 99) for s in (first, second))
    if shape == "ascending":
        order = np.argsort(first)
        y, first, second = y[order], first[order], second[order]
    return y, first, second


def check(library, shape):
    """The same numbers from both sides, or no timing."""
    y, first, second = sample(shape, 20_000)
    one, two = library.columns(y, first), library.columns(y, first, second)
    assert abs(library.auc(one).area - roc_auc_score(y, first)) < 1e-12
    fpr, tpr, _ = roc_curve(y, first, drop_intermediate=False)
    rows = library.roc_curve(one, keep=True)[::-1]
    assert np.allclose(rows[:, 1], fpr, atol=1e-12) and np.allclose(rows[:, 2], tpr, atol=1e-12)
    precision, recall, _ = precision_recall_curve(y, first)
    points = np.array(library.pr_curve(one, keep=True))[:-1]  # the last one, with recall 0, differs by definition
    assert np.allclose(points[:len(precision) - 1, 0], precision[:-1]) and np.allclose(points[:, 1], recall[:-1])
    areas, errors, difference = numpy_delong(y, first, second)
    res = library.paired(two)
    assert np.allclose(areas, [res.first.area, res.second.area], rtol=1e-12)
    assert np.allclose(errors, [res.first.stdError, res.second.stdError], rtol=1e-9)
    assert abs(difference - res.stdErrorDiff) < 1e-9 * difference


def seconds(call):
    """One call, after another that is not timed: the system hands memory out slowly the first time, to both sides."""
    call()
    start = time.perf_counter()
    call()
    return time.perf_counter() - start


def compare(ours, peer, cases):
    rounds = max(3, min(51, 2_000_000 // cases))
    times = [(seconds(ours), seconds(peer)) for _ in range(rounds)]
    return (statistics.median(a for a, _ in times) / cases * 1e9, statistics.median(b for _, b in times) / cases * 1e9,
            statistics.median(b / a for a, b in times))


def compare_package(library, path, largest):
    """The Python package: how much faster than scikit-learn, how much slower than the bare calls."""
    os.environ["VEXROC_LIBRARY"] = str(path)
    sys.path.insert(0, str(ROOT / "bindings/python"))
    import vexroc
    print("| call | cases | times as long as the array call | times faster than scikit-learn |")
    print("|---|---|---|---|")
    for exponent in range(3, 7):
        cases = 10 ** exponent
        if cases > largest:
            break
        y, score, _ = sample("continuous", cases)
        columns = library.columns(y, score)
        for name, ours, bare, peer in (
                ("auc", vexroc.auc, library.auc, roc_auc_score),
                ("roc_curve", vexroc.roc_curve, library.roc_curve,
                 lambda *arrays: roc_curve(*arrays, drop_intermediate=False)),
                ("pr_curve", vexroc.pr_curve, library.pr_curve, precision_recall_curve)):
            overhead = 1.0 / compare(lambda: ours(y, score), lambda: bare(columns), cases)[2]
            faster = compare(lambda: ours(y, score), lambda: peer(y, score), cases)[2]
            print(f"| `{name}` | {cases:.0e} | {overhead:.1f} | {faster:.1f} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--library", default=ROOT / "build/release/libvexrocproc920r.so")
    parser.add_argument("--largest", type=int, default=10_000_000, help="largest number of cases")
    parser.add_argument("--python", action="store_true", help="time the Python package")
    arguments = parser.parse_args()
    library = Library(arguments.library)
    if arguments.python:
        compare_package(library, arguments.library, arguments.largest)
        return

    print("| call | scores | cases | ns a case | peer, ns a case | times faster |")
    print("|---|---|---|---|---|---|")
    for shape in ("continuous", "100 distinct values", "ascending"):
        check(library, shape)
        for exponent in range(3, 9):
            cases = 10 ** exponent
            if cases > arguments.largest:
                break
            y, first, second = sample(shape, cases)
            one, two = library.columns(y, first), library.columns(y, first, second)
            pairs = [
                ("auc", lambda: library.auc(one), lambda: roc_auc_score(y, first)),
                ("roccurve", lambda: library.roc_curve(one),
                 lambda: roc_curve(y, first, drop_intermediate=False)),
                ("prcurve", lambda: library.pr_curve(one), lambda: precision_recall_curve(y, first)),
                ("auc_pairedcomparison", lambda: library.paired(two),
                 lambda: numpy_delong(y, first, second)),
            ]
            for name, ours, peer in pairs:
                ns, peer_ns, ratio = compare(ours, peer, cases)
                print(f"| {name} | {shape} | {cases:.0e} | {ns:.1f} | {peer_ns:.1f} | {ratio:.1f} |", flush=True)


if __name__ == "__main__":
    main()
