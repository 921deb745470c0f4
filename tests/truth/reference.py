"""What the answers about one curve have to be, worked out slowly: in fractions, in 50 digits where a fraction does not
do, pair by pair and replicate by replicate. Nothing here knows how the library goes about it.

A number comes as Number(value, size): size is the larger of the value and of the largest term of its last sum, the
yardstick of its error. None is a missing value.
"""
import functools
import itertools
import math
from fractions import Fraction
from typing import NamedTuple

import numpy
from mpmath import beta, betainc, erfc, erfinv, exp, inf, log, log10, mp, mpf, sqrt

mp.dps = 50

SPLIT_STEPS = 4_000_000  # of an exact test that is taken unasked


class Number(NamedTuple):
    value: mpf
    size: mpf


def exactly(x):
    """A fraction, an integer or a double in 50 digits."""
    return mpf(x.numerator) / x.denominator if isinstance(x, Fraction) else mpf(x)


def number(value, *terms):
    """With the terms of the sum that it ends in."""
    if value is None:
        return None
    value = exactly(value)
    return Number(value, max([abs(value), *(abs(exactly(term)) for term in terms)]))


def total(*terms):
    return number(sum(exactly(term) for term in terms), *terms)


def ratio(a, b):
    """A share of counts, or their ratio: of a number to 0 infinite, of 0 to 0 missing."""
    if b != 0:
        return Fraction(a) / Fraction(b)
    return None if a == 0 else inf


def cases_of(share, count):
    """A share of cases as their number; whole where it misses that by rounding alone."""
    product = share * count
    return Fraction(snapped(product)) if isinstance(product, float) else Fraction(product)


def snapped(x):
    nearest = round(x)
    return nearest if abs(x - nearest) <= 4 * 2.0 ** -52 * max(1.0, x) else x


def critical(level):
    """The quantile behind two-sided limits; None for a level that is none."""
    return normal_quantile(mpf((1.0 - level) * -0.5 + 1.0)) if 0.0 < level < 1.0 else None


def normal_quantile(p):
    return sqrt(mpf(2)) * erfinv(2 * p - 1)


def normal(z):
    return erfc(-z / sqrt(mpf(2))) / 2


def p_of(z, alternative, upper=lambda z: erfc(z / sqrt(mpf(2))) / 2):
    if alternative == "two-sided":
        return 2 * upper(abs(z))
    return upper(z) if alternative == "greater" else upper(-z)


def quotient(numerator, error):
    """z; None without an error, or without spread."""
    return exactly(numerator) / error if error else None


def expit(x):
    return 1 / (1 + exp(-x))


def logit(p):
    return log(exactly(p) / exactly(1 - p))


def expit_limits(p, half, scale=1):
    """Of a share p by half the length on the scale of its logit."""
    def limit(sign):
        value = expit(logit(p) + sign * half)
        return number(scale * value, scale * value * (1 - value) * max(abs(logit(p)), half))
    return limit(-1), limit(1)


def error_limits(estimate, half):
    return total(estimate, -half), total(estimate, half)


NO_LIMITS = (None, None)


def within(value):
    return min(max(value, mpf(0)), mpf(1))


# Cases ---------------------------------------------------------------------------------------------------------------


class Sample:
    """Distinct values, ascending, larger ones more positive, with their cases and sums of weights in each state."""

    def __init__(self, positives, negatives):
        """Of lists (value, cases, weights)."""
        self.values = sorted({x for x, *_ in positives + negatives})
        self.p, self.n = ([sum(c for x, c, _ in cases if x == value) for value in self.values]
                          for cases in (positives, negatives))
        self.P, self.N = sum(self.p), sum(self.n)
        self.weights = [[(value, [w for x, _, ws in cases if x == value for w in ws]) for value in self.values]
                        for cases in (positives, negatives)]

    @staticmethod
    def of(case):
        sign = -1.0 if case.smaller else 1.0
        states = ([], [])
        for value, positive, count, weight in case.rows():
            if count > 0 and weight > 0:
                states[0 if positive else 1].append((sign * value + 0.0, count, [Fraction(weight)]))
        return Sample(*states)

    def exchanged(self):
        """The same cases seen from the other side."""
        mirror = Sample.__new__(Sample)
        mirror.values = [-x for x in reversed(self.values)]
        mirror.p, mirror.n = self.n[::-1], self.p[::-1]
        mirror.P, mirror.N = self.N, self.P
        return mirror

    # Areas of pairs

    def placements(self):
        """V of every value, the share of the negatives below, and W, that of the positives above; ties half."""
        def psi(x, y):
            return Fraction(1) if x > y else Fraction(1, 2) if x == y else Fraction(0)
        V = [sum(n * psi(x, y) for y, n in zip(self.values, self.n)) / self.N for x in self.values]
        W = [sum(p * psi(x, y) for x, p in zip(self.values, self.p)) / self.P for y in self.values]
        return V, W

    def area(self):
        return sum(p * v for p, v in zip(self.p, self.placements()[0])) / self.P

    def delong(self, components=None):
        """The two terms of the variance of a mean of V; None with a single case of a state."""
        if self.P < 2 or self.N < 2:
            return None
        V, W = components or self.placements()
        mean = sum(p * v for p, v in zip(self.p, V)) / self.P
        mean_w = sum(n * w for n, w in zip(self.n, W)) / self.N
        return (sum(p * (v - mean) ** 2 for p, v in zip(self.p, V)) / (self.P * (self.P - 1)),
                sum(n * (w - mean_w) ** 2 for n, w in zip(self.n, W)) / (self.N * (self.N - 1)))

    def hanley_mcneil(self):
        """The variance by moments: two positives above one negative, one positive above two negatives."""
        A, P, N = self.area(), self.P, self.N
        S1 = S2 = Fraction(0)
        for i, (c, a) in enumerate(zip(self.p, self.n)):
            b, d = sum(self.p[i + 1:]), sum(self.n[:i])
            S1 += a * (Fraction(c * c, 3) + b * c + b * b)
            S2 += c * (Fraction(a * a, 3) + d * d + a * d)
        Q1, Q2 = S1 / (N * P * P), S2 / (N * N * P)
        return ((Q2 - A * A) * (N - 1) + (Q1 - A * A) * (P - 1) + A * (1 - A)) / (N * P)

    # The bootstrap

    def drawn(self, seed, replicates):
        """Cases of every value in every replicate: two arrays, replicates times values."""
        result = []
        for state, counts in enumerate((self.p, self.n)):
            ends, m = numpy.cumsum(counts), sum(counts)
            index = philox_draws(seed, state, replicates, m)
            value = numpy.searchsorted(ends, index, side="right")
            result.append(numpy.stack([(value == i).sum(axis=1) for i in range(len(counts))], axis=1))
        return result

    def replicate(self, p, n):
        mirror = Sample.__new__(Sample)
        mirror.values = self.values
        mirror.p, mirror.n, mirror.P, mirror.N = [int(c) for c in p], [int(c) for c in n], self.P, self.N
        return mirror


