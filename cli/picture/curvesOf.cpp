#include "cli/picture/curvesOf.h"

#include "cli/picture/Thinning.h"
#include "cli/study/CurveInference.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace vexroc {

namespace {

/// The Kolmogorov-Smirnov maximum: that of the best cut-offs which the area names.
std::optional<CutOff> cutOffOfMaximum(const TestResult& test)
{
    const auto best = std::ranges::find(test.best, test.area.ksCutOff, &CutOff::value); // exact: the same number
    return best == test.best.end() ? std::nullopt : std::optional(*best);
}

std::vector<std::size_t> pointOf(const RocCurve& roc, const std::optional<CutOff>& cutOff)
{
    for (std::size_t i = 0; cutOff && i < roc.size(); ++i)
        if (roc.cutOffs[i] == cutOff->value && roc.truePositive[i] == cutOff->truePositive
            && roc.falsePositive[i] == cutOff->falsePositive)
            return {i};
    return {};
}

void addRoc(const TestResult& test, const std::optional<CutOff>& marked, DrawnCurve& curve)
{
    std::vector<PathPoint> path;
    for (std::size_t i = 0; i < test.roc.size(); ++i)
        path.push_back({1.0 - test.roc.specificity[i], test.roc.sensitivity[i]});
    const std::vector<std::size_t> always = pointOf(test.roc, marked);
    if (!always.empty())
        curve.best = test.roc.at(always.front());
    curve.rocPoints = path.size();
    for (const std::size_t i : thinned(path, always))
        curve.roc.push_back(test.roc.at(i));
}

void addPrecisionRecall(const TestResult& test, DrawnCurve& curve)
{
    const PrecisionRecallCurve& points = test.precisionRecall;
    std::vector<PathPoint> path;
    for (std::size_t i = 0; i < points.size(); ++i)
        path.push_back({points.recall[i], points.precision[i]});
    curve.precisionRecallPoints = path.size();
    for (const std::size_t i : thinned(path, {})) {
        PrecisionRecallPoint point{.precision = points.precision[i], .recall = points.recall[i]};
        if (const int roc = points.rocPoint[i]; roc != PrecisionRecallCurve::none)
            point.measured = test.roc.at(static_cast<std::size_t>(roc));
        curve.precisionRecall.push_back(point);
    }
}

/// Both rates hold together with the level when each holds with its root.
void addBoxes(const TestResult& test, const Question& question, DrawnCurve& curve)
{
    constexpr std::size_t most = 200;
    Question ofRates = question;
    ofRates.inference.level = std::sqrt(question.inference.level);
    std::vector<PathPoint> path;
    for (const CutOff& point : curve.roc)
        path.push_back({1.0 - point.specificity, point.sensitivity});
    std::vector<double> cutOffs;
    for (const std::size_t i : thinned(path, {}, most))
        cutOffs.push_back(curve.roc[i].value);
    const Watch alone{.cancelRequested = [] { return false; }};
    const CurveOptions wilson;
    const OperatingPoints points = CurveInference(test, ofRates, wilson, alone).points(cutOffs);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Estimate sensitivity = points.at(Measure::sensitivity, i);
        const Estimate specificity = points.at(Measure::specificity, i);
        curve.boxes.push_back({sensitivity.lower, sensitivity.upper, specificity.lower, specificity.upper});
    }
}

} // namespace

void addDrawnCurve(const TestResult& test, const std::string& name, const std::optional<CutOff>& marked,
                   std::vector<DrawnCurve>& curves)
{
    const Area& area = test.area;
    if (std::isnan(area.area))
        return;
    DrawnCurve curve{.name = name,
                     .positive = area.positive,
                     .negative = area.negative,
                     .area = area.area,
                     .lower = area.lower,
                     .upper = area.upper};
    addRoc(test, marked, curve);
    addPrecisionRecall(test, curve);
    curves.push_back(std::move(curve));
}

void addDrawnCurves(const Results& results, const std::string& subject, std::vector<DrawnCurve>& curves,
                    const Question* boxes)
{
    std::set<std::pair<std::string, std::string>> drawn; // test and group
    for (const TestResult& test : results.tests) {
        const Area& area = test.area;
        if (std::isnan(area.area) || !drawn.emplace(area.test, area.group).second)
            continue;
        // A table names test and group in columns of their own; here one name says both.
        const std::string group = area.group.empty() ? "" : ", " + visible(area.group);
        addDrawnCurve(test, subject + visible(area.test) + group, cutOffOfMaximum(test), curves);
        if (boxes != nullptr)
            addBoxes(test, *boxes, curves.back());
    }
}

} // namespace vexroc
