#include "vexrocproc/analysis.h"
#include "vexrocproc/labels.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using Texts = std::vector<std::string>;

/// Labels of a column "state" in which every text stands so often as it is given.
class Labels {
public:
    explicit Labels(const Texts& texts, const Texts& named = {}, vexroc_voice voice = VEXROC_VOICE_PROGRAM,
                    const vexroc_words* words = nullptr, char decimal = '.')
    {
        vexroc_labels* made = nullptr;
        EXPECT_EQ(vexroc_labels_new("state", words, decimal, voice, &made), VEXROC_OK);
        labels_.reset(made);
        for (const std::string& text : texts)
            EXPECT_EQ(vexroc_labels_add(made, text.data(), text.size(), VEXROC_LABEL_TEXT, 1, nullptr), VEXROC_OK);
        for (const std::string& name : named)
            EXPECT_EQ(vexroc_labels_name(made, name.data(), name.size()), VEXROC_OK);
        EXPECT_EQ(vexroc_labels_settle(made), VEXROC_OK);
    }

    [[nodiscard]] vexroc_labels* get() const { return labels_.get(); }

    [[nodiscard]] Texts values() const
    {
        Texts texts;
        for (int v = 0; v < vexroc_labels_count(get()); ++v) {
            vexroc_label label{};
            label.struct_size = sizeof label;
            EXPECT_EQ(vexroc_labels_value(get(), v, &label), VEXROC_OK);
            texts.emplace_back(label.text, label.length);
        }
        return texts;
    }

    /// One sign for each spelling, in the order in which they came: + and - for the states, o for others, . for
    /// missing; the error where there is one.
    [[nodiscard]] std::string choose(std::vector<const char*> positive, std::vector<const char*> negative = {},
                                     bool others = false, const char* sign = nullptr, const char* bound = nullptr)
    {
        const vexroc_state_choice choice{
            sizeof choice, positive.data(), int(positive.size()), negative.data(), int(negative.size()), others, sign,
            bound};
        if (vexroc_labels_choose(get(), &choice) != VEXROC_OK)
            return vexroc_last_error();
        std::string states;
        for (int s = 0; vexroc_labels_value_of(get(), s) != -2; ++s)
            states += "-+o."[vexroc_labels_state_of(get(), s)];
        return states;
    }

    [[nodiscard]] std::string remarks() const
    {
        vexroc_remarks* list = nullptr;
        EXPECT_EQ(vexroc_remarks_new(VEXROC_VOICE_PROGRAM, &list), VEXROC_OK);
        EXPECT_EQ(vexroc_labels_add_remarks(get(), list), VEXROC_OK);
        std::string text;
        for (int i = 0; i < vexroc_remarks_count(list); ++i) {
            vexroc_remark remark{};
            remark.struct_size = sizeof remark;
            EXPECT_EQ(vexroc_remarks_get(list, i, &remark), VEXROC_OK);
            text.append(remark.code).append(": ").append(remark.text).append("\n");
        }
        vexroc_remarks_free(list);
        return text;
    }

private:
    struct Free {
        void operator()(vexroc_labels* labels) const { vexroc_labels_free(labels); }
    };
    std::unique_ptr<vexroc_labels, Free> labels_;
};

TEST(Labels, AreOneValueWhereTheySpellOneNumber)
{
    const struct {
        Texts texts, values;
        char decimal = '.';
    } cases[] = {
        {{"1", "1.0", "+1", "1e0", "0.1E+1", "100e-02", " 1 ", "1."}, {"1"}},
        {{"0", "-0", "0.00", "0e9", ".0"}, {"0"}},
        {{"9007199254740993", "9007199254740992"}, {"9007199254740992", "9007199254740993"}},
        {{"0.1", "0.1000000000000000000000000000000000000001"}, {"0.1", "0.1000000000000000000000000000000000000001"}},
        {{"7", "007", "07", "-07", "00"}, {"7", "-07", "00", "007", "07"}},
        {{"10", "9", "-2", "b", "1e2", "-30", "B", "0.5"}, {"-30", "-2", "0.5", "9", "10", "1e2", "B", "b"}},
        {{"1e999999999999999", "1e-999999999999999", "1e9999999999999999"},
         {"1e-999999999999999", "1e999999999999999", "1e9999999999999999"}},
        {{"1e", "e1", "+", "1 2", "0x1", "inf", "1e1.0", "--1"},
         {"+", "--1", "0x1", "1 2", "1e", "1e1.0", "e1", "inf"}},
        {{"1,50", "1,5", "1.5"}, {"1,50", "1.5"}, ','},
    };
    for (const auto& [texts, values, decimal] : cases)
        EXPECT_EQ(Labels(texts, {}, VEXROC_VOICE_PROGRAM, nullptr, decimal).values(), values) << texts.front();

    const Labels labels({"1.0", "ill"});
    EXPECT_EQ(vexroc_labels_find(labels.get(), "1", 1), 0);
    EXPECT_EQ(vexroc_labels_find(labels.get(), "ill ", 4), -1);
}

