#include "host/Record.h"

#include <stdexcept>
#include <string>

namespace VexCommon_920 {

namespace {

std::size_t checkedSize(int n)
{
    if (n < 0)
        throw std::invalid_argument("Record: the number of values is " + std::to_string(n) + ", must be 0 or more");
    return static_cast<std::size_t>(n);
}

} // namespace

Record::Record(int n) : values_(checkedSize(n)) {}

void Record::throwOutside(int i) const
{
    throw std::out_of_range("Record: index " + std::to_string(i) + " is outside a record of "
                            + std::to_string(values_.size()) + " values");
}

} // namespace VexCommon_920
