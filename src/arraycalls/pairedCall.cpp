#include "arraycalls/arrayInput.h"
#include "arraycalls/results.h"
#include "inference/TestAndInterval.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocPairedCompare.h"
#include "summary/RowRule.h"
#include "vexrocproc/arraycalls.h"
#include "vexrocproc/optionwords.h"

#include <array>
#include <cstddef>
#include <tuple>
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

auc_res areaRecord(ROCPairedStats& stats)
{
    auc_res res = missingArea();
    res.posCount = stats.getROCSpace().getPositiveCount();
    res.negCount = stats.getROCSpace().getNegtiveCount();
    res.area = stats.getArea();
    res.stdError = stdErrorOfVariance(stats.getStdError()); // a variance, in paired statistics
    res.asymptoticSig = stats.getAsymptoticSignificant();
    std::tie(res.ciLower, res.ciUpper) = stats.getConfidenceInterval();
    return res;
}

auc_comparison_res comparePaired(const PairedInput& input, double positiveState, bool includeCutOff, bool larger,
                                 double level)
{
    ROCSpace space1(includeCutOff, larger, false, false, true);
    ROCSpace space2 = space1;
    if (!space1.borrow({input.predicted1, input.actual, positiveState, input.size})
        || !space2.borrow({input.predicted2, input.actual, positiveState, input.size}))
        return comparePaired(CompleteCases(input).input(), positiveState, includeCutOff, larger, level); // once
    ROCPairedStats stats1(space1, larger, level);
    ROCPairedStats stats2(space2, larger, level);
    RocPairedCompare comparison(stats1, stats2, larger, level, 0, positiveState);
    comparison.computeOverSpaces(); // the same as a pass over records of these arrays

    auc_comparison_res res = missingComparison();
    res.first = areaRecord(stats1);
    res.second = areaRecord(stats2);
    res.z = comparison.getZ();
    res.zSig = comparison.getZSig();
    res.areaDiff = areaDifference(res.first.area, res.second.area);
    res.stdErrorDiff = comparison.getStdErrorDiff();
    std::tie(res.ciLower, res.ciUpper) = comparison.getZInterval();
    return res;
}

} // namespace
} // namespace ROCALG_920::arraycalls

using namespace ROCALG_920::arraycalls;

auc_comparison_res auc_pairedcomparison(const double* actual, const double* predicted1, const double* predicted2, int n,
                                        const double* positiveValue, const char* include, const char* larger,
                                        double confidenceLevel)
{
    const bool noCases = actual == nullptr || predicted1 == nullptr || predicted2 == nullptr || n <= 0;
    const PairedInput input{actual, predicted1, predicted2, noCases ? 0 : static_cast<std::size_t>(n)};
    return guarded(
        [&] {
            return comparePaired(input, positiveValue != nullptr ? *positiveValue : 1.0, isInclude(include),
                                 isLarger(larger), usableLevel(confidenceLevel));
        },
        missingComparison());
}
