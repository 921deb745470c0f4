"""The numbers against scikit-learn, scipy and the definitions."""
import dataclasses
import math

import numpy as np
import pytest
import vexroc


def sample(seed, size=300):
    random = np.random.default_rng(seed)
    states = random.integers(0, 2, size)
    return states, *((random.normal(size=size) + states).round(1) for _ in range(2))


@pytest.mark.parametrize("seed", range(2))
@pytest.mark.parametrize("direction", ["larger", "smaller"])
def test_curves_and_area_are_those_of_scikit_learn(seed, direction):
    metrics = pytest.importorskip("sklearn.metrics")
    y, score, _ = sample(seed)
    toward = score if direction == "larger" else -score
    fpr, tpr, thresholds = vexroc.roc_curve(y, score, direction=direction)
    expected_fpr, expected_tpr, _ = metrics.roc_curve(y, toward, drop_intermediate=False)
    np.testing.assert_allclose(fpr, expected_fpr, atol=1e-12)
    np.testing.assert_allclose(tpr, expected_tpr, atol=1e-12)
    positive = score[:, None] > thresholds if direction == "larger" else score[:, None] < thresholds
    np.testing.assert_allclose(positive[y == 1].mean(axis=0), tpr, atol=1e-12)
    assert vexroc.auc(y, score, direction=direction).area == pytest.approx(metrics.roc_auc_score(y, toward), abs=1e-12)

    curve = vexroc.pr_curve(y, score, direction=direction)
    precision, recall, _ = metrics.precision_recall_curve(y, toward)
    measured = ~curve.interpolated
    np.testing.assert_allclose(curve.recall[measured], recall, atol=1e-12)
    np.testing.assert_allclose(curve.precision[measured][:-1], precision[:-1], atol=1e-12)  # the end is 0/0
    np.testing.assert_array_equal(curve.thresholds[measured], thresholds[::-1])
    assert not measured.all() and np.isnan(curve.thresholds[~measured]).all()


def test_inference_follows_its_definition():
    normal = pytest.importorskip("scipy.stats").norm
    y, one, two = sample(0)
    first, second = (vexroc.auc(y[half], one[half]) for half in (slice(0, 150), slice(150, None)))
    independent = vexroc.compare_independent(y[:150], one[:150], y[150:], one[150:], confidence_level=0.9)
    assert (independent.first.area, independent.first.p_value) == (first.area, first.p_value)
    assert independent.second.std_error == second.std_error
    assert independent.std_error == pytest.approx(np.hypot(first.std_error, second.std_error))
    paired = vexroc.compare_paired(y, one, two, confidence_level=0.9)
    assert paired.second == vexroc.auc(y, two, confidence_level=0.9)  # alone or beside another
    for result in independent, paired:
        difference, z = result.first.area - result.second.area, result.difference / result.std_error
        half = normal.ppf(0.95) * result.std_error
        assert dataclasses.astuple(result)[2:9] == pytest.approx(
            (difference, result.std_error, z, 2 * normal.sf(abs(z)), np.log10(2 * normal.sf(abs(z))),
             difference - half, difference + half))


def test_p_values_reach_far_into_the_tail():
    """Against erfc, and where that underflows against its expansion at infinity."""
    y = np.tile([0, 1], 2000)
    for shift, least in (2000, 1e-16), (1000, 1e-300), (100, 0):
        area = vexroc.auc(y, np.arange(4000) + y * (4000 - shift), interval="wald", p_method="wald")
        z = (area.area - 0.5) / area.std_error
        assert area.p_value == pytest.approx(math.erfc(z / math.sqrt(2)), rel=1e-12, abs=0) and area.p_value <= least
        far = -z**2 / 2 + math.log(math.sqrt(2 / math.pi) / z * (1 - z**-2 + 3 * z**-4 - 15 * z**-6 + 105 * z**-8))
        log_p = math.log(area.p_value) if area.p_value > 1e-300 else far
        assert area.log10_p == pytest.approx(log_p / math.log(10), rel=1e-12)


