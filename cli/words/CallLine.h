#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// A call of the program, as a shell reads it, and the calls that differ from it by an option; visible text.
class CallLine {
public:
    /// The arguments behind the program's name.
    explicit CallLine(std::span<const std::string_view> arguments = {});

    [[nodiscard]] std::string text() const;
    /// With the option "--name" of this value, or of none; in place of what the call says of it.
    [[nodiscard]] CallLine with(std::string_view option, std::string_view value = {}) const;

private:
    std::vector<std::string> arguments_;
};

} // namespace vexroc
