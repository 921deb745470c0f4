#include "tests/calls/Analysis.h"
#include "tests/support/calls.h"
#include "vexrocproc/analysis.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>
#include <functional>
#include <new>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using namespace roctest;
using testing::ElementsAre;
using testing::HasSubstr;

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
};

/// What the handle says of a record beside what the array calls say of its cases.
void expectRecord(const Analysis& analysis, int index, const std::vector<double>& states,
                  const std::vector<double>& values, const Words& words, double level)
{
    SCOPED_TRACE(index);
    const vexroc_record record = analysis.record(index);
    EXPECT_EQ(numbers(auc_res{double(record.positive), double(record.negative), record.area, record.std_error,
                              record.significance, record.ci_lower, record.ci_upper}),
              numbers(areaOf(states, values, words, level)));
    EXPECT_EQ(record.gini, 2 * record.area - 1);

    std::vector<double> cutOffs(static_cast<std::size_t>(record.curve_rows));
    std::vector<double> sensitivity(cutOffs.size());
    std::vector<double> specificity(cutOffs.size());
    expectOk(vexroc_analysis_curve(analysis.handle, index, cutOffs.data(), sensitivity.data(), specificity.data()));
    Numbers rows;
    for (std::size_t i = 0; i < cutOffs.size(); ++i)
        rows.insert(rows.end(), {{cutOffs[i]}, {1.0 - specificity[i]}, {sensitivity[i]}});
    EXPECT_EQ(rows, curve(states, values, words));
    const vexroc_cut_off best = analysis.bestCutOff(index, 0);
    EXPECT_EQ(record.ks_maximum, best.sensitivity - (1.0 - best.specificity));
    EXPECT_EQ(record.ks_cut_off, best.cut_off);

    std::vector<double> precision(static_cast<std::size_t>(record.pr_rows));
    std::vector<double> recall(precision.size());
    std::vector<unsigned char> interpolated(precision.size());
    std::vector<int> measuredAt(precision.size());
    expectOk(
        vexroc_analysis_precision_recall(analysis.handle, index, precision.data(), recall.data(), interpolated.data()));
    expectOk(vexroc_analysis_precision_recall_rows(analysis.handle, index, measuredAt.data()));
    const Numbers expected = precisionRecall(states, values, words);
    ASSERT_EQ(4 * precision.size(), expected.size());
    for (std::size_t i = 0; i < precision.size(); ++i) {
        const bool measured = measuredAt[i] >= 0;
        const double cutOff = measured ? cutOffs.at(static_cast<std::size_t>(measuredAt[i])) : expected[4 * i].value;
        EXPECT_EQ(measured, interpolated[i] == 0);
        EXPECT_EQ((Numbers{{cutOff}, {recall[i]}, {precision[i]}, {double(interpolated[i])}}),
                  Numbers(expected.begin() + 4 * i, expected.begin() + 4 * i + 4));
    }
}

constexpr double positiveState = 2;

} // namespace

TEST(AnalysisHandle, GivesWhatTheArrayCallsGive)
{
    Study study;
    study.word("direction", "smaller");
    study.word("interpolation", "keilwagen");
    study.word("cut_off", "exclude");
    study.number("confidence_level", 0.9);
    study.number("pr", 1);
    study.run();
    ASSERT_EQ(vexroc_analysis_record_count(study.handle), 2);
    const Words words{"exclude", "smaller", "keilwagen", "nonparam", &positiveState};
    expectRecord(study, 0, study.states, study.first, words, 0.9);
    expectRecord(study, 1, study.states, study.second, words, 0.9);
    EXPECT_EQ(study.record(1).test, 2);
    EXPECT_EQ(study.record(1).group, -1);
}

