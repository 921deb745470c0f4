#include "calls/criterionByName.h"
#include "calls/inferenceOptions.h"
#include "calls/replicates.h"
#include "calls/samples.h"
#include "calls/words.h"
#include "host/VexMV.h"
#include "inference/CutOffLookup.h"
#include "inference/OperatingStatistics.h"
#include "inference/RateAt.h"
#include "numeric/DefaultArithmetic.h"
#include "vexrocproc/inference.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace ROCALG_920::calls {
namespace {

constexpr double missing = VexCommon_920::VexMV::Missing();

struct Column {
    OperatingStatistic statistic;
    double* (vexroc_operating_columns::*lists)[3];
};
constexpr Column columnsOfEstimates[] = {
    {OperatingStatistic::sensitivity, &vexroc_operating_columns::sensitivity},
    {OperatingStatistic::specificity, &vexroc_operating_columns::specificity},
    {OperatingStatistic::ppv, &vexroc_operating_columns::ppv},
    {OperatingStatistic::npv, &vexroc_operating_columns::npv},
    {OperatingStatistic::positiveLikelihoodRatio, &vexroc_operating_columns::lr_positive},
    {OperatingStatistic::negativeLikelihoodRatio, &vexroc_operating_columns::lr_negative},
    {OperatingStatistic::diagnosticOddsRatio, &vexroc_operating_columns::dor},
    {OperatingStatistic::accuracy, &vexroc_operating_columns::accuracy},
    {OperatingStatistic::balancedAccuracy, &vexroc_operating_columns::balanced_accuracy},
    {OperatingStatistic::f1, &vexroc_operating_columns::f1},
    {OperatingStatistic::mcc, &vexroc_operating_columns::mcc},
    {OperatingStatistic::youden, &vexroc_operating_columns::youden},
    {OperatingStatistic::kappa, &vexroc_operating_columns::kappa},
};

/// Writes rows to the caller's lists, some at a time: column by column, while their counts are near.
class RowWriter {
public:
    RowWriter(const vexroc_operating_columns& columns, const InferenceOptions& options, const WeightedSummary& sample)
        : columns_(columns), options_{options.proportion, options.level,
                                      sample.isWeighted() ? missing : options.zCritical, options.prevalence}
    {
        if (!sample.equalWeights)
            weights_.emplace(sample, options.largerIsPositive);
    }

    /// place: distinct values left of the cut-off
    void add(double cutOff, const CutOffCounts& counts, std::size_t place)
    {
        if (rows_.counts().size() == OperatingRows::most)
            flush();
        put(columns_.cut_off, written_ + rows_.counts().size(), cutOff);
        if (weights_)
            rows_.add(counts, weights_->at(place));
        else
            rows_.add(counts);
    }
    /// After the last row.
    void flush()
    {
        putCounts(columns_.true_positive, &CutOffCounts::truePositives);
        putCounts(columns_.false_positive, &CutOffCounts::falsePositives);
        putCounts(columns_.true_negative, &CutOffCounts::trueNegatives);
        putCounts(columns_.false_negative, &CutOffCounts::falseNegatives);
        for (const Column& column : columnsOfEstimates) {
            const auto& lists = columns_.*column.lists;
            rows_.fill(column.statistic, options_, {here(lists[0]), here(lists[1]), here(lists[2])});
        }
        written_ += rows_.counts().size();
        rows_.clear();
    }

private:
    [[nodiscard]] double* here(double* list) const { return list == nullptr ? nullptr : list + written_; }
    void putCounts(long long* list, std::int64_t CutOffCounts::*cell) const
    {
        if (list == nullptr)
            return;
        for (std::size_t i = 0; i < rows_.counts().size(); ++i)
            list[written_ + i] = rows_.counts()[i].*cell;
    }

