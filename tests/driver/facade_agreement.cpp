#include "tests/driver/facade_agreement.h"

#include "tests/support/calls.h"
#include "tests/support/oracle.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace roctest {
namespace {

using namespace ROCALG_920;
using namespace ROCConst_920;

Numbers areaNumbers(const ROCOutBase& record)
{
    return {{double(record.getPositiveCount())},
            {double(record.getNegativeCount())},
            {record.getArea()},
            {record.getStdError()},
            {record.getAsymptoticSig()},
            {record.getCILower()},
            {record.getCIUpper()}};
}

/// Cases that a record stands for, and the sums of their weights.
struct Cases {
    Sample sample;
    double posWeight = 0.0;
    double negWeight = 0.0;
};

/// One finished run beside the columns that it read.
class Comparison {
public:
    Comparison(const ROCSetting& setting, const HostData& data, const ROCOutputs& results)
        : setting_(setting), data_(data), results_(results), records_(results.getROCBaseStats()),
          paired_(setting.getComparisonType() == PairedComparison),
          words_{setting.isIncludeCutOff() ? "include" : "exclude",
                 setting.isLargerTestMorePositive() ? "larger" : "smaller",
                 setting.getPRInterpolationType() == AlongTP ? "davis-goadrich" : "keilwagen", "nonparam"}
    {
        std::ranges::copy_if(setting.getTestVars(), std::back_inserter(testVars_),
                             [&](int v) { return v >= 0 && v != setting.getStateVar(); });
        const auto unequal = [](const ROCOutBase* r) { return r->getPositiveCount() != r->getNegativeCount(); };
        const bool biNegative = setting.getDistribution() == BiNegativeExponential && !paired_;
        changed_ = biNegative && std::ranges::any_of(records_, unequal);
        if (biNegative && !changed_)
            words_.distribution = "bi-negative";
    }

    std::string run()
    {
        const std::size_t groups = testVars_.empty() ? 0 : records_.size() / testVars_.size();
        require(groups >= 1 && groups <= 2 && groups * testVars_.size() == records_.size(), "number of records");
        for (std::size_t i = 0; i < records_.size() && finding_.empty(); ++i) {
            require(records_[i]->getTestVarInd() == testVars_[i / groups], "test variable");
            checkRecord(*records_[i], casesOf(i, groups, testVars_[i / groups]));
        }
        checkComparisons(groups);
        return finding_;
    }

    /// The warnings that follow from the records.
    [[nodiscard]] std::vector<std::vector<long>> warnings() const
    {
        std::vector<std::vector<long>> expected;
        std::vector<long> ties{statusCode::tiesExist};
        const std::size_t groups = records_.size() / testVars_.size();
        for (std::size_t entry = 0; entry < testVars_.size(); ++entry)
            if (records_[entry * groups]->existTies() || records_[(entry + 1) * groups - 1]->existTies())
                ties.push_back(testVars_[entry]);
        if (ties.size() > 1)
            expected.push_back(ties);
        if (changed_)
            expected.push_back({statusCode::distributionChanged});
        return expected;
    }

private:
    void require(bool holds, const char* what)
    {
        if (!holds && finding_.empty())
            finding_ = what;
    }
    [[nodiscard]] double at(int variable, std::size_t row) const
    {
        return data_.columns[static_cast<std::size_t>(variable)][row];
    }

    /// Does the row belong to the group of record i? The second of two equal values gets nothing, and a group that is
    /// alone gets everything.
    [[nodiscard]] bool inGroup(std::size_t i, std::size_t groups, std::size_t row) const
    {
        const ROCOutBase& record = *records_[i];
        if (groups == 1)
            return true;
        const double value = at(record.getGroupVarInd(), row);
        switch (record.getGroupValueOperation()) {
        case Less: return !(value >= record.getGroupValue());
        case GreaterOrEqual: return value >= record.getGroupValue();
        case Equal: break;
        }
        return value == record.getGroupValue() && (i % 2 == 0 || value != records_[i - 1]->getGroupValue());
    }
    [[nodiscard]] double weight(std::size_t row) const
    {
        if (setting_.getFrequencyWeightVar() < 0)
            return 1.0;
        const double rounded = std::floor(at(setting_.getFrequencyWeightVar(), row) + 0.5);
        return rounded >= 1.0 && rounded <= std::numeric_limits<int>::max() ? rounded : 0.0;
    }
    [[nodiscard]] bool isComplete(std::size_t row) const
    {
        return std::ranges::none_of(testVars_, [&](int v) { return std::isnan(at(v, row)); });
    }

