#pragma once

#include "cli/Program.h"
#include "cli/words/Failure.h"
#include "dataFolder.h"

#include <gmock/gmock.h>

#include <charconv>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// The program, called as from a shell.
namespace vexroc {

inline const std::string cancer = dataFolder + "breast_cancer.csv --state diagnosis=malignant ";
inline const std::string fawcett = dataFolder + "fawcett_2006.csv --state class=1 --test score ";

using Cells = std::vector<std::string>;
using Rows = std::vector<Cells>;

inline Cells split(const std::string& text, char delimiter)
{
    Cells cells;
    std::istringstream stream(text);
    for (std::string cell; std::getline(stream, cell, delimiter);)
        cells.push_back(cell);
    return cells;
}

struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

/// Runs the program on the arguments, split at blanks; what it says goes to err.
inline Outcome run(const std::string& arguments, const std::string& standardInput, std::ostream& err, Terminal terminal)
{
    Cells args = split(arguments, ' ');
    std::erase(args, "");
    std::istringstream in(standardInput);
    std::ostringstream out;
    const int exitCode = runProgram(std::vector<std::string_view>(args.begin(), args.end()), in, out, err, terminal);
    return {exitCode, out.str(), ""};
}

inline Outcome run(const std::string& arguments, const std::string& standardInput = "")
{
    std::ostringstream err;
    Outcome outcome = run(arguments, standardInput, err, {});
    outcome.err = err.str();
    return outcome;
}

/// How a run ends: its exit code, and text among what it says.
struct Ending {
    std::string arguments;
    int exitCode;
    std::string message;
};

inline void expectEndings(const std::string& command, const std::string& data, std::initializer_list<Ending> endings)
{
    for (const auto& [arguments, exitCode, message] : endings) {
        SCOPED_TRACE(command + arguments);
        const Outcome outcome = run(command + arguments, data);
        EXPECT_EQ(outcome.exitCode, exitCode);
        EXPECT_THAT(outcome.err, testing::HasSubstr(message));
        EXPECT_EQ(outcome.out.empty(), exitCode != exitDone) << outcome.out;
    }
}

inline double number(const std::string& cell)
{
    double value = -1e300; // no result of any test
    std::from_chars(cell.data(), cell.data() + cell.size(), value);
    return value;
}

inline Rows rowsOfCsv(const std::string& csv)
{
    Rows rows;
    for (const std::string& line : split(csv, '\n'))
        rows.push_back(split(line, ','));
    return rows;
}

/// Rows of the CSV that a run prints, without its header.
inline Rows rowsOf(const std::string& arguments, const std::string& standardInput = "")
{
    const Outcome outcome = run(arguments + " --format csv", standardInput);
    EXPECT_EQ(outcome.exitCode, exitDone) << outcome.err;
    Rows rows = rowsOfCsv(outcome.out);
    EXPECT_FALSE(rows.empty());
    return rows.empty() ? rows : Rows(rows.begin() + 1, rows.end());
}

/// Some cells of a row.
inline Cells slice(const Cells& row, std::size_t first, std::size_t count)
{
    EXPECT_GE(row.size(), first + count);
    const auto begin = row.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

} // namespace vexroc
