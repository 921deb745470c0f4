#include "cli/Program.h"
#include "dataFolder.h"
#include "programRun.h"

#include <vexrocproc/arraycalls.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <string>
#include <vector>

namespace vexroc {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string cancer = dataFolder + "breast_cancer.csv --state diagnosis=malignant ";
const std::string fawcett = dataFolder + "fawcett_2006.csv --state class=1 --test score ";

// Columns of the CSV of auc.
enum { positive = 1, negative, leftOut, area, standardError, significance, lower, upper };

} // namespace

TEST(Program, FindsPublishedAreas)
{
    EXPECT_DOUBLE_EQ(number(rowsOf("auc " + fawcett).at(0).at(area)), 0.68);

    // Hanley and McNeil 1982: ratings 1 to 5 of normal and abnormal images.
    constexpr std::array normal{33, 6, 6, 11, 2};
    constexpr std::array abnormal{3, 2, 2, 11, 33};
    std::string images = "state\trating\n";
    for (std::size_t i = 0; i < normal.size(); ++i) {
        for (int n = 0; n < normal[i]; ++n)
            images += "normal\t" + std::to_string(i + 1) + '\n';
        for (int n = 0; n < abnormal[i]; ++n)
            images += "abnormal\t" + std::to_string(i + 1) + '\n';
    }
    const Cells row = rowsOf("auc - --state state=abnormal --test rating", images).at(0);
    EXPECT_THAT(Cells(row.begin(), row.begin() + 4), ElementsAre("rating", "51", "58", "0"));
    EXPECT_NEAR(number(row.at(area)), 0.893, 0.0005);
    EXPECT_NEAR(number(row.at(standardError)), 0.032, 0.0005);
}

TEST(Program, CurveReadsBackAsTheVeryDoublesOfTheCall)
{
    const std::vector<Cells> rows = rowsOf("curve " + fawcett);
    const std::array actual{1., 1., 0., 1., 1., 1., 0., 0., 1., 0., 1., 0., 1., 0., 0., 0., 1., 0., 1., 0.};
    const std::array score{.9, .8, .7, .6, .55, .54, .53, .52, .51, .505,
                           .4, .39, .38, .37, .36, .35, .34, .33, .3, .1};
    const roccurve_res curve = roccurve(actual.data(), score.data(), 20, nullptr, "include", "larger");
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(curve.count));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_EQ(number(rows[i].at(c + 1)), curve.rows[3 * i + c]) << "row " << i;
    release_roccurve_res(curve);
}

TEST(Program, OptionsReachTheCalls)
{
    const double larger = number(rowsOf("auc " + fawcett).at(0).at(area));
    EXPECT_DOUBLE_EQ(number(rowsOf("auc " + fawcett + "--smaller").at(0).at(area)), 1.0 - larger);
    const auto intervalWidth = [](const std::string& options) {
        const Cells row = rowsOf("auc " + fawcett + options).at(0);
        return number(row.at(upper)) - number(row.at(lower));
    };
    EXPECT_LT(intervalWidth("--level 0.5"), intervalWidth(""));
    EXPECT_NE(intervalWidth("--bi-negative"), intervalWidth(""));

    const std::string question = " - --state s=1 --test t ";
    const std::string neighbours = "s,t\n1,1\n0,1\n1,1.0000000000000002\n"; // a cut-off rounds onto its value
    for (const std::string command : {"curve", "pr"})
        for (const char* const option : {"--smaller", "--exclude"})
            EXPECT_NE(rowsOf(command + question, neighbours), rowsOf(command + question + option, neighbours))
                << command << option;
    const std::string tied = "s,t\n1,2\n1,1\n1,1\n1,1\n0,1\n0,1\n0,1\n0,1\n0,1\n";
    EXPECT_NE(rowsOf("pr" + question, tied), rowsOf("pr" + question + "--keilwagen", tied));
}

