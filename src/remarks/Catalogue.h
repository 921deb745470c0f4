#pragma once

#include "vexrocproc/remarks.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

/// What a reader of results is told beside the numbers: one place for all texts, codes and rules.
namespace ROCALG_920::remarks {

/// A kind of remark. Its line reads "says: subjects; advice".
struct Kind {
    std::string_view code; ///< stable
    bool caution;
    std::string_view says;
    std::string_view advice = {}; ///< what to do; with place holders of the spellings in braces. Empty for nothing
};

/// How options and arguments are spelled that an advice names.
struct Spelling {
    std::string_view placeHolder;
    std::array<std::string_view, 4> inVoice; ///< by enum vexroc_voice; with NAME for a test and WORD for its direction
};

/// All kinds: notes, then cautions.
[[nodiscard]] std::span<const Kind> kinds() noexcept;
[[nodiscard]] std::span<const Spelling> spellings() noexcept;
/// The kind with this code; null when there is none.
[[nodiscard]] const Kind* kindOf(std::string_view code) noexcept;
/// The text with its place holders spelled in a voice.
[[nodiscard]] std::string inVoice(std::string_view text, vexroc_voice voice);

/// The text with every `from` replaced.
[[nodiscard]] std::string replaced(std::string text, std::string_view from, std::string_view to);

} // namespace ROCALG_920::remarks