def test_every_door_of_an_area_says_the_same_and_names_its_rules():
    y, one, two = sample(1)
    table = {"y": y, "one": one, "two": two}
    asked = [{}, {"interval": "wald", "p_method": "wald"}, {"interval": "logit", "alternative": "less"},
             {"interval": "bca", "n_resamples": 199, "random_state": 7}, {"null": 0.8}]
    areas = [vexroc.auc(y, one, **options) for options in asked]
    assert [(area.interval, area.p_method, area.error) for area in areas] == [
        ("score", "mann-whitney", "delong"), ("wald", "wald", "hanley-mcneil"), ("logit", "mann-whitney", "delong"),
        ("bca", "mann-whitney", "delong"), ("score", "wald", "delong")]
    assert "(mann-whitney, less)" in repr(areas[2]) and "(bca, 199 replicates, seed 7)" in repr(areas[3])
    for options, area in zip(asked, areas):
        for comparison in "none", "paired":
            assert vexroc.analyze(table, state="y", tests=["one", "two"], comparison=comparison,
                                  **options)["one"].area == area
    for interval, error in ("wald", "hanley-mcneil"), ("wald-delong", "delong"), (None, "delong"):
        assert vexroc.compare_paired(y, one, two, interval=interval).first == vexroc.auc(y, one, interval=interval)
        halves = vexroc.compare_independent(y[:150], one[:150], y[150:], one[150:], interval=interval)
        assert halves.error == halves.first.error == error
        assert halves.std_error == pytest.approx(np.hypot(halves.first.std_error, halves.second.std_error))


def test_published_rating_data():
    # Hanley and McNeil (1982), table 1: area 0.893, standard error 0.032.
    normal, abnormal = [33, 6, 6, 11, 2], [3, 2, 2, 11, 33]
    scores = np.concatenate([np.repeat(range(1, 6), counts) for counts in (normal, abnormal)])
    area = vexroc.auc(["normal"] * 58 + ["abnormal"] * 51, scores, pos_label="abnormal", interval="wald")
    assert (round(area.area, 3), round(area.std_error, 3)) == (0.893, 0.032)


def test_results_cannot_be_changed():
    curve = vexroc.roc_curve([1, 0, 1], [1, 2, 3])
    with pytest.raises(ValueError):
        curve.fpr[0] = 1
    with pytest.raises(dataclasses.FrozenInstanceError):
        curve.n_positive = 0


def test_a_count_is_as_many_cases():
    """Against repeated cases, to the bit; and the rating table of Hanley and McNeil (1982): area 0.893."""
    y, first, second = sample(4, 40)
    count = np.random.default_rng(4).integers(0, 5, 40)
    ill, one, two = (np.repeat(column, count) for column in (y, first, second))
    assert vexroc.auc(y, first, count=count) == vexroc.auc(ill, one)
    assert vexroc.compare_paired(y, first, second, count=count) == vexroc.compare_paired(ill, one, two)
    assert vexroc.compare_independent(y, first, y, second, count_1=count, count_2=count) == \
        vexroc.compare_independent(ill, one, ill, two)
    for curve in vexroc.roc_curve, vexroc.pr_curve:
        for counted, repeated in zip(curve(y, first, count=count), curve(ill, one)):
            np.testing.assert_array_equal(counted, repeated)
    rated = vexroc.auc([1] * 5 + [0] * 5, [1, 2, 3, 4, 5] * 2, count=[3, 2, 2, 11, 33, 33, 6, 6, 11, 2])
    assert (round(rated.area, 3), rated.n_positive, rated.n_negative) == (0.893, 51, 58)
    unknown = vexroc.auc(y, first, count=np.where(count == 0, np.nan, count), nan_policy="omit")
    assert unknown.area == vexroc.auc(ill, one).area and unknown.n_omitted == np.sum(count == 0)
    for wrong, message in ((count - 1, "has -1 at position"), (count + 0.5, "whole number from 0"),
                           (count[1:], "count has 39 values"), (count * 1e12, "more than 2.40")):
        with pytest.raises(ValueError, match=message):
            vexroc.auc(y, first, count=wrong)