    /// `other` goes along as second variable.
    [[nodiscard]] Cases casesOf(std::size_t i, std::size_t groups, int other) const
    {
        Cases cases;
        for (std::size_t row = 0; row < data_.columns.front().size(); ++row) {
            const double value = at(records_[i]->getTestVarInd(), row);
            if (!inGroup(i, groups, row) || weight(row) == 0.0 || std::isnan(value) || (paired_ && !isComplete(row)))
                continue;
            const bool positive = at(setting_.getStateVar(), row) == setting_.getValueOfStateVar();
            (positive ? cases.posWeight : cases.negWeight) += weight(row);
            cases.sample.add(positive, value, at(other, row));
        }
        return cases;
    }

    void checkRecord(const ROCOutBase& r, const Cases& cases)
    {
        const Sample& s = cases.sample;
        const double level = setting_.getConfidienceLevel();
        require(areaNumbers(r)
                    == (paired_ ? numbers(pairedOf(s, words_, level).first)
                                : numbers(areaOf(s.states, s.values, words_, level))),
                "area of a record");
        const double gini = r.isZeroCountExist() ? r.getArea() : 2 * r.getArea() - 1;
        require(Exact{r.getGiniIndex()} == Exact{gini}, "Gini index");
        require(r.isZeroCountExist() == (r.getPositiveCount() == 0 || r.getNegativeCount() == 0), "zero count");
        require(r.getPosFreqCount() == cases.posWeight && r.getNegFreqCount() == cases.negWeight, "weights");
        require(r.isDistrbutionChanged() == changed_, "assumption");
        checkCurve(r, s);
    }

    void checkCurve(const ROCOutBase& r, const Sample& s)
    {
        const Numbers roc = curve(s.states, s.values, words_);
        const bool asked = setting_.needROC() || setting_.needPR();
        Numbers cutOffs;
        Numbers pairs;
        for (std::size_t i = 0; i < roc.size() && asked; i += 3)
            cutOffs.push_back(roc[i]);
        for (std::size_t i = 0; i < roc.size() && setting_.needROC(); i += 3)
            pairs.insert(pairs.end(), {roc[i + 1], roc[i + 2]});
        Numbers pairsOfRecord;
        for (const auto& [sensitivity, specificity] : r.getSensitivitySpecificity())
            pairsOfRecord.insert(pairsOfRecord.end(), {{1.0 - specificity}, {sensitivity}});
        require(listed(r.getCutOffPoints()) == cutOffs, "cut-offs");
        require(pairsOfRecord == pairs, "curve");

        Numbers drawn;
        Numbers measured;
        const Numbers rows = setting_.needPR() ? precisionRecall(s.states, s.values, words_) : Numbers();
        for (std::size_t i = 0; i < rows.size(); i += 4) { // cut-off, recall, precision, interpolated
            drawn.insert(drawn.end(), {rows[i + 2], rows[i + 1]});
            if (rows[i + 3].value == 0.0)
                measured.insert(measured.end(), {rows[i + 2], rows[i + 1]});
        }
        require(listed(r.getPrecisionRecallDraw()) == drawn, "precision-recall points");
        require(listed(r.getPrecisionRecallCoordinates()) == measured, "measured precision-recall points");

        std::pair<double, double> ks{-1.0, 0.0};
        bool ties = false;
        if (!roc.empty()) {
            const CurveTruth truth = curveTruth(s, {setting_.isIncludeCutOff(), setting_.isLargerTestMorePositive()});
            ties = asked && truth.ties;
            if (setting_.needROC())
                ks = kolmogorovSmirnov(truth, setting_.isLargerTestMorePositive());
        }
        require(r.existTies() == ties, "ties");
        require(Exact{r.getKolmogorovSmirnov().first} == Exact{ks.first}
                    && Exact{r.getKolmogorovSmirnov().second} == Exact{ks.second},
                "Kolmogorov-Smirnov maximum");
    }

