#pragma once

#include "calls/RunWatch.h"
#include "inference/AreaInference.h"
#include "inference/Proportion.h"
#include "summary/CurveSweep.h"
#include "vexrocproc/inference.h"

#include <cstdint>
#include <optional>

namespace ROCALG_920::calls {

/// The options of inference.h, checked: whatever a member cannot be has been refused by name.
struct InferenceOptions {
    double level;
    double zCritical; ///< of the level; missing, as limits then are, for a level outside (0, 1)
    bool largerIsPositive;
    bool includeCutOff;
    const char* interval; ///< a word of the call, for positionOf; or null
    ProportionInterval proportion;
    PRule pMethod;
    ExactRule exact;
    Alternative alternative;
    double nullArea;
    bool smallSample;
    bool corrected;
    std::optional<double> prevalence;
    double costRatio;
    double leastSensitivity;
    double leastSpecificity;
    std::int64_t replicates;
    std::uint64_t seed;
    RunCallbacks callbacks;

    [[nodiscard]] CurveOptions curve() const noexcept { return {includeCutOff, largerIsPositive}; }
};

/// The defaults, and over them as much as the caller's structure has. Null is the defaults. Throws InvalidArgument.
[[nodiscard]] InferenceOptions inferenceOptions(const vexroc_inference_options* given);

/// Throws where there are too few replicates for the limits of the level.
void requireReplicates(const InferenceOptions& options);

} // namespace ROCALG_920::calls
