#include "cli/picture/curvesOf.h"

#include "cli/picture/Thinning.h"
#include "cli/study/Meanings.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <set>
#include <tuple>

namespace vexroc {

namespace {

using ROCALG_920::ROCOutBase;

/// The same bits: a precision of no positive decision is NaN.
bool samePoint(const std::pair<double, double>& a, const std::pair<double, double>& b)
{
    const auto bits = [](double x) { return std::bit_cast<std::uint64_t>(x); };
    return bits(a.first) == bits(b.first) && bits(a.second) == bits(b.second);
}

CutOffPoint pointAt(const ROCOutBase& record, std::size_t i)
{
    const auto& [sensitivity, specificity] = record.getSensitivitySpecificity()[i];
    const double positive = record.getPositiveCount();
    const double negative = record.getNegativeCount();
    return {.cutOff = record.getCutOffPoints()[i],
            .sensitivity = sensitivity,
            .specificity = specificity,
            .truePositive = static_cast<int>(std::lround(sensitivity * positive)),
            .falsePositive = static_cast<int>(std::lround(negative - specificity * negative))};
}

bool isBest(const ROCOutBase& record, std::size_t i)
{
    constexpr double tieTolerance = 1e-14;
    const auto& [sensitivity, specificity] = record.getSensitivitySpecificity()[i];
    const double index = sensitivity - (1.0 - specificity);
    return std::fabs(index - record.getKolmogorovSmirnov().first) <= tieTolerance;
}

void addRoc(const ROCOutBase& record, DrawnCurve& curve)
{
    const auto& rates = record.getSensitivitySpecificity();
    std::vector<PathPoint> path;
    for (const auto& [sensitivity, specificity] : rates)
        path.push_back({1.0 - specificity, sensitivity});
    std::vector<std::size_t> always;
    for (std::size_t i = 0; i < path.size() && always.empty(); ++i)
        if (isBest(record, i) && record.getCutOffPoints()[i] == record.getKolmogorovSmirnov().second)
            always.push_back(i);
    if (!always.empty())
        curve.best = pointAt(record, always.front());
    curve.rocPoints = path.size();
    for (const std::size_t i : thinned(path, always))
        curve.roc.push_back(pointAt(record, i));
}

void addPrecisionRecall(const ROCOutBase& record, DrawnCurve& curve)
{
    const std::vector<PrecisionRecallPoint> points = precisionRecallOf(record);
    std::vector<PathPoint> path;
    for (const PrecisionRecallPoint& point : points)
        path.push_back({point.recall, point.precision});
    curve.precisionRecallPoints = path.size();
    for (const std::size_t i : thinned(path, {}))
        curve.precisionRecall.push_back(points[i]);
}

/// Rows of a table name a test and a group in columns of their own; here one name says both.
std::string nameOf(const ROCOutBase& record, const VexXML_920::VexVarList& variables)
{
    const std::string test = visible(variableName(variables, record.getTestVarInd()));
    return record.getGroupVarInd() < 0 ? test : test + ", " + visible(groupOf(record, variables));
}

} // namespace

std::vector<CutOffPoint> bestCutOffs(const ROCOutBase& record)
{
    std::vector<CutOffPoint> best;
    for (std::size_t i = 0; i < record.getSensitivitySpecificity().size(); ++i)
        if (isBest(record, i))
            best.push_back(pointAt(record, i));
    return best;
}

std::vector<PrecisionRecallPoint> precisionRecallOf(const ROCOutBase& record)
{
    // A record keeps the measured points as a list of their own, in the same order: one per cut-off.
    const auto& measured = record.getPrecisionRecallCoordinates();
    const std::size_t cutOffs = record.getCutOffPoints().size();
    std::vector<PrecisionRecallPoint> points;
    std::size_t next = 0;
    for (const auto& point : record.getPrecisionRecallDraw()) {
        const bool isMeasured = next < std::min(measured.size(), cutOffs) && samePoint(point, measured[next]);
        points.push_back({.precision = point.first,
                          .recall = point.second,
                          .measured = isMeasured ? std::optional(pointAt(record, next)) : std::nullopt});
        next += isMeasured ? 1 : 0;
    }
    return points;
}

std::vector<DrawnCurve> drawnCurves(const ROCALG_920::ROCOutputs& results, const VexXML_920::VexVarList& variables)
{
    std::vector<DrawnCurve> curves;
    std::set<std::tuple<int, int, double, int>> drawn; // test and cases
    for (const ROCOutBase* const record : results.getROCBaseStats()) {
        if (std::isnan(record->getArea()))
            continue;
        const bool grouped = record->getGroupVarInd() >= 0;
        if (!drawn
                 .emplace(record->getTestVarInd(), record->getGroupVarInd(), grouped ? record->getGroupValue() : 0.0,
                          grouped ? record->getGroupValueOperation() : 0)
                 .second)
            continue;
        DrawnCurve curve{.name = nameOf(*record, variables),
                         .legend = {},
                         .positive = record->getPositiveCount(),
                         .negative = record->getNegativeCount(),
                         .area = record->getArea(),
                         .lower = record->getCILower(),
                         .upper = record->getCIUpper(),
                         .roc = {},
                         .best = {},
                         .band = {},
                         .precisionRecall = {},
                         .rocPoints = 0,
                         .precisionRecallPoints = 0};
        addRoc(*record, curve);
        addPrecisionRecall(*record, curve);
        curves.push_back(std::move(curve));
    }
    return curves;
}

} // namespace vexroc
