#include "cli/output/inferenceWords.h"

#include "cli/output/questionWords.h"
#include "cli/words/Numbers.h"
#include "cli/words/Readable.h"
#include "cli/words/VisibleText.h"

#include <set>

namespace vexroc {

namespace {

/// As readers see them; none with probability weights, which each row tells.
std::set<std::string> samplePrevalences(const Analysis& analysis)
{
    std::set<std::string> all;
    if (analysis.question.hasProbabilityWeights())
        return all;
    for (const ValueResults& value : analysis.values)
        for (const TestResult& test : value.results.tests)
            if (test.area.positive > 0 && test.area.negative > 0)
                all.insert(readable(samplePrevalence(test.area), CellRole::statistic));
    return all;
}

bool isBootstrap(std::string_view interval)
{
    return interval == "bootstrap" || interval == "bca" || interval == "btii";
}

} // namespace

void addIntervalFacts(std::vector<Fact>& facts, const Question& question, const std::string& interval)
{
    const Inference& asked = question.inference;
    facts.emplace_back("interval", interval);
    facts.emplace_back("confidence_level", asked.level);
    if (!isBootstrap(interval))
        return;
    facts.emplace_back("replicates", static_cast<unsigned long long>(asked.replicates));
    facts.emplace_back("seed", asked.seed);
}

std::string proportionWord(const CurveOptions& how) { return how.proportion == "exact" ? "Clopper-Pearson" : "Wilson"; }

bool isOnePrevalence(const Analysis& analysis, const CurveOptions& how)
{
    return how.prevalence || samplePrevalences(analysis).size() == 1;
}

std::string prevalenceWords(const Analysis& analysis, const CurveOptions& how)
{
    if (how.prevalence)
        return "at the prevalence " + shortest(*how.prevalence);
    const std::set<std::string> all = samplePrevalences(analysis);
    return "at the sample's prevalence" + (all.size() == 1 ? " " + *all.begin() : "");
}

double prevalenceOf(const TestResult& test, const CurveOptions& how)
{
    return how.prevalence ? *how.prevalence : samplePrevalence(test.area);
}

void addPrevalenceFact(std::vector<Fact>& facts, const CurveOptions& how)
{
    if (how.prevalence)
        facts.emplace_back("prevalence", *how.prevalence);
}

std::string bandWords(const Band& band)
{
    const std::string ends = shortest(band.from) + " to " + shortest(band.to);
    if (band.rate != "fpr")
        return "sensitivities " + ends;
    return "false positive rates " + ends + " (specificity " + readable(1.0 - band.to, CellRole::measure) + " to "
        + readable(1.0 - band.from, CellRole::measure) + ')';
}

std::string nameOf(const Question& question, const Area& area, std::string_view value)
{
    std::string name = visible(area.test);
    if (!area.group.empty())
        name += " where " + visible(area.group);
    if (!question.by.empty())
        name += (area.group.empty() ? " where " : " and ") + visible(question.by) + " = " + visible(value);
    return name;
}

Document documentOn(const Analysis& analysis, std::string_view command, const std::string& title)
{
    const Question& question = analysis.question;
    Document document{.command = command,
                      .heading = {title, questionHeading(question, *analysis.labels)},
                      .question = questionFacts(question, *analysis.labels)};
    addSlices(question, document.heading);
    addSlices(question, document.question);
    return document;
}

} // namespace vexroc
