#include "arraycalls/arrayInput.h"

namespace ROCALG_920::arraycalls {

void fill(ROCSpace& space, const ArrayInput& input)
{
    if (space.borrow({input.predicted, input.actual, input.positiveState(), input.size()}))
        return;
    for (std::size_t i = 0; i < input.size(); ++i)
        space.update(input.actual[i] == input.positiveState(), input.predicted[i], 1);
}

} // namespace ROCALG_920::arraycalls
