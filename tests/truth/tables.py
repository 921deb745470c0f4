"""Random tables of every kind that a curve can be made of, as exact numbers, and the questions asked of them."""
import math
import random
from dataclasses import dataclass, field


@dataclass(frozen=True)
class Question:
    kind: str  # a function of reference.py
    words: dict

    def __str__(self):
        return self.kind + "".join(f" {name}={value}" for name, value in self.words.items())


@dataclass
class Case:
    name: str
    values: list  # doubles
    states: list  # 1 and 0
    counts: list = None  # of cases that a row stands for
    weights: list = None  # inverse sampling probabilities
    smaller: bool = False
    exclude: bool = False
    level: float = 0.95
    seed: int = 1
    replicates: int = 199
    questions: list = field(default_factory=list)

    @property
    def kind(self):
        return "probability" if self.weights else "count" if self.counts else "none"

    def rows(self):
        ones = [1] * len(self.values)
        return zip(self.values, self.states, self.counts or ones, self.weights or ones)

    def __str__(self):
        return self.name



def continuous(draw, n):
    states = [int(draw.random() < 0.5) for _ in range(n)]
    return [round(draw.gauss(1.2 * s, 1), draw.choice((1, 2, 6, 16))) for s in states], states


def levels(draw, n):
    states, k = [int(draw.random() < 0.4) for _ in range(n)], draw.choice((2, 3, 5))
    return [float(min(k, 1 + int(draw.random() * k + s * draw.random() * 2))) for s in states], states


def one_of_a_state(draw, n):
    values, _ = continuous(draw, n)
    only = draw.randrange(n)
    state = draw.randrange(2)
    return values, [state if i == only else 1 - state for i in range(n)]


def perfect(draw, n):
    values = sorted(draw.sample(range(-50, 50), n))
    cut = draw.randrange(1, n)
    return [x / 4 for x in values], [int(i >= cut) for i in range(n)]


def reversed_order(draw, n):
    values, states = perfect(draw, n)
    return [-x for x in values], states


def constant(draw, n):
    return [2.5] * n, [int(i % 3 == 0) for i in range(n)]


def infinite(draw, n):
    values, states = levels(draw, n)
    return [draw.choice((x, x, math.inf, -math.inf)) for x in values], states


def zeros(draw, n):
    values, states = levels(draw, n)
    return [draw.choice((0.0, -0.0, x - 2, -1e-300)) for x in values], states


def probabilities(draw, n):
    states = [int(draw.random() < 0.4) for _ in range(n)]
    return [round(draw.betavariate(1 + 2 * s, 3 - s), draw.choice((1, 2, 5))) for s in states], states


def far_apart(draw, n):
    states = [int(draw.random() < 0.5) for _ in range(n)]
    return [draw.choice((-1, 1)) * 10.0 ** draw.randint(-300, 300) for _ in states], states


SHAPES = (continuous, levels, one_of_a_state, perfect, reversed_order, constant, infinite, zeros, probabilities,
          far_apart)


def random_case(number, shape=None):
    """One of them; the same number gives the same one."""
    draw = random.Random(number)
    shape = shape or SHAPES[number % len(SHAPES)]
    while True:
        values, states = shape(draw, draw.choice((3, 6, 12, 25, 40)))
        if 0 < sum(states) < len(states):
            break
    case = Case(f"{shape.__name__}-{number}", values, states, smaller=draw.random() < 0.3,
                exclude=draw.random() < 0.3, level=draw.choice((0.95, 0.95, 0.9, 0.99, 0.5)),
                seed=draw.choice((1, 7, 2 ** 32 + 5, 2 ** 63 - 1)), replicates=draw.choice((199, 299, 500)))
    kind = draw.random()
    if kind < 0.2:
        most = draw.choice((3, 3, 50))
        case.counts = [draw.randrange(0, most) for _ in values]
    elif kind < 0.4:
        case.weights = [draw.choice((0.5, 1.0, 3.25, 0.1, 10.0, 0.0, round(draw.random() * 9, 4))) for _ in values]
    left = {s for _, s, count, weight in case.rows() if count > 0 and weight > 0}
    if len(left) < 2:
        case.counts = case.weights = None
    case.questions = list(questions(draw, case))
    return case


def exact_steps(case):
    P, N = (sum(count for _, state, count, _ in case.rows() if state == wanted) for wanted in (1, 0))
    return (P + N) * min(P, N) * 2 * P * N


