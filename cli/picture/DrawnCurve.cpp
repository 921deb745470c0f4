#include "cli/picture/DrawnCurve.h"

#include "cli/picture/Thinning.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numeric>
#include <utility>

namespace vexroc {

namespace {

/// Texts that occur more than once get the number of their occurrence.
void makeDistinct(std::vector<DrawnCurve>& curves, std::string DrawnCurve::*text)
{
    std::map<std::string, int> occurrences;
    for (const DrawnCurve& curve : curves)
        ++occurrences[curve.*text];
    std::map<std::string, int> numbers;
    for (DrawnCurve& curve : curves) {
        const std::string common = curve.*text;
        if (occurrences[common] < 2)
            continue;
        do
            curve.*text = common + " (" + std::to_string(++numbers[common]) + ")";
        while (occurrences.contains(curve.*text));
    }
}

/// Drops the smallest areas; of equal ones, those that come last.
void keepLargest(std::vector<DrawnCurve>& curves)
{
    if (curves.size() <= mostDrawnCurves)
        return;
    std::vector<std::size_t> order(curves.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t c) { return curves[c].area; });
    order.resize(mostDrawnCurves);
    std::ranges::sort(order);
    std::vector<DrawnCurve> kept;
    for (const std::size_t c : order)
        kept.push_back(std::move(curves[c]));
    curves = std::move(kept);
}

} // namespace

std::string DrawnCurve::areaText() const
{
    const auto rounded = [](double value) { return readable(value, CellRole::statistic); };
    return rounded(area) + (std::isnan(lower) ? "" : " [" + rounded(lower) + ", " + rounded(upper) + "]");
}

std::string DrawnCurve::cutOffText(const CutOff& point) const
{
    return vexroc::cutOffText(point.value, {.positive = callsOf(point, positive, negative)});
}

std::string prepareForDrawing(std::vector<DrawnCurve>& curves)
{
    const std::size_t all = curves.size();
    keepLargest(curves);
    makeDistinct(curves, &DrawnCurve::name);
    constexpr std::size_t longestLegend = 80;
    for (DrawnCurve& curve : curves)
        curve.legend = bothEnds(curve.name, longestLegend);
    makeDistinct(curves, &DrawnCurve::legend);
    if (all == curves.size())
        return "";
    return "only the " + std::to_string(curves.size()) + " largest areas of " + std::to_string(all)
        + " are drawn; for the others, analyze fewer tests or values at a time";
}

std::string thinningNote(const std::vector<DrawnCurve>& curves)
{
    std::size_t most = 0;
    for (const DrawnCurve& curve : curves)
        most = std::max({most, curve.rocPoints > curve.roc.size() ? curve.rocPoints : 0,
                         curve.precisionRecallPoints > curve.precisionRecall.size() ? curve.precisionRecallPoints : 0});
    if (most == 0)
        return "";
    return "curves of up to " + std::to_string(most) + " points are drawn with about " + std::to_string(mostDrawnPoints)
        + "; the numbers come from all points";
}

bool Drawing::hasPrecisionRecall() const
{
    return std::ranges::any_of(curves, [](const DrawnCurve& curve) { return !curve.precisionRecall.empty(); });
}

std::vector<std::vector<std::string>> Drawing::legend() const
{
    std::vector<std::vector<std::string>> rows{{"curve", "area [" + interval + ']', "cut-off at the dot"}};
    for (const DrawnCurve& curve : curves)
        rows.push_back({curve.legend, curve.areaText(), curve.cutOffText()});
    if (!hasPrecisionRecall())
        return rows;
    rows.front().emplace_back("prevalence");
    for (std::size_t c = 0; c < curves.size(); ++c)
        rows[c + 1].push_back(readable(curves[c].prevalence(), CellRole::statistic));
    return rows;
}

} // namespace vexroc
