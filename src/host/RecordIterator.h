#pragma once

#include "host/Record.h"

namespace VexCommon_920 {

/// Forward iteration over the records of one pass. A host derives from MultiPassRecordIter.
class [[gnu::visibility("default")]] RecordIterator
{
public:
    virtual ~RecordIterator();

    /// True while a further record can be read in the current pass.
    [[nodiscard]] virtual bool HasMore() const = 0;
    /// The next record, or null when the pass is exhausted. Owned by the iterator, valid until the next call.
    virtual Record* Next() = 0;
    /// Why the last read failed: 0 when it did not. Other values are the host's own.
    [[nodiscard]] virtual int GetFailReason() const = 0;
};

} // namespace VexCommon_920