TEST(Labels, OfTheKindValueEqualThemselvesOnly)
{
    vexroc_labels* labels = nullptr;
    ASSERT_EQ(vexroc_labels_new("state", nullptr, '.', VEXROC_VOICE_PYTHON, &labels), VEXROC_OK);
    for (const auto kind : {VEXROC_LABEL_VALUE, VEXROC_LABEL_TEXT})
        for (const std::string text : {"1", "NA", "True"})
            vexroc_labels_add(labels, text.data(), text.size(), kind, 1, nullptr);
    vexroc_labels_settle(labels);
    EXPECT_EQ(vexroc_labels_count(labels), 5) << "both 1, both True, and the value NA";
    vexroc_labels_free(labels);
}

TEST(Labels, MissingWordsAreNoValuesUnlessTheyAreNamed)
{
    const Texts usual{"a", "b", "", " ", "NA", "n/a", "Null", "nan", "#N/A"};
    const struct {
        Texts texts, named, values;
    } cases[] = {
        {usual, {}, {"a", "b"}},
        {usual, {"NULL"}, {"Null", "a", "b"}},
        {{"a", "b", ".", "?", "-"}, {}, {"a", "b"}},
        {{"a", "b", ".", "?", "-"}, {"?"}, {"?", "a", "b"}},
        {{"a", ".", "?"}, {}, {".", "?", "a"}},
        {{"+", "-"}, {}, {"+", "-"}},
        {{"+", "-", "(+)", "?"}, {}, {"(+)", "+", "-"}},
    };
    for (const auto& [texts, named, values] : cases)
        EXPECT_EQ(Labels(texts, named).values(), values);

    EXPECT_EQ(Labels({"x", "NA", "x", ""}).choose({"NA"}), "-+.") << "also when only the choice names it";
}

TEST(MissingWords, AreReplacedAndAddedTo)
{
    vexroc_words* words = nullptr;
    ASSERT_EQ(vexroc_words_new(&words), VEXROC_OK);
    const auto isMissing = [&](const std::string& text) {
        return vexroc_words_missing_in_test(words, text.data(), text.size()) == 1;
    };
    for (const char* const text : {"", "na", "N/A", "null", "NaN", "-nan", "#n/a", ".", "?", "-"})
        EXPECT_TRUE(isMissing(text)) << text;
    for (const char* const text : {"999", "<5", "none", "--", "-na", "0"})
        EXPECT_FALSE(isMissing(text)) << text;

    vexroc_words_clear(words);
    vexroc_words_add(words, "Unknown");
    vexroc_words_add(words, "-9");
    vexroc_words_add(words, ".");
    for (const char* const text : {"", "UNKNOWN", "-9", "-9.0", "."})
        EXPECT_TRUE(isMissing(text)) << text;
    for (const char* const text : {"NA", "nan", "?", "9"})
        EXPECT_FALSE(isMissing(text)) << text;
    EXPECT_THAT(Labels({"NA", ".", "-9.00", "unknown"}, {}, VEXROC_VOICE_PROGRAM, words).values(), ElementsAre("NA"));
    vexroc_words_free(words);
}

TEST(States, AreWhatTheChoiceSays)
{
    EXPECT_EQ(Labels({"ill", "well", "NA"}).choose({"ill"}), "+-.");
    EXPECT_EQ(Labels({"1", "1.0", "0"}).choose({"1e0"}), "++-");
    EXPECT_EQ(Labels({"ill", "well", "dead", "Ill"}).choose({"ill", "Ill"}, {"well"}), "+-o+");
    EXPECT_EQ(Labels({"ill", "well", "dead", "Ill"}).choose({"ill"}, {}, true), "+---");
    EXPECT_EQ(Labels({"others", "ill", "well"}).choose({"ill"}, {"others"}), "-+o");
    EXPECT_EQ(Labels({"1", "2", "3", "3.00", "10", "NA"}).choose({}, {}, false, ">=", "3"), "--+++.");
    EXPECT_EQ(Labels({"1,5", "2,5"}, {}, VEXROC_VOICE_R, nullptr, ',').choose({}, {}, false, "<", "2.5"), "+-");
}