def philox(counter, key):
    """Philox4x32-10 of four and two arrays of 32-bit words."""
    words, keys, low = list(counter), list(key), numpy.uint64(0xFFFFFFFF)
    for turn in range(10):
        if turn:
            keys = [(k + numpy.uint64(step)) & low for k, step in zip(keys, (0x9E3779B9, 0xBB67AE85))]
        first, second = words[0] * numpy.uint64(0xD2511F53), words[2] * numpy.uint64(0xCD9E8D57)
        half = numpy.uint64(32)
        words = [(second >> half) ^ words[1] ^ keys[0], second & low, (first >> half) ^ words[3] ^ keys[1], first & low]
    return words


def philox_draws(seed, state, replicates, m):
    """Numbers of the cases drawn: replicates times m of them, each from 0 to m - 1."""
    blocks = (m + 1) // 2
    t, b = numpy.meshgrid(numpy.arange(blocks, dtype=numpy.uint64), numpy.arange(replicates, dtype=numpy.uint64))
    half, low = numpy.uint64(32), numpy.uint64(0xFFFFFFFF)
    key = [numpy.full_like(t, seed & 0xFFFFFFFF), numpy.full_like(t, seed >> 32)]
    w = philox([t, numpy.full_like(t, state), b & low, b >> half], key)
    index = numpy.empty((replicates, 2 * blocks), dtype=numpy.int64)
    for place in (0, 1):
        # floor((w_low + 2^32 w_high) m / 2^64) for m below 2^32, without a wider integer
        lower, upper = w[2 * place] * numpy.uint64(m), w[2 * place + 1] * numpy.uint64(m)
        index[:, place::2] = (upper + (lower >> half)) >> half
    return index[:, :m]


# One area ------------------------------------------------------------------------------------------------------------


def newcombe_limits(A, P, N, z, guard=1):
    m, A = mpf(P + N) / 2 - 1, exactly(A)

    def beyond(t):
        variance = t * (1 - t) * (1 + m * (1 - t) / (2 - t) + m * t / (1 + t)) / (mpf(P) * N)
        return (A - t) ** 2 - z * z * guard * variance

    def root(inside, outside):
        """Between a place next to A, where beyond is negative, and the end of the scale."""
        for _ in range(170):
            middle = (inside + outside) / 2
            inside, outside = (middle, outside) if beyond(middle) <= 0 else (inside, middle)
        return middle
    return (number(0 if A == 0 else root(A, mpf(0))), number(1 if A == 1 else root(A, mpf(1))))


def score_limits(A, P, N, z, variance):
    m, a = mpf(P + N) / 2 - 1, exactly(A)
    own = a * (1 - a) * (1 + m * (1 - a) / (2 - a) + m * a / (1 + a)) / (mpf(P) * N)
    guard = max(mpf(1), exactly(variance) / own) if variance and 0 < A < 1 else 1
    return newcombe_limits(A, P, N, z, guard)


def order_numbers(replicates, lower, upper):
    """Places of the limits among sorted replicates, from 1, and whether one of them had to be held there."""
    places = [int(mp.floor(snapped((replicates + 1) * p + mpf(1) / 2))) for p in (lower, upper)]
    held = [min(max(place, 1), replicates) for place in places]
    return held, held != places


def skewness(components, counts, P, N):
    """The acceleration of bca; None where it is not defined."""
    (V, W), (p, n) = components, counts
    mean = sum(c * v for c, v in zip(p, V)) / P
    mean_w = sum(c * w for c, w in zip(n, W)) / N
    squares = (sum(c * (v - mean) ** 2 for c, v in zip(p, V)) / P ** 2
               + sum(c * (w - mean_w) ** 2 for c, w in zip(n, W)) / N ** 2)
    cubes = (sum(c * (v - mean) ** 3 for c, v in zip(p, V)) / P ** 3
             + sum(c * (w - mean_w) ** 3 for c, w in zip(n, W)) / N ** 3)
    return exactly(cubes) / (6 * exactly(squares) ** mpf("1.5")) if exactly(squares) > mpf("1e-40") else None


def bootstrap_limits(replicates, estimate, level, acceleration, bca):
    """Limits, whether they are percentiles in place of bca, and whether one was held at an end."""
    B, z = len(replicates), critical(level)
    tails = [(1 - mpf(level)) / 2, (1 + mpf(level)) / 2]
    percentile = False
    if bca:
        share = mpf(2 * sum(v < estimate for v in replicates) + sum(v == estimate for v in replicates)) / (2 * B)
        percentile = share in (0, 1) or acceleration is None
        if not percentile:
            z0 = normal_quantile(share)
            tails = [normal(z0 + (z0 + side) / (1 - acceleration * (z0 + side))) for side in (-z, z)]
    places, held = order_numbers(B, *tails)
    ordered = sorted(replicates)
    return ordered[places[0] - 1], ordered[places[1] - 1], percentile, held


