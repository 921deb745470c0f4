#include "vexrocproc/summary.h"

#include "calls/SummaryHandle.h"
#include "calls/guard.h"
#include "host/VexMV.h"
#include "numeric/DefaultArithmetic.h"
#include "summary/Observations.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <vector>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace ROCALG_920::calls {
namespace {

/// Rows as they were given.
struct GivenRows {
    std::span<const double> values;
    const double* states;
    double positive;
    const double* weights; ///< null without

    [[nodiscard]] bool isMissing(std::size_t i) const
    {
        return std::isnan(values[i]) || std::isnan(states[i]) || (weights != nullptr && std::isnan(weights[i]));
    }
    [[nodiscard]] bool isPositive(std::size_t i) const { return states[i] == positive; } // exact
    [[nodiscard]] std::int64_t missing() const
    {
        std::int64_t count = 0;
        for (std::size_t i = 0; i < values.size(); ++i)
            count += isMissing(i);
        return count;
    }
};

std::size_t rowsOf(long long n, const char* what)
{
    if (n < 0)
        throw InvalidArgument(std::string(what) + " is negative: " + std::to_string(n));
    return static_cast<std::size_t>(n);
}

Summary summaryOfCases(const GivenRows& rows, std::int64_t missing)
{
    if (missing == 0)
        return Summary(BorrowedColumns{rows.values.data(), rows.states, rows.positive, rows.values.size()});
    std::vector<double> values;
    std::vector<unsigned char> states;
    for (std::size_t i = 0; i < rows.values.size(); ++i)
        if (!rows.isMissing(i)) {
            values.push_back(rows.values[i]);
            states.push_back(rows.isPositive(i));
        }
    return Summary(StoredColumns{values.data(), states.data(), values.size()});
}

/// Of distinct values in any order, some of them perhaps repeated.
Summary summaryOfValues(std::vector<DistinctValue>& values)
{
    std::ranges::sort(values, {}, &DistinctValue::value);
    std::size_t last = 0;
    for (std::size_t i = 1; i < values.size(); ++i)
        if (values[i].value == values[last].value) { // exact; both zeros are one value
            values[last].positives += values[i].positives;
            values[last].negatives += values[i].negatives;
        } else {
            values[++last] = values[i];
        }
    values.resize(values.empty() ? 0 : last + 1);
    return Summary(std::span<const DistinctValue>(values));
}

/// Adds to a sum of cases that may not pass the most there can be.
void addCases(std::int64_t cases, std::int64_t& all)
{
    if (cases > CollectedCases::mostCases - all)
        throw InvalidArgument("more than 2^40 cases in one summary");
    all += cases;
}

Summary summaryOfFrequencies(const GivenRows& rows)
{
    std::vector<DistinctValue> values;
    std::int64_t all = 0;
    for (std::size_t i = 0; i < rows.values.size(); ++i) {
        if (rows.isMissing(i))
            continue;
        const double weight = rows.weights[i];
        if (!(weight >= 0.0) || weight != std::floor(weight) || std::isinf(weight))
            throw InvalidArgument("weights: row " + std::to_string(i) + " has the frequency " + shortest(weight)
                                  + "; a frequency is a whole number from 0");
        if (weight > static_cast<double>(CollectedCases::mostCases))
            throw InvalidArgument("weights: row " + std::to_string(i) + " has more than 2^40 cases");
        const auto cases = static_cast<std::int64_t>(weight);
        addCases(cases, all);
        if (cases > 0)
            values.push_back({rows.values[i], rows.isPositive(i) ? cases : 0, rows.isPositive(i) ? 0 : cases});
    }
    return summaryOfValues(values);
}

std::vector<WeightedCase> weightedCases(const GivenRows& rows)
{
    std::vector<WeightedCase> cases;
    for (std::size_t i = 0; i < rows.values.size(); ++i) {
        if (rows.isMissing(i))
            continue;
        const double weight = rows.weights[i];
        if (!(weight >= 0.0) || std::isinf(weight))
            throw InvalidArgument("weights: row " + std::to_string(i) + " has the weight " + shortest(weight)
                                  + "; a weight is a number from 0");
        if (weight > 0.0)
            cases.push_back({rows.values[i], weight, rows.isPositive(i)});
    }
    return cases;
}

void requireNoNaN(std::span<const double> values)
{
    for (std::size_t i = 0; i < values.size(); ++i)
        if (std::isnan(values[i]))
            throw InvalidArgument("values: number " + std::to_string(i) + " is NaN");
}

std::vector<DistinctValue> countedValues(std::span<const double> values, const long long* positive,
                                         const long long* negative)
{
    std::vector<DistinctValue> counted;
    std::int64_t all = 0;
    requireNoNaN(values);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (positive[i] < 0 || negative[i] < 0)
            throw InvalidArgument((positive[i] < 0 ? "positive: number " : "negative: number ") + std::to_string(i)
                                  + " is below 0");
        addCases(positive[i], all);
        addCases(negative[i], all);
        if (positive[i] > 0 || negative[i] > 0)
            counted.push_back({values[i], positive[i], negative[i]});
    }
    return counted;
}

} // namespace
} // namespace ROCALG_920::calls

