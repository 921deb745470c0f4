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

} // namespace

void remarkOnAreas(const Results& results, Remarks& remarks)
{
    for (const TestResult& test : results.tests)
        if (!hasBothStates(test.area))
            remarks.addCases(test.area);
}

void remarkOnCurves(const Results& results, Remarks& remarks)
{
    remarks.leaveOutErrors();
    remarkOnAreas(results, remarks);
    for (const auto& [area, roc, precisionRecall, best, summary] : results.tests)
        if (area.leftOut > 0)
            remarks.add("left-out", subjectOf(area),
                        std::to_string(area.leftOut) + " of "
                            + std::to_string(area.positive + area.negative + area.leftOut));
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
