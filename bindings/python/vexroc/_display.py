"""Pictures of curves. matplotlib is imported when one is drawn, not before."""
from __future__ import annotations

import math
from dataclasses import dataclass, field
from typing import Any

from ._areas import auc
from ._cases import Directions
from ._curves import CutOff, Interpolation, pr_curve, roc_curve
from ._inputs import NanPolicy
from ._options import Distribution, Interval
from ._results import Area, PrecisionRecallCurve, RocCurve


def _check_points(points: int, curve: RocCurve | PrecisionRecallCurve) -> None:
    if points == 0:
        raise ValueError(f"there is nothing to draw: {curve!r}")


def _axes(ax: Any) -> Any:
    if ax is not None:
        return ax
    try:
        from matplotlib import pyplot
    except ImportError as error:
        raise ImportError("drawing needs matplotlib: install python3-matplotlib, or matplotlib from PyPI") from error
    return pyplot.subplots()[1]


def _frame(ax: Any, x_label: str, y_label: str) -> None:
    ax.set(xlabel=x_label, ylabel=y_label, xlim=(-0.01, 1.01), ylim=(-0.01, 1.01), aspect="equal")


@dataclass
class RocCurveDisplay:
    """A ROC curve to draw. After plot() ``ax_``, ``figure_`` and ``line_`` are what matplotlib made.

    >>> display = vexroc.RocCurveDisplay.from_predictions([1, 0, 1, 0], [0.9, 0.3, 0.6, 0.7], name="marker")
    >>> display.line_.get_label()
    'marker (area 0.75, 0.16 to 0.98)'
    """

    curve: RocCurve
    area: Area | None = None
    name: str | None = None
    ax_: Any = field(default=None, repr=False)
    figure_: Any = field(default=None, repr=False)
    line_: Any = field(default=None, repr=False)

    @classmethod
    def from_predictions(cls, y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None,
                         missing: Any = None, direction: Directions = "larger", cut_off: CutOff = "include",
                         distribution: Distribution = "nonparam", interval: Interval | None = None,
                         confidence_level: float = 0.95, nan_policy: NanPolicy = "raise", name: str | None = None,
                         ax: Any = None, plot_chance_level: bool = True, **line: Any) -> RocCurveDisplay:
        """Computes and draws the curve, with area and interval in the legend. Parameters: roc_curve, auc, plot."""
        cases: dict[str, Any] = {"pos_label": pos_label, "neg_label": neg_label, "missing": missing,
                                 "direction": direction, "nan_policy": nan_policy}
        curve = roc_curve(y_true, y_score, cut_off=cut_off, **cases)
        area = auc(y_true, y_score, distribution=distribution, interval=interval, confidence_level=confidence_level,
                   **cases)
        return cls(curve, area, name).plot(ax, plot_chance_level=plot_chance_level, **line)

    def plot(self, ax: Any = None, *, plot_chance_level: bool = True, **line: Any) -> RocCurveDisplay:
        """Draws into the axes, by default those of a new figure; further arguments go to ``ax.plot``."""
        _check_points(len(self.curve.fpr), self.curve)
        area = self.area
        statistics = "" if area is None else f"area {area.area:.2f}"
        if area is not None and not math.isnan(area.ci_lower):
            statistics += f", {area.ci_lower:.2f} to {area.ci_upper:.2f}"
        label = f"{self.name} ({statistics})" if self.name and statistics else self.name or statistics or None
        self.ax_ = _axes(ax)
        self.figure_ = self.ax_.figure
        if plot_chance_level and not any(made.get_gid() == "chance" for made in self.ax_.lines):
            self.ax_.plot([0, 1], [0, 1], color="0.6", linestyle="--", linewidth=1, gid="chance", zorder=1)
        self.line_, = self.ax_.plot(self.curve.fpr, self.curve.tpr, **{"label": label, **line})
        _frame(self.ax_, "1 - specificity", "Sensitivity")
        if self.line_.get_label() and not self.line_.get_label().startswith("_"):
            title = None if area is None else f"{area.confidence_level * 100:g} % interval: {area.interval}"
            self.ax_.legend(loc="lower right", title=title)
        return self


@dataclass
class PrecisionRecallDisplay:
    """A precision-recall curve to draw. After plot() ``ax_``, ``figure_`` and ``line_`` are what matplotlib made.

    >>> display = vexroc.PrecisionRecallDisplay.from_predictions([1, 0, 1, 0], [0.9, 0.3, 0.6, 0.7])
    >>> display.ax_.get_xlabel(), display.ax_.get_ylabel()
    ('Recall', 'Precision')
    """

    curve: PrecisionRecallCurve
    name: str | None = None
    ax_: Any = field(default=None, repr=False)
    figure_: Any = field(default=None, repr=False)
    line_: Any = field(default=None, repr=False)

    @classmethod
    def from_predictions(cls, y_true: Any, y_score: Any, *, pos_label: Any = None, neg_label: Any = None,
                         missing: Any = None, direction: Directions = "larger", cut_off: CutOff = "include",
                         interpolation: Interpolation = "davis-goadrich", nan_policy: NanPolicy = "raise",
                         name: str | None = None, ax: Any = None, plot_chance_level: bool = True,
                         **line: Any) -> PrecisionRecallDisplay:
        """Computes and draws the curve, interpolated points included. Parameters: pr_curve, plot."""
        curve = pr_curve(y_true, y_score, pos_label=pos_label, neg_label=neg_label, missing=missing,
                         direction=direction, cut_off=cut_off, interpolation=interpolation, nan_policy=nan_policy)
        return cls(curve, name).plot(ax, plot_chance_level=plot_chance_level, **line)

    def plot(self, ax: Any = None, *, plot_chance_level: bool = True, **line: Any) -> PrecisionRecallDisplay:
        """Draws into the axes, by default those of a new figure, with the share of positive cases as chance level."""
        _check_points(len(self.curve.recall), self.curve)
        self.ax_ = _axes(ax)
        self.figure_ = self.ax_.figure
        cases = self.curve.n_positive + self.curve.n_negative
        if plot_chance_level and cases:
            share = self.curve.n_positive / cases
            self.ax_.plot([0, 1], [share, share], color="0.6", linestyle="--", linewidth=1, zorder=1)
        self.line_, = self.ax_.plot(self.curve.recall, self.curve.precision, **{"label": self.name, **line})
        _frame(self.ax_, "Recall", "Precision")
        if self.name:
            self.ax_.legend(loc="lower left")
        return self