int vexroc_summary_new(vexroc_summary** summary)
{
    return guarded([&] {
        vexroc_summary*& handle = required(summary, "the place for the summary");
        handle = nullptr;
        handle = new vexroc_summary;
        return VEXROC_OK;
    });
}

void vexroc_summary_free(vexroc_summary* summary) { delete summary; }

int vexroc_summary_add(vexroc_summary* summary, const double* values, const double* states, double positive_value,
                       const double* weights, enum vexroc_weights kind, long long n)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        CollectedCases& cases = required(summary, "summary").cases;
        const std::size_t count = rowsOf(n, "n");
        if (kind < VEXROC_NO_WEIGHTS || kind > VEXROC_PROBABILITY_WEIGHTS)
            throw InvalidArgument("kind: no kind of weights " + std::to_string(kind));
        if ((weights != nullptr) != (kind != VEXROC_NO_WEIGHTS) && count > 0)
            throw InvalidArgument(weights != nullptr ? "kind: weights are given, so say of which kind"
                                                     : "weights is null; this kind needs them");
        if (std::isnan(positive_value))
            throw InvalidArgument("positive_value is NaN");
        if (count == 0)
            return VEXROC_OK;
        const GivenRows rows{
            {&required(values, "values"), count}, &required(states, "states"), positive_value, weights};
        const std::int64_t missing = rows.missing();
        if (kind == VEXROC_PROBABILITY_WEIGHTS)
            cases.add(weightedCases(rows));
        else
            cases.add(kind == VEXROC_NO_WEIGHTS ? summaryOfCases(rows, missing) : summaryOfFrequencies(rows));
        cases.countLeftOut(missing);
        return VEXROC_OK;
    });
}

int vexroc_summary_add_counts(vexroc_summary* summary, const double* values, const long long* positive,
                              const long long* negative, long long n)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        CollectedCases& cases = required(summary, "summary").cases;
        const std::size_t count = rowsOf(n, "n");
        if (count == 0)
            return VEXROC_OK;
        std::vector<DistinctValue> counted = countedValues(
            {&required(values, "values"), count}, &required(positive, "positive"), &required(negative, "negative"));
        cases.add(summaryOfValues(counted));
        return VEXROC_OK;
    });
}

int vexroc_summary_tell(const vexroc_summary* summary, vexroc_summary_facts* facts)
{
    return guarded([&] {
        const WeightedSummary& sample = required(summary, "summary").sample();
        const std::span<const DistinctValue> values = sample.counts.values();
        const StateCounts& counts = sample.counts.counts();
        const auto [positives, negatives] = sample.weightsAsGiven();
        constexpr double none = VexCommon_920::VexMV::Missing();
        return deliver({.struct_size = 0,
                        .values = static_cast<long long>(values.size()),
                        .positive = counts.positives,
                        .negative = counts.negatives,
                        .left_out = summary->cases.leftOut(),
                        .kind = sample.isWeighted() ? VEXROC_PROBABILITY_WEIGHTS : VEXROC_NO_WEIGHTS,
                        .weighted_positive = positives,
                        .weighted_negative = negatives,
                        .lowest = values.empty() ? none : values.front().value,
                        .highest = values.empty() ? none : values.back().value},
                       facts);
    });
}

int vexroc_summary_values(const vexroc_summary* summary, long long first, long long count, double* values,
                          long long* positive, long long* negative)
{
    return guarded([&] {
        const std::span<const DistinctValue> all = required(summary, "summary").sample().counts.values();
        const std::size_t begin = rowsOf(first, "first");
        const std::size_t length = rowsOf(count, "count");
        if (begin > all.size() || length > all.size() - begin)
            throw InvalidArgument("values " + std::to_string(first) + " to " + std::to_string(first + count)
                                  + " are not there: there are " + std::to_string(all.size()));
        for (std::size_t i = 0; i < length; ++i) {
            put(values, i, all[begin + i].value);
            put(positive, i, all[begin + i].positives);
            put(negative, i, all[begin + i].negatives);
        }
        return VEXROC_OK;
    });
}
