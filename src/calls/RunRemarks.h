#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/RowSelection.h"
#include "remarks/RemarkList.h"
#include "vexrocproc/analysis.h"

#include <string>
#include <string_view>
#include <vector>

namespace ROCALG_920::calls {

/// What there is to say of a run beside its numbers: kept, to be said in any voice and with any prefix.
class RunRemarks {
public:
    /// Of the rows and how they were asked for; what the results say is added to it.
    RunRemarks(const AnalysisRequest& request, const RowTally& rows);

    /// The request, of this and the other calls, is that of the run.
    void addRecord(const AnalysisRequest& request, const vexroc_record& record);
    void addComparison(const AnalysisRequest& request, const std::vector<vexroc_record>& records,
                       const vexroc_comparison& comparison);
    void add(const char* code, std::string subject, std::string detail = {});

    void sayTo(remarks::RemarkList& list, std::string_view prefix = {}) const;

private:
    struct Plain {
        const char* code;
        std::string subject;
        std::string detail;
        bool ofTable = false; ///< of a column in all parts of the data alike, so no prefix tells more
    };
    struct AboutArea {
        std::string subject;
        std::string test;
        vexroc_area_facts facts; ///< but for the test
    };
    struct AboutDifference {
        std::string subject;
        double difference;
        double stdError;
    };

    void addLeftOut(const AnalysisRequest& request, const RowTally& rows);
    void addWeights(const AnalysisRequest& request, const vexroc_rows& rows);
    void addColumn(const char* code, const std::string& name) { plain_.push_back({code, name, "", true}); }
    void addCostlyTest(const AnalysisRequest& request, const RowTally& rows);

    std::vector<Plain> plain_;
    std::vector<AboutArea> areas_;
    std::vector<AboutDifference> differences_;
};

} // namespace ROCALG_920::calls
