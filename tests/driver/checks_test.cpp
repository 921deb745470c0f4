#include "host/VexMV.h"
#include "tests/driver/analyses.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace roctest;
using namespace ROCALG_920;
using VexCommon_920::VexMV;

using Warnings = std::vector<std::vector<long>>;

/// What can be wrong with an analysis, in the order in which it is looked for.
enum Fault { noStateVar, missingStateValue, noTestVar, comparisonFault, noData, constantGroup, stateNotFound, faults };

/// The ways in which a comparison does not fit the settings.
struct ComparisonFault {
    int type;
    long code;
};
constexpr ComparisonFault comparisonFaults[] = {
    {ROCConst_920::PairedComparison, statusCode::fewerThanTwoTestVars},
    {ROCConst_920::IndependentComparison, statusCode::groupRequired},
    {3, statusCode::unexpected}, // no such comparison
};

class FaultyRun {
public:
    FaultyRun(unsigned faultSet, const ComparisonFault& comparison) : set_(faultSet), comparison_(comparison) {}

    [[nodiscard]] bool isPossible() const
    {
        return !(has(constantGroup) && has(comparisonFault)) && !(has(stateNotFound) && has(missingStateValue));
    }
    [[nodiscard]] long expectedCode() const
    {
        const long codes[faults] = {
            statusCode::stateVarNotSet, statusCode::stateValueMissing, statusCode::noTestVar, comparison_.code,
            statusCode::noData,         statusCode::groupConstant,     statusCode::stateValueNotFound};
        for (int fault = 0; fault < faults; ++fault)
            if (has(static_cast<Fault>(fault)))
                return codes[fault];
        return statusCode::noError;
    }
    [[nodiscard]] Outcome run() const
    {
        ROCSetting setting;
        const double found = has(stateNotFound) ? 77.0 : 1.0;
        setting.setStateVar(has(noStateVar) ? -1 : state, has(missingStateValue) ? VexMV::Missing() : found);
        const int unusable = has(noStateVar) ? -1 : int{state};
        setting.setTestVars({has(noTestVar) ? unusable : int{test1}});
        if (has(comparisonFault))
            setting.setComparisonType(static_cast<ROCConst_920::ComparisonType>(comparison_.type));
        if (has(constantGroup)) {
            setting.setMidPointGroupVar(constant);
            setting.setComparisonType(ROCConst_920::IndependentComparison);
        }
        HostData data = analysisData(has(noData) ? 0 : 24);
        return analyse(setting, data);
    }

private:
    [[nodiscard]] bool has(Fault fault) const { return (set_ >> fault & 1U) != 0; }

    unsigned set_;
    ComparisonFault comparison_;
};

TEST(Checks, TheFirstFaultInTheFixedOrderEndsTheRun)
{
    for (const ComparisonFault& comparison : comparisonFaults)
        for (unsigned set = 0; set < 1U << faults; ++set) {
            const FaultyRun run(set, comparison);
            if (!run.isPossible())
                continue;
            SCOPED_TRACE("faults " + std::to_string(set) + ", comparison " + std::to_string(comparison.type));
            const Outcome outcome = run.run();
            EXPECT_EQ(outcome.code, run.expectedCode());
            EXPECT_EQ(outcome.built, run.expectedCode() == 0);
            EXPECT_EQ(outcome.hasResults, run.expectedCode() == 0);
        }
}

TEST(Checks, AnEmptyGroupEndsAnIndependentComparisonOnlyUnderTheNonparametricAssumption)
{
    HostData data = analysisData(24);
    ROCSetting setting = settingOf(analyses()[0]);
    setting.setComparisonType(ROCConst_920::IndependentComparison);
    setting.setSelectGroupVar(group, 3.0, 99.0);
    EXPECT_EQ(analyse(setting, data).code, statusCode::groupEmpty);
    setting.setSelectGroupVar(group, 3.0, 3.0); // all cases go to the first
    EXPECT_EQ(analyse(setting, data).code, statusCode::groupEmpty);
    setting.setDistribution(ROCConst_920::BiNegativeExponential);
    const Outcome outcome = analyse(setting, data);
    EXPECT_EQ(outcome.code, 0);
    ASSERT_EQ(outcome.comparisons.size(), 3u);
    for (std::size_t i = 4; i < outcome.comparisons[0].size(); ++i)
        EXPECT_TRUE(VexMV::IsMissing(outcome.comparisons[0][i].value)) << i;

    // One variable without values in a group is enough, and ends the run before the warnings of the end.
    setting.setDistribution(ROCConst_920::NonParametric);
    setting.setCutOffGroupVar(group, 4.0);
    for (std::size_t i = 0; i < data.columns[test2].size(); ++i)
        if (data.columns[group][i] < 4.0)
            data.columns[test2][i] = std::nan("");
    const Outcome oneVariable = analyse(setting, data);
    EXPECT_EQ(oneVariable.code, statusCode::groupEmpty);
    EXPECT_EQ(oneVariable.warnings, Warnings{});
}