TEST(AnalysisHandle, ComparesAndSplitsAndWarns)
{
    Study study;
    study.word("comparison", "independent");
    study.part("group", study.column("group", study.groups));
    study.number("group_cut", 3);
    study.run();
    ASSERT_EQ(vexroc_analysis_comparison_count(study.handle), 2);
    const vexroc_comparison groups = study.comparison(1);
    EXPECT_EQ(study.record(groups.first).group_operation, 2); // below the cut
    EXPECT_EQ(study.record(groups.second).group_operation, 1);
    EXPECT_EQ(groups.difference, study.record(groups.first).area - study.record(groups.second).area);
    EXPECT_STREQ(groups.error, "hanley-mcneil");

    study.word("interval", "score"); // the errors of a difference are those that stand beside its areas
    study.word("alternative", "greater");
    study.run();
    const vexroc_comparison oneSided = study.comparison(1);
    EXPECT_STREQ(oneSided.error, "delong");
    EXPECT_EQ(oneSided.std_error,
              std::hypot(study.record(oneSided.first).std_error, study.record(oneSided.second).std_error));
    const double twoSided = vexroc_two_sided_p(oneSided.z, nullptr);
    EXPECT_NEAR(oneSided.p_value, oneSided.z > 0 ? twoSided / 2 : 1 - twoSided / 2, 1e-15);
    study.word("interval", "record");
    study.word("alternative", "two-sided");

    study.word("comparison", "paired");
    study.run(); // once more, with other settings
    const vexroc_comparison pair = study.comparison(0);
    EXPECT_EQ(pair.first + pair.second, 1);
    const Numbers expected =
        numbers(pairedOf({study.states, study.first, study.second}, {.positiveValue = &positiveState}));
    EXPECT_EQ(
        (Numbers{{pair.z}, {pair.significance}, {pair.difference}, {pair.std_error}, {pair.ci_lower}, {pair.ci_upper}}),
        Numbers(expected.end() - 6, expected.end()));
    ASSERT_EQ(vexroc_analysis_warning_count(study.handle), 2);
    for (int i = 0; i < 2; ++i) {
        const auto warning = study.get<vexroc_warning>(vexroc_analysis_warning, i);
        EXPECT_EQ(warning.parameter_count, warning.code == 430102 ? 2 : 0) << warning.name;
    }
}

TEST(AnalysisHandle, TellsWhatBecameOfEachRow)
{
    const std::vector<double> columns[] = {
        // after the sixth row, those that are used
        {missing, 1, 0, 1, 1, 0, /**/ 1, 1, 0, 1, 0, 0, 1, 0},
        {missing, missing, 1, 3, 1, 2, /**/ 1, 2, 1, 1, 1, 2, 2, 2},
        {missing, 1, missing, 0.2, 0.4999, 3e9, /**/ 2.5, 1, 1, 1, 2, 2, 2, 0.5},
        {9, 9, 9, 9, missing, 9, /**/ 3, missing, missing, 2, 1, 4, 7, 5},
        {9, 9, 9, missing, 9, 9, /**/ missing, missing, 4, 5, 2, 1, 7, 6},
    };
    const Analysis analysis;
    for (const std::vector<double>& column : columns)
        analysis.column("column", column);
    analysis.part("state", 0);
    analysis.part("group", 1);
    analysis.part("weight", 2);
    for (const int test : {3, 4, 3}) // one twice
        analysis.part("test", test);
    analysis.number("group_first", 1);
    analysis.number("group_second", 2);
    analysis.run();
    // The first reason counts, and neither group goes before the weight.
    EXPECT_THAT(analysis.rows(), ElementsAre(14, 1, 1, 1, 1, 2, 0, 4, 4, 7, 6, 4, 2, 1));
    EXPECT_EQ(analysis.recordRows(1), std::pair(5LL, 4LL)); // of the second group
    EXPECT_EQ(analysis.gap(3), std::pair(1LL, 1LL));
    EXPECT_EQ(analysis.gap(4), std::pair(2LL, 0LL));
    EXPECT_EQ(vexroc_analysis_missing_test(analysis.handle, 1, nullptr, nullptr), VEXROC_INVALID);
    EXPECT_THAT(vexroc_last_error(), HasSubstr("column 1 was no test"));
    EXPECT_EQ(vexroc_analysis_left_out_count(analysis.handle), 3);
    EXPECT_EQ(analysis.record(0).positive + analysis.record(1).positive, 3);

    analysis.word("comparison", "paired"); // all cases, in all tests or none
    analysis.run();
    EXPECT_THAT(analysis.rows(), ElementsAre(14, 1, 1, 1, 0, 3, 3, 2, 3, 3, 5, 4, 2, 1));
    EXPECT_EQ(analysis.recordRows(1), std::pair(14LL, 8LL));
    EXPECT_EQ(analysis.record(0).weighted_positive, 3);
    EXPECT_EQ(analysis.record(0).weighted_negative, 5);
    EXPECT_EQ(analysis.gap(4), std::pair(2LL, 0LL));

    analysis.number("positive_value", 5); // which no row has: counted all the same
    ASSERT_EQ(vexroc_analysis_run(analysis.handle), VEXROC_NO_RESULT);
    EXPECT_EQ(analysis.rows()[8], 5); // negative
    EXPECT_EQ(vexroc_analysis_left_out_count(analysis.handle), 3);
}

