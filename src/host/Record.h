#pragma once

#include <cstddef>
#include <vector>

namespace VexCommon_920 {

/// One case: a fixed number of doubles, addressed by the position of their variable (from 0).
///
/// Life: a value type; all values are 0.0 until they are written. A record that an iterator hands out belongs to
/// that iterator.
/// Failure: an index outside the record throws std::out_of_range, a negative size std::invalid_argument.
class [[gnu::visibility("default")]] Record
{
public:
    explicit Record(int n);

    [[nodiscard]] double& operator[](int i) { return values_[checked(i)]; }
    [[nodiscard]] double operator[](int i) const { return values_[checked(i)]; }
    [[nodiscard]] int GetSize() const noexcept { return static_cast<int>(values_.size()); }

private:
    // Inline: a record pass reads several values of every record. A negative index becomes a huge one.
    [[nodiscard]] std::size_t checked(int i) const
    {
        const auto position = static_cast<std::size_t>(i);
        if (position >= values_.size())
            throwOutside(i);
        return position;
    }
    [[noreturn]] void throwOutside(int i) const;

    std::vector<double> values_;
};

} // namespace VexCommon_920
