#pragma once

#include "summary/ValueWalk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
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
    Observations() = default;

    /// Nothing is borrowed. Throws std::bad_alloc and changes nothing when memory is short.
    void add(bool positive, double value)
    {
        if (values_.size() == values_.capacity() || states_.size() == states_.capacity())
            reserve(std::max(firstCapacity, 2 * values_.size())); // both columns grow, or none
        states_.push_back(positive);
        values_.push_back(value);
        (positive ? counts_.positives : counts_.negatives) += 1;
    }
    /// Takes over the arrays' content without copying it; what was collected before is dropped. False, and nothing
    /// changes, when a test value is NaN.
    [[nodiscard]] bool borrow(const BorrowedColumns& columns)
    {
        std::int64_t positives = 0;
        std::int64_t notNumbers = 0;
        for (std::size_t i = 0; i < columns.size(); ++i) { // no branch: several cases at a time
            positives += columns.positive(i);
            notNumbers += std::isnan(columns.value(i));
        }
        if (notNumbers == 0)
            *this = Observations(columns, {positives, static_cast<std::int64_t>(columns.size()) - positives});
        return notNumbers == 0;
    }

    [[nodiscard]] std::size_t size() const noexcept { return borrowed_.count + values_.size(); }
    [[nodiscard]] const StateCounts& counts() const noexcept { return counts_; }
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

private:
    static constexpr std::size_t firstCapacity = 16;

    Observations(const BorrowedColumns& columns, const StateCounts& counts) : borrowed_(columns), counts_(counts) {}
    void reserve(std::size_t count)
    {
        values_.reserve(count);
        states_.reserve(count);
    }

    std::vector<double> values_;
    std::vector<unsigned char> states_;
    BorrowedColumns borrowed_{};
    StateCounts counts_;
};

} // namespace ROCALG_920