TEST(Checks, IndicesThatTheHostDoesNotKnowEndTheRun)
{
    constexpr int beyond = constant + 1;
    using Configure = void (*)(ROCSetting&);
    const Configure cases[] = {
        [](ROCSetting& s) { s.setStateVar(beyond, 1.0); },
        [](ROCSetting& s) { s.setStateVar(-2, 1.0); }, // only -1 means that none is set
        [](ROCSetting& s) { s.setTestVars({test1, beyond}); },
        [](ROCSetting& s) { s.setFrequencyWeightVar(beyond); },
        [](ROCSetting& s) { s.setCutOffGroupVar(beyond, 1.0); },
        [](ROCSetting& s) { s.setMidPointGroupVar(std::numeric_limits<int>::max()); },
    };
    HostData data = analysisData(24);
    for (const Configure configure : cases) {
        SCOPED_TRACE(&configure - cases);
        ROCSetting setting = settingOf(analyses()[0]);
        configure(setting);
        EXPECT_EQ(analyse(setting, data).code, statusCode::unexpected);
    }
    ROCSetting unweighted = settingOf(analyses()[0]);
    unweighted.setFrequencyWeightVar(-5);
    EXPECT_EQ(analyse(unweighted, data), analyse(settingOf(analyses()[0]), data));

    HostData shortRecords = analysisData(24);
    shortRecords.columns.resize(test3); // the list knows more variables than a record has values
    EXPECT_EQ(analyse(settingOf(analyses()[0]), shortRecords).code, statusCode::unexpected);
}

TEST(Checks, AComparisonThatDoesNotExistIsRefusedBeforeAnyDataAreRead)
{
    Script script;
    HostData data = analysisData(24, &script);
    ROCSetting setting = settingOf(analyses()[0]);
    setting.setComparisonType(static_cast<ROCConst_920::ComparisonType>(3));
    setting.setMidPointGroupVar(group);
    RocAlgorithm facade(setting, data.variables);
    ScriptedIter records(data, script);
    EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), statusCode::unexpected);
    EXPECT_EQ(script.calls(), 0);
}

TEST(Checks, TestVariablesAreTheUsableOnesInTheOrderGivenRepeatsIncluded)
{
    HostData data = analysisData(24);
    ROCSetting setting = settingOf(analyses()[0]);
    setting.setTestVars({-7, test2, state, test1, -1, test2});
    const Outcome outcome = analyse(setting, data);
    ASSERT_EQ(outcome.records.size(), 3u);
    EXPECT_EQ(outcome.records[0].front(), Exact{test2});
    EXPECT_EQ(outcome.records[1].front(), Exact{test1});
    EXPECT_EQ(outcome.records[2], outcome.records[0]);
    EXPECT_EQ(outcome.warnings, (Warnings{{statusCode::tiesExist, test2, test1, test2}}));
    setting.setTestVars({test2});
    EXPECT_EQ(analyse(setting, data).records[0], outcome.records[0]); // a repeat is not fed twice

    // Two entries pass the check of a paired comparison, although one is not usable.
    setting.setComparisonType(ROCConst_920::PairedComparison);
    setting.setTestVars({state, test2});
    const Outcome one = analyse(setting, data);
    EXPECT_EQ(one.code, 0);
    EXPECT_EQ(one.records.size(), 1u);
    EXPECT_TRUE(one.comparisons.empty());
}

