#pragma once

#include "host/MultiPassRecordIter.h"

#include <cstddef>
#include <span>
#include <vector>

namespace VexCommon_920 {

/// Delivers columns held in memory as records: value c of record r is columns[c][r].
///
/// Life: the columns are not copied and must outlive the iterator. It stands at the first record when it is made;
/// one record object is reused for all of them.
/// Shapes: all columns are equally long; no columns means no records.
/// Failure: columns of different lengths throw std::invalid_argument, which names the first one that differs.
class [[gnu::visibility("default")]] ColumnRecordIter final : public MultiPassRecordIter
{
public:
    explicit ColumnRecordIter(std::vector<std::span<const double>> columns);

    [[nodiscard]] bool HasMore() const override;
    Record* Next() override;
    /// 1 when the pass is exhausted, otherwise 0.
    [[nodiscard]] int GetFailReason() const override;
    /// Always 0.
    int NewPass() override;

private:
    std::vector<std::span<const double>> columns_;
    Record record_;
    std::size_t nRows_;
    std::size_t row_ = 0; ///< next row to deliver
};

} // namespace VexCommon_920
