"""Whether a door's answer is the reference's."""
import math
from collections import defaultdict

from mpmath import inf, mpf

from reference import Number, p_values

TAILS = {"p_value", "log10_p", "freedom"}  # within 1e-12 of their value; all else within 1e-13 of its yardstick


def off(expected, got):
    """The error in units of what is allowed; infinite where one is missing and the other is not."""
    if expected is None or got is None:
        return 0.0 if expected is None and (got is None or got != got) else math.inf
    value, size = expected
    if got != got:
        return math.inf
    if abs(value) == inf or math.isinf(got):
        return 0.0 if value == got else math.inf
    return float(abs(mpf(got) - value) / max(size, mpf("2.3e-308"))) / 1e-13


def wrong(name, expected, got):
    if isinstance(expected, Number) or expected is None and not isinstance(got, str):
        return off(expected, got) / (10 if name in TAILS else 1)
    if isinstance(expected, float) or isinstance(expected, list):
        return 0.0 if str(expected) == str(got) or expected == got else math.inf
    return 0.0 if expected == got else math.inf


def of_own_z(expected, got, alternative):
    """With the p of the z that the door computed, where there is one: errors of z are those of z."""
    z, freedom = got.get("z"), got.get("freedom")
    if expected.get("z") is None or z is None or z != z or z == 0 or expected["p_value"] is None:
        return expected
    return expected | p_values(mpf(z), alternative, mpf(freedom) if freedom and freedom == freedom else None)


class Worst:
    """The largest errors, by feature and field."""

    def __init__(self):
        self.by_field = defaultdict(float)
        self.answers = 0

    def compare(self, question, expected, got):
        """What is wrong, in words."""
        if isinstance(expected, list):
            if len(expected) != len(got):
                return [f"{len(got)} rows in place of {len(expected)}"]
            return [f"row {i}: {text}" for i, rows in enumerate(zip(expected, got))
                    for text in self.compare(question, *rows)]
        told = []
        expected = of_own_z(expected, got, question.words.get("alternative", "two-sided"))
        for name, value in expected.items():
            if name not in got:
                told.append(f"{name} is not there")
                continue
            error = wrong(name, value, got[name])
            self.answers += 1
            key = (question.kind, str(question.words.get("interval", "")), name)
            if error < math.inf:
                self.by_field[key] = max(self.by_field[key], error)
            if error > 1:
                shown = value
                if isinstance(value, Number):
                    shown = f"{float(value.value)!r} (size {float(value.size):.3g})"
                told.append(f"{name}: {got[name]!r}, not {shown}: {error:.3g} times what is allowed")
        return told

    def same(self, question, of_library, got):
        """What differs from the library's answer in a bit, of what the door says."""
        if isinstance(got, list):
            if len(of_library) != len(got):
                return [f"{len(got)} rows in place of {len(of_library)}"]
            return [f"row {i}: {text}" for i, rows in enumerate(zip(of_library, got))
                    for text in self.same(question, *rows)]
        self.answers += len(got)
        return [f"{name}: {value!r}, but {of_library[name]!r} in the library" for name, value in got.items()
                if plain(value) != plain(of_library[name])]

    def report(self):
        """The worst errors in units of what is allowed, by feature."""
        worst = defaultdict(lambda: (0.0, ""))
        for (kind, interval, name), error in self.by_field.items():
            worst[kind, interval] = max(worst[kind, interval], (error, name))
        lines = [f"{' '.join(feature):32} {error:10.4f}  {name}" for feature, (error, name) in sorted(worst.items())]
        return "\n".join([f"{self.answers} answers; worst errors, 1 being what is allowed:", *lines])


def plain(value):
    """Missing as None, zero without a sign."""
    if isinstance(value, list):
        return [plain(x) for x in value]
    return None if value is None or value != value else value + 0.0 if isinstance(value, float) else value
