#include "cli/picture/ReportPage.h"

#include "cli/output/Json.h"
#include "cli/picture/PanelLabels.h"
#include "cli/picture/pagePieces.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"
#include "version.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace vexroc {

namespace {

using nlohmann::ordered_json;

std::string cutOffText(double cutOff) { return std::isnan(cutOff) ? "" : readable(cutOff, CellRole::measure); }

/// [false positives, true positives, cut-off]: the page makes the rest of them.
ordered_json pointData(const CutOffPoint& point)
{
    return {point.falsePositive, point.truePositive, cutOffText(point.cutOff)};
}

ordered_json curveData(const DrawnCurve& curve)
{
    ordered_json data{{"name", curve.name},
                      {"legend", curve.legend},
                      {"area", curve.areaText()},
                      {"cutOff", curve.cutOffText()},
                      {"prevalence", readable(curve.prevalence(), CellRole::statistic)},
                      {"positive", curve.positive},
                      {"negative", curve.negative},
                      {"roc", ordered_json::array()},
                      {"best", nullptr},
                      {"precisionRecall", ordered_json::array()}};
    for (const CutOffPoint& point : curve.roc)
        data["roc"].push_back(pointData(point));
    if (curve.best)
        data["best"] = pointData(*curve.best);
    for (const auto& [precision, recall, measured] : curve.precisionRecall) {
        if (std::isnan(precision))
            continue;
        ordered_json point{recall, precision};
        if (measured)
            point.push_back(pointData(*measured));
        data["precisionRecall"].push_back(std::move(point));
    }
    return data;
}

ordered_json index(const std::optional<std::size_t>& curve)
{
    return curve ? ordered_json(*curve) : ordered_json(nullptr);
}

ordered_json labelData(const std::vector<PanelLabel>& labels)
{
    ordered_json data = ordered_json::array();
    for (const PanelLabel& label : labels)
        data.push_back({{"text", label.text},
                        {"x", label.x},
                        {"y", label.y},
                        {"width", label.width},
                        {"curve", index(label.curve)}});
    return data;
}

/// All that the script of the page draws.
ordered_json pageData(const Drawing& drawing)
{
    ordered_json curves = ordered_json::array();
    for (const DrawnCurve& curve : drawing.curves)
        curves.push_back(curveData(curve));
    const std::vector<PrevalenceLine> lines = prevalenceLines(drawing.curves);
    ordered_json prevalences = ordered_json::array();
    for (const auto& [prevalence, curve] : lines)
        prevalences.push_back({{"y", prevalence}, {"curve", index(curve)}});
    return {{"curves", std::move(curves)},           {"areaHeading", drawing.areaHeading()},
            {"cutOffHeading", cutOffHeading},        {"cutOffLabels", labelData(cutOffLabels(drawing.curves))},
            {"prevalences", std::move(prevalences)}, {"prevalenceLabels", labelData(prevalenceLabels(lines))}};
}

std::string list(const char* title, const std::vector<std::string>& lines)
{
    if (lines.empty())
        return "";
    std::string html = std::string("<h2>") + title + "</h2>\n<ul>\n";
    for (const std::string& line : lines)
        html += "<li>" + htmlText(line) + "</li>\n";
    return html + "</ul>\n";
}

} // namespace

std::string ReportPage::html() const
{
    std::string page(pagePieces.beforeContents);
    page += "<h1>" + htmlText(findings.heading.front()) + "</h1>\n";
    for (std::size_t i = 1; i < findings.heading.size(); ++i)
        page += "<p>" + htmlText(findings.heading[i]) + "</p>\n";
    page += "<div id=\"curves\"></div>\n<div id=\"legend\"></div>\n";
    for (const std::string& note : drawing.notes)
        page += "<p class=\"note\">" + htmlText(note) + ".</p>\n";
    for (const Findings::Part& part : findings.tables)
        part.table.writeHtml(part.title, page);
    std::vector<std::string> warningLines;
    for (const Warning& warning : warnings)
        warningLines.push_back(warning.line());
    page += list("Warnings", warningLines) + list("Notes", notes);
    page += "<h2>How this page was made</h2>\n<pre>" + htmlText(command) + "</pre>\n<p>vexroc "
        + htmlText(programVersion) + "</p>\n";
    page += pagePieces.beforeData;
    page += json::insidePage(json::dump(pageData(drawing)));
    return page.append(pagePieces.afterData);
}

void ReportPage::requirePossible(const std::string& file)
{
    if (!endsWithIgnoringCase(file, ".html") && !endsWithIgnoringCase(file, ".htm"))
        throw usageError("--report " + inQuotes(file)
                         + ": expected a name that ends in .html or .htm; --plot makes "
                           "pictures, --output keeps the tables");
    if (pagePieces.afterData.empty())
        throw outputError("--report: this program was built without the libraries of the page; install npm and build "
                          "it again, or use --plot");
}

} // namespace vexroc
