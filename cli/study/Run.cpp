#include "cli/study/Run.h"

#include "cli/study/CaseColumns.h"
#include "cli/study/require.h"
#include "cli/study/statusInWords.h"
#include "cli/words/Failure.h"
#include "cli/words/Numbers.h"
#include "vexrocproc/ROCStatusCodes.h"
#include "vexrocproc/analysis.h"

#include <map>
#include <memory>

namespace vexroc {

namespace {

/// One run through the component's handle, and what it tells of it.
class HandleRun {
public:
    HandleRun(const RunCases& cases, const Question& question, Comparison comparison, const Watch& watch)
        : cases_(cases), question_(question), watch_(watch)
    {
        vexroc_analysis* handle = nullptr;
        require(vexroc_analysis_new(&handle));
        handle_.reset(handle, vexroc_analysis_free);
        setColumns();
        setOptions(comparison);
        if (question.grouping && !cases.group.empty())
            setGrouping(*question.grouping);
        if (watch.progress)
            require(vexroc_analysis_on_progress(handle, Watch::tellProgress, watch.asUser()));
        if (watch.cancelRequested)
            require(vexroc_analysis_on_cancel(handle, Watch::askCancel, watch.asUser()));
        require(vexroc_analysis_on_parallel(handle, watch.parallel, nullptr));
    }

    Results results()
    {
        // The component refuses to run without a test. Its rows can be told all the same, by one that stands for none.
        if (cases_.tests.empty())
            setColumn("test", addColumn("", cases_.state));
        const int ended = vexroc_analysis_run(handle_.get());
        if (ended == VEXROC_CANCELLED)
            throw cancelled();
        if (ended == VEXROC_INVALID)
            throw usageError(vexroc_last_error());
        if (ended != VEXROC_OK && ended != VEXROC_NO_RESULT)
            throw analysisError(ended == VEXROC_NO_MEMORY ? "not enough memory" : vexroc_last_error());
        Results results{.rows = rowCounts()};
        if (cases_.tests.empty()) {
            results.failure = statusInWords(ROCALG_920::statusCode::noTestVar);
            return results;
        }
        if (watch_.remarks != nullptr)
            require(vexroc_analysis_add_remarks(handle_.get(), watch_.remarks->handle(), watch_.prefix.c_str()));
        if (ended == VEXROC_NO_RESULT)
            addFailure(results);
        else
            addResults(results);
        return results;
    }

private:
    int addColumn(const std::string& name, std::span<const double> values)
    {
        int column = 0;
        require(vexroc_analysis_add_column(handle_.get(), name.c_str(), values.data(),
                                           static_cast<long long>(values.size()), &column));
        return column;
    }
    void setColumn(const char* part, int column) { require(vexroc_analysis_set_column(handle_.get(), part, column)); }
    void setNumber(const char* name, double value) { require(vexroc_analysis_set_number(handle_.get(), name, value)); }
    void setWord(const char* name, const char* word) { require(vexroc_analysis_set_word(handle_.get(), name, word)); }

    void setColumns()
    {
        setColumn("state", addColumn(question_.state.column, cases_.state));
        for (std::size_t t = 0; t < cases_.tests.size(); ++t) {
            const auto [known, isNew] = columnOf_.try_emplace(cases_.tests[t]);
            if (isNew) {
                known->second = addColumn(cases_.tests[t], cases_.values[t]);
                testOf_.emplace(known->second, cases_.tests[t]);
            }
            setColumn("test", known->second);
            if (isNew && question_.isLargerPositive(cases_.tests[t]) != question_.largerIsPositive)
                require(vexroc_analysis_set_direction(handle_.get(), known->second,
                                                      question_.largerIsPositive ? "smaller" : "larger"));
        }
        if (!cases_.weight.empty())
            setColumn("weight", addColumn(question_.weight, cases_.weight));
        if (!cases_.count.empty())
            setColumn("count", addColumn(question_.count, cases_.count));
        if (!cases_.group.empty())
            setGroups(addColumn(question_.grouping->column, cases_.group));
    }