def spread(replicates):
    """Standard deviation."""
    B = len(replicates)
    if isinstance(replicates[0], int):
        return sqrt(mpf(B * sum(v * v for v in replicates) - sum(replicates) ** 2) / (mpf(B) * (B - 1)))
    mean = sum(map(mpf, replicates)) / B
    return sqrt(sum((v - mean) ** 2 for v in replicates) / (B - 1))


def twice_u(sample, seed, replicates):
    p, n = sample.drawn(seed, replicates)
    below = numpy.cumsum(n, axis=1) - n
    return [int(v) for v in (p * (2 * below + n)).sum(axis=1)]


def exact_steps(P, N):
    return (P + N) * min(P, N) * 2 * P * N


def exact_mann_whitney(sample, alternative):
    """Over all ways in which the values can fall to the states: their numbers, by doubled rank sum, are the digits of
    one large integer for every number of positive cases."""
    P, N, all_cases = sample.P, sample.N, [p + n for p, n in zip(sample.p, sample.n)]
    width = math.comb(P + N, P).bit_length() + 1
    ways, below = [1] + [0] * P, 0
    for t in all_cases:
        rank = 2 * below + t + 1  # doubled mean of the ranks of these cases
        ways = [sum(math.comb(t, take) * ways[j - take] << take * rank * width for take in range(min(t, j) + 1))
                for j in range(P + 1)]
        below += t
    seen = sum(p * (2 * sum(all_cases[:i]) + all_cases[i] + 1) for i, p in enumerate(sample.p)) - P * (P + N + 1)
    counted, place, digits = 0, -P * (P + N + 1), ways[P]  # of U - P N / 2, doubled
    while digits:
        if {"greater": place >= seen, "less": place <= seen, "two-sided": abs(place) >= abs(seen)}[alternative]:
            counted += digits & (1 << width) - 1
        digits >>= width
        place += 1
    return Fraction(counted, math.comb(P + N, P))


def mann_whitney_z(sample, alternative, corrected=True):
    """None in place of z where all values are equal: p is 1 then, whatever is asked."""
    P, N = sample.P, sample.N
    n = P + N
    ties = sum(t ** 3 - t for t in (p + q for p, q in zip(sample.p, sample.n)))
    variance = Fraction(P * N, 12) * (n + 1 - Fraction(ties, n * (n - 1)))
    d = P * N * (sample.area() - Fraction(1, 2))
    step = Fraction(1, 2) if corrected else Fraction(0)
    if variance == 0:
        return None
    numerator = {"greater": d - step, "less": d + step,
                 "two-sided": (1 if d >= 0 else -1) * max(abs(d) - step, Fraction(0))}[alternative]
    return exactly(numerator) / sqrt(exactly(variance))


def student_upper(t, freedom):
    tail = betainc(freedom / 2, mpf(1) / 2, 0, freedom / (freedom + t * t), regularized=True) / 2
    return tail if t >= 0 else 1 - tail


def area_inference(case, interval="score", p_method="recommended", exact="auto", alternative="two-sided", null=0.5,
                   small_sample=False, uncorrected=False):
    sample, z = Sample.of(case), critical(case.level)
    if case.kind == "probability":
        return weighted_area(case, interval if interval == "wald-delong" else "logit", alternative, null)
    P, N, A, terms = sample.P, sample.N, sample.area(), sample.delong()
    variance = None if terms is None else sum(terms)
    moment = interval == "wald"
    chosen = sample.hanley_mcneil() if moment else variance
    error = None if chosen is None else sqrt(exactly(chosen))
    answer = {"positive": P, "negative": N, "area": number(A), "std_error": number(error), "u": number(P * N * A),
              "error": "hanley-mcneil" if moment else "delong", "exact_steps": number(exact_steps(P, N)),
              "null_area": number(null), "bootstrap_error": None, "percentile": False, "held": False, "edge": False}
    name = interval
    if z is None:
        limits = NO_LIMITS
    elif interval in ("bootstrap", "bca"):
        replicates = twice_u(sample, case.seed, case.replicates)
        twice = int(2 * P * N * A)
        lower, upper, answer["percentile"], answer["held"] = bootstrap_limits(
            replicates, twice, case.level, skewness(sample.placements(), (sample.p, sample.n), P, N), interval == "bca")
        answer["bootstrap_error"] = number(spread(replicates) / (2 * P * N))
        limits = number(Fraction(lower, 2 * P * N)), number(Fraction(upper, 2 * P * N))
        name = "bootstrap" if answer["percentile"] else interval
    elif interval in ("wald", "wald-delong"):
        limits = error_limits(A, z * error) if error else NO_LIMITS
    elif interval == "newcombe":
        limits = newcombe_limits(A, P, N, z)
    elif interval == "logit" and variance is None and 0 < A < 1:
        limits = NO_LIMITS
    elif interval == "logit" and 0 < A < 1 and variance:
        limits = expit_limits(A, z * error / exactly(A * (1 - A)))
    else:
        answer["edge"] = interval == "logit"
        name = "score"
        limits = score_limits(A, P, N, z, variance)
    answer |= {"interval": name, "lower": limits[0], "upper": limits[1]}
    if p_method == "recommended":
        p_method = "mann-whitney" if null == 0.5 else "wald"
    if p_method == "mann-whitney":
        return answer | mann_whitney_test(sample, exact, alternative, uncorrected)
    test = wald_test(A, null, error, alternative, terms if small_sample and not moment else None, P, N)
    return answer | test | ({"p_method": "wald-t"} if small_sample and not moment else {})


