#include "driver/ResultAssembly.h"

#include "results/RunRecord.h"
#include "stats/ROCIndependentStats.h"
#include "stats/ROCPairedStats.h"
#include "stats/RocIndependCompare.h"
#include "stats/RocPairedCompare.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>

namespace ROCALG_920 {

using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;

ResultAssembly::ResultAssembly(const ROCSetting& setting, const GroupSplit& split, const std::vector<int>& testVars,
                               TestSpaces& spaces, RunMonitor& monitor)
    : setting_(setting), split_(split), testVars_(testVars), spaces_(spaces), monitor_(monitor),
      larger_(setting.isLargerTestMorePositive()), level_(setting.getConfidienceLevel()),
      distribution_(setting.getDistribution())
{
}

int ResultAssembly::run(VexCommon_920::MultiPassRecordIter& iter, Results& results, Comparisons& comparisons,
                        VexWarnings& warnings)
{
    if (const int code = settleAssumption(); code != statusCode::noError)
        return code;
    warn(warnings);
    switch (setting_.getComparisonType()) {
    case ROCConst_920::NoComparison: return recordAreas(results);
    case ROCConst_920::IndependentComparison: return compareGroups(iter, results, comparisons);
    case ROCConst_920::PairedComparison: return compareTests(results, comparisons);
    }
    return statusCode::unexpected; // refused before any data was read
}

/// Notes which variables have ties and settles the assumption in effect; the code of a group without a case. One space
/// with unequal counts takes the bi-negative exponential assumption from the whole run.
int ResultAssembly::settleAssumption()
{
    const auto unequalCounts = [](const ROCSpace& s) { return s.getNegtiveCount() != s.getPositiveCount(); };
    const auto empty = [](const ROCSpace& s) { return s.getNegtiveCount() == 0 && s.getPositiveCount() == 0; };
    for (std::size_t entry = 0; entry < testVars_.size(); ++entry) {
        std::vector<ROCSpace>& spaces = spaces_.ofEntry(entry);
        bool ties = false;
        for (ROCSpace& space : spaces)
            ties = space.existTies() || ties;
        if (ties)
            tiedVars_.push_back(testVars_[entry]);
        if (setting_.getDistribution() == ROCConst_920::BiNegativeExponential
            && setting_.getComparisonType() != ROCConst_920::PairedComparison)
            distributionChanged_ = distributionChanged_ || std::ranges::any_of(spaces, unequalCounts);
        else if (setting_.getComparisonType() == ROCConst_920::IndependentComparison
                 && std::ranges::any_of(spaces, empty))
            return statusCode::groupEmpty;
    }
    if (distributionChanged_)
        distribution_ = ROCConst_920::NonParametric;
    return statusCode::noError;
}

void ResultAssembly::warn(VexWarnings& warnings) const
{
    const VexStatus ties(statusCode::tiesExist, true);
    if (!tiedVars_.empty())
        warnings.AddWarning(ties, VexWarnings::Collection);
    for (const int testVar : tiedVars_)
        warnings.AddParameter(ties, testVar);
    if (distributionChanged_)
        warnings.AddWarning(VexStatus(statusCode::distributionChanged, true), VexWarnings::Collection);
}

int ResultAssembly::recordAreas(Results& results)
{
    for (std::size_t entry = 0; entry < testVars_.size(); ++entry) {
        for (ROCSpace& space : spaces_.ofEntry(entry)) {
            if (monitor_.cancelled())
                return statusCode::cancelled;
            ROCIndependentStats stats(space, distribution_, larger_, level_);
            record(space, stats, distributionChanged_, results);
        }
        spaces_.doneWith(entry);
        announceDone(entry);
    }
    return statusCode::noError;
}

int ResultAssembly::compareGroups(VexCommon_920::MultiPassRecordIter& iter, Results& results, Comparisons& comparisons)
{
    for (std::size_t entry = 0; entry < testVars_.size(); ++entry) {
        if (monitor_.cancelled())
            return statusCode::cancelled;
        std::vector<ROCSpace>& groups = spaces_.ofEntry(entry);
        ROCIndependentStats stats1(groups[0], distribution_, larger_, level_);
        ROCOutBase& record1 = record(groups[0], stats1, distributionChanged_, results);
        ROCIndependentStats stats2(groups[1], distribution_, larger_, level_);
        ROCOutBase& record2 = record(groups[1], stats2, distributionChanged_, results);
        RocIndependCompare comparison(stats1, stats2, level_);
        comparison.computeStats(iter);
        comparisons.push_back(std::make_unique<ROCComparisonOutStats>(record1, record2, comparison));
        announceDone(entry);
    }
    return statusCode::noError;
}

/// The spaces hold the same cases in the same order, so the pairs need no further pass over the host's records.
int ResultAssembly::compareTests(Results& results, Comparisons& comparisons)
{
    std::vector<std::unique_ptr<ROCPairedStats>> stats;
    std::vector<ROCOutBase*> records;
    for (std::size_t entry = 0; entry < testVars_.size(); ++entry) {
        ROCSpace& space = spaces_.ofEntry(entry).front();
        stats.push_back(std::make_unique<ROCPairedStats>(space, larger_, level_));
        records.push_back(&record(space, *stats.back(), false, results));
    }
    for (std::size_t i = 0; i < stats.size(); ++i) {
        for (std::size_t j = i + 1; j < stats.size(); ++j) {
            if (monitor_.cancelled())
                return statusCode::cancelled;
            RocPairedCompare comparison(*stats[i], *stats[j], larger_, level_, setting_.getStateVar(),
                                        setting_.getValueOfStateVar());
            comparison.computeOverSpaces();
            comparisons.push_back(std::make_unique<ROCComparisonOutStats>(*records[i], *records[j], comparison));
        }
        announceDone(i);
    }
    return statusCode::noError;
}

ROCOutBase& ResultAssembly::record(ROCSpace& space, ROCStats& stats, bool distributionChanged, Results& results) const
{
    auto made = split_.groupVar() >= 0
        ? std::make_unique<RunRecord>(space.getTestVar(), space.getGroupVar(), space.getGroupOp(),
                                      space.getGroupValue(), stats, distributionChanged)
        : std::make_unique<RunRecord>(space.getTestVar(), stats, distributionChanged);
    results.push_back(std::move(made));
    return *results.back();
}

void ResultAssembly::announceDone(std::size_t entry)
{
    monitor_.announceShare(static_cast<double>(entry + 1) / static_cast<double>(testVars_.size()) * 0.8 + 0.2);
}

} // namespace ROCALG_920
