#include "arraycalls/arrayInput.h"

#include <cmath>

namespace ROCALG_920::arraycalls {

Observations observationsOf(const ArrayInput& input)
{
    const double positive = positiveState(input.positiveValue);
    Observations observations;
    if (observations.borrow({input.predicted, input.actual, positive, input.size()}))
        return observations;
    for (std::size_t i = 0; i < input.size(); ++i)
        if (!std::isnan(input.predicted[i]))
            observations.add(input.actual[i] == positive, input.predicted[i]);
    return observations;
}

} // namespace ROCALG_920::arraycalls
