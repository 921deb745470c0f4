#pragma once

#include "cli/sources/Input.h"

#include <string>

namespace CLI {
class App;
}

namespace vexroc {

/// The options that name the data, as typed.
struct InputOptions {
    std::string file;
    std::string delimiter;
    std::string decimal;
    std::string thousands;
    std::string encoding;
    std::string missing;
    bool header = false;
    bool noHeader = false;
    std::string sqlite;
    std::string postgres;
    std::string table;
    std::string query;
};

void addInputOptions(CLI::App& command, InputOptions& options);

/// Throws a usage error when the options name no data, or data twice.
Input parseInput(const InputOptions& options);

} // namespace vexroc
