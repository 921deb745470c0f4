#include "host/VexMV.h"
#include "tests/driver/analyses.h"
#include "tests/support/Sample.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

using namespace roctest;
using namespace ROCALG_920;
using VexCommon_920::VexMV;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

using Announcements = std::vector<std::pair<int, double>>;

Announcements announcementsOf(ROCSetting setting, HostData& data)
{
    Script script;
    ScriptedListener listener(script);
    RocAlgorithm facade(setting, data.variables);
    facade.SetProgressListener(&listener);
    VexCommon_920::ColumnRecordIter records = data.records();
    static_cast<void>(facade.BuildModel(records));
    return listener.announcements;
}

ROCSetting areasOf(std::vector<int> testVars)
{
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars(testVars);
    return setting;
}

TEST(Progress, IsAnnouncedInTheFixedSequence)
{
    const auto share = [](int done, int all) { return static_cast<double>(done) / all * 0.8 + 0.2; };
    HostData large = analysisData(2500);
    EXPECT_EQ(announcementsOf(areasOf({test1, test2}), large),
              (Announcements{{0, 0.01}, {0, 0.03}, {0, 0.03}, {1000, 0.03}, {2000, 0.03}, {2500, 0.2},
                             {2500, share(1, 2)}, {2500, 1.0}}));
    HostData exact = analysisData(1000); // no announcement of 1000 before the end: there is no record 1000
    EXPECT_EQ(announcementsOf(areasOf({test1}), exact),
              (Announcements{{0, 0.01}, {0, 0.03}, {0, 0.03}, {1000, 0.2}, {1000, 1.0}}));

    HostData small = analysisData(24);
    const Announcements start{{0, 0.01}, {0, 0.03}, {0, 0.03}, {24, 0.2}};
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        Announcements expected = start;
        for (int i = 1; i <= 3; ++i)
            expected.emplace_back(24, share(i, 3));
        EXPECT_EQ(announcementsOf(settingOf(analysis), small), expected);
    }
    EXPECT_DOUBLE_EQ(share(1, 3), 7.0 / 15.0);
    EXPECT_DOUBLE_EQ(share(2, 3), 11.0 / 15.0);

    ROCSetting notFound = areasOf({test1});
    notFound.setStateVar(0, 5.0);
    EXPECT_EQ(announcementsOf(notFound, small), start); // the records were read, and no results made
    EXPECT_EQ(announcementsOf(ROCSetting(), small), Announcements{});
}

TEST(Passes, TheRecordsAreReadOnceAndOnceMoreForAMidPoint)
{
    constexpr int nRecords = 24;
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        HostData data = analysisData(nRecords);
        Script script;
        ScriptedIter records(data, script);
        ROCSetting setting = settingOf(analysis);
        RocAlgorithm facade(setting, data.variables);
        ASSERT_TRUE(facade.BuildModel(records).IsOK());
        EXPECT_EQ(script.calls(Script::next), analysis.passes * nRecords);
        EXPECT_EQ(script.calls(Script::newPass), analysis.passes);
        EXPECT_TRUE(records.HasMore()) << "the iterator is not left at the first record";
    }
}

TEST(Passes, ManyPairsNeedNoFurtherPass)
{
    constexpr std::size_t nTests = 20;
    constexpr std::size_t nRecords = 60;
    Random random(3);
    HostData data;
    std::vector<int> testVars;
    for (std::size_t v = 0; v <= nTests; ++v) {
        std::vector<double> column;
        for (std::size_t i = 0; i < nRecords; ++i)
            column.push_back(static_cast<double>(random() % (v == 0 ? 2 : 50)));
        data.add(column);
        if (v > 0)
            testVars.push_back(static_cast<int>(v));
    }
    ROCSetting setting = areasOf(testVars);
    setting.setComparisonType(ROCConst_920::PairedComparison);
    Script script;
    ScriptedIter records(data, script);
    RocAlgorithm facade(setting, data.variables);
    ASSERT_TRUE(facade.BuildModel(records).IsOK());
    EXPECT_EQ(facade.GetOutputStats()->getROCComparisonStats().size(), nTests * (nTests - 1) / 2);
    EXPECT_EQ(script.calls(Script::next), static_cast<int>(nRecords));
    EXPECT_LE(script.calls(Script::hasMore), static_cast<int>(nRecords) + 4);
}

TEST(Passes, AnExhaustedIteratorIsRestartedAndOneUnderwayIsNotRewound)
{
    HostData data = analysisData(24);
    ROCSetting setting = areasOf({test1});
    const Outcome whole = analyse(setting, data);
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter records = data.records();
    while (records.HasMore())
        records.Next();
    EXPECT_TRUE(facade.BuildModel(records).IsOK());
    EXPECT_EQ(readBack(facade).records, whole.records);

    records.NewPass();
    records.Next();
    RocAlgorithm second(setting, data.variables);
    EXPECT_TRUE(second.BuildModel(records).IsOK());
    const ROCOutBase& record = *second.GetOutputStats()->getROCBaseStats()[0];
    EXPECT_EQ(record.getPositiveCount() + record.getNegativeCount(), 23);
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
        ROCSetting setting = settingOf(analysis);
        RocAlgorithm facade(setting, data.variables);
        BrokenPromise records;
        EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), statusCode::stateValueNotFound);
    }
}

