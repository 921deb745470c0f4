#include "tests/driver/facade_agreement.h"

#include "tests/support/calls.h"
#include "tests/support/oracle.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>

namespace roctest {
namespace {

using namespace ROCALG_920;
using namespace ROCConst_920;

void append(Numbers& list, std::initializer_list<double> more)
{
    for (const double value : more)
        list.push_back({value});
}

/// Cases that a record stands for, and the sums of their weights.
struct Cases {
    Sample sample;
    double posWeight = 0.0;
    double negWeight = 0.0;
};

/// What a finished run should have given, from the columns that it read. How the rows are grouped is the run's word.
class Expectation {
public:
    Expectation(const ROCSetting& setting, const HostData& data, const std::vector<ROCOutBase*>& records)
        : setting_(setting), data_(data), records_(records), paired_(setting.getComparisonType() == PairedComparison),
          words_{setting.isIncludeCutOff() ? "include" : "exclude",
                 setting.isLargerTestMorePositive() ? "larger" : "smaller",
                 setting.getPRInterpolationType() == AlongTP ? "davis-goadrich" : "keilwagen", "nonparam"}
    {
        std::ranges::copy_if(setting.getTestVars(), std::back_inserter(testVars_),
                             [&](int v) { return v >= 0 && v != setting.getStateVar(); });
        groups_ = testVars_.empty() ? 0 : records.size() / testVars_.size();
        const auto unequal = [](const ROCOutBase* r) { return r->getPositiveCount() != r->getNegativeCount(); };
        const bool biNegative = setting.getDistribution() == BiNegativeExponential && !paired_;
        changed_ = biNegative && std::ranges::any_of(records_, unequal);
        if (biNegative && !changed_)
            words_.distribution = "bi-negative";
    }

    /// Without records when their number cannot be.
    Outcome outcome()
    {
        Outcome expected{.built = true, .warnings = {}, .hasResults = true, .records = {}, .comparisons = {}};
        if (groups_ < 1 || groups_ > 2 || groups_ * testVars_.size() != records_.size())
            return expected;
        for (std::size_t i = 0; i < records_.size(); ++i)
            expected.records.push_back(record(i));
        for (std::size_t i = 0; i < records_.size(); ++i)
            for (std::size_t j = i + 1; j < records_.size(); ++j)
                if (paired_ || (setting_.getComparisonType() == IndependentComparison && i % 2 == 0 && j == i + 1))
                    expected.comparisons.push_back(comparison(i, j));
        if (setting_.getGroupVar() >= 0 && records_[0]->getGroupVarInd() < 0)
            expected.warnings.push_back({statusCode::groupIgnored});
        if (!tied_.empty()) {
            expected.warnings.push_back({statusCode::tiesExist});
            expected.warnings.back().insert(expected.warnings.back().end(), tied_.begin(), tied_.end());
        }
        if (changed_)
            expected.warnings.push_back({statusCode::distributionChanged});
        return expected;
    }

private:
    [[nodiscard]] double at(int variable, std::size_t row) const
    {
        return data_.columns[static_cast<std::size_t>(variable)][row];
    }

