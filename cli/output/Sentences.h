#pragma once

#include "cli/output/InferenceDocuments.h"
#include "cli/study/Question.h"
#include "cli/study/Results.h"

#include <string>
#include <string_view>

namespace vexroc {

// A result as one sentence for a paper, in visible text: estimate, interval with its method and level, p with its
// method, cases, and the program with its version. Empty where there is nothing to say.

std::string sentenceOn(const Question& question, const Area& area);
std::string sentenceOn(const Question& question, const Difference& difference);
/// A row of operating points.
std::string sentenceOn(const Question& question, const CurveOptions& how, const AboutCurve<OperatingPoints>& found,
                       std::size_t row);
std::string sentenceOn(const Question& question, const CurveOptions& how,
                       const AboutCurve<std::vector<BestCutOffs>>& found, const BestCutOffs& best);
std::string sentenceOn(const Question& question, const Band& band, const AboutCurve<PartialArea>& found);
std::string sentenceOn(const Question& question, const CurveOptions& how, const std::string& rule,
                       const AboutCurve<PrecisionRecallArea>& found);

} // namespace vexroc
