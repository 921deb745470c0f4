#include "calls/words.h"

#include "calls/guard.h"
#include "vexrocproc/optionwords.h"

#include <cstddef>
#include <string>

namespace ROCALG_920::calls {

int positionOf(const char* word, std::span<const std::string_view> words, std::string_view thing)
{
    if (word == nullptr)
        return 0;
    std::string all;
    for (std::size_t i = 0; i < words.size() && !words[i].empty(); ++i) {
        if (compareIgnoreCase(word, std::string(words[i])))
            return static_cast<int>(i);
        all += (i == 0 ? "" : ", ") + quoted(words[i]);
    }
    throw InvalidArgument(std::string(thing) + ": no word " + quoted(word) + "; the words are " + all);
}

} // namespace ROCALG_920::calls
