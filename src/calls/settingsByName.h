#pragma once

#include "calls/AnalysisRequest.h"

#include <array>
#include <span>
#include <string_view>
#include <variant>

namespace ROCALG_920::calls {

/// A setting of a request as callers of other languages reach it.
struct NamedSetting {
    using Column = void (*)(AnalysisRequest&, int);
    using Number = void (*)(AnalysisRequest&, double);
    struct Word {
        std::array<std::string_view, 9> words; ///< the rest is empty; the first one is in force before
        void (*set)(AnalysisRequest&, int);    ///< takes the position of the word
    };

    std::string_view name;
    std::variant<Column, Number, Word> set;
};

/// All of them, in the order in which the header tells of them.
std::span<const NamedSetting> namedSettings() noexcept;

// Each throws when no setting of its kind has the name, or when the setting cannot have the value, with what can be.

void setColumn(AnalysisRequest& request, std::string_view setting, int column);
void setNumber(AnalysisRequest& request, std::string_view setting, double value);
/// The case of the word's letters does not matter.
void setWord(AnalysisRequest& request, std::string_view setting, std::string_view word);
/// The direction of one test; null takes it back.
void setDirection(AnalysisRequest& request, int column, const char* word);

/// Throws where there is no such column.
void requireColumn(const AnalysisRequest& request, std::string_view setting, int column);
/// Throws for NaN.
void requireNumber(std::string_view setting, double value);

} // namespace ROCALG_920::calls
