#include "cli/Program.h"
#include "cli/system/InterruptGuard.h"
#include "cli/words/Failure.h"

#include <unistd.h>

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

} // namespace

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const std::vector<std::string_view> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    const bool isTerminal = isatty(STDERR_FILENO) == 1;
    vexroc::sayInterrupts();
    const int exitCode = vexroc::runProgram(args, std::cin, std::cout, std::cerr,
                                            {.isTerminal = isTerminal, .colour = isTerminal && colourIsWelcome()});
    if (exitCode == vexroc::exitCancelled)
        vexroc::endByInterrupt();
    return exitCode;
}
