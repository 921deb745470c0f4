#include "host/ColumnRecordIter.h"
#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocPairedCompare.h"
#include "tests/stats/spaces.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

#include <tuple>

namespace {

using namespace ROCALG_920;
using namespace roctest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using VexCommon_920::ColumnRecordIter;
using VexCommon_920::VexMV;

constexpr double sixDigits = 5e-7; // the worked values are printed to six digits

/// Two variables on the same cases, ready to be compared.
struct PairedAreas {
    explicit PairedAreas(const Sample& sample, bool isLarger = true)
        : larger(isLarger), space1(areaSpace(sample.states, sample.values, 1)),
          space2(areaSpace(sample.states, sample.others, 2))
    {
    }
    [[nodiscard]] RocPairedCompare comparison() { return {first, second, larger, 0.95, 0, 1.0}; }

    bool larger;
    ROCSpace space1;
    ROCSpace space2;
    ROCPairedStats first{space1, larger, 0.95};
    ROCPairedStats second{space2, larger, 0.95};
};

ColumnRecordIter recordsOf(const Sample& sample)
{
    return ColumnRecordIter({sample.states, sample.values, sample.others});
}

const Sample worked{{1, 1, 1, 1, 0, 0, 0, 0}, {2, 3, 3, 5, 1, 2, 3, 4}, {4, 6, 5, 8, 3, 2, 7, 1}};

TEST(ROCPairedStats, KeepsTheComponentsByTestValue)
{
    ROCSpace space = areaSpace(worked.states, worked.values);
    for (const bool larger : {true, false}) { // the components do not know the direction
        ROCPairedStats stats(space, larger, 0.95);
        EXPECT_THAT(stats.getTxs(), ElementsAre(Pair(2, 0.375), Pair(3, 0.625), Pair(5, 1)));
        EXPECT_THAT(stats.getTys(), ElementsAre(Pair(1, 1), Pair(2, 0.875), Pair(3, 0.5), Pair(4, 0.25)));
    }
    ROCSpace oneState = areaSpace(std::vector{1.0, 1.0, 1.0}, std::vector{1.0, 2.0, 3.0});
    ROCPairedStats missing(oneState, true, 0.95);
    EXPECT_THAT(missing.getTxs(), IsEmpty());
    EXPECT_THAT(missing.getTys(), IsEmpty());
    EXPECT_TRUE(VexMV::IsMissing(missing.getArea()) && VexMV::IsMissing(missing.getStdError()));
}

TEST(ROCPairedStats, CountsBelowAndTiedFromARunningStart)
{
    const std::vector<double> xs{1, 2, 2, 2, 5};
    int start = 0;
    EXPECT_EQ(computeYWk(0.5, xs, start), 0.0);
    EXPECT_EQ(computeYWk(2, xs, start), 2.5);
    EXPECT_EQ(start, 3);
    EXPECT_EQ(computeYWk(3, xs, start), 4.0);
    EXPECT_EQ(computeYWk(5, xs, start), 4.5);
    EXPECT_EQ(start, 4);
    start = 5;
    EXPECT_EQ(computeYWk(9, xs, start), 5.0);
    EXPECT_EQ(computeYWk(9, {}, start = 0), 0.0);
    EXPECT_TRUE(valueSort(1, 2) && !valueSort(2, 2) && !valueSort(2, 1));
    EXPECT_EQ(std::tuple(phi(2, 1), phi(2, 2), phi(1, 2)), std::tuple(1.0, 0.5, 0.0));
}

TEST(RocPairedCompare, IsTheCovarianceOfTheComponentsWhateverTheRecordsOrder)
{
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        const Sample sample = drawSample(shapes()[seed % shapes().size()], seed, sizeFor(seed));
        PairedAreas areas(sample);
        const Placements first = placements(sample.states, sample.values);
        const Placements second = placements(sample.states, sample.others);
        if (first.nPos() < 2 || first.nNeg() < 2)
            continue;
        const long double truth = covariance(first, second);
        const double scale = areas.first.getStdError() + areas.second.getStdError();
        EXPECT_LE(ulpsApart(areas.first.getStdError(), covariance(first, first)), 3);

        RocPairedCompare inOrder = areas.comparison();
        ColumnRecordIter records = recordsOf(sample);
        ASSERT_TRUE(inOrder.computeStats(records));
        ASSERT_TRUE(inOrder.computeStats(records)); // at its end: the pass starts again
        EXPECT_NEAR(inOrder.getCovariance(), static_cast<double>(truth), 4e-16 * scale);
        EXPECT_LE(ulpsApart(inOrder.getStdErrorDiff(), stdErrorOfDifference(first, second)), 3);
        RocPairedCompare overSpaces = areas.comparison();
        ASSERT_TRUE(overSpaces.computeOverSpaces());
        EXPECT_EQ(overSpaces.getCovariance(), inOrder.getCovariance());
        EXPECT_EQ(overSpaces.getStdErrorDiff(), inOrder.getStdErrorDiff());
        EXPECT_EQ(overSpaces.getZInterval(), inOrder.getZInterval());

        const Sample mixed = shuffled(sample, seed);
        RocPairedCompare byValue = areas.comparison();
        ColumnRecordIter mixedRecords = recordsOf(mixed);
        ASSERT_TRUE(byValue.computeStats(mixedRecords));
        EXPECT_NEAR(byValue.getCovariance(), static_cast<double>(truth), 1e-13 * scale);
    }
}

