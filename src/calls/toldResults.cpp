#include "calls/toldResults.h"

namespace ROCALG_920::calls {

using VexCommon_920::VexMV;

const char* wordOf(AreaRule rule) noexcept { return areaRuleWords[static_cast<std::size_t>(rule)].data(); }

const char* wordOf(Alternative alternative) noexcept
{
    return alternativeWords[static_cast<std::size_t>(alternative)].data();
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

void tellLimits(const AreaInference& found, vexroc_record& record)
{
    record.ci_lower = found.limits.lower;
    record.ci_upper = found.limits.upper;
    record.interval_rule = wordOf(found.interval);
    record.edge = found.edge;
    record.percentile = found.percentile;
    record.held = found.held;
}

void tellTest(const AreaInference& found, Alternative alternative, vexroc_record& record)
{
    record.p_value = found.p;
    record.log10_p = found.log10P;
    record.p_method = found.pMethod.data(); // a literal
    record.alternative = wordOf(alternative);
    record.null_area = found.null;
    record.z = found.z;
    record.u = found.u;
    record.exact_steps = found.exactSteps;
    record.bootstrap_error = found.bootstrapError;
}

void setPOfRecord(Alternative alternative, vexroc_record& record)
{
    record.p_value = record.log10_p = record.z = VexMV::Missing();
    if (VexMV::IsMissing(record.std_error) || record.std_error == 0)
        return;
    record.z = (record.area - 0.5) / record.std_error;
    const PValue p = pOfNormal(record.z, alternative);
    record.p_value = p.p;
    record.log10_p = p.log10;
}

vexroc_cut_off toldCutOff(const OperatingPoint& point)
{
    return toldCutOff(point, {sensitivity(point.counts), specificity(point.counts)});
}

vexroc_cut_off toldCutOff(const OperatingPoint& point, const std::pair<double, double>& sensSpec)
{
    vexroc_cut_off out{};
    out.cut_off = point.cutOff;
    out.sensitivity = sensSpec.first;
    out.specificity = sensSpec.second;
    out.true_positive = point.counts.truePositives;
    out.false_positive = point.counts.falsePositives;
    out.true_negative = point.counts.trueNegatives;
    out.false_negative = point.counts.falseNegatives;
    return out;
}

vexroc_comparison toldComparison(const ROCComparisonOutStats& found, Alternative alternative)
{
    vexroc_comparison out{};
    out.difference = found.getAUCDiff();
    out.std_error = found.getStdErrorDiff();
    out.z = found.getZStats();
    out.significance = found.getAsymptoticSig();
    out.ci_lower = found.getCILower();
    out.ci_upper = found.getCIUpper();
    setP(alternative, out);
    return out;
}

void setP(Alternative alternative, vexroc_comparison& comparison)
{
    comparison.alternative = wordOf(alternative);
    comparison.p_value = comparison.log10_p = VexMV::Missing();
    if (VexMV::IsMissing(comparison.z))
        return;
    const PValue p = pOfNormal(comparison.z, alternative);
    comparison.p_value = p.p;
    comparison.log10_p = p.log10;
}

void setDifference(double stdError, double zCritical, Alternative alternative, vexroc_comparison& comparison)
{
    comparison.difference = areaDifference(comparison.first_area, comparison.second_area);
    const DifferenceTest test = testDifference(comparison.difference, stdError, zCritical);
    comparison.std_error = stdError;
    comparison.z = test.z;
    comparison.significance = test.significance;
    comparison.ci_lower = test.lower;
    comparison.ci_upper = test.upper;
    setP(alternative, comparison);
}

} // namespace ROCALG_920::calls
