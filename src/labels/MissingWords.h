#pragma once

#include "labels/Decimal.h"

#include <string>
#include <string_view>
#include <vector>

namespace ROCALG_920::labels {

/// ASCII letters in lower case, whatever the locale; the rest as it is.
std::string lowerCase(std::string_view text);

/// The words that stand for a missing value, in any case of their letters and with blanks around them or not. The empty
/// word always does.
class MissingWords {
public:
    /// Takes all words from the list.
    void clear();
    /// One more, for tests and labels. A word that spells a number means every spelling of that number.
    void add(std::string_view word);

    [[nodiscard]] bool isMissingInTest(std::string_view text) const;
    [[nodiscard]] bool isMissingLabel(std::string_view text) const;
    /// Missing only beside enough other values: ".", "?", "-".
    [[nodiscard]] bool isDoubtfulLabel(std::string_view text) const;

private:
    [[nodiscard]] bool isNumber(std::string_view text) const;

    std::vector<std::string> words_{"na", "n/a", "null", "nan", "#n/a"};
    std::vector<std::string> doubtful_{".", "?", "-"};
    std::vector<Decimal> numbers_;
};

} // namespace ROCALG_920::labels
