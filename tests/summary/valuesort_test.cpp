#include "summary/Observations.h"
#include "summary/SortedValues.h"
#include "tests/support/Sample.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>
#include <tuple>

namespace {

using namespace ROCALG_920;
using namespace roctest;

using Counts = std::map<double, std::pair<std::int64_t, std::int64_t>>; // distinct value: positives, negatives

Counts countsOf(const Sample& sample)
{
    Counts counts;
    for (std::size_t i = 0; i < sample.states.size(); ++i)
        ++(sample.positive(i) ? counts[sample.values[i]].first : counts[sample.values[i]].second);
    return counts;
}

/// Collects what is visited; a value out of order fails the test.
struct Visited {
    Counts counts;

    void add(const DistinctValue& x)
    {
        if (!counts.empty() && !(counts.rbegin()->first < x.value))
            ADD_FAILURE() << x.value << " comes after " << counts.rbegin()->first;
        counts.emplace(x.value, std::pair(x.positives, x.negatives));
    }
};

void expectOrdered(const Sample& sample)
{
    const BorrowedColumns columns{sample.values.data(), sample.states.data(), 1.0, sample.values.size()};
    const Counts expected = countsOf(sample);
    Visited distinct;
    valuesort::forEachDistinctValue(columns, [&](const DistinctValue& x) { distinct.add(x); });
    EXPECT_EQ(distinct.counts, expected);
    EXPECT_EQ(valuesort::SortedValues(columns).countDistinct(columns), expected.size());

    Visited ranked;
    std::vector<int> answered(sample.values.size());
    bool rightAnswers = true;
    valuesort::rankCases(
        columns,
        [&](const DistinctValue& x) {
            ranked.add(x);
            return x.value;
        },
        [&](std::size_t i, bool positive, double answer) {
            ++answered[i];
            rightAnswers = rightAnswers && answer == sample.values[i] && positive == sample.positive(i);
        });
    EXPECT_EQ(ranked.counts, expected);
    EXPECT_TRUE(rightAnswers);
    EXPECT_EQ(answered, std::vector<int>(sample.values.size(), 1)); // every case once
}

TEST(ValueSort, OrdersEveryShapeAtEverySize)
{
    for (const Shape& shape : shapes())
        for (const std::size_t size : {1u, 2u, 7u, 21u, 100u, 700u, 5'000u, 70'000u})
            for (unsigned seed = 1; seed <= (size > 1000 ? 1u : 5u); ++seed) {
                SCOPED_TRACE(std::string(shape.name) + ", " + std::to_string(size) + ", seed " + std::to_string(seed));
                expectOrdered(drawSample(shape, seed, size));
            }
}

TEST(ValueSort, OrdersClustersWithinClusters)
{
    // Each level of the recursion sees one crowded cell: clusters whose spacing shrinks by 2^12 from level to level.
    Random random(5);
    Sample sample;
    for (int i = 0; i < 100'000; ++i) {
        double value = i % 2 == 0 ? -1.0 : 1.0;
        for (int level = 0; level < 4 && random() % 4 != 0; ++level)
            value += std::ldexp(static_cast<double>(random() % 3), -12 * (level + 1));
        sample.add(static_cast<double>(random() % 2), value, 0.0);
        if (i % 1000 == 0)
            sample.add(1.0, std::ldexp(value, static_cast<int>(random() % 1900) - 950), 0.0);
    }
    expectOrdered(sample);
}

TEST(ValueSort, TellsNeighboursWhoseKeysDifferInTheHighestBitOnly)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    expectOrdered({{1, 0, 1}, {0x0.fffffffffffffp-1022, -inf, 1.0}, {}});
}

TEST(ValueSort, MapsDoublesToKeysOfTheSameOrder)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    constexpr double tiny = std::numeric_limits<double>::denorm_min();
    const std::vector ascending{-inf, -1e300, -1.0, -tiny, 0.0, tiny, 1.0, std::nextafter(1.0, 2.0), 1e300, inf};
    for (std::size_t i = 1; i < ascending.size(); ++i)
        EXPECT_LT(valuesort::orderedKey(ascending[i - 1]), valuesort::orderedKey(ascending[i])) << ascending[i];
    for (const double value : ascending)
        EXPECT_EQ(valuesort::valueOfKey(valuesort::orderedKey(value)), value);
    EXPECT_EQ(valuesort::orderedKey(-0.0), valuesort::orderedKey(0.0));
}

} // namespace
