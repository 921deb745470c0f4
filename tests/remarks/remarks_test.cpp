#include "remarks/Catalogue.h"
#include "vexrocproc/analysis.h"
#include "vexrocproc/remarks.h"

#include <gmock/gmock.h>

#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

struct Remarks {
    vexroc_remarks* list = nullptr;
    explicit Remarks(vexroc_voice voice = VEXROC_VOICE_PROGRAM) { EXPECT_EQ(vexroc_remarks_new(voice, &list), 0); }
    ~Remarks() { vexroc_remarks_free(list); }
    Remarks(const Remarks&) = delete;
    Remarks& operator=(const Remarks&) = delete;

    void add(const char* code, const char* subject = "", const char* detail = nullptr)
    {
        EXPECT_EQ(vexroc_remarks_add(list, code, subject, detail), VEXROC_OK) << vexroc_last_error();
    }
    void area(const char* subject, const vexroc_area_facts& facts)
    {
        EXPECT_EQ(vexroc_remarks_area(list, subject, &facts), VEXROC_OK) << vexroc_last_error();
    }
    [[nodiscard]] vexroc_remark get(int index)
    {
        vexroc_remark remark{};
        remark.struct_size = sizeof remark;
        EXPECT_EQ(vexroc_remarks_get(list, index, &remark), VEXROC_OK) << vexroc_last_error();
        return remark;
    }
    [[nodiscard]] std::vector<std::string> codes()
    {
        std::vector<std::string> codes;
        for (int i = 0; i < vexroc_remarks_count(list); ++i)
            codes.emplace_back(get(i).code);
        return codes;
    }
};

/// Nothing is to be said of these.
vexroc_area_facts goodFacts()
{
    vexroc_area_facts facts{};
    facts.struct_size = sizeof facts;
    facts.positive = facts.negative = 10;
    facts.area = 0.8;
    facts.std_error = 0.1;
    facts.lower = 0.6;
    facts.upper = 1.0;
    facts.distinct_values = 3;
    return facts;
}

std::vector<std::string> saidOf(auto change)
{
    vexroc_area_facts facts = goodFacts();
    change(facts);
    Remarks remarks;
    remarks.area("t", facts);
    return remarks.codes();
}

TEST(Remarks, OneLineOfAKindNamesFiveSubjectsOnceEachAndCautionsComeFirst)
{
    Remarks remarks;
    vexroc_remarks_comparisons(remarks.list, "", 2);
    vexroc_remarks_comparisons(remarks.list, "", 21);
    remarks.add("ties", "a");
    for (const char* test : {"a", "b", "a", "c", "d", "e", "f", "g"})
        remarks.add("few-cases", test, "8 positive, 9 negative");
    remarks.add("groups-ignored");
    EXPECT_THAT(remarks.codes(), ElementsAre("few-cases", "groups-ignored", "many-comparisons")); // ties give way
    const vexroc_remark few = remarks.get(0);
    EXPECT_EQ(few.caution, 1);
    EXPECT_EQ(few.count, 7);
    EXPECT_THAT(few.text, testing::EndsWith("e (8 positive, 9 negative) and more, 7 in all"));
    EXPECT_STREQ(remarks.get(2).text, "p values and intervals are not adjusted for the number of comparisons: 21");
    EXPECT_EQ(vexroc_remarks_add(remarks.list, "no-such", "", ""), VEXROC_INVALID);
    EXPECT_THAT(vexroc_last_error(), HasSubstr("no-such"));
}

