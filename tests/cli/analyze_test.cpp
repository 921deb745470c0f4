#include "dataFolder.h"
#include "host/ColumnRecordIter.h"
#include "programRun.h"

#include <vexrocproc/RocAlgorithm.h>

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <streambuf>

namespace vexroc {

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const std::string cancer = dataFolder + "breast_cancer.csv --state diagnosis=malignant ";
const std::string fawcett = dataFolder + "fawcett_2006.csv --state class=1 --test score ";

using Rows = std::vector<Cells>;

Rows rowsOfCsv(const std::string& csv)
{
    Rows rows;
    for (const std::string& line : split(csv, '\n'))
        rows.push_back(split(line, ','));
    return rows;
}

/// The tables that analyze prints as CSV, without their headers.
struct Tables {
    Rows cases;
    Rows areas;
    Rows comparisons;
};

Tables analyze(const std::string& arguments, const std::string& standardInput = "")
{
    const Outcome outcome = run("analyze " + arguments + " --format csv", standardInput);
    EXPECT_EQ(outcome.exitCode, exitDone) << arguments << '\n' << outcome.err;
    std::array<Rows, 3> tables;
    std::size_t table = 0;
    bool header = true;
    for (const Cells& row : rowsOfCsv(outcome.out)) {
        if (row.empty())
            ++table;
        else if (!header)
            tables.at(table).push_back(row);
        header = row.empty();
    }
    return {tables[0], tables[1], tables[2]};
}

Cells slice(const Cells& row, std::size_t first, std::size_t count)
{
    EXPECT_GE(row.size(), first + count);
    const auto begin = row.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

// Columns of the table of areas without weights.
enum { variable, group, positive, negative, area, standardError, significance, lower, upper, gini, maxKs };

/// A folder of the test's own, gone afterwards.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("analyze_test_" + std::to_string(getpid())))
    {
        fs::remove_all(path_);
        fs::create_directory(path_);
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path_))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    fs::path path_;
};

std::string contentOf(const std::string& path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/// Raises a signal when something is first written to it: a terminal on which someone presses Ctrl-C.
class PressingTerminal : public std::streambuf {
protected:
    int overflow(int c) override
    {
        if (!pressed_)
            std::raise(SIGINT);
        pressed_ = true;
        return c;
    }

private:
    bool pressed_ = false;
};

volatile std::sig_atomic_t handled = 0;
void countSignal(int)
{
    handled = handled + 1;
}

} // namespace

TEST(Analyze, AreasAndComparisonsAreThoseOfTheOtherCommands)
{
    const Rows areas = analyze(cancer + "--test all").areas;
    ASSERT_EQ(areas.size(), 30u);
    for (const Cells& row : areas) {
        const Cells other = rowsOf("auc " + cancer + "--test " + row.at(variable)).at(0);
        EXPECT_EQ(slice(row, positive, 2), slice(other, 1, 2)) << row.at(variable);
        EXPECT_EQ(slice(row, area, 5), slice(other, 4, 5)) << row.at(variable);
    }
    const std::string tests = cancer + "--test radius_mean,texture_mean,area_mean ";
    const Rows pairs = analyze(tests + "--compare paired").comparisons;
    const Rows otherPairs = rowsOf("compare " + tests);
    ASSERT_EQ(pairs.size(), 3u);
    for (std::size_t pair = 0; pair < 3; ++pair) {
        EXPECT_EQ(slice(pairs[pair], 0, 2), slice(otherPairs[pair], 0, 2));
        EXPECT_EQ(slice(pairs[pair], 2, 6), slice(otherPairs[pair], 9, 6));
    }
}

TEST(Analyze, OptionsReachTheComponent)
{
    const double larger = number(analyze(fawcett).areas.at(0).at(area));
    EXPECT_DOUBLE_EQ(larger, 0.68); // published
    EXPECT_DOUBLE_EQ(number(analyze(fawcett + "--smaller").areas.at(0).at(area)), 1.0 - larger);
    for (const char* const option : {"--bi-negative", "--level 0.5"})
        EXPECT_EQ(slice(analyze(fawcett + option).areas.at(0), area, 5),
                  slice(rowsOf("auc " + fawcett + option).at(0), 4, 5));
    EXPECT_EQ(analyze(fawcett + "--no-curve").areas.at(0).at(maxKs), "NA");
    EXPECT_EQ(analyze(fawcett + "--no-curve").areas.at(0).at(area), "0.68");
}

