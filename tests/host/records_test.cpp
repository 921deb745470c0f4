#include "host/ColumnRecordIter.h"

#include <gmock/gmock.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
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

TEST(Record, CopiesByValue)
{
    Record original(2);
    original[1] = 2.5;
    const Record copy = original;
    original[1] = 7.0;
    EXPECT_EQ(copy[0], 0.0);
    EXPECT_EQ(copy[1], 2.5);
}

TEST(Record, TurnsAwayAnIndexOutside)
{
    Record record(3);
    const Record& readOnly = record;
    for (const int i : {-1, 3, 1'000'000})
        EXPECT_THROW(static_cast<void>(readOnly[i]), std::out_of_range) << i;
    EXPECT_THAT([&] { record[-1] = 1.0; },
                ThrowsMessage<std::out_of_range>(AllOf(HasSubstr("index -1"), HasSubstr("3 values"))));
    EXPECT_THROW(static_cast<void>(Record(0)[0]), std::out_of_range);
    EXPECT_THROW(Record(-1), std::invalid_argument);
}

TEST(ColumnRecordIter, DeliversTheRowsInEveryPass)
{
    const std::array state{1.0, 0.0, 1.0};
    const std::vector test{0.3, 0.2, 0.1};
    ColumnRecordIter iter({state, test});
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
}

TEST(ColumnRecordIter, ReadsTheColumnsInPlace)
{
    std::vector values{1.0, 2.0};
    ColumnRecordIter iter({values});
    values[1] = 5.0;
    EXPECT_THAT(remainingRows(iter), ElementsAre(ElementsAre(1.0), ElementsAre(5.0)));
}

TEST(ColumnRecordIter, WithoutColumnsOrRowsHasNoRecords)
{
    ColumnRecordIter noColumns({});
    ColumnRecordIter noRows({std::span<const double>{}, std::span<const double>{}});
    for (ColumnRecordIter* iter : {&noColumns, &noRows}) {
        EXPECT_FALSE(iter->HasMore());
        EXPECT_EQ(iter->Next(), nullptr);
    }
}

TEST(ColumnRecordIter, NamesTheColumnOfAnotherLength)
{
    const std::vector<double> three(3);
    const std::vector<double> four(4);
    EXPECT_THAT([&] { ColumnRecordIter({three, three, four}); },
                ThrowsMessage<std::invalid_argument>(
                    AllOf(HasSubstr("column 2 has 4 values"), HasSubstr("column 0 has 3"))));
}

} // namespace
