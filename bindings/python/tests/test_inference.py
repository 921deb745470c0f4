"""Inference on one curve against other packages, definitions and laws."""
import numpy as np
import pytest
import vexroc

RANDOM = np.random.default_rng(11)
Y = RANDOM.integers(0, 2, 200)
TIED, CONTINUOUS = ((RANDOM.normal(size=200) + Y).round(digits) for digits in (1, 12))
RISKS = (np.clip(0.3 + 0.4 * Y + RANDOM.normal(scale=0.2, size=200), 0, 1)).round(3)
NAN = float("nan")


def test_areas_are_those_of_scikit_learn_under_other_names():
    metrics = pytest.importorskip("sklearn.metrics")
    weight = RANDOM.exponential(size=200)
    for score in TIED, CONTINUOUS:
        assert vexroc.average_precision(Y, score).area == pytest.approx(metrics.average_precision_score(Y, score))
        assert vexroc.average_precision(Y, score, sample_weight=weight).area == pytest.approx(
            metrics.average_precision_score(Y, score, sample_weight=weight))
        assert vexroc.auc(Y, score, sample_weight=weight).area == pytest.approx(
            metrics.roc_auc_score(Y, score, sample_weight=weight))
        for end in 0.1, 0.35, 1.0:
            assert vexroc.partial_auc(Y, score, fpr=(0, end)).standardized == pytest.approx(
                metrics.roc_auc_score(Y, score, max_fpr=end))


@pytest.mark.parametrize("alternative", ["two-sided", "greater", "less"])
def test_mann_whitney_is_that_of_scipy(alternative):
    stats = pytest.importorskip("scipy.stats")
    few = np.r_[np.flatnonzero(Y)[:9], np.flatnonzero(Y == 0)[:14]]
    for cases, score, exact, method in ((few, CONTINUOUS, "auto", "exact"), (slice(None), TIED, "never", "asymptotic")):
        y, score = Y[cases], score[cases]
        for correction in True, False:
            expected = stats.mannwhitneyu(score[y == 1], score[y == 0], alternative=alternative, method=method,
                                          use_continuity=correction)
            result = vexroc.mann_whitney(y, score, alternative=alternative, exact=exact, correction=correction)
            assert tuple(result) == pytest.approx(tuple(expected), rel=1e-10)
        assert result.p_method == "mann-whitney" + "-exact" * (method == "exact")
        assert vexroc.auc(y, score, alternative=alternative, exact=exact).p_value == vexroc.mann_whitney(
            y, score, alternative=alternative, exact=exact).p_value


# Of the definitions: newcombe and score; exact p, greater, less; partial area of 0 to 0.5; step and integral; Youden.
@pytest.mark.parametrize("positive, negative, newcombe, score, p_values, partial, recall, youden", [
    ([1, 2], [3, 4], (0, 0.614364), (0, 0.614364), (0.333333, 1, 0.166667), (0, 0, 0.333333), (0.416667, 0.306853),
     (0, [0, 5])),
    ([3, 4], [1, 2], (0.385636, 1), (0.385636, 1), (0.333333, 0.166667, 1), (0.5, 0, 1), (1, 1), (1, [2.5])),
    ([2, 2], [2, 2], (0.112243, 0.887757), (0.112243, 0.887757), (1, 1, 1), (0.125, 0, 0.5), (0.5, 0.5), (0, [1, 3])),
    ([3], [1, 2, 4], (0.152920, 0.955477), (0.152920, 0.955477), (1, 0.5, 0.75), (0.166667, NAN, 0.555556),
     (0.5, 0.306853), (0.666667, [2.5])),
    ([1, 3, 3], [1, 2, 2, 4], (0.189696, 0.854842), (0.156982, 0.880946), (0.885714, 0.457143, 0.657143),
     (0.166667, 0.0347222, 0.555556), (0.587302, 0.439090), (0.416667, [2.5])),
])
def test_degenerate_data_give_their_values(positive, negative, newcombe, score, p_values, partial, recall, youden):
    cases = [1] * len(positive) + [0] * len(negative), positive + negative
    for interval, limits in ("newcombe", newcombe), ("score", score):
        area = vexroc.auc(*cases, interval=interval)
        assert (area.ci_lower, area.ci_upper) == pytest.approx(limits, abs=1e-6)
    assert [vexroc.auc(*cases, alternative=word).p_value for word in ("two-sided", "greater", "less")] == \
        pytest.approx(p_values, abs=1e-6)
    part = vexroc.partial_auc(*cases, fpr=(0, 0.5))
    assert (part.area, part.std_error**2, part.standardized) == pytest.approx(partial, abs=1e-6, nan_ok=True)
    assert [vexroc.pr_auc(*cases, rule=rule).area for rule in ("step", "integral")] == pytest.approx(recall, abs=1e-6)
    best = vexroc.best_threshold(*cases)
    assert (best.value, best.thresholds.tolist()) == (pytest.approx(youden[0], abs=1e-6), youden[1])
    assert best.threshold == best.thresholds[-1]


