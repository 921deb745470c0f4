#include "cli/options/ConfigText.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <istream>
#include <string_view>
#include <utility>

namespace vexroc {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

class ConfigText {
public:
    void add(std::string_view line)
    {
        ++number_;
        for (; !line.empty() && (quote_ != 0 || line.front() != '#'); line.remove_prefix(1))
            quote_ != 0 ? addQuoted(line) : addPlain(line.front());
        require(quote_ == 0, "a quote is not closed");
        if (openBrackets_ == 0)
            finishLine();
    }

    std::string take()
    {
        require(openBrackets_ == 0, "a list is not closed");
        return std::move(text_);
    }

private:
    void addPlain(char c)
    {
        if (isBlank(c) && (line_.empty() || openBrackets_ > 0))
            return; // in a list, the reader expects a comma right behind a quote
        require(isBlank(c) || !isClosed_, "text behind a closing bracket");
        line_ += c;
        openBrackets_ += c == '[' ? 1 : c == ']' ? -1 : 0;
        isClosed_ = isClosed_ || (c == ']' && openBrackets_ == 0);
        require(openBrackets_ >= 0, "a bracket is closed that was not opened");
        if (c == '"' || c == '\'') {
            quote_ = c;
            quoted_ = line_.size();
        }
    }

    void addQuoted(std::string_view rest)
    {
        const char c = rest.front();
        require(c != '\\' || (quote_ == '\'' && !rest.substr(1).starts_with(quote_)),
                "there are no escapes; a value with a backslash goes in single quotes, and does not end with it");
        if (c == quote_) {
            const std::string_view inner = std::string_view(line_).substr(quoted_);
            if (inner.starts_with('"') && inner.ends_with('"'))
                line_ += ' '; // the reader would take off these quotes, too; columns and values do not mind a blank
            quote_ = 0;
        }
        line_ += c;
    }

    void finishLine()
    {
        while (!line_.empty() && isBlank(line_.back()))
            line_.pop_back();
        const bool isSection = line_.size() > 2 && line_.starts_with('[') && line_.ends_with(']');
        const bool isEntry = line_.find('=') != std::string::npos && !line_.starts_with('=') && !line_.ends_with('=');
        require(line_.empty() || isSection || isEntry, inQuotes(line_) + " is neither KEY = VALUE nor [COMMAND]");
        text_ += line_ + '\n';
        line_.clear();
        isClosed_ = false;
    }

    void require(bool isSound, const std::string& fault) const
    {
        if (!isSound)
            throw usageError("line " + std::to_string(number_) + ": " + fault);
    }

    std::string text_;
    std::string line_; ///< with a list that is not closed, several of the file
    int number_ = 0;
    char quote_ = 0;         ///< the open one; 0 outside
    std::size_t quoted_ = 0; ///< where it begins in line_
    int openBrackets_ = 0;
    bool isClosed_ = false; ///< the line's brackets
};

} // namespace

std::string readableConfig(std::istream& input)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    ConfigText text;
    bool isFirst = true;
    for (std::string line; std::getline(input, line); isFirst = false)
        text.add(std::string_view(line).substr(isFirst && line.starts_with(byteOrderMark) ? byteOrderMark.size() : 0));
    return text.take();
}

} // namespace vexroc
