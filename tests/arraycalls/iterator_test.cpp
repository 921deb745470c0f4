#include "arraycalls/DummyIter.h"

#include <gtest/gtest.h>

#include <array>

namespace {

TEST(DummyIter, DeliversTheRowsInEveryPass)
{
    const std::array state{1.0, 0.0};
    const std::array first{0.3, 0.2};
    const std::array second{7.0, 8.0};
    DummyIter iter(state.data(), first.data(), second.data(), 2);
    for (int pass = 1; pass <= 2; ++pass) {
        for (std::size_t row = 0; row < 2; ++row) {
            ASSERT_TRUE(iter.HasMore());
            EXPECT_EQ(iter.GetFailReason(), 0);
            const VexCommon_920::Record* record = iter.Next();
            ASSERT_NE(record, nullptr);
            EXPECT_EQ((*record)[0], state[row]);
            EXPECT_EQ((*record)[1], first[row]);
            EXPECT_EQ((*record)[2], second[row]);
        }
        EXPECT_FALSE(iter.HasMore());
        EXPECT_EQ(iter.Next(), nullptr);
        EXPECT_EQ(iter.GetFailReason(), 1);
        EXPECT_EQ(iter.NewPass(), 0);
    }
}

} // namespace