TEST(Weights, AreRoundedHalvesUpAndBelowOneLeaveTheCaseOut)
{
    struct Case {
        double weight;
        double counted; ///< 0: left out
    };
    const Case cases[] = {{1, 1},     {2.5, 3},       {2.4999, 2}, {0.5, 1},     {0.49, 0},
                          {0, 0},     {-0.5, 0},      {-3, 0},     {nan, 0},     {VexMV::Missing(), 0},
                          {infinity, 0}, {-infinity, 0}, {3e9, 0},  {-3e9, 0},    {2147483647, 2147483647},
                          {2147483647.5, 0}, {1e300, 0}};
    for (const auto& [weightOfFirst, counted] : cases) {
        SCOPED_TRACE(weightOfFirst);
        HostData data;
        data.add({1, 0, 1, 0, 1});
        data.add({3, 1, 2, 4, 5});
        data.add({weightOfFirst, 1, 1, 2, 1});
        ROCSetting setting = areasOf({1});
        setting.setFrequencyWeightVar(2);
        RocAlgorithm facade(setting, data.variables);
        VexCommon_920::ColumnRecordIter records = data.records();
        ASSERT_TRUE(facade.BuildModel(records).IsOK());
        const ROCOutBase& record = *facade.GetOutputStats()->getROCBaseStats()[0];
        EXPECT_EQ(record.getPosFreqCount(), 2.0 + counted);
        EXPECT_EQ(record.getNegFreqCount(), 3.0);
        EXPECT_EQ(record.getPositiveCount(), counted > 0 ? 3 : 2);
        EXPECT_EQ(record.getNegativeCount(), 2);
    }
}

TEST(Weights, APositiveCaseThatIsLeftOutIsSeenAllTheSame)
{
    HostData data;
    data.add({1, 0, 0, 0});
    data.add({1, 2, 3, 4});
    data.add({0, 1, 1, 1});
    ROCSetting setting = areasOf({1});
    setting.setFrequencyWeightVar(2);
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter records = data.records();
    EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), 0);
    const ROCOutBase& record = *facade.GetOutputStats()->getROCBaseStats()[0];
    EXPECT_EQ(record.getPositiveCount(), 0);
    EXPECT_TRUE(record.isZeroCountExist());
    EXPECT_TRUE(VexMV::IsMissing(record.getArea()));

    data.columns[0].front() = 0;
    EXPECT_EQ(analyse(setting, data).code, statusCode::stateValueNotFound);
}

/// The rows of the data for which keep says yes.
template <class Keep>
HostData rowsWhere(const HostData& data, Keep keep)
{
    HostData kept;
    for (const std::vector<double>& column : data.columns) {
        std::vector<double> rows;
        for (std::size_t i = 0; i < column.size(); ++i)
            if (keep(i))
                rows.push_back(column[i]);
        kept.add(rows);
    }
    return kept;
}

TEST(MissingValues, LeaveOutTheCaseForThatVariableOnlyUnlessVariablesArePaired)
{
    HostData data = analysisData(40);
    for (std::size_t i = 0; i < 40; ++i) {
        if (i % 7 == 0)
            data.columns[test1][i] = VexMV::Missing();
        if (i % 11 == 3)
            data.columns[test2][i] = nan;
        data.columns[state][i] = i % 13 == 5 ? VexMV::Missing() : data.columns[state][i]; // counts as negative
    }
    HostData withTest1 = rowsWhere(data, [&](std::size_t i) { return !std::isnan(data.columns[test1][i]); });
    HostData complete = rowsWhere(
        withTest1, [&](std::size_t i) { return !std::isnan(withTest1.columns[test2][i]); });

    EXPECT_EQ(analyse(areasOf({test1, test2}), data).records[0], analyse(areasOf({test1}), withTest1).records[0]);

    ROCSetting paired = areasOf({test1, test2});
    paired.setComparisonType(ROCConst_920::PairedComparison);
    EXPECT_EQ(analyse(paired, data), analyse(paired, complete));
    paired.setTestVars({test1, test2, test3}); // complete in all variables, not pair by pair
    EXPECT_EQ(analyse(paired, data).comparisons, analyse(paired, complete).comparisons);
    paired.setFrequencyWeightVar(weight);
    HostData weighted = rowsWhere(complete, [&](std::size_t i) { return complete.columns[weight][i] >= 1.0; });
    EXPECT_EQ(analyse(paired, data), analyse(paired, weighted));
}

TEST(Order, OfTheRecordsDoesNotChangeTheResults)
{
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        HostData data = analysisData(300);
        const Outcome expected = analyse(settingOf(analysis), data);
        for (unsigned seed = 0; seed < 3; ++seed) {
            std::vector<std::size_t> order(300);
            std::iota(order.begin(), order.end(), std::size_t{0});
            std::shuffle(order.begin(), order.end(), Random(seed));
            HostData other = analysisData(300);
            for (std::size_t c = 0; c < data.columns.size(); ++c)
                for (std::size_t i = 0; i < order.size(); ++i)
                    other.columns[c][i] = data.columns[c][order[i]];
            EXPECT_EQ(analyse(settingOf(analysis), other), expected);
        }
    }
}

} // namespace
