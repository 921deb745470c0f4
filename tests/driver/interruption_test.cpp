#include "tests/driver/analyses.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>

/// Runs that the host stops: at every question whether to, and by an exception from every call into it.
namespace {

using namespace roctest;
using namespace ROCALG_920;

constexpr std::size_t nRecords = 9;

/// The counts of a whole run.
Script wholeRun(const Analysis& analysis)
{
    HostData data = analysisData(nRecords);
    EXPECT_EQ(Host(settingOf(analysis), data).run(), 0);
    return *data.script;
}

/// Interrupts a run at one point after the other, on a fresh facade and on one that has results. Afterwards the
/// fresh facade has none, the other has still its old ones, and both work. Returns the number of points.
int interruptEverywhere(const Analysis& analysis, int points, const std::function<long(Host&, int)>& interrupted,
                        long code)
{
    SCOPED_TRACE(analysis.name);
    HostData usedData = analysisData(nRecords);
    Host used(settingOf(analysis), usedData);
    EXPECT_EQ(used.run(), 0);
    const Outcome expected = used.outcome();
    for (int point = 0; point < points && !testing::Test::HasFailure(); ++point) {
        SCOPED_TRACE("point " + std::to_string(point));
        HostData data = analysisData(nRecords);
        Host fresh(settingOf(analysis), data);
        EXPECT_EQ(interrupted(fresh, point), code);
        EXPECT_FALSE(fresh.outcome().hasResults);
        EXPECT_FALSE(fresh.facade.IsModelBuilt());
        EXPECT_EQ(fresh.run(), 0);
        EXPECT_EQ(fresh.outcome(), expected);

        const ROCOutputs* const results = used.facade.GetOutputStats();
        EXPECT_EQ(interrupted(used, point), code);
        EXPECT_EQ(used.facade.GetOutputStats(), results);
        const Outcome after = used.outcome();
        EXPECT_EQ(after.records, expected.records);
        EXPECT_EQ(after.comparisons, expected.comparisons);
        EXPECT_TRUE(code == statusCode::cancelled || after.warnings.empty()) << "warnings of an earlier run";
    }
    EXPECT_EQ(used.run(), 0);
    EXPECT_EQ(used.outcome(), expected);
    return points;
}

TEST(Cancel, AtEveryQueryEndsTheRunWithoutResults)
{
    const auto cancelled = [](Host& host, int point) {
        const long code = host.run(Script::never, point);
        EXPECT_EQ(host.calls(Script::cancelQuery), point + 1) << "asked again after a yes";
        return code;
    };
    int covered = 0;
    for (const Analysis& analysis : analyses())
        covered += interruptEverywhere(analysis, wholeRun(analysis).byKind[Script::cancelQuery], cancelled,
                                       statusCode::cancelled);
    std::cout << "cancel points covered: " << covered << '\n';
    EXPECT_GT(covered, static_cast<int>(analyses().size() * nRecords));
}

TEST(Cancel, IsAskedBeforeEveryRecordAndEveryStepOfTheResults)
{
    const std::pair<std::size_t, int> stepsOfAnalyses[] = {
        {0, 3},  // spaces
        {4, 6},  // spaces: two for each variable
        {5, 6},  // none in the pass for the mid point
        {8, 3},  // variables
        {10, 3}, // pairs
    };
    for (const auto& [analysis, steps] : stepsOfAnalyses)
        EXPECT_EQ(wholeRun(analyses()[analysis]).byKind[Script::cancelQuery], static_cast<int>(nRecords) + steps);
}

TEST(HostException, FromEveryCallBecomesAStatusWithoutResults)
{
    // What was built before says nothing after an exception: the facade keeps its flag, its status tells.
    const auto thrown = [](Host& host, int point) { return host.run(point); };
    int covered = 0;
    std::array<int, Script::callKinds> byKind{};
    for (const Analysis& analysis : analyses()) {
        const Script whole = wholeRun(analysis);
        for (std::size_t kind = 0; kind < byKind.size(); ++kind)
            byKind[kind] += whole.byKind[kind];
        covered += interruptEverywhere(analysis, whole.calls, thrown, statusCode::unexpected);
    }
    std::cout << "calls into the host that threw: " << covered << " (more: " << byKind[Script::hasMore]
              << ", next: " << byKind[Script::next] << ", new pass: " << byKind[Script::newPass]
              << ", notify: " << byKind[Script::notify] << ", cancel query: " << byKind[Script::cancelQuery]
              << ", variable type: " << byKind[Script::varType] << ", value type: " << byKind[Script::valueType]
              << ")\n";
    for (const int calls : byKind)
        EXPECT_GT(calls, 0);
}

} // namespace
