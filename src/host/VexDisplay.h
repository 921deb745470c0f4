#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// Line display: each call writes one line to the current output stream, or nothing when none is current.
///
/// A value stands after its label and one blank; booleans are true and false; lists stand in brackets, separated by
/// commas. Lines are always formatted in the default way of the classic locale (doubles with six significant
/// digits), whatever flags, width, precision or locale the stream has.
/// Threads: every thread has its own current stream. It must stay alive while it is current.
namespace VexDisplay_920 {
#pragma GCC visibility push(default)

/// The current stream; null when none is set.
[[nodiscard]] std::ostream* GetOutStream() noexcept;
/// Makes a stream current.
void SetOutStream(std::ostream& stream) noexcept;
/// Leaves no stream current: for a stream that is about to end.
void ClearOutStream() noexcept;

/// One line of text; null is an empty one. All levels are written alike.
void DisplayText(const long& level, const char* text);
void DisplayText(const long& level, const std::string& text);

void DisplayB(std::string label, bool value);
void DisplayD(std::string label, double value);
void DisplayI(std::string label, int value);
/// A list of doubles. The flag changes nothing.
void DisplayDV(std::string label, const std::vector<double>& values, bool flag);
void DisplayIV(std::string label, const std::vector<int>& values);

#pragma GCC visibility pop
} // namespace VexDisplay_920
