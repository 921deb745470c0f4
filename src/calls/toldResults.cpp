#include "calls/toldResults.h"

#include "numeric/tails.h"

#include <cmath>
#include <numbers>

namespace ROCALG_920::calls {

using VexCommon_920::VexMV;

TwoSidedP twoSidedP(double z) noexcept
{
    const Tail tail = normalUpperTail(std::abs(z));
    return {2.0 * tail.probability, (tail.logarithm + std::numbers::ln2) * std::numbers::log10e};
}

vexroc_record toldRecord(const RunRecord& record)
{
    const auto [ksMaximum, ksCutOff] = record.getKolmogorovSmirnov();
    vexroc_record out{};
    out.group_operation = record.getGroupValueOperation();
    out.ties = record.existTies();
    out.group_value = record.getGroupValue();
    out.positive = record.getPositiveCount();
    out.negative = record.getNegativeCount();
    out.weighted_positive = record.getPosFreqCount();
    out.weighted_negative = record.getNegFreqCount();
    setArea({.area = record.getArea(),
             .giniIndex = record.getGiniIndex(),
             .stdError = record.getStdError(),
             .significance = record.getAsymptoticSig(),
             .lower = record.getCILower(),
             .upper = record.getCIUpper()},
            out);
    out.ks_maximum = ksMaximum;
    out.ks_cut_off = ksCutOff;
    out.curve_rows = static_cast<int>(record.getSensitivitySpecificity().size());
    out.pr_rows = static_cast<int>(record.getPrecisionRecallDraw().size());
    out.distribution_changed = record.isDistrbutionChanged();
    if (const auto& triples = record.triples()) // the record itself knows ties only with a curve
        out.ties = triples->ties();
    return out;
}

void setArea(const AreaTest& test, vexroc_record& record)
{
    record.area = test.area;
    record.std_error = test.stdError;
    record.significance = test.significance;
    record.ci_lower = test.lower;
    record.ci_upper = test.upper;
    record.gini = test.giniIndex;
}

void dropWithoutError(vexroc_record& record)
{
    if (record.std_error == 0) // exact
        record.significance = record.ci_lower = record.ci_upper = VexMV::Missing();
}

void setP(vexroc_record& record)
{
    record.p_value = record.log10_p = VexMV::Missing();
    if (VexMV::IsMissing(record.std_error) || record.std_error == 0)
        return;
    const TwoSidedP p = twoSidedP((record.area - 0.5) / record.std_error);
    record.p_value = p.p;
    record.log10_p = p.log10;
}

vexroc_comparison toldComparison(const ROCComparisonOutStats& found)
{
    vexroc_comparison out{};
    out.difference = found.getAUCDiff();
    out.std_error = found.getStdErrorDiff();
    out.z = found.getZStats();
    out.significance = found.getAsymptoticSig();
    out.ci_lower = found.getCILower();
    out.ci_upper = found.getCIUpper();
    setP(out);
    return out;
}

void setP(vexroc_comparison& comparison)
{
    comparison.p_value = comparison.log10_p = VexMV::Missing();
    if (VexMV::IsMissing(comparison.z))
        return;
    const TwoSidedP p = twoSidedP(comparison.z);
    comparison.p_value = p.p;
    comparison.log10_p = p.log10;
}

void setDifference(double stdError, double zCritical, vexroc_comparison& comparison)
{
    comparison.difference = areaDifference(comparison.first_area, comparison.second_area);
    const DifferenceTest test = testDifference(comparison.difference, stdError, zCritical);
    comparison.std_error = stdError;
    comparison.z = test.z;
    comparison.significance = test.significance;
    comparison.ci_lower = test.lower;
    comparison.ci_upper = test.upper;
    setP(comparison);
}

} // namespace ROCALG_920::calls
