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

using Configure = void (*)(ROCSetting&);
using Warnings = std::vector<std::vector<long>>;

/// What can be wrong with an analysis.
struct Fault {
    void (*cause)(ROCSetting& setting, HostData& data);
    long code;
};

/// In the order in which they are looked for. Where two exclude each other, the one that is caused last stays.
const Fault faults[] = {
    {[](ROCSetting& s, HostData&) { s.setStateVar(-1, s.getValueOfStateVar()); }, statusCode::stateVarNotSet},
    {[](ROCSetting& s, HostData&) { s.setStateVar(state, VexMV::Missing()); }, statusCode::stateValueMissing},
    {[](ROCSetting& s, HostData&) {
         s.setTestVars({-1, state});
     },
     statusCode::noTestVar},
    {[](ROCSetting& s, HostData&) {
         s.setTestVars({s.getTestVars().back()});
         s.setComparisonType(ROCConst_920::PairedComparison);
     },
     statusCode::fewerThanTwoTestVars},
    {[](ROCSetting& s, HostData&) {
         s.setMidPointGroupVar(-1);
         s.setComparisonType(ROCConst_920::IndependentComparison);
     },
     statusCode::groupRequired},
    {[](ROCSetting& s, HostData&) { s.setComparisonType(static_cast<ROCConst_920::ComparisonType>(3)); },
     statusCode::unexpected}, // no such comparison
    {[](ROCSetting&, HostData& d) { d.columns = analysisData(0).columns; }, statusCode::noData},
    {[](ROCSetting& s, HostData&) {
         s.setMidPointGroupVar(constant);
         s.setComparisonType(ROCConst_920::IndependentComparison);
     },
     statusCode::groupConstant},
    {[](ROCSetting& s, HostData&) { s.setStateVar(state, 77.0); }, statusCode::stateValueNotFound},
};

TEST(Checks, TheFirstFaultInTheFixedOrderEndsTheRun)
{
    for (unsigned set = 0; set < 1U << std::size(faults); ++set) {
        SCOPED_TRACE("faults " + std::to_string(set));
        HostData data = analysisData(24);
        ROCSetting setting = areasOf({test1, test2});
        long expected = statusCode::noError;
        for (std::size_t i = std::size(faults); i-- > 0;)
            if ((set >> i & 1U) != 0) {
                faults[i].cause(setting, data);
                expected = faults[i].code;
            }
        const Outcome outcome = analyse(setting, data);
        EXPECT_EQ(outcome.code, expected);
        EXPECT_EQ(outcome.built, expected == 0);
        EXPECT_EQ(outcome.hasResults, expected == 0);
    }
}

TEST(Checks, AnEmptyGroupEndsAnIndependentComparisonOnlyUnderTheNonparametricAssumption)
{
    HostData data = analysisData(24);
    ROCSetting setting = areasOf({test1, test2, test3});
    setting.setComparisonType(ROCConst_920::IndependentComparison);
    for (const double second : {99.0, 3.0}) { // no case has it; all its cases go to the first group
        setting.setSelectGroupVar(group, 3.0, second);
        EXPECT_EQ(analyse(setting, data).code, statusCode::groupEmpty);
    }
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
    const Configure cases[] = {
        [](ROCSetting& s) { s.setStateVar(beyond, 1.0); },
        [](ROCSetting& s) { s.setStateVar(-2, 1.0); }, // only -1 means that none is set
        [](ROCSetting& s) {
            s.setTestVars({test1, beyond});
        },
        [](ROCSetting& s) { s.setFrequencyWeightVar(beyond); },
        [](ROCSetting& s) { s.setCutOffGroupVar(beyond, 1.0); },
        [](ROCSetting& s) { s.setMidPointGroupVar(std::numeric_limits<int>::max()); },
    };
    HostData data = analysisData(24);
    for (const Configure configure : cases) {
        SCOPED_TRACE(&configure - cases);
        ROCSetting setting = areasOf({test1});
        configure(setting);
        EXPECT_EQ(analyse(setting, data).code, statusCode::unexpected);
    }
    data.columns.resize(test3); // the list knows more variables than a record has values
    EXPECT_EQ(analyse(areasOf({test3}), data).code, statusCode::unexpected);
}