TEST(Analyze, WeightsEnterTheFrequencyCountsOnly)
{
    // Hanley and McNeil 1982: how many images have each rating.
    const std::string counts = "rating,state,images\n1,normal,33\n2,normal,6\n3,normal,6\n4,normal,11\n5,normal,2\n"
                               "1,abnormal,3\n2,abnormal,2\n3,abnormal,2\n4,abnormal,11\n5,abnormal,33\n";
    const std::string question = "- --state state=abnormal --test rating ";
    const Tables weighted = analyze(question + "--weight images", counts);
    EXPECT_EQ(slice(weighted.areas.at(0), positive, 4), (Cells{"5", "5", "51", "58"}));
    EXPECT_THAT(weighted.cases, testing::Contains(Cells{"weighted positive", "51"}));
    EXPECT_EQ(slice(weighted.areas.at(0), area + 2, 5), slice(analyze(question, counts).areas.at(0), area, 5));
}

TEST(Analyze, SplitsCasesInEveryWay)
{
    const std::string data = "s,t,sex,age,flag\n1,2,m,20,0\n0,1,f,40,1\n1,3,f,60,1\n"
                             "0,1,m,20,0\n1,1,f,60.0,0\n0,4,m,40,1\n";
    const std::string question = "- --state s=1 --test t --compare independent";
    const struct {
        const char* split;
        Cells first, second; // group, positive, negative
    } cases[] = {
        {"sex", {"sex = f", "2", "1"}, {"sex = m", "1", "2"}},
        {"sex --select m,f", {"sex = m", "1", "2"}, {"sex = f", "2", "1"}},
        {"flag", {"flag = 0", "2", "1"}, {"flag = 1", "1", "2"}},
        {"flag --select 1,0", {"flag = 1", "1", "2"}, {"flag = 0", "2", "1"}},
        {"flag --mid-point", {"flag < 0.5", "2", "1"}, {"flag >= 0.5", "1", "2"}},
        {"age --select 60,2e1", {"age = 60", "2", "0"}, {"age = 2e1", "1", "1"}},
        {"age --cut 20.5", {"age < 20.5", "1", "1"}, {"age >= 20.5", "2", "2"}},
        {"age --mid-point", {"age < 40", "1", "1"}, {"age >= 40", "2", "2"}},
    };
    for (const auto& [split, first, second] : cases) {
        SCOPED_TRACE(split);
        const Tables tables = analyze(question + " --group " + split, data);
        ASSERT_EQ(tables.areas.size(), 2u);
        EXPECT_EQ(slice(tables.areas[0], group, 3), first);
        EXPECT_EQ(slice(tables.areas[1], group, 3), second);
        EXPECT_EQ(slice(tables.comparisons.at(0), 0, 3), (Cells{"t", first[0], second[0]}));
    }
    const Cells row = analyze(question + " --group sex", data).comparisons.at(0);
    EXPECT_EQ(slice(row, 3, 6), slice(rowsOf("compare - --state s=1 --test t --group sex=f,m", data).at(0), 12, 6));
}

TEST(Analyze, AccountsForEveryRow)
{
    const std::string data = "s,a,b,g,w\n,1,1,x,1\n1,1,1,,\n1,1,1,x,NA\n1,1,1,z,1\n1,1,1,x,0.4\n"
                             "0,1,1,y,-2\n0,1,1,y,inf\n1,1,,x,1\n1,2,2,x,2.5\n1,3,NA,y,3\n"
                             "0,1,2,x,0.5\n0,NA,3,y,1\n0,.,.,y,1\n";
    const std::string grouped = "- --state s=1 --test a,b --group g --select x,y --weight w ";
    EXPECT_THAT(analyze(grouped, data).cases,
                ElementsAre(Cells{"rows read", "13"}, Cells{"left out", "7"}, Cells{"left out: missing state", "1"},
                            Cells{"left out: missing group", "1"}, Cells{"left out: missing weight", "1"},
                            Cells{"left out: in neither group", "1"}, Cells{"left out: unusable weight", "3"},
                            Cells{"used", "6"}, Cells{"positive", "3"}, Cells{"negative", "3"},
                            Cells{"weighted positive", "7"}, Cells{"weighted negative", "3"},
                            Cells{"missing: a", "2"}, Cells{"missing: b", "3"}));
    EXPECT_THAT(run("analyze " + grouped, data).err, HasSubstr("not whole numbers, rounded with halves up: 3\n"));

    const Tables paired = analyze("- --state s=1 --test a,b --compare paired", data);
    EXPECT_THAT(paired.cases, ElementsAre(Cells{"rows read", "13"}, Cells{"left out", "5"},
                                          Cells{"left out: missing state", "1"}, Cells{"left out: missing test", "4"},
                                          Cells{"used", "8"}, Cells{"positive", "5"}, Cells{"negative", "3"},
                                          Cells{"missing: a", "2"}, Cells{"missing: b", "3"}));
    for (const Cells& row : paired.areas)
        EXPECT_EQ(slice(row, positive, 2), (Cells{"5", "3"}));
}

