#include "host/VexMV.h"
#include "tests/driver/analyses.h"
#include "tests/support/Sample.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

using namespace roctest;
using namespace ROCALG_920;
using VexCommon_920::VexMV;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(Progress, IsAnnouncedInTheFixedSequence)
{
    const auto announcementsOf = [](const ROCSetting& setting, std::size_t nRecords) {
        HostData data = analysisData(nRecords);
        Host host(setting, data);
        static_cast<void>(host.run());
        return host.announcements;
    };
    const auto share = [](int done, int all) { return static_cast<double>(done) / all * 0.8 + 0.2; };
    EXPECT_EQ(announcementsOf(areasOf({test1, test2}), 2500),
              (Announcements{{0, 0.01},
                             {0, 0.03},
                             {0, 0.03},
                             {1000, 0.03},
                             {2000, 0.03},
                             {2500, 0.2},
                             {2500, share(1, 2)},
                             {2500, 1.0}}));
    // No announcement of 1000 before the end: there is no record 1000.
    EXPECT_EQ(announcementsOf(areasOf({test1}), 1000),
              (Announcements{{0, 0.01}, {0, 0.03}, {0, 0.03}, {1000, 0.2}, {1000, 1.0}}));
    const Announcements start{{0, 0.01}, {0, 0.03}, {0, 0.03}, {24, 0.2}};
    Announcements all = start;
    for (int i = 1; i <= 3; ++i)
        all.emplace_back(24, share(i, 3));
    for (const Analysis& analysis : analyses())
        EXPECT_EQ(announcementsOf(settingOf(analysis), 24), all) << analysis.name;

    ROCSetting notFound = areasOf({test1});
    notFound.setStateVar(state, 5.0);
    EXPECT_EQ(announcementsOf(notFound, 24), start); // the records were read, and no results made
    EXPECT_EQ(announcementsOf(ROCSetting(), 24), Announcements{});
}

TEST(Passes, TheRecordsAreReadOnceAndOnceMoreForAMidPoint)
{
    constexpr int nRecords = 24;
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        HostData data = analysisData(nRecords);
        Host host(settingOf(analysis), data);
        ASSERT_EQ(host.run(), 0);
        EXPECT_EQ(host.calls(Script::next), analysis.passes * nRecords);
        EXPECT_EQ(host.calls(Script::newPass), analysis.passes);
    }
}

TEST(Passes, ManyPairsNeedNoFurtherPass)
{
    constexpr int nTests = 20;
    constexpr int nRecords = 60;
    Random random(3);
    HostData data;
    std::vector<int> testVars;
    for (int v = 0; v <= nTests; ++v) {
        std::vector<double> column(nRecords);
        for (double& value : column)
            value = static_cast<double>(random() % (v == 0 ? 2 : 50));
        testVars.push_back(data.add(column)); // the first is the state, which is no test variable
    }
    ROCSetting setting = areasOf(testVars);
    setting.setComparisonType(ROCConst_920::PairedComparison);
    Host host(setting, data);
    ASSERT_EQ(host.run(), 0);
    EXPECT_EQ(host.outcome().comparisons.size(), 190u);
    EXPECT_EQ(host.calls(Script::next), nRecords);
    EXPECT_LE(host.calls(Script::hasMore), nRecords + 4);
}

TEST(Passes, AnExhaustedIteratorIsRestartedAndOneUnderwayIsNotRewound)
{
    HostData data = analysisData(24);
    Host host(areasOf({test1}), data);
    ScriptedIter records = data.records();
    while (records.HasMore())
        records.Next();
    EXPECT_TRUE(host.facade.BuildModel(records).IsOK());
    EXPECT_EQ(host.outcome(), analyse(areasOf({test1}), data));

    records.Next(); // the run left it at the first record
    EXPECT_TRUE(host.facade.BuildModel(records).IsOK());
    EXPECT_EQ(host.record().getPositiveCount() + host.record().getNegativeCount(), 23);
}

/// Delivers null although it promised a record.
class BrokenPromise final : public VexCommon_920::MultiPassRecordIter {
public:
    [[nodiscard]] bool HasMore() const override { return true; }
    VexCommon_920::Record* Next() override { return nullptr; }
    [[nodiscard]] int GetFailReason() const override { return 1; }
    int NewPass() override { return 0; }
};

TEST(Passes, ANullRecordEndsThePass)
{
    HostData data = analysisData(3);
    for (const Analysis& analysis : {analyses()[0], analyses()[5]}) { // the record pass, the pass for a mid point
        Host host(settingOf(analysis), data);
        BrokenPromise records;
        EXPECT_EQ(host.facade.BuildModel(records).GetErrorCode(), statusCode::stateValueNotFound);
    }
}

TEST(Weights, AreRoundedHalvesUpAndBelowOneLeaveTheCaseOut)
{
    struct Case {
        double weight;
        double counted; ///< 0: left out
    };
    const Case cases[] = {{1, 1},
                          {2.5, 3},
                          {2.4999, 2},
                          {0.5, 1},
                          {0.49, 0},
                          {0, 0},
                          {-0.5, 0},
                          {-3, 0},
                          {nan, 0},
                          {VexMV::Missing(), 0},
                          {infinity, 0},
                          {-infinity, 0},
                          {3e9, 0},
                          {-3e9, 0},
                          {2147483647, 2147483647},
                          {2147483647.5, 0},
                          {1e300, 0}};
    ROCSetting setting = areasOf({1});
    setting.setFrequencyWeightVar(2);
    for (const auto& [weightOfFirst, counted] : cases) {
        SCOPED_TRACE(weightOfFirst);
        HostData data;
        data.add({1, 0, 0, 0});
        data.add({3, 1, 2, 4});
        data.add({weightOfFirst, 1, 1, 2});
        Host host(setting, data);
        ASSERT_EQ(host.run(), 0); // the positive state was seen all the same
        const bool isCounted = counted > 0.0;
        EXPECT_EQ(host.record().getPosFreqCount(), counted);
        EXPECT_EQ(host.record().getNegFreqCount(), 4.0);
        EXPECT_EQ(host.record().getPositiveCount(), isCounted ? 1 : 0);
        EXPECT_EQ(host.record().getNegativeCount(), 3);
        EXPECT_EQ(host.record().isZeroCountExist(), !isCounted);
        EXPECT_EQ(VexMV::IsMissing(host.record().getArea()), !isCounted);
    }
}

} // namespace