    /// The codes of groups of words stand for these words, in remarks as well.
    void setGroups(int column)
    {
        setColumn("group", column);
        const auto nameCode = [&](double code, const std::string& word) {
            require(vexroc_analysis_name_value(handle_.get(), column, code, word.c_str()));
        };
        if (cases_.groupWords.empty())
            return;
        nameCode(CaseColumns::firstGroup, cases_.groupWords[0]);
        nameCode(CaseColumns::secondGroup, cases_.groupWords[1]);
    }

    void setOptions(Comparison comparison)
    {
        setInference(question_.inference);
        require(vexroc_analysis_add_negative(handle_.get(), CaseColumns::negativeState));
        setNumber("roc", question_.rocCurve);
        setNumber("pr", question_.precisionRecall);
        setNumber("summaries", question_.summaries);
        setWord("direction", question_.positiveEnd());
        setWord("cases", question_.completeCases ? "complete" : "pairwise");
        setWord("cut_off", question_.equalIsPositive ? "include" : "exclude");
        setWord("weight_kind", question_.weightKind.c_str());
        setWord("interpolation", question_.alongFalsePositives ? "keilwagen" : "davis-goadrich");
        setWord("comparison",
                comparison == Comparison::paired            ? "paired"
                    : comparison == Comparison::independent ? "independent"
                                                            : "none");
    }

    void setInference(const Inference& inference)
    {
        setNumber("confidence_level", inference.level);
        setNumber("null_area", inference.nullArea);
        setNumber("replicates", static_cast<double>(inference.replicates));
        require(vexroc_analysis_set_seed(handle_.get(), inference.seed));
        setWord("distribution", inference.biNegative ? "bi-negative" : "nonparam");
        setWord("interval", inference.interval.c_str());
        setWord("p_value", inference.pMethod.c_str());
        setWord("exact", inference.exact.c_str());
        setWord("alternative", inference.alternative.c_str());
    }

    void setGrouping(const Grouping& grouping)
    {
        switch (grouping.by) {
        case Grouping::By::cut: return setNumber("group_cut", grouping.cut);
        case Grouping::By::midPoint: return setNumber("group_mid_point", 1.0);
        case Grouping::By::twoValues: // 0 and 1, or the codes of two words
        case Grouping::By::selected: break;
        }
        setNumber("group_first", CaseColumns::firstGroup);
        setNumber("group_second", CaseColumns::secondGroup);
    }

    /// What a call of the handle says in a structure.
    template <class Answer>
    [[nodiscard]] Answer told(auto call, auto... which) const
    {
        Answer answer{};
        answer.struct_size = sizeof answer;
        require(call(handle_.get(), which..., &answer));
        return answer;
    }

    [[nodiscard]] RowCounts rowCounts() const
    {
        const auto rows = told<vexroc_rows>(vexroc_analysis_rows);
        RowCounts counts{.given = rows.given,
                         .read = rows.read,
                         .missingState = rows.missing_state,
                         .otherState = rows.other_state,
                         .missingGroup = rows.missing_group,
                         .missingCount = rows.missing_count,
                         .missingWeight = rows.missing_weight,
                         .otherGroup = rows.other_group,
                         .unusableWeight = rows.unusable_weight,
                         .incomplete = rows.incomplete,
                         .positive = rows.positive,
                         .negative = rows.negative,
                         .weightedPositive = rows.weighted_positive,
                         .weightedNegative = rows.weighted_negative,
                         .roundedWeights = rows.rounded_weights};
        for (const auto& [column, test] : testOf_) {
            RowCounts::Gap gap{.test = test};
            require(vexroc_analysis_missing_test(handle_.get(), column, &gap.positive, &gap.negative));
            if (gap.rows() > 0)
                counts.gaps.push_back(std::move(gap));
        }
        return counts;
    }