TEST(Analyze, SaysWarningsInWords)
{
    const std::string data = "s,t,u,g\n1,2,1,x\n0,2,2,x\n1,3,3,y\n0,1,4,y\n1,4,5,y\n";
    const struct {
        const char* arguments;
        const char* message;
    } cases[] = {
        {"--test t,u,t", "share test values in 't' (430102 WARN_TieExist)"},
        {"--test t,u --compare paired --group g", "a paired comparison uses all cases (430104 WARN_GROUP_IGNORE)"},
        {"--test u --bi-negative", "positive as negative cases, for every test and group (430103 WARN_DIST_CHANGE)"},
        {"--test u,s", "note: 's' is the state; it is not also a test"},
        {"--test u --pr", "shown by --display and written by --pr-curve FILE"},
        {"--test u --group u --cut 2", "u where u < 2: no area: every case is positive"},
        {"--test u --display", "note: 5 rows read, 0 left out\n"},
    };
    for (const auto& [arguments, message] : cases) {
        const Outcome outcome = run(std::string("analyze - --state s=1 ") + arguments, data);
        EXPECT_EQ(outcome.exitCode, exitDone) << arguments;
        EXPECT_THAT(outcome.err, HasSubstr(message)) << arguments;
    }
    EXPECT_THAT(run("analyze - --state s=1 --test t,u --compare paired", "s,t,u\n1,2,1\n0,1,2\n0,3,3\n").err,
                HasSubstr("u: no standard error: at least 2 positive"));
}

TEST(Analyze, NamesTheStatusThatEndsAnAnalysis)
{
    const std::string data = "s,t,g,n\n1,2,,5\n1,3,,5\n0,1,x,5\n0,3,y,5\n";
    const std::string noGroups = "s,t,g\n1,2,\n0,2,\n";
    const struct {
        const char* arguments;
        const std::string& data;
        const char* status;
        const char* help;
    } cases[] = {
        {"--test t --group g", data, "430004 Setting_Error_StateValue_NotExist", "2 left out (missing group: 2)"},
        {"--test s", data, "430005 Setting_Error_TestVar", "other than the state"},
        {"--test t --compare paired", data, "430006 Setting_Error_AtLeast2Test", "--test FIRST,SECOND"},
        {"--test t --compare independent", data, "430007 Setting_Error_Group_Required", "--group"},
        {"--test t --group g --cut 1", noGroups, "430010 Error_NoData", "check the rows that were left out"},
        {"--test t --compare independent --group n --mid-point", data, "430011 Error_GroupConst_IndCompare",
         "one group only"},
        {"--test t --group n --cut 9 --compare independent", data, "430012 Error_No2Group_IndCompare", "another split"},
    };
    for (const auto& [arguments, input, status, help] : cases) {
        const Outcome outcome = run(std::string("analyze - --state s=1 ") + arguments, input);
        EXPECT_EQ(outcome.exitCode, exitNoResult) << arguments;
        EXPECT_THAT(outcome.err, HasSubstr(std::string("vexroc: error: status ") + status + ": ")) << arguments;
        EXPECT_THAT(outcome.err, HasSubstr(help)) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
    }
}