TEST(Remarks, EachRuleOfAnAreaStartsWhereItSays)
{
    using Facts = vexroc_area_facts;
    EXPECT_THAT(saidOf([](Facts&) {}), IsEmpty());
    EXPECT_THAT(saidOf([](Facts& f) { f.positive = 0; }), ElementsAre("no-positive"));
    EXPECT_THAT(saidOf([](Facts& f) { f.negative = 0; }), ElementsAre("no-negative"));
    EXPECT_THAT(saidOf([](Facts& f) { f.negative = f.positive = 0; }), ElementsAre("no-case"));
    EXPECT_THAT(saidOf([](Facts& f) { f.negative = 9; }), ElementsAre("few-cases"));
    EXPECT_THAT(saidOf([](Facts& f) { f.positive = 1, f.std_error = f.lower = f.upper = missing; }),
                ElementsAre("few-cases", "no-error"));
    EXPECT_THAT(saidOf([](Facts& f) { f.upper = 1.0000001; }), ElementsAre("bound-outside"));
    EXPECT_THAT(saidOf([](Facts& f) { f.area = 0.4, f.upper = 0.4999; }), ElementsAre("below-chance"));
    EXPECT_THAT(saidOf([](Facts& f) { f.area = 1.0, f.std_error = 0.0, f.lower = f.upper = missing; }),
                ElementsAre("zero-error"));
    EXPECT_THAT(saidOf([](Facts& f) { f.area = 0.0, f.std_error = 0.0, f.lower = f.upper = missing; }),
                ElementsAre("zero-error", "below-chance"));
    EXPECT_THAT(saidOf([](Facts& f) { f.ties = 1, f.negative = 9; }), ElementsAre("few-cases", "ties"));
    EXPECT_THAT(saidOf([](Facts& f) { f.distinct_values = 2, f.ties = 1; }), ElementsAre("two-values"));
}

TEST(Remarks, WhatIsSaidOfAnAreaGoesByTheRulesOfIntervalAndP)
{
    const auto said = [](const char* interval, const char* p, auto change) {
        return saidOf([&](vexroc_area_facts& f) {
            f.interval = interval;
            f.p_method = p;
            f.p_value = 0.01;
            f.level = 0.95;
            f.null_area = 0.5;
            change(f);
        });
    };
    const auto few = [](vexroc_area_facts& f) { f.positive = 9; };
    const auto separated = [](vexroc_area_facts& f) { f.area = f.upper = 1.0, f.std_error = 0.0; };
    const auto lowP = [](vexroc_area_facts& f) { f.lower = 0.49; };
    const auto highP = [](vexroc_area_facts& f) { f.p_value = 0.0501; };
    EXPECT_THAT(said("newcombe", "mann-whitney-exact", few), IsEmpty());
    EXPECT_THAT(said("score", "wald", few), ElementsAre("few-cases"));
    EXPECT_THAT(said("logit", "mann-whitney", few), ElementsAre("few-cases"));
    EXPECT_THAT(said("score", "mann-whitney", separated), IsEmpty());
    EXPECT_THAT(said("wald-delong", "mann-whitney", separated), ElementsAre("zero-error"));
    EXPECT_THAT(said("score", "wald", separated), ElementsAre("zero-error"));
    EXPECT_THAT(said("bca", "mann-whitney", [&](auto& f) { separated(f), f.lower = 1.0, f.held = 1; }),
                ElementsAre("bootstrap-at-end"));
    EXPECT_THAT(said("bootstrap", "mann-whitney", [](auto& f) { f.held = f.percentile = 1; }),
                ElementsAre("percentile-instead", "few-replicates"));
    EXPECT_THAT(said("score", "mann-whitney", [](auto& f) { f.edge = 1; }), ElementsAre("score-instead"));
    EXPECT_THAT(said("score", "mann-whitney", lowP), ElementsAre("interval-and-p"));
    EXPECT_THAT(said("score", "mann-whitney", highP), ElementsAre("interval-and-p"));
    EXPECT_THAT(said("wald", "wald", highP), IsEmpty()); // one method
    EXPECT_THAT(said("score", "mann-whitney", [](auto& f) { f.area = 0.3, f.lower = 0.1, f.upper = 0.51; }),
                ElementsAre("below-chance", "interval-and-p"));
    EXPECT_THAT(said("score", "mann-whitney", [&](auto& f) { highP(f), f.alternative = "greater"; }),
                ElementsAre("one-sided"));
}

TEST(Remarks, ADifferenceOfZeroMayHaveTheErrorZero)
{
    Remarks remarks;
    vexroc_remarks_difference(remarks.list, "a and b", 0.0, 0.0);
    vexroc_remarks_difference(remarks.list, "a and c", missing, missing);
    EXPECT_EQ(vexroc_remarks_count(remarks.list), 0);
    vexroc_remarks_difference(remarks.list, "a and d", 0.2, 0.0);
    vexroc_remarks_difference(remarks.list, "a and e", 0.2, missing);
    EXPECT_THAT(remarks.codes(), ElementsAre("zero-error-of-difference", "no-error"));
}

