#include "cli/study/CurveInference.h"

#include "cli/study/require.h"
#include "cli/words/VisibleText.h"
#include "vexrocproc/inference.h"

#include <algorithm>
#include <cmath>

namespace vexroc {

namespace {

/// An answer of the library: a usage error where it refuses, for the numbers are as the user gave them.
void requireAnswer(int result)
{
    if (result == VEXROC_CANCELLED)
        throw cancelled();
    if (result == VEXROC_INVALID)
        throw usageError(vexroc_last_error());
    require(result);
}

/// "summary: there is ..." without the argument that it begins with.
std::string withoutArgument(const std::string& complaint)
{
    const std::size_t colon = complaint.find(": ");
    return colon == std::string::npos ? complaint : complaint.substr(colon + 2);
}

template <class Answer>
Answer toBeFilled()
{
    Answer answer{};
    answer.struct_size = sizeof answer;
    return answer;
}

/// Where the library puts each measure, in their order.
constexpr std::array<double* (vexroc_operating_columns::*)[3], measureCount> columnsOfMeasures{
    &vexroc_operating_columns::sensitivity,
    &vexroc_operating_columns::specificity,
    &vexroc_operating_columns::ppv,
    &vexroc_operating_columns::npv,
    &vexroc_operating_columns::lr_positive,
    &vexroc_operating_columns::lr_negative,
    &vexroc_operating_columns::dor,
    &vexroc_operating_columns::accuracy,
    &vexroc_operating_columns::balanced_accuracy,
    &vexroc_operating_columns::f1,
    &vexroc_operating_columns::mcc,
    &vexroc_operating_columns::youden,
    &vexroc_operating_columns::kappa};

OperatingPoints withRows(std::size_t rows)
{
    OperatingPoints points{.cutOffs = std::vector<double>(rows, notComputed),
                           .truePositive = std::vector<long long>(rows),
                           .falsePositive = std::vector<long long>(rows),
                           .trueNegative = std::vector<long long>(rows),
                           .falseNegative = std::vector<long long>(rows),
                           .measures = {},
                           .isNamed = false};
    for (auto& measure : points.measures)
        for (std::vector<double>& numbers : measure)
            numbers.assign(rows, notComputed);
    return points;
}

/// The lists of points as the library fills them.
vexroc_operating_columns columnsOf(OperatingPoints& points)
{
    auto columns = toBeFilled<vexroc_operating_columns>();
    columns.cut_off = points.cutOffs.data();
    columns.true_positive = points.truePositive.data();
    columns.false_positive = points.falsePositive.data();
    columns.true_negative = points.trueNegative.data();
    columns.false_negative = points.falseNegative.data();
    for (std::size_t m = 0; m < measureCount; ++m)
        for (std::size_t i = 0; i < 3; ++i)
            (columns.*columnsOfMeasures[m])[i] = points.measures[m][i].data();
    return columns;
}

} // namespace

double samplePrevalence(const Area& area)
{
    const long long cases = area.positive + area.negative;
    return cases > 0 ? static_cast<double>(area.positive) / static_cast<double>(cases) : notComputed;
}

CutOffReading OperatingPoints::readingOf(const TestResult& test, std::size_t row) const
{
    CutOffReading reading = test.readingOf(cutOff(row));
    if (isNamed && std::isfinite(cutOffs[row]))
        reading.positive = CutOffReading::Calls::some;
    return reading;
}

CurveInference::CurveInference(const TestResult& test, const Question& question, const CurveOptions& options,
                               const Watch& watch)
    : test_(test), question_(question), options_(options), watch_(watch)
{
}

OperatingPoints CurveInference::points(const std::optional<std::vector<double>>& at) const
{
    if (!hasBothStates())
        return {};
    const long long rows = at ? static_cast<long long>(at->size()) : vexroc_cut_off_count(test_.summary.get());
    OperatingPoints points = withRows(static_cast<std::size_t>(rows));
    points.isNamed = at.has_value();
    vexroc_operating_columns columns = columnsOf(points);
    const vexroc_inference_options options = optionsFor("");
    requireAnswer(vexroc_operating_points(test_.summary.get(), &options, at ? at->data() : nullptr, 0, rows, &columns));
    return points;
}

BestCutOffs CurveInference::best(const std::string& criterion) const
{
    BestCutOffs best{.criterion = criterion};
    if (!hasBothStates())
        return best;
    auto found = toBeFilled<vexroc_best_result>();
    const vexroc_inference_options options = optionsFor("");
    std::vector<double> cutOffs;
    do { // few are tied, as a rule
        cutOffs.resize(std::max<std::size_t>(8, static_cast<std::size_t>(found.count)));
        requireAnswer(vexroc_best_cut_offs(test_.summary.get(), &options, criterion.c_str(),
                                           static_cast<long long>(cutOffs.size()), cutOffs.data(), &found));
    } while (static_cast<std::size_t>(found.count) > cutOffs.size());
    if (found.count == 0) {
        remark("criterion-unmet", criterion);
        return best;
    }
    cutOffs.resize(static_cast<std::size_t>(found.count));
    best.value = found.value;
    best.chosen = static_cast<std::size_t>(found.chosen);
    best.ties = points(cutOffs);
    best.ties.isNamed = false;
    if (best.fixesRate())
        addRate(best);
    return best;
}

void CurveInference::addRate(BestCutOffs& best) const
{
    auto found = toBeFilled<vexroc_rate_result>();
    const vexroc_inference_options options = optionsFor(options_.interval);
    requireAnswer(vexroc_rate_at(test_.summary.get(), &options, best.criterion.c_str(), &found));
    if (found.std_error == 0.0) // exact: all replicates are one
        remark("zero-error");
    best.interval = found.interval;
    best.rate = {found.reached, found.lower, found.upper};
    best.rateError = found.std_error;
    best.interpolated = found.interpolated;
}

PartialArea CurveInference::partial(const Band& band) const
{
    if (!hasBothStates())
        return {.interval = options_.interval};
    auto found = toBeFilled<vexroc_partial_result>();
    const vexroc_inference_options options = optionsFor(options_.interval);
    requireAnswer(vexroc_partial_area(test_.summary.get(), &options, band.rate.c_str(), band.from, band.to, &found));
    Area cases = test_.area;
    cases.test = watch_.prefix + cases.test;
    watch_.remarks->addCases(cases);
    if (found.edge != 0)
        remark("zero-error");
    if (found.few != 0)
        remark("few-in-band");
    remarkOnReplicates(found);
    return {.interval = found.interval,
            .area = {found.area, found.lower, found.upper},
            .stdError = found.std_error,
            .standardized = {found.standardized, found.standardized_lower, found.standardized_upper},
            .standardizedError = found.standardized_error};
}

PrecisionRecallArea CurveInference::precisionRecall(const std::string& rule) const
{
    if (!hasBothStates())
        return {.interval = options_.interval};
    auto found = toBeFilled<vexroc_pr_result>();
    const vexroc_inference_options options = optionsFor(options_.interval);
    requireAnswer(vexroc_pr_area(test_.summary.get(), &options, rule.c_str(), &found));
    if (found.edge != 0)
        remark("pr-edge");
    remarkOnReplicates(found);
    return {.interval = found.interval,
            .area = {found.area, found.lower, found.upper},
            .prevalence = found.prevalence,
            .lowest = found.lowest};
}

NetBenefit CurveInference::benefit(const std::vector<double>& thresholds) const
{
    if (!hasBothStates())
        return {};
    const std::size_t rows = thresholds.size();
    NetBenefit benefit{.thresholds = thresholds,
                       .model = std::vector<double>(rows),
                       .treatAll = std::vector<double>(rows),
                       .truePositive = std::vector<long long>(rows),
                       .falsePositive = std::vector<long long>(rows)};
    const vexroc_inference_options options = optionsFor("");
    const int result = vexroc_net_benefit(test_.summary.get(), &options, thresholds.data(),
                                          static_cast<long long>(rows), benefit.model.data(), benefit.treatAll.data(),
                                          benefit.truePositive.data(), benefit.falsePositive.data());
    if (result == VEXROC_INVALID) // the options were looked at before: it is the data
        throw inputError("--test " + inQuotes(test_.area.test) + ": net benefit takes scores for probabilities; "
                         + withoutArgument(vexroc_last_error()));
    requireAnswer(result);
    auto calibration = toBeFilled<vexroc_calibration_result>();
    requireAnswer(vexroc_calibration(test_.summary.get(), &options, &calibration));
    benefit.meanScore = calibration.mean_score;
    benefit.observed = calibration.observed;
    if (calibration.differs != 0)
        remark("not-calibrated");
    return benefit;
}

vexroc_inference_options CurveInference::optionsFor(const std::string& interval) const
{
    auto options = toBeFilled<vexroc_inference_options>();
    require(vexroc_inference_defaults(&options));
    options.level = question_.inference.level;
    options.smaller_is_positive = test_.area.largerIsPositive ? 0 : 1;
    options.exclude_cut_off = question_.equalIsPositive ? 0 : 1;
    options.interval = interval.empty() ? nullptr : interval.c_str();
    options.proportion = options_.proportion.c_str();
    if (options_.prevalence)
        options.prevalence = *options_.prevalence;
    options.cost_ratio = options_.costRatio;
    options.min_sensitivity = options_.minSensitivity;
    options.min_specificity = options_.minSpecificity;
    options.replicates = question_.inference.replicates;
    options.seed = question_.inference.seed;
    options.parallel = watch_.parallel;
    options.progress = watch_.progress ? Watch::tellProgress : nullptr;
    options.cancel = watch_.cancelRequested ? Watch::askCancel : nullptr;
    options.user = watch_.asUser();
    return options;
}

bool CurveInference::hasBothStates() const
{
    return test_.summary && test_.area.positive > 0 && test_.area.negative > 0;
}

void CurveInference::remark(const char* code, const std::string& detail) const
{
    watch_.remarks->add(code, watch_.prefix + subjectOf(test_.area), detail);
}

void CurveInference::remarkOnReplicates(const auto& result) const
{
    if (result.percentile != 0)
        remark("percentile-instead");
    if (result.held != 0)
        remark("few-replicates");
}

} // namespace vexroc
