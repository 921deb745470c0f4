#include "cli/picture/textLines.h"

#include "cli/picture/LabelPlaces.h"
#include "cli/words/VisibleText.h"

#include <sstream>

namespace vexroc {

std::string within(const std::string& text, double width, int fontSize)
{
    std::string shown = text;
    for (std::size_t most = text.size(); most > 3 && textWidth(shown, fontSize) > width; --most)
        shown = bothEnds(text, most);
    return shown;
}

std::vector<std::string> wrapped(const std::string& text, double width, int fontSize)
{
    std::vector<std::string> lines;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (!lines.empty() && textWidth(lines.back() + " " + word, fontSize) <= width)
            lines.back() += " " + word;
        else
            lines.push_back(word);
    }
    return lines;
}

} // namespace vexroc