TEST(Program, LeavesOutRowsWithAMissingStateOrTestAndCountsThem)
{
    const std::string data = "s,a,b,g\n1,1,1,x\n1,2,NA,x\n0,3,1,x\n0,.,2,y\n"
                             ",5,5,y\n0,1,1,\n1,4,4,y\n1,4,3,z\n0,2,2,y\n";
    const std::vector<Cells> areas = rowsOf("auc - --state s=1 --test a,b", data);
    EXPECT_THAT(Cells(areas.at(0).begin(), areas.at(0).begin() + 4), ElementsAre("a", "4", "3", "2"));
    EXPECT_THAT(Cells(areas.at(1).begin(), areas.at(1).begin() + 4), ElementsAre("b", "3", "4", "2"));

    const Cells pair = rowsOf("compare - --state s=1 --test a,b", data).at(0);
    EXPECT_THAT(Cells(pair.begin(), pair.begin() + 5), ElementsAre("a", "b", "3", "3", "3"));

    // A missing group is left out and counted; a row of a third group is not part of the question.
    const std::string grouped = "compare - --state s=1 --test a --group g=x,y";
    const Cells groups = rowsOf(grouped, data).at(0);
    EXPECT_THAT(Cells(groups.begin(), groups.begin() + 8), ElementsAre("a", "x", "y", "2", "1", "1", "1", "3"));
    EXPECT_THAT(run(grouped, data).err, HasSubstr("rows in neither group, not part of the analysis: 1"));
    EXPECT_THAT(run("curve - --state s=1 --test a", data).err,
                HasSubstr("a: 4 positive and 3 negative cases, 2 rows left out"));
}

TEST(Program, ComparesAllPairsOnTheSameCasesAndEachTestBetweenGroups)
{
    const std::vector<Cells> pairs = rowsOf("compare " + cancer + "--test radius_mean,texture_mean --test area_mean");
    ASSERT_EQ(pairs.size(), 3u);
    EXPECT_EQ(pairs[2].at(0) + pairs[2].at(1), "texture_meanarea_mean");
    EXPECT_DOUBLE_EQ(number(pairs[0].at(9)), number(pairs[0].at(5)) - number(pairs[0].at(7)));
    const std::string groups = "s,a,b,g\n1,1,2,1\n0,2,1,1\n1,2,2,2\n0,1,1,2\n";
    EXPECT_EQ(rowsOf("compare - --state s=1 --test a,b --group g=1.0,02", groups).size(), 2u);
}

TEST(Program, MatchesStatesAsTextOrAsNumbers)
{
    for (const char* const state : {"1", "1.0", "01", "1e0"}) {
        const Cells row = rowsOf(std::string("auc - --test t --state s=") + state, "s,t\n1,2\n1.0,3\n0,1\n2,1\n").at(0);
        EXPECT_EQ(row.at(positive) + row.at(negative), "22") << state;
    }
    EXPECT_THAT(run("auc - --state s=Yes --test t", "s,t\nyes,1\nno,2\nNA,3\n").err,
                HasSubstr("standard input: column 's' never holds 'Yes'; it holds 'yes', 'no'"));
}

TEST(Program, ExplainsWhatCouldNotBeComputed)
{
    const std::string onePositive = "s,t\n1,2\n0,1\n0,3\n";
    const struct {
        std::string arguments, data, note;
    } cases[] = {
        {"auc - --state s=1 --test t", "s,t\n1,2\n1,3\n1,4\n", "t: no area: every case is positive"},
        {"curve - --state s=1 --test t", "s,t\n1,NA\n0,3\n0,4\n0,5\n", "no curve: every case is negative"},
        {"pr - --state s=1 --test t", "s,t\n1,2\n0,3\n", "no curve: at least 3 cases are needed"},
        {"auc - --state s=1 --test t", "s,t\n1,NA\n0,NA\n", "t: no area: no case is left"},
        {"auc - --bi-negative --state s=1 --test t", onePositive, "needs as many positive as negative cases (1 and 2"},
        {"compare - --state s=1 --test t,t", onePositive, "no standard error: at least 2 positive and 2 negative"},
    };
    for (const auto& [arguments, data, note] : cases) {
        SCOPED_TRACE(arguments + "\n" + data);
        const Outcome outcome = run(arguments, data);
        EXPECT_EQ(outcome.exitCode, exitDone);
        EXPECT_THAT(outcome.err, HasSubstr(note));
        EXPECT_THAT(outcome.out, Not(HasSubstr("nan")));
    }
}

