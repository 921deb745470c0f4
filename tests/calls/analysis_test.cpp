#include "vexrocproc/analysis.h"
#include "vexrocproc/arraycalls.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::HasSubstr;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// What a call fills in.
template <class Result, class Call>
Result filled(Call&& call)
{
    Result result{};
    result.struct_size = sizeof result;
    EXPECT_EQ(call(&result), VEXROC_OK) << vexroc_last_error();
    return result;
}

struct Analysis {
    vexroc_analysis* handle = nullptr;
    Analysis() { EXPECT_EQ(vexroc_analysis_new(&handle), VEXROC_OK); }
    ~Analysis() { vexroc_analysis_free(handle); }
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;

    int column(const char* name, const std::vector<double>& values) const
    {
        int index = -1;
        EXPECT_EQ(
            vexroc_analysis_add_column(handle, name, values.data(), static_cast<long long>(values.size()), &index),
            VEXROC_OK);
        return index;
    }
    void part(const char* setting, int index) const
    {
        EXPECT_EQ(vexroc_analysis_set_column(handle, setting, index), VEXROC_OK) << vexroc_last_error();
    }
    void word(const char* setting, const char* value) const
    {
        EXPECT_EQ(vexroc_analysis_set_word(handle, setting, value), VEXROC_OK) << vexroc_last_error();
    }
    void number(const char* setting, double value) const
    {
        EXPECT_EQ(vexroc_analysis_set_number(handle, setting, value), VEXROC_OK) << vexroc_last_error();
    }
    vexroc_record record(int index) const
    {
        return filled<vexroc_record>([&](auto* out) { return vexroc_analysis_record(handle, index, out); });
    }
    vexroc_comparison comparison(int index) const
    {
        return filled<vexroc_comparison>([&](auto* out) { return vexroc_analysis_comparison(handle, index, out); });
    }
    vexroc_cut_off bestCutOff(int record, int index) const
    {
        return filled<vexroc_cut_off>(
            [&](auto* out) { return vexroc_analysis_best_cut_off(handle, record, index, out); });
    }
    vexroc_rows rows() const
    {
        return filled<vexroc_rows>([&](auto* out) { return vexroc_analysis_rows(handle, out); });
    }
    /// Rows that lack only this test: positive, negative.
    std::pair<long long, long long> gap(int column) const
    {
        std::pair<long long, long long> rows{-1, -1};
        EXPECT_EQ(vexroc_analysis_missing_test(handle, column, &rows.first, &rows.second), VEXROC_OK);
        return rows;
    }
};

/// Ten cases of two tests, in two groups.
struct Study : Analysis {
    const std::vector<double> states{2, 2, 2, 2, 0, 0, 0, 0, 0, 2};
    const std::vector<double> first{7, 6, 8, 5, 5, 4, 3, 6, 2, missing};
    const std::vector<double> second{3, 9, 4, 8, 1, 2, 7, 3, 5, 6};
    const std::vector<double> groups{1, 5, 1, 5, 1, 5, 1, 5, 1, 5};
    Study()
    {
        part("state", column("state", states));
        part("test", column("first", first));
        part("test", column("second", second));
        number("positive_value", 2);
    }
    int size() const { return static_cast<int>(states.size()); }
};

} // namespace

