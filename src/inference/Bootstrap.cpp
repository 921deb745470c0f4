#include "inference/Bootstrap.h"

#include "inference/PartialArea.h"

#include "host/VexDistFun.h"
#include "inference/PlacementSums.h"
#include "numeric/Int256.h"
#include "numeric/tails.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace ROCALG_920 {

namespace {

/// Sums over all cases of the distances of their components to the area, each divided by the cases of its state.
struct ComponentMoments {
    double squares = 0.0;
    double cubes = 0.0;
};

/// (sum (V-A)^3/P^3 + sum (W-A)^3/N^3) / (6 (sum (V-A)^2/P^2 + sum (W-A)^2/N^2)^1.5)
double acceleration(const Summary& sample)
{
    const StateCounts& cases = sample.counts();
    const auto p = static_cast<double>(cases.positives);
    const auto n = static_cast<double>(cases.negatives);
    const double area = placementSums(sample.walk(), cases).pairs().share();
    PlacementSums placements(cases);
    ComponentMoments moments;
    for (const DistinctValue& x : sample.values()) {
        const PlacementSums::Twice twice = placements.add(x);
        const double v = (static_cast<double>(twice.ofPositive) / (2.0 * n) - area) / p;
        const double w = (static_cast<double>(twice.ofNegative) / (2.0 * p) - area) / n;
        const auto positives = static_cast<double>(x.positives);
        const auto negatives = static_cast<double>(x.negatives);
        moments.squares += positives * v * v + negatives * w * w;
        moments.cubes += positives * v * v * v + negatives * w * w * w;
    }
    return moments.cubes / (6.0 * moments.squares * std::sqrt(moments.squares));
}

/// The replicate at a share of the sorted ones, as an area.
class OrderStatistics {
public:
    OrderStatistics(std::span<const std::int64_t> sorted, const StateCounts& cases)
        : sorted_(sorted),
          twicePairs_(2.0 * static_cast<double>(cases.positives) * static_cast<double>(cases.negatives))
    {
    }
    /// Number floor((B + 1) p + 1/2), held in 1..B.
    [[nodiscard]] double at(double p)
    {
        const auto count = static_cast<double>(sorted_.size());
        const double number = std::floor((count + 1.0) * p + 0.5);
        const double held = std::clamp(number, 1.0, count);
        heldAtEnd_ = heldAtEnd_ || held != number;
        return static_cast<double>(sorted_[static_cast<std::size_t>(held) - 1]) / twicePairs_;
    }
    [[nodiscard]] bool heldAtEnd() const noexcept { return heldAtEnd_; }

private:
    std::span<const std::int64_t> sorted_;
    double twicePairs_;
    bool heldAtEnd_ = false;
};

/// sqrt((B sum v^2 - (sum v)^2) / (B (B - 1))) / (2 P N), from the integers
double stdErrorOf(std::span<const std::int64_t> twiceU, const StateCounts& cases)
{
    Int256 squares = 0;
    Int128 sum = 0;
    for (const std::int64_t v : twiceU) {
        squares = squares + Int256(Int128{v} * v);
        sum += v;
    }
    const auto count = static_cast<std::int64_t>(twiceU.size());
    const Int256 numerator = Int256(Int128{count}) * squares - Int256(sum) * Int256(sum);
    const double denominator = static_cast<double>(Int128{count} * (count - 1));
    return std::sqrt(static_cast<double>(numerator) / denominator)
        / (2.0 * static_cast<double>(cases.positives) * static_cast<double>(cases.negatives));
}

/// The bias z0: quantile of the share of replicates below the estimate, those equal to it counting half.
double biasOf(std::span<const std::int64_t> sorted, std::int64_t twiceU)
{
    const auto [first, last] = std::equal_range(sorted.begin(), sorted.end(), twiceU);
    const auto below = static_cast<double>(first - sorted.begin());
    const auto equal = static_cast<double>(last - first);
    return VexMath_920::VexDistFun::IdfNorm((below + equal / 2.0) / static_cast<double>(sorted.size()), 0.0, 1.0);
}

} // namespace

