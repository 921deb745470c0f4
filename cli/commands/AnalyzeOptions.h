#pragma once

#include "cli/commands/InferenceOptions.h"
#include "cli/commands/PlotOptions.h"
#include "cli/commands/QuestionOptions.h"

#include <string>
#include <vector>

namespace vexroc {

/// Files to write beside the answer; empty for none.
struct AnalysisFileNames {
    std::string curve;
    std::string precisionRecall;
    std::string report;
};

/// The options of analyze, as typed.
struct AnalyzeOptions {
    QuestionOptions question;
    GroupOptions groups;
    std::string cut;
    bool midPoint = false;
    std::string weight;
    std::string weightKind;
    std::string by;
    std::string compare;
    std::string cases;
    InferenceOptions inference;
    bool pr = false;
    bool keilwagen = false;
    bool noCurve = false;
    bool best = false;
    std::string sort;
    AnalysisFileNames files;
    PlotOptions plot;
    bool rectangles = false;
};

void addAnalyzeOptions(CLI::App& command, AnalyzeOptions& options);

/// The same, understood as far as it can be without the data.
struct AnalyzeTask : Task {
    bool allTests = false; ///< every column of numbers without another part is a test
    bool bestTable = false;
    bool precisionRecallAreas = false;
    AnalysisFileNames files;
    PlannedPicture picture{{}}; ///< of --plot
    bool rectangles = false;    ///< around the points of the curves that are drawn

    [[nodiscard]] bool isDrawn() const { return picture.isWanted() || !files.report.empty(); }
};

/// The state among the tests is none of them; as --by it is a usage error.
void keepStateApart(AnalyzeTask& task);

/// Throws a usage error that names the options that do not fit.
AnalyzeTask parseAnalyzeTask(const AnalyzeOptions& options);

} // namespace vexroc
