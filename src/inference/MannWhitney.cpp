#include "inference/MannWhitney.h"

#include "inference/PlacementSums.h"
#include "numeric/Int256.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ROCALG_920 {

namespace {

/// 2 U - P N: twice the distance of U from its mean.
Int128 twiceDistance(const Summary& sample)
{
    const StateCounts& cases = sample.counts();
    return placementSums(sample.walk(), cases).pairs().twiceOrdered - Int128{cases.positives} * cases.negatives;
}

/// PN/12 (n + 1 - sum(t^3 - t)/(n(n-1))), the sums as integers.
double varianceOfU(const Summary& sample)
{
    const StateCounts& cases = sample.counts();
    const Int128 n = cases.cases();
    Int128 free = (n + 1) * n * (n - 1); // n^3 - n, less that of every tie
    forEachValue(sample.walk(), [&](const DistinctValue& x) {
        const Int128 t = x.positives + x.negatives;
        free -= (t + 1) * t * (t - 1);
    });
    const Int256 numerator = Int256(Int128{cases.positives} * cases.negatives) * Int256(free);
    return static_cast<double>(numerator) / static_cast<double>(12 * n * (n - 1));
}

/// The numbers of ways in which cases of the smaller state come to a sum of 2 U, over the values so far.
class WaysToFall {
public:
    explicit WaysToFall(const StateCounts& cases)
        : few_(std::min(cases.positives, cases.negatives)), many_(std::max(cases.positives, cases.negatives)),
          width_(static_cast<std::size_t>(2 * few_ * many_) + 1),
          ways_((static_cast<std::size_t>(few_) + 1) * width_, 0.0)
    {
        ways_[0] = 1.0;
    }

    /// The next value in ascending order, which t cases share.
    void add(std::int64_t t)
    {
        for (std::int64_t after = std::min(few_, seen_ + t); after > 0; --after) { // rows below are still as before
            double choices = 1.0;
            for (std::int64_t take = 1; take <= std::min(t, after); ++take) {
                choices = choices * static_cast<double>(t - take + 1) / static_cast<double>(take);
                addTaken(after, take, t, choices);
            }
        }
        seen_ += t;
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
        const std::span<const double> from = row(before);
        double* const to = ways_.data() + static_cast<std::size_t>(after) * width_ + shift;
        for (std::size_t u = 0; u < sums; ++u)
            to[u] += choices * from[u];
    }
    [[nodiscard]] std::span<const double> row(std::int64_t taken) const
    {
        return std::span(ways_).subspan(static_cast<std::size_t>(taken) * width_, width_);
    }

    std::int64_t few_;
    std::int64_t many_;
    std::size_t width_;
    std::int64_t seen_ = 0;
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

MannWhitney mannWhitney(const Summary& sample, Alternative alternative, bool corrected)
{
    const auto distance = static_cast<double>(twiceDistance(sample)) / 2.0;
    const double twiceU = 2.0 * distance
        + static_cast<double>(sample.counts().positives) * static_cast<double>(sample.counts().negatives);
    const double deviation = std::sqrt(varianceOfU(sample));
    if (deviation == 0.0)
        return {twiceU, 0.0, 1.0};
    const double half = corrected ? 0.5 : 0.0;
    const double toMean = alternative == Alternative::twoSided
        ? std::copysign(std::max(std::abs(distance) - half, 0.0), distance)
        : distance + (alternative == Alternative::less ? half : -half);
    const double z = toMean / deviation;
    return {twiceU, z, pOfNormal(z, alternative)};
}

double exactSteps(const StateCounts& cases) noexcept
{
    const auto p = static_cast<double>(cases.positives);
    const auto n = static_cast<double>(cases.negatives);
    return (p + n) * std::min(p, n) * (2.0 * p * n);
}

std::optional<double> exactMannWhitney(const Summary& sample, Alternative alternative,
                                       const std::function<bool(double)>& goOn)
{
    const StateCounts& cases = sample.counts();
    WaysToFall ways(cases);
    std::int64_t seen = 0;
    for (const DistinctValue& x : sample.values()) {
        if (goOn && !goOn(static_cast<double>(seen) / static_cast<double>(cases.cases())))
            return std::nullopt;
        ways.add(x.positives + x.negatives);
        seen += x.positives + x.negatives;
    }
    // 2 U counts for the state that is taken: for the negative one the distance changes its sign.
    const auto distance = static_cast<std::int64_t>(twiceDistance(sample));
    const bool ofPositives = cases.positives <= cases.negatives;
    return shareOfWays(ways.all(), cases.positives * cases.negatives, ofPositives ? distance : -distance,
                       ofPositives || alternative == Alternative::twoSided ? alternative
                           : alternative == Alternative::greater           ? Alternative::less
                                                                           : Alternative::greater);
}

} // namespace ROCALG_920
