#pragma once

#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCStats.h"

#include <utility>

namespace results_test {

inline constexpr double missing = VexCommon_920::VexMV::Missing();

/// Statistics of a space whose area and standard error a test names.
struct FixedStats final : ROCALG_920::ROCStats {
    explicit FixedStats(ROCALG_920::ROCSpace& itsSpace, double itsArea = missing, double itsStdError = missing)
        : space(itsSpace), area(itsArea), stdError(itsStdError)
    {
    }
    int getTestVarInd() const override { return space.getTestVar(); }
    double getArea() const override { return area; }
    double getGiniIndex() const override { return missing; }
    double getStdError() const override { return stdError; }
    double getAsymptoticSignificant() const override { return missing; }
    std::pair<double, double> getConfidenceInterval() const override { return {missing, missing}; }
    ROCALG_920::ROCSpace& getROCSpace() override { return space; }

    ROCALG_920::ROCSpace& space;
    double area;
    double stdError;
};

} // namespace results_test
