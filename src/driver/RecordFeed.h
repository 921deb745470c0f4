#pragma once

#include "driver/GroupSplit.h"
#include "driver/RunMonitor.h"
#include "driver/TestSpaces.h"
#include "host/MultiPassRecordIter.h"
#include "host/Record.h"
#include "summary/RowRule.h"
#include "vexrocproc/ROCSetting.h"

namespace ROCALG_920 {

/// Feeds records to the spaces of their group in every variable. In a paired analysis a case takes part in all
/// variables or in none, so that all spaces hold the same cases in the same order.
class RecordFeed {
public:
    RecordFeed(const ROCSetting& setting, const GroupSplit& split, TestSpaces& spaces);

    /// One pass over all records, which ends with a new one. noError, or the code that ends the run.
    int readAll(VexCommon_920::MultiPassRecordIter& records, RunMonitor& monitor);

private:
    void take(const VexCommon_920::Record& record);

    RowRule rule_;
    TestSpaces& spaces_;
    bool positiveSeen_ = false; ///< some record had the positive state, whether it took part or not
};

} // namespace ROCALG_920
