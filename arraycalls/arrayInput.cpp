#include "arraycalls/arrayInput.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace ROCALG_920::arraycalls {

void fill(ROCSpace& space, const ArrayInput& input)
{
    const std::span<const double> values(input.predicted, input.size());
    if (std::ranges::none_of(values, [](double v) { return std::isnan(v); })) {
        space.borrow({values.data(), input.actual, input.positiveState(), values.size()});
        return;
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        space.update(input.actual[i] == input.positiveState(), values[i], 1);
}

} // namespace ROCALG_920::arraycalls