TEST(Warnings, ComeInOrderAndStayWithAnError)
{
    HostData data = analysisData(24);
    struct Case {
        const char* name;
        void (*configure)(ROCSetting&);
        long code;
        Warnings warnings;
    };
    const Case cases[] = {
        {"a group and a paired comparison", [](ROCSetting& s) {
             s.setMidPointGroupVar(group);
             s.setComparisonType(ROCConst_920::PairedComparison);
         }, 0, {{statusCode::groupIgnored}, {statusCode::tiesExist, test1, test2, test3}}},
        {"a group, a paired comparison, one test", [](ROCSetting& s) {
             s.setMidPointGroupVar(group);
             s.setComparisonType(ROCConst_920::PairedComparison);
             s.setTestVars({test1});
         }, statusCode::fewerThanTwoTestVars, {{statusCode::groupIgnored}}},
        {"ties and unequal counts", [](ROCSetting& s) {
             s.setCutOffGroupVar(group, 4.0);
             s.setTestVars({test3, test1});
             s.setDistribution(ROCConst_920::BiNegativeExponential);
         }, 0, {{statusCode::tiesExist, test3, test1}, {statusCode::distributionChanged}}},
        {"the state value does not occur", [](ROCSetting& s) {
             s.setStateVar(state, 2.0);
             s.setMidPointGroupVar(group);
             s.setComparisonType(ROCConst_920::PairedComparison);
         }, statusCode::stateValueNotFound, {{statusCode::groupIgnored}}},
        {"mid point of a two-valued variable", [](ROCSetting& s) {
             s.setTestVars({test1});
             s.setMidPointGroupVar(code);
         }, 0, {{statusCode::tiesExist, test1}}},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.name);
        ROCSetting setting = settingOf(analyses()[0]);
        expected.configure(setting);
        const Outcome outcome = analyse(setting, data);
        EXPECT_EQ(outcome.code, expected.code);
        EXPECT_EQ(outcome.warnings, expected.warnings);
    }
}

TEST(Warnings, TiesAreNamedForTheVariablesThatHaveThem)
{
    HostData data;
    data.add({1, 0, 1, 0, 1, 0});
    const int untied = data.add({1, 2, 3, 4, 5, 6});
    const int within = data.add({3, 1, 3, 1, 3, 1}); // equal values, but never in both states
    const int tied = data.add({1, 1, 2, 3, 4, 5});
    const int alsoTied = data.add({9, 8, 7, 7, 6, 5});
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars({alsoTied, untied, within, tied});
    EXPECT_EQ(analyse(setting, data).warnings, (Warnings{{statusCode::tiesExist, alsoTied, tied}}));
    setting.setTestVars({untied, within});
    EXPECT_EQ(analyse(setting, data).warnings, Warnings{});
    // A tie of two cases that groups keep apart is none.
    const int side = data.add({1, 2, 2, 1, 1, 2});
    setting.setTestVars({tied});
    setting.setSelectGroupVar(side, 1.0, 2.0);
    EXPECT_EQ(analyse(setting, data).warnings, Warnings{});
    // A tie in one group is enough, whichever comes first.
    const int half = data.add({1, 1, 1, 2, 2, 2});
    for (const double first : {1.0, 2.0}) {
        setting.setSelectGroupVar(half, first, 3.0 - first);
        EXPECT_EQ(analyse(setting, data).warnings, (Warnings{{statusCode::tiesExist, tied}}));
    }
}

TEST(Warnings, OneUnequalSpaceChangesTheAssumptionOfTheWholeRun)
{
    HostData data;
    data.add({1, 0, 1, 0, 1, 0, 1, 0});
    const int balanced = data.add({1, 2, 3, 4, 5, 6, 8, 7});
    const int unequal = data.add({1, 2, 3, 4, 5, std::nan(""), 8, 7});
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars({balanced, unequal});
    const Outcome nonparametric = analyse(setting, data);
    const std::size_t changedFlag = 17;

    setting.setDistribution(ROCConst_920::BiNegativeExponential);
    const Outcome changed = analyse(setting, data);
    EXPECT_EQ(changed.warnings, (Warnings{{statusCode::distributionChanged}}));
    for (std::size_t i = 0; i < 2; ++i) {
        Numbers expected = nonparametric.records[i];
        expected[changedFlag] = {1.0};
        EXPECT_EQ(changed.records[i], expected);
    }
    setting.setTestVars({balanced});
    const Outcome kept = analyse(setting, data);
    EXPECT_EQ(kept.warnings, Warnings{});
    EXPECT_EQ(kept.records[0][changedFlag], Exact{0.0});
    EXPECT_NE(kept.records[0], nonparametric.records[0]);

    // A paired comparison has no use for the assumption.
    setting.setTestVars({balanced, unequal});
    setting.setComparisonType(ROCConst_920::PairedComparison);
    const Outcome paired = analyse(setting, data);
    EXPECT_EQ(paired.warnings, Warnings{});
    EXPECT_EQ(paired.records[1][changedFlag], Exact{0.0});
}

} // namespace
