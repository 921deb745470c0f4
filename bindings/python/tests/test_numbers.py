"""The numbers against scikit-learn, scipy and the definitions."""
import dataclasses

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


def test_inference_follows_its_definition():
    normal = pytest.importorskip("scipy.stats").norm
    y, one, two = sample(0)
    first, second = (vexroc.auc(y[half], one[half]) for half in (slice(0, 150), slice(150, None)))
    independent = vexroc.compare_independent(y[:150], one[:150], y[150:], one[150:], confidence_level=0.9)
    assert dataclasses.astuple(independent.first)[:3] == dataclasses.astuple(first)[:3]
    assert independent.second.std_error == second.std_error
    assert independent.std_error == pytest.approx(np.hypot(first.std_error, second.std_error))
    paired = vexroc.compare_paired(y, one, two, confidence_level=0.9)
    assert paired.second.area == vexroc.auc(y, two).area
    for result in independent, paired:
        difference, z = result.first.area - result.second.area, result.difference / result.std_error
        half = normal.ppf(0.95) * result.std_error
        assert dataclasses.astuple(result)[2:] == pytest.approx(
            (difference, result.std_error, z, 2 * normal.sf(abs(z)), difference - half, difference + half, 0.9))


def test_published_rating_data():
    # Hanley and McNeil (1982), table 1: area 0.893, standard error 0.032.
    normal, abnormal = [33, 6, 6, 11, 2], [3, 2, 2, 11, 33]
    scores = np.concatenate([np.repeat(range(1, 6), counts) for counts in (normal, abnormal)])
    area = vexroc.auc(["normal"] * 58 + ["abnormal"] * 51, scores, pos_label="abnormal")
    assert (round(area.area, 3), round(area.std_error, 3)) == (0.893, 0.032)


def test_results_cannot_be_changed():
    curve = vexroc.roc_curve([1, 0, 1], [1, 2, 3])
    with pytest.raises(ValueError):
        curve.fpr[0] = 1
    with pytest.raises(dataclasses.FrozenInstanceError):
        curve.n_positive = 0
