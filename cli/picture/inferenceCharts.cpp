#include "cli/picture/inferenceCharts.h"

#include <algorithm>

namespace vexroc {

namespace {

std::string named(const std::string& line, const std::string& curve)
{
    return curve.empty() ? line : std::string(curve).append(": ").append(line);
}

ChartLine rateLine(const OperatingPoints& points, Measure measure, std::string name)
{
    ChartLine line{.name = std::move(name), .points = {}};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto [value, lower, upper] = points.at(measure, i);
        line.points.push_back({points.cutOffs[i], value});
        line.lower.push_back(lower);
        line.upper.push_back(upper);
    }
    return line;
}

ChartLine benefitLine(const std::vector<double>& thresholds, const std::vector<double>& benefit, std::string name,
                      bool isReference)
{
    ChartLine line{.name = std::move(name), .points = {}, .isReference = isReference};
    for (std::size_t i = 0; i < thresholds.size(); ++i)
        line.points.push_back({thresholds[i], benefit[i]});
    std::ranges::sort(line.points, {}, &PathPoint::x);
    return line;
}

} // namespace

Chart operatingPointsChart(const std::vector<NamedAnswer<OperatingPoints>>& curves)
{
    Chart chart{.title = "Sensitivity and specificity", .x = "cut-off", .y = "share", .lines = {}, .yIsShare = true};
    for (const auto& [name, points] : curves) {
        chart.lines.push_back(rateLine(*points, Measure::sensitivity, named("sensitivity", name)));
        chart.lines.push_back(rateLine(*points, Measure::specificity, named("specificity", name)));
    }
    return chart;
}

Chart netBenefitChart(const std::vector<NamedAnswer<NetBenefit>>& curves)
{
    Chart chart{.title = "Net benefit", .x = "threshold of risk", .y = "net benefit", .lines = {}};
    double most = 0.0;
    for (const auto& [name, benefit] : curves) {
        chart.lines.push_back(benefitLine(benefit->thresholds, benefit->model, name.empty() ? "model" : name, false));
        most = std::max(most, std::ranges::max(benefit->model));
    }
    chart.yLeast = -0.2 * most; // at high thresholds harm has no bound
    std::vector<const std::vector<double>*> known;
    for (const auto& [name, benefit] : curves) {
        const auto isSame = [&all = benefit->treatAll](const std::vector<double>* other) { return *other == all; };
        if (std::ranges::any_of(known, isSame)) // exact
            continue;
        known.push_back(&benefit->treatAll);
        chart.lines.push_back(benefitLine(benefit->thresholds, benefit->treatAll, "treat all", true));
        if (known.size() > 1)
            chart.lines.back().name = named("treat all", name);
    }
    if (!curves.empty()) {
        const std::vector<double>& thresholds = curves.front().answer->thresholds;
        chart.lines.push_back(benefitLine(thresholds, std::vector<double>(thresholds.size(), 0.0), "treat none", true));
    }
    return chart;
}

} // namespace vexroc