TEST(AnalysisHandle, GivesWhatTheArrayCallsGive)
{
    Study study;
    study.word("direction", "smaller");
    study.word("interpolation", "keilwagen");
    study.word("cut_off", "exclude");
    study.number("confidence_level", 0.9);
    study.number("pr", 1);
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK) << vexroc_last_error();
    ASSERT_EQ(vexroc_analysis_record_count(study.handle), 2);
    const double positive = 2;
    const std::vector<double>* const tests[] = {&study.first, &study.second};
    for (int i = 0; i < 2; ++i) {
        const double* const values = tests[i]->data();
        const vexroc_record record = study.record(i);
        const auc_res area =
            auc(study.states.data(), values, study.size(), &positive, "exclude", "smaller", "nonparam", 0.9);
        EXPECT_EQ(record.test, i + 1);
        EXPECT_EQ(record.group, -1);
        EXPECT_EQ(record.positive, area.posCount);
        EXPECT_EQ(record.area, area.area);
        EXPECT_EQ(record.std_error, area.stdError);
        EXPECT_EQ(record.ci_upper, area.ciUpper);

        const roccurve_res curve = roccurve(study.states.data(), values, study.size(), &positive, "exclude", "smaller");
        ASSERT_EQ(record.curve_rows, curve.count);
        std::vector<double> cutOffs(static_cast<std::size_t>(curve.count));
        std::vector<double> sensitivity(cutOffs.size());
        EXPECT_EQ(vexroc_analysis_curve(study.handle, i, cutOffs.data(), sensitivity.data(), nullptr), VEXROC_OK);
        for (std::size_t row = 0; row < cutOffs.size(); ++row) {
            EXPECT_EQ(cutOffs[row], curve.rows[3 * row]);
            EXPECT_EQ(sensitivity[row], curve.rows[3 * row + 2]);
        }
        release_roccurve_res(curve);

        const prcurve_res points =
            prcurve(study.states.data(), values, study.size(), &positive, "exclude", "smaller", "keilwagen");
        ASSERT_EQ(record.pr_rows, points.count);
        std::vector<unsigned char> interpolated(static_cast<std::size_t>(points.count));
        EXPECT_EQ(vexroc_analysis_precision_recall(study.handle, i, nullptr, nullptr, interpolated.data()), VEXROC_OK);
        std::vector<int> measuredAt(interpolated.size());
        EXPECT_EQ(vexroc_analysis_precision_recall_rows(study.handle, i, measuredAt.data()), VEXROC_OK);
        for (std::size_t row = 0; row < interpolated.size(); ++row) {
            EXPECT_EQ(interpolated[row], points.rows[row].interpolated) << row;
            EXPECT_EQ(measuredAt[row] < 0, points.rows[row].interpolated) << row;
            if (measuredAt[row] >= 0) {
                EXPECT_EQ(cutOffs[static_cast<std::size_t>(measuredAt[row])], points.rows[row].cutOff) << row;
            }
        }
        release_prcurve_res(points);
    }
}

TEST(AnalysisHandle, ComparesAndSplitsAndWarns)
{
    Study study;
    study.word("comparison", "independent");
    study.part("group", study.column("group", study.groups));
    study.number("group_cut", 3);
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK) << vexroc_last_error();
    ASSERT_EQ(vexroc_analysis_comparison_count(study.handle), 2);
    const vexroc_comparison groups = study.comparison(1);
    EXPECT_EQ(study.record(groups.first).group_operation, 2); // below the cut
    EXPECT_EQ(study.record(groups.second).group_operation, 1);
    EXPECT_EQ(groups.difference, study.record(groups.first).area - study.record(groups.second).area);

    study.word("comparison", "paired");
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK) << vexroc_last_error(); // once more, with other settings
    const double positive = 2;
    const auc_comparison_res expected =
        auc_pairedcomparison(study.states.data(), study.first.data(), study.second.data(), study.size(), &positive,
                             "include", "larger", 0.95);
    const vexroc_comparison pair = study.comparison(0);
    EXPECT_EQ(pair.first + pair.second, 1);
    EXPECT_EQ(pair.difference, expected.areaDiff);
    EXPECT_EQ(pair.std_error, expected.stdErrorDiff);
    EXPECT_EQ(pair.significance, expected.zSig);
    ASSERT_EQ(vexroc_analysis_warning_count(study.handle), 2);
    for (int i = 0; i < 2; ++i) {
        const auto warning =
            filled<vexroc_warning>([&](auto* out) { return vexroc_analysis_warning(study.handle, i, out); });
        EXPECT_EQ(warning.parameter_count, warning.code == 430102 ? 2 : 0) << warning.name;
    }
}

