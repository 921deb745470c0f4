#include "cli/study/Answer.h"

#include "cli/commands/Outcome.h"
#include "cli/picture/curvesOf.h"
#include "cli/study/Meanings.h"
#include "cli/study/ResultTables.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace vexroc {

namespace {

using ROCALG_920::ROCOutBase;
using ROCALG_920::ROCOutputs;
using ROCALG_920::RocAlgorithm;

/// Fills the answer of one run.
class AnswerMaker {
public:
    AnswerMaker(const AnalyzeOptions& options, const AnalyzeRequest& request, const HostData& data,
                const RocAlgorithm& algorithm)
        : options_(options), request_(request), data_(data), algorithm_(algorithm)
    {
        answer_.warnings = inWords(algorithm.GetWarningMessages(), data.variables);
    }

    Answer failed(const VexCommon_920::VexStatus& status)
    {
        addRowNote();
        answer_.failure = inWords(status);
        answer_.tables = tablesWithoutResult(request_.question.format);
        if (!options_.reportFile.empty())
            answer_.pageTables = tablesWithoutResult(OutputFormat::html);
        return std::move(answer_);
    }

    Answer done()
    {
        const ROCOutputs& results = *algorithm_.GetOutputStats();
        addNotes(results);
        answer_.positive = data_.rows.positive;
        answer_.negative = data_.rows.negative;
        if (options_.display)
            answer_.display = ownText();
        else
            answer_.tables = tables(results, request_.question.format);
        if (!options_.curveFile.empty())
            answer_.curve = curveTable(results, data_.variables);
        if (!options_.prCurveFile.empty())
            answer_.precisionRecall = precisionRecallTable(results, data_.variables);
        if (!options_.plotFile.empty() || !options_.reportFile.empty())
            answer_.curves = drawnCurves(results, data_.variables);
        if (!options_.reportFile.empty())
            answer_.pageTables = tables(results, OutputFormat::html);
        return std::move(answer_);
    }

private:
    [[nodiscard]] std::string ownText() const
    {
        std::ostringstream text;
        algorithm_.Display(text);
        return text.str();
    }

    [[nodiscard]] Findings::Part casesPart(OutputFormat format) const
    {
        return {"cases", "Cases", caseTable(format, data_.rows, data_.weight >= 0)};
    }
    [[nodiscard]] static Findings::Part areasPart(Table areas)
    {
        return {"areas", "Areas under the ROC curves", std::move(areas)};
    }

    [[nodiscard]] std::vector<Findings::Part> tables(const ROCOutputs& results, OutputFormat format) const
    {
        std::vector<Findings::Part> all{casesPart(format)};
        all.push_back(areasPart(areaTable(format, results, data_.variables, data_.weight >= 0)));
        if (!results.getROCComparisonStats().empty())
            all.push_back({"comparisons", "Differences between the areas",
                           comparisonTable(format, results, data_.variables, request_.roles.paired)});
        if (options_.best)
            all.push_back({"best_cut_offs", "Best cut-offs by Youden's index: sensitivity + specificity - 1",
                           bestCutOffTable(format, results, data_.variables)});
        return all;
    }

    /// Cases, and areas that are not there: among the analyses of several values, a value without a result shows too.
    [[nodiscard]] std::vector<Findings::Part> tablesWithoutResult(OutputFormat format) const
    {
        std::vector<Findings::Part> all{casesPart(format)};
        if (!request_.roles.group)
            all.push_back(areasPart(missingAreaTable(format, data_)));
        return all;
    }

    void addNotes(const ROCOutputs& results)
    {
        std::vector<std::string>& notes = answer_.notes;
        if (options_.display)
            addRowNote();
        if (std::ranges::find(data_.tests, data_.state) != data_.tests.end())
            notes.push_back(inQuotes(request_.roles.state.column) + " is the state; it is not also a test");
        if (const std::size_t rounded = data_.rows.roundedWeights; rounded > 0)
            notes.push_back("weights that are not whole numbers, rounded with halves up: " + std::to_string(rounded));
        for (const ROCOutBase* const record : results.getROCBaseStats())
            addRecordNotes(*record);
        if (options_.pr && options_.prCurveFile.empty() && !options_.display && options_.plotFile.empty()
            && options_.reportFile.empty())
            notes.push_back("the points of --pr are drawn by --plot and --report, shown by --display and written by "
                            "--pr-curve FILE");
    }