    const vexroc_operating_columns& columns_;
    OperatingOptions options_;
    std::optional<WeightsBySide> weights_; ///< where they make a difference
    OperatingRows rows_;
    std::size_t written_ = 0;
};

/// As many of the caller's lists as its structure has.
vexroc_operating_columns listsOf(const vexroc_operating_columns* given)
{
    vexroc_operating_columns columns{};
    const std::size_t size = required(given, "columns").struct_size;
    if (size < sizeof(std::size_t))
        throw InvalidArgument("columns: struct_size is not set; give it the sizeof of the structure");
    std::memcpy(&columns, given, std::min(size, sizeof columns));
    return columns;
}

void requireRows(const double* at, long long first, long long count, const CutOffLookup& lookup)
{
    if (first < 0 || count < 0)
        throw InvalidArgument(std::string(first < 0 ? "first" : "count") + " is negative");
    const auto there = static_cast<long long>(lookup.count());
    if (at == nullptr && (first > there || count > there - first))
        throw InvalidArgument("there are " + std::to_string(there) + " cut-offs; rows " + std::to_string(first) + " to "
                              + std::to_string(first + count - 1) + " are not all there");
    for (long long i = 0; at != nullptr && i < count; ++i)
        if (std::isnan(at[i]))
            throw InvalidArgument("at: cut-off " + std::to_string(i) + " is NaN");
}

/// All ties of the best cut-offs, ascending.
std::vector<OperatingPoint> bestPoints(const Summary& sample, const CutOffCriterion& criterion, CurveOptions curve)
{
    BestByCriterion best(criterion);
    if (sample.counts().bothStates())
        forEachCutOff(sample.walk(), {sample.values().front().value, sample.values().back().value, sample.counts()},
                      curve, [&](double cutOff, const CutOffCounts& counts) {
                          best.take({cutOff, counts});
                      });
    return best.points();
}

CutOffCriterion criterionFor(const Summary& sample, const NamedCriterion& named, const InferenceOptions& options)
{
    const bool held = named.kind == CutOffCriterion::Kind::youden; // to least rates
    return {named.kind,
            sample.counts(),
            {.share = named.hasShare() ? named.share : 0.0,
             .costRatio = options.costRatio,
             .prevalence = options.prevalence,
             .leastSensitivity = held ? options.leastSensitivity : 0.0,
             .leastSpecificity = held ? options.leastSpecificity : 0.0}};
}

constexpr std::string_view rateIntervalWords[] = {"btii", "bootstrap", "none"};
enum RateIntervalWord { btiiWord, percentileWord, noneWord };

/// The interval by replicates of what is reached; without them missing. Nothing when cancelled.
std::optional<RateInterval> rateInterval(const Summary& directed, const InferenceOptions& options, const RateAt& rate,
                                         int word)
{
    if (word == noneWord)
        return RateInterval{missing, {missing, missing}};
    requireReplicates(options);
    if (!directed.counts().bothStates() || std::isnan(options.zCritical))
        return RateInterval{missing, {missing, missing}};
    std::optional<std::vector<std::int64_t>> replicates = replicatesOf(
        directed, options, [&rate](std::span<const DistinctValue> values) { return rate.reached(values); });
    if (!replicates)
        return std::nullopt;
    return word == btiiWord ? rateIntervalOfMoments(*replicates, rate.all(), options.zCritical)
                            : rateIntervalOfPercentiles(*replicates, rate.all(), options.level);
}

NamedCriterion rateCriterion(const char* text)
{
    const NamedCriterion named = criterionByName(text);
    if (!named.hasShare())
        throw InvalidArgument("criterion " + quoted(text)
                              + ": a rate is asked for at \"specificity=SHARE\" or \"sensitivity=SHARE\"");
    return named;
}

} // namespace
} // namespace ROCALG_920::calls

long long vexroc_cut_off_count(const vexroc_summary* summary)
{
    return guardedOr(0LL, [&] {
        if (summary == nullptr)
            return 0LL;
        return static_cast<long long>(CutOffLookup(summary->sample().counts, {true, true}).count());
    });
}