def mann_whitney_test(sample, exact, alternative, uncorrected=False):
    steps = exact_steps(sample.P, sample.N)
    if exact == "always" or exact == "auto" and steps <= SPLIT_STEPS:
        p = exact_mann_whitney(sample, alternative)
        return {"p_method": "mann-whitney-exact", "z": None, "freedom": None, "p_value": number(p),
                "log10_p": number(log10(exactly(p)), 1)}
    z = mann_whitney_z(sample, alternative, not uncorrected)
    test = {"p_value": number(1), "log10_p": number(0, 1)} if z is None else p_values(z, alternative)
    return {"p_method": "mann-whitney", "z": number(z or mpf(0)), "freedom": None, **test}


def wald_test(A, null, error, alternative, terms, P, N):
    z, method, freedom = quotient(A - Fraction(null), error), "wald", None
    if terms:
        method, (a, b) = "wald-t", terms
        freedom = exactly((a + b) ** 2 / (a * a / (P - 1) + b * b / (N - 1))) if a + b else None
    size = [] if not error else [exactly(A) / error, exactly(null) / error]
    return {"p_method": method, "z": number(z, *size), "freedom": number(freedom), **p_values(z, alternative, freedom)}


def p_values(z, alternative, freedom=None):
    if z is None:
        return {"p_value": None, "log10_p": None}
    p = p_of(z, alternative, *([lambda t: student_upper(t, freedom)] if freedom else []))
    return {"p_value": number(p), "log10_p": number(log10(p) if p else -inf, 1)}


# Operating points ----------------------------------------------------------------------------------------------------


def share_limits(x, n, z, level, rule="wilson"):
    if n == 0 or z is None:
        return NO_LIMITS
    if rule == "wilson":
        p, step = mpf(x) / n, z * z / n
        middle, half = p + step / 2, z * sqrt(p * (1 - p) / n + step / (4 * n))
        lower, upper = ((middle - half) / (1 + step), (middle + half) / (1 + step))
        return number(0 if x == 0 else lower, *([middle / (1 + step)] if x else [])), number(1 if x == n else upper)
    tail = (1 - mpf(level)) / 2
    return (number(beta_quantile(tail, x, n - x + 1) if x else 0),
            number(1 - beta_quantile(tail, n - x, x + 1) if x < n else 1))


@functools.cache
def beta_quantile(p, a, b):
    """Bisection to the neighbourhood, then Newton."""
    lower, upper = mpf(0), mpf(1)
    for _ in range(16):
        middle = (lower + upper) / 2
        lower, upper = ((middle, upper) if betainc(a, b, 0, middle, regularized=True) < p else (lower, middle))
    x = middle
    for _ in range(12):
        density = x ** (a - 1) * (1 - x) ** (b - 1) / beta(a, b)
        x, before = min(max(x - (betainc(a, b, 0, x, regularized=True) - p) / density, lower), upper), x
        if abs(x - before) < x * mpf("1e-30"):
            return x
    raise ArithmeticError(f"no quantile of {a}, {b} at {p}")


def log_limits(estimate, ratio_of, variance_of, cells, z):
    """On the scale of the logarithm, with 1/2 more in every cell where one is 0; holds the estimate."""
    if estimate is None or z is None:
        return NO_LIMITS
    if 0 in cells:
        cells = [c + Fraction(1, 2) for c in cells]
    middle, half = log(exactly(ratio_of(*cells))), z * sqrt(exactly(variance_of(*cells)))
    lower, upper = exp(middle - half), exp(middle + half)
    size = max(abs(middle), half, 1)
    return (number(min(lower, exactly(estimate)), *([lower * size] if estimate > 0 else [])),
            number(max(upper, exactly(estimate)), *([upper * size] if estimate != inf else [])))


def predictive(se, sp, q):
    """ppv and npv at a prevalence."""
    return (ratio(se * q, se * q + (1 - sp) * (1 - q)), ratio(sp * (1 - q), sp * (1 - q) + (1 - se) * q))


def mercaldo(estimate, which, cells, q, z):
    if estimate is None or z is None:
        return NO_LIMITS
    tp, fp, tn, fn = map(mpf, cells)
    if 0 in cells:
        tp, fp, tn, fn = (c + z * z / 2 for c in (tp, fp, tn, fn))
    P, N = tp + fn, tn + fp
    se, sp, q = tp / P, tn / N, mpf(q)
    odds = se * q / ((1 - sp) * (1 - q)) if which == "ppv" else sp * (1 - q) / ((1 - se) * q)
    variance = ((1 - se) / (se * P) + sp / ((1 - sp) * N) if which == "ppv"
                else se / ((1 - se) * P) + (1 - sp) / (sp * N))
    middle, half = log(odds), z * sqrt(variance)
    lower, upper = expit(middle - half), expit(middle + half)
    size = max(abs(middle), half, 1)
    return (number(min(lower, exactly(estimate)), *([lower * (1 - lower) * size] if estimate > 0 else [])),
            number(max(upper, exactly(estimate)), *([upper * (1 - upper) * size] if estimate < 1 else [])))


def kappa_error(tp, fp, tn, fn):
    """Fleiss, Cohen and Everitt: of cells as shares, rows as called, columns as they are."""
    n = tp + fp + tn + fn
    cell = [[Fraction(tp, n), Fraction(fp, n)], [Fraction(fn, n), Fraction(tn, n)]]
    row, column = [sum(r) for r in cell], [cell[0][i] + cell[1][i] for i in (0, 1)]
    seen, chance = cell[0][0] + cell[1][1], row[0] * column[0] + row[1] * column[1]
    numerator = (sum(cell[i][i] * ((1 - chance) - (row[i] + column[i]) * (1 - seen)) ** 2 for i in (0, 1))
                 + (1 - seen) ** 2 * (cell[0][1] * (column[0] + row[1]) ** 2 + cell[1][0] * (column[1] + row[0]) ** 2)
                 - (seen * chance - 2 * chance + seen) ** 2)
    return sqrt(exactly(numerator / (n * (1 - chance) ** 4)))