@pytest.mark.parametrize("direction", ["larger", "smaller"])
def test_operating_points_are_what_the_thresholds_make_of_the_cases(direction):
    points, curve = (call(Y, TIED, direction=direction) for call in (
        vexroc.confusion_at_thresholds, vexroc.roc_curve))
    np.testing.assert_array_equal(points.thresholds, curve.thresholds)
    np.testing.assert_array_equal(points.sensitivity.value, curve.tpr)
    np.testing.assert_allclose(1 - points.specificity.value, curve.fpr, atol=1e-15)
    at = [0.3, -np.inf, 0.35, 0.3]
    for cut_off in "include", "exclude":
        named = vexroc.confusion_at_thresholds(Y, TIED, at, direction=direction, cut_off=cut_off)
        compare = {("larger", "include"): np.greater_equal, ("larger", "exclude"): np.greater,
                   ("smaller", "include"): np.less_equal, ("smaller", "exclude"): np.less}[direction, cut_off]
        called = compare(TIED[:, None], at)
        assert named.tp.tolist() == called[Y == 1].sum(axis=0).tolist()
        assert named.fp.tolist() == called[Y == 0].sum(axis=0).tolist()
    of_float32 = vexroc.confusion_at_thresholds([0, 1], np.float32([0.5, 0.7]), 0.7)
    assert (of_float32.tp[0], of_float32.fp[0]) == (1, 0)
    frame = pytest.importorskip("pandas") and named.to_frame()
    assert frame.ppv.equals(frame.tp / (frame.tp + frame.fp)) and (frame.ppv_lower.dropna() <= frame.ppv.dropna()).all()
    rare = vexroc.confusion_at_thresholds(Y, TIED, 0.3, direction=direction, prevalence=0.01)
    se, sp = rare.sensitivity.value[0], rare.specificity.value[0]
    assert rare.ppv.value[0] == pytest.approx(se * 0.01 / (se * 0.01 + (1 - sp) * 0.99))


