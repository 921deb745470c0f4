#include "tests/support/calls.h"
#include "tests/support/oracle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace roctest;

/// nPos positives and nNeg negatives with values from their position within their state.
template <class Positive, class Negative>
Sample build(int nPos, int nNeg, Positive positive, Negative negative)
{
    Sample sample;
    for (int i = 0; i < nPos; ++i)
        sample.add(1.0, positive(i), positive(i));
    for (int i = 0; i < nNeg; ++i)
        sample.add(0.0, negative(i), negative(i));
    return sample;
}

void expectRight(const Sample& s)
{
    const Placements placed = placements(s.states, s.values);
    const auc_res res = areaOf(s.states, s.values);
    EXPECT_EQ(res.area, area(placed, true));
    EXPECT_LE(ulpsApart(res.stdError,
                        nonparametricStdError(placed.nPos(), placed.nNeg(), placed.twiceOrdered,
                                              tripleSums(s.states, s.values))),
              3);
    if (placed.nPos() == placed.nNeg()) {
        const auc_res biNegative = areaOf(s.states, s.values, {.distribution = "bi-negative"});
        EXPECT_LE(ulpsApart(biNegative.stdError, biNegativeStdError(placed.nPos(), placed.nNeg(), placed.twiceOrdered)),
                  3);
    }
    const auc_comparison_res paired = pairedOf(s);
    EXPECT_LE(ulpsApart(paired.first.stdError, std::sqrt(covariance(placed, placed))), 3);
    EXPECT_EQ(paired.stdErrorDiff, 0.0);
}

TEST(Sizes, CountsThatDoNotFit32BitsAreRight)
{
    const auto tied = [](int) { return 1.0; };
    const auto even = [](int i) { return 2.0 * i; };
    const auto shifted = [](int i) { return 2.0 * i + 20'001.0; };
    expectRight(build(50'000, 50'000, tied, tied));
    expectRight(build(200'000, 200'000, tied, tied));
    expectRight(build(200'000, 200'000, shifted, even));
    expectRight(build(
        200'000, 1'000, [](int i) { return i % 700 + 0.0; }, [](int i) { return i % 300 + 0.0; }));
}

TEST(Sizes, CubesThatDoNotFit64BitsAreRight)
{
    const int n = 3'000'000;
    std::vector<double> states(2 * n);
    std::fill_n(states.begin(), n, 1.0);
    const std::vector<double> tied(states.size(), 1.0);
    const Wide cube = Wide{n} * n * n;
    EXPECT_LE(ulpsApart(areaOf(states, tied).stdError, nonparametricStdError(n, n, Wide{n} * n, {cube, cube})), 3);
}

TEST(Sizes, PerfectSeparationHasNoError)
{
    const Sample s = build(
        300'001, 300'001, [](int i) { return 1e6 + i; }, [](int i) { return -1.0 * i; });
    for (const char* distribution : {"nonparam", "bi-negative"})
        EXPECT_EQ(numbers(areaOf(s.states, s.values, {.distribution = distribution})),
                  (Numbers{{300'001}, {300'001}, {1}, {0}, {0}, {1}, {1}}));
    const auc_comparison_res paired = pairedOf(s);
    EXPECT_EQ(paired.first.stdError, 0.0);
}

TEST(Sizes, OneSwappedPairAmongAMillionPerStateHasTheRightError)
{
    const int n = 1'000'001; // the largest negative lies above the smallest positive
    const Sample s = build(
        n, n, [](int i) { return i == 0 ? -0.5 : 1.0 + i; }, [](int i) { return -1.0 * i; });
    const Wide pairs = Wide{n} * n;
    const Wide oneLess = Wide{3} * ((n - 1) * pairs + Wide{n - 1} * (n - 1));
    const long double stdError = nonparametricStdError(n, n, 2 * (pairs - 1), {oneLess, oneLess});
    ASSERT_GT(stdError, 0);
    const auc_res res = areaOf(s.states, s.values);
    EXPECT_EQ(res.area, static_cast<double>(pairs - 1) / static_cast<double>(pairs));
    EXPECT_LE(ulpsApart(res.stdError, stdError), 3);
    EXPECT_LE(ulpsApart(areaOf(s.states, s.values, {.distribution = "bi-negative"}).stdError,
                        biNegativeStdError(n, n, 2 * (pairs - 1))),
              3);
    // Each state has one placement that is 1/n short of the others: variance 1/n^2 (1 - 1/n) / (n - 1) / n, twice.
    EXPECT_LE(ulpsApart(pairedOf(s).first.stdError, std::sqrt(2.0L) / n / n), 3);
}

} // namespace