def operating_row(tp, fp, tn, fn, level, prevalence=None, rule="wilson"):
    """Statistic: (estimate, lower, upper)."""
    P, N, n, z = tp + fn, tn + fp, tp + fp + tn + fn, critical(level)
    cells = (tp, fp, tn, fn)

    def share(x, of):
        return (number(ratio(x, of)), *share_limits(x, of, z, level, rule))

    row = {"sensitivity": share(tp, P), "specificity": share(tn, N), "accuracy": share(tp + tn, n)}
    if prevalence is None:
        row |= {"ppv": share(tp, tp + fp), "npv": share(tn, tn + fn)}
    else:
        values = predictive(Fraction(tp, P), Fraction(tn, N), Fraction(prevalence))
        row |= {which: (number(value), *mercaldo(value, which, cells, prevalence, z))
                for which, value in zip(("ppv", "npv"), values)}
    ratios = {"lr_positive": (ratio(tp * N, fp * P), lambda a, b, c, d: a * (b + c) / (b * (a + d)),
                              lambda a, b, c, d: 1 / Fraction(a) - 1 / Fraction(a + d) + 1 / Fraction(b)
                              - 1 / Fraction(b + c)),
              "lr_negative": (ratio(fn * N, tn * P), lambda a, b, c, d: d * (b + c) / (c * (a + d)),
                              lambda a, b, c, d: 1 / Fraction(d) - 1 / Fraction(a + d) + 1 / Fraction(c)
                              - 1 / Fraction(b + c)),
              "dor": (ratio(tp * tn, fp * fn), lambda a, b, c, d: a * c / (b * d),
                      lambda a, b, c, d: sum(1 / Fraction(x) for x in (a, b, c, d)))}
    for which, (estimate, of, variance) in ratios.items():
        row[which] = (number(estimate), *log_limits(estimate, lambda *c: of(*map(Fraction, c)), variance, cells, z))
    youden = Fraction(tp * N - fp * P, P * N)
    row["youden"] = (number(youden, Fraction(tp, P)), *NO_LIMITS)
    row["balanced_accuracy"] = (number((youden + 1) / 2), *NO_LIMITS)
    if z is not None:
        (l1, u1), (l2, u2) = share_limits(tp, P, z, level), share_limits(fp, N, z, level)
        se, fpr = mpf(tp) / P, mpf(fp) / N
        low = sqrt((se - l1.value) ** 2 + (u2.value - fpr) ** 2)
        high = sqrt((u1.value - se) ** 2 + (fpr - l2.value) ** 2)
        j = exactly(youden)
        row["youden"] = (row["youden"][0], total(j, -low), total(j, high))
        row["balanced_accuracy"] = (row["balanced_accuracy"][0], number((j + 1 - low) / 2, 1),
                                    number((j + 1 + high) / 2, 1))
    g = share_limits(tp, tp + fp + fn, z, level, rule)
    row["f1"] = (number(Fraction(2 * tp, 2 * tp + fp + fn)),
                 *(g if g == NO_LIMITS else [number(2 * x.value / (1 + x.value), 2 * x.size) for x in g]))
    margins = (tp + fp) * (tn + fn)
    root = sqrt(mpf(margins)) * sqrt(mpf(P * N))
    row["mcc"] = (number(exactly(tp * N - fp * P) / root, exactly(tp * N) / root) if margins else None, *NO_LIMITS)
    kappa = Fraction(2 * (tp * N - fp * P), (tp + fp) * N + P * (fn + tn))
    share_of_kappa = Fraction(2 * tp * N, (tp + fp) * N + P * (fn + tn))
    row["kappa"] = (number(kappa, share_of_kappa),
                    *(NO_LIMITS if z is None else error_limits(kappa, z * kappa_error(*cells))))
    return row


def counts_at(case, cut_off):
    """TP, FP, TN, FN in cases and, of those called positive, in weights."""
    def called(x):
        if x == cut_off:
            return not case.exclude
        return x < cut_off if case.smaller else x > cut_off
    counts, weights = [0, 0, 0, 0], [Fraction(0)] * 4
    for x, positive, count, weight in case.rows():
        place = (0 if called(x) else 3) if positive else (1 if called(x) else 2)
        if weight > 0:
            counts[place] += count
            weights[place] += count * Fraction(weight)
    return counts, weights


def cut_offs_of(case):
    """Of the curve: ends and midpoints, in the arithmetic of doubles."""
    values = sorted({x + 0.0 for x, _, count, weight in case.rows() if count > 0 and weight > 0})
    inside = values[0] > 0.0 and values[-1] < 1.0
    return [0.0 if inside else values[0] + -1.0, *((a + b) * 0.5 for a, b in itertools.pairwise(values)),
            1.0 if inside else values[-1] + 1.0]


def curve(case):
    """Rows (cut-off, counts, weights). Between -inf and inf there is no midpoint, and nothing changes."""
    rows = []
    for cut_off in cut_offs_of(case):
        rows.append((cut_off, *(rows[-1][1:] if math.isnan(cut_off) else counts_at(case, cut_off))))
    return rows


def operating_points(case, at=None, prevalence=None, proportion="wilson"):
    rows = []
    for cut_off, counts, weights in curve(case) if at is None else [(c, *counts_at(case, c)) for c in at]:
        if case.kind == "probability":
            scale = math.lcm(*(w.denominator for w in weights))
            row = operating_row(*(int(w * scale) for w in weights), 2.0, prevalence)
        else:
            row = operating_row(*counts, case.level, prevalence, proportion)
        names = ("true_positive", "false_positive", "true_negative", "false_negative")
        rows.append({"cut_off": cut_off} | dict(zip(names, counts))
                    | {f"{name}.{part}": value for name, values in row.items()
                       for part, value in zip(("value", "lower", "upper"), values)})
    return rows


# Best cut-offs -------------------------------------------------------------------------------------------------------


