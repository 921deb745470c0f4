#include "inference/CutOffLookup.h"
#include "inference/NetBenefit.h"
#include "inference/OperatingStatistics.h"
#include "inference/PartialArea.h"
#include "inference/PrecisionRecallArea.h"
#include "inference/RateAt.h"
#include "inference/Replicates.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

namespace ROCALG_920 {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double huge = std::numeric_limits<double>::max();

Summary sampleOf(const std::vector<DistinctValue>& values) { return Summary(std::span<const DistinctValue>(values)); }

/// Distinct values with a few cases of one or both states each; there are some of both.
Summary randomSample(std::mt19937& random, std::size_t most)
{
    std::vector<DistinctValue> values{{0.0, 1, 1}};
    for (std::size_t i = 1 + random() % most; i > 0; --i) {
        const auto positives = static_cast<std::int64_t>(random() % 3);
        const auto negatives = static_cast<std::int64_t>(positives == 0 ? 1 + random() % 2 : random() % 3);
        values.push_back({values.back().value + 1.0, positives, negatives});
    }
    return sampleOf(values);
}

using Row = std::tuple<double, std::int64_t, std::int64_t>;

/// Sweeping on from any cut-off gives what a sweep of all gives, also where midpoints overflow or are undefined.
TEST(CutOffLookup, PiecesAreThoseOfTheWholeSweep)
{
    std::vector<DistinctValue> many;
    for (int i = 0; i < 300; ++i)
        many.push_back({0.1 * i, i % 3 == 0, 1 + i % 2});
    const std::vector<std::vector<DistinctValue>> samples{
        many,
        {{-infinity, 1, 0}, {infinity, 0, 1}},
        {{-huge, 1, 1}, {-0.9 * huge, 1, 0}, {-0.8 * huge, 0, 1}, {0.0, 1, 1}, {0.9 * huge, 2, 0}, {huge, 1, 1}},
        {{1.0, 1, 1}, {std::nextafter(1.0, 2.0), 1, 1}, {std::nextafter(1.0, 2.0) + 3e-16, 2, 1}}};
    for (const std::vector<DistinctValue>& values : samples)
        for (const CurveOptions options : {CurveOptions{true, true}, {false, true}, {true, false}, {false, false}}) {
            const Summary sample = sampleOf(values);
            std::vector<Row> whole;
            forEachCutOff(sample.walk(), {values.front().value, values.back().value, sample.counts()}, options,
                          [&](double cutOff, const CutOffCounts& counts) {
                              whole.emplace_back(cutOff, counts.truePositives, counts.falsePositives);
                          });
            const CutOffLookup lookup(sample, options);
            ASSERT_EQ(lookup.count(), whole.size());
            for (std::size_t first = 0; first < whole.size(); ++first)
                lookup.forEach(first, std::min<std::size_t>(2, whole.size() - first),
                               [&, number = first](double cutOff, const CutOffCounts& counts, std::size_t) mutable {
                                   const auto& [at, tp, fp] = whole[number++];
                                   EXPECT_TRUE(cutOff == at || (std::isnan(cutOff) && std::isnan(at)));
                                   EXPECT_EQ(counts.truePositives, tp) << number;
                                   EXPECT_EQ(counts.falsePositives, fp) << number;
                               });
        }
}

/// Doubles hold the products of small counts, Int128 those of large ones: both round the same numbers.
TEST(OperatingStatistics, LargeCountsGiveTheRatesOfSmallOnes)
{
    constexpr std::int64_t scale = std::int64_t{1} << 30; // every quotient is the same
    const CutOffCounts small{37, 12, 71, 9};
    const CutOffCounts large{37 * scale, 12 * scale, 71 * scale, 9 * scale};
    for (int i = 0; i <= static_cast<int>(OperatingStatistic::kappa); ++i)
        for (const std::optional<double> prevalence : {std::optional<double>(), std::optional(0.1)})
            EXPECT_EQ(estimateOf(OperatingStatistic(i), small, {.prevalence = prevalence}),
                      estimateOf(OperatingStatistic(i), large, {.prevalence = prevalence}))
                << i;
}

/// One pass in integers against the components case by case.
TEST(PartialArea, AreaAndVarianceAreThoseOfItsComponents)
{
    std::mt19937 random(3);
    for (int run = 0; run < 200; ++run) {
        const Summary sample = randomSample(random, 12);
        const double from = 0.05 * static_cast<double>(random() % 10);
        const Band band{from, from + 0.05 * static_cast<double>(1 + random() % 10)};
        for (const BandRate rate : {BandRate::falsePositive, BandRate::sensitivity}) {
            const PartialArea area = partialArea(sample.values(), sample.counts(), band, rate);
            const PartialComponents components = partialComponents(sample, band, rate);
            std::vector<double> v;
            std::vector<double> w;
            std::size_t place = 0;
            forEachValue(BandWalk(sample.values(), rate), [&](const DistinctValue& x) {
                v.insert(v.end(), static_cast<std::size_t>(x.positives), components.ofPositive[place]);
                w.insert(w.end(), static_cast<std::size_t>(x.negatives), components.ofNegative[place]);
                ++place;
            });
            const auto meanOf = [](const std::vector<double>& list) {
                double sum = 0.0;
                for (const double x : list)
                    sum += x;
                return sum / static_cast<double>(list.size());
            };
            const auto varianceOf = [&](const std::vector<double>& list) {
                const auto n = static_cast<double>(list.size());
                double squares = 0.0;
                for (const double x : list)
                    squares += (x - meanOf(list)) * (x - meanOf(list));
                return squares / (n - 1.0) / n;
            };
            EXPECT_NEAR(area.area, meanOf(v), 1e-15);
            EXPECT_NEAR(area.area, meanOf(w), 1e-15);
            if (v.size() > 1 && w.size() > 1) {
                EXPECT_NEAR(area.variance, varianceOf(v) + varianceOf(w), 1e-16);
            }
        }
    }
}

/// What the area changes with one more case of a value, all cases being counted many times.
TEST(PrecisionRecallArea, InfluenceIsItsSlope)
{
    constexpr std::int64_t scale = 1'000'000;
    std::mt19937 random(11);
    for (int run = 0; run < 20; ++run) {
        const Summary sample = randomSample(random, 8);
        std::vector<DistinctValue> values;
        for (const DistinctValue& x : sample.values())
            values.push_back({x.value, x.positives * scale, x.negatives * scale});
        const StateCounts cases = sampleOf(values).counts(); // as a bootstrap has it, whatever is drawn
        for (const PrecisionRecallRule rule :
             {PrecisionRecallRule::integral, PrecisionRecallRule::step, PrecisionRecallRule::trapezoid})
            for (const std::optional<double> prevalence : {std::optional<double>(), std::optional(0.03)}) {
                const CaseInfluence influence = precisionRecallInfluence(values, cases, rule, prevalence);
                const auto slope = [&](std::int64_t DistinctValue::*state, std::size_t place, std::int64_t all) {
                    constexpr std::int64_t step = 100;
                    const auto areaWith = [&](std::int64_t more) {
                        std::vector<DistinctValue> moved = values;
                        moved[place].*state += more;
                        return precisionRecallArea(moved, cases, rule, prevalence);
                    };
                    return (areaWith(step) - areaWith(-step)) / (2.0 * step) * static_cast<double>(all);
                };
                for (std::size_t i = 0; i < values.size(); ++i) {
                    if (values[i].positives > 0) {
                        EXPECT_NEAR(influence.ofPositive[i], slope(&DistinctValue::positives, i, cases.positives),
                                    1e-6);
                    }
                    if (values[i].negatives > 0) {
                        EXPECT_NEAR(influence.ofNegative[i], slope(&DistinctValue::negatives, i, cases.negatives),
                                    1e-6);
                    }
                }
            }
    }
}

TEST(PrecisionRecallArea, LowestOfManyCasesIsTheSumOfItsTerms)
{
    for (const auto& [positives, negatives] : {std::pair{5000, 3}, {2000, 40000}, {1001, 1000}}) {
        long double sum = 0.0L;
        for (int i = 1; i <= positives; ++i)
            sum += static_cast<long double>(i) / static_cast<long double>(i + negatives);
        const StateCounts cases{positives, negatives};
        EXPECT_NEAR(lowestPrecisionRecallArea(cases, PrecisionRecallRule::step)
                        / static_cast<double>(sum / static_cast<long double>(positives)),
                    1.0, 1e-15);
    }
}

/// The rate among all splits, and its interval on numbers that can be checked by hand.
TEST(RateAt, IsTheBestOfAllSplits)
{
    std::mt19937 random(23);
    for (int run = 0; run < 100; ++run) {
        const Summary sample = randomSample(random, 10);
        const double share = 0.1 * static_cast<double>(random() % 11);
        for (const auto kind : {CutOffCriterion::Kind::specificity, CutOffCriterion::Kind::sensitivity}) {
            const RateAt rate(kind, share, sample.counts());
            const CutOffCriterion criterion(kind, sample.counts(), {.share = share});
            BestByCriterion best(criterion);
            CutOffLookup(sample, {true, true})
                .forEach(0, sample.values().size() + 1, [&](double at, const CutOffCounts& c, std::size_t) {
                    best.take({at, c});
                });
            ASSERT_FALSE(best.points().empty());
            const CutOffCounts& counts = best.points().front().counts;
            const bool ofSensitivity = kind == CutOffCriterion::Kind::specificity;
            EXPECT_EQ(rate.reached(sample.values()), ofSensitivity ? counts.truePositives : counts.trueNegatives);
            EXPECT_GE(rate.interpolated(sample.values()), criterion.value(counts));
        }
    }
    const std::vector<std::int64_t> reached{8, 10, 9, 9};
    const RateInterval interval = rateIntervalOfMoments(reached, 10, 2.0); // (mean 9 + 2) / (10 + 4)
    EXPECT_NEAR(interval.stdError, std::sqrt(2.0 / 3.0) / 14.0, 1e-16);
    EXPECT_NEAR(interval.limits.lower, 11.0 / 14.0 - 2.0 * interval.stdError, 1e-15);
    const std::vector<std::int64_t> spread{0, 10, 10, 10};
    const Limits held = rateIntervalOfMoments(spread, 10, 2.0).limits;
    EXPECT_TRUE(held.lower == 0.0 && held.upper == 1.0);
}

/// Replicates that are shifted multiples of integers have the limits of the integers; replicates of one number have
/// none but itself.
TEST(Replicates, CorrectionNeedsSpreadAndInfluence)
{
    std::vector<double> equal(199, 1.0 / 3.0);
    const BootstrapInterval none = correctedPercentilesOf(equal, 1.0 / 3.0 + 1e-16, std::nan(""), 0.95);
    EXPECT_EQ(none.stdError, 0.0);
    EXPECT_TRUE(none.isPercentile && none.limits.lower == 1.0 / 3.0 && none.limits.upper == 1.0 / 3.0);

    std::vector<double> ramp;
    for (int i = 199; i > 0; --i)
        ramp.push_back(0.1 * i);
    const BootstrapInterval plain = correctedPercentilesOf(ramp, 10.0, 0.0, 0.95); // number 100 of 199: no bias
    EXPECT_FALSE(plain.isPercentile || plain.heldAtEnd);
    EXPECT_EQ(plain.limits.lower, ramp[4]); // floor(200 * 0.025 + 1/2) = 5
    EXPECT_EQ(plain.limits.upper, ramp[194]);
    EXPECT_NEAR(plain.stdError, 0.1 * std::sqrt(199.0 * 200.0 / 12.0), 1e-12);
}

/// Vickers and Elkin by hand: four cases of ten are called positive at the threshold 1/4, three of them rightly.
TEST(NetBenefit, WeighsFalseAlarmsByTheOddsOfTheThreshold)
{
    const CutOffCounts counts{.truePositives = 3, .falsePositives = 1, .trueNegatives = 5, .falseNegatives = 1};
    EXPECT_NEAR(netBenefit(counts, 0.25, {}), 3.0 / 10.0 - 1.0 / 10.0 / 3.0, 1e-16);
    EXPECT_NEAR(netBenefit(counts, 0.25, 0.4), netBenefit(counts, 0.25, {}), 1e-16);
    const Calibration found = calibration(sampleOf({{0.25, 2, 0}, {0.75, 0, 2}}), {});
    EXPECT_TRUE(found.meanScore == 0.5 && found.observed == 0.5 && found.stdError == 0.25 && !found.differs);
    EXPECT_TRUE(calibration(sampleOf({{0.0, 1, 3}}), {}).differs);
    EXPECT_TRUE(calibration(sampleOf({{0.25, 0, 200}, {0.75, 200, 0}}), 0.01).differs); // a case-control sample's
}

} // namespace
} // namespace ROCALG_920
