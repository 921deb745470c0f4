#include "programRun.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace vexroc {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string radius = cancer + "--test radius_mean ";
const std::string tied = "s,t\n1,1\n0,1\n1,2\n"; // a tie is worth a warning of analyze

/// A config file for the time of a test.
struct ConfigText {
    TemporaryFolder folder;
    std::string path = folder.path() / "config.toml";
    explicit ConfigText(const std::string& text) { std::ofstream(path) << text; }
};

} // namespace

TEST(Config, FillsInWhatTheArgumentsDoNotSay)
{
    const ConfigText config("FILE = \"" + dataFolder
                            + "breast_cancer.csv\"\n"
                              "state = 'diagnosis=malignant'\ntest = ['radius_mean', 'area_mean']\nlevel = 0.9\n"
                              "[auc]\nlevel = 0.5\n[compare]\nformat = 'csv'\nsmaller = true\n");
    const std::string tests = "--test radius_mean,area_mean ";
    const struct {
        std::string arguments;
        std::string same;
    } runs[] = {
        {"auc", "auc " + cancer + tests + "--level 0.5"}, // a section goes before the rest
        {"auc --level 0.6 --test area_mean",
         "auc " + cancer + "--test area_mean --level 0.6"}, // an argument before both
        {"compare", "compare " + cancer + tests + "--level 0.9 --smaller --format csv"},
        {"curve", "curve " + cancer + tests}, // which has no --level
    };
    for (const auto& [arguments, same] : runs) {
        EXPECT_EQ(run(arguments + " --config " + config.path).out, run(same).out) << arguments;
        const ConfigText printed(run(same + " --print-config").out);
        EXPECT_EQ(run(split(arguments, ' ').front() + " --config " + printed.path).out, run(same).out) << arguments;
    }
}

TEST(Config, NamesTheLineAndTheKeyAtFault)
{
    const struct {
        const char* text;
        const char* message;
    } faults[] = {
        {"\nstat = 'x'", "line 2: no option 'stat'; did you mean 'state'?"},
        {"[auk]\n", "line 1: no command 'auk'"},
        {"[auc]\ntset = 'a'", "line 2: auc has no option 'tset'; did you mean 'test'?"},
        {"state = [[1]]", "line 1: 'state': expected a text"},
        {"state = ", "line 1: "},
        {"smaller = 'maybe'", "--smaller"},
        {"config = 'other'", "'config' is not allowed in a file"},
    };
    for (const auto& [text, message] : faults) {
        const ConfigText config(text);
        expectEndings("auc " + radius, "", {{"--config " + config.path, exitUsage, message}});
    }
    expectEndings("auc " + radius, "", {{"--config nothing.toml", exitInput, "file nothing.toml: No such file"}});
}

TEST(Config, AnArgumentReplacesTheWholeSource)
{
    const std::string state = "state = 'diagnosis=malignant'\ntest = 'radius_mean'\n";
    const ConfigText database("sqlite = 'no.db'\nquery = 'x'\n" + state);
    const ConfigText text("FILE = 'no.csv'\ndelimiter = 'tab'\n" + state);
    expectEndings("auc ", "",
                  {
                      {"--config " + database.path + " " + dataFolder + "breast_cancer.csv", exitDone, ""},
                      {"--config " + database.path + " --table t", exitInput, "cannot read no.db"},
                      {"--config " + text.path + " --sqlite some.db --table t", exitInput, "cannot read some.db"},
                  });
    const ConfigText sections("FILE = 'no.csv'\n[auc]\nsqlite = 'section.db'\ntable = 't'\n" + state);
    expectEndings("auc ", "", {{"--config " + sections.path, exitInput, "cannot read section.db"}});
}

TEST(Files, WrittenAreNeitherReadNorWrittenTwice)
{
    namespace fs = std::filesystem;
    const ConfigText config("state = 's=1'\ntest = 't'\n");
    const fs::path data = config.folder.path() / "data.csv";
    const fs::path link = config.folder.path() / "link.csv";
    std::ofstream(data) << tied;
    fs::create_symlink(data, link);
    const std::string spelled = (config.folder.path() / "." / "data.csv").string();
    const std::string given = "--config " + config.path + " ";
    const std::string isInput = " names the input " + data.string() + "; choose another file";
    for (const std::string option : {"--output ", "--curve ", "--pr-curve ", "--plot ", "--report "})
        for (const std::string& path : {data.string(), spelled, link.string()})
            expectEndings("analyze " + given + data.string() + " ", "", {{option + path, exitUsage, isInput}});
    expectEndings(
        "columns ", "",
        {
            {given + spelled + " --output " + data.string(), exitUsage, "--output names the input"},
            {given + data.string() + " --output " + config.path, exitUsage, "--output names the --config file"},
            {given + "--sqlite " + data.string() + " --table t --output " + data.string(), exitUsage, isInput},
            {given + data.string() + " --output -", exitDone, ""},
            {given + data.string() + " --output=", exitUsage, "--output needs a value"},
        });
    std::ifstream kept(data);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), tied);
}

