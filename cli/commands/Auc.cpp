#include "cli/commands/Commands.h"
#include "cli/commands/Options.h"
#include "cli/commands/Outcome.h"
#include "cli/output/ResultColumns.h"
#include "cli/words/VisibleText.h"

#include <vexrocproc/arraycalls.h>

#include <CLI/CLI.hpp>

#include <array>
#include <memory>

namespace vexroc {

namespace {

struct AucOptions {
    StudyOptions study;
    std::string level = "0.95";
    bool biNegative = false;
};

constexpr std::array caseColumns{
    TableColumn{"test", "test", CellRole::name},
    TableColumn{"positive", "positive", CellRole::count},
    TableColumn{"negative", "negative", CellRole::count},
    TableColumn{"left_out", "left out", CellRole::count},
};

Report runAuc(const AucOptions& options, const Surroundings& surroundings)
{
    const Question question = parseQuestion(options.study);
    const double level = parseLevel(options.level);
    const char* const distribution = options.biNegative ? "bi-negative" : "nonparam";
    const Study study = readStudy(question, std::nullopt, surroundings);

    Report report;
    Table table(question.format, joined({caseColumns, areaColumns}));
    for (const std::string& test : question.tests) {
        const Cases cases = study.completeCases({&test, 1});
        const auc_res result = auc(cases.states.data(), cases.values[0].data(), cases.count(), nullptr,
                                   question.include, question.larger, distribution, level);
        requireAnalysed(result, cases);
        table.addRow({test, result.posCount, result.negCount, double(cases.leftOut), result.area, result.stdError,
                      result.asymptoticSig, result.ciLower, result.ciUpper});
        addAreaNotes(visible(test), outcomeOf(cases, result), report.notes);
        addAreaCautions(visible(test), {result.area, result.stdError, result.ciUpper, options.study.smaller},
                        report.notes);
        if (options.biNegative)
            addBiNegativeNotes(visible(test), cases, report.notes);
    }
    Findings findings{
        .format = question.format,
        .command = "auc",
        .heading = {"Area under the ROC curve", question.heading(), standardErrorHeading(options.biNegative, level)},
        .question = question.facts(),
        .tables = {{"areas", "", std::move(table)}}};
    addInference(findings.question, standardErrorWord(options.biNegative), level);
    report.text = textOf(findings, report.notes);
    report.file = question.output;
    return report;
}

} // namespace

Action addAuc(CLI::App& command)
{
    const auto options = std::make_shared<AucOptions>();
    addStudyOptions(command, options->study);
    addLevelOption(command, options->level);
    addBiNegativeOption(command, options->biNegative);
    command.footer("Example: vexroc auc data.csv --state diagnosis=malignant --test radius_mean,texture_mean");
    return [options](const Surroundings& surroundings) { return runAuc(*options, surroundings); };
}

} // namespace vexroc
