#include "programRun.h"

#include <vexrocproc/arraycalls.h>

#include <array>

namespace vexroc {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Program, FindsThePublishedArea)
{
    EXPECT_THAT(slice(rowsOf("auc " + fawcett).at(0), 0, 5), ElementsAre("score", "10", "10", "0", "0.68"));
}

TEST(Program, CurveReadsBackAsTheVeryDoublesOfTheCall)
{
    const Rows rows = rowsOf("curve " + fawcett);
    const std::array actual{1., 1., 0., 1., 1., 1., 0., 0., 1., 0., 1., 0., 1., 0., 0., 0., 1., 0., 1., 0.};
    const std::array score{.9, .8,  .7,  .6,  .55, .54, .53, .52, .51, .505,
                           .4, .39, .38, .37, .36, .35, .34, .33, .3,  .1};
    const roccurve_res curve = roccurve(actual.data(), score.data(), 20, nullptr, "include", "larger");
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(curve.count));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_EQ(number(rows[i].at(c + 1)), curve.rows[3 * i + c]) << "row " << i;
    release_roccurve_res(curve);
}

TEST(Program, OptionsReachTheCalls)
{
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
    const Rows areas = rowsOf("auc - --state s=1 --test a,b", data);
    EXPECT_THAT(slice(areas.at(0), 0, 4), ElementsAre("a", "4", "3", "2"));
    EXPECT_THAT(slice(areas.at(1), 0, 4), ElementsAre("b", "3", "4", "2"));

    const Cells pair = rowsOf("compare - --state s=1 --test a,b", data).at(0);
    EXPECT_THAT(slice(pair, 0, 5), ElementsAre("a", "b", "3", "3", "3"));

    // A missing group is left out and counted; a row of a third group is not part of the question.
    const std::string grouped = "compare - --state s=1 --test a --group g=x,y";
    const Cells groups = rowsOf(grouped, data).at(0);
    EXPECT_THAT(slice(groups, 0, 8), ElementsAre("a", "x", "y", "2", "1", "1", "1", "3"));
    EXPECT_THAT(run(grouped, data).err, HasSubstr("rows in neither group, not part of the analysis: 1"));
    EXPECT_THAT(run("curve - --state s=1 --test a", data).err,
                HasSubstr("a: 4 positive and 3 negative cases, 2 rows left out"));
}

TEST(Program, ComparesAllPairsOnTheSameCasesAndEachTestBetweenGroups)
{
    const Rows pairs = rowsOf("compare " + cancer + "--test radius_mean,texture_mean --test area_mean");
    ASSERT_EQ(pairs.size(), 3u);
    EXPECT_EQ(pairs[2].at(0) + pairs[2].at(1), "texture_meanarea_mean");
    const std::string groups = "s,a,b,g\n1,1,2,1\n0,2,1,1\n1,2,2,2\n0,1,1,2\n";
    EXPECT_EQ(rowsOf("compare - --state s=1 --test a,b --group g=1.0,02", groups).size(), 2u);
}

TEST(Program, MatchesStatesAsTextOrAsNumbers)
{
    for (const char* const state : {"1", "1.0", "01", "1e0"}) {
        const Cells row = rowsOf(std::string("auc - --test t --state s=") + state, "s,t\n1,2\n1.0,3\n0,1\n2,1\n").at(0);
        EXPECT_EQ(row.at(1) + row.at(2), "22") << state; // positive and negative
    }
    EXPECT_THAT(run("auc - --state s=Yes --test t", "s,t\nyes,1\nno,2\nNA,3\n").err,
                HasSubstr("standard input: column 's' never holds 'Yes'; it holds 'yes', 'no'"));
}

