#include "cli/Program.h"
#include "cli/system/InterruptGuard.h"
#include "cli/words/Failure.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <vector>

namespace {

/// NO_COLOR set to anything asks for none; a dumb terminal has none.
bool colourIsWelcome()
{
    const char* const noColor = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    return (noColor == nullptr || *noColor == '\0') && terminal != nullptr && std::string_view(terminal) != "dumb";
}

/// How wide the terminal of standard output is.
std::size_t lineWidth()
{
    constexpr std::size_t narrowest = 40;
    winsize size{};
    const bool known = isatty(STDOUT_FILENO) == 1 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? std::max<std::size_t>(size.ws_col, narrowest) : vexroc::usualLineWidth;
}

} // namespace

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const std::vector<std::string_view> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    const bool isTerminal = isatty(STDERR_FILENO) == 1;
    vexroc::sayInterrupts();
    const int exitCode = vexroc::runProgram(
        args, std::cin, std::cout, std::cerr,
        {.isTerminal = isTerminal, .colour = isTerminal && colourIsWelcome(), .lineWidth = lineWidth()});
    if (exitCode == vexroc::exitCancelled)
        vexroc::endByInterrupt();
    return exitCode;
}
