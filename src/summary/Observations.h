#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace ROCALG_920 {

/// Observations kept as two parallel columns, read by position.
struct StoredColumns {
    const double* values;
    const unsigned char* states;
    std::size_t count;

    [[nodiscard]] std::size_t size() const noexcept { return count; }
    [[nodiscard]] double value(std::size_t i) const noexcept { return values[i]; }
    [[nodiscard]] bool positive(std::size_t i) const noexcept { return states[i] != 0; }
};

/// Observations read in place from a caller's arrays of states and test values.
struct BorrowedColumns {
    const double* values;
    const double* states;
    double positiveState; ///< compared exactly
    std::size_t count;

    [[nodiscard]] std::size_t size() const noexcept { return count; }
    [[nodiscard]] double value(std::size_t i) const noexcept { return values[i]; }
    [[nodiscard]] bool positive(std::size_t i) const noexcept { return states[i] == positiveState; }
};

/// The observations of one test variable in the order of their arrival; no test value is NaN.
///
/// They are either collected one by one or borrowed, whole, from arrays that outlive the object. Work over all of
/// them goes through `visit`, which hands a reader for the form at hand to a function, so that no loop asks which
/// form it is.
class Observations {
public:
    void reserve(std::size_t count)
    {
        values_.reserve(count);
        states_.reserve(count);
    }
    /// May cases be added? Borrowed arrays are not ours to extend, and an int has to count the cases.
    [[nodiscard]] bool hasRoom() const noexcept
    {
        return borrowed_.count == 0 && values_.size() < std::numeric_limits<int>::max();
    }
    /// There is room. Throws std::bad_alloc and changes nothing when memory is short.
    void add(bool positive, double value)
    {
        if (values_.size() == values_.capacity() || states_.size() == states_.capacity())
            reserve(std::max(firstCapacity, 2 * values_.size())); // both columns grow, or none
        states_.push_back(positive);
        values_.push_back(value);
    }
    /// Takes over the arrays' content without copying it; what was collected before is dropped.
    void borrow(BorrowedColumns columns) { *this = Observations(columns); }

    [[nodiscard]] std::size_t size() const noexcept { return borrowed_.count + values_.size(); }
    [[nodiscard]] double value(std::size_t i) const noexcept
    {
        return borrowed_.count > 0 ? borrowed_.value(i) : values_[i];
    }
    [[nodiscard]] bool positive(std::size_t i) const noexcept
    {
        return borrowed_.count > 0 ? borrowed_.positive(i) : states_[i] != 0;
    }
    /// Calls work(columns), where columns has size(), value(i) and positive(i), and returns what it returns.
    template <class Work>
    decltype(auto) visit(Work&& work) const
    {
        if (borrowed_.count > 0)
            return std::forward<Work>(work)(borrowed_);
        return std::forward<Work>(work)(StoredColumns{values_.data(), states_.data(), values_.size()});
    }

    Observations() = default;

private:
    static constexpr std::size_t firstCapacity = 16;

    explicit Observations(BorrowedColumns columns) : borrowed_(columns) {}

    std::vector<double> values_;
    std::vector<unsigned char> states_;
    BorrowedColumns borrowed_{};
};

} // namespace ROCALG_920
