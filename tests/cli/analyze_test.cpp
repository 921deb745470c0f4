#include "programRun.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <streambuf>
#include <utility>

namespace vexroc {

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// The tables that analyze prints as CSV behind that of the cases, without their headers.
struct Tables {
    Rows areas;
    Rows comparisons;
};

Tables analyze(const std::string& arguments, const std::string& standardInput = "")
{
    std::array<Rows, 3> tables;
    std::size_t table = 0;
    bool header = false; // rowsOf took the first
    for (const Cells& row : rowsOf("analyze " + arguments, standardInput)) {
        if (row.empty())
            ++table;
        else if (!header)
            tables.at(table).push_back(row);
        header = row.empty();
    }
    return {tables[1], tables[2]};
}

// Columns of the table of areas without weights.
enum { variable, group, positive, negative, area, standardError, significance, lower, upper, gini, maxKs };

class AnalyzeFiles : public testing::Test {
protected:
    static std::string contentOf(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    const TemporaryFolder own;
    const fs::path& folder = own.path();
    const std::string curve = folder / "curve.csv";
};

/// Raises a signal when something is first written to it: a terminal on which someone presses Ctrl-C.
class PressingTerminal : public std::streambuf {
protected:
    int overflow(int c) override
    {
        std::raise(std::exchange(signal_, 0));
        return c;
    }

private:
    int signal_ = SIGINT; // then 0, no signal
};

constexpr Terminal atOnce{.isTerminal = true, .progressAfter = std::chrono::milliseconds(0)};

volatile std::sig_atomic_t handled = 0;
void countSignal(int) { handled = handled + 1; }

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
    const Cells plain = slice(analyze(fawcett).areas.at(0), area, 5);
    for (const char* const option : {"--smaller", "--bi-negative", "--level 0.5"}) {
        const Cells cells = slice(analyze(fawcett + option).areas.at(0), area, 5);
        EXPECT_EQ(cells, slice(rowsOf("auc " + fawcett + option).at(0), 4, 5));
        EXPECT_NE(cells, plain) << option;
    }
    EXPECT_EQ(analyze(fawcett + "--no-curve").areas.at(0).at(maxKs), "NA");
}

TEST(Analyze, SplitsCasesInEveryWay)
{
    const std::string data = "s,t,sex,age,flag\n1,2,m,20,0\n0,1,f,40,1\n1,3,f,60,1\n"
                             "0,1,m,20,0\n1,1,f,60.0,0\n0,4,m,40,1\n";
    const std::string question = "- --state s=1 --test t --compare independent --group ";
    const struct {
        const char* split;
        Cells first, second; // group, positive, negative
    } cases[] = {
        {"sex", {"sex = f", "2", "1"}, {"sex = m", "1", "2"}},
        {"sex --select m,f", {"sex = m", "1", "2"}, {"sex = f", "2", "1"}},
        {"flag", {"flag = 0", "2", "1"}, {"flag = 1", "1", "2"}},
        {"age --select 60,2e1", {"age = 60", "2", "0"}, {"age = 2e1", "1", "1"}},
        {"age --cut 20.5", {"age < 20.5", "1", "1"}, {"age >= 20.5", "2", "2"}},
        {"age --mid-point", {"age < 40", "1", "1"}, {"age >= 40", "2", "2"}},
    };
    for (const auto& [split, first, second] : cases) {
        SCOPED_TRACE(split);
        const Tables tables = analyze(question + split, data);
        ASSERT_EQ(tables.areas.size(), 2u);
        EXPECT_EQ(slice(tables.areas[0], group, 3), first);
        EXPECT_EQ(slice(tables.areas[1], group, 3), second);
        EXPECT_EQ(slice(tables.comparisons.at(0), 0, 3), (Cells{"t", first[0], second[0]}));
    }
    EXPECT_EQ(slice(analyze(question + "sex", data).comparisons.at(0), 3, 6),
              slice(rowsOf("compare - --state s=1 --test t --group sex=f,m", data).at(0), 12, 6));
}

TEST(Analyze, AccountsForEveryRow)
{
    const std::string data = "s,a,b,g,w\n,1,1,x,1\n1,1,1,,\n1,1,1,x,NA\n1,1,1,z,1\n1,1,1,x,0.4\n"
                             "0,1,1,y,-2\n0,1,1,y,inf\n1,1,,x,1\n1,2,2,x,2.5\n1,3,NA,y,3\n"
                             "0,1,2,x,0.5\n0,NA,3,y,1\n0,.,.,y,1\n";
    const std::string question = "analyze - --state s=1 --test a,b --format csv ";
    const Outcome grouped = run(question + "--group g --select x,y --weight w", data);
    EXPECT_THAT(grouped.out,
                StartsWith("cases,count\nrows read,13\nleft out,7\nleft out: missing state,1\n"
                           "left out: missing group,1\nleft out: missing weight,1\n"
                           "left out: in neither group,1\nleft out: unusable weight,3\n"
                           "used,6\npositive,3\nnegative,3\nweighted positive,7\n"
                           "weighted negative,3\nmissing: a,2\nmissing: b,3\n\n"));
    EXPECT_THAT(grouped.err, HasSubstr("not whole numbers, rounded with halves up: 3\n"));
    EXPECT_THAT(run(question + "--compare paired", data).out,
                AllOf(StartsWith("cases,count\nrows read,13\nleft out,5\nleft out: missing state,1\n"
                                 "left out: missing test,4\nused,8\npositive,5\nnegative,3\n"
                                 "missing: a,2\nmissing: b,3\n\n"),
                      HasSubstr("\na,all cases,5,3,"), HasSubstr("\nb,all cases,5,3,")));
}

TEST(Analyze, SaysWarningsInWords)
{
    const std::string data = "s,t,u,g,one\n1,2,1,x,7\n0,2,2,x,\n1,3,3,y,\n0,1,4,y,8\n1,4,5,y,\n";
    expectEndings(
        "analyze - --state s=1 --test ", data,
        {
            {"t,u,t", exitDone, "share test values in 't'; each such pair counts one half (430102 WARN_TieExist)"},
            {"t,u --compare paired --group g", exitDone,
             "a paired comparison uses all cases (430104 WARN_GROUP_IGNORE)"},
            {"u --bi-negative", exitDone,
             "positive as negative cases, for every test and group (430103 WARN_DIST_CHANGE)"},
            {"u,s", exitDone, "note: 's' is the state; it is not also a test"},
            {"u --pr", exitDone, "drawn by --plot and --report and written by --pr-curve FILE"},
            {"u --group u --cut 2", exitDone, "u where u < 2: no area: every case is positive"},
            {"t,one --compare paired", exitDone, "one: no standard error: at least 2 positive"},
        });
}

TEST(Analyze, NamesTheStatusThatEndsAnAnalysis)
{
    const std::string data = "s,t,g,n,none\n1,2,,5,\n1,3,,5,\n0,1,x,5,\n0,3,y,5,\n";
    const struct {
        const char* arguments;
        const char* status;
        const char* help;
    } cases[] = {
        {"t --group g", "430004 Setting_Error_StateValue_NotExist", "2 left out (missing group: 2)"},
        {"s", "430005 Setting_Error_TestVar", "other than the state"},
        {"t --compare paired", "430006 Setting_Error_AtLeast2Test", "--test FIRST,SECOND"},
        {"t --compare independent", "430007 Setting_Error_Group_Required", "--group"},
        {"t --group none --cut 1", "430010 Error_NoData", "check the rows that were left out"},
        {"t --compare independent --group n --mid-point", "430011 Error_GroupConst_IndCompare", "one group only"},
        {"t --group n --cut 9 --compare independent", "430012 Error_No2Group_IndCompare", "another split"},
    };
    for (const auto& [arguments, status, help] : cases)
        expectEndings("analyze - --state s=1 --test ", data,
                      {{arguments, exitNoResult, std::string("vexroc: error: status ") + status + ": "},
                       {arguments, exitNoResult, help}});
}

TEST(Analyze, RefusesWhatDoesNotFit)
{
    expectEndings(
        "analyze - --state s=1 --test ", "s,t,g,n\n1,2,x,5\n0,1,y,7\n1,3,z,8\n0,2,z,9\n",
        {
            {"t --cut 1", exitUsage, "name it with --group"},
            {"t --group n --cut 6 --mid-point", exitUsage, "give one of them"},
            {"t --group n --cut six", exitUsage, "--cut 'six': expected a number"},
            {"t --group g --select x", exitUsage, "--select 'x': expected two values"},
            {"t --group g --select x,NA", exitUsage, "'NA' stands for a missing value"},
            {"t --group n --select 5,5.0", exitUsage, "are the same"},
            {"t,n --compare paired --bi-negative", exitUsage, "--bi-negative does not go with --compare paired"},
            {"t --keilwagen", exitUsage, "--pr or --pr-curve"},
            {"t --no-curve --curve x", exitUsage, "--no-curve"},
            {"t --no-curve --best", exitUsage, "--no-curve"},
            {"t --curve x --pr-curve x", exitUsage, "the same file"},
            {"t --curve x --plot ./x", exitUsage, "name the same file"},
            {"t --report x.html --output x.html", exitUsage, "--output and --report name the same file"},
            {"t --group g", exitInput, "holds 'x', 'y', 'z'; it needs two values: pick them with --select"},
            {"t --group g --mid-point", exitInput, "line 2, column 'g': 'x' is neither a number"},
            {"t --group g --select x,w", exitInput, "column 'g' never holds 'w'"},
            {"t --by s", exitUsage, "--by names the state column"},
            {"t --weight v", exitInput, "no column 'v'"},
            {"t --curve /no/such/place.csv", exitOutput, "cannot write /no/such/place.csv: No such file"},
            {"t --curve /", exitOutput, "cannot write /: Is a directory"},
        });
}

TEST_F(AnalyzeFiles, OneAnalysisByValueIsThatOfItsRows)
{
    const std::string header = "s,t,u,g,site\n";
    const std::string nine = "1,2,1,a,9\n0,1,3,b,9.0\n1,1,2,a,9\n0,3,1,a,9\n1,0,3,b,9\n";
    const std::string ten = "0,1,2,a,10\n1,5,2,b,10\n0,2,0,b,10\n1,2,NA,a,10\n";
    const std::string data = header + "0,1,1,a,x\n1,1,1,a,\n0,2,1,b,x\n" + ten + nine;
    for (const std::string options : {"--group g --compare independent ", "--compare paired ", "--weight u --pr "}) {
        SCOPED_TRACE(options);
        const std::string question = "analyze - --state s=1 --test t,u --format csv " + options;
        const auto files = [&](const char* name) { return " --curve " + curve + " --pr-curve " + curve + name; };
        const Outcome all = run(question + "--by site" + files("pr"), data);
        EXPECT_EQ(all.exitCode, exitDone);
        EXPECT_THAT(all.err,
                    AllOf(HasSubstr("warning: site = x: no result: no row with the positive state is left"),
                          HasSubstr("rows with a missing 'site', in no analysis: 1\n"),
                          HasSubstr("warning: site = 9: ties")));
        std::string together = all.out + contentOf(curve) + contentOf(curve + "pr");
        for (const auto& [value, rows] : {std::pair{"9", nine}, std::pair{"10", ten}}) {
            const Outcome one = run(question + files("pr"), header + rows);
            std::istringstream lines(one.out + contentOf(curve) + contentOf(curve + "pr"));
            for (std::string line; std::getline(lines, line);) {
                if (line.empty()) // between tables
                    continue;
                EXPECT_THAT(
                    "\n" + together,
                    AnyOf(HasSubstr(std::string("\n") + value + "," + line + "\n"), HasSubstr("\nby," + line + "\n")));
            }
            EXPECT_LT(together.find(std::string("\n") + "9,"), together.find("\n10,"));
        }
    }
    std::string tooMany = "s,t,id\n";
    for (int id = 0; id <= 1000; ++id)
        tooMany += "1,2," + std::to_string(id) + "\n";
    const std::string byId = "analyze - --state s=1 --test t --by id";
    EXPECT_THAT(run(byId, tooMany).err, HasSubstr("'id' holds 1001 different values; --by takes 1000 at most"));
    EXPECT_THAT(run(byId, "s,t,id\n1,2,\n").err, HasSubstr("column 'id' holds missing cells only"));
    expectEndings(byId, "s,t,id\n1,2,a\n1,3,b\n", {{"", exitDone, "id = a: t: no area: every case is positive"}});
    EXPECT_EQ(run(byId, "s,t,id\n0,2,a\n1,3,\n").exitCode, exitNoResult);
    const std::string noneIll = "s,t,u,id\n1,2,1,a\n0,1,1,a\n1,3,2,a\n0,5,,b\n0,6,7,b\n"; // among b
    const std::string json = run("analyze - --state s=1 --test t,u --by id --format json", noneIll).out;
    EXPECT_THAT(json, HasSubstr(R"({"by": "b", "cases": "rows read", "count": 2})"));
    EXPECT_THAT(json,
                HasSubstr(R"("variable": "t", "group": "all cases", "positive": 0, "negative": 2, "area": null)"));
    EXPECT_THAT(json,
                HasSubstr(R"("variable": "u", "group": "all cases", "positive": 0, "negative": 1, "area": null)"));
}

TEST(Analyze, TestAllTakesTheNumbersWithoutAnotherPart)
{
    const std::string data = "s,a,word,w,g,,,b\n1,1,x,1,1,,,3\n0,NA,2,1,2,,,4\n0,5,3,1,1,,,inf\n"; // two without a name
    const Rows areas = analyze("- --state s=1 --test all --weight w --group g --cut 0", data).areas;
    ASSERT_EQ(areas.size(), 4u); // two groups each
    EXPECT_EQ(areas[0].at(variable) + areas[2].at(variable), "ab");
    EXPECT_EQ(run("analyze - --state s=1 --test all", "s,t\n1,x\n0,y\n").exitCode, exitNoResult);
    EXPECT_EQ(run("analyze - --state s=1 --test all", "s,a,a\n1,1,2\n0,3,4\n").exitCode, exitInput);
}

TEST_F(AnalyzeFiles, HoldThePointsOfTheOtherCommands)
{
    const std::string tied = "s,t\n1,2\n1,1\n1,1\n1,1\n0,1\n0,1\n0,1\n0,1\n0,1\n0,0\n0,0\n0,0\n1,-1\n0,7\n";
    for (const std::string options : {"", "--smaller", "--exclude", "--pr", "--pr --keilwagen", "--pr --smaller"}) {
        SCOPED_TRACE(options);
        const bool pr = options.starts_with("--pr");
        const std::string question = " - --state s=1 --test t " + options.substr(pr ? 4 : 0);
        analyze(question + (pr ? " --pr-curve " : " --curve ") + curve, tied);
        const Rows rows = rowsOfCsv(contentOf(curve));
        EXPECT_EQ(slice(rows.at(0), 2, 3),
                  pr ? (Cells{"recall", "precision", "interpolated"})
                     : (Cells{"cut_off", "sensitivity", "specificity"}));
        const Rows other = rowsOf((pr ? "pr" : "curve") + question, tied);
        ASSERT_EQ(rows.size(), other.size() + 1);
        for (std::size_t i = 0; i < other.size(); ++i) {
            EXPECT_EQ(slice(rows[i + 1], 0, 2), (Cells{"t", "all cases"}));
            EXPECT_EQ(slice(rows[i + 1], 2, 2), pr ? slice(other[i], 2, 2) : (Cells{other[i][1], other[i][3]}));
            EXPECT_EQ(pr ? number(rows[i + 1][4]) : 1.0 - number(rows[i + 1][4]), number(other[i][pr ? 4 : 2]));
        }
    }
}

TEST_F(AnalyzeFiles, AreWrittenCompletelyOrNotAtAll)
{
    constexpr fs::perms permissions = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    std::ofstream(curve) << "old";
    fs::permissions(curve, permissions);
    fs::create_symlink("curve.csv", folder / "link.csv");

    // The second file fails when it is written, so the first must not appear either.
    const std::string tooLong = folder / std::string(250, 'x'); // with what is added while it is written
    EXPECT_EQ(run("analyze " + fawcett + "--curve " + curve + " --pr-curve " + tooLong).exitCode, exitOutput);
    EXPECT_EQ(contentOf(curve), "old");

    analyze(fawcett + "--curve " + (folder / "link.csv").string());
    EXPECT_THAT(contentOf(curve), StartsWith("variable,group,"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.csv"));
    EXPECT_EQ(fs::status(curve).permissions(), permissions);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);

    analyze(fawcett + "--curve /dev/null");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(AnalyzeFiles, AreNotLeftBehindByAnInterrupt)
{
    const auto interruptedRun = [&] {
        PressingTerminal terminal;
        std::ostream err(&terminal);
        return run("analyze " + cancer + "--test all --curve " + curve, "", err, atOnce);
    };
    const auto before = std::signal(SIGINT, countSignal);
    const Outcome cancelled = interruptedRun();
    EXPECT_EQ(cancelled.exitCode, exitCancelled);
    EXPECT_EQ(cancelled.out, "");
    EXPECT_TRUE(fs::is_empty(folder));
    EXPECT_EQ(handled, 0);
    std::raise(SIGINT); // the handler from before is back
    EXPECT_EQ(handled, 1);

    std::signal(SIGINT, SIG_IGN); // as for a background job
    EXPECT_EQ(interruptedRun().exitCode, exitDone);
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
}

TEST(Analyze, ShowsProgressOnATerminalAndWipesIt)
{
    const auto progressOf = [](Terminal display) {
        std::ostringstream err;
        run("analyze - --state s=1 --test t", "s,t\n1,2\n0,3\n1,4\n", err, display);
        return err.str();
    };
    EXPECT_THAT(progressOf(atOnce), HasSubstr("vexroc: 3 %, 0 of 3 rows"));
    EXPECT_THAT(progressOf(atOnce), EndsWith("\r\x1b[K"));
    EXPECT_EQ(progressOf({.isTerminal = true, .progressAfter = std::chrono::hours(1)}), "");
}

TEST(Analyze, StrangeNamesHarmNoOutput)
{
    const Outcome outcome = run("analyze - --state s=x\ty --test a\x1b[31m --group g\ng",
                                "a\x1b[31m,s,\"g\ng\"\n1,x\ty,\"p\"\"\n\"\n1,y,q\n2,x\ty,q\n");
    EXPECT_THAT(outcome.out, HasSubstr("s = x\\ty"));
    EXPECT_THAT(outcome.out, HasSubstr("a\\x1b[31m  g\\ng = p\"\\n"));
    EXPECT_THAT(outcome.out + outcome.err, Not(HasSubstr("\x1b")));
}

} // namespace vexroc
