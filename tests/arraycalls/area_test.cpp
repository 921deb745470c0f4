#include "tests/support/calls.h"
#include "tests/support/oracle.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace roctest;
using List = std::vector<double>;

constexpr double sixDigits = 5e-7; // the worked values are printed to six digits

void expectNear(const Numbers& got, const List& expected)
{
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(got[i].value, expected[i], sixDigits) << "position " << i;
}

const Sample four{{1, 0, 1, 0}, {1, 2, 3, 4}, {}};
const Sample eight{{1, 1, 1, 1, 0, 0, 0, 0}, {2, 3, 3, 5, 1, 2, 3, 4}, {4, 6, 5, 8, 3, 2, 7, 1}};

TEST(Auc, GivesTheWorkedRecords)
{
    expectNear(numbers(areaOf(four.states, four.values)), {2, 2, 0.25, 0.279508, 0.371093, -0.297827, 0.797827});
    expectNear(numbers(areaOf(four.states, four.values, {.larger = "smaller"})),
               {2, 2, 0.75, 0.279508, 0.371093, 0.202173, 1.297827});
    // Unequally many cases of the states: the bi-negative assumption does not apply.
    expectNear(numbers(areaOf(List{1, 1, 0}, List{1, 3, 2}, {.distribution = "bi-negative"})),
               {2, 1, 0.5, 0.353553, 1, -0.192952, 1.192952});
}

TEST(Auc, CountsOnlyAcceptedCasesWhenItChoosesTheAssumption)
{
    const List states{1, 0, 1, 0, 1};
    const List values{1, 2, 3, 4, std::nan("")}; // 3 positives, of which 2 have a value
    EXPECT_EQ(numbers(areaOf(states, values, {.distribution = "bi-negative"})),
              numbers(areaOf(four.states, four.values, {.distribution = "bi-negative"})));
}

TEST(AucComparison, GivesTheWorkedRecord)
{
    const auc_comparison_res res = auc_indpendentcomparison(
        four.states.data(), four.values.data(), 4, eight.states.data(), eight.values.data(), 8, nullptr, "include", "larger",
        "nonparam", 0.95);
    EXPECT_EQ(numbers(res.first), numbers(areaOf(four.states, four.values)));
    EXPECT_EQ(numbers(res.second), numbers(areaOf(eight.states, eight.values)));
    expectNear({{res.z}, {res.zSig}, {res.areaDiff}, {res.stdErrorDiff}, {res.ciLower}, {res.ciUpper}},
               {-1.171873, 0.241248, -0.40625, 0.346667, -1.085705, 0.273205});
    EXPECT_EQ(numbers(auc_comparison(res.first, res.second, 0.95)), numbers(res));
}

TEST(AucPairedComparison, GivesTheWorkedRecord)
{
    expectNear(numbers(pairedOf(eight)),
               {4, 4, 0.65625, 0.214998, 0.467378, 0.234862, 1.077638, 4, 4, 0.8125, 0.197642, 0.113846, 0.425128, 1.199872,
                -0.688973, 0.490840, -0.15625, 0.226787, -0.600744, 0.288244});
}

void expectTested(double estimate, double null, double stdError, double significance, double lower, double upper)
{
    EXPECT_NEAR(significance, static_cast<double>(twoSidedTail((estimate - null) / stdError)), 4e-16);
    EXPECT_NEAR(lower, static_cast<double>(estimate - z95 * stdError), 1e-15);
    EXPECT_NEAR(upper, static_cast<double>(estimate + z95 * stdError), 1e-15);
}

void expectArea(const auc_res& got, const Placements& placed, bool larger, long double stdError)
{
    EXPECT_EQ(got.posCount, static_cast<double>(placed.nPos()));
    EXPECT_EQ(got.negCount, static_cast<double>(placed.nNeg()));
    EXPECT_EQ(got.area, area(placed, larger));
    EXPECT_LE(ulpsApart(got.stdError, stdError), 3);
    if (stdError > 0)
        expectTested(got.area, 0.5, got.stdError, got.asymptoticSig, got.ciLower, got.ciUpper);
}

TEST(AreaCalls, AreTheirDefinitionsCountedCaseByCase)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 200; ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            const Sample s = drawSample(shape, seed, seed % 100 == 0 ? 3'000 : sizeFor(seed));
            const bool larger = seed % 2 == 0;
            const Words words{.larger = larger ? "larger" : "smaller"};
            const Placements first = placements(s.states, s.values);
            const Placements second = placements(s.states, s.others);
            const Wide nPos = first.nPos();
            const Wide nNeg = first.nNeg();
            expectArea(areaOf(s.states, s.values, words), first, larger,
                       nonparametricStdError(nPos, nNeg, first.twiceOrdered, tripleSums(s.states, s.values)));
            const Words biNegative{.larger = words.larger, .distribution = "bi-negative"};
            if (nPos == nNeg)
                expectArea(areaOf(s.states, s.values, biNegative), first, larger,
                           biNegativeStdError(nPos, nNeg, first.twiceOrdered));
            else
                EXPECT_EQ(numbers(areaOf(s.states, s.values, biNegative)), numbers(areaOf(s.states, s.values, words)));

            const auc_comparison_res paired = pairedOf(s, words);
            if (nPos == 1 || nNeg == 1) {
                EXPECT_TRUE(std::isnan(paired.first.stdError) && std::isnan(paired.stdErrorDiff));
                continue;
            }
            expectArea(paired.first, first, larger, std::sqrt(covariance(first, first)));
            expectArea(paired.second, second, larger, std::sqrt(covariance(second, second)));
            EXPECT_EQ(paired.areaDiff, paired.first.area - paired.second.area);
            EXPECT_LE(ulpsApart(paired.stdErrorDiff, stdErrorOfDifference(first, second)), 3);
            EXPECT_EQ(paired.z, paired.areaDiff == 0 ? 0.0 : paired.areaDiff / paired.stdErrorDiff);
            if (paired.stdErrorDiff > 0)
                expectTested(paired.areaDiff, 0.0, paired.stdErrorDiff, paired.zSig, paired.ciLower, paired.ciUpper);
        }
}

/// The area from the definition itself, pair by pair.
TEST(Auc, IsTheShareOfOrderedPairsWithTiesCountingHalf)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        const Sample s = drawSample(shapes()[seed % shapes().size()], seed, 3 + seed % 60);
        double ordered = 0.0;
        double pairs = 0.0;
        for (std::size_t i = 0; i < s.states.size(); ++i)
            for (std::size_t j = 0; j < s.states.size(); ++j)
                if (s.positive(i) && !s.positive(j)) {
                    pairs += 1.0;
                    ordered += s.values[i] > s.values[j] ? 1.0 : s.values[i] == s.values[j] ? 0.5 : 0.0;
                }
        EXPECT_EQ(areaOf(s.states, s.values).area, ordered / pairs);
    }
}

} // namespace
