#pragma once

#include "cli/commands/Options.h"
#include "cli/study/HostData.h"
#include "vexrocproc/ROCSetting.h"

#include <string>

namespace vexroc {

/// The options of analyze, as typed.
struct AnalyzeOptions {
    StudyOptions study;
    std::string group;
    std::string select;
    std::string cut;
    bool midPoint = false;
    std::string weight;
    std::string by;
    std::string compare;
    std::string level = "0.95";
    bool biNegative = false;
    bool pr = false;
    bool keilwagen = false;
    bool noCurve = false;
    bool display = false;
    bool best = false;
    std::string curveFile;
    std::string prCurveFile;
    std::string plotFile;
    std::string reportFile;
};

/// What the options ask, as far as they can be understood without the data.
struct AnalyzeRequest {
    Question question;
    Roles roles;
    double level;
    bool allTests;
    bool independent;
    bool needPr;

    /// Lines for people above the results.
    [[nodiscard]] std::vector<std::string> heading(const AnalyzeOptions& options) const;
    /// The same for programs.
    [[nodiscard]] std::vector<Fact> facts(const AnalyzeOptions& options) const;
};

/// Throws a usage error that names the options that do not fit.
AnalyzeRequest parseRequest(const AnalyzeOptions& options);

/// Reads the columns; with --test all, the tests become known by it.
DataTable readData(const AnalyzeOptions& options, AnalyzeRequest& request, const Surroundings& surroundings);

/// The same request to the component, about data that are ready for it.
ROCALG_920::ROCSetting settingFor(const AnalyzeOptions& options, const AnalyzeRequest& request, const HostData& data);

} // namespace vexroc
