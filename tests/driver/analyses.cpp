#include "tests/driver/analyses.h"

#include "tests/support/Sample.h"

namespace roctest {

using ROCALG_920::ROCSetting;

namespace {

constexpr Analysis everyKind[] = {
    {"areas", [](ROCSetting&) {}, 1},
    {"smaller is positive, cut-offs excluded",
     [](ROCSetting& s) {
         s.setDirection(ROCConst_920::SmallerMorePositive);
         s.setClassification(ROCConst_920::Exclude);
         s.setConfidenceLevel(0.9);
     },
     1},
    {"precision-recall points, weights",
     [](ROCSetting& s) {
         s.setNeedPR(true);
         s.setFrequencyWeightVar(weight);
     },
     1},
    {"precision-recall points along false positives, no curve",
     [](ROCSetting& s) {
         s.setNeedPR(true);
         s.setNeedROC(false);
         s.setPRInterpolationType(ROCConst_920::AlongFP);
     },
     1},
    {"groups at a cut point", [](ROCSetting& s) { s.setCutOffGroupVar(group, 4.0); }, 1},
    {"groups at a mid point", [](ROCSetting& s) { s.setMidPointGroupVar(group); }, 2},
    {"one group of a constant", [](ROCSetting& s) { s.setMidPointGroupVar(constant); }, 2},
    {"independent comparison of selected groups",
     [](ROCSetting& s) {
         s.setSelectGroupVar(group, 7.0, 2.0);
         s.setComparisonType(ROCConst_920::IndependentComparison);
     },
     1},
    {"independent comparison of two-valued groups, bi-negative",
     [](ROCSetting& s) {
         s.setCutOffGroupVar(code, 0.5);
         s.setDistribution(ROCConst_920::BiNegativeExponential);
         s.setComparisonType(ROCConst_920::IndependentComparison);
     },
     1},
    {"independent comparison at a mid point",
     [](ROCSetting& s) {
         s.setMidPointGroupVar(group);
         s.setComparisonType(ROCConst_920::IndependentComparison);
     },
     2},
    {"paired comparison", [](ROCSetting& s) { s.setComparisonType(ROCConst_920::PairedComparison); }, 1},
    {"paired comparison, weights, the group ignored",
     [](ROCSetting& s) {
         s.setTestVars({test1, test2, test1});
         s.setMidPointGroupVar(group);
         s.setFrequencyWeightVar(weight);
         s.setComparisonType(ROCConst_920::PairedComparison);
     },
     1},
};

} // namespace

std::span<const Analysis> analyses() { return everyKind; }

ROCSetting areasOf(const std::vector<int>& testVars)
{
    ROCSetting setting;
    setting.setStateVar(state, 1.0);
    setting.setTestVars(testVars);
    return setting;
}

ROCSetting settingOf(const Analysis& analysis)
{
    ROCSetting setting = areasOf({test1, test2, test3});
    analysis.configure(setting);
    return setting;
}

HostData analysisData(std::size_t size)
{
    Random random(7);
    const auto below = [&](unsigned limit) { return static_cast<double>(random() % limit); };
    HostData data;
    using VexXML_920::IVexVariable;
    for (int column = state; column <= constant; ++column)
        data.add({}, column == code ? IVexVariable::twoValued : IVexVariable::plainValues);
    for (std::size_t i = 0; i < size; ++i) {
        const double row[] = {below(2), below(12), below(12), below(6), below(10), below(2), below(4), 4.0};
        for (std::size_t c = 0; c < data.columns.size(); ++c)
            data.columns[c].push_back(row[c]);
    }
    return data;
}

} // namespace roctest