TEST(AnalysisHandle, TellsWhatBecameOfEachRow)
{
    struct Row {
        double state, group, weight, first, second;
    };
    const std::vector<Row> table{
        {missing, missing, missing, 9, 9}, // counted under the first reason
        {1, missing, 1, 9, 9},
        {0, 1, missing, 9, 9},
        {1, 3, 0.2, 9, missing}, // neither group goes before the weight
        {1, 1, 0.4999, missing, 9},
        {0, 2, 3e9, 9, 9},
        {1, 1, 2.5, 3, missing}, // and these eight are used
        {1, 2, 1, missing, missing},
        {0, 1, 1, missing, 4},
        {1, 1, 1, 2, 5},
        {0, 1, 2, 1, 2},
        {0, 2, 2, 4, 1},
        {1, 2, 2, 7, 7},
        {0, 2, 0.5, 5, 6},
    };
    const Analysis analysis;
    std::vector<std::vector<double>> columns;
    for (const auto member : {&Row::state, &Row::group, &Row::weight, &Row::first, &Row::second}) {
        std::vector<double>& column = columns.emplace_back();
        for (const Row& row : table)
            column.push_back(row.*member);
        analysis.column("column", column);
    }
    analysis.part("state", 0);
    analysis.part("group", 1);
    analysis.part("weight", 2);
    for (const int test : {3, 4, 3}) // one twice
        analysis.part("test", test);
    analysis.number("group_first", 1);
    analysis.number("group_second", 2);
    ASSERT_EQ(vexroc_analysis_run(analysis.handle), VEXROC_OK) << vexroc_last_error();
    const vexroc_rows grouped = analysis.rows();
    EXPECT_EQ(grouped.read, 14);
    EXPECT_EQ(grouped.missing_state, 1);
    EXPECT_EQ(grouped.missing_group, 1);
    EXPECT_EQ(grouped.missing_weight, 1);
    EXPECT_EQ(grouped.other_group, 1);
    EXPECT_EQ(grouped.unusable_weight, 2);
    EXPECT_EQ(grouped.incomplete, 0);
    EXPECT_EQ(grouped.positive, 4);
    EXPECT_EQ(grouped.negative, 4);
    EXPECT_EQ(grouped.weighted_positive, 7);
    EXPECT_EQ(grouped.weighted_negative, 6);
    EXPECT_EQ(grouped.rounded_weights, 4);
    EXPECT_EQ(grouped.rounded_used, 2);
    EXPECT_EQ(grouped.too_heavy, 1);
    long long read = 0;
    long long usable = 0;
    EXPECT_EQ(vexroc_analysis_record_rows(analysis.handle, 1, &read, &usable), VEXROC_OK);
    EXPECT_EQ(read, 5); // of the second group
    EXPECT_EQ(usable, 4);
    EXPECT_EQ(analysis.gap(3), std::pair(1LL, 1LL));
    EXPECT_EQ(analysis.gap(4), std::pair(2LL, 0LL));
    EXPECT_EQ(vexroc_analysis_missing_test(analysis.handle, 1, nullptr, nullptr), VEXROC_INVALID);
    EXPECT_THAT(vexroc_last_error(), HasSubstr("column 1 was no test"));
    EXPECT_EQ(vexroc_analysis_left_out_count(analysis.handle), 3);
    EXPECT_EQ(analysis.record(0).positive + analysis.record(1).positive, 3);

    analysis.word("comparison", "paired"); // all cases, in all tests or none
    ASSERT_EQ(vexroc_analysis_run(analysis.handle), VEXROC_OK) << vexroc_last_error();
    const vexroc_rows paired = analysis.rows();
    EXPECT_EQ(paired.other_group, 0);
    EXPECT_EQ(paired.unusable_weight, 3);
    EXPECT_EQ(paired.incomplete, 3);
    EXPECT_EQ(vexroc_analysis_record_rows(analysis.handle, 1, &read, &usable), VEXROC_OK);
    EXPECT_EQ(read, 14);
    EXPECT_EQ(usable, 8);
    EXPECT_EQ(paired.positive, analysis.record(0).positive);
    EXPECT_EQ(paired.weighted_negative, analysis.record(0).weighted_negative);
    EXPECT_EQ(analysis.gap(4), std::pair(2LL, 0LL));

    analysis.number("positive_value", 5); // which no row has: counted all the same
    ASSERT_EQ(vexroc_analysis_run(analysis.handle), VEXROC_NO_RESULT);
    EXPECT_EQ(analysis.rows().negative, 5);
    EXPECT_EQ(vexroc_analysis_left_out_count(analysis.handle), 3);
}

