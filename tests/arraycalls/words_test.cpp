#include "tests/support/TemporaryFolder.h"
#include "vexrocproc/optionwords.h"

#include <gtest/gtest.h>

#include <cctype>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <string>

namespace {

using Parser = bool (*)(const char*);

struct Pair {
    Parser parser;
    std::string first;
    std::string second;
};
const Pair pairs[] = {{isLarger, "larger", "smaller"},
                      {isInclude, "include", "exclude"},
                      {isTP, "davis-goadrich", "keilwagen"},
                      {isNonParamDist, "nonparam", "bi-negative"}};

std::string upper(std::string s)
{
    for (char& c : s)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return s;
}

void expectWordsAreRead()
{
    for (const auto& [parser, first, second] : pairs) {
        SCOPED_TRACE(second);
        std::string capital = second;
        capital[0] = upper(capital)[0];
        for (const std::string& word : {second, upper(second), capital})
            EXPECT_FALSE(parser(word.c_str())) << word;
        const std::string foreign = "\xFD\xDD\xC0";
        for (const std::string& word : {first, upper(first), std::string(), std::string(" "), " " + second,
                                        second + " ", second + "s", second.substr(1), foreign, std::string(9'999, 'x')})
            EXPECT_TRUE(parser(word.c_str())) << word;
        EXPECT_TRUE(parser(nullptr));
    }
    EXPECT_EQ(lower("AZ[@I\xDD\xC0z"), "az[@i\xDD\xC0z");
    EXPECT_TRUE(compareIgnoreCase("Bi-Negative", "bI-nEGATIVE"));
    EXPECT_FALSE(compareIgnoreCase("ab", "abc"));
}

TEST(OptionWords, IgnoreCaseAndKnowOnlyWholeWords) { expectWordsAreRead(); }

TEST(OptionWords, DoNotDependOnTheLocaleOfTheProcess)
{
    // Debian builds no locales; in this one the lower-case letter of I is a dotless one.
    const TemporaryFolder folder;
    const std::string locale = folder.path() / "tr_TR.ISO-8859-9";
    if (std::system(("localedef -i tr_TR -f ISO-8859-9 '" + locale + "' >/dev/null 2>&1").c_str()) != 0)
        GTEST_SKIP() << "localedef or the locale's definition is not installed (package locales)";
    setenv("LOCPATH", folder.path().c_str(), 1);
    ASSERT_NE(std::setlocale(LC_ALL, "tr_TR.ISO-8859-9"), nullptr);
    EXPECT_NE(std::tolower('I'), 'i'); // or this test would prove nothing
    expectWordsAreRead();
    std::setlocale(LC_ALL, "C");
}

TEST(PositiveState, IsExactlyTheGivenValueOrOne)
{
    const double two = 2.0;
    const double nan = std::nan("");
    EXPECT_TRUE(yTrue(1.0, nullptr));
    EXPECT_FALSE(yTrue(1.0000001, nullptr));
    EXPECT_FALSE(yTrue(nan, nullptr));
    EXPECT_TRUE(yTrue(2.0, &two));
    EXPECT_FALSE(yTrue(1.0, &two));
    EXPECT_FALSE(yTrue(nan, &nan));
}

} // namespace