def questions(draw, case):
    """What is asked of it. Its values are what a reader would see, so that every door can be given them."""
    present = sorted({x + 0.0 for x, _, count, weight in case.rows() if count > 0 and weight > 0})
    at = [*draw.sample(present, min(2, len(present))), 1.5, math.inf, -math.inf, draw.choice(present)]
    prevalence = draw.choice((0.1, 0.363, 0.003, 0.5))
    weighted = case.kind == "probability"

    for interval in ("logit", "wald-delong") if weighted else ("score", "newcombe", "logit", "wald", "wald-delong",
                                                             "bootstrap", "bca"):
        yield Question("area_inference", {"interval": interval})
    if weighted:
        yield Question("area_inference", {"interval": "logit", "alternative": draw.choice(("greater", "less"))})
        yield Question("area_inference", {"interval": "wald-delong", "null": draw.choice((0.7, 0.25))})
    else:
        for alternative in ("two-sided", "greater", "less"):
            if exact_steps(case) < 1e6:
                yield Question("area_inference", {"exact": "always", "alternative": alternative})
            yield Question("area_inference", {"exact": "never", "alternative": alternative})
            yield Question("area_inference", {"interval": draw.choice(("wald", "wald-delong", "score")),
                                              "p_method": "wald", "alternative": alternative})
        yield Question("area_inference", {"exact": "never", "uncorrected": True})
        yield Question("area_inference", {"interval": "score", "p_method": "wald", "small_sample": True,
                                          "alternative": draw.choice(("two-sided", "greater", "less"))})
        yield Question("area_inference", {})
        yield Question("area_inference", {"interval": draw.choice(("wald", "logit")), "null": draw.choice((0.7, 0.25)),
                                          "alternative": draw.choice(("two-sided", "greater", "less"))})
    yield Question("operating_points", {})
    yield Question("operating_points", {"at": at, "prevalence": prevalence})
    yield Question("pr_area", {"rule": draw.choice(("integral", "step", "trapezoid")), "prevalence": prevalence})
    for rule in ("integral", "step", "trapezoid"):
        yield Question("pr_area", {"rule": rule})
    if weighted:
        return
    yield Question("operating_points", {"proportion": "exact"})
    yield Question("pr_area", {"interval": "binomial"})
    yield Question("pr_area", {"rule": draw.choice(("integral", "step")), "interval": "bootstrap"})
    yield Question("pr_area", {"rule": draw.choice(("integral", "step", "trapezoid")), "interval": "bca"})
    yield Question("pr_area", {"interval": "bootstrap", "prevalence": prevalence})
    share = draw.choice((0.29, 0.9, 0.5, 0.7, 1.0, 0.0))
    for criterion in ("youden", "closest", "accuracy", "cost", "f1", "mcc", "equal", f"specificity={share}",
                      f"sensitivity={share}"):
        yield Question("best_cut_offs", {"criterion": criterion})
    yield Question("best_cut_offs", {"criterion": "cost", "cost_ratio": draw.choice((5.0, 0.1, 1 / 3))})
    yield Question("best_cut_offs", {"criterion": "cost", "cost_ratio": 2.0, "prevalence": prevalence})
    yield Question("best_cut_offs", {"criterion": "youden", "min_sensitivity": draw.choice((0.7, 0.29, 1.0)),
                                     "min_specificity": draw.choice((0.0, 0.3, 0.7))})
    for name in ("specificity", "sensitivity"):
        yield Question("rate_at", {"criterion": f"{name}={share}", "interval": draw.choice(("btii", "bootstrap"))})
    for rate in ("fpr", "tpr"):
        band = draw.choice(((0.0, 0.1), (0.0, 0.5), (0.1, 0.3), (0.9, 1.0), (0.0, 1.0), (0.29, 0.58), (0.5, 0.75)))
        for interval in ("logit", "wald", draw.choice(("bootstrap", "bca"))):
            yield Question("partial_area", {"rate": rate, "a": band[0], "b": band[1], "interval": interval})
    if min(present) >= 0.0 and max(present) <= 1.0 and not case.smaller and not case.exclude:
        for stated in (None, prevalence):
            yield Question("net_benefit", {"thresholds": [0.05, 0.1, 0.3, 0.5, 0.9], "prevalence": stated})
            yield Question("calibration", {"prevalence": stated})