TEST(AnalysisHandle, TellsTheCountsAndTheBestCutOffs)
{
    // Smaller values are positive. Below 3 lie two positive cases and one negative, below 8 four and three.
    const std::vector<double> states{1, 1, 0, 0, 0, 1, 1, 0};
    const std::vector<double> values{1, 2, 2, 4, 5, 6, 7, 9};
    const Analysis analysis;
    analysis.part("state", analysis.column("state", states));
    analysis.part("test", analysis.column("test", values));
    analysis.word("direction", "smaller");
    analysis.number("pr", 1);
    ASSERT_EQ(vexroc_analysis_run(analysis.handle), VEXROC_OK) << vexroc_last_error();
    const auto rows = static_cast<std::size_t>(analysis.record(0).curve_rows);
    std::vector<double> cutOffs(rows);
    std::vector<double> sensitivity(rows);
    std::vector<long long> truePositive(rows);
    std::vector<long long> falsePositive(rows);
    EXPECT_EQ(vexroc_analysis_curve(analysis.handle, 0, cutOffs.data(), sensitivity.data(), nullptr), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_curve_counts(analysis.handle, 0, truePositive.data(), falsePositive.data()), VEXROC_OK);
    EXPECT_THAT(truePositive, testing::ElementsAre(0, 1, 2, 2, 2, 3, 4, 4));
    EXPECT_THAT(falsePositive, testing::ElementsAre(0, 0, 1, 2, 3, 3, 3, 4));

    ASSERT_EQ(vexroc_analysis_best_cut_off_count(analysis.handle, 0), 3); // a tie
    EXPECT_EQ(analysis.bestCutOff(0, 0).cut_off, 1.5);
    EXPECT_EQ(analysis.bestCutOff(0, 1).cut_off, 3);
    const vexroc_cut_off last = analysis.bestCutOff(0, 2);
    EXPECT_EQ(last.cut_off, 8);
    EXPECT_EQ(last.sensitivity, 1);
    EXPECT_EQ(last.specificity, 0.25);
    EXPECT_EQ(last.true_positive, 4);
    EXPECT_EQ(last.false_positive, 3);
    EXPECT_EQ(last.true_negative, 1);
    EXPECT_EQ(last.false_negative, 0);
    vexroc_cut_off none{};
    none.struct_size = sizeof none;
    EXPECT_EQ(vexroc_analysis_best_cut_off(analysis.handle, 0, 3, &none), VEXROC_INVALID);
    EXPECT_EQ(vexroc_analysis_best_cut_off_count(analysis.handle, 1), 0);

    const auto points = static_cast<std::size_t>(analysis.record(0).pr_rows);
    std::vector<double> recall(points);
    std::vector<int> measuredAt(points);
    EXPECT_EQ(vexroc_analysis_precision_recall(analysis.handle, 0, nullptr, recall.data(), nullptr), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_precision_recall_rows(analysis.handle, 0, measuredAt.data()), VEXROC_OK);
    EXPECT_THAT(measuredAt, testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7)); // no step moves two positive cases
    for (std::size_t i = 0; i < points; ++i)
        EXPECT_EQ(recall[i], sensitivity[static_cast<std::size_t>(measuredAt[i])]);
}

TEST(AnalysisHandle, TakesBackWhatWasSet)
{
    Study study;
    study.part("group", study.column("group", study.groups));
    study.part("weight", 1);
    study.number("group_first", 1);
    study.number("group_second", 5);
    study.number("group_mid_point", 1);
    study.number("group_mid_point", 0);
    study.number("group_cut", 100); // the last way of grouping counts
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK) << vexroc_last_error();
    EXPECT_EQ(vexroc_analysis_left_out_count(study.handle), 1); // without weight
    for (const char* part : {"group", "weight", "test"})
        study.part(part, -1);
    study.part("test", 2);
    study.word("direction", "LARGER");
    study.number("roc", 0);
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK) << vexroc_last_error();
    EXPECT_EQ(vexroc_analysis_record_count(study.handle), 1);
    EXPECT_EQ(study.record(0).group, -1);
    EXPECT_EQ(study.record(0).curve_rows, 0);
    EXPECT_EQ(vexroc_analysis_left_out_count(study.handle), 0);
}

