#include "host/ColumnRecordIter.h"

#include <gmock/gmock.h>

#include <array>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;
using VexCommon_920::ColumnRecordIter;
using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::Record;

using Rows = std::vector<std::vector<double>>;

/// All rows from where the iterator stands.
Rows remainingRows(MultiPassRecordIter& iter)
{
    Rows rows;
    while (iter.HasMore()) {
        const Record& record = *iter.Next();
        rows.emplace_back();
        for (int i = 0; i < record.GetSize(); ++i)
            rows.back().push_back(record[i]);
    }
    return rows;
}

TEST(Record, TurnsAwayAnIndexOutside)
{
    Record record(3);
    const Record& readOnly = record;
    EXPECT_THROW(static_cast<void>(readOnly[3]), std::out_of_range);
    EXPECT_THAT([&] { record[-1] = 1.0; },
                ThrowsMessage<std::out_of_range>(AllOf(HasSubstr("index -1"), HasSubstr("3 values"))));
    EXPECT_THROW(Record(-1), std::invalid_argument);
}

TEST(ColumnRecordIter, DeliversTheRowsInEveryPassFromTheColumnsInPlace)
{
    const std::array state{1.0, 0.0, 1.0};
    std::vector test{0.3, 0.2, 0.7};
    ColumnRecordIter iter({state, test});
    test[2] = 0.1;
    const Rows rows{{1.0, 0.3}, {0.0, 0.2}, {1.0, 0.1}};
    EXPECT_EQ(iter.GetFailReason(), 0);
    EXPECT_EQ(remainingRows(iter), rows);
    EXPECT_EQ(iter.Next(), nullptr);
    EXPECT_EQ(iter.GetFailReason(), 1);

    iter.NewPass();
    EXPECT_EQ(iter.GetFailReason(), 0);
    iter.Next();
    iter.NewPass(); // in the middle of a pass
    EXPECT_EQ(remainingRows(iter), rows);
    EXPECT_FALSE(ColumnRecordIter({}).HasMore());

    const std::vector<double> four(4);
    const auto unequal = [&] { ColumnRecordIter iterator(std::vector<std::span<const double>>{state, test, four}); };
    EXPECT_THAT(
        unequal,
        ThrowsMessage<std::invalid_argument>(AllOf(HasSubstr("column 2 has 4 values"), HasSubstr("column 0 has 3"))));
}

} // namespace
