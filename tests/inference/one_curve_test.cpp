#include "inference/AreaIntervals.h"
#include "inference/Bootstrap.h"
#include "inference/CutOffCriterion.h"
#include "inference/MannWhitney.h"
#include "inference/OperatingStatistics.h"
#include "inference/PartialArea.h"
#include "inference/PlacementSums.h"
#include "inference/PrecisionRecallArea.h"
#include "inference/TestAndInterval.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace ROCALG_920 {
namespace {

using Numbers = std::vector<double>;

struct Cases {
    Numbers positive;
    Numbers negative;

    [[nodiscard]] Summary summary() const
    {
        Numbers all = positive;
        all.insert(all.end(), negative.begin(), negative.end());
        std::ranges::sort(all);
        all.erase(std::unique(all.begin(), all.end()), all.end());
        std::vector<DistinctValue> values;
        for (const double x : all)
            values.push_back({x, std::ranges::count(positive, x), std::ranges::count(negative, x)});
        return Summary(std::span<const DistinctValue>(values));
    }
};

Cases randomCases(std::mt19937& random, std::size_t most)
{
    Cases cases;
    const auto fill = [&](Numbers& values, int shift) {
        values.resize(1 + random() % most);
        for (double& x : values)
            x = static_cast<double>(random() % 9) + shift;
    };
    fill(cases.positive, 2);
    fill(cases.negative, 0);
    return cases;
}

AreaEstimate estimateOf(const Summary& sample)
{
    const PlacementSums placed = placementSums(sample.walk(), sample.counts());
    return {sample.counts(), placed.pairs().share(), placed.variance()};
}

PartialArea partialAreaOf(const Summary& sample, Band band, BandRate rate = BandRate::falsePositive)
{
    return partialArea(sample.values(), sample.counts(), band, rate);
}

double precisionRecallAreaOf(const Summary& sample, PrecisionRecallRule rule, std::optional<double> prevalence = {})
{
    return precisionRecallArea(sample.values(), sample.counts(), rule, prevalence);
}

/// To six digits; NaN agrees with NaN.
void expectRow(const Numbers& found, const Numbers& expected, const char* what)
{
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_TRUE(std::isnan(expected[i]) ? std::isnan(found[i]) : std::abs(found[i] - expected[i]) < 6e-7)
            << what << ", " << i << ": " << found[i] << ", not " << expected[i];
}

struct Degenerate {
    Cases cases;
    Numbers area, logit, newcombe, score, exact, normal, partial, precisionRecall;
};

/// Five samples of every degenerate kind, at the level 0.95, worked out by hand and by enumeration.
TEST(OneCurve, HoldsForDegenerateSamples)
{
    const double none = std::nan("");
    const std::vector<Degenerate> table{{{{1, 2}, {3, 4}},
                                         {0, 0},
                                         {none, none},
                                         {0, 0.614364},
                                         {0, 0.614364},
                                         {1.0 / 3, 1, 1.0 / 6},
                                         {0.245278, 0.973596, 0.122639},
                                         {0, 0, 1.0 / 3},
                                         {0.416667, 0.306853}},
                                        {{{3, 4}, {1, 2}},
                                         {1, 0},
                                         {none, none},
                                         {0.385636, 1},
                                         {0.385636, 1},
                                         {1.0 / 3, 1.0 / 6, 1},
                                         {0.245278, 0.122639, 0.973596},
                                         {0.5, 0, 1},
                                         {1, 1}},
                                        {{{2, 2}, {2, 2}},
                                         {0.5, 0},
                                         {none, none},
                                         {0.112243, 0.887757},
                                         {0.112243, 0.887757},
                                         {1, 1, 1},
                                         {1, 1, 1},
                                         {0.125, 0, 0.5},
                                         {0.5, 0.5}},
                                        {{{3}, {1, 2, 4}},
                                         {2.0 / 3, none},
                                         {none, none},
                                         {0.152920, 0.955477},
                                         {0.152920, 0.955477},
                                         {1, 0.5, 0.75},
                                         {1, 0.5, 0.814453},
                                         {1.0 / 6, none, 0.555556},
                                         {0.5, 0.306853}},
                                        {{{1, 3, 3}, {1, 2, 2, 4}},
                                         {0.541667, 0.0775463},
                                         {0.115947, 0.914158},
                                         {0.189696, 0.854842},
                                         {0.156982, 0.880946},
                                         {0.885714, 0.457143, 0.657143},
                                         {1, 0.5, 0.641855},
                                         {1.0 / 6, 0.0347222, 0.555556},
                                         {0.587302, 0.439090}}};
    const double z = criticalValue(0.95);
    for (const Degenerate& row : table) {
        const Summary sample = row.cases.summary();
        const AreaEstimate estimate = estimateOf(sample);
        const auto limits = [&](AreaInterval interval) {
            const auto [lower, upper] = areaLimits(estimate, interval, z);
            return Numbers{lower, upper};
        };
        const OrderedTriples sums = orderedTriples(sample.walk(), sample.counts());
        Numbers exact;
        Numbers normal;
        for (const Alternative side : {Alternative::twoSided, Alternative::greater, Alternative::less}) {
            exact.push_back(*exactMannWhitney(sample, side));
            normal.push_back(mannWhitney(sample.counts(), sums.pairs.twiceOrdered, sums.tieSums.cubes, side).p.p);
        }
        const PartialArea partial = partialAreaOf(sample, {0.0, 0.5});
        expectRow({estimate.area, estimate.deLongVariance}, row.area, "area");
        expectRow(limits(AreaInterval::logit), row.logit, "logit");
        expectRow(limits(AreaInterval::newcombe), row.newcombe, "newcombe");
        expectRow(limits(AreaInterval::score), row.score, "score");
        expectRow(exact, row.exact, "exact p");
        expectRow(normal, row.normal, "normal p");
        expectRow({partial.area, partial.variance, partial.standardized(partial.area)}, row.partial, "partial area");
        expectRow({precisionRecallAreaOf(sample, PrecisionRecallRule::step),
                   precisionRecallAreaOf(sample, PrecisionRecallRule::integral)},
                  row.precisionRecall, "precision-recall area");
    }
}

/// R. G. Newcombe, Two-sided confidence intervals for the single proportion, Statist. Med. 17 (1998), table I.
TEST(OneCurve, LimitsOfSharesAreAsPublished)
{
    const double z = criticalValue(0.95);
    const auto limits = [&](std::int64_t count, std::int64_t all) {
        const Limits wilson = shareLimits(count, all, ProportionInterval::wilson, z, 0.95);
        const Limits exact = shareLimits(count, all, ProportionInterval::exact, z, 0.95);
        return Numbers{wilson.lower, wilson.upper, exact.lower, exact.upper};
    };
    const auto expectFour = [](const Numbers& found, const Numbers& expected) {
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 5.1e-5) << i;
    };
    expectFour(limits(81, 263), {0.2553, 0.3662, 0.2527, 0.3676});
    expectFour(limits(15, 148), {0.0624, 0.1605, 0.0578, 0.1617});
    expectFour(limits(0, 20), {0.0, 0.1611, 0.0, 0.1684});
    expectFour(limits(1, 29), {0.0061, 0.1718, 0.0009, 0.1776});
    EXPECT_EQ(limits(0, 20)[0], 0.0);
    EXPECT_EQ(limits(20, 20)[1], 1.0);
    EXPECT_EQ(limits(20, 20)[3], 1.0);
    EXPECT_NEAR(limits(20, 20)[2], 1.0 - limits(0, 20)[3], 1e-15);
}