int vexroc_operating_points(const vexroc_summary* summary, const vexroc_inference_options* options, const double* at,
                            long long first, long long count, vexroc_operating_columns* columns)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const WeightedSummary& weighted = required(summary, "summary").sample();
        const Summary& sample = weighted.counts;
        const InferenceOptions checked = inferenceOptions(options);
        const vexroc_operating_columns lists = listsOf(columns);
        requireBothStates(sample);
        const CutOffLookup lookup(sample, checked.curve());
        requireRows(at, first, count, lookup);
        RowWriter rows(lists, checked, weighted);
        if (at == nullptr)
            lookup.forEach(
                static_cast<std::size_t>(first), static_cast<std::size_t>(count),
                [&](double cutOff, const CutOffCounts& counts, std::size_t place) { rows.add(cutOff, counts, place); });
        for (long long i = 0; at != nullptr && i < count; ++i) {
            const std::size_t place = lookup.placeOf(at[i]);
            rows.add(at[i], lookup.beyond(place), place);
        }
        rows.flush();
        return VEXROC_OK;
    });
}

int vexroc_best_cut_offs(const vexroc_summary* summary, const vexroc_inference_options* options, const char* criterion,
                         long long capacity, double* cut_offs, vexroc_best_result* result)
{
    return guarded([&] {
        const DefaultArithmetic arithmetic;
        const Summary& sample = unweighted(summary, "a best cut-off");
        const InferenceOptions checked = inferenceOptions(options);
        const NamedCriterion named = criterionByName(criterion);
        if (capacity < 0)
            throw InvalidArgument("capacity is negative");
        if (capacity > 0)
            required(cut_offs, "cut_offs");
        const CutOffCriterion best = criterionFor(sample, named, checked);
        const std::vector<OperatingPoint> points = bestPoints(sample, best, checked.curve());
        const auto ties = static_cast<long long>(points.size());
        for (long long i = 0; i < std::min(capacity, ties); ++i)
            cut_offs[i] = points[static_cast<std::size_t>(i)].cutOff;
        return deliver({.struct_size = 0,
                        .count = ties,
                        .chosen = points.empty() || !checked.largerIsPositive ? std::min(ties, 1LL) - 1 : ties - 1,
                        .value = points.empty() ? missing : best.value(points.front().counts),
                        .criterion = named.name.data(),
                        .share = named.share},
                       result);
    });
}

int vexroc_rate_at(const vexroc_summary* summary, const vexroc_inference_options* options, const char* criterion,
                   vexroc_rate_result* result)
{
    return guarded([&]() -> int {
        const DefaultArithmetic arithmetic;
        const Summary& sample = unweighted(summary, "a rate at a fixed one");
        const InferenceOptions checked = inferenceOptions(options);
        const NamedCriterion named = rateCriterion(criterion);
        const int word = positionOf(checked.interval, rateIntervalWords, "interval");
        const CutOffCriterion best = criterionFor(sample, named, checked);
        const std::vector<OperatingPoint> points = bestPoints(sample, best, checked.curve());
        const Directed directed(summary->sample(), checked.largerIsPositive);
        const RateAt rate(named.kind, named.share, sample.counts());
        const std::optional<RateInterval> interval = rateInterval(directed.counts(), checked, rate, word);
        if (!interval)
            return fail(VEXROC_CANCELLED, "cancelled");
        const bool bothStates = sample.counts().bothStates();
        return deliver({.struct_size = 0,
                        .reached = points.empty() ? missing : best.value(points.front().counts),
                        .cut_off = points.empty() ? missing : chosen(points, checked.largerIsPositive).cutOff,
                        .interpolated = bothStates ? rate.interpolated(directed.counts().values()) : missing,
                        .lower = interval->limits.lower,
                        .upper = interval->limits.upper,
                        .interval = rateIntervalWords[static_cast<std::size_t>(word)].data(),
                        .std_error = interval->stdError},
                       result);
    });
}