TEST(Program, EndsWithTheExitCodeAndTheMessageOfTheFault)
{
    const std::string radius = cancer + "--test radius_mean ";
    const struct {
        std::string arguments;
        int exitCode;
        std::string message;
    } faults[] = {
        {"", exitUsage, "Examples:"},
        {"aux", exitUsage, "no command 'aux'; did you mean 'auc'?"},
        {"auc", exitUsage, "FILE is required; see vexroc auc --help"},
        {"auc " + radius + "--smaler", exitUsage, "no option '--smaler'; did you mean '--smaller'?"},
        {"auc " + cancer + "--tset radius_mean", exitUsage, "no option '--tset'; did you mean '--test'?"},
        {"auc " + radius + "more", exitUsage, "unexpected argument 'more'"},
        {"auc " + dataFolder + "fawcett_2006.csv --state class --test score", exitUsage, "expected COLUMN=VALUE"},
        {"auc " + dataFolder + "fawcett_2006.csv --state class=NA --test score", exitUsage, "missing value"},
        {"auc " + cancer + "--test radius_mean,", exitUsage, "an item of the list is empty"},
        {"auc " + radius + "--level 1", exitUsage, "--level '1': expected a number between 0 and 1"},
        {"auc " + radius + "--level nan", exitUsage, "--level 'nan'"},
        {"auc " + radius + "--format xml", exitUsage, "xml"},
        {"auc " + radius + "--delimiter x", exitUsage, "expected comma, tab or semicolon"},
        {"curve " + radius + "--level 0.9", exitUsage, "no option '--level'"},
        {"compare " + radius, exitUsage, "name two or more tests"},
        {"compare " + radius + "--group diagnosis=benign", exitUsage, "expected COLUMN=VALUE,VALUE"},
        {"compare " + radius + "--group area_mean=1001,1001.0", exitUsage, "are the same"},
        {"compare " + cancer + "--test radius_mean,area_mean --bi-negative", exitUsage, "--bi-negative goes with"},
        {"auc nothing.csv --state a=1 --test b", exitInput, "cannot read nothing.csv: No such file or directory"},
        {"auc " + dataFolder + " --state a=1 --test b", exitInput, "Is a directory"},
        {"auc " + cancer + "--test radius_men", exitInput, "did you mean 'radius_mean'?"},
        {"auc " + cancer + "--test diagnosis", exitInput, "line 2, column 'diagnosis': 'malignant' is neither"},
        {"auc " + radius + "--delimiter tab", exitInput, "no column 'diagnosis' in the header"},
    };
    for (const auto& [arguments, exitCode, message] : faults) {
        SCOPED_TRACE(arguments);
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_THAT(outcome.err, HasSubstr(message));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST(Program, TellsWhenResultsCannotBeWritten)
{
    const std::vector<std::string_view> args{"--version"};
    std::istringstream in;
    std::ostringstream err;
    std::ostream nowhere(nullptr);
    EXPECT_EQ(runProgram(args, in, nowhere, err), exitOutput);
    EXPECT_THAT(err.str(), HasSubstr("cannot write the results"));
}

TEST(Program, HelpNamesEveryCommandAndOption)
{
    EXPECT_THAT(run("--version").out, testing::StartsWith("vexroc "));
    for (const char* const command : {"analyze", "auc", "compare", "curve", "pr"}) {
        EXPECT_THAT(run("--help").out, HasSubstr(command));
        const Outcome help = run(std::string(command) + " --help");
        EXPECT_EQ(help.exitCode, exitDone);
        EXPECT_THAT(help.out, HasSubstr("--state COLUMN=VALUE"));
    }
}

TEST(Program, StrangeNamesHarmNoOutput)
{
    const std::string data = "\"a\"\"b\n\x1b[31m,c\",s\n1,\"x\ty\"\n2,n\n";
    const std::vector<std::string_view> text{"auc", "-", "--state", "s=x\ty", "--test", "\"a\"\"b\n\x1b[31m,c\""};
    std::vector<std::string_view> csv = text;
    csv.insert(csv.end(), {"--format", "csv"});
    std::ostringstream out;
    std::ostringstream err;
    for (const auto& args : {text, csv}) {
        std::istringstream in(data);
        EXPECT_EQ(runProgram(args, in, out, err), exitDone) << err.str();
    }
    EXPECT_THAT(out.str(), HasSubstr("s = x\\ty"));
    EXPECT_THAT(out.str(), HasSubstr("\na\"b\\n\\x1b[31m,c  "));
    EXPECT_THAT(out.str(), HasSubstr("\n\"a\"\"b\n\x1b[31m,c\",1,1,0,0,"));
    EXPECT_THAT(err.str(), Not(HasSubstr("\x1b")));
}

} // namespace vexroc
