#include "programRun.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace vexroc {

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
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
                            + "breast_cancer.csv\" # a comment\n"
                              "state = 'diagnosis=malignant'\ntest = [ 'radius_mean' , # one\n\n'area_mean',\n]\n"
                              "level = 0.9\n[auc]\nlevel = 0.5\n[compare]\nformat = 'csv'\nsmaller = true\n");
    const std::string tests = "--test radius_mean,area_mean ";
    const std::pair<std::string, std::string> runs[] = {
        {"auc", "auc " + cancer + tests + "--level 0.5"}, // a section goes before the rest
        {"auc --level 0.6 --test area_mean",
         "auc " + cancer + "--test area_mean --level 0.6"}, // an argument before both
        {"compare", "compare " + cancer + tests + "--level 0.9 --smaller --format csv"},
        {"curve", "curve " + cancer + tests}, // which has no --level
    };
    for (const auto& [arguments, same] : runs)
        EXPECT_EQ(run(arguments + " --config " + config.path).out, run(same).out) << arguments;
}

TEST(Config, ReadsValuesAsTheyAreQuoted)
{
    const std::string data = "s,\"a,b\",c#d,a,b\n1,1,4,2,9\n0,2,1,7,3\n1,3,3,2,2\n0,0,1,1,1\n";
    const std::pair<std::string, std::string> tests[] = {
        {"'\"a,b\"'", "\"a,b\""}, {"['\"a,b\"', \"c#d\"]", "\"a,b\",c#d"}, {"'a,b'\r", "a,b"}, {"\"c#d\"", "c#d"},
        {"[\"b\"]", "b"},
    };
    for (const auto& [value, argument] : tests) {
        const ConfigText config("\xEF\xBB\xBFstate = \"s=1\"\ntest = " + value);
        const Outcome outcome = run("auc - --config " + config.path, data);
        EXPECT_EQ(outcome.out, run("auc - --state s=1 --test " + argument, data).out) << value;
        EXPECT_EQ(outcome.exitCode, exitDone) << outcome.err;
    }
}

TEST(Config, NamesTheFileAndWhatIsAtFault)
{
    const std::pair<std::string, std::string> faults[] = {
        {"\nstat = 'x'", "config.toml: no option 'stat'; did you mean 'state'?"},
        {"[auk]\n", "no command 'auk'; did you mean 'auc'?"},
        {"[auc.x]\nlevel = 1", "no command 'auc.x'"},
        {"[auc]\ntset = 'a'", "auc has no option 'tset'; did you mean 'test'?"},
        {"level = 1\nquiet = true\nlevel = 2", "'level' is given twice"},
        {"\nstate = ", "config.toml: line 2: 'state =' is neither KEY = VALUE nor [COMMAND]"},
        {"state = 's=1", "line 1: a quote is not closed"},
        {"state = \"s=\\n\"", "line 1: there are no escapes"},
        {"test = ['a',\n'b'\n", "line 2: the brackets do not match"},
        {"test = ['a'] 'b'", "line 1: text behind a closing bracket"},
        {"smaller = 'maybe'", "--smaller"},
        {"config = 'other'", "'config' is not allowed in a file"},
    };
    for (const auto& [text, message] : faults) {
        const ConfigText config(text);
        expectEndings("auc " + radius, "", {{"--config " + config.path, exitUsage, message}});
    }
    expectEndings("auc " + radius, "", {{"--config nothing.toml", exitInput, "file nothing.toml: no such file"}});
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
            {given + data.string() + " --output=", exitUsage, "--output: "},
        });
    std::ifstream kept(data);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), tied);
}

TEST(Misuse, SaysWhatIsWrongAndWhatToDo)
{
    expectEndings("auc " + radius, "",
                  {
                      {"--plot x.svg", exitUsage, "no option '--plot' in auc; 'analyze' has it"},
                      {"--group s=1,2", exitUsage, "no option '--group' in auc; 'analyze', 'compare' have it"},
                      {"-- --level .5", exitUsage, "'--level' stands behind --"},
                      {"--level .9 --level .8", exitUsage, "--level: At Most 1 required but received 2"},
                      {"--smaller=maybe", exitUsage, "--smaller = maybe"},
                      {"--level", exitUsage, "--level: 1 required P missing; see vexroc auc --help"},
                      {"--output --quiet", exitUsage, "--output: needs a value; the option --quiet follows"},
                      {"--test all", exitInput, "analyze alone takes --test all"},
                  });
    expectEndings("", "",
                  {{"--quiet", exitUsage, "no command: name one of 'analyze', "},
                   {"--quiet aux", exitUsage, "no command 'aux'; did you mean 'auc'?"}});
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

TEST(Progress, GoesWhereTheOptionSaysAndCountsTheRows)
{
    const auto said = [](const std::string& question, const std::string& data, Terminal terminal) {
        std::ostringstream err;
        run(question + " --state s=1 --test t", data, err, terminal);
        return err.str();
    };
    const std::string few = "s,t\n1,1\n0,3\n1,4\n";
    EXPECT_EQ(said("analyze - --progress never", few, {.isTerminal = true, .progressAfter = {}}), "");
    EXPECT_EQ(said("analyze -", few, {}), "");
    EXPECT_THAT(said("analyze - --progress always", few, {}), HasSubstr("vexroc: 3 %, 0 of 3 rows"));

    std::string many = "s,t\n";
    for (int i = 0; i < 20'000; ++i)
        many += i % 2 == 0 ? "1,2\n" : "0,1\n";
    EXPECT_THAT(said("auc - --progress always", many, {}), HasSubstr("vexroc: reading: 8192 rows, "));
    const TemporaryFolder folder;
    const std::string file = folder.path() / "scores.csv";
    std::ofstream(file) << many << std::string(9 * many.size(), '\n'); // rows in the first tenth only
    EXPECT_THAT(said("auc " + file + " --progress always", "", {}), ContainsRegex("reading: 1[0-9] %, 8192 rows, "));
}

} // namespace vexroc