def best_cut_offs(case, criterion, cost_ratio=1.0, prevalence=None, min_sensitivity=0.0, min_specificity=0.0):
    name, _, share = criterion.partition("=")
    share = float(share) if share else None
    rows = [(cut_off, *counts) for cut_off, counts, _ in curve(case)]
    P, N = rows[0][1] + rows[0][4], rows[0][2] + rows[0][3]

    def h():
        return Fraction((1.0 - prevalence) / (prevalence * cost_ratio))

    def merit(tp, fp, tn, fn):
        """What is largest; None for a cut-off that does not take part."""
        if name == "youden":
            met = tp >= cases_of(min_sensitivity, P) and tn >= cases_of(min_specificity, N)
            return tp * N - fp * P if met else None
        if name == "mcc":
            margins = (tp + fp) * (tn + fn)
            root = tp * N - fp * P
            return Fraction(root * abs(root), margins) if margins else None
        if name == "cost":
            return tp * N - h() * fp * P if prevalence is not None else tp * Fraction(cost_ratio) - fp
        if name == "specificity":
            return (tp, tn) if tn >= cases_of(share, N) else None
        if name == "sensitivity":
            return (-fp, tp) if tp >= cases_of(share, P) else None
        return {"closest": lambda: -(fn * fn * N * N + fp * fp * P * P), "accuracy": lambda: tp - fp,
                "f1": lambda: Fraction(tp, tp + fp + P), "equal": lambda: -abs(tp * N - tn * P)}[name]()

    def value(tp, fp, tn, fn):
        se, fpr = Fraction(tp, P), Fraction(fp, N)
        slope = h() if prevalence is not None and name == "cost" else Fraction(N, P) / Fraction(cost_ratio)
        row = operating_row(tp, fp, tn, fn, 2.0)
        distance = number(sqrt(exactly((1 - se) ** 2 + fpr ** 2)))
        return {"youden": row["youden"][0], "closest": distance, "accuracy": row["accuracy"][0],
                "cost": total(se, -slope * fpr), "f1": row["f1"][0], "mcc": row["mcc"][0],
                "equal": number(abs(se + fpr - 1), 1), "specificity": number(se), "sensitivity": number(1 - fpr)}[name]

    taking_part = [(merit(*counts), cut_off, counts) for cut_off, *counts in rows if merit(*counts) is not None]
    if not taking_part:
        return {"cut_offs": [], "chosen": -1, "value": None, "share": share}
    most = max(m for m, *_ in taking_part)
    ties = [(cut_off, counts) for m, cut_off, counts in taking_part if m == most]
    return {"cut_offs": [cut_off for cut_off, _ in ties], "chosen": 0 if case.smaller else len(ties) - 1,
            "value": value(*ties[0][1]), "share": share}


def reached(sample, share):
    """Positive cases called so at the best cut-off that leaves a share of the negative cases alone."""
    least = cases_of(share, sample.N)
    return max(sum(sample.p[i:]) for i in range(len(sample.values) + 1) if sum(sample.n[:i]) >= least)


def interpolated(sample, share):
    """The curve at the share, upper end of a vertical step."""
    left = sample.N - cases_of(share, sample.N)  # false positives
    best, tp, fp = Fraction(0), 0, 0
    for p, n in zip(reversed(sample.p), reversed(sample.n)):
        if n == 0 and fp <= left or n and fp <= left:
            part = min(Fraction(1), Fraction(left - fp) / n) if n else 1
            best = max(best, tp + p * part)
        tp, fp = tp + p, fp + n
    return Fraction(best) / sample.P


def rate_at(case, criterion, interval="btii"):
    name, share = criterion.split("=")
    best = best_cut_offs(case, criterion)
    sample = Sample.of(case)
    sample = sample if name == "specificity" else sample.exchanged()
    z, P = critical(case.level), sample.P
    counts, _ = counts_at(case, best["cut_offs"][0]) if best["cut_offs"] else (None, None)
    answer = {"reached": number(Fraction(counts[0] if name == "specificity" else counts[2], P)) if counts else None,
              "cut_off": best["cut_offs"][0] if counts else None,
              "interpolated": number(interpolated(sample, float(share))),
              "interval": interval, "std_error": None, "lower": None, "upper": None}
    if interval == "none" or z is None:
        return answer
    p, n = Sample.of(case).drawn(case.seed, case.replicates)
    drawn = [Sample.of(case).replicate(*row) for row in zip(p, n)]
    found = [reached(s if name == "specificity" else s.exchanged(), float(share)) for s in drawn]
    if interval == "btii":
        if len(set(found)) == 1:  # says nothing beyond these cases
            return answer | {"std_error": 0.0}
        deviation, mean = spread(found) / (P + z * z), (mpf(sum(found)) / len(found) + z * z / 2) / (P + z * z)
        return answer | {"std_error": number(deviation), "lower": number(within(mean - z * deviation), mean),
                         "upper": number(within(mean + z * deviation))}
    lower, upper, _, _ = bootstrap_limits(found, 0, case.level, None, False)
    return answer | {"std_error": number(spread(found) / P), "lower": number(Fraction(lower, P)),
                     "upper": number(Fraction(upper, P))}


# Partial areas -------------------------------------------------------------------------------------------------------


def components(sample, a, b):
    """V and W of the band, W but for a constant."""
    N, P, k = sample.N, sample.P, len(sample.values)

    def at(border):
        c = Fraction(cases_of(border, N))
        shares, G = [], []
        for i in range(k):
            F, f = sum(sample.n[i + 1:]), sample.n[i]
            w = min(max((c - F) / f, Fraction(0)), Fraction(1)) if f else Fraction((c > F) - (c < F) + 1, 2)
            shares.append(w)
            G.append((c - F - Fraction(f, 2)) / N if w == 1 else (c - F) ** 2 / (2 * f * N) if w > 0 and f else 0)
        H = [(sum(p * w for p, w in zip(sample.p[:i], shares)) + sample.p[i] * shares[i] ** 2 / 2) / P
             for i in range(k)]
        return G, H

    (Ga, Ha), (Gb, Hb) = at(a), at(b)
    return [x - y for x, y in zip(Gb, Ga)], [x - y for x, y in zip(Ha, Hb)]