/// The share of a statistic of the four cells that is its error, by slopes found numerically: sum p g^2 - (sum p g)^2.
double errorByDelta(const std::function<double(const std::array<double, 4>&)>& statistic, std::array<double, 4> cells)
{
    const double n = cells[0] + cells[1] + cells[2] + cells[3];
    double squares = 0.0;
    double mean = 0.0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const double step = cells[i] * 1e-5;
        std::array<double, 4> more = cells;
        std::array<double, 4> fewer = cells;
        more[i] += step;
        fewer[i] -= step;
        const double slope = n * (statistic(more) - statistic(fewer)) / (2.0 * step);
        squares += cells[i] / n * slope * slope;
        mean += cells[i] / n * slope;
    }
    return std::sqrt((squares - mean * mean) / n);
}

TEST(OneCurve, LimitsOfACutOffFollowFromTheSlopesOfItsStatistics)
{
    const CutOffCounts counts{.truePositives = 37, .falsePositives = 12, .trueNegatives = 71, .falseNegatives = 9};
    const auto estimateOf = [&](OperatingStatistic statistic, std::optional<double> prevalence = {}) {
        std::array<double, 3> found{};
        OperatingRows row;
        row.add(counts);
        row.fill(statistic, {.zCritical = 1.0, .prevalence = prevalence}, {&found[0], &found[1], &found[2]});
        return found;
    };
    const auto kappa = [](const std::array<double, 4>& c) { // TP, FP, TN, FN
        const double n = c[0] + c[1] + c[2] + c[3];
        const double expected = ((c[0] + c[1]) * (c[0] + c[3]) + (c[2] + c[3]) * (c[1] + c[2])) / (n * n);
        return ((c[0] + c[2]) / n - expected) / (1.0 - expected);
    };
    const auto logOdds = [](const std::array<double, 4>& c) { return std::log(c[0] * c[2] / (c[1] * c[3])); };
    const auto logRatio = [](const std::array<double, 4>& c) {
        return std::log(c[0] / (c[0] + c[3]) / (c[1] / (c[1] + c[2])));
    };
    const std::array<double, 4> cells{37, 12, 71, 9};
    const auto [ofKappa, lowest, highest] = estimateOf(OperatingStatistic::kappa);
    EXPECT_NEAR(ofKappa, kappa(cells), 1e-15);
    EXPECT_NEAR(highest - ofKappa, errorByDelta(kappa, cells), 1e-8);
    const auto [odds, fewestOdds, mostOdds] = estimateOf(OperatingStatistic::diagnosticOddsRatio);
    EXPECT_NEAR(std::log(mostOdds / odds), errorByDelta(logOdds, cells), 1e-8);
    const auto [ratio, leastRatio, mostRatio] = estimateOf(OperatingStatistic::positiveLikelihoodRatio);
    EXPECT_NEAR(std::log(ratio / leastRatio), errorByDelta(logRatio, cells), 1e-8);
    const double q = 0.1;
    const auto logitPpv = [&](const std::array<double, 4>& c) { return logRatio(c) + std::log(q / (1.0 - q)); };
    const auto [ppv, leastPpv, mostPpv] = estimateOf(OperatingStatistic::ppv, q);
    EXPECT_NEAR(std::log(ppv / (1.0 - ppv)), logitPpv(cells), 1e-14);
    EXPECT_NEAR(std::log(mostPpv / (1.0 - mostPpv)) - logitPpv(cells), errorByDelta(logitPpv, cells), 1e-8);
    const auto [npv, leastNpv, mostNpv] = estimateOf(OperatingStatistic::npv, q);
    const double se = 37.0 / 46.0;
    const double sp = 71.0 / 83.0;
    EXPECT_NEAR(npv, sp * (1.0 - q) / (sp * (1.0 - q) + (1.0 - se) * q), 1e-15);
    EXPECT_TRUE(leastNpv < npv && npv < mostNpv);
}

