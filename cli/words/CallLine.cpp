#include "cli/words/CallLine.h"

#include "cli/words/VisibleText.h"

#include <algorithm>

namespace vexroc {

CallLine::CallLine(std::span<const std::string_view> arguments) : arguments_(arguments.begin(), arguments.end()) {}

std::string CallLine::text() const
{
    std::string line = "vexroc";
    for (const std::string& argument : arguments_)
        line.append(" ").append(shellWord(argument));
    return line;
}

CallLine CallLine::with(std::string_view option, std::string_view value) const
{
    CallLine call;
    std::vector<std::string>& changed = call.arguments_;
    const auto behindOptions = std::ranges::find(arguments_, "--");
    for (auto argument = arguments_.begin(); argument != behindOptions; ++argument) {
        if (*argument == option && !value.empty() && argument + 1 != behindOptions)
            ++argument; // its value as well
        else if (*argument != option && !argument->starts_with(std::string(option) + '='))
            changed.push_back(*argument);
    }
    changed.emplace_back(option);
    if (!value.empty())
        changed.emplace_back(value);
    changed.insert(changed.end(), behindOptions, arguments_.end());
    return call;
}

} // namespace vexroc
