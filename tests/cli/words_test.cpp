#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <gmock/gmock.h>

namespace vexroc {

using testing::ElementsAre;

TEST(Words, ListsRespectQuotes)
{
    EXPECT_THAT(splitList("a, b ,c", "--test"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(splitList("\"a,\"\"b\"\"\" ,c\"d", "--test"), ElementsAre("a,\"b\"", "c\"d"));
    for (const char* const wrong : {"", "a,", ",a", "a,,b", "\"a", "\"a\"b"})
        EXPECT_THROW(splitList(wrong, "--test"), Failure) << wrong;
}

TEST(Words, AssignmentsSplitAtTheFirstEqualSignOutsideQuotes)
{
    EXPECT_EQ(splitAssignment("a=b=c", "--state", "COLUMN=VALUE").values, "b=c");
    EXPECT_EQ(splitAssignment("\"a=b\"=c", "--state", "COLUMN=VALUE").column, "a=b");
    for (const char* const wrong : {"", "a", "a=", "=b", "\"a=b"})
        EXPECT_THROW(splitAssignment(wrong, "--state", "COLUMN=VALUE"), Failure) << wrong;
}

TEST(Words, NearWordsForgiveCaseAndAFewLetters)
{
    const std::vector<std::string> names{"radius_mean", "radius_worst", "texture_mean", "Age"};
    EXPECT_THAT(nearWords("Radius_Maen", names), ElementsAre("radius_mean"));
    EXPECT_THAT(nearWords("age", names), ElementsAre("Age"));
    EXPECT_THAT(nearWords("aeg", names), ElementsAre("Age")); // neighbours swapped are one slip
    EXPECT_THAT(nearWords("smoothness", names), ElementsAre());
    EXPECT_THAT(nearWords("s", std::vector<std::string>{"", "s", "t", "S"}), ElementsAre("S")); // one letter is no slip
}

TEST(Words, VisibleTextHasNoControlCharactersAndIsUtf8)
{
    const std::pair<std::string, std::string> texts[] = {
        {"a\tb\nc\r", "a\\tb\\nc\\r"},
        {"\x1b[31m\x7f", "\\x1b[31m\\x7f"},
        {"Größe €😀", "Größe €😀"},
        {"\xC2\x9B[", "\\xc2\\x9b["},          // a control character of U+0080 to U+009F
        {"\xE9t\xE9", "\\xe9t\\xe9"},          // Latin-1
        {"\xED\xA0\x80", "\\xed\\xa0\\x80"},   // half of a surrogate pair
        {"\xE2\x82", "\\xe2\\x82"},            // cut short
        {"a\u202Eb", "a\\xe2\\x80\\xaeb"},     // turns the direction
        {"\\d \\n \\\n", "\\d \\\\n \\\\\\n"}, // a backslash where it would read as an escape
    };
    for (const auto& [text, shown] : texts)
        EXPECT_EQ(visible(text), shown);
}

TEST(Words, ShellWordsAreReadBack)
{
    EXPECT_EQ(shellWord("a-b=c,d"), "a-b=c,d");
    EXPECT_EQ(shellWord("it's"), "'it'\\''s'");
    EXPECT_EQ(shellWord("it's\n\\"), "$'it\\'s\\n\\\\'");
}

} // namespace vexroc
