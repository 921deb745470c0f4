#include "host/VexDisplay.h"

#include <locale>
#include <ostream>
#include <sstream>

namespace VexDisplay_920 {

namespace {

thread_local std::ostream* currentStream = nullptr;

/// Writes one line, if there is a current stream; formatted apart from it, so that its flags and locale do not show.
template <typename... Parts>
void writeLine(const Parts&... parts)
{
    if (currentStream == nullptr)
        return;
    std::ostringstream line;
    line.imbue(std::locale::classic());
    (line << ... << parts) << '\n';
    const std::string text = line.str();
    currentStream->write(text.data(), static_cast<std::streamsize>(text.size()));
}

template <typename T>
std::string inBrackets(const std::vector<T>& values)
{
    std::ostringstream list;
    list.imbue(std::locale::classic());
    const char* separator = "[";
    for (const T value : values) {
        list << separator << value;
        separator = ",";
    }
    return values.empty() ? "[]" : list.str() + ']';
}

} // namespace

std::ostream* GetOutStream() noexcept { return currentStream; }

void SetOutStream(std::ostream& stream) noexcept { currentStream = &stream; }

void ClearOutStream() noexcept { currentStream = nullptr; }

void DisplayText(const long& /*level*/, const char* text) { writeLine(text != nullptr ? text : ""); }

void DisplayText(const long& /*level*/, const std::string& text) { writeLine(text); }

// NOLINTBEGIN(performance-unnecessary-value-param): the interface takes labels by value
void DisplayB(std::string label, bool value) { writeLine(label, ' ', value ? "true" : "false"); }

void DisplayD(std::string label, double value) { writeLine(label, ' ', value); }

void DisplayI(std::string label, int value) { writeLine(label, ' ', value); }

void DisplayDV(std::string label, const std::vector<double>& values, bool /*flag*/)
{
    writeLine(label, ' ', inBrackets(values));
}

void DisplayIV(std::string label, const std::vector<int>& values) { writeLine(label, ' ', inBrackets(values)); }
// NOLINTEND(performance-unnecessary-value-param)

} // namespace VexDisplay_920
