#include "cli/Program.h"
#include "cli/words/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexroc {

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

constexpr Terminal atOnce{.isTerminal = true, .progressAfter = std::chrono::milliseconds(0)};

/// What a question about the column t says in a terminal.
std::string saidOf(std::vector<std::string_view> args, const std::string& data, Terminal terminal)
{
    args.insert(args.end(), {"--state", "s=1", "--test", "t"});
    std::istringstream in(data);
    std::ostringstream out;
    std::ostringstream err;
    runProgram(args, in, out, err, terminal);
    return err.str();
}

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

volatile std::sig_atomic_t handled = 0;
void countSignal(int) { handled = handled + 1; }

const std::string few = "s,t\n1,2\n0,3\n1,4\n";

} // namespace

TEST(Terminal, ShowsProgressWhereTheOptionSaysAndWipesIt)
{
    EXPECT_THAT(saidOf({"analyze", "-"}, few, atOnce), HasSubstr("vexroc: analyzing: 3 %, 0 of 3 rows"));
    EXPECT_THAT(saidOf({"analyze", "-"}, few, atOnce), HasSubstr("analyzing: 100 %, 3 rows\r\x1b[K"));
    EXPECT_THAT(saidOf({"analyze", "-", "--progress", "always"}, few, {}),
                HasSubstr("vexroc: analyzing: 3 %, 0 of 3 rows"));
    const auto toldNothing = Not(HasSubstr("\r"));
    EXPECT_THAT(saidOf({"analyze", "-"}, few, {.isTerminal = true, .progressAfter = std::chrono::hours(1)}),
                toldNothing);
    EXPECT_THAT(saidOf({"analyze", "-", "--progress", "never"}, few, atOnce), toldNothing);
    EXPECT_THAT(saidOf({"analyze", "-"}, few, {.isTerminal = false, .progressAfter = {}}), toldNothing);
    std::string many = "s,t\n";
    for (int i = 0; i < 20'000; ++i)
        many += i % 2 == 0 ? "1,2\n" : "0,1\n";
    EXPECT_THAT(saidOf({"auc", "-", "--progress", "always"}, many, {}), HasSubstr("vexroc: reading: 20000 rows, "));
    const TemporaryFolder folder;
    const std::string file = folder.path() / "scores.csv";
    std::ofstream(file) << many << std::string(9 * many.size(), '\n'); // rows in the first tenth only
    EXPECT_THAT(saidOf({"auc", file, "--progress", "always"}, "", {}),
                ContainsRegex("reading: 3[0-9] %, 20000 rows, "));
}

TEST(Terminal, HasColourOnlyWhereThatIsWelcome)
{
    EXPECT_THAT(saidOf({"auc"}, "", {.isTerminal = true, .colour = true}), HasSubstr("\x1b[1;31merror:\x1b[0m FILE"));
    EXPECT_THAT(saidOf({"auc"}, "", {}), HasSubstr("vexroc: error: FILE"));
}

TEST(Terminal, AnInterruptLeavesNoFilesAndTheHandlersFromBefore)
{
    const TemporaryFolder folder;
    const std::string curve = folder.path() / "curve.csv";
    const std::vector<std::string_view> args{"analyze", "-", "--state", "s=1", "--test", "t", "--curve", curve};
    std::ostringstream out;
    const auto interruptedRun = [&] {
        PressingTerminal terminal;
        std::ostream err(&terminal);
        std::istringstream in(few);
        return runProgram(args, in, out, err, atOnce);
    };
    const auto before = std::signal(SIGINT, countSignal);
    EXPECT_EQ(interruptedRun(), exitCancelled);
    EXPECT_EQ(out.str(), "");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_EQ(handled, 0);
    std::raise(SIGINT); // the handler from before is back
    EXPECT_EQ(handled, 1);

    std::signal(SIGINT, SIG_IGN); // as for a background job
    EXPECT_EQ(interruptedRun(), exitDone);
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
}

} // namespace vexroc