@pytest.mark.parametrize("criterion, score", [
    ("youden", lambda p: p.youden.value), ("accuracy", lambda p: p.accuracy.value), ("f1", lambda p: p.f1.value),
    ("closest", lambda p: -(1 - p.sensitivity.value)**2 - (1 - p.specificity.value)**2),
    ("mcc", lambda p: p.mcc.value), ("specificity=0.9", lambda p: np.where(p.specificity.value >= 0.9, p.tp, -1)),
])
def test_best_threshold_is_the_best_row(criterion, score):
    for direction in "larger", "smaller":
        rows = vexroc.confusion_at_thresholds(Y, TIED, direction=direction)
        best = vexroc.best_threshold(Y, TIED, criterion=criterion, direction=direction)
        assert best.threshold == rows.thresholds[np.nanargmax(score(rows) + 1e-12 * np.arange(len(rows), 0, -1))]
        assert best.threshold in best.points.thresholds and "best-on-same-data" in {note.code for note in best.notes}
        assert (best.rate is not None) == ("=" in criterion)
        if best.rate and direction == "larger":
            assert best.rate.ci_lower < best.rate.reached < best.rate.ci_upper and best.rate.interval == "btii"
            assert best.rate.reached == best.points.sensitivity.value[0] and best.rate.share == 0.9
    ends = vexroc.best_threshold([0, 1, 1], [-np.inf, np.inf, np.inf], cut_off="exclude")
    assert np.isnan(ends.thresholds).tolist() == [False, True] and ends.points.tp.tolist() == [2, 2]
    with pytest.warns(vexroc.CautionWarning, match="no cut-off meets the criterion"):
        unmet = vexroc.best_threshold(Y, RANDOM.normal(size=200), min_sensitivity=0.99, min_specificity=0.99)
    assert np.isnan(unmet.threshold) and len(unmet.points) == 0


def test_net_benefit_is_its_definition_and_bad_risks_are_told():
    at = np.array([0.2, 0.5])
    benefit = vexroc.net_benefit(Y, RISKS, at)
    called = RISKS[:, None] >= at
    expected = (called[Y == 1].sum(axis=0) - called[Y == 0].sum(axis=0) * at / (1 - at)) / 200
    np.testing.assert_allclose(benefit.net_benefit, expected, rtol=1e-13)
    np.testing.assert_allclose(benefit.treat_all, Y.mean() - (1 - Y.mean()) * at / (1 - at), rtol=1e-13)
    assert not benefit.cautions
    with pytest.warns(vexroc.CautionWarning, match="mean score"):
        vexroc.net_benefit(Y, RISKS**6, 0.1)
    with pytest.raises(ValueError):
        vexroc.net_benefit(Y, TIED, 0.1)


def test_weights_of_one_scale_leave_what_cases_say():
    whole = vexroc.auc(Y, TIED, interval="logit", p_method="wald")
    for scale in 1.0, 0.3:
        same = vexroc.auc(Y, TIED, sample_weight=np.full(200, scale))
        assert (same.area, same.std_error, same.ci_lower, same.p_value) == pytest.approx(
            (whole.area, whole.std_error, whole.ci_lower, whole.p_value))
        assert (same.interval, same.p_method, same.error) == ("logit", "wald", "weighted")
    weight = np.where(RANDOM.random(200) < 0.2, 0, RANDOM.exponential(size=200))
    moved = vexroc.auc(Y, TIED, sample_weight=weight)
    order = RANDOM.permutation(200)
    assert moved == vexroc.auc(Y[order], TIED[order], sample_weight=weight[order])
    assert (moved.area, moved.n_positive) != (whole.area, whole.n_positive)
    result = vexroc.analyze({"y": Y, "t": TIED, "w": weight}, state="y", tests="t", weight="w",
                            weight_kind="probability")["t"]
    assert result.area == moved and result.weighted_positive == pytest.approx(weight[Y == 1].sum())
    points = vexroc.confusion_at_thresholds(Y, TIED, sample_weight=weight)
    curve = vexroc.roc_curve(Y, TIED, sample_weight=weight)
    np.testing.assert_array_equal(points.sensitivity.value, curve.tpr)
    np.testing.assert_allclose(result.roc.tpr, curve.tpr, rtol=1e-14)
    assert np.sum(np.diff(curve.fpr) * (curve.tpr[1:] + curve.tpr[:-1])) / 2 == pytest.approx(moved.area)
    twice = vexroc.auc(Y, TIED, count=np.full(200, 2))
    assert twice.area == whole.area and twice.std_error < whole.std_error


