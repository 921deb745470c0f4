#pragma once

#include "cli/study/CutOffReading.h"
#include "host/VexMV.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct vexroc_summary;

namespace vexroc {

class CaseLabels;

/// For what cannot be computed, or was not: a NaN.
constexpr double notComputed = VexCommon_920::VexMV::Missing();

/// What became of the rows read. Each is counted once: in the first reason to leave it out, or as used.
struct RowCounts {
    long long given = 0; ///< rows of the table
    long long read = 0;  ///< as often as their counts say
    long long missingState = 0;
    long long otherState = 0; ///< neither positive nor negative
    long long missingGroup = 0;
    long long missingCount = 0;
    long long missingWeight = 0;
    long long otherGroup = 0;     ///< in neither of the groups
    long long unusableWeight = 0; ///< the weight rounds to less than one case, or is beyond counting
    long long incomplete = 0;     ///< a test is missing in a paired comparison
    long long positive = 0;       ///< of the rows used
    long long negative = 0;
    double weightedPositive = 0.0;
    double weightedNegative = 0.0;
    long long roundedWeights = 0; ///< rows with a weight that is not a whole number
    /// Rows that lack only the value of a test.
    struct Gap {
        std::string test;
        long long positive = 0;
        long long negative = 0;
        [[nodiscard]] long long rows() const noexcept { return positive + negative; }
    };
    std::vector<Gap> gaps = {}; ///< of each test that has one

    [[nodiscard]] long long used() const noexcept { return positive + negative; }
    [[nodiscard]] long long leftOut() const noexcept { return read - used(); }
    /// (reason, rows) for each reason that left out a row.
    [[nodiscard]] std::vector<std::pair<std::string, long long>> reasons() const;
};

/// The area of one test in one group of cases.
struct Area {
    std::string test;
    std::string group = {}; ///< "sex = female", "age < 50"; empty for all cases
    long long positive = 0;
    long long negative = 0;
    long long leftOut = 0; ///< rows that could not take part
    double weightedPositive = 0.0;
    double weightedNegative = 0.0;
    double area = notComputed;
    double stdError = notComputed;
    std::string error =
        {}; ///< whose standard error it is; what made the other numbers likewise, in words of analysis.h
    double pValue = notComputed;
    double log10P = notComputed;
    std::string pMethod = {};
    double lower = notComputed;
    double upper = notComputed;
    std::string interval = {};
    double gini = notComputed;
    double ksMaximum = notComputed; ///< without a curve
    double ksCutOff = notComputed;
    CutOffReading reading = {}; ///< of the cut-offs between the ends
    int distinctValues = 0;     ///< different test values, as far as known: 0 not, 3 for three and more
    bool ties = false;          ///< positive and negative cases share a test value
    bool largerIsPositive = true;
};

/// A cut-off with what it makes of the cases.
struct CutOff {
    double value;
    double sensitivity;
    double specificity;
    long long truePositive;
    long long falsePositive;
};

/// Which of so many cases are called positive.
CutOffReading::Calls callsOf(const CutOff& cutOff, long long positive, long long negative);

/// The points of a ROC curve, cut-offs ascending; all lists are parallel.
struct RocCurve {
    std::vector<double> cutOffs;
    std::vector<double> sensitivity;
    std::vector<double> specificity;
    std::vector<long long> truePositive;
    std::vector<long long> falsePositive;
    [[nodiscard]] std::size_t size() const noexcept { return cutOffs.size(); }
    [[nodiscard]] CutOff at(std::size_t i) const
    {
        return {cutOffs[i], sensitivity[i], specificity[i], truePositive[i], falsePositive[i]};
    }
};

/// The points of a precision-recall curve in the order of its cut-offs; all lists are parallel.
struct PrecisionRecallCurve {
    static constexpr int none = -1;
    std::vector<double> precision;
    std::vector<double> recall;
    std::vector<unsigned char> interpolated; ///< 1 for a point between measured ones
    std::vector<int>
        rocPoint; ///< the point of the ROC curve with the same cut-off; none: interpolated, or no such curve
    [[nodiscard]] std::size_t size() const noexcept { return precision.size(); }
};

/// All that is known of one test in one group of cases.
struct TestResult {
    Area area;
    RocCurve roc = {};                         ///< empty where it was not asked for, or is not there
    PrecisionRecallCurve precisionRecall = {}; ///< likewise
    std::vector<CutOff> best = {};             ///< those of the largest Youden index, ascending
    std::shared_ptr<const vexroc_summary> summary =
        {}; ///< of its cases; null where it was not asked for, or is not there

    /// How one of its cut-offs reads.
    [[nodiscard]] CutOffReading readingOf(const CutOff& cutOff) const;
};

/// The difference of two areas: first less second.
struct Difference {
    Area first; ///< on the cases of the difference, in a paired comparison
    Area second;
    long long leftOut = 0; ///< rows that could not take part in it
    double difference = notComputed;
    double stdError = notComputed;
    std::string error = {}; ///< whose standard error it is
    double z = notComputed;
    double pValue = notComputed;
    double log10P = notComputed;
    double lower = notComputed;
    double upper = notComputed;
};

/// Why the component came to no result, in words.
struct RunMessage {
    int code;
    std::string name;
    std::string sentence; ///< visible text
};

/// What one analysis came to.
struct Results {
    RowCounts rows = {};
    std::vector<TestResult> tests = {};
    std::vector<Difference> differences = {};
    std::shared_ptr<const CaseLabels> labels = {}; ///< of the whole table
    std::optional<RunMessage> failure = {};        ///< why there is no result; then the tests tell their cases at most
};

/// The results of the rows with one value.
struct ValueResults {
    std::string value;
    Results results;
};

} // namespace vexroc
