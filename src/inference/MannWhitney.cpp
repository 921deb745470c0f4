#include "inference/MannWhitney.h"

#include "inference/OrderedTriples.h"
#include "numeric/Int256.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ROCALG_920 {

namespace {

/// PN/12 (n + 1 - sum(t^3 - t)/(n(n-1))), the sums as integers.
double varianceOfU(const StateCounts& cases, Int128 tieSum)
{
    const Int128 n = cases.cases();
    const Int128 free = (n + 1) * n * (n - 1) - tieSum; // n^3 - n, less that of every tie
    const Int256 numerator = Int256(Int128{cases.positives} * cases.negatives) * Int256(free);
    return static_cast<double>(numerator) / static_cast<double>(12 * n * (n - 1));
}

/// The numbers of ways in which cases of the smaller state come to a sum of 2 U, over the values so far.
class WaysToFall {
public:
    WaysToFall(const StateCounts& cases, const std::function<bool(double)>& goOn)
        : few_(std::min(cases.positives, cases.negatives)), many_(std::max(cases.positives, cases.negatives)),
          goOn_(goOn), ways_(firstOf(few_ + 1), 0.0)
    {
        ways_[0] = 1.0;
    }

    /// The next value in ascending order, which t cases share. False when told to stop.
    [[nodiscard]] bool add(std::int64_t t)
    {
        for (std::int64_t after = std::min(few_, seen_ + t); after > 0; --after) { // rows below are still as before
            double choices = 1.0;
            for (std::int64_t take = 1; take <= std::min(t, after); ++take) {
                choices = choices * static_cast<double>(t - take + 1) / static_cast<double>(take);
                addTaken(after, take, t, choices);
            }
            if (!mayGoOn())
                return false;
        }
        seen_ += t;
        return true;
    }
    /// Ways by their sum of 2 U, of all cases of the smaller state.
    [[nodiscard]] std::span<const double> all() const { return row(few_); }

private:
    void addTaken(std::int64_t after, std::int64_t take, std::int64_t t, double choices)
    {
        const std::int64_t before = after - take;
        const std::int64_t othersBelow = seen_ - before;
        if (othersBelow < 0 || othersBelow + (t - take) > many_)
            return;
        const auto shift = static_cast<std::size_t>(take * (2 * othersBelow + (t - take)));
        const auto sums = static_cast<std::size_t>(2 * before * othersBelow) + 1; // no sum so far is larger
        const double* const from = ways_.data() + firstOf(before);
        double* const to = ways_.data() + firstOf(after) + shift;
        for (std::size_t u = 0; u < sums; ++u)
            to[u] += choices * from[u];
        sinceAsked_ += sums;
    }
    [[nodiscard]] bool mayGoOn()
    {
        constexpr std::size_t stepsBetween = 20'000'000; // some 10 ms
        if (sinceAsked_ < stepsBetween || !goOn_)
            return true;
        sinceAsked_ = 0;
        return goOn_(static_cast<double>(seen_) / static_cast<double>(few_ + many_));
    }
    /// Where the row of so many taken begins; each has place for sums from 0 to 2 taken many.
    [[nodiscard]] std::size_t firstOf(std::int64_t taken) const
    {
        return static_cast<std::size_t>(taken * (taken - 1) * many_ + taken);
    }
    [[nodiscard]] std::span<const double> row(std::int64_t taken) const
    {
        return std::span(ways_).subspan(firstOf(taken), firstOf(taken + 1) - firstOf(taken));
    }

    std::int64_t few_;
    std::int64_t many_;
    std::int64_t seen_ = 0;
    const std::function<bool(double)>& goOn_;
    std::size_t sinceAsked_ = 0;
    std::vector<double> ways_; ///< by number taken, then by 2 U
};

/// Share of the ways whose twice-sum the test counts; P(|U - PN/2| >= |u - PN/2|) when two-sided.
double shareOfWays(std::span<const double> ways, std::int64_t pairs, std::int64_t distance, Alternative alternative)
{
    double counted = 0.0;
    double all = 0.0;
    for (std::size_t u = 0; u < ways.size(); ++u) {
        const std::int64_t here = static_cast<std::int64_t>(u) - pairs;
        const bool counts = alternative == Alternative::greater ? here >= distance
            : alternative == Alternative::less                  ? here <= distance
                                                                : std::abs(here) >= std::abs(distance);
        all += ways[u];
        counted += counts ? ways[u] : 0.0;
    }
    return counted / all;
}

} // namespace

MannWhitney mannWhitney(const StateCounts& cases, Int128 twiceU, Int128 tieSum, Alternative alternative, bool corrected)
{
    const double deviation = std::sqrt(varianceOfU(cases, tieSum));
    if (deviation == 0.0)
        return {0.0, {1.0, 0.0}};
    const auto distance = static_cast<double>(twiceU - Int128{cases.positives} * cases.negatives) / 2.0;
    const double half = corrected ? 0.5 : 0.0;
    const double toMean = alternative == Alternative::twoSided
        ? std::copysign(std::max(std::abs(distance) - half, 0.0), distance)
        : distance + (alternative == Alternative::less ? half : -half);
    const double z = toMean / deviation;
    return {z, pOfNormal(z, alternative)};
}

double exactSteps(const StateCounts& cases) noexcept
{
    const auto p = static_cast<double>(cases.positives);
    const auto n = static_cast<double>(cases.negatives);
    return (p + n) * std::min(p, n) * (2.0 * p * n);
}

double exactBytes(const StateCounts& cases) noexcept
{
    const auto few = static_cast<double>(std::min(cases.positives, cases.negatives));
    const auto many = static_cast<double>(std::max(cases.positives, cases.negatives));
    return 8.0 * (few + 1.0) * (few * many + 1.0);
}

std::optional<double> exactMannWhitney(const Summary& sample, Alternative alternative,
                                       const std::function<bool(double)>& goOn)
{
    const StateCounts& cases = sample.counts();
    WaysToFall ways(cases, goOn);
    for (const DistinctValue& x : sample.values())
        if (!ways.add(x.positives + x.negatives))
            return std::nullopt;
    // 2 U counts for the state that is taken: for the negative one the distance changes its sign.
    const Int128 twiceU = orderedTriples(sample.walk(), cases).pairs.twiceOrdered;
    const std::int64_t pairs = cases.positives * cases.negatives;
    const std::int64_t distance = static_cast<std::int64_t>(twiceU) - pairs;
    const bool ofPositives = cases.positives <= cases.negatives;
    return shareOfWays(ways.all(), pairs, ofPositives ? distance : -distance,
                       ofPositives || alternative == Alternative::twoSided ? alternative
                           : alternative == Alternative::greater           ? Alternative::less
                                                                           : Alternative::greater);
}

} // namespace ROCALG_920
