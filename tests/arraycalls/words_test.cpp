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
    for (const Pair& pair : pairs) {
        SCOPED_TRACE(pair.second);
        std::string capital = pair.second;
        capital[0] = upper(capital)[0];
        for (const std::string& word : {pair.second, upper(pair.second), capital})
            EXPECT_FALSE(pair.parser(word.c_str())) << word;
        const std::string unknown[] = {pair.first,
                                       upper(pair.first),
                                       "",
                                       " ",
                                       " " + pair.second,
                                       pair.second + " ",
                                       pair.second + "s",
                                       pair.second.substr(1),
                                       "\xFD\xDD\xC0",
                                       std::string(10'000, 'x')};
        for (const std::string& word : unknown)
            EXPECT_TRUE(pair.parser(word.c_str())) << word;
        EXPECT_TRUE(pair.parser(nullptr));
    }
    EXPECT_EQ(lower("AZ[@I\xDD\xC0z"), "az[@i\xDD\xC0z");
    EXPECT_TRUE(compareIgnoreCase("Bi-Negative", "bI-nEGATIVE"));
    EXPECT_FALSE(compareIgnoreCase("ab", "abc"));
}

TEST(OptionWords, IgnoreCaseAndKnowOnlyWholeWords) { expectWordsAreRead(); }

/// In this locale the lower-case letter of I is a dotless one. Debian builds no locales; the folder of the test will.
class TurkishLocale {
public:
    TurkishLocale()
    {
        const std::string command =
            "localedef -i tr_TR -f ISO-8859-9 '" + (folder_.path() / name).string() + "' >/dev/null 2>&1";
        built_ = std::system(command.c_str()) == 0;
        setenv("LOCPATH", folder_.path().c_str(), 1);
        set_ = std::setlocale(LC_ALL, name) != nullptr;
    }
    TurkishLocale(const TurkishLocale&) = delete;
    TurkishLocale& operator=(const TurkishLocale&) = delete;
    ~TurkishLocale()
    {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }
    [[nodiscard]] bool built() const { return built_; }
    [[nodiscard]] bool set() const { return set_; }

private:
    static constexpr char name[] = "tr_TR.ISO-8859-9";
    TemporaryFolder folder_;
    bool built_;
    bool set_;
};

TEST(OptionWords, DoNotDependOnTheLocaleOfTheProcess)
{
    const TurkishLocale locale;
    if (!locale.set())
        GTEST_SKIP() << (locale.built() ? "the locale was built but cannot be set"
                                        : "localedef or the locale's definition is not installed (package locales)");
    ASSERT_NE(std::tolower('I'), 'i'); // or this test would prove nothing
    expectWordsAreRead();
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
