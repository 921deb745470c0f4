#include "space/ROCBitSet.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using ROCALG_920::ROCBitSet;

TEST(ROCBitSet, ShowsItsWordsAndPositions)
{
    ROCBitSet set;
    EXPECT_EQ(set.toString(), "data:{0}\nBits:[]");
    set.set(1, true);
    set.set(3, true);
    EXPECT_EQ(set.toString(), "data:{10}\nBits:[1:true,3:true]");
    set.set(63, true);
    set.set(64, true);
    EXPECT_EQ(set.toString(), "data:{9223372036854775818,1}\nBits:[1:true,3:true,63:true,64:true]");
}

TEST(ROCBitSet, GrowsOnWritingOnly)
{
    ROCBitSet set;
    EXPECT_FALSE(set.get(1000));
    EXPECT_EQ(set.toString(), "data:{0}\nBits:[]");
    set.set(64, false);
    EXPECT_EQ(set.toString(), "data:{0,0}\nBits:[]");
    set.set(200, true);
    EXPECT_EQ(set.toString(), "data:{0,0,0,256}\nBits:[200:true]");
    set.clear();
    EXPECT_EQ(set.toString(), "data:{0,0,0,0}\nBits:[]");
    EXPECT_EQ(ROCBitSet(63).toString(), "data:{0}\nBits:[]");
    EXPECT_EQ(ROCBitSet(64).toString(), "data:{0,0}\nBits:[]");
}

TEST(ROCBitSet, EqualsByPositionsWhateverTheLength)
{
    ROCBitSet a(10);
    ROCBitSet b(1000);
    EXPECT_EQ(a, b);
    a.set(70, true);
    EXPECT_NE(a, b);
    b.set(70, true);
    EXPECT_EQ(a, b);
    b.set(999, true);
    EXPECT_NE(a, b);
    EXPECT_NE(b, a);
}

TEST(ROCBitSet, ReadsNegativePositionsAsClearAndIgnoresWritingThem)
{
    ROCBitSet set(-5);
    for (const int position : {-1, -64, std::numeric_limits<int>::min()}) {
        set.set(position, true);
        EXPECT_FALSE(set.get(position));
    }
    EXPECT_EQ(set, ROCBitSet());
}

} // namespace