def area_in_band(sample, a, b):
    """The integral of the interpolated curve, segment by segment."""
    ends = cases_of(a, sample.N), cases_of(b, sample.N)
    area, tp, fp = Fraction(0), 0, 0
    for p, n in zip(reversed(sample.p), reversed(sample.n)):
        left, right = max(ends[0], fp), min(ends[1], fp + n)
        if n and left < right:
            area += (right - left) * (tp + p * (Fraction(left + right) / 2 - fp) / n)
        tp, fp = tp + p, fp + n
    return area / (sample.P * sample.N)


def partial_area(case, rate, a, b, interval="logit"):
    sample, z = Sample.of(case), critical(case.level)
    answer = {"positive": sample.P, "negative": sample.N, "from": number(a), "to": number(b)}
    all_of_rate = sample.N if rate == "fpr" else sample.P
    low = (Fraction(b) ** 2 - Fraction(a) ** 2) / 2
    bounds = (a, b)
    if rate == "tpr":
        sample, bounds = sample.exchanged(), (1.0 - b, 1.0 - a)
        low = ((1 - Fraction(a)) ** 2 - (1 - Fraction(b)) ** 2) / 2
    width = Fraction(b) - Fraction(a)
    ends = [cases_of(border, sample.N) for border in bounds]
    parts = components(sample, *bounds)
    area = sum(p * v for p, v in zip(sample.p, parts[0])) / sample.P
    assert area == area_in_band(sample, *bounds)
    terms = sample.delong(parts)
    error = None if terms is None else sqrt(exactly(sum(terms)))
    scale = exactly(1 / (2 * (width - low)))
    full = area * sample.N == ends[1] - ends[0]
    limits, edge, held, percentile, deviation = NO_LIMITS, False, False, False, None
    if interval in ("bootstrap", "bca"):
        found = [float(area_in_band(s, *bounds)) for s in replicates_of(case, rate == "tpr")]
        deviation = spread(found)
        skew = skewness(parts, (sample.p, sample.n), sample.P, sample.N)
        *limits, percentile, held = bootstrap_limits(found, float(area), case.level, skew, interval == "bca")
        limits = [number(x) for x in limits]
    elif error is not None and z is not None:
        edge = area == 0 or full or error == 0
        if interval == "wald":
            limits, edge = error_limits(area, z * error), False
        elif not edge:
            x = area / width
            limits = expit_limits(x, z * error / exactly(x * (1 - x) * width), exactly(width))

    def standard(x):
        if x is None:
            return None
        return number((1 + (x.value - exactly(low)) * 2 * scale) / 2, 1, exactly(low) * scale, x.size * scale)
    return answer | {
        "area": number(area, b), "std_error": number(error), "lower": limits[0], "upper": limits[1],
        "standardized": standard(number(area)), "standardized_error": number(error and error * scale),
        "standardized_lower": standard(limits[0]), "standardized_upper": standard(limits[1]), "edge": edge,
        "few": width * all_of_rate < 5, "percentile": percentile, "held": held,
        "bootstrap_error": number(deviation, area),
        "interval": "bootstrap" if percentile else interval}


def replicates_of(case, exchanged=False):
    sample = Sample.of(case)
    for row in zip(*sample.drawn(case.seed, case.replicates)):
        drawn = sample.replicate(*row)
        yield drawn.exchanged() if exchanged else drawn


# Precision and recall ------------------------------------------------------------------------------------------------


def excess(x):
    """x - log(1 + x)"""
    if isinstance(x, mpf) or x > 0.3:
        return x - (log(1 + x) if isinstance(x, mpf) else math.log1p(x))
    return sum((-x) ** i / i for i in range(40, 1, -1))


def area_of_steps(steps, rule, exactly=exactly):
    """Times the positives; steps are (T, F) of every value from the strictest cut-off on."""
    sums = T0 = F0 = exactly(0)
    for T1, F1 in ((exactly(t), exactly(f)) for t, f in steps):
        if T1 > T0:
            D0, D1 = T0 + F0, T1 + F1
            if rule == "step" or rule == "integral" and D0 == 0:
                sums += (T1 - T0) * T1 / D1
            elif rule == "integral":
                s = (D1 - D0) / (T1 - T0)
                x = (D1 - D0) / D0
                sums += T0 / s * (x - excess(x)) + D0 / s ** 2 * excess(x)
            else:
                sums += (T1 - T0) * ((T1 / D1 if D0 == 0 else T0 / D0) + T1 / D1) / 2
        T0, F0 = T1, F1
    return sums


def pr_steps(p, n, factor):
    """Running sums from the largest value down."""
    T, F = itertools.accumulate(reversed(p)), itertools.accumulate(reversed(n))
    return [(t, f * factor) for t, f in zip(T, F)]


def pr_skewness(sample, rule, factor):
    """The acceleration of bca: components are what the area changes with a case more among as many."""
    def area(p, n):
        return area_of_steps(pr_steps(p, n, exactly(factor)), rule) / sample.P

    def change(counts, i, area_of):
        def moved(step):
            return area_of([c * (1 - step) + (sum(counts) * step if j == i else 0) for j, c in enumerate(counts)])
        step = mpf("1e-16")
        slope = (moved(step) - moved(-step)) / (2 * step) if counts[i] else mpf(0)
        return slope if abs(slope) > mpf("1e-25") else mpf(0)
    V = [change(sample.p, i, lambda p: area(p, sample.n)) for i in range(len(sample.p))]
    W = [change(sample.n, i, lambda n: area(sample.p, n)) for i in range(len(sample.n))]
    return skewness((V, W), (sample.p, sample.n), sample.P, sample.N)


