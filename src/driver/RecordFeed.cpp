#include "driver/RecordFeed.h"

#include "vexrocproc/ROCStatusCodes.h"

#include <cstddef>
#include <cstdint>

namespace ROCALG_920 {

using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::Record;

namespace {

constexpr std::int64_t recordsPerAnnouncement = 1000;

} // namespace

RecordFeed::RecordFeed(const ROCSetting& setting, const GroupSplit& split, TestSpaces& spaces) : spaces_(spaces)
{
    rule_.state = setting.getStateVar();
    rule_.positiveState = setting.getValueOfStateVar();
    rule_.group = split.groupVar();
    rule_.groups = split.values();
    rule_.weight = setting.getFrequencyWeightVar();
    rule_.needsAllTests = setting.getComparisonType() == ROCConst_920::PairedComparison;
    for (const TestSpaces::Variable& variable : spaces.variables())
        rule_.tests.push_back(variable.index);
}

int RecordFeed::readAll(MultiPassRecordIter& records, RunMonitor& monitor)
{
    std::int64_t count = 0;
    while (records.HasMore()) {
        if (monitor.cancelled())
            return statusCode::cancelled;
        if (count % recordsPerAnnouncement == 0)
            monitor.announceRecords(count);
        const Record* const record = records.Next();
        if (record == nullptr)
            break;
        take(*record);
        ++count;
    }
    monitor.setRecords(count);
    monitor.announceShare(0.2);
    records.NewPass();
    return positiveSeen_ ? statusCode::noError : statusCode::stateValueNotFound;
}

void RecordFeed::take(const Record& record)
{
    const RowPart part = rule_.of(record);
    positiveSeen_ = positiveSeen_ || part.positive;
    if (part.fate != RowFate::used)
        return;
    for (TestSpaces::Variable& variable : spaces_.variables())
        variable.spaces[static_cast<std::size_t>(part.group)].update(part.positive, record[variable.index], part.cases);
}

} // namespace ROCALG_920
