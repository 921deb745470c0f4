#pragma once

#include "cli/output/Document.h"
#include "cli/study/CurveInference.h"
#include "cli/study/Question.h"
#include "cli/study/Results.h"
#include "cli/study/Study.h"

#include <memory>
#include <optional>
#include <vector>

namespace vexroc {

// What is said of the results of each kind of question.

/// Areas, each test for itself.
Document areaDocument(const Question& question, const Results& results);
/// Differences, of tests on the same cases or of a test between two groups.
Document comparisonDocument(const Question& question, const Results& results);
/// Points of ROC curves.
Document curveDocument(const Question& question, const Results& results);
/// Points of precision-recall curves.
Document precisionRecallDocument(const Question& question, const Results& results);

/// A whole analysis, of all rows or one for each value of a column.
struct Analysis {
    const Question& question;
    std::vector<ValueResults> values = {}; ///< with one value, the empty text, when the question has no column `by`
    std::shared_ptr<const CaseLabels> labels = {};
    bool bestTable = false;                                                 ///< with the best cut-offs
    std::vector<AboutCurve<PrecisionRecallArea>> precisionRecallAreas = {}; ///< of all curves, or none

    [[nodiscard]] bool anyResult() const;
    /// Why there is no result at all: of the last value that failed, when all did.
    [[nodiscard]] std::optional<RunMessage> failure() const;
    /// The cases of one state of all values with a result.
    [[nodiscard]] long long cases(long long RowCounts::*state) const;
};

Document analysisDocument(const Analysis& analysis);
/// Tables of all points, for files of their own.
Table curvePoints(const Analysis& analysis);
Table precisionRecallPoints(const Analysis& analysis);

/// "Positive: diagnosis = malignant (212); negative: benign (357); larger values are more positive", with the rows that
/// hold each value.
std::string questionHeading(const Question& question, const CaseLabels& labels);

} // namespace vexroc
