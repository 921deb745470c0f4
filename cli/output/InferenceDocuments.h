#pragma once

#include "cli/output/Documents.h"
#include "cli/study/CurveInference.h"

#include <string>
#include <vector>

namespace vexroc {

// What is said of answers beyond the areas; `how` is how they were asked for.

template <class Answer>
using Answers = std::vector<AboutCurve<Answer>>;

/// `isNamed`: the cut-offs are those that the user names, not all of the curve.
Document operatingPointsDocument(const Analysis& analysis, const CurveOptions& how, bool isNamed,
                                 const Answers<OperatingPoints>& found);
Document bestCutOffsDocument(const Analysis& analysis, const CurveOptions& how,
                             const Answers<std::vector<BestCutOffs>>& found);
Document partialAreaDocument(const Analysis& analysis, const CurveOptions& how, const Band& band,
                             const Answers<PartialArea>& found);
Document precisionRecallAreaDocument(const Analysis& analysis, const CurveOptions& how, const std::string& rule,
                                     const Answers<PrecisionRecallArea>& found);
Document netBenefitDocument(const Analysis& analysis, const CurveOptions& how, const Answers<NetBenefit>& found);

// How the areas of precision and recall of a whole analysis are made.
inline constexpr const char* precisionRecallRule = "integral";
inline constexpr const char* precisionRecallInterval = "logit";
/// They as a part of its document.
Document::Part precisionRecallAreaPart(const Analysis& analysis);

} // namespace vexroc
