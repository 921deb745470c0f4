#include "cli/options/Choice.h"

#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace vexroc {

CLI::Option* addChoice(CLI::App& command, const std::string& name, std::string& value,
                       const std::vector<std::string>& words, const std::string& description)
{
    const auto fault = [words](const std::string& word) -> std::string {
        if (std::ranges::find(words, word) != words.end())
            return "";
        return "no word " + inQuotes(word) + didYouMean(word, words) + "; the words are " + listed(words, words.size());
    };
    return command.add_option(name, value, description)->type_name(CLI::detail::join(words, "|"))->check(fault);
}

} // namespace vexroc