/// Over all ways in which the values can fall to the states.
double exactByEnumeration(const Cases& cases, Alternative alternative)
{
    Numbers all = cases.positive;
    all.insert(all.end(), cases.negative.begin(), cases.negative.end());
    const auto twiceU = [&](unsigned chosen) {
        int sum = 0;
        for (std::size_t i = 0; i < all.size(); ++i)
            for (std::size_t j = 0; j < all.size(); ++j)
                if ((chosen >> i & 1) == 1 && (chosen >> j & 1) == 0)
                    sum += all[i] > all[j] ? 2 : all[i] == all[j] ? 1 : 0;
        return sum - static_cast<int>(cases.positive.size() * cases.negative.size());
    };
    const int seen = twiceU((1u << cases.positive.size()) - 1);
    int counted = 0;
    int ways = 0;
    for (unsigned chosen = 0; chosen < 1u << all.size(); ++chosen) {
        if (static_cast<std::size_t>(std::popcount(chosen)) != cases.positive.size())
            continue;
        const int u = twiceU(chosen);
        ++ways;
        counted += alternative == Alternative::greater ? u >= seen
            : alternative == Alternative::less         ? u <= seen
                                                       : std::abs(u) >= std::abs(seen);
    }
    return static_cast<double>(counted) / ways;
}

