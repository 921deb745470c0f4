#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

struct vexroc_words;

namespace vexroc {

/// The words that stand for a missing value: the library's list, and what a user makes of it.
class MissingWords {
public:
    /// The library's words and these; a word that spells a number means every spelling of it.
    explicit MissingWords(std::span<const std::string> added = {}, bool onlyAdded = false);

    /// Is a text missing in a column of numbers? Blanks around it do not count.
    [[nodiscard]] bool inTest(std::string_view text) const noexcept;
    /// May a cell that is a number be missing all the same?
    [[nodiscard]] bool holdNumbers() const noexcept { return holdNumbers_; }
    [[nodiscard]] const vexroc_words* list() const noexcept { return list_.get(); }

private:
    struct Free {
        void operator()(vexroc_words* list) const noexcept;
    };
    std::unique_ptr<vexroc_words, Free> list_;
    bool holdNumbers_ = false;
};

} // namespace vexroc