TEST(Analyze, RefusesWhatDoesNotFit)
{
    const std::string data = "s,t,g,n\n1,2,x,5\n0,1,y,7\n1,3,z,8\n0,2,z,9\n";
    const struct {
        const char* arguments;
        int exitCode;
        const char* message;
    } cases[] = {
        {"--test t --cut 1", exitUsage, "name it with --group"},
        {"--test t --group n --cut 6 --mid-point", exitUsage, "give one of them"},
        {"--test t --group n --cut six", exitUsage, "--cut 'six': expected a number"},
        {"--test t --group g --select x", exitUsage, "--select 'x': expected two values"},
        {"--test t --group g --select x,NA", exitUsage, "'NA' stands for a missing value"},
        {"--test t --group n --select 5,5.0", exitUsage, "are the same"},
        {"--test t,n --compare paired --bi-negative", exitUsage, "--bi-negative does not go with --compare paired"},
        {"--test t --compare other", exitUsage, "other"},
        {"--test t --keilwagen", exitUsage, "--pr or --pr-curve"},
        {"--test t --no-curve --curve x", exitUsage, "--no-curve"},
        {"--test t --curve x --pr-curve x", exitUsage, "the same file"},
        {"--test t --display --format csv", exitUsage, "leave out --format"},
        {"--test t --group g", exitInput, "holds 'x', 'y', 'z'; it needs two values: pick them with --select"},
        {"--test t --group g --mid-point", exitInput, "line 2, column 'g': 'x' is neither a number"},
        {"--test t --group g --select x,w", exitInput, "column 'g' never holds 'w'"},
        {"--test t --weight v", exitInput, "no column 'v'"},
        {"--test t --curve /no/such/place.csv", exitOutput, "cannot write /no/such/place.csv: No such file"},
        {"--test t --curve /", exitOutput, "cannot write /: Is a directory"},
    };
    for (const auto& [arguments, exitCode, message] : cases) {
        const Outcome outcome = run(std::string("analyze - --state s=1 ") + arguments, data);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_THAT(outcome.err, HasSubstr(message)) << arguments;
    }
}

TEST(Analyze, TestAllTakesTheNumbersWithoutAnotherPart)
{
    const std::string data = "s,a,word,w,g,none,b\n1,1,x,1,1,,3\n0,NA,2,1,2,,4\n0,5,3,1,1,,inf\n";
    Cells names;
    for (const Cells& row : analyze("- --state s=1 --test all --weight w --group g --select 1,2", data).areas)
        if (row.at(group) == "g = 1")
            names.push_back(row.at(variable));
    EXPECT_THAT(names, ElementsAre("a", "b"));
    EXPECT_THAT(run("analyze - --state s=1 --test all", "s,t\n1,x\n0,y\n").err, HasSubstr("430005"));
}

TEST(Analyze, CurveFilesHoldThePointsOfTheOtherCommands)
{
    const Folder folder;
    const std::string curve = folder / "curve.csv";
    const std::string prCurve = folder / "pr.csv";
    for (const std::string options : {"", "--smaller", "--exclude"}) {
        SCOPED_TRACE(options);
        analyze(fawcett + options + " --curve " + curve);
        Rows rows = rowsOfCsv(contentOf(curve));
        EXPECT_EQ(rows.at(0), (Cells{"variable", "group", "cut_off", "sensitivity", "specificity"}));
        const Rows other = rowsOf("curve " + fawcett + options);
        ASSERT_EQ(rows.size(), other.size() + 1);
        for (std::size_t i = 0; i < other.size(); ++i) {
            EXPECT_EQ(slice(rows[i + 1], 1, 3), (Cells{"all cases", other[i][1], other[i][3]}));
            EXPECT_EQ(1.0 - number(rows[i + 1][4]), number(other[i][2]));
        }
    }
    const std::string tied = "s,t\n1,2\n1,1\n1,1\n1,1\n0,1\n0,1\n0,1\n0,1\n0,1\n0,0\n0,0\n0,0\n1,-1\n0,7\n";
    for (const std::string options : {"", " --keilwagen", " --smaller", " --smaller --keilwagen"}) {
        SCOPED_TRACE(options);
        const std::string question = "- --state s=1 --test t" + options;
        analyze(question + " --pr-curve " + prCurve, tied);
        const Rows rows = rowsOfCsv(contentOf(prCurve));
        EXPECT_EQ(rows.at(0), (Cells{"variable", "group", "recall", "precision", "interpolated"}));
        const Rows other = rowsOf("pr " + question, tied);
        ASSERT_EQ(rows.size(), other.size() + 1);
        for (std::size_t i = 0; i < other.size(); ++i)
            EXPECT_EQ(slice(rows[i + 1], 2, 3), slice(other[i], 2, 3)) << i;
    }
}

