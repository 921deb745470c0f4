#include "cli/study/remarksOn.h"

#include "cli/words/Readable.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

namespace vexroc {

namespace {

namespace statusCode = ROCALG_920::statusCode;

bool hasBothStates(const Area& area) { return area.positive > 0 && area.negative > 0; }

/// The bi-negative exponential error that was asked for cannot be had.
void addDistribution(const Area& area, Remarks& remarks)
{
    if (hasBothStates(area) && area.positive != area.negative)
        remarks.add("distribution-changed", subjectOf(area),
                    std::to_string(area.positive) + " and " + std::to_string(area.negative));
}

void addMissingCurve(const std::string& prefix, const Area& area, Remarks& remarks)
{
    constexpr long long fewestCases = 3; // of a curve
    if (hasBothStates(area) && area.positive + area.negative < fewestCases)
        remarks.add("no-curve", prefix + subjectOf(area));
}

void addPrevalence(const std::string& prefix, const Area& area, Remarks& remarks)
{
    if (hasBothStates(area))
        remarks.add("sample-prevalence", prefix + subjectOf(area),
                    readable(double(area.positive) / double(area.positive + area.negative), CellRole::statistic));
}

void addLeftOut(const Area& area, Remarks& remarks)
{
    if (area.leftOut > 0)
        remarks.add("left-out", subjectOf(area),
                    std::to_string(area.leftOut) + " of "
                        + std::to_string(area.positive + area.negative + area.leftOut));
}

/// The cases of each pair that has fewer of a state than both of its tests, or no error; and the differences.
void addPairs(const std::string& prefix, const Results& results, Remarks& remarks)
{
    const auto fewer = [](const Area& area) { return std::min(area.positive, area.negative); };
    std::map<std::string_view, long long> fewerOf; // by test
    for (const TestResult& test : results.tests)
        fewerOf.emplace(test.area.test, fewer(test.area));
    for (const Difference& difference : results.differences) {
        Area pair = difference.first;
        pair.test = subjectOf(difference);
        pair.distinctValues = 0;
        const bool fewerThanTests =
            fewer(pair) < std::min(fewerOf[difference.first.test], fewerOf[difference.second.test]);
        if (!std::isnan(pair.area) && std::isnan(pair.stdError)) // an area may have another error by itself
            remarks.addArea(prefix, pair, false);
        else if (results.failure || fewerThanTests)
            remarks.addCases(prefix, pair);
        remarks.addDifference(prefix + subjectOf(difference), difference);
    }
}

/// A test in two groups.
void addGroups(const Question& question, const Difference& difference, Remarks& remarks)
{
    for (const Area& area : {difference.first, difference.second}) {
        remarks.addArea("", area, false);
        if (question.biNegative)
            addDistribution(area, remarks);
    }
    remarks.addDifference(subjectOf(difference), difference);
}

void addWarnings(const std::string& value, const Results& results, Remarks& remarks)
{
    for (const int code : results.warnings) {
        if (code == statusCode::distributionChanged)
            remarks.add("distribution-changed", value);
        if (code == statusCode::groupIgnored)
            remarks.add("groups-ignored", value);
    }
}

/// The test whose missing values keep most rows out of comparisons.
void addCostlyTest(const Question& question, const std::string& prefix, const RowCounts& rows, Remarks& remarks)
{
    if (question.comparison != Comparison::paired || rows.gaps.empty())
        return;
    const auto most = std::ranges::max_element(rows.gaps, {}, &RowCounts::Gap::rows);
    remarks.add("costly-test", prefix + most->test,
                "missing in " + std::to_string(most->rows()) + " of " + std::to_string(rows.used() + rows.incomplete)
                    + " rows");
}

/// Why the rows with one value came to no result.
void addFailure(const std::string& value, const Results& results, Remarks& remarks)
{
    if (results.rows.leftOut() > 0)
        remarks.add("left-out", value, leftOutDetail(results.rows));
    if (value.empty()) // it is the error that ends the program
        return;
    const Area rows{.test = value, .positive = results.rows.positive, .negative = results.rows.negative};
    if (hasBothStates(rows))
        remarks.add("no-result", value, results.failure->sentence);
    else
        remarks.addCases("", rows);
}

void addWeights(const Question& question, const std::string& value, const RowCounts& rows, Remarks& remarks)
{
    const auto ofRows = [](long long count) { return std::to_string(count) + (count == 1 ? " row" : " rows"); };
    if (!question.weight.empty() && !question.weightIsCount)
        remarks.add("weight-counts-only", question.weight);
    if (rows.roundedWeights > 0)
        remarks.add("weights-rounded", value, ofRows(rows.roundedWeights));
    if (rows.unusableWeight > 0)
        remarks.add("weights-dropped", value, ofRows(rows.unusableWeight));
}

} // namespace

void remarkOnAreas(const Question& question, const Results& results, Remarks& remarks)
{
    for (const TestResult& test : results.tests) {
        remarks.addArea("", test.area);
        if (question.biNegative)
            addDistribution(test.area, remarks);
    }
}

void remarkOnDifferences(const Question& question, const Results& results, Remarks& remarks)
{
    if (question.comparison == Comparison::paired) {
        for (const TestResult& test : results.tests)
            remarks.addArea("", test.area, false);
        addPairs("", results, remarks);
    } else {
        for (const Difference& difference : results.differences)
            addGroups(question, difference, remarks);
    }
    remarks.addComparisons("", results.differences.size());
    addCostlyTest(question, "", results.rows, remarks);
    if (const long long others = results.rows.otherGroup; others > 0)
        remarks.add("left-out", "", std::to_string(others) + " in neither group");
}

void remarkOnCurves(const Question& question, const Results& results, Remarks& remarks)
{
    for (const TestResult& test : results.tests) {
        remarks.addCases("", test.area);
        addMissingCurve("", test.area, remarks);
        addLeftOut(test.area, remarks);
        if (question.precisionRecall)
            addPrevalence("", test.area, remarks);
    }
}

void remarkOnAnalysis(const Question& question, const ValueResults& value, Remarks& remarks)
{
    const Results& results = value.results;
    const std::string subject = question.by.empty() ? "" : question.by + " = " + value.value;
    const std::string prefix = subject.empty() ? "" : subject + ": ";
    addWeights(question, subject, results.rows, remarks);
    if (results.failure)
        return addFailure(subject, results, remarks);
    for (const TestResult& test : results.tests) {
        remarks.addArea(prefix, test.area);
        if (question.rocCurve)
            addMissingCurve(prefix, test.area, remarks);
        if (question.precisionRecall)
            addPrevalence(prefix, test.area, remarks);
    }
    if (question.comparison == Comparison::paired)
        addPairs(prefix, results, remarks);
    else
        for (const Difference& difference : results.differences)
            remarks.addDifference(prefix + subjectOf(difference), difference);
    remarks.addComparisons(subject, results.differences.size());
    addCostlyTest(question, prefix, results.rows, remarks);
    addWarnings(subject, results, remarks);
}

} // namespace vexroc
