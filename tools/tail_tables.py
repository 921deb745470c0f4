#!/usr/bin/env python3
"""Writes tests/numeric/tails.txt: tails and quantiles in 20 digits, worked out in 60 digits by mpmath.

    tools/tail_tables.py > tests/numeric/tails.txt

Columns: function, three arguments as exact doubles (hexadecimal), result. The arguments come from a fixed generator.
"""
import random

import mpmath
from mpmath import mpf

mpmath.mp.dps = 60
random.seed(1934)


def beta_tail(a, b, x, y):
    """The lower tail of Beta(a, b) at x = 1 - y, which lies below the mean: the density's integral outward from x."""
    steepness = (a - 1) / x - (b - 1) / y
    width = mpmath.sqrt(a * b / (a + b) ** 3)
    unit = min(width, 1 / steepness if steepness > 0 else width, x) / 2
    ends = [unit * k for k in range(140) if unit * k < x] + ([x] if unit * 140 > x else [])
    inside = mpmath.quad(lambda v: (1 - v / x) ** (a - 1) * (1 + v / y) ** (b - 1), ends)
    log_beta = mpmath.loggamma(a) + mpmath.loggamma(b) - mpmath.loggamma(a + b)
    return mpmath.exp((a - 1) * mpmath.log(x) + (b - 1) * mpmath.log(y) - log_beta) * inside


def small_beta_tail(a, b, x):
    return mpmath.betainc(a, b, 0, x, regularized=True)


def show(name, arguments, value):
    arguments = [float(argument) for argument in arguments] + [0.0] * (3 - len(arguments))
    print(name, *(argument.hex() for argument in arguments), mpmath.nstr(value, 20, min_fixed=1, max_fixed=0))


def main():
    for z in [-8.5, -1.0, 0.0, 1e-9, 0.3, 1.959963984540054, 5.99, 6.0, 9.7, 20.3, 37.5] + [
            random.uniform(0, 37) for _ in range(20)]:
        tail = mpmath.erfc(mpf(z) / mpmath.sqrt(2)) / 2
        show("normal", [z], tail)
        show("log_normal", [z], mpmath.log(tail))
    show("log_normal", [1000.5], mpmath.log(mpmath.erfc(mpf(1000.5) / mpmath.sqrt(2)) / 2))
    for _ in range(20):
        x, freedom = 10 ** random.uniform(-2, 3), random.choice([1, 2, 3, 4, 9, 50, 401])
        show("chi_square", [x, freedom], mpmath.gammainc(mpf(freedom) / 2, mpf(x) / 2, mpmath.inf, regularized=True))
    for _ in range(20):
        t, freedom = random.uniform(0, 40), random.choice([1, 2, 3.7, 29.5, 1e4])
        v = mpf(freedom)
        show("student", [t, freedom], small_beta_tail(v / 2, mpf(1) / 2, v / (v + mpf(t) ** 2)) / 2)
    for _ in range(20):
        x, one, two = 10 ** random.uniform(-2, 2), random.choice([1, 2, 5, 20]), random.choice([1, 3.3, 40, 3000])
        show("fisher", [x, one, two],
             small_beta_tail(mpf(two) / 2, mpf(one) / 2, two / (two + one * mpf(x))))
    for _ in range(20):
        a, b, x = random.choice([0.5, 1, 2, 7.5, 300]), random.choice([0.5, 1, 3, 20, 700]), random.random()
        show("beta", [a, b, x], small_beta_tail(mpf(a), mpf(b), mpf(x)))
    for _ in range(16):
        a, b = 10 ** random.uniform(2, 12), 10 ** random.uniform(2, 12)
        mean = a / (a + b)
        x = mean - (mean * (1 - mean) / (a + b)) ** 0.5 * random.uniform(1, 36)
        if x > 0:
            show("beta", [a, b, x], beta_tail(mpf(a), mpf(b), mpf(x), 1 - mpf(x)))
    for _ in range(20):
        p = random.choice([0.025, 0.975, 0.5, 1e-3, 1e-10, 1e-100])
        a, b = random.choice([0.5, 1, 2, 7, 30, 1000]), random.choice([0.5, 1, 3, 20, 700])
        low, high = mpf(0), mpf(1)
        for _ in range(60):  # halving, in the logarithm while the place is small
            middle = mpmath.sqrt(low * high) if low > 0 else high / 2 ** 20
            below = small_beta_tail(mpf(a), mpf(b), middle) < mpf(p)
            low, high = (middle, high) if below else (low, middle)
        place = mpmath.findroot(lambda x: small_beta_tail(mpf(a), mpf(b), x) / mpf(p) - 1, (low, high),
                                solver="anderson", tol=1e-40, verify=False)
        show("beta_quantile", [p, a, b], place)


if __name__ == "__main__":
    main()