    /// Does the row belong to the group of record i? The second of two equal values gets nothing, and a group that is
    /// alone gets everything.
    [[nodiscard]] bool inGroup(std::size_t i, std::size_t row) const
    {
        const ROCOutBase& record = *records_[i];
        if (groups_ == 1)
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
    [[nodiscard]] Cases casesOf(std::size_t i, int other) const
    {
        Cases cases;
        for (std::size_t row = 0; row < data_.columns.front().size(); ++row) {
            const double value = at(testVars_[i / groups_], row);
            if (!inGroup(i, row) || weight(row) == 0.0 || std::isnan(value) || (paired_ && !isComplete(row)))
                continue;
            const bool positive = at(setting_.getStateVar(), row) == setting_.getValueOfStateVar();
            (positive ? cases.posWeight : cases.negWeight) += weight(row);
            cases.sample.add(positive, value, at(other, row));
        }
        return cases;
    }

    /// In the order of numbers(record).
    Numbers record(std::size_t i)
    {
        const int testVar = testVars_[i / groups_];
        const Cases cases = casesOf(i, testVar);
        const Sample& s = cases.sample;
        const auc_res area = paired_ ? pairedOf(s, words_, level_).first : areaOf(s.states, s.values, words_, level_);
        areas_.push_back(area);
        const bool oneState = area.posCount == 0 || area.negCount == 0;
        const bool larger = setting_.isLargerTestMorePositive();
        CurveTruth truth;
        if ((setting_.needROC() || setting_.needPR()) && !oneState && s.size() >= 3)
            truth = curveTruth(s, {setting_.isIncludeCutOff(), larger});
        if (truth.ties && !(i % groups_ == 1 && ties_))
            tied_.push_back(testVar);
        ties_ = truth.ties;
        const bool hasROC = setting_.needROC() && !truth.cutOffs.empty();
        const auto [ksMaximum, ksCutOff] = hasROC ? kolmogorovSmirnov(truth, larger) : std::pair(-1.0, 0.0);
        const ROCOutBase& r = *records_[i];
        Numbers all;
        append(all,
               {double(testVar), double(r.getGroupVarInd()), r.getGroupValue(), double(r.getGroupValueOperation()),
                double(truth.ties), area.posCount, area.negCount, cases.posWeight, cases.negWeight, ksMaximum, ksCutOff,
                area.area, oneState ? area.area : 2 * area.area - 1, area.stdError, area.asymptoticSig, area.ciLower,
                area.ciUpper, double(changed_), double(oneState)});
        for (const double cutOff : truth.cutOffs)
            append(all, {cutOff});
        for (std::size_t k = 0; k < truth.cutOffs.size() && hasROC; ++k)
            append(all, {truth.truePositives[k] / truth.nPos, (truth.nNeg - truth.falsePositives[k]) / truth.nNeg});
        appendPoints(all, setting_.needPR() ? precisionRecall(s.states, s.values, words_) : Numbers());
        return all;
    }

    /// All precision-recall points, then the measured ones. A row is cut-off, recall, precision, interpolated.
    static void appendPoints(Numbers& all, const Numbers& rows)
    {
        for (const bool interpolatedToo : {true, false})
            for (std::size_t k = 0; k < rows.size(); k += 4)
                if (interpolatedToo || rows[k + 3].value == 0.0)
                    append(all, {rows[k + 2].value, rows[k + 1].value});
    }

    [[nodiscard]] Numbers comparison(std::size_t i, std::size_t j) const
    {
        const int first = testVars_[i / groups_];
        const int second = testVars_[j / groups_];
        Numbers all;
        append(all, {double(first), records_[i]->getGroupValue(), double(second), records_[j]->getGroupValue()});
        const Numbers numbersOf = numbers(paired_ ? pairedOf(casesOf(i, second).sample, words_, level_)
                                                  : auc_comparison(areas_[i], areas_[j], level_));
        all.insert(all.end(), numbersOf.end() - 6, numbersOf.end());
        return all;
    }

    const ROCSetting& setting_;
    const HostData& data_;
    const std::vector<ROCOutBase*>& records_;
    double level_ = setting_.getConfidienceLevel();
    bool paired_;
    Words words_;
    std::vector<int> testVars_;
    std::size_t groups_;
    bool changed_;
    std::vector<auc_res> areas_; ///< of the records so far
    std::vector<long> tied_;     ///< test variables of entries with a tie so far
    bool ties_ = false;          ///< in the last record
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
    const ROCOutputs& results = *host.facade.GetOutputStats();
    const Outcome expected = Expectation(setting, data, results.getROCBaseStats()).outcome();
    for (const ROCComparisonOutStats* const c : results.getROCComparisonStats())
        for (const ROCOutBase* const compared : {c->getCompare1Stats(), c->getCompare2Stats()})
            if (std::ranges::count(results.getROCBaseStats(), compared) != 1)
                return "a comparison of others than the records";
    return outcome.records != expected.records        ? "records"
        : outcome.comparisons != expected.comparisons ? "comparisons"
        : outcome.warnings != expected.warnings       ? "warnings"
                                                      : "";
}

} // namespace roctest
