#include "cli/picture/curvesOf.h"

#include "cli/picture/Thinning.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace vexroc {

namespace {

CutOffPoint pointAt(const RocCurve& roc, std::size_t i)
{
    return {.cutOff = roc.cutOffs[i],
            .sensitivity = roc.sensitivity[i],
            .specificity = roc.specificity[i],
            .truePositive = roc.truePositive[i],
            .falsePositive = roc.falsePositive[i]};
}

/// The point of the Kolmogorov-Smirnov maximum: that of the best cut-offs which the area names.
std::vector<std::size_t> pointOfMaximum(const TestResult& test)
{
    const auto best = std::ranges::find(test.best, test.area.ksCutOff, &CutOff::value); // exact: the same number
    for (std::size_t i = 0; best != test.best.end() && i < test.roc.size(); ++i)
        if (test.roc.cutOffs[i] == best->value && test.roc.truePositive[i] == best->truePositive
            && test.roc.falsePositive[i] == best->falsePositive)
            return {i};
    return {};
}

void addRoc(const TestResult& test, DrawnCurve& curve)
{
    std::vector<PathPoint> path;
    for (std::size_t i = 0; i < test.roc.size(); ++i)
        path.push_back({1.0 - test.roc.specificity[i], test.roc.sensitivity[i]});
    const std::vector<std::size_t> always = pointOfMaximum(test);
    if (!always.empty())
        curve.best = pointAt(test.roc, always.front());
    curve.rocPoints = path.size();
    for (const std::size_t i : thinned(path, always))
        curve.roc.push_back(pointAt(test.roc, i));
}

void addPrecisionRecall(const TestResult& test, DrawnCurve& curve)
{
    const PrecisionRecallCurve& points = test.precisionRecall;
    std::vector<PathPoint> path;
    for (std::size_t i = 0; i < points.size(); ++i)
        path.push_back({points.recall[i], points.precision[i]});
    curve.precisionRecallPoints = path.size();
    for (const std::size_t i : thinned(path, {})) {
        PrecisionRecallPoint point{.precision = points.precision[i], .recall = points.recall[i], .measured = {}};
        if (const int roc = points.rocPoint[i]; roc != PrecisionRecallCurve::none)
            point.measured = pointAt(test.roc, static_cast<std::size_t>(roc));
        curve.precisionRecall.push_back(point);
    }
}

} // namespace

void addDrawnCurves(const Results& results, const std::string& subject, std::vector<DrawnCurve>& curves)
{
    std::set<std::pair<std::string, std::string>> drawn; // test and group
    for (const TestResult& test : results.tests) {
        const Area& area = test.area;
        if (std::isnan(area.area) || !drawn.emplace(area.test, area.group).second)
            continue;
        // A table names test and group in columns of their own; here one name says both.
        const std::string group = area.group.empty() ? "" : ", " + visible(area.group);
        DrawnCurve curve{.name = subject + visible(area.test) + group,
                         .legend = {},
                         .positive = area.positive,
                         .negative = area.negative,
                         .area = area.area,
                         .lower = area.lower,
                         .upper = area.upper,
                         .roc = {},
                         .best = {},
                         .band = {},
                         .precisionRecall = {},
                         .rocPoints = 0,
                         .precisionRecallPoints = 0};
        addRoc(test, curve);
        addPrecisionRecall(test, curve);
        curves.push_back(std::move(curve));
    }
}

} // namespace vexroc