TEST(RocPairedCompare, TakesFewerRecordsThanCasesInAnyOrder)
{
    Sample first = worked; // 4 positives and 2 negatives
    for (std::vector<double>* column : {&first.states, &first.values, &first.others})
        column->resize(6);
    PairedAreas areas(worked);
    RocPairedCompare inOrder = areas.comparison();
    ColumnRecordIter records = recordsOf(first);
    ASSERT_TRUE(inOrder.computeStats(records));
    // Centred products of the positives and of the two negatives.
    EXPECT_DOUBLE_EQ(inOrder.getCovariance(), 0.0859375 / 3 / 4 + 0.10546875 / 1 / 2);
    const Sample mixed = shuffled(first, 3);
    ColumnRecordIter mixedRecords = recordsOf(mixed);
    RocPairedCompare byValue = areas.comparison();
    ASSERT_TRUE(byValue.computeStats(mixedRecords));
    EXPECT_DOUBLE_EQ(byValue.getCovariance(), inOrder.getCovariance());
}

TEST(RocPairedCompare, SkipsRecordsWithNaNAndCountsUnknownValuesAsZero)
{
    Sample withNaN = worked;
    withNaN.add(1.0, std::nan(""), 3.0);
    withNaN.add(0.0, 3.0, VexMV::Missing());
    PairedAreas areas(worked);
    RocPairedCompare comparison = areas.comparison();
    ColumnRecordIter records = recordsOf(withNaN);
    ASSERT_TRUE(comparison.computeStats(records));
    EXPECT_NEAR(comparison.getCovariance(), 0.016927, sixDigits);
    EXPECT_EQ(areas.first.getTxs().size(), 3u);

    Sample unknown = worked;
    unknown.add(1.0, 77.0, 4.0); // 77 is in no map and counts 0, 4 counts 0.75
    ColumnRecordIter unknownRecords = recordsOf(unknown);
    ASSERT_TRUE(comparison.computeStats(unknownRecords));
    EXPECT_THAT(areas.first.getTxs(), testing::Contains(Pair(77.0, 0.0)));
    // Centred products of the first four positives, of the fifth, and of the negatives.
    EXPECT_NEAR(comparison.getCovariance(), (0.0859375 + 0.041015625) / 4 / 5 + 0.1171875 / 3 / 4, 1e-15);
}

TEST(RocPairedCompare, FindsNoDifferenceBetweenAVariableAndItselfInAnyOrderOfTheRecords)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        Sample sample = drawSample(shapes()[seed % shapes().size()], 9 * seed + 5, 10 * seed);
        sample.others = sample.values;
        PairedAreas areas(sample);
        RocPairedCompare comparison = areas.comparison();
        const Sample mixed = shuffled(sample, seed);
        ColumnRecordIter records = recordsOf(mixed);
        ASSERT_TRUE(comparison.computeStats(records));
        EXPECT_EQ(std::tuple(comparison.getZ(), comparison.getZSig(), comparison.getStdErrorDiff()),
                  std::tuple(0.0, 1.0, 0.0));
        EXPECT_EQ(comparison.getZInterval(), std::pair(0.0, 0.0));
    }
}

TEST(RocPairedCompare, IsNotComputedWithoutBothStates)
{
    PairedAreas areas({{1, 1, 1}, {1, 2, 3}, {1, 2, 3}});
    RocPairedCompare comparison = areas.comparison();
    ColumnRecordIter records({});
    EXPECT_FALSE(comparison.computeStats(records));
    EXPECT_FALSE(comparison.computeOverSpaces());
    EXPECT_TRUE(VexMV::IsMissing(comparison.getZ()) && VexMV::IsMissing(comparison.getCovariance()));
}

} // namespace