def pr_area(case, rule="integral", interval="logit", prevalence=None):
    sample, z = Sample.of(case), critical(case.level)
    p, n = sample.p, sample.n
    if case.kind == "probability":
        p, n = ([sum(ws) for _, ws in state] for state in sample.weights)
    P, N = sum(p), sum(n)
    share = Fraction(P) / Fraction(P + N) if prevalence is None else Fraction(prevalence)
    factor = 1 if prevalence is None else (1 - share) * P / (share * N)
    A = area_of_steps(pr_steps(p, n, factor), rule) / exactly(Fraction(P))
    plain = prevalence is None and case.kind != "probability"
    lowest = None
    if plain and rule == "step":
        lowest = sum(mpf(i) / (i + N) for i in range(1, P + 1)) / P
    elif plain and rule == "integral":
        lowest = 1 + mpf(N) / P * log(mpf(N) / (P + N))
    answer = {"positive": sample.P, "negative": sample.N, "rule": rule, "area": number(A), "prevalence": number(share),
              "chance": number(share), "lowest": number(lowest, 1), "interval": interval, "lower": None, "upper": None,
              "edge": False, "held": False, "percentile": False, "bootstrap_error": None}
    ends = A == 0 or all(f == 0 for (_, f), c in zip(pr_steps(p, n, 1), reversed(p)) if c > 0)
    if z is None or case.kind == "probability":
        return answer
    if interval in ("bootstrap", "bca"):
        found = [area_of_steps(pr_steps(s.p, s.n, float(factor)), rule, float) / sample.P
                 for s in replicates_of(case)]
        same = {f: A for f in found if abs(f - A) < 1e-13}  # rounding makes no difference
        skew = pr_skewness(sample, rule, factor) if interval == "bca" else None
        lower, upper, percentile, held = bootstrap_limits([same.get(f, f) for f in found], A, case.level, skew,
                                                          interval == "bca")
        return answer | {"lower": number(lower), "upper": number(upper), "bootstrap_error": number(spread(found), A),
                         "held": held, "percentile": percentile, "interval": "bootstrap" if percentile else interval}
    if prevalence is None:
        answer["edge"] = ends
        if interval == "binomial":
            limits = (number(A),) * 2 if ends else error_limits(A, z * sqrt(A * (1 - A) / P))
        else:
            limits = NO_LIMITS if ends else expit_limits(A, z / sqrt(P * A * (1 - A)))
        answer |= {"lower": limits[0], "upper": limits[1]}
    return answer


# Probability weights -------------------------------------------------------------------------------------------------


def weighted_area(case, interval, alternative="two-sided", null=0.5):
    positives = [(x, Fraction(w)) for x, positive, count, w in case.rows() if positive and w > 0]
    negatives = [(x, Fraction(w)) for x, positive, count, w in case.rows() if not positive and w > 0]
    WP, WN = sum(w for _, w in positives), sum(w for _, w in negatives)

    def psi(x, y):
        above = x < y if case.smaller else x > y
        return Fraction(1) if above else Fraction(1, 2) if x == y else Fraction(0)
    V = [sum(w * psi(x, y) for y, w in negatives) / WN for x, _ in positives]
    W = [sum(w * psi(x, y) for x, w in positives) / WP for y, _ in negatives]
    A = sum(w * v for (_, w), v in zip(positives, V)) / WP
    P, N, z = len(positives), len(negatives), critical(case.level)
    variance = None
    if P > 1 and N > 1:
        variance = (Fraction(P, P - 1) * sum(w * w * (v - A) ** 2 for (_, w), v in zip(positives, V)) / WP ** 2
                    + Fraction(N, N - 1) * sum(w * w * (v - A) ** 2 for (_, w), v in zip(negatives, W)) / WN ** 2)
    error = None if variance is None else sqrt(exactly(variance))
    edge = interval == "logit" and (A in (0, 1) or error == 0)
    if error is None or z is None:
        limits = NO_LIMITS
    elif interval == "logit" and not edge:
        limits = expit_limits(A, z * error / exactly(A * (1 - A)))
    else:
        limits = error_limits(A, z * error) if error else NO_LIMITS
    return {"positive": P, "negative": N, "area": number(A), "std_error": number(error), "error": "weighted",
            "interval": interval, "lower": limits[0], "upper": limits[1], "edge": False,
            "u": None, "bootstrap_error": None, "null_area": number(null)
            } | wald_test(A, null, error, alternative, None, P, N)


# Decisions -----------------------------------------------------------------------------------------------------------


def net_benefit(case, thresholds, prevalence=None):
    sample, rows = Sample.of(case), []
    q = Fraction(sample.P, sample.P + sample.N) if prevalence is None else Fraction(prevalence)
    for t in thresholds:
        odds = Fraction(t) / (1 - Fraction(t))
        tp, fp = (sum(c for x, c in zip(sample.values, counts) if x >= t) for counts in (sample.p, sample.n))
        rows.append({"true_positive": tp, "false_positive": fp,
                     "model": total(Fraction(tp, sample.P) * q, -Fraction(fp, sample.N) * (1 - q) * odds),
                     "treat_all": total(q, -(1 - q) * odds)})
    return rows


def calibration(case, prevalence=None):
    sample = Sample.of(case)
    n = sample.P + sample.N
    observed = Fraction(sample.P, n) if prevalence is None else Fraction(prevalence)
    means = [sum(Fraction(x) * count for x, count in zip(sample.values, counts)) / sum(counts)
             for counts in (sample.p, sample.n)]
    mean = observed * means[0] + (1 - observed) * means[1]
    return {"mean_score": number(mean), "observed": number(observed),
            "std_error": number(sqrt(exactly(mean * (1 - mean) / n))),
            "differs": (observed - mean) ** 2 > 9 * mean * (1 - mean) / n}
