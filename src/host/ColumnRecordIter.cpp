#include "host/ColumnRecordIter.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace VexCommon_920 {

namespace {

/// The length that all columns share.
std::size_t commonLength(const std::vector<std::span<const double>>& columns)
{
    const std::size_t length = columns.empty() ? 0 : columns.front().size();
    for (std::size_t c = 0; c < columns.size(); ++c) {
        if (columns[c].size() != length)
            throw std::invalid_argument("ColumnRecordIter: column " + std::to_string(c) + " has "
                                        + std::to_string(columns[c].size()) + " values, column 0 has "
                                        + std::to_string(length) + "; give columns of equal length");
    }
    return length;
}

} // namespace

ColumnRecordIter::ColumnRecordIter(std::vector<std::span<const double>> columns)
    : columns_(std::move(columns)), record_(static_cast<int>(columns_.size())), nRows_(commonLength(columns_))
{
}

bool ColumnRecordIter::HasMore() const { return row_ < nRows_; }

Record* ColumnRecordIter::Next()
{
    if (row_ >= nRows_)
        return nullptr;
    int position = 0;
    for (const std::span<const double> column : columns_)
        record_[position++] = column[row_];
    ++row_;
    return &record_;
}

int ColumnRecordIter::GetFailReason() const { return row_ >= nRows_ ? 1 : 0; }

int ColumnRecordIter::NewPass()
{
    row_ = 0;
    return 0;
}

} // namespace VexCommon_920
