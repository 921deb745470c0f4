#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace ROCALG_920::labels {

/// Text without the blanks and tabs at its ends.
std::string_view trimmed(std::string_view text) noexcept;

/// The decimal number that a text spells, exact at any length: it is kept as sign, power of ten and digits, of which
/// every number has one form only.
class Decimal {
public:
    /// Digits with at most one decimal sign among them, a sign before and an exponent behind them, blanks around.
    /// Nothing for other text, for a zero before a further digit of the whole part (007), and for exponents beyond
    /// 10^15.
    static std::optional<Decimal> of(std::string_view text, char decimalSign);

    friend bool operator==(const Decimal&, const Decimal&) = default;
    friend std::strong_ordering operator<=>(const Decimal& a, const Decimal& b) noexcept;

private:
    [[nodiscard]] int sign() const noexcept { return digits_.empty() ? 0 : negative_ ? -1 : 1; }

    bool negative_ = false;
    long long magnitude_ = 0; ///< the number is 0.digits times 10 to this power
    std::string digits_;      ///< without zeros at both ends; none for 0
};

} // namespace ROCALG_920::labels
