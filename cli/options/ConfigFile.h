#pragma once

#include <CLI/CLI.hpp>

#include <iosfwd>
#include <vector>

namespace vexroc {

/// Options kept in a file, spelled as on the command line without their dashes:
///
///     state = "diagnosis=malignant"    # for every command that has the option
///     [analyze]                        # for one command; goes before the former
///     test = ["radius_mean", "texture_mean"]
///     pr = true
///
/// What the arguments say goes before the file. Throws a usage error that names the file and the key at fault.
class ConfigFile : public CLI::ConfigBase {
public:
    explicit ConfigFile(const CLI::App& program) : program_(program) { comment('\0'); } // readableConfig leaves none

    std::vector<CLI::ConfigItem> from_config(std::istream& input) const override;

private:
    const CLI::App& program_;
};

} // namespace vexroc
