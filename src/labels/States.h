#pragma once

#include "labels/LabelColumn.h"
#include "vexrocproc/remarks.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ROCALG_920::labels {

/// What the rows with a value are.
enum class State { negative, positive, other };

/// Which values are positive states, and which negative.
struct StateChoice {
    /// The values on that side of a number are positive, the others negative.
    struct Cut {
        std::string sign; ///< ">=", ">", "<=" or "<"
        std::string bound;
    };
    std::vector<std::string> positive;
    std::vector<std::string> negative; ///< none: not said
    bool others = false;               ///< all that are not positive are negative
    std::optional<Cut> cut = {};       ///< instead of all of the above
};

/// A choice that the values of the column do not allow; says what to do, in words of the voice.
class UnfitChoice : public std::runtime_error {
public:
    explicit UnfitChoice(const std::string& text, std::array<std::string, 2> ways = {})
        : std::runtime_error(text), waysOn(std::move(ways))
    {
    }
    std::array<std::string, 2> waysOn; ///< where the negative values were not said
};

/// The state of each value of the column. Missing words that the choice names become values. Throws UnfitChoice.
std::vector<State> statesOf(LabelColumn& column, const StateChoice& choice, vexroc_voice voice);

} // namespace ROCALG_920::labels
