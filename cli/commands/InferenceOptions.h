#pragma once

#include "cli/study/Question.h"

#include <string>

namespace CLI {
class App;
}

namespace vexroc {

/// What intervals, p values and standard errors are made with, as typed; empty where it is not said.
struct InferenceOptions {
    std::string level;
    std::string interval;
    std::string pValue;
    std::string exact;
    std::string nullArea;
    std::string alternative;
    std::string replicates;
    std::string seed;
    bool biNegative = false;
};

/// All of them, for commands that show areas.
void addInferenceOptions(CLI::App& command, InferenceOptions& options);
/// Those of differences alone.
void addDifferenceOptions(CLI::App& command, InferenceOptions& options);
// Parts, for commands with other intervals.
void addLevelOption(CLI::App& command, InferenceOptions& options);
/// --replicates and --seed.
void addBootstrapOptions(CLI::App& command, InferenceOptions& options);

/// Settles what is asked of areas. Throws a usage error that names the option at fault.
Inference parseInference(const InferenceOptions& options, bool probabilityWeights);
/// The same of differences: their areas have no interval and no p value.
Inference parseDifference(const InferenceOptions& options);
/// Sets the level.
void parseLevel(const InferenceOptions& options, Inference& inference);
/// Sets replicates and seed, once level and interval are known.
void parseBootstrap(const InferenceOptions& options, Inference& inference);

} // namespace vexroc
