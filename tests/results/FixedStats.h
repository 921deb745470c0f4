#pragma once

#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "stats/ROCComparisonStats.h"
#include "stats/ROCStats.h"

#include <initializer_list>
#include <utility>

/// Statistics and comparisons whose values a test names, and spaces in one expression.
namespace results_test {

struct Case {
    bool positive;
    double value;
    int weight = 1;
};

struct CurveRequest {
    bool needPR = true;
    bool needROC = true;
};

inline ROCALG_920::ROCSpace spaceOf(std::initializer_list<Case> cases, CurveRequest request = {})
{
    ROCALG_920::ROCSpace space(true, true, request.needPR, request.needROC, true);
    for (const Case& c : cases)
        space.update(c.positive, c.value, c.weight);
    return space;
}

/// Two positives (2, 4) and two negatives (1, 3). The placement values of the positives are 1/2 and 1, those of the
/// negatives 1 and 1/2: area 3/4, variance 1/8, of which the root squared is not 1/8 in doubles.
inline ROCALG_920::ROCSpace interleavedSpace() { return spaceOf({{false, 1}, {true, 2}, {false, 3}, {true, 4}}); }

inline const double missing = VexCommon_920::VexMV::Missing();

struct FixedStats final : ROCALG_920::ROCStats {
    struct Values {
        double area = missing, giniIndex = missing, stdError = missing, asymptoticSig = missing;
        std::pair<double, double> interval = {missing, missing};
    };

    FixedStats(ROCALG_920::ROCSpace& itsSpace, Values itsValues) : space(itsSpace), values(itsValues) {}
    explicit FixedStats(ROCALG_920::ROCSpace& itsSpace, double area = missing, double stdError = missing)
        : FixedStats(itsSpace, Values{.area = area, .stdError = stdError})
    {
    }
    int getTestVarInd() const override { return space.getTestVar(); }
    double getArea() const override { return values.area; }
    double getGiniIndex() const override { return values.giniIndex; }
    double getStdError() const override { return values.stdError; }
    double getAsymptoticSignificant() const override { return values.asymptoticSig; }
    std::pair<double, double> getConfidenceInterval() const override { return values.interval; }
    ROCALG_920::ROCSpace& getROCSpace() override { return space; }

    ROCALG_920::ROCSpace& space;
    Values values;
};

struct FixedComparison final : ROCALG_920::ROCComparisonStats {
    struct Values {
        double covariance = missing, z = missing, zSig = missing;
        std::pair<double, double> interval = {missing, missing};
    };

    explicit FixedComparison(Values itsValues) : values(itsValues) {}
    double getCovariance() const override { return values.covariance; }
    double getZ() const override { return values.z; }
    double getZSig() const override { return values.zSig; }
    std::pair<double, double> getZInterval() const override { return values.interval; }
    bool computeStats(VexCommon_920::MultiPassRecordIter&) override { return true; }

    Values values;
};

} // namespace results_test
