#include "host/VexMV.h"
#include "host/VexVarList.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCOutputs.h"

#include <gmock/gmock.h>

#include <iomanip>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace ROCConst_920;
using namespace results_test;
using testing::HasSubstr;
using testing::StartsWith;
using VexCommon_920::VexMV;

const std::string separatorLine = "/////////////////////\n";

struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

struct ResultDisplay : testing::Test {
    template <class Record>
    std::string textOf(const Record& record) const
    {
        std::ostringstream out;
        record.Display(out, varList);
        return out.str();
    }

    VexXML_920::VexVarList varList;
    const int score = varList.AddContinuous("score");
    const int age = varList.AddContinuous("age");
    const int sex = varList.AddTwoValued("sex", {{0, "male"}, {1, "female"}});
    const int answer = varList.AddTwoValued("answer");
    const int grade = varList.AddCategorical("grade", {{-1, "low"}, {2, "high"}});
    // Of the seven cases, two of the points on the way from three true positives to none are interpolated.
    ROCSpace space = spaceOf({{true, 5, 2}, {true, 5}, {true, 5}, {false, 5}, {false, 2}, {true, 1}, {false, 0, 4}});
    FixedStats stats{
        space, {.area = 0.75, .giniIndex = 0.5, .stdError = 0.125, .asymptoticSig = 1.0 / 3, .interval = {-0.25, 1.5}}};
    ROCOutBase first{score, stats, false};
    ROCOutBase second{age, sex, Equal, 1.0, stats, true};
};

TEST_F(ResultDisplay, OfARecordShowsEveryPart)
{
    EXPECT_EQ(textOf(first),
              "Test Var:score\n"
              "Negative count:3 Positive count:4\n"
              "Negative frequency count:6 Positive frequency count:5\n"
              "Area:0.75 Gini Index:0.5 Std Error:0.125 Asymptotic Sig.:0.333333 CILower:-0.25 CIUpper: 1.5\n"
              "------------ROC Curve-----------:\n"
              "CutPoints:[-1,0.5,1.5,3.5,6]\n"
              "Sensitivity:[1,1,0.75,0.75,0]\n"
              "Specificity:[0,0.333333,0.333333,0.666667,1]\n"
              "Max K-S: 0.416667 Cutoff of Max K-S: 3.5\n"
              "Dose Ties exist? yes\n"
              "Distribution changes to Nonparmetric? no\n"
              "Positive or Negative count is zero (0)? no\n"
              "------------PR Curve-----------:\n"
              "Precision:[0.571429,0.666667,0.6,0.75,0.75,0.75,0.75]\n"
              "Recall:[1,1,0.75,0.75,0.5,0.25,0]\n"
              "------------PR Coordinates-----------:\n"
              "Precision:[0.571429,0.666667,0.6,0.75,0.75]\n"
              "Recall:[1,1,0.75,0.75,0]\n"
              "\n");
}

TEST_F(ResultDisplay, ShowsMissingValues)
{
    ROCSpace positives = spaceOf({{true, 1}, {true, 2}});
    FixedStats without(positives);
    const std::string text = textOf(ROCOutBase(score, without, true));
    for (const char* line : {"Negative count:0 Positive count:2\n",
                             "changes to Nonparmetric? yes\nPositive or Negative count is zero (0)? yes\n",
                             "Area:nan Gini Index:nan Std Error:nan Asymptotic Sig.:nan CILower:nan CIUpper: nan\n"})
        EXPECT_THAT(text, HasSubstr(line));
}

TEST_F(ResultDisplay, ShowsAGroupValueByItsLabelWhereItHasOne)
{
    const struct {
        int groupVar;
        Operation op;
        double value;
        std::string line;
    } cases[] = {
        {age, Less, 40.5, "Group:age < 40.5\n"},
        {age, static_cast<Operation>(3), 40.5, "Group:age = 40.5\n"},
        {sex, Equal, 0.9, "Group:sex = male\n"}, // toward zero
        {grade, Equal, -1.9, "Group:grade = low\n"},
        {grade, GreaterOrEqual, 2, "Group:grade >= high\n"},
        {grade, Equal, VexMV::Missing(), "Group:grade = nan\n"},
        {grade, Equal, -3e9, "Group:grade = -3e+09\n"},
        {answer, Equal, 1, "Group:answer = 1\n"},
    };
    for (const auto& c : cases)
        EXPECT_THAT(textOf(ROCOutBase(score, c.groupVar, c.op, c.value, stats, false)),
                    StartsWith("Test Var:score\n" + c.line + "Negative count:"));
}

TEST_F(ResultDisplay, FormatsListsInTheDefaultWayAndOtherNumbersInTheStreams)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
    std::ostringstream out; // takes the global locale
    out << std::setprecision(3) << std::showpos;
    first.Display(out, varList);
    std::locale::global(before);

    for (const char* line :
         {"Negative count:+3 ", "Asymptotic Sig.:+0,333 ", "CutPoints:[-1,+0,5,+1,5,+3,5,+6]\n", "Max K-S: +0,417 ",
          "Specificity:[0,0.333333,0.333333,0.666667,1]\n", "Precision:[0.571429,0.666667,0.6,0.75,0.75]\n"})
        EXPECT_THAT(out.str(), HasSubstr(line));
}

TEST_F(ResultDisplay, OfAResultSetShowsItsRecordsOrItsComparisonsWithTheirRecordsFirst)
{
    FixedComparison compared({.covariance = 0.0, .z = 2.5, .zSig = 0.0124, .interval = {-0.0625, 0.25}});
    ROCComparisonOutStats comparison(first, second, compared);
    EXPECT_EQ(textOf(comparison),
              "+++++Comparison Variable 1:+++++\n" + textOf(first) + "+++++Comparison Variable 2:+++++\n"
                  + textOf(second)
                  + "+++++Comparison stats:+++++\n"
                    "Z:2.5\n"
                    "Asymptotic Sig:0.0124\n"
                    "AUC Diff:0\n"
                    "Std Error Diff:0.176777\n"
                    "CI Lower:-0.0625\n"
                    "CI Upper:0.25\n");
    const auto textOfSet = [&](const std::vector<ROCComparisonOutStats*>& comparisons) {
        std::ostringstream out;
        ROCOutputs(varList, {&first, &second}, comparisons).Display(out);
        return out.str();
    };
    EXPECT_EQ(textOfSet({}), separatorLine + textOf(first) + separatorLine + textOf(second));
    EXPECT_EQ(textOfSet({&comparison}), separatorLine + "Base stats size:2\n" + textOf(comparison));
}

} // namespace