def test_bootstraps_depend_on_the_seed_alone(monkeypatch):
    calls = [lambda **o: vexroc.auc(Y, TIED, interval="bca", **o),
             lambda **o: vexroc.partial_auc(Y, TIED, tpr=(0.8, 1), interval="bootstrap", **o),
             lambda **o: vexroc.pr_auc(Y, TIED, interval="bootstrap", prevalence=0.1, **o)]
    many = [call(n_resamples=3000, random_state=5) for call in calls]
    assert all(one.ci_lower < one.area < one.ci_upper for one in many)
    monkeypatch.setattr(vexroc._aside, "_cores", lambda: 1)
    assert [call(n_resamples=3000, random_state=5) for call in calls] == many
    assert all(call(n_resamples=3000, random_state=6) != one for call, one in zip(calls, many))


@pytest.mark.parametrize("call, options, message", [
    (vexroc.auc, {"null": 0.7, "p_method": "mann-whitney"}, "mann-whitney"),
    (vexroc.auc, {"null": 1}, "null=1 is not between 0 and 1"),
    (vexroc.auc, {"interval": "normal"}, "interval='normal' is not known; use 'score' or"),
    (vexroc.auc, {"distribution": "bi-negative", "interval": "score"}, "distribution='bi-negative' .* interval='wald'"),
    (vexroc.auc, {"interval": "bca", "n_resamples": 20}, "n_resamples=20 are too few for the level 0.95; give 39"),
    (vexroc.auc, {"random_state": -1}, "random_state=-1 is not between"),
    (vexroc.auc, {"sample_weight": np.ones(200), "interval": "score"}, "probability weights"),
    (vexroc.auc, {"sample_weight": -np.ones(200)}, "sample_weight has -1 at position 0"),
    (vexroc.auc, {"sample_weight": np.ones(200), "count": np.ones(200)}, "do not go together"),
    (vexroc.partial_auc, {"fpr": 0.1}, r"fpr=0.1 is no pair; give a band such as fpr=\(0, 0.1\)"),
    (vexroc.partial_auc, {"tpr": (0.9, 0.8)}, "is no band"),
    (vexroc.partial_auc, {"fpr": (0, 1), "tpr": (0, 1)}, "one of fpr= and tpr="),
    (vexroc.best_threshold, {"criterion": "yuden"}, "youden"),
    (vexroc.best_threshold, {"cost_ratio": 0, "criterion": "cost"}, "cost_ratio"),
    (vexroc.best_threshold, {"cost_ratio": 5}, "cost_ratio=5 is of criterion='cost', not of 'youden'"),
    (vexroc.auc, {"small_sample": True}, "small_sample is of p_method='wald'"),
    (vexroc.pr_auc, {"prevalence": 30}, "prevalence=30 is not between 0 and 1"),
    (vexroc.confusion_at_thresholds, {"thresholds": [1, NAN]}, "thresholds has a missing value at position 1"),
])
def test_impossible_questions_are_named(call, options, message):
    with pytest.raises(ValueError, match=message):
        call(Y, TIED, **options)


def test_results_become_tables_and_survive_pickling():
    pickle = pytest.importorskip("pickle")
    pytest.importorskip("pandas")
    results = [vexroc.auc(Y, TIED), vexroc.mann_whitney(Y, TIED), vexroc.compare_paired(Y, TIED, CONTINUOUS),
               vexroc.confusion_at_thresholds(Y, TIED), vexroc.best_threshold(Y, TIED, criterion="sensitivity=0.8"),
               vexroc.partial_auc(Y, TIED, fpr=(0, 0.2)), vexroc.pr_auc(Y, TIED), vexroc.net_benefit(Y, RISKS, 0.5)]
    for result in results:
        copy = pickle.loads(pickle.dumps(result))
        assert len(result.to_frame()) >= 1 and repr(copy) == repr(result)
        with pytest.raises(AttributeError):
            result.notes = ()
    with pytest.raises(ValueError, match="read-only"):
        copy.net_benefit[0] = 1
