#include "cli/output/Sentences.h"

#include "cli/output/inferenceWords.h"
#include "cli/output/questionWords.h"
#include "cli/words/Numbers.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"
#include "cli/words/version.h"

#include <cmath>

namespace vexroc {

namespace {

std::string shown(double value) { return readable(value, CellRole::statistic); }

/// "radius_mean for diagnosis = malignant where sex = female".
std::string subject(const Question& question, const Area& area, std::string_view value = {})
{
    const StateChoice& state = question.state.choice;
    std::string positive;
    for (const std::string& text : state.positive)
        positive += (positive.empty() ? "" : ", ") + text;
    const std::string is = state.sign.empty() ? " = " + positive : ' ' + state.sign + ' ' + state.bound;
    std::string name = nameOf(question, area, value);
    return name.insert(visible(area.test).size(), " for " + visible(question.state.column + is));
}

std::string percent(const Question& question)
{
    return readable(100.0 * question.inference.level, CellRole::measure) + "%";
}

/// "0.9170 to 0.9580".
std::string range(double lower, double upper)
{
    return std::isnan(lower) || std::isnan(upper) ? "not defined" : shown(lower) + " to " + shown(upper);
}

/// "95% score interval 0.9170 to 0.9580".
std::string intervalOf(const Question& question, std::string_view interval, const Estimate& estimate)
{
    return percent(question) + ' ' + intervalInWords(interval) + " interval " + range(estimate.lower, estimate.upper);
}

std::string casesOf(const Area& area)
{
    return std::to_string(area.positive) + " positive and " + std::to_string(area.negative) + " negative cases";
}

std::string program() { return "vexroc " + std::string(programVersion); }

/// "p = 0.0123", "p < 0.0001".
std::string pOf(double p)
{
    const std::string text = readable(p, CellRole::pValue);
    return text.starts_with('<') ? "p < " + text.substr(1) : "p = " + text;
}

std::string testWord(std::string_view method)
{
    return method == "mann-whitney-exact" ? "exact Mann-Whitney test"
        : method == "mann-whitney"        ? "Mann-Whitney test"
        : method == "wald-t"              ? "Wald test with Student's t"
                                          : "Wald test";
}

std::string alternativeOf(const Inference& inference)
{
    return inference.alternative == "two-sided" ? "two-sided" : "one-sided, " + inference.alternative;
}

/// "sensitivity 0.7594 (161 of 212; 95% Wilson interval 0.6976 to 0.8124)".
std::string rateOf(const OperatingPoints& points, Measure measure, std::size_t row, long long count, long long of,
                   const std::string& interval)
{
    const Estimate rate = points.at(measure, row);
    return shown(rate.value) + " (" + std::to_string(count) + " of " + std::to_string(of) + "; " + interval
        + range(rate.lower, rate.upper) + ')';
}

/// "a sensitivity of ... and a specificity of ...".
std::string ratesOf(const Question& question, const CurveOptions& how, const Area& area, const OperatingPoints& points,
                    std::size_t row)
{
    return "a sensitivity of "
        + rateOf(points, Measure::sensitivity, row, points.truePositive[row], area.positive,
                 percent(question) + ' ' + proportionWord(how) + " interval ")
        + " and a specificity of "
        + rateOf(points, Measure::specificity, row, points.trueNegative[row], area.negative, "");
}

std::string cutOffOf(const TestResult& test, const OperatingPoints& points, std::size_t row)
{
    return cutOffText(points.cutOffs[row], points.readingOf(test, row));
}

std::string criterionWords(const BestCutOffs& best)
{
    return best.fixesRate() ? visible(best.criterion) : best.criterion + " (" + shown(best.value) + ')';
}

} // namespace

std::string sentenceOn(const Question& question, const Area& area)
{
    const Inference& asked = question.inference;
    const std::string name = subject(question, area);
    if (std::isnan(area.area))
        return "The area under the ROC curve of " + name + " is not defined (" + casesOf(area) + "; " + program()
            + ").";
    return "The area under the ROC curve of " + name + " was " + shown(area.area) + " ("
        + intervalOf(question, area.interval, {area.area, area.lower, area.upper}) + "; " + pOf(area.pValue) + ", "
        + testWord(area.pMethod) + " against " + shortest(asked.nullArea) + ", " + alternativeOf(asked) + "; "
        + casesOf(area) + "; " + program() + ").";
}

std::string sentenceOn(const Question& question, const Difference& difference)
{
    const bool paired = question.comparison == Comparison::paired;
    const Estimate d{difference.difference, difference.lower, difference.upper};
    const std::string cases =
        paired ? casesOf(difference.first) : casesOf(difference.first) + " against " + casesOf(difference.second);
    return "The areas under the ROC curves of " + subject(question, difference.first) + " ("
        + shown(difference.first.area) + ") and " + nameOf(question, difference.second) + " ("
        + shown(difference.second.area) + ") differed by " + shown(d.value) + " (" + intervalOf(question, "wald", d)
        + "; " + pOf(difference.pValue) + ", Wald test with standard errors of "
        + errorInWords(question.errorOfDifferences()) + ", " + alternativeOf(question.inference) + "; " + cases + "; "
        + program() + ").";
}

std::string sentenceOn(const Question& question, const CurveOptions& how, const AboutCurve<OperatingPoints>& found,
                       std::size_t row)
{
    const auto& [value, test, points] = found;
    return "At the cut-off " + cutOffOf(*test, points, row) + ", " + subject(question, test->area, value) + " had "
        + ratesOf(question, how, test->area, points, row) + " (" + program() + ").";
}

std::string sentenceOn(const Question& question, const CurveOptions& how,
                       const AboutCurve<std::vector<BestCutOffs>>& found, const BestCutOffs& best)
{
    const auto& [value, test, criteria] = found;
    const std::string name = subject(question, test->area, value);
    if (best.chosen == BestCutOffs::npos)
        return "No cut-off of " + name + " meets the criterion " + visible(best.criterion) + " (" + casesOf(test->area)
            + "; " + program() + ").";
    std::string sentence = "By the criterion " + criterionWords(best) + ", the best cut-off of " + name + " was "
        + cutOffOf(*test, best.ties, best.chosen);
    if (best.ties.size() > 1)
        sentence += ", of " + std::to_string(best.ties.size()) + " tied ones";
    sentence += ", with " + ratesOf(question, how, test->area, best.ties, best.chosen);
    if (best.fixesRate())
        sentence += "; allowing for the choice of the cut-off, the " + std::string(best.rateName()) + " has the "
            + intervalOf(question, best.interval, best.rate);
    return sentence + " (cut-off and rates from the same data; " + program() + ").";
}

std::string sentenceOn(const Question& question, const Band& band, const AboutCurve<PartialArea>& found)
{
    const auto& [value, test, a] = found;
    return "The partial area under the ROC curve of " + subject(question, test->area, value) + " over "
        + bandWords(band) + " was " + shown(a.area.value) + " (" + intervalOf(question, a.interval, a.area)
        + "; standardized " + shown(a.standardized.value) + ", " + range(a.standardized.lower, a.standardized.upper)
        + "; " + casesOf(test->area) + "; " + program() + ").";
}

std::string sentenceOn(const Question& question, const CurveOptions& how, const std::string& rule,
                       const AboutCurve<PrecisionRecallArea>& found)
{
    const auto& [value, test, a] = found;
    return "The area under the precision-recall curve of " + subject(question, test->area, value) + " (rule " + rule
        + ") was " + shown(a.area.value) + " (" + intervalOf(question, a.interval, a.area) + ") at the "
        + (how.prevalence ? "" : "sample's ") + "prevalence " + shown(prevalenceOf(*test, how)) + " ("
        + casesOf(test->area) + "; " + program() + ").";
}

} // namespace vexroc
