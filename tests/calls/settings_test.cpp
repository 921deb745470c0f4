#include "calls/settingsByName.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace ROCALG_920::calls;
using Texts = std::vector<std::string>;

const std::string header = [] {
    std::ifstream file(ANALYSIS_HEADER);
    return std::string(std::istreambuf_iterator<char>(file), {});
}();

/// The comment before the declaration of a call.
std::string commentOf(const std::string& call)
{
    const std::size_t end = header.find("int " + call + '(');
    const std::size_t begin = header.rfind("/**", end);
    return header.substr(begin, end - begin);
}

/// What the expression's groups match, without repeats.
Texts matches(const std::string& text, const char* expression)
{
    Texts found;
    const std::regex pattern(expression);
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
        for (std::size_t group = 1; group < match->size(); ++group)
            if ((*match)[group].matched && std::ranges::count(found, (*match)[group].str()) == 0)
                found.push_back((*match)[group]);
    return found;
}

/// Names of the settings of a kind, each before its words if it has any.
template <class Kind>
Texts settingsOf()
{
    Texts texts;
    for (const NamedSetting& setting : namedSettings()) {
        if (!std::holds_alternative<Kind>(setting.set))
            continue;
        texts.emplace_back(setting.name);
        if constexpr (std::is_same_v<Kind, NamedSetting::Word>) {
            texts.emplace_back();
            for (const std::string_view word : std::get<Kind>(setting.set).words)
                texts.back() += (texts.back().empty() || word.empty() ? "" : ", ") + std::string(word);
        }
    }
    return texts;
}

TEST(NamedSettings, AreThoseThatTheHeaderDescribes)
{
    EXPECT_EQ(matches(commentOf("vexroc_analysis_set_column"), "\"([a-z]+)\""), settingsOf<NamedSetting::Column>());
    EXPECT_EQ(matches(commentOf("vexroc_analysis_set_number"), "\n \\*   ([a-z_]+)(?:, ([a-z_]+))?  +"),
              settingsOf<NamedSetting::Number>());
    EXPECT_EQ(matches(commentOf("vexroc_analysis_set_word"), "\n \\*   ([a-z_]+)  +([a-z, -]+):"),
              settingsOf<NamedSetting::Word>());
}

} // namespace