    static Numbers listed(const std::vector<double>& list)
    {
        Numbers all;
        for (const double value : list)
            all.push_back({value});
        return all;
    }
    static Numbers listed(const std::vector<std::pair<double, double>>& list)
    {
        Numbers all;
        for (const auto& [first, second] : list)
            all.insert(all.end(), {{first}, {second}});
        return all;
    }

    void checkComparisons(std::size_t groups)
    {
        std::vector<std::pair<std::size_t, std::size_t>> pairs; // positions of the records
        if (setting_.getComparisonType() == IndependentComparison)
            for (std::size_t entry = 0; entry < testVars_.size(); ++entry)
                pairs.emplace_back(entry * groups, entry * groups + 1);
        for (std::size_t i = 0; i < records_.size() && paired_; ++i)
            for (std::size_t j = i + 1; j < records_.size(); ++j)
                pairs.emplace_back(i, j);
        const auto& comparisons = results_.getROCComparisonStats();
        require(comparisons.size() == pairs.size(), "number of comparisons");
        for (std::size_t k = 0; k < pairs.size() && finding_.empty(); ++k) {
            const ROCComparisonOutStats& c = *comparisons[k];
            const auto [i, j] = pairs[k];
            require(c.getCompare1Stats() == records_[i] && c.getCompare2Stats() == records_[j], "order of comparisons");
            const Cases cases = casesOf(i, groups, records_[j]->getTestVarInd());
            const double level = setting_.getConfidienceLevel();
            const auc_comparison_res expected = paired_
                ? pairedOf(cases.sample, words_, level)
                : auc_comparison(areaRecord(*records_[i]), areaRecord(*records_[j]), level);
            const Numbers all = numbers(expected);
            require(Numbers{{c.getZStats()},
                            {c.getAsymptoticSig()},
                            {c.getAUCDiff()},
                            {c.getStdErrorDiff()},
                            {c.getCILower()},
                            {c.getCIUpper()}}
                        == Numbers(all.end() - 6, all.end()),
                    "numbers of a comparison");
        }
    }
    static auc_res areaRecord(const ROCOutBase& r)
    {
        return {double(r.getPositiveCount()),
                double(r.getNegativeCount()),
                r.getArea(),
                r.getStdError(),
                r.getAsymptoticSig(),
                r.getCILower(),
                r.getCIUpper()};
    }

    const ROCSetting& setting_;
    const HostData& data_;
    const ROCOutputs& results_;
    const std::vector<ROCOutBase*>& records_;
    bool paired_;
    Words words_;
    std::vector<int> testVars_;
    bool changed_;
    std::string finding_;
};

} // namespace

std::string facadeDisagreement(ROCSetting setting, HostData& data)
{
    Host host(setting, data);
    const long code = host.run();
    const Outcome outcome = host.outcome();
    if (outcome.code != code || outcome.built != (code == 0) || outcome.hasResults != (code == 0))
        return "status";
    if (host.run() != code || host.outcome() != outcome)
        return "a second run";
    if (code != 0)
        return "";
    Comparison comparison(setting, data, *host.facade.GetOutputStats());
    std::string finding = comparison.run();
    std::vector<std::vector<long>> warnings = outcome.warnings;
    std::erase(warnings, std::vector<long>{statusCode::groupIgnored});
    return finding.empty() && warnings != comparison.warnings() ? "warnings" : finding;
}

} // namespace roctest
