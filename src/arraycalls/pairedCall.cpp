#include "arraycalls/arrayInput.h"
#include "arraycalls/results.h"
#include "inference/PairedComponents.h"
#include "summary/RowRule.h"
#include "vexrocproc/optionwords.h"

#include <array>
#include <cstddef>
#include <vector>

namespace ROCALG_920::arraycalls {
namespace {

/// States and two test values of the same cases.
struct PairedInput {
    const double* actual;
    const double* predicted1;
    const double* predicted2;
    std::size_t size;
};

/// The cases whose two test values are both numbers.
class CompleteCases {
public:
    explicit CompleteCases(const PairedInput& input)
    {
        using Columns = std::array<const double*, 3>;
        const Columns columns{input.actual, input.predicted1, input.predicted2};
        RowRule rule;
        rule.state = 0;
        rule.tests = {1, 2};
        rule.needsAllTests = true;
        for (std::vector<double>* const column : {&actual_, &predicted1_, &predicted2_})
            column->reserve(input.size);
        for (std::size_t i = 0; i < input.size; ++i) {
            if (rule.of(RowOf<Columns>{columns, i}).fate != RowFate::used)
                continue;
            actual_.push_back(input.actual[i]);
            predicted1_.push_back(input.predicted1[i]);
            predicted2_.push_back(input.predicted2[i]);
        }
    }
    [[nodiscard]] PairedInput input() const
    {
        return {actual_.data(), predicted1_.data(), predicted2_.data(), actual_.size()};
    }

private:
    std::vector<double> actual_;
    std::vector<double> predicted1_;
    std::vector<double> predicted2_;
};

auc_res areaOf(const PairedComponents& components, bool larger, double zCritical)
{
    const PlacementSums& placements = components.placements();
    if (!placements.cases().bothStates())
        return areaRecord(placements.cases(), AreaTest());
    return areaRecord(placements.cases(),
                      testArea(placements.pairs().area(larger), stdErrorOfVariance(placements.variance()), zCritical));
}

auc_comparison_res comparePaired(const PairedInput& input, double positiveState, bool larger, double level)
{
    Observations cases1;
    Observations cases2;
    if (!cases1.borrow({input.predicted1, input.actual, positiveState, input.size})
        || !cases2.borrow({input.predicted2, input.actual, positiveState, input.size}))
        return comparePaired(CompleteCases(input).input(), positiveState, larger, level); // once
    const PairedComponents components1(cases1);
    const PairedComponents components2(cases2);
    const double zCritical = criticalValue(level);
    double stdErrorDiff = VexCommon_920::VexMV::Missing();
    if (cases1.counts().bothStates())
        stdErrorDiff = pairedDifference(components1.placements(), components2.placements(),
                                        PairedComponents::products(cases1, components1, components2))
                           .stdErrorDiff;
    return comparisonRecord(areaOf(components1, larger, zCritical), areaOf(components2, larger, zCritical),
                            stdErrorDiff, zCritical);
}

} // namespace
} // namespace ROCALG_920::arraycalls

using namespace ROCALG_920::arraycalls;

auc_comparison_res auc_pairedcomparison(const double* actual, const double* predicted1, const double* predicted2, int n,
                                        const double* positiveValue, const char* /*include*/, const char* larger,
                                        double confidenceLevel)
{
    const bool noCases = actual == nullptr || predicted1 == nullptr || predicted2 == nullptr || n <= 0;
    const PairedInput input{actual, predicted1, predicted2, noCases ? 0 : static_cast<std::size_t>(n)};
    return guarded(
        [&] {
            return comparePaired(input, positiveState(positiveValue), isLarger(larger), usableLevel(confidenceLevel));
        },
        missingComparison());
}
