#include "cli/report/ReportPage.h"

#include "cli/Failure.h"
#include "cli/output/Json.h"
#include "cli/report/pagePieces.h"
#include "cli/text/Words.h"
#include "version.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace vexroc {

namespace {

using nlohmann::ordered_json;

std::string cutOffText(double cutOff)
{
    return std::isnan(cutOff) ? "" : readable(cutOff, CellRole::measure);
}

/// [false positives, true positives, cut-off]: the page makes the rest of them.
ordered_json pointData(const CutOffPoint& point)
{
    return {point.falsePositive, point.truePositive, cutOffText(point.cutOff)};
}

ordered_json curveData(const DrawnCurve& curve, bool withCutOff)
{
    ordered_json data{{"name", curve.name},
                      {"legend", curve.legend(withCutOff)},
                      {"positive", curve.positive},
                      {"negative", curve.negative},
                      {"roc", ordered_json::array()},
                      {"best", nullptr},
                      {"precisionRecall", ordered_json::array()}};
    for (const CutOffPoint& point : curve.roc)
        data["roc"].push_back(pointData(point));
    if (curve.best)
        data["best"] = pointData(*curve.best);
    for (const PrecisionRecallPoint& point : curve.precisionRecall)
        if (!std::isnan(point.precision))
            data["precisionRecall"].push_back(
                {point.recall, point.precision, point.interpolated, cutOffText(point.cutOff)});
    return data;
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
    page += "<div id=\"curves\"></div>\n";
    if (const std::string note = thinningNote(curves); !note.empty())
        page += "<p class=\"note\">Thinned: " + htmlText(note) + ".</p>\n";
    for (const Findings::Part& part : findings.tables) {
        page += "<h2>" + htmlText(part.title) + "</h2>\n";
        part.table.write(page);
    }
    std::vector<std::string> warningLines;
    for (const Warning& warning : warnings)
        warningLines.push_back(warning.line());
    page += list("Warnings", warningLines) + list("Notes", notes);
    page += "<h2>How this page was made</h2>\n<pre>" + htmlText(command) + "</pre>\n<p>vexroc "
        + htmlText(programVersion) + "</p>\n";
    page += pagePieces.beforeData;
    ordered_json data = ordered_json::array();
    for (const DrawnCurve& curve : curves)
        data.push_back(curveData(curve, curves.size() > mostCutOffLabels));
    page += json::insidePage(json::dump(data));
    return page.append(pagePieces.afterData);
}

void ReportPage::requireBuilt()
{
    if (pagePieces.afterData.empty())
        throw outputError("--report: this program was built without the libraries of the page; install npm and build "
                          "it again, or use --plot");
}

} // namespace vexroc
