#pragma once

#include "cli/output/Report.h"
#include "cli/picture/DrawnCurve.h"
#include "cli/study/AnalyzeRequest.h"
#include "host/VexStatus.h"
#include "vexrocproc/RocAlgorithm.h"

#include <optional>
#include <string>
#include <vector>

namespace vexroc {

/// What came of one analysis, or of one per value, before it is written.
struct Answer {
    std::vector<Findings::Part> tables;     ///< in the format that is asked for
    std::vector<Findings::Part> pageTables; ///< the same for --report
    std::optional<Table> curve;             ///< for --curve
    std::optional<Table> precisionRecall;   ///< for --pr-curve
    std::vector<DrawnCurve> curves;         ///< for --plot and --report
    std::string notDrawn;                   ///< which curves were left out of them
    std::size_t positive = 0;               ///< cases used
    std::size_t negative = 0;
    std::string display; ///< the component's own text, where that is asked for
    std::vector<std::string> notes;
    std::vector<Warning> warnings;
    std::optional<Warning> failure; ///< why there is no result; then only tables, notes and warnings are filled

    /// Makes the curves of all analyses, now together, ready for pictures, with a note where some are left out.
    void prepareForDrawing();
};

/// Puts a finished run into words and tables.
Answer answerOf(const AnalyzeOptions& options, const AnalyzeRequest& request, const HostData& data,
                const ROCALG_920::RocAlgorithm& algorithm, const VexCommon_920::VexStatus& status);

/// Puts the analyses of several values together: their tables behind a column with the value, their words behind it.
/// A value without a result leaves a warning; when none has one, that is the failure.
class ValueAnswers {
public:
    explicit ValueAnswers(std::string column) : column_(std::move(column)) {}

    void add(const std::string& value, Answer answer);
    /// `missing`: rows without a value.
    Answer take(std::size_t missing);

private:
    std::string column_;
    Answer all_;
    std::optional<Warning> lastFailure_;
    int results_ = 0;
};

} // namespace vexroc
