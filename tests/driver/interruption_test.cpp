#include "tests/driver/analyses.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <sstream>

/// Runs that the host stops: at every question whether to, and by an exception from every call into it.
namespace {

using namespace roctest;
using namespace ROCALG_920;

constexpr std::size_t nRecords = 9;

/// Data, facade and all that the facade calls, under one script.
class ScriptedHost {
public:
    explicit ScriptedHost(const Analysis& analysis)
        : data_(analysisData(nRecords, &script)), setting_(settingOf(analysis)), facade(setting_, data_.variables)
    {
        facade.SetProgressListener(&listener_);
        facade.SetCancelPtr(&cancel_);
    }
    /// Starts the counts of the script again.
    long run(int throwAt, int cancelAt)
    {
        script = Script();
        script.throwAt = throwAt;
        script.cancelAt = cancelAt;
        ScriptedIter records(data_, script);
        return facade.BuildModel(records).GetErrorCode();
    }

    Script script;

private:
    HostData data_;
    ROCSetting setting_;
    ScriptedListener listener_{script};
    ScriptedCancel cancel_{script};

public:
    RocAlgorithm facade;
};

/// Interrupts a run at one point after the other, on a fresh facade and on one that has results. Afterwards the
/// fresh facade has none, the other has still its old ones, and both work. Returns the number of points.
int interruptEverywhere(const Analysis& analysis, int points,
                        const std::function<long(ScriptedHost&, int)>& interrupted, long code)
{
    ScriptedHost used(analysis);
    EXPECT_EQ(used.run(Script::never, Script::never), 0);
    const Outcome expected = readBack(used.facade);
    for (int point = 0; point < points; ++point) {
        SCOPED_TRACE("point " + std::to_string(point));
        ScriptedHost fresh(analysis);
        EXPECT_EQ(interrupted(fresh, point), code);
        EXPECT_FALSE(readBack(fresh.facade).hasResults);
        EXPECT_FALSE(fresh.facade.IsModelBuilt());
        std::ostringstream shown;
        fresh.facade.Display(shown);
        EXPECT_EQ(shown.str(), "");
        EXPECT_EQ(fresh.run(Script::never, Script::never), 0);
        EXPECT_EQ(readBack(fresh.facade), expected);

        const ROCOutputs* const results = used.facade.GetOutputStats();
        EXPECT_EQ(interrupted(used, point), code);
        EXPECT_EQ(used.facade.GetOutputStats(), results);
        const Outcome after = readBack(used.facade);
        EXPECT_EQ(after.records, expected.records);
        EXPECT_EQ(after.comparisons, expected.comparisons);
        EXPECT_TRUE(code == statusCode::cancelled || after.warnings.empty()) << "warnings of an earlier run";
        if (testing::Test::HasFailure())
            return point;
    }
    EXPECT_EQ(used.run(Script::never, Script::never), 0);
    EXPECT_EQ(readBack(used.facade), expected);
    return points;
}

TEST(Cancel, AtEveryQueryEndsTheRunWithoutResults)
{
    int covered = 0;
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        ScriptedHost whole(analysis);
        ASSERT_EQ(whole.run(Script::never, Script::never), 0);
        const int polls = whole.script.calls(Script::cancelQuery);
        const auto cancelled = [](ScriptedHost& host, int point) {
            const long code = host.run(Script::never, point);
            EXPECT_EQ(host.script.calls(Script::cancelQuery), point + 1) << "asked again after a yes";
            return code;
        };
        covered += interruptEverywhere(analysis, polls, cancelled, statusCode::cancelled);
    }
    std::cout << "cancel points covered: " << covered << '\n';
    EXPECT_GT(covered, static_cast<int>(analyses().size() * nRecords));
}

TEST(Cancel, IsAskedBeforeEveryRecordAndEveryStepOfTheResults)
{
    const auto pollsAfterTheRecords = [](const Analysis& analysis) {
        ScriptedHost host(analysis);
        EXPECT_EQ(host.run(Script::never, Script::never), 0);
        return host.script.calls(Script::cancelQuery) - static_cast<int>(nRecords);
    };
    EXPECT_EQ(pollsAfterTheRecords(analyses()[0]), 3);  // spaces
    EXPECT_EQ(pollsAfterTheRecords(analyses()[4]), 6);  // spaces: two for each variable
    EXPECT_EQ(pollsAfterTheRecords(analyses()[5]), 6);  // none in the pass for the mid point
    EXPECT_EQ(pollsAfterTheRecords(analyses()[8]), 3);  // variables
    EXPECT_EQ(pollsAfterTheRecords(analyses()[10]), 3); // pairs
}

TEST(HostException, FromEveryCallBecomesAStatusWithoutResults)
{
    int covered = 0;
    std::array<int, Script::callKinds> byKind{};
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        ScriptedHost whole(analysis);
        ASSERT_EQ(whole.run(Script::never, Script::never), 0);
        for (int kind = 0; kind < Script::callKinds; ++kind)
            byKind[static_cast<std::size_t>(kind)] += whole.script.calls(static_cast<Script::Call>(kind));
        const auto thrown = [](ScriptedHost& host, int point) { return host.run(point, Script::never); };
        // What was built before says nothing after an exception: the facade keeps its flag, its status tells.
        covered += interruptEverywhere(analysis, whole.script.calls(), thrown, statusCode::unexpected);
    }
    std::cout << "calls into the host that threw: " << covered << " (more: " << byKind[Script::hasMore]
              << ", next: " << byKind[Script::next] << ", new pass: " << byKind[Script::newPass]
              << ", notify: " << byKind[Script::notify] << ", cancel query: " << byKind[Script::cancelQuery]
              << ", variable type: " << byKind[Script::varType] << ", value type: " << byKind[Script::valueType]
              << ")\n";
    for (const Script::Call kind : {Script::hasMore, Script::next, Script::newPass, Script::notify,
                                    Script::cancelQuery, Script::varType, Script::valueType})
        EXPECT_GT(byKind[kind], 0) << kind;
}

} // namespace