    /// Without a result the tests still tell their cases, unless it takes groups to know them.
    void addFailure(Results& results) const
    {
        int code = 0;
        require(vexroc_analysis_status(handle_.get(), &code, nullptr));
        results.failure = statusInWords(code);
        if (question_.grouping)
            return;
        std::map<std::string_view, const RowCounts::Gap*> gaps; // there may be tens of thousands of tests
        if (results.rows.incomplete == 0)                       // else rows with a gap are not among those used
            for (const RowCounts::Gap& gap : results.rows.gaps)
                gaps.emplace(gap.test, &gap);
        for (const std::string& test : cases_.tests) {
            const auto found = gaps.find(test);
            results.tests.push_back(withoutResult(test, results.rows, found == gaps.end() ? nullptr : found->second));
        }
    }

    [[nodiscard]] TestResult withoutResult(const std::string& test, const RowCounts& rows,
                                           const RowCounts::Gap* gap) const
    {
        const long long positive = rows.positive - (gap ? gap->positive : 0);
        const long long negative = rows.negative - (gap ? gap->negative : 0);
        return {.area = {.test = test,
                         .positive = positive,
                         .negative = negative,
                         .leftOut = rows.read - positive - negative,
                         .weightedPositive = gap ? notComputed : rows.weightedPositive,
                         .weightedNegative = gap ? notComputed : rows.weightedNegative,
                         .error = question_.errorOfAreas(),
                         .pMethod = question_.inference.pMethod,
                         .interval = question_.inference.interval}};
    }

    void addResults(Results& results) const
    {
        for (int i = 0; i < vexroc_analysis_record_count(handle_.get()); ++i) {
            long long read = 0; // rows of its group
            require(vexroc_analysis_record_rows(handle_.get(), i, &read, nullptr));
            results.tests.push_back(testResult(i, read));
        }
        for (int i = 0; i < vexroc_analysis_comparison_count(handle_.get()); ++i)
            results.differences.push_back(
                differenceOf(told<vexroc_comparison>(vexroc_analysis_comparison, i), results));
    }

    [[nodiscard]] Difference differenceOf(const vexroc_comparison& found, const Results& results) const
    {
        Difference difference{.first = results.tests[static_cast<std::size_t>(found.first)].area,
                              .second = results.tests[static_cast<std::size_t>(found.second)].area,
                              .difference = found.difference,
                              .stdError = found.std_error,
                              .error = found.error,
                              .z = found.z,
                              .pValue = found.p_value,
                              .log10P = found.log10_p,
                              .lower = found.ci_lower,
                              .upper = found.ci_upper};
        if (question_.comparison == Comparison::paired) {
            difference.first = ofPair(difference.first, found, found.first_area, found.first_std_error);
            difference.second = ofPair(difference.second, found, found.second_area, found.second_std_error);
            difference.leftOut = results.rows.read - found.positive - found.negative;
        } else {
            difference.leftOut = difference.first.leftOut + difference.second.leftOut + results.rows.missingGroup;
        }
        return difference;
    }

    /// The area of a test on the cases of a pair.
    static Area ofPair(const Area& test, const vexroc_comparison& pair, double area, double stdError)
    {
        return {.test = test.test,
                .positive = pair.positive,
                .negative = pair.negative,
                .area = area,
                .stdError = stdError,
                .distinctValues = test.distinctValues,
                .largerIsPositive = test.largerIsPositive};
    }

