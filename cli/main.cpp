#include "cli/Program.h"

#include <unistd.h>

#include <iostream>
#include <string_view>
#include <vector>

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const std::vector<std::string_view> args(argv + (argc > 0 ? 1 : 0), argv + argc);
    return vexroc::runProgram(args, std::cin, std::cout, std::cerr, {.shown = isatty(STDERR_FILENO) == 1});
}
