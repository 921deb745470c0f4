#pragma once

#include "driver/GroupSplit.h"
#include "driver/RunMonitor.h"
#include "driver/TestSpaces.h"
#include "host/MultiPassRecordIter.h"
#include "host/VexWarnings.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCSetting.h"

#include <memory>
#include <vector>

namespace ROCALG_920 {

class ROCStats;

/// The end of a run: looks for ties, decides on the distribution assumption, warns, computes area statistics and
/// comparisons from the filled spaces and puts them into result records.
///
/// The records go into lists of the driver, which owns them, and stay there when the run is cancelled; their pointers
/// are published in a result set once all are made.
class ResultAssembly {
public:
    using Results = std::vector<std::unique_ptr<ROCOutBase>>;
    using Comparisons = std::vector<std::unique_ptr<ROCComparisonOutStats>>;

    ResultAssembly(const ROCSetting& setting, const GroupSplit& split, const std::vector<int>& testVars,
                   TestSpaces& spaces, RunMonitor& monitor);

    /// Appends this run's records. noError, or the code that ends the run.
    int run(VexCommon_920::MultiPassRecordIter& iter, Results& results, Comparisons& comparisons,
            VexCommon_920::VexWarnings& warnings);

private:
    int settleAssumption();
    void warn(VexCommon_920::VexWarnings& warnings) const;
    int recordAreas(Results& results);
    int compareGroups(VexCommon_920::MultiPassRecordIter& iter, Results& results, Comparisons& comparisons);
    int compareTests(Results& results, Comparisons& comparisons);
    ROCOutBase& record(ROCSpace& space, ROCStats& stats, bool distributionChanged, Results& results) const;
    void announceDone(std::size_t entry);

    const ROCSetting& setting_;
    const GroupSplit& split_;
    const std::vector<int>& testVars_;
    TestSpaces& spaces_;
    RunMonitor& monitor_;
    bool larger_;
    double level_;
    ROCConst_920::Distribution distribution_; ///< in effect
    bool distributionChanged_ = false;
    std::vector<int> tiedVars_; ///< in the order of the list, repeats included
};

} // namespace ROCALG_920