TEST(OneCurve, LawsHoldForRandomSamples)
{
    std::mt19937 random(5);
    for (int run = 0; run < 60; ++run) {
        const Cases cases = randomCases(random, 5);
        const Summary sample = cases.summary();
        for (const Alternative side : {Alternative::twoSided, Alternative::greater, Alternative::less})
            EXPECT_NEAR(*exactMannWhitney(sample, side), exactByEnumeration(cases, side), 1e-14);

        const AreaEstimate estimate = estimateOf(sample);
        const PartialArea whole = partialAreaOf(sample, {0.0, 1.0});
        EXPECT_NEAR(whole.area, estimate.area, 1e-14);
        if (!std::isnan(estimate.deLongVariance)) {
            EXPECT_NEAR(whole.variance, estimate.deLongVariance, 1e-14);
        }
        const Limits ofWhole = partialLimits(whole, PartialInterval::logit, 1.96);
        const Limits ofArea = areaLimits(estimate, AreaInterval::logit, 1.96);
        if (!std::isnan(ofArea.lower)) {
            EXPECT_NEAR(ofWhole.lower, ofArea.lower, 1e-13);
            EXPECT_NEAR(ofWhole.upper, ofArea.upper, 1e-13);
            const Limits ofRecall =
                precisionRecallLimits(estimate.area, 7, PrecisionRecallInterval::logit, 1.96); // Boyd: n = P
            const double logOdds = std::log(estimate.area / (1.0 - estimate.area));
            const double half = 1.96 / std::sqrt(7.0 * estimate.area * (1.0 - estimate.area));
            EXPECT_NEAR(ofRecall.lower, 1.0 / (1.0 + std::exp(half - logOdds)), 1e-13);
            EXPECT_NEAR(ofRecall.upper, 1.0 / (1.0 + std::exp(-half - logOdds)), 1e-13);
        }
        const double cut = 0.05 * static_cast<double>(1 + random() % 18);
        EXPECT_NEAR(partialAreaOf(sample, {0.0, cut}).area + partialAreaOf(sample, {cut, 1.0}).area, estimate.area,
                    1e-14);
        EXPECT_NEAR(partialAreaOf(sample, {0.0, cut}, BandRate::sensitivity).area
                        + partialAreaOf(sample, {cut, 1.0}, BandRate::sensitivity).area,
                    estimate.area, 1e-14);
        const double step = precisionRecallAreaOf(sample, PrecisionRecallRule::step);
        EXPECT_LE(lowestPrecisionRecallArea(sample.counts(), PrecisionRecallRule::step), step + 1e-15);
        EXPECT_NEAR(precisionRecallAreaOf(sample, PrecisionRecallRule::step,
                                          share(sample.counts().positives, sample.counts().cases())),
                    step, 1e-14);
        const Limits score = areaLimits(estimate, AreaInterval::score, 1.959964);
        EXPECT_TRUE(0.0 <= score.lower && score.lower <= estimate.area && estimate.area <= score.upper
                    && score.upper <= 1.0);
    }
}