TEST(Checks, TestVariablesAreTheUsableOnesInTheOrderGivenRepeatsIncluded)
{
    HostData data = analysisData(24);
    const Outcome outcome = analyse(areasOf({-7, test2, state, test1, -1, test2}), data);
    ASSERT_EQ(outcome.records.size(), 3u);
    EXPECT_EQ(outcome.records[1], analyse(areasOf({test1}), data).records[0]);
    for (const std::size_t i : {0u, 2u})
        EXPECT_EQ(outcome.records[i], analyse(areasOf({test2}), data).records[0]); // a repeat is not fed twice
    EXPECT_EQ(outcome.warnings, (Warnings{{statusCode::tiesExist, test2, test1, test2}}));

    // Two entries pass the check of a paired comparison, although one is not usable.
    ROCSetting paired = areasOf({state, test2});
    paired.setComparisonType(ROCConst_920::PairedComparison);
    const Outcome one = analyse(paired, data);
    EXPECT_EQ(one.code, 0);
    EXPECT_EQ(one.records.size(), 1u);
    EXPECT_TRUE(one.comparisons.empty());
}

TEST(Warnings, StayWithAnError)
{
    HostData data = analysisData(24);
    ROCSetting setting = areasOf({test1});
    setting.setMidPointGroupVar(group);
    setting.setComparisonType(ROCConst_920::PairedComparison);
    Outcome expected{.code = statusCode::fewerThanTwoTestVars,
                     .warnings = {{statusCode::groupIgnored}},
                     .records = {},
                     .comparisons = {}};
    EXPECT_EQ(analyse(setting, data), expected);
    setting.setTestVars({test1, test2});
    setting.setStateVar(state, 2.0);
    expected.code = statusCode::stateValueNotFound;
    EXPECT_EQ(analyse(setting, data), expected);
}

TEST(Warnings, TiesAreNamedForTheVariablesThatHaveThem)
{
    enum { untied = 1, within, tied, alsoTied, group };
    HostData data;
    data.add({1, 0, 1, 0, 1, 0});
    data.add({1, 2, 3, 4, 5, 6});
    data.add({3, 1, 3, 1, 3, 1}); // equal values, but never in both states
    data.add({1, 1, 2, 3, 4, 5});
    data.add({9, 8, 7, 7, 6, 5});
    data.add({1, 2, 2, 1, 1, 2}); // keeps the tied cases of both apart
    ROCSetting setting = areasOf({alsoTied, untied, within, tied});
    EXPECT_EQ(analyse(setting, data).warnings, (Warnings{{statusCode::tiesExist, alsoTied, tied}}));
    setting.setSelectGroupVar(group, 1.0, 2.0);
    EXPECT_EQ(analyse(setting, data).warnings, Warnings{});
}

TEST(Warnings, OneUnequalSpaceChangesTheAssumptionOfTheWholeRun)
{
    enum { balanced = 1, unequal };
    HostData data;
    data.add({1, 0, 1, 0, 1, 0, 1, 0});
    data.add({1, 2, 3, 4, 5, 6, 8, 7});
    data.add({1, 2, 3, 4, 5, std::nan(""), 8, 7});
    for (const std::vector<int>& testVars : {std::vector<int>{unequal, balanced}, {balanced, unequal}}) {
        ROCSetting setting = areasOf(testVars);
        Outcome expected = analyse(setting, data);
        for (Numbers& record : expected.records)
            record[17] = {1.0}; // the flag
        expected.warnings = {{statusCode::distributionChanged}};
        setting.setDistribution(ROCConst_920::BiNegativeExponential);
        EXPECT_EQ(analyse(setting, data), expected);
    }
}

} // namespace
