#pragma once

#include <CLI/CLI.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace vexroc {

/// Options kept in a TOML file, spelled as on the command line without their dashes:
///
///     state = "diagnosis=malignant"    # for every command that has the option
///     [analyze]                        # for one command; goes before the former
///     test = ["radius_mean", "texture_mean"]
///     pr = true
///
/// What the arguments say goes before the file. Throws a usage error that names the file's line, or the unknown key.
class ConfigFile : public CLI::Config {
public:
    explicit ConfigFile(const CLI::App& program) : program_(program) {}

    std::vector<CLI::ConfigItem> from_config(std::istream& input) const override;
    /// The options of the command that was called, as far as they were given.
    std::string to_config(const CLI::App* program, bool, bool, std::string) const override;

private:
    const CLI::App& program_;
};

} // namespace vexroc
