#include "arraycalls/DummyIter.h"

DummyIter::DummyIter(const double* column0, const double* column1, const double* column2, int count)
    : column0_(column0), column1_(column1), column2_(column2), record_(3), count_(count)
{
}

VexCommon_920::Record* DummyIter::Next()
{
    if (position_ >= count_)
        return nullptr;
    record_[0] = column0_[position_];
    record_[1] = column1_[position_];
    record_[2] = column2_[position_];
    ++position_;
    return &record_;
}

int DummyIter::NewPass()
{
    position_ = 0;
    return 0;
}
