#include "cli/words/MissingWords.h"

#include "cli/words/Numbers.h"
#include "vexrocproc/analysis.h"
#include "vexrocproc/labels.h"

#include <new>

namespace vexroc {

namespace {

void require(int result)
{
    if (result != VEXROC_OK) // of words, nothing else can fail
        throw std::bad_alloc();
}

} // namespace

void MissingWords::Free::operator()(vexroc_words* list) const noexcept { vexroc_words_free(list); }

MissingWords::MissingWords(std::span<const std::string> added, bool onlyAdded)
{
    vexroc_words* list = nullptr;
    require(vexroc_words_new(&list));
    list_.reset(list);
    if (onlyAdded)
        require(vexroc_words_clear(list));
    for (const std::string& word : added) {
        require(vexroc_words_add(list, word.c_str()));
        holdNumbers_ = holdNumbers_ || parseNumber(word).has_value();
    }
}

bool MissingWords::inTest(std::string_view text) const noexcept
{
    return text.empty() || vexroc_words_missing_in_test(list_.get(), text.data(), text.size()) == 1;
}

} // namespace vexroc
