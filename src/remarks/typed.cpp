#include "remarks/typed.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace ROCALG_920::remarks {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// Does it consist of letters and digits of ASCII and these characters?
bool isPlain(std::string_view text, std::string_view others)
{
    return !text.empty() && std::ranges::all_of(text, [others](char c) {
        return isLetter(c) || (c >= '0' && c <= '9') || others.find(c) != std::string_view::npos;
    });
}

bool isReservedInR(std::string_view name)
{
    constexpr std::array words{"if",    "else",        "repeat",   "while",       "function",     "for", "next",
                               "break", "in",          "TRUE",     "FALSE",       "NULL",         "Inf", "NaN",
                               "NA",    "NA_integer_", "NA_real_", "NA_complex_", "NA_character_"};
    return std::ranges::find(words, name) != words.end();
}

std::string inLiteral(char c)
{
    if (c == '"' || c == '\\')
        return {'\\', c};
    const auto byte = static_cast<unsigned char>(c);
    constexpr unsigned char firstVisible = 0x20;
    constexpr unsigned char deleted = 0x7F;
    if (byte >= firstVisible && byte != deleted)
        return {c};
    char octal[5]; // of three digits, so that what follows is not taken for one more
    std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned int>(byte));
    return octal;
}

} // namespace

std::string listItem(const std::string& text)
{
    constexpr std::string_view blanks = " \t";
    const bool isWhole = !text.empty() && text.find_first_of(",=\"") == std::string::npos && text != "others"
        && blanks.find(text.front()) == blanks.npos && blanks.find(text.back()) == blanks.npos;
    if (isWhole)
        return text;
    std::string item = "\"";
    for (const char c : text)
        item += c == '"' ? std::string("\"\"") : std::string(1, c);
    return item + '"';
}

std::string shellWord(const std::string& text)
{
    if (isPlain(text, "_.-+=,:/@%"))
        return text;
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + '\'';
}

std::string stringLiteral(std::string_view text)
{
    std::string literal = "\"";
    for (const char c : text)
        literal += inLiteral(c);
    return literal + '"';
}

std::string nameInR(const std::string& name)
{
    return isPlain(name, "_.") && isLetter(name.front()) && !isReservedInR(name) ? name : stringLiteral(name);
}

} // namespace ROCALG_920::remarks