TEST(AnalysisHandle, TellsTheCountsAndTheBestCutOffs)
{
    // Smaller values are positive. Below 3 lie two positive cases and one negative, below 8 four and three.
    const Sample sample{{1, 1, 0, 0, 0, 1, 1, 0}, {1, 2, 2, 4, 5, 6, 7, 9}, {}};
    const Analysis analysis;
    analysis.part("state", analysis.column("state", sample.states));
    analysis.part("test", analysis.column("test", sample.values));
    analysis.word("direction", "smaller");
    analysis.number("pr", 1);
    analysis.run();
    const auto rows = static_cast<std::size_t>(analysis.record(0).curve_rows);
    std::vector<long long> truePositive(rows);
    std::vector<long long> falsePositive(rows);
    expectOk(vexroc_analysis_curve_counts(analysis.handle, 0, truePositive.data(), falsePositive.data()));
    EXPECT_THAT(truePositive, ElementsAre(0, 1, 2, 2, 2, 3, 4, 4));
    EXPECT_THAT(falsePositive, ElementsAre(0, 0, 1, 2, 3, 3, 3, 4));

    ASSERT_EQ(vexroc_analysis_best_cut_off_count(analysis.handle, 0), 3); // a tie
    EXPECT_EQ(analysis.bestCutOff(0, 0).cut_off, 1.5);
    EXPECT_EQ(analysis.bestCutOff(0, 1).cut_off, 3);
    const vexroc_cut_off last = analysis.bestCutOff(0, 2);
    EXPECT_EQ(std::tuple(last.cut_off, last.sensitivity, last.specificity), std::tuple(8.0, 1.0, 0.25));
    EXPECT_EQ(std::tuple(last.true_positive, last.false_positive, last.true_negative, last.false_negative),
              std::tuple(4, 3, 1, 0));
    vexroc_cut_off none{};
    none.struct_size = sizeof none;
    EXPECT_EQ(vexroc_analysis_best_cut_off(analysis.handle, 0, 3, &none), VEXROC_INVALID);
    EXPECT_EQ(vexroc_analysis_best_cut_off_count(analysis.handle, 1), 0);
    expectRecord(analysis, 0, sample.states, sample.values, {.larger = "smaller"}, 0.95);
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
    study.run();
    EXPECT_EQ(vexroc_analysis_left_out_count(study.handle), 1); // without weight
    for (const char* part : {"group", "weight", "test"})
        study.part(part, -1);
    study.part("test", 2);
    study.word("direction", "LARGER");
    study.number("roc", 0);
    study.run();
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
    study.run();
    EXPECT_GT(shares.size(), 2u);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));

    const auto reenter = [](void* user) {
        auto* const analysis = static_cast<vexroc_analysis*>(user);
        EXPECT_EQ(vexroc_analysis_status(analysis, nullptr, nullptr), VEXROC_INVALID);
        EXPECT_THAT(vexroc_last_error(), HasSubstr("no results yet: the analysis is running"));
        return int(vexroc_analysis_run(analysis) != VEXROC_INVALID);
    };
    EXPECT_EQ(vexroc_analysis_on_cancel(study.handle, reenter, study.handle), VEXROC_OK);
    study.run(); // a callback with the same handle is turned away
    const auto stop = [](void*) { return 1; };
    EXPECT_EQ(vexroc_analysis_on_cancel(study.handle, stop, nullptr), VEXROC_OK);
    EXPECT_EQ(vexroc_analysis_run(study.handle), VEXROC_CANCELLED);
    EXPECT_EQ(vexroc_analysis_record_count(study.handle), 0);
}

