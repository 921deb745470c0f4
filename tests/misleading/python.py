"""The Python package as a door; pandas reads the files."""
import io
import math
import warnings

import pandas
import vexroc
from table import Said, data_of


def frame_of(case):
    """Numbers as pandas reads them, labels as the texts that they are."""
    text, read = data_of(case), {"encoding": case.encoding, **case.read}
    frame = pandas.read_csv(io.BytesIO(text), **read)
    labels = pandas.read_csv(io.BytesIO(text), dtype=str, keep_default_na=False, **read)
    names = [case.state] + ([case.group[0]] if case.group else [])
    return frame.assign(**{name: labels[name] for name in names})


def one_or_list(values):
    return values[0] if len(values) == 1 else values


def question(case):
    settings = {"pos_label": one_or_list(case.positive), "direction": case.direction, "interval": case.interval,
                "p_method": case.p_value, "nan_policy": "omit", "roc": case.roc or case.interpolated,
                "precision_recall": case.interpolated}
    if case.others or case.negative:
        settings["neg_label"] = vexroc.OTHERS if case.others else one_or_list(case.negative)
    for name in ("count", "weight", "weight_kind"):
        if value := getattr(case, name):
            settings[name] = value
    if case.group:
        settings.update(group=case.group[0], group_values=case.group[1:], comparison="independent")
    elif case.compare:
        settings.update(comparison=case.compare, cases=case.cases)
    return settings


def numbers(result, **names):
    values = {name: getattr(result, attribute) for name, attribute in names.items()}
    return {name: None if isinstance(value, float) and math.isnan(value) else value for name, value in values.items()}


class Python:
    def answer(self, case):
        frame = frame_of(case)
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            try:
                result = vexroc.analyze(frame, state=case.state, tests=case.tests, **question(case))
            except (ValueError, TypeError) as error:
                return Said(str(error))
        cautions = [(one.code, one.text) for one in result.cautions]
        assert [(one.category, str(one.message)) for one in caught] == [
            (vexroc.CautionWarning, text) for _, text in cautions]
        if case.interpolated:
            points = result.records[0].precision_recall
            assert points.interpolated.any() and (pandas.isna(points.thresholds) == points.interpolated).all()
        shared = {"p_value": "p_value", "log10_p": "log10_p", "lower": "ci_lower", "upper": "ci_upper"}
        return Said(None, cautions, [(one.code, one.text) for one in result.notes],
                    [numbers(record.area, area="area", std_error="std_error", positive="n_positive",
                             negative="n_negative", **shared) for record in result.records],
                    [{**numbers(pair, difference="difference", z="z", **shared),
                      **numbers(pair.first, positive="n_positive", negative="n_negative")}
                     for pair in result.comparisons])
