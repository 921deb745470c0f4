#include "cli/study/remarksOn.h"

namespace vexroc {

namespace {

bool hasBothStates(const Area& area) { return area.positive > 0 && area.negative > 0; }

/// A pair may have fewer cases than each of its tests.
void addPair(const Difference& difference, Remarks& remarks)
{
    Area pair = difference.first;
    pair.test = subjectOf(difference);
    pair.distinctValues = 0;
    if (!hasBothStates(pair))
        remarks.addCases(pair);
}

void addLeftOut(const Results& results, const std::string& prefix, Remarks& remarks)
{
    for (const TestResult& test : results.tests)
        if (const long long rows = test.area.leftOut; rows > 0)
            remarks.add("left-out", prefix + subjectOf(test.area),
                        std::to_string(rows) + " of " + std::to_string(test.area.positive + test.area.negative + rows));
}

} // namespace

void remarkOnAreas(const Results& results, Remarks& remarks)
{
    for (const TestResult& test : results.tests)
        if (!hasBothStates(test.area))
            remarks.addCases(test.area);
}

void remarkOnCurves(const Results& results, Remarks& remarks)
{
    remarks.leaveOut({"no-error", "interval-and-p"});
    remarkOnAreas(results, remarks);
    addLeftOut(results, "", remarks);
}

void remarkOnRows(const Question& question, std::span<const ValueResults> values, Remarks& remarks)
{
    for (const auto& [value, results] : values)
        addLeftOut(results, question.by.empty() ? "" : question.by + " = " + value + ": ", remarks);
}

void remarkOnDifferences(const Question& question, const Results& results, Remarks& remarks)
{
    for (const Difference& difference : results.differences)
        if (question.comparison == Comparison::paired)
            addPair(difference, remarks);
        else
            for (const Area& area : {difference.first, difference.second})
                if (!hasBothStates(area))
                    remarks.addCases(area);
}

void remarkOnValue(const Question& question, const ValueResults& value, Remarks& remarks)
{
    const Results& results = value.results;
    if (!results.failure || question.by.empty()) // without values it is the error that ends the program
        return;
    const Area rows{.test = question.by + " = " + value.value,
                    .positive = results.rows.positive,
                    .negative = results.rows.negative};
    if (hasBothStates(rows))
        remarks.add("no-result", rows.test, results.failure->sentence);
    else
        remarks.addCases(rows);
}

} // namespace vexroc