TEST(AnalysisHandle, SaysWhatCannotBe)
{
    constexpr auto run = vexroc_analysis_run;
    constexpr auto add = vexroc_analysis_add_column;
    constexpr auto column = vexroc_analysis_set_column;
    constexpr auto number = vexroc_analysis_set_number;
    constexpr auto word = vexroc_analysis_set_word;
    const std::vector<double> three{1, 2, 3};
    const std::vector<double> fractions{0, missing, 0.5, 1, 1, 1, 1, 1, 1, 1};
    const std::vector<double> negative{0, missing, 0.5, -1, 1, 1, 1, 1, 1, 1};
    const std::vector<double> many{2147483646, 2, 1, 1, 1, 1, 1, 1, 1, 1};
    const struct {
        const char* message;
        std::function<int(vexroc_analysis*)> call;
        int result = VEXROC_INVALID;
    } faults[] = {
        {"analysis is null", [](auto*) { return run(nullptr); }},
        {"handle is null", [](auto*) { return vexroc_analysis_new(nullptr); }},
        {"call vexroc_analysis_run first", [](auto* a) { return vexroc_analysis_status(a, nullptr, nullptr); }},
        {"\"x\" has 3 rows; the columns before it have 10",
         [&](auto* a) { return add(a, "x", &three[0], 3, nullptr); }},
        {"-1 rows", [](auto* a) { return add(a, "x", nullptr, -1, nullptr); }},
        {"values is null", [](auto* a) { return add(a, "x", nullptr, 10, nullptr); }},
        {"no column 9; there are 3", [](auto* a) { return column(a, "test", 9); }},
        {"no column -2", [](auto* a) { return column(a, "group", -2); }},
        {"no setting \"tset\" takes a column", [](auto* a) { return column(a, "tset", 1); }},
        {"no setting \"levle\" takes a number", [](auto* a) { return number(a, "levle", 0.9); }},
        {"no setting \"way\" takes a word", [](auto* a) { return word(a, "way", "up"); }},
        {"the words are \"larger\", \"smaller\"", [](auto* a) { return word(a, "direction", "up"); }},
        {"between 0 and 1", [](auto* a) { return number(a, "confidence_level", 95); }},
        {"group_cut: NaN", [](auto* a) { return number(a, "group_cut", missing); }},
        {"no state", [](auto* a) { return column(a, "state", -1) + run(a); }},
        {"\"state\" is the state", [](auto* a) { return column(a, "test", 0) + run(a); }},
        {"a group needs one of group_cut", [](auto* a) { return column(a, "group", 2) + run(a); }},
        {"set \"group\"", [](auto* a) { return number(a, "group_cut", 1) + run(a); }},
        {"the same value",
         [](auto* a) {
             return column(a, "group", 2) + number(a, "group_first", 1) + number(a, "group_second", 1) + run(a);
         }},
        {"is no test; take it back", [](auto* a) { return vexroc_analysis_set_direction(a, 0, "smaller") + run(a); }},
        {"direction: no column 7", [](auto* a) { return vexroc_analysis_set_direction(a, 7, nullptr); }},
        {"no word \"up\"; the words are \"larger\"", [](auto* a) { return vexroc_analysis_set_direction(a, 1, "up"); }},
        {"no state is listed", [](auto* a) { return word(a, "negative", "listed") + run(a); }},
        {"2 is the positive state as well", [](auto* a) { return vexroc_analysis_add_negative(a, 2) + run(a); }},
        {"name_value: NaN", [](auto* a) { return vexroc_analysis_name_value(a, 1, missing, "x"); }},
        {"a run takes one of them", [](auto* a) { return column(a, "count", 1) + column(a, "weight", 2) + run(a); }},
        {"count: row 3 of column \"x\" holds 0.5; a count is",
         [&](auto* a) { return add(a, "x", &fractions[0], 10, nullptr) + column(a, "count", 3) + run(a); }},
        {"count: row 2 of column \"x\" brings the cases to more than 2147483647",
         [&](auto* a) { return add(a, "x", &many[0], 10, nullptr) + column(a, "count", 3) + run(a); }},
        {"mann-whitney tests the area 0.5 alone; against 0.7",
         [](auto* a) { return number(a, "null_area", 0.7) + word(a, "p_value", "mann-whitney") + run(a); }},
        {"null_area: expected a number between", [](auto* a) { return number(a, "null_area", 1); }},
        {"bi-negative is an assumption",
         [](auto* a) { return word(a, "distribution", "bi-negative") + word(a, "interval", "score") + run(a); }},
        {"replicates: 10 are too few",
         [](auto* a) { return number(a, "replicates", 10) + word(a, "interval", "bca") + run(a); }},
        {"there are none; name their column", [](auto* a) { return word(a, "weight_kind", "probability") + run(a); }},
        {"weight: row 4 of column \"x\" holds -1; a weight is",
         [&](auto* a) {
             return add(a, "x", &negative[0], 10, nullptr) + column(a, "weight", 3)
                 + word(a, "weight_kind", "probability") + word(a, "interval", "logit") + run(a);
         }},
        {"there are no summaries",
         [](auto* a) {
             const vexroc_summary* summary = nullptr;
             return run(a) + vexroc_analysis_summary(a, 0, &summary);
         }},
        {"the last run was refused",
         [](auto* a) {
             column(a, "test", -1);
             run(a);
             return vexroc_analysis_status(a, nullptr, nullptr);
         }},
        {"430007 Setting_Error_Group_Required", [](auto* a) { return word(a, "comparison", "independent") + run(a); },
         VEXROC_NO_RESULT},
        {"no positive case, so there is no area; check \"positive_value\" and which rows are left out (430004 Setting",
         [](auto* a) { return number(a, "positive_value", 7) + run(a); }, VEXROC_NO_RESULT},
        {"no record 5; there are 2",
         [](auto* a) { return run(a) + vexroc_analysis_curve(a, 5, nullptr, nullptr, nullptr); }},
        {"struct_size is not set",
         [](auto* a) {
             vexroc_record record{};
             return run(a) + vexroc_analysis_record(a, 0, &record);
         }},
    };
    for (const auto& [message, call, result] : faults) {
        const Study study;
        EXPECT_EQ(call(study.handle), result) << message;
        EXPECT_THAT(vexroc_last_error(), HasSubstr(message));
    }
    EXPECT_EQ(vexroc_analysis_record_count(nullptr), 0);
    vexroc_analysis_free(nullptr);
}

/// Version 2 ended where these members of version 3 follow.
TEST(AnalysisHandle, FillsNoMoreThanAnOlderStructureHolds)
{
    const Study study;
    study.word("comparison", "paired");
    study.run();
    vexroc_record record{};
    record.struct_size = offsetof(vexroc_record, distinct_values);
    record.distinct_values = -7;
    EXPECT_EQ(vexroc_analysis_record(study.handle, 0, &record), VEXROC_OK);
    EXPECT_EQ(record.curve_rows, study.record(0).curve_rows);
    EXPECT_EQ(record.distinct_values, -7);
    EXPECT_EQ(record.struct_size, offsetof(vexroc_record, distinct_values));
    vexroc_comparison comparison{};
    comparison.struct_size = offsetof(vexroc_comparison, p_value);
    comparison.p_value = -7;
    EXPECT_EQ(vexroc_analysis_comparison(study.handle, 0, &comparison), VEXROC_OK);
    EXPECT_EQ(comparison.ci_upper, study.comparison(0).ci_upper);
    EXPECT_EQ(comparison.p_value, -7);
}