TEST(AnalysisHandle, TellsMemoryThatRanOutFromOtherFailures)
{
    const auto runWith = [](vexroc_progress progress) {
        const Study study;
        vexroc_analysis_on_progress(study.handle, progress, nullptr);
        const int result = vexroc_analysis_run(study.handle);
        int code = 0;
        const char* name = nullptr;
        EXPECT_EQ(vexroc_analysis_status(study.handle, &code, &name), VEXROC_OK);
        EXPECT_EQ(code, 430001);
        EXPECT_STREQ(name, "Unexpected_Failure");
        return result;
    };
    EXPECT_EQ(runWith([](double, int, void*) { throw std::bad_alloc(); }), VEXROC_NO_MEMORY);
    EXPECT_STREQ(vexroc_last_error(), "not enough memory");
    EXPECT_EQ(runWith([](double, int, void*) { throw 1; }), VEXROC_NO_RESULT);
}

TEST(AnalysisHandle, TellsProgressAndCancels)
{
    Study study;
    std::vector<double> shares;
    const auto note = [](double share, int, void* user) { static_cast<std::vector<double>*>(user)->push_back(share); };
    EXPECT_EQ(vexroc_analysis_on_progress(study.handle, note, &shares), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK);
    EXPECT_GT(shares.size(), 2u);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));

    const auto reenter = [](void* user) {
        auto* const analysis = static_cast<vexroc_analysis*>(user);
        EXPECT_EQ(vexroc_analysis_status(analysis, nullptr, nullptr), VEXROC_INVALID);
        EXPECT_THAT(vexroc_last_error(), HasSubstr("no results yet: the analysis is running"));
        return int(vexroc_analysis_run(analysis) != VEXROC_INVALID);
    };
    EXPECT_EQ(vexroc_analysis_on_cancel(study.handle, reenter, study.handle), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK); // a callback with the same handle is turned away
    const auto stop = [](void*) { return 1; };
    EXPECT_EQ(vexroc_analysis_on_cancel(study.handle, stop, nullptr), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_run(study.handle), VEXROC_CANCELLED);
    EXPECT_EQ(vexroc_analysis_record_count(study.handle), 0);
}

