#include "cli/options/ConfigText.h"

#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"

#include <istream>
#include <string_view>
#include <utility>

namespace vexroc {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

class ConfigLines {
public:
    void add(std::string_view line)
    {
        if (++number_ == 1 && line.starts_with("\xEF\xBB\xBF")) // the byte order mark
            line.remove_prefix(3);
        for (; !line.empty() && (quote_ != 0 || line.front() != '#'); line.remove_prefix(1))
            quote_ != 0 ? addQuoted(line) : addPlain(line.front());
        require(quote_ == 0, "a quote is not closed");
        if (openBrackets_ == 0)
            finishLine();
    }

    std::string take()
    {
        require(openBrackets_ == 0, "the brackets do not match");
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
        line_.erase(line_.find_last_not_of(" \t\r") + 1);
        const bool isSection = line_.size() > 2 && line_.front() == '[';
        const bool isEntry = line_.find('=') < line_.size() - 1 && line_.front() != '=';
        require(line_.empty() || isSection || isEntry, inQuotes(line_) + " is neither KEY = VALUE nor [COMMAND]");
        text_ += std::exchange(line_, "") + '\n';
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
    ConfigLines text;
    for (std::string line; std::getline(input, line);)
        text.add(line);
    return text.take();
}

} // namespace vexroc