TEST(Misuse, SaysWhatIsWrongAndWhatToDo)
{
    expectEndings(
        "auc " + radius, "",
        {
            {"--plot x.svg", exitUsage, "no option '--plot' in auc; 'analyze' has it"},
            {"--group s=1,2", exitUsage, "no option '--group' in auc; 'analyze', 'compare' have it"},
            {"--levle 1", exitUsage, "did you mean '--level'?"},
            {"-- --level .5", exitUsage, "'--level' stands behind --"},
            {"--level .9 --level .8", exitUsage, "--level is given 2 times"},
            {"--smaller=maybe", exitUsage, "--smaller takes no value"},
            {"--level", exitUsage, "--level needs a value: --level P"},
            {"--output --quiet", exitUsage, "--output needs a value: --output FILE; the option --quiet follows"},
            {"--test all", exitInput, "analyze alone takes --test all"},
        });
    expectEndings("", "", {{"--quiet", exitUsage, "no command: name one of 'analyze', "}});
    expectEndings("compare " + radius, "", {{"--group area_mean", exitUsage, "expected COLUMN=VALUE,VALUE"}});
    EXPECT_EQ(run("help auc").out, run("auc --help").out);
    EXPECT_EQ(run("help").out, run("--help").out);
}

TEST(Messages, QuietAndStrict)
{
    const std::string analyze = "analyze - --state s=1 --test t ";
    const Outcome plain = run(analyze, tied);
    EXPECT_THAT(plain.err, HasSubstr("warning: ties"));
    const Outcome quiet = run(analyze + "--quiet --progress always", tied);
    EXPECT_EQ(quiet.err, "");
    EXPECT_EQ(quiet.out, plain.out);
    const Outcome strict = run(analyze + "--strict", tied);
    EXPECT_EQ(strict.exitCode, exitNoResult);
    EXPECT_EQ(strict.out, plain.out); // nothing is lost
    EXPECT_EQ(run(analyze + "--strict", "s,t\n1,1\n0,3\n1,2\n").exitCode, exitDone);
}

TEST(Messages, PointToDecimalCommas)
{
    EXPECT_EQ(run("columns -", "x;y;z\n1,5;1,5;2\n2;a;3\n").err,
              "vexroc: note: 'x' holds numbers with the other decimal sign; read them with --decimal comma\n");
}

TEST(Messages, AreColouredOnlyWhereThatIsWelcome)
{
    std::ostringstream err;
    run("auc", "", err, {.isTerminal = true, .colour = true});
    EXPECT_THAT(err.str(), HasSubstr("\x1b[1;31merror:\x1b[0m --state"));
    EXPECT_THAT(run("auc").err, StartsWith("vexroc: error: --state"));
}

TEST(Progress, GoesWhereTheOptionSays)
{
    const auto said = [](const std::string& mode, Terminal terminal) {
        std::ostringstream err;
        run("analyze - --state s=1 --test t --progress " + mode, "s,t\n1,1\n0,3\n1,4\n", err, terminal);
        return err.str();
    };
    const Terminal atOnce{.isTerminal = true, .progressAfter = std::chrono::milliseconds(0)};
    EXPECT_EQ(said("never", atOnce), "");
    EXPECT_EQ(said("auto", {}), "");
    EXPECT_THAT(said("always", {}), HasSubstr("vexroc: 3 %, 0 of 3 rows"));
    EXPECT_THAT(
        said("json", {}),
        AllOf(StartsWith("{\"phase\":\"analysis\",\"share\":0.030,\"rows\":0,\"of\":3,"), Not(HasSubstr("\x1b"))));
}

TEST(Progress, OfReadingCountsTheRows)
{
    std::string data = "s,t\n";
    for (int i = 0; i < 20'000; ++i)
        data += i % 2 == 0 ? "1,2\n" : "0,1\n";
    std::ostringstream err;
    EXPECT_EQ(run("auc - --state s=1 --test t --progress json", data, err, {}).exitCode, exitDone);
    EXPECT_THAT(err.str(), StartsWith("{\"phase\":\"reading\",\"rows\":20000,"));

    const TemporaryFolder folder;
    const std::string file = folder.path() / "scores.csv";
    std::ofstream(file) << data << std::string(9 * data.size(), '\n'); // rows in the first tenth only
    err.str("");
    EXPECT_EQ(run("auc " + file + " --state s=1 --test t --progress json", "", err, {}).exitCode, exitDone);
    EXPECT_THAT(err.str(), StartsWith("{\"phase\":\"reading\",\"share\":0.3"));
}

TEST(Texts, ManualPageAndCompletionsNameEveryOption)
{
    const std::string roff = run("man-page").out;
    for (const std::string command : {"analyze", "auc", "compare", "curve", "pr"})
        EXPECT_THAT(roff, HasSubstr(".SS vexroc " + command));
    EXPECT_THAT(roff, HasSubstr(".B \\-\\-keilwagen"));
    for (const std::string shell : {"bash", "zsh", "fish"})
        EXPECT_THAT(run("completion " + shell).out, AllOf(HasSubstr("keilwagen"), HasSubstr("print-config"))) << shell;
}

} // namespace vexroc
