#pragma once

#include "host/MultiPassRecordIter.h"
#include "host/Record.h"

/// Record iteration over three columns of a caller: record positions 0, 1 and 2. The columns are only read and must
/// outlive the iterator; one record serves all rows.
class DummyIter : public VexCommon_920::MultiPassRecordIter {
public:
    DummyIter(const double* column0, const double* column1, const double* column2, int count);

    [[nodiscard]] bool HasMore() const override { return position_ < count_; }
    /// The next row, valid until the next call; null after the last one.
    VexCommon_920::Record* Next() override;
    /// 1 when the pass is exhausted, otherwise 0.
    [[nodiscard]] int GetFailReason() const override { return position_ >= count_ ? 1 : 0; }
    int NewPass() override;

private:
    const double* column0_;
    const double* column1_;
    const double* column2_;
    VexCommon_920::Record record_;
    int count_;
    int position_ = 0;
};
