#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace vexroc {

/// An option whose value is one of some words, at least two. Help shows them as "text|csv"; another word gets the
/// nearest of them suggested.
CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const std::vector<std::string>& words, const std::string& description);

} // namespace vexroc
