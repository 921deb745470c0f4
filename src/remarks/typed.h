#pragma once

#include <string>
#include <string_view>

/// Names and values as a reader types them, so that they come back as they were.
namespace ROCALG_920::remarks {

/// An item of a list on a command line: in double quotes where it would be taken apart, or for another word.
std::string listItem(const std::string& text);
/// As a shell reads it back.
std::string shellWord(const std::string& text);
/// A string of Python, R or C.
std::string stringLiteral(std::string_view text);
/// The name of an element in c() of R.
std::string nameInR(const std::string& name);

} // namespace ROCALG_920::remarks