TEST(Remarks, AdviceIsSpelledInTheVoiceOfItsReader)
{
    for (const auto& [voice, spelled] :
         {std::pair{VEXROC_VOICE_C, R"(set_direction(analysis, column, "smaller"))"},
          std::pair{VEXROC_VOICE_PROGRAM, "if smaller values are more positive, give --test neg:smaller"},
          std::pair{VEXROC_VOICE_PYTHON, R"(direction={"neg": "smaller"})"},
          std::pair{VEXROC_VOICE_R, R"(direction = c(neg = "smaller"))"}}) {
        Remarks remarks(voice);
        vexroc_area_facts facts = goodFacts();
        facts.area = 0.3;
        facts.upper = 0.4;
        facts.test = "neg";
        remarks.area("site = A: neg", facts);
        EXPECT_THAT(remarks.get(0).text, testing::AllOf(HasSubstr("0.5: site = A: neg; "), testing::EndsWith(spelled)));
    }
}

TEST(Remarks, NamesAreSpelledSoThatTheyComeBackFromShellPythonAndR)
{
    const struct {
        vexroc_voice voice;
        const char* test;
        const char* spelled;
    } cases[] = {
        {VEXROC_VOICE_PROGRAM, "a b", "--test 'a b:larger'"},
        {VEXROC_VOICE_PROGRAM, "size, \"mm\" 'x'", R"(--test '"size, ""mm"" '\''x'\'':larger"')"},
        {VEXROC_VOICE_PYTHON, "a\"b\\\n1", R"(direction={"a\"b\\\0121": "larger"})"},
        {VEXROC_VOICE_R, "I(-x)", R"-(direction = c("I(-x)" = "larger"))-"},
        {VEXROC_VOICE_R, "1a", R"(direction = c("1a" = "larger"))"},
        {VEXROC_VOICE_R, "if", R"(direction = c("if" = "larger"))"},
    };
    for (const auto& [voice, test, spelled] : cases) {
        Remarks remarks(voice);
        vexroc_area_facts facts = goodFacts();
        facts.area = 0.3;
        facts.upper = 0.4;
        facts.smaller_is_positive = 1;
        facts.test = test;
        remarks.area(test, facts);
        EXPECT_THAT(remarks.get(0).text, testing::EndsWith(spelled));
        facts.smaller_is_positive = 0; // the other direction has an advice of its own
        remarks.area("t", facts);
        EXPECT_THAT(remarks.get(0).text,
                    testing::AllOf(HasSubstr(std::string(spelled) + "; if smaller values"), HasSubstr("if larger")));
    }
}

/// The page lists every kind with its text, and the spellings.
TEST(Remarks, ThePageShowsTheCatalogue)
{
    namespace catalogue = ROCALG_920::remarks;
    std::ostringstream page;
    page << std::ifstream(REMARKS_PAGE).rdbuf();
    std::size_t rows = 0;
    const auto expectRow = [&](std::string row) {
        EXPECT_THAT(page.str(), HasSubstr("\n" + row + "\n"));
        ++rows;
    };
    for (const auto& [code, caution, says, advice] : catalogue::kinds())
        expectRow("| `" + std::string(code) + "` | " + (caution ? "caution" : "note") + " | " + std::string(says)
                  + " | " + catalogue::replaced(std::string(advice), "WORD", "smaller") + " |");
    for (const auto& [placeHolder, voices] : catalogue::spellings()) {
        std::string row = "| " + std::string(placeHolder) + " |";
        for (const std::string_view voice : voices)
            row += " `" + catalogue::replaced(std::string(voice), "WORD", "smaller") + "` |";
        expectRow(row);
    }
    std::size_t rowsOfPage = 0;
    std::istringstream lines(page.str());
    for (std::string line; std::getline(lines, line);)
        rowsOfPage += line.starts_with("| `") || line.starts_with("| {") ? 1 : 0;
    EXPECT_EQ(rows, rowsOfPage);
}

} // namespace
