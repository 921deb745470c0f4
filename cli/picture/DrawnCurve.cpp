#include "cli/picture/DrawnCurve.h"

#include "cli/picture/Thinning.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <map>

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

} // namespace

std::string DrawnCurve::areaText() const
{
    const auto rounded = [](double value) { return readable(value, CellRole::statistic); };
    return rounded(area) + (std::isnan(lower) ? "" : " [" + rounded(lower) + ", " + rounded(upper) + "]");
}

std::string DrawnCurve::cutOffText() const { return best ? readable(best->value, CellRole::measure) : ""; }

std::string prepareForDrawing(std::vector<DrawnCurve>& curves)
{
    const std::size_t all = curves.size();
    if (all > mostDrawnCurves)
        curves.erase(curves.begin() + mostDrawnCurves, curves.end());
    makeDistinct(curves, &DrawnCurve::name);
    constexpr std::size_t longestLegend = 80;
    for (DrawnCurve& curve : curves)
        curve.legend = bothEnds(curve.name, longestLegend);
    makeDistinct(curves, &DrawnCurve::legend);
    if (all == curves.size())
        return "";
    return "only the first " + std::to_string(curves.size()) + " of " + std::to_string(all)
        + " curves are drawn; for the others, analyze fewer tests or values at a time";
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
    std::vector<std::vector<std::string>> rows{
        {"curve", "area [" + readable(100.0 * level, CellRole::measure) + " % confidence interval]",
         "cut-off at the dot"}};
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