TEST(AnalysisHandle, SaysWhatCannotBe)
{
    const std::vector<double> three{1, 2, 3};
    const struct {
        int result;
        const char* message;
        std::function<int(vexroc_analysis*)> call;
    } faults[] = {
        {VEXROC_INVALID, "analysis is null", [](auto*) { return vexroc_analysis_run(nullptr); }},
        {VEXROC_INVALID, "handle is null", [](auto*) { return vexroc_analysis_new(nullptr); }},
        {VEXROC_INVALID, "call vexroc_analysis_run first",
         [](auto* a) { return vexroc_analysis_status(a, nullptr, nullptr); }},
        {VEXROC_INVALID, "\"x\" has 3 rows; the columns before it have 10",
         [&](auto* a) { return vexroc_analysis_add_column(a, "x", three.data(), 3, nullptr); }},
        {VEXROC_INVALID, "-1 rows", [](auto* a) { return vexroc_analysis_add_column(a, "x", nullptr, -1, nullptr); }},
        {VEXROC_INVALID, "values is null",
         [](auto* a) { return vexroc_analysis_add_column(a, "x", nullptr, 10, nullptr); }},
        {VEXROC_INVALID, "no column 9; there are 3", [](auto* a) { return vexroc_analysis_set_column(a, "test", 9); }},
        {VEXROC_INVALID, "no setting \"tset\" takes a column",
         [](auto* a) { return vexroc_analysis_set_column(a, "tset", 1); }},
        {VEXROC_INVALID, "no setting \"levle\" takes a number",
         [](auto* a) { return vexroc_analysis_set_number(a, "levle", 0.9); }},
        {VEXROC_INVALID, "no setting \"way\" takes a word",
         [](auto* a) { return vexroc_analysis_set_word(a, "way", "up"); }},
        {VEXROC_INVALID, "no state",
         [](auto* a) { return vexroc_analysis_set_column(a, "state", -1) + vexroc_analysis_run(a); }},
        {VEXROC_INVALID, "a group needs one of group_cut",
         [](auto* a) { return vexroc_analysis_set_column(a, "group", 2) + vexroc_analysis_run(a); }},
        {VEXROC_INVALID, "between 0 and 1",
         [](auto* a) { return vexroc_analysis_set_number(a, "confidence_level", 95); }},
        {VEXROC_INVALID, "the words are \"larger\", \"smaller\"",
         [](auto* a) { return vexroc_analysis_set_word(a, "direction", "up"); }},
        {VEXROC_INVALID, "no column -2", [](auto* a) { return vexroc_analysis_set_column(a, "group", -2); }},
        {VEXROC_INVALID, "\"state\" is the state", // and the refused run says so
         [](auto* a) { return vexroc_analysis_set_column(a, "test", 0) + vexroc_analysis_run(a); }},
        {VEXROC_INVALID, "the last run was refused",
         [](auto* a) {
             vexroc_analysis_set_column(a, "test", -1);
             vexroc_analysis_run(a);
             return vexroc_analysis_status(a, nullptr, nullptr);
         }},
        {VEXROC_INVALID, "group_cut: NaN", [](auto* a) { return vexroc_analysis_set_number(a, "group_cut", missing); }},
        {VEXROC_INVALID, "the same value",
         [](auto* a) {
             return vexroc_analysis_set_column(a, "group", 2) + vexroc_analysis_set_number(a, "group_first", 1)
                 + vexroc_analysis_set_number(a, "group_second", 1) + vexroc_analysis_run(a);
         }},
        {VEXROC_INVALID, "set \"group\"",
         [](auto* a) { return vexroc_analysis_set_number(a, "group_cut", 1) + vexroc_analysis_run(a); }},
        {VEXROC_NO_RESULT, "430007 Setting_Error_Group_Required",
         [](auto* a) { return vexroc_analysis_set_word(a, "comparison", "independent") + vexroc_analysis_run(a); }},
        {VEXROC_NO_RESULT, "430004",
         [](auto* a) { return vexroc_analysis_set_number(a, "positive_value", 7) + vexroc_analysis_run(a); }},
        {VEXROC_INVALID, "no record 5; there are 2",
         [](auto* a) { return vexroc_analysis_run(a) + vexroc_analysis_curve(a, 5, nullptr, nullptr, nullptr); }},
        {VEXROC_INVALID, "struct_size is not set",
         [](auto* a) {
             vexroc_record record{};
             return vexroc_analysis_run(a) + vexroc_analysis_record(a, 0, &record);
         }},
    };
    for (const auto& [result, message, call] : faults) {
        const Study study;
        EXPECT_EQ(call(study.handle), result) << message;
        EXPECT_THAT(vexroc_last_error(), HasSubstr(message));
    }
    EXPECT_EQ(vexroc_analysis_record_count(nullptr), 0);
    vexroc_analysis_free(nullptr);
}

TEST(AnalysisHandle, FillsNoMoreThanAnOlderStructureHolds)
{
    const Study study;
    ASSERT_EQ(vexroc_analysis_run(study.handle), VEXROC_OK);
    vexroc_record record{};
    record.struct_size = offsetof(vexroc_record, std_error);
    record.std_error = -7;
    EXPECT_EQ(vexroc_analysis_record(study.handle, 0, &record), VEXROC_OK);
    EXPECT_EQ(record.area, study.record(0).area);
    EXPECT_EQ(record.std_error, -7);
    EXPECT_EQ(record.struct_size, offsetof(vexroc_record, std_error));
}
