#pragma once

#include "host/RecordIterator.h"

namespace VexCommon_920 {

/// Iteration that can start again: an analysis reads the data in one or more passes over the same records.
///
/// Every pass must deliver the same records in the same order. Data that lie in memory as columns need no class
/// of their own: see ColumnRecordIter.
class [[gnu::visibility("default")]] MultiPassRecordIter : public RecordIterator
{
public:
    ~MultiPassRecordIter() override;

    /// Restarts at the first record. The answer is not used.
    virtual int NewPass() = 0;
};

} // namespace VexCommon_920