TEST(Program, ExplainsWhatCouldNotBeComputed)
{
    expectEndings("auc - --state s=1 --test ", "s,t,positive,negative,none\n1,2,2,,\n0,1,,1,\n0,3,,3,\n",
                  {
                      {"positive", exitDone, "positive: no area: every case is positive"},
                      {"none", exitDone, "none: no area: no case is left"},
                      {"t --bi-negative", exitDone, "needs as many positive as negative cases (1 and 2"},
                  });
    expectEndings(
        "", "s,t,u\n1,NA,2\n0,3,1\n0,4,3\n0,5,NA\n",
        {
            {"curve - --state s=1 --test t", exitDone, "no curve: every case is negative"},
            {"compare - --state s=1 --test u,u", exitDone, "no standard error: at least 2 positive and 2 negative"},
        });
    expectEndings("", "s,t\n1,2\n0,3\n",
                  {
                      {"pr - --state s=1 --test t", exitDone, "at least 3 cases are needed"},
                      {"analyze - --state s=1 --test t", exitDone, "t: no curve: at least 3 cases are needed"},
                      {"auc - --state s=1 --test t", exitDone,
                       "t: the standard error is 0; significance and interval say nothing"},
                  });
    expectEndings("auc - --state s=1 --test t", "s,t\n1,1\n1,2\n1,3\n1,7\n0,4\n0,5\n0,6\n0,8\n0,9\n",
                  {{"", exitDone, "t: the area is below 0.5, smaller values are more positive; give --smaller"}});
}

TEST(Program, EndsWithTheExitCodeAndTheMessageOfTheFault)
{
    const std::string radius = cancer + "--test radius_mean ";
    const std::string scores = dataFolder + "fawcett_2006.csv --test score ";
    expectEndings(
        "", "",
        {
            {"", exitUsage, "Examples:"},
            {"aux", exitUsage, "no command 'aux'; did you mean 'auc'?"},
            {"auc", exitUsage, "--state is required; see vexroc auc --help"},
            {"auc " + radius + "--smaler", exitUsage, "no option '--smaler' in auc; did you mean '--smaller'?"},
            {"auc " + radius + "more", exitUsage, "unexpected argument 'more'"},
            {"auc " + scores + "--state class", exitUsage, "expected COLUMN=VALUE"},
            {"auc " + scores + "--state class=NA", exitUsage, "missing value"},
            {"auc " + cancer + "--test radius_mean,", exitUsage, "an item of the list is empty"},
            {"auc " + radius + "--level 1", exitUsage, "--level '1': expected a number between 0 and 1"},
            {"auc " + radius + "--format cvs", exitUsage, "no word 'cvs'; did you mean 'csv'?"},
            {"auc " + radius + "--delimiter x", exitUsage, "expected comma, tab or semicolon"},
            {"curve " + radius + "--level 0.9", exitUsage, "no option '--level'"},
            {"compare " + radius, exitUsage, "name two or more tests"},
            {"compare " + radius + "--group diagnosis=benign", exitUsage, "expected COLUMN=VALUE,VALUE"},
            {"compare " + radius + "--group area_mean=1001,1001.0", exitUsage, "are the same"},
            {"compare " + radius + "--test area_mean --bi-negative", exitUsage, "--bi-negative goes with"},
            {"auc nothing.csv --state a=1 --test b", exitInput, "cannot read nothing.csv: No such file or directory"},
            {"auc " + dataFolder + " --state a=1 --test b", exitInput, "Is a directory"},
            {"auc " + cancer + "--test radius_men", exitInput, "did you mean 'radius_mean'?"},
            {"auc " + cancer + "--test diagnosis", exitInput, "line 2, column 'diagnosis': 'malignant' is neither"},
            {"auc " + radius + "--delimiter tab", exitInput, "no column 'diagnosis' in the header"},
        });
}

TEST(Program, HelpNamesEveryCommandAndOption)
{
    EXPECT_THAT(run("--version").out, testing::StartsWith("vexroc "));
    EXPECT_EQ(run("help").out, run("--help").out);
    for (const std::string command : {"analyze", "auc", "compare", "curve", "pr"}) {
        EXPECT_THAT(run("--help").out, HasSubstr(command));
        EXPECT_THAT(run("help " + command).out, HasSubstr("--state COLUMN=VALUE"));
        EXPECT_EQ(run("help " + command).out, run(command + " --help").out);
    }
}

} // namespace vexroc