TEST(OneCurve, BestCutOffsAreThoseOfTheLargestValue)
{
    using Kind = CutOffCriterion::Kind;
    std::mt19937 random(7);
    for (int run = 0; run < 60; ++run) {
        const Summary sample = randomCases(random, 12).summary();
        const CurveTotals totals{sample.values().front().value, sample.values().back().value, sample.counts()};
        for (const Kind kind : {Kind::youden, Kind::closest, Kind::accuracy, Kind::cost, Kind::f1, Kind::mcc,
                                Kind::equal, Kind::specificity, Kind::sensitivity}) {
            const CutOffCriterion criterion(kind, sample.counts(),
                                            {.share = 0.29, .costRatio = 3.0, .prevalence = 0.1});
            const bool smallest = kind == Kind::closest || kind == Kind::equal;
            BestByCriterion best(criterion);
            double most = -1e300;
            forEachCutOff(sample.walk(), totals, {true, true}, [&](double cutOff, const CutOffCounts& counts) {
                best.take({cutOff, counts});
                if (criterion.admits(counts))
                    most = std::max(most, (smallest ? -1.0 : 1.0) * criterion.value(counts));
            });
            for (const OperatingPoint& point : best.points())
                EXPECT_NEAR(criterion.value(point.counts), smallest ? -most : most, 1e-14) << int(kind);
            EXPECT_EQ(best.points().empty(), most == -1e300) << int(kind);
        }
    }
}

/// Philox4x32-10 with key and counter 0: the authors' known answer.
TEST(OneCurve, BootstrapDependsOnSampleSeedAndNumberAlone)
{
    static_assert(Philox(0)({0, 0, 0, 0}) == Philox::Words{0x6627e8d5, 0xe169c58d, 0xbc57ac4c, 0x9b00dbd8});
    std::mt19937 random(9);
    const Cases cases = randomCases(random, 30);
    const Summary sample = cases.summary();
    std::vector<std::int64_t> whole(200);
    std::vector<std::int64_t> parts(200);
    AreaBootstrap(sample, 17).draw(0, whole);
    const AreaBootstrap bootstrap(sample, 17);
    bootstrap.draw(120, std::span(parts).subspan(120));
    bootstrap.draw(0, std::span(parts).first(120));
    EXPECT_EQ(whole, parts);

    Cases sorted = cases;
    std::ranges::sort(sorted.positive);
    std::ranges::sort(sorted.negative);
    const auto drawn = [&](const Numbers& values, std::uint32_t state) { // replicate 3
        Numbers sampleOf;
        for (std::uint32_t draw = 0; draw < values.size(); ++draw) {
            const Philox::Words w = Philox(17)({draw / 2, state, 3, 0});
            const std::uint64_t u = draw % 2 == 0 ? w[0] | std::uint64_t{w[1]} << 32 : w[2] | std::uint64_t{w[3]} << 32;
            sampleOf.push_back(values[static_cast<std::size_t>(
                std::floor(std::ldexp(static_cast<long double>(u), -64) * static_cast<long double>(values.size())))]);
        }
        return sampleOf;
    };
    std::int64_t twiceU = 0;
    for (const double p : drawn(sorted.positive, 0))
        for (const double n : drawn(sorted.negative, 1))
            twiceU += p > n ? 2 : p == n ? 1 : 0;
    EXPECT_EQ(whole[3], twiceU);

    const BootstrapInterval percentile = percentileInterval(whole, sample.counts(), 0.9);
    EXPECT_EQ(percentile.limits.lower,
              static_cast<double>(whole[9]) // number floor(201 * 0.05 + 1/2) = 10
                  / (2.0 * static_cast<double>(cases.positive.size() * cases.negative.size())));
    EXPECT_TRUE(enoughReplicates(1999, 0.999) && !enoughReplicates(199, 0.995));
}

} // namespace
} // namespace ROCALG_920