TEST(Analyze, WritesFilesCompletelyOrNotAtAll)
{
    const Folder folder;
    const std::string curve = folder / "curve.csv";
    std::ofstream(curve) << "old";
    fs::permissions(curve, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink("curve.csv", folder / "link.csv");

    // The second file fails when it is written, so the first must not appear either.
    const std::string tooLong = folder / std::string(250, 'x'); // with what is added while it is written
    EXPECT_EQ(run("analyze " + fawcett + "--curve " + curve + " --pr-curve " + tooLong).exitCode, exitOutput);
    EXPECT_EQ(contentOf(curve), "old");

    analyze(fawcett + "--curve " + (folder / "link.csv"));
    EXPECT_THAT(contentOf(curve), StartsWith("variable,group,"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.csv"));
    EXPECT_EQ(fs::status(curve).permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(folder.names().size(), 2u);

    analyze(fawcett + "--curve /dev/null");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    if (fs::exists("/dev/full")) {
        EXPECT_THAT(run("analyze " + fawcett + "--curve /dev/full").err, HasSubstr("/dev/full: No space left"));
    }
}

TEST(Analyze, AnInterruptCancelsAndLeavesNothingBehind)
{
    const Folder folder;
    const std::string curve = folder / "curve.csv";
    const std::vector<std::string> words = split("analyze " + cancer + "--test all --curve " + curve, ' ');
    std::vector<std::string_view> args(words.begin(), words.end());
    std::erase(args, "");
    const auto interruptedRun = [&](std::string& printed) {
        PressingTerminal terminal;
        std::ostream err(&terminal);
        std::istringstream in;
        std::ostringstream out;
        const int exitCode = runProgram(args, in, out, err, {.shown = true, .after = std::chrono::milliseconds(0)});
        printed = out.str();
        return exitCode;
    };
    std::string printed;
    const auto before = std::signal(SIGINT, countSignal);
    EXPECT_EQ(interruptedRun(printed), exitCancelled);
    EXPECT_EQ(printed, "");
    EXPECT_THAT(folder.names(), IsEmpty());
    EXPECT_EQ(handled, 0);
    std::raise(SIGINT); // the handler from before is back
    EXPECT_EQ(handled, 1);

    std::signal(SIGINT, SIG_IGN); // as for a background job
    EXPECT_EQ(interruptedRun(printed), exitDone);
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
}

TEST(Analyze, ShowsProgressOnATerminalAndWipesIt)
{
    const std::vector<std::string> words = split("analyze - --state s=1 --test t", ' ');
    const std::vector<std::string_view> args(words.begin(), words.end());
    std::ostringstream out;
    const auto progressOf = [&](ProgressDisplay display) {
        std::istringstream in("s,t\n1,2\n0,1\n1,3\n");
        std::ostringstream err;
        EXPECT_EQ(runProgram(args, in, out, err, display), exitDone);
        return err.str();
    };
    const std::string shown = progressOf({.shown = true, .after = std::chrono::milliseconds(0)});
    EXPECT_THAT(shown, HasSubstr("vexroc: 3 %, 0 of 3 rows"));
    EXPECT_THAT(shown, EndsWith("\r\x1b[K"));
    EXPECT_EQ(progressOf({.shown = true, .after = std::chrono::hours(1)}), "");
    EXPECT_EQ(progressOf({}), "");
}

TEST(Analyze, DisplayPrintsTheComponentsOwnText)
{
    const std::array states{1., 0., 1., 0.};
    const std::array tests{2., 1., 3., 4.};
    const std::array sexes{0., 0., 1., 1.};
    VexXML_920::VexVarList variables;
    variables.AddTwoValued("s");
    variables.AddCategorical("sex", {{0, "f"}, {1, "m"}});
    variables.AddContinuous("t");
    ROCALG_920::ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setSelectGroupVar(1, 0.0, 1.0);
    setting.setTestVars({2});
    setting.setNeedPR(true);
    ROCALG_920::RocAlgorithm algorithm(setting, variables);
    VexCommon_920::ColumnRecordIter records({states, sexes, tests});
    ASSERT_TRUE(algorithm.BuildModel(records).IsOK());
    std::ostringstream text;
    algorithm.Display(text);
    const std::string data = "s,sex,t\nill,f,2\nwell,f,1\nill,m,3\nwell,m,4\n";
    EXPECT_EQ(run("analyze - --state s=ill --test t --group sex --pr --display", data).out, text.str());
    EXPECT_THAT(text.str(), HasSubstr("Group:sex = f"));
}

TEST(Analyze, StrangeNamesHarmNoOutput)
{
    const std::vector<std::string_view> args{"analyze", "-",           "--state", "s=x",
                                             "--test",  "a\x1b[31m", "--group", "g\ng"};
    std::istringstream in("a\x1b[31m,s,\"g\ng\"\n1,x,\"p\"\"\n\"\n1,y,q\n2,x,q\n");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(runProgram(args, in, out, err), exitDone) << err.str();
    EXPECT_THAT(out.str(), HasSubstr("a\\x1b[31m  g\\ng = p\"\\n"));
    EXPECT_THAT(out.str() + err.str(), Not(HasSubstr("\x1b")));
}

} // namespace vexroc
