#pragma once

#include "calls/guard.h"
#include "calls/inferenceOptions.h"
#include "calls/pieces.h"
#include "inference/Bootstrap.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

namespace ROCALG_920::calls {

/// Draws as many replicates as the options say of a statistic of counts at distinct values, those of the sample in its
/// order; without cases where none were drawn. Any number of threads may ask for the statistic at once. Nothing when
/// cancelled.
///
/// @param sample  with both states, in the direction asked for
template <class Statistic>
[[nodiscard]] auto replicatesOf(const Summary& sample, const InferenceOptions& options, const Statistic& statistic)
{
    using Number = std::invoke_result_t<const Statistic&, std::span<const DistinctValue>>;
    constexpr std::int64_t mostOfAState = std::numeric_limits<std::uint32_t>::max();
    if (sample.counts().positives > mostOfAState || sample.counts().negatives > mostOfAState)
        throw InvalidArgument("interval: too many cases of one state for a bootstrap; there may be 4294967295");
    const Resampling resampling(sample, options.seed);
    std::vector<Number> replicates(static_cast<std::size_t>(options.replicates));
    const auto draw = [&](std::int64_t first, std::int64_t count) {
        std::vector<Resampling::Drawn> drawn(sample.values().size());
        std::vector<DistinctValue> values(sample.values().begin(), sample.values().end());
        for (std::int64_t b = first; b < first + count; ++b) {
            resampling.draw(static_cast<std::uint64_t>(b), drawn);
            for (std::size_t i = 0; i < drawn.size(); ++i) {
                values[i].positives = drawn[i].positives;
                values[i].negatives = drawn[i].negatives;
            }
            replicates[static_cast<std::size_t>(b)] = statistic(std::span<const DistinctValue>(values));
        }
    };
    RunWatch watch(options.callbacks, 1.0);
    watch.beginPart(1.0);
    std::optional<std::vector<Number>> all;
    if (runInPieces(runnerOf(watch), options.replicates, draw))
        all = std::move(replicates);
    return all;
}

} // namespace ROCALG_920::calls
