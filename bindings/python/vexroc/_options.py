"""What may be asked of one curve: checked words and numbers, and the library's structure for them."""
from __future__ import annotations

import ctypes
import functools
from collections.abc import Callable
from typing import Any, Literal, NamedTuple

from ._aside import Aside, on_all_cores, stop_when_told
from ._inputs import check_level, check_share, check_whole, check_word
from ._library import check, library
from ._structures import AreaInference, InferenceOptions, sized

Distribution = Literal["nonparam", "bi-negative"]
Interval = Literal["score", "newcombe", "logit", "wald", "wald-delong", "bootstrap", "bca"]
PMethod = Literal["mann-whitney", "wald"]
Exact = Literal["auto", "always", "never"]
Alternative = Literal["two-sided", "greater", "less"]
Proportion = Literal["wilson", "exact"]

DISTRIBUTIONS = ("nonparam", "bi-negative")
INTERVALS = ("score", "newcombe", "logit", "wald", "wald-delong", "bootstrap", "bca")
P_METHODS = ("mann-whitney", "wald")
EXACT = ("auto", "always", "never")
ALTERNATIVES = ("two-sided", "greater", "less")
PROPORTIONS = ("wilson", "exact")
BOOTSTRAPS = ("bootstrap", "bca", "btii")


class AreaQuestion(NamedTuple):
    """What is asked of an area; None for the recommended rule."""

    confidence_level: float = 0.95
    interval: str | None = None
    p_method: str | None = None
    exact: str = "auto"
    null: float = 0.5
    alternative: str = "two-sided"
    small_sample: bool = False
    n_resamples: int = 1999
    random_state: int = 1
    distribution: str = "nonparam"

    def drawn(self, interval: str) -> tuple[int | None, int | None]:
        """Number of replicates and seed, where the interval is made of some."""
        return (self.n_resamples, self.random_state) if interval in BOOTSTRAPS else (None, None)


def area_question(confidence_level: float, interval: str | None = None, p_method: str | None = None,
                  exact: str = "auto", null: float = 0.5, alternative: str = "two-sided", small_sample: bool = False,
                  n_resamples: int = 1999, random_state: int = 1, distribution: str = "nonparam") -> AreaQuestion:
    """The question, after checking that each part is possible."""
    if interval is not None:
        check_word("interval", interval, INTERVALS)
    if p_method is not None:
        check_word("p_method", p_method, P_METHODS)
    check_word("exact", exact, EXACT)
    check_word("alternative", alternative, ALTERNATIVES)
    check_word("distribution", distribution, DISTRIBUTIONS)
    if distribution == "bi-negative" and (interval not in (None, "wald") or p_method not in (None, "wald")):
        raise ValueError("distribution='bi-negative' is an error for interval='wald' and p_method='wald'; leave the "
                         "others out, or distribution")
    if small_sample and (p_method != "wald" or interval == "wald"):
        raise ValueError("small_sample is of p_method='wald' with DeLong's error; name that, and no interval='wald'")
    if exact == "always" and (p_method == "wald" or null != 0.5):
        raise ValueError("exact='always' is of the Mann-Whitney test, which is against the area 0.5; leave null and "
                         "p_method='wald' out")
    level = check_level(confidence_level)
    check_replicates(interval, level, n_resamples, random_state)
    return AreaQuestion(level, interval, p_method, exact, check_share("null", null, "give an area such as 0.5"),
                        alternative, bool(small_sample), n_resamples, random_state, distribution)


def infer_area(summary: Any, smaller: bool, asked: AreaQuestion, uncorrected: bool = False) -> AreaInference:
    """What the library says of the area of the summary at this address."""
    result = sized(AreaInference)
    options = options_of(level=asked.confidence_level, interval=asked.interval, p_method=asked.p_method,
                         exact=asked.exact, null_area=asked.null, alternative=asked.alternative,
                         small_sample=asked.small_sample, replicates=asked.n_resamples, seed=asked.random_state,
                         smaller_is_positive=smaller, uncorrected=uncorrected)
    ask(library().vexroc_area_inference, options, summary, ctypes.byref(result))
    return result


def check_replicates(interval: str | None, level: float, n_resamples: int, random_state: int) -> None:
    check_whole("n_resamples", n_resamples, 1, 10**9)
    check_whole("random_state", random_state, 0, 2**64 - 1)
    if interval in BOOTSTRAPS and (n_resamples + 1) * (1 - level) < 2 - 1e-9:
        raise ValueError(f"n_resamples={n_resamples} are too few for the level {level:g}; give "
                         f"{round(2 / (1 - level)) - 1} or more")


@functools.cache
def _defaults() -> InferenceOptions:
    defaults = sized(InferenceOptions)
    check(library().vexroc_inference_defaults(ctypes.byref(defaults)))
    return defaults


def options_of(**members: Any) -> InferenceOptions:
    """The defaults but for these members; None leaves one as it is, texts become bytes."""
    options = InferenceOptions.from_buffer_copy(_defaults())
    for name, value in members.items():
        if value is not None:
            setattr(options, name, value.encode() if isinstance(value, str) else value)
    return options


def ask(call: Callable[..., int], options: InferenceOptions, *arguments: Any) -> None:
    """Makes a call of inference.h, aside where it draws replicates or counts without end."""
    summary, *others = arguments
    if (options.interval or b"").decode() not in BOOTSTRAPS and options.exact != b"always":
        check(call(summary, ctypes.byref(options), *others))
        return
    aside = Aside()
    options.cancel, options.parallel, options.user = stop_when_told(), on_all_cores(), aside.user
    aside.run(lambda: check(call(summary, ctypes.byref(options), *others)))
