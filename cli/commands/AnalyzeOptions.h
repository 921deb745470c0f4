#pragma once

#include "cli/commands/InferenceOptions.h"
#include "cli/commands/QuestionOptions.h"
#include "cli/picture/Picture.h"

#include <string>
#include <vector>

namespace vexroc {

/// Files to write beside the answer; empty for none.
struct AnalysisFileNames {
    std::string curve;
    std::string precisionRecall;
    std::string plot;
    std::string report;

    [[nodiscard]] bool drawn() const { return !plot.empty() || !report.empty(); }
};

/// How the picture of --plot looks, as typed.
struct PlotOptions {
    std::string size;
    bool grey = false;
    bool noTitle = false;
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
};

void addAnalyzeOptions(CLI::App& command, AnalyzeOptions& options);

/// The same, understood as far as it can be without the data.
struct AnalyzeTask : Task {
    bool allTests = false; ///< every column of numbers without another part is a test
    bool bestTable = false;
    AnalysisFileNames files;
    PictureStyle style; ///< of the picture of --plot
};

/// The state among the tests is none of them; as --by it is a usage error.
void keepStateApart(AnalyzeTask& task);

/// Throws a usage error that names the options that do not fit.
AnalyzeTask parseAnalyzeTask(const AnalyzeOptions& options);

} // namespace vexroc
