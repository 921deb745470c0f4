"""Every door says what the definitions say, of tables that nobody chose."""
import numpy
import pytest
import reference
import tables
from doors import C, Refused
from tables import Question


def test_answers_are_those_of_the_reference(case, door, library, worst):
    told = []
    for question in case.questions:
        if not door.can(case, question):
            continue
        try:
            got = door.answer(case, question)
        except Refused as error:
            told.append(f"{question}: refused: {error}")
            continue
        if isinstance(door, C):
            expected = getattr(reference, question.kind)(case, **question.words)
            wrong = worst.compare(question, expected, got)
        else:
            wrong = worst.same(question, library.answer(case, question), got)
        told += [f"{question}: {text}" for text in wrong]
    assert not told, "\n".join(told)


def four_cells(tp, fn, fp, tn):
    return tables.Case("cells", [1.0, 0.0, 1.0, 0.0], [1, 1, 0, 0], counts=[tp, fn, fp, tn])


def row_of(door, case, **words):
    return door.answer(case, Question("operating_points", {"at": [1.0], **words}))[0]


# x1 of n1 less x2 of n2, lower, upper
NEWCOMBE = ((56, 70, 48, 80, 0.0524, 0.3339), (9, 10, 3, 10, 0.1705, 0.8090), (6, 7, 2, 7, 0.0582, 0.8062),
            (5, 56, 0, 29, -0.0381, 0.1926), (0, 10, 0, 20, -0.1611, 0.2775), (10, 10, 0, 10, 0.6075, 1.0))


def test_difference_of_two_shares_is_as_published(c_only, library):
    """Newcombe 1998, Statist. Med. 17, 873-890, table II, method 10: Youden's index is such a difference."""
    for x1, n1, x2, n2, lower, upper in NEWCOMBE:
        row = row_of(library, four_cells(x1, n1 - x1, x2, n2 - x2))
        assert (row["youden.lower"], row["youden.upper"]) == pytest.approx((lower, upper), abs=5.1e-5)


def test_a_diagnostic_table_is_as_published(c_only, library):
    """670, 202, 74, 640 of Scott and others 2008, as the manual of epiR 2.0 prints them: exact shares, ratios."""
    row = row_of(library, four_cells(670, 74, 202, 640), proportion="exact")
    published = {"sensitivity": (0.90, 0.88, 0.92), "specificity": (0.76, 0.73, 0.79), "ppv": (0.77, 0.74, 0.80),
                 "npv": (0.90, 0.87, 0.92), "lr_positive": (3.75, 3.32, 4.24), "lr_negative": (0.13, 0.11, 0.16),
                 "dor": (28.69, 21.52, 38.24), "accuracy": (0.83, 0.81, 0.84)}
    for name, values in published.items():
        found = [row[f"{name}.{part}"] for part in ("value", "lower", "upper")]
        assert found == pytest.approx(values, abs=0.0051), name


# by n of the one and of the other state, probabilities of U at most 0, 1, 2, ...
MANN_WHITNEY = {(3, 3): (.05, .1, .2, .35, .5), (4, 3): (.028, .057, .114, .2, .314, .429),
                (4, 4): (.014, .029, .057, .1, .171, .243, .343, .443), (5, 3): (.018, .036, .071, .125, .196, .286),
                (5, 5): (.004, .008, .016, .028, .048, .075, .111, .155, .21, .274, .345, .421)}


def test_exact_p_is_as_published(c_only, library):
    """Mann and Whitney 1947, Ann. Math. Statist. 18, 50-60, table I."""
    for (P, N), shares in MANN_WHITNEY.items():
        for u, published in enumerate(shares):
            whole, rest = divmod(u, N)  # so many positives above all negatives, one more above the rest
            above = [N] * whole + [rest] + [0] * P
            positives = [n + 0.5 + i / 100 for i, n in enumerate(above[:P])]
            case = tables.Case("u", positives + list(range(1, N + 1)), [1] * P + [0] * N)
            answer = library.answer(case, Question("area_inference", {"exact": "always", "alternative": "less"}))
            assert answer["u"] == u
            assert answer["p_value"] == pytest.approx(published, abs=1e-3), (P, N, u)  # some are cut off


def test_the_generator_gives_its_known_answers(c_only):
    """Salmon and others 2011: the authors' answers of Philox4x32-10. The bootstrap of the reference stands on them."""
    ones, pi = 0xFFFFFFFF, (0x243F6A88, 0x85A308D3, 0x13198A2E, 0x03707344, 0xA4093822, 0x299F31D0)
    for words, published in (((0,) * 6, (0x6627E8D5, 0xE169C58D, 0xBC57AC4C, 0x9B00DBD8)),
                             ((ones,) * 6, (0x408F276D, 0x41C83B0E, 0xA20BC7C6, 0x6D5451FD)),
                             (pi, (0xD16CFE09, 0x94FDCCEB, 0x5001E420, 0x24126EA1))):
        found = reference.philox(*([numpy.uint64(w) for w in part] for part in (words[:4], words[4:])))
        assert tuple(int(word) for word in found) == published
