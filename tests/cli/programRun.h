#pragma once

#include "cli/Failure.h"
#include "cli/Program.h"

#include <gtest/gtest.h>

#include <charconv>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// The program, called as from a shell.
namespace vexroc {

struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

/// Runs the program on the arguments, split at blanks.
inline Outcome run(const std::string& arguments, const std::string& standardInput = "")
{
    std::istringstream words(arguments);
    const std::vector<std::string> args{std::istream_iterator<std::string>(words), {}};
    const std::vector<std::string_view> views(args.begin(), args.end());
    std::istringstream in(standardInput);
    std::ostringstream out;
    std::ostringstream err;
    const int exitCode = runProgram(views, in, out, err);
    return {exitCode, out.str(), err.str()};
}

using Cells = std::vector<std::string>;

inline Cells split(const std::string& text, char delimiter)
{
    Cells cells;
    std::istringstream stream(text);
    for (std::string cell; std::getline(stream, cell, delimiter);)
        cells.push_back(cell);
    return cells;
}

inline double number(const std::string& cell)
{
    double value = -1e300; // no result of any test
    std::from_chars(cell.data(), cell.data() + cell.size(), value);
    return value;
}

/// Rows of the CSV that a run prints, without its header.
inline std::vector<Cells> rowsOf(const std::string& arguments, const std::string& standardInput = "")
{
    const Outcome outcome = run(arguments + " --format csv", standardInput);
    EXPECT_EQ(outcome.exitCode, exitDone) << outcome.err;
    std::vector<Cells> rows;
    for (const std::string& line : split(outcome.out, '\n'))
        rows.push_back(split(line, ','));
    EXPECT_FALSE(rows.empty());
    if (!rows.empty())
        rows.erase(rows.begin());
    return rows;
}

} // namespace vexroc