TEST(States, ThatCannotBeAreErrorsThatSayWhatToDo)
{
    const auto error = [](const Texts& texts, std::vector<const char*> positive, std::vector<const char*> negative = {},
                          bool others = false, const char* sign = nullptr, const char* bound = nullptr) {
        return Labels(texts).choose(std::move(positive), std::move(negative), others, sign, bound);
    };
    EXPECT_EQ(error({"a", "b", "b"}, {"A"}), "column 'state' never holds 'A'; it holds 'b' (2), 'a' (1)");
    EXPECT_THAT(error({"1", "2"}, {"1", "1.0"}), HasSubstr("'1' and '1.0' are one value of column 'state'; name it"));
    EXPECT_THAT(error({"1", "2"}, {"1"}, {"1e0"}), HasSubstr("cannot be positive and negative"));
    EXPECT_THAT(error({"NA", ""}, {"ill"}), HasSubstr("holds missing cells only"));
    EXPECT_THAT(error({"1", "high"}, {}, {}, false, ">", "0"),
                HasSubstr("is cut as numbers, and also holds 'high' (1)"));
    EXPECT_THAT(error({"1", "2"}, {}, {}, false, ">", "x"), HasSubstr("\"x\" is none"));
    EXPECT_THAT(error({"1", "2"}, {}, {"1"}, false, ">", "1"), HasSubstr("no positive or negative values go with it"));
    EXPECT_THAT(error({"1", "2"}, {"1"}, {"2"}, true), HasSubstr("say one of the two"));
}

TEST(States, NotSaidListEveryValueAndTwoWaysOn)
{
    const struct {
        vexroc_voice voice;
        std::vector<const char*> positive;
        Texts ways;
    } cases[] = {
        {VEXROC_VOICE_PROGRAM, {"ill"}, {"--state state=ill --negative 2", "--state state=ill --negative others"}},
        {VEXROC_VOICE_PROGRAM,
         {"ill ", "2"},
         {R"(--state 'state="ill ",2' --negative '"we,""ll"')", R"(--state 'state="ill ",2' --negative others)"}},
        {VEXROC_VOICE_PYTHON,
         {"ill", "2"},
         {R"(pos_label=["ill", 2], neg_label="we,\"ll")", R"(pos_label=["ill", 2], neg_label=vexroc.OTHERS)"}},
        {VEXROC_VOICE_R, {"2"}, {R"(positive = 2, negative = "ill")", R"(positive = 2, negative = others())"}},
        {VEXROC_VOICE_R, {}, {R"(positive = "ill", negative = 2)", R"(positive = "ill", negative = others())"}},
    };
    for (const auto& [voice, positive, ways] : cases) {
        Labels labels({"ill", "we,\"ll", "ill ", "2", "", "ill"}, {}, voice);
        const std::string error = labels.choose(positive);
        const Texts found{vexroc_labels_way_on(labels.get(), 0), vexroc_labels_way_on(labels.get(), 1)};
        EXPECT_EQ(found, ways);
        EXPECT_THAT(error, AllOf(HasSubstr("(2), "), HasSubstr(ways[0]), HasSubstr(ways[1])));
    }
}

TEST(LabelRemarks, NameWhatLooksAlike)
{
    Labels labels(
        {"ill", "Ill", "ill\xC2\xA0", "ЩЁ", "щё", "Öl", "öL", "well", "WELL", "7", "007", "NA", "n/a", "NA", ""});
    EXPECT_THAT(labels.remarks(),
                AllOf(HasSubstr("'NA': 2, 'n/a': 1"), HasSubstr("'WELL': 1, 'well': 1"), HasSubstr("'7': 1, '007': 1"),
                      HasSubstr("'Öl': 1, 'öL': 1"), HasSubstr("'ЩЁ': 1, 'щё': 1"), HasSubstr("spellings: ")));
    const std::string states = labels.choose({"ill", "Ill", "ill\xC2\xA0"}, {}, true);
    EXPECT_EQ(states, "+++--------...") << vexroc_last_error();
    EXPECT_THAT(labels.remarks(), Not(HasSubstr("spellings"))) << "what looks alike has one state";
    EXPECT_EQ(labels.choose({"ill"}, {}, true).front(), '+');
    EXPECT_THAT(labels.remarks(), HasSubstr("'Ill': 1, 'ill': 1"));
    EXPECT_EQ(Labels({"ill", "well", ""}).remarks(), "");
}

} // namespace