    [[nodiscard]] TestResult testResult(int index, long long rowsRead) const
    {
        const auto record = told<vexroc_record>(vexroc_analysis_record, index);
        const bool hasCurve = record.ks_maximum >= 0.0;
        TestResult result{.area = {.test = testOf_.at(record.test),
                                   .group = groupOf(record),
                                   .positive = record.positive,
                                   .negative = record.negative,
                                   .leftOut = rowsRead - record.positive - record.negative,
                                   .weightedPositive = record.weighted_positive,
                                   .weightedNegative = record.weighted_negative,
                                   .area = record.area,
                                   .stdError = record.std_error,
                                   .error = record.error,
                                   .pValue = record.p_value,
                                   .log10P = record.log10_p,
                                   .pMethod = record.p_method,
                                   .lower = record.ci_lower,
                                   .upper = record.ci_upper,
                                   .interval = record.interval_rule,
                                   .gini = record.gini,
                                   .ksMaximum = hasCurve ? record.ks_maximum : notComputed,
                                   .ksCutOff = hasCurve ? record.ks_cut_off : notComputed,
                                   .distinctValues = record.distinct_values,
                                   .ties = record.ties != 0,
                                   .largerIsPositive = record.smaller_is_positive == 0}};
        if (question_.points)
            addPoints(index, record, result);
        if (question_.bestCutOffs)
            addBest(index, result);
        if (question_.summaries)
            result.summary = summaryOf(index);
        return result;
    }

    void addPoints(int index, const vexroc_record& record, TestResult& result) const
    {
        const auto rows = static_cast<std::size_t>(record.curve_rows);
        RocCurve& roc = result.roc;
        roc = {std::vector<double>(rows), std::vector<double>(rows), std::vector<double>(rows),
               std::vector<long long>(rows), std::vector<long long>(rows)};
        require(vexroc_analysis_curve(handle_.get(), index, roc.cutOffs.data(), roc.sensitivity.data(),
                                      roc.specificity.data()));
        require(vexroc_analysis_curve_counts(handle_.get(), index, roc.truePositive.data(), roc.falsePositive.data()));
        const auto points = static_cast<std::size_t>(record.pr_rows);
        PrecisionRecallCurve& pr = result.precisionRecall;
        pr = {std::vector<double>(points), std::vector<double>(points), std::vector<unsigned char>(points),
              std::vector<int>(points)};
        require(vexroc_analysis_precision_recall(handle_.get(), index, pr.precision.data(), pr.recall.data(),
                                                 pr.interpolated.data()));
        require(vexroc_analysis_precision_recall_rows(handle_.get(), index, pr.rocPoint.data()));
    }

    void addBest(int index, TestResult& result) const
    {
        for (int i = 0; i < vexroc_analysis_best_cut_off_count(handle_.get(), index); ++i) {
            const auto found = told<vexroc_cut_off>(vexroc_analysis_best_cut_off, index, i);
            result.best.push_back(
                {found.cut_off, found.sensitivity, found.specificity, found.true_positive, found.false_positive});
        }
    }

    /// It belongs to the handle, which so lives as long.
    [[nodiscard]] std::shared_ptr<const vexroc_summary> summaryOf(int index) const
    {
        const vexroc_summary* summary = nullptr;
        require(vexroc_analysis_summary(handle_.get(), index, &summary));
        return {handle_, summary};
    }

    [[nodiscard]] std::string groupOf(const vexroc_record& record) const
    {
        constexpr int equal = 0;
        constexpr int below = 2;
        if (record.group < 0)
            return "";
        const std::string value = cases_.groupWords.empty()
            ? shortest(record.group_value)
            : cases_.groupWords[static_cast<std::size_t>(record.group_value)];
        const char* const sign = record.group_operation == equal ? " = "
            : record.group_operation == below                    ? " < "
                                                                 : " >= ";
        return question_.grouping->column + sign + value;
    }

    const RunCases& cases_;
    const Question& question_;
    const Watch& watch_;
    std::shared_ptr<vexroc_analysis> handle_;
    std::map<std::string, int> columnOf_; ///< of each test
    std::map<int, std::string> testOf_;   ///< the other way round
};

} // namespace

Results run(const RunCases& cases, const Question& question, Comparison comparison, const Watch& watch)
{
    return HandleRun(cases, question, comparison, watch).results();
}

} // namespace vexroc