Resampling::Resampling(const Summary& sample, std::uint64_t seed) : random_(seed)
{
    valueOfPositive_.reserve(static_cast<std::size_t>(sample.counts().positives));
    valueOfNegative_.reserve(static_cast<std::size_t>(sample.counts().negatives));
    std::uint32_t place = 0;
    for (const DistinctValue& x : sample.values()) {
        valueOfPositive_.insert(valueOfPositive_.end(), static_cast<std::size_t>(x.positives), place);
        valueOfNegative_.insert(valueOfNegative_.end(), static_cast<std::size_t>(x.negatives), place);
        ++place;
    }
}

void Resampling::draw(std::uint64_t replicate, std::span<Drawn> drawn) const
{
    std::ranges::fill(drawn, Drawn{0, 0});
    drawState(replicate, State::positive, drawn);
    drawState(replicate, State::negative, drawn);
}

/// Two draws from the four words of a block: index = floor(u m / 2^64).
void Resampling::drawState(std::uint64_t replicate, State state, std::span<Drawn> drawn) const
{
    __extension__ typedef unsigned __int128 Wide;
    const bool positive = state == State::positive;
    const std::vector<std::uint32_t>& valueOf = positive ? valueOfPositive_ : valueOfNegative_;
    std::uint32_t Drawn::*const count = positive ? &Drawn::positives : &Drawn::negatives;
    const std::size_t cases = valueOf.size();
    const auto low = static_cast<std::uint32_t>(replicate);
    const auto high = static_cast<std::uint32_t>(replicate >> 32);
    const auto take = [&](std::uint32_t word0, std::uint32_t word1) {
        const std::uint64_t u = word0 | std::uint64_t{word1} << 32;
        drawn[valueOf[static_cast<std::size_t>((Wide{u} * cases) >> 64)]].*count += 1;
    };
    for (std::size_t draw = 0; draw < cases; draw += 2) {
        const auto block = static_cast<std::uint32_t>(draw / 2);
        const Philox::Words words = random_({block, static_cast<std::uint32_t>(state), low, high});
        take(words[0], words[1]);
        if (draw + 1 < cases)
            take(words[2], words[3]);
    }
}

void AreaBootstrap::draw(std::uint64_t first, std::span<std::int64_t> twiceU) const
{
    std::vector<Resampling::Drawn> drawn(values_);
    for (std::size_t i = 0; i < twiceU.size(); ++i) {
        resampling_.draw(first + i, drawn);
        std::int64_t below = 0;
        std::int64_t sum = 0;
        for (const Resampling::Drawn& x : drawn) {
            sum += std::int64_t{x.positives} * (2 * below + x.negatives);
            below += x.negatives;
        }
        twiceU[i] = sum;
    }
}

bool enoughReplicates(std::size_t replicates, double level) noexcept
{
    return casesOfShare((1.0 - level) / 2.0, static_cast<std::int64_t>(replicates) + 1) >= 1.0;
}

BootstrapInterval percentileInterval(std::span<std::int64_t> twiceU, const StateCounts& cases, double level)
{
    std::ranges::sort(twiceU);
    OrderStatistics order(twiceU, cases);
    const Limits limits{order.at((1.0 - level) / 2.0), order.at((1.0 + level) / 2.0)};
    return {.stdError = stdErrorOf(twiceU, cases), .limits = limits, .heldAtEnd = order.heldAtEnd()};
}

/// p = phi(z0 + (z0 -+ z) / (1 - a (z0 -+ z)))
BootstrapInterval bcaInterval(std::span<std::int64_t> twiceU, const Summary& sample, double level)
{
    const StateCounts& cases = sample.counts();
    BootstrapInterval percentile = percentileInterval(twiceU, cases, level);
    const auto estimate = static_cast<std::int64_t>(placementSums(sample.walk(), cases).pairs().twiceOrdered);
    const double bias = biasOf(twiceU, estimate);
    const double a = acceleration(sample);
    if (!std::isfinite(bias) || std::isnan(a)) {
        percentile.isPercentile = true;
        return percentile;
    }
    const double z = VexMath_920::VexDistFun::IdfNorm((1.0 + level) / 2.0, 0.0, 1.0);
    const auto corrected = [&](double shifted) {
        return normalUpperTail(-(bias + shifted / (1.0 - a * shifted))).probability;
    };
    OrderStatistics order(twiceU, cases);
    const Limits limits{order.at(corrected(bias - z)), order.at(corrected(bias + z))};
    return {.stdError = percentile.stdError, .limits = limits, .heldAtEnd = order.heldAtEnd()};
}

} // namespace ROCALG_920