    void addRecordNotes(const ROCOutBase& record)
    {
        const std::string subject = subjectOf(record);
        const int positive = record.getPositiveCount();
        const int negative = record.getNegativeCount();
        addAreaNotes(subject, {positive, negative, record.getArea(), record.getStdError()}, answer_.notes);
        addAreaCautions(subject, {record.getArea(), record.getStdError(), record.getCIUpper(), options_.study.smaller},
                        answer_.notes);
        const std::optional<std::string> reason = reasonWithoutCurve(positive, negative);
        if (reason && positive > 0 && negative > 0 && !options_.noCurve)
            answer_.notes.push_back(subject + ": no curve: " + *reason);
    }

    [[nodiscard]] std::string subjectOf(const ROCOutBase& record) const
    {
        const std::string variable = visible(variableName(data_.variables, record.getTestVarInd()));
        return record.getGroupVarInd() < 0 ? variable
                                           : variable + " where " + visible(groupOf(record, data_.variables));
    }

    /// What the table of cases tells, where there is none.
    void addRowNote()
    {
        const RowCounts& rows = data_.rows;
        std::string note = std::to_string(rows.read) + (rows.read == 1 ? " row" : " rows") + " read, "
            + std::to_string(rows.read - rows.used()) + " left out";
        const char* separator = " (";
        for (const auto& [reason, count] : rows.leftOut())
            note += std::exchange(separator, ", ") + reason + ": " + std::to_string(count);
        note += rows.leftOut().empty() ? "" : ")";
        for (const RowCounts::Gap& gap : rows.gaps)
            note += ", " + inQuotes(gap.test) + " missing in " + std::to_string(gap.rows());
        answer_.notes.push_back(note);
    }

    const AnalyzeOptions& options_;
    const AnalyzeRequest& request_;
    const HostData& data_;
    const RocAlgorithm& algorithm_;
    Answer answer_;
};

constexpr TableColumn valueColumn{"by", "by", CellRole::name};

/// Adds the tables of one value to those of the values before. Values need not have the same tables: a comparison may
/// lack a group.
void append(const std::string& value, const std::vector<Findings::Part>& parts, std::vector<Findings::Part>& all)
{
    for (const Findings::Part& part : parts) {
        auto same = std::ranges::find(all, part.member, &Findings::Part::member);
        if (same == all.end())
            same = all.insert(same, {part.member, part.title, part.table.behind(valueColumn)});
        same->table.append(value, part.table);
    }
}

void append(const std::string& value, const std::optional<Table>& rows, std::optional<Table>& all)
{
    if (!rows)
        return;
    if (!all)
        all = rows->behind(valueColumn);
    all->append(value, *rows);
}

} // namespace

Answer answerOf(const AnalyzeOptions& options, const AnalyzeRequest& request, const HostData& data,
                const RocAlgorithm& algorithm, const VexCommon_920::VexStatus& status)
{
    AnswerMaker maker(options, request, data, algorithm);
    return status.IsError() ? maker.failed(status) : maker.done();
}

void Answer::prepareForDrawing()
{
    notDrawn = vexroc::prepareForDrawing(curves);
    if (!notDrawn.empty())
        notes.push_back(notDrawn);
}

void ValueAnswers::add(const std::string& value, Answer answer)
{
    const std::string subject = visible(column_) + " = " + visible(value) + ": ";
    for (const std::string& note : answer.notes)
        all_.notes.push_back(subject + note);
    for (const auto& [code, name, sentence] : answer.warnings)
        all_.warnings.push_back({code, name, subject + sentence});
    append(value, answer.tables, all_.tables);
    append(value, answer.pageTables, all_.pageTables);
    if (answer.failure) {
        const auto& [code, name, sentence] = *answer.failure;
        all_.warnings.push_back({code, name, subject + "no result: " + sentence});
        lastFailure_ = answer.failure;
        return;
    }
    append(value, answer.curve, all_.curve);
    append(value, answer.precisionRecall, all_.precisionRecall);
    all_.positive += answer.positive;
    all_.negative += answer.negative;
    for (DrawnCurve& curve : answer.curves) {
        curve.name.insert(0, subject);
        all_.curves.push_back(std::move(curve));
    }
    ++results_;
}

Answer ValueAnswers::take(std::size_t missing)
{
    if (missing > 0)
        all_.notes.push_back("rows with a missing " + inQuotes(column_)
                             + ", in no analysis: " + std::to_string(missing));
    if (results_ == 0 && lastFailure_)
        all_.failure =
            Warning{lastFailure_->code, lastFailure_->name, "no value of " + inQuotes(column_) + " gave a result"};
    return std::move(all_);
}

} // namespace vexroc
