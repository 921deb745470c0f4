#pragma once

#include "cli/study/Question.h"
#include "cli/study/Results.h"
#include "cli/study/Watch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct vexroc_inference_options;

namespace vexroc {

/// How it is asked beside what the question says, in the words of vexrocproc/inference.h; empty for their first.
struct CurveOptions {
    std::string interval = {};
    std::string proportion = "wilson";
    std::optional<double> prevalence = {}; ///< that of the sample without it
    double costRatio = 1.0;
    double minSensitivity = 0.0;
    double minSpecificity = 0.0;
};

struct Estimate {
    double value = notComputed;
    double lower = notComputed;
    double upper = notComputed;
};

/// What a cut-off is measured by.
enum class Measure : std::uint8_t {
    sensitivity,
    specificity,
    ppv,
    npv,
    lrPositive,
    lrNegative,
    dor,
    accuracy,
    balancedAccuracy,
    f1,
    mcc,
    youden,
    kappa,
};
constexpr std::size_t measureCount = 13;

/// Rows of cut-offs; all lists are parallel.
struct OperatingPoints {
    std::vector<double> cutOffs;
    std::vector<long long> truePositive;
    std::vector<long long> falsePositive;
    std::vector<long long> trueNegative;
    std::vector<long long> falseNegative;
    std::array<std::array<std::vector<double>, 3>, measureCount> measures = {}; ///< each an estimate and its two limits
    bool isNamed = false; ///< the cut-offs are the user's, shown as numbers whatever they call positive

    [[nodiscard]] std::size_t size() const noexcept { return cutOffs.size(); }
    [[nodiscard]] Estimate at(Measure measure, std::size_t row) const
    {
        const auto& [value, lower, upper] = measures[static_cast<std::size_t>(measure)];
        return {value[row], lower[row], upper[row]};
    }
    [[nodiscard]] CutOff cutOff(std::size_t row) const
    {
        return {cutOffs[row], at(Measure::sensitivity, row).value, at(Measure::specificity, row).value,
                truePositive[row], falsePositive[row]};
    }
    [[nodiscard]] CutOffReading readingOf(const TestResult& test, std::size_t row) const;
};

/// The best cut-offs by one criterion.
struct BestCutOffs {
    std::string criterion; ///< as it is asked for
    double value = notComputed;
    OperatingPoints ties = {}; ///< ascending
    std::size_t chosen = npos; ///< of the ties
    std::string interval = {}; ///< of the rate; empty for a criterion that fixes none
    Estimate rate = {};        ///< where the criterion fixes the other one: what the best cut-off reaches
    double rateError = notComputed;
    double interpolated = notComputed; ///< the rate of the curve itself

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    /// "specificity=0.9" fixes the specificity, and asks for the sensitivity.
    [[nodiscard]] bool fixesRate() const { return criterion.find('=') != std::string::npos; }
    [[nodiscard]] std::string_view rateName() const
    {
        return criterion.starts_with("specificity") ? "sensitivity" : "specificity";
    }
};

/// A band of false positive rates ("fpr") or of sensitivities ("tpr").
struct Band {
    std::string rate;
    double from;
    double to;
};

struct PartialArea {
    std::string interval; ///< that the limits are by: not always the one asked for
    Estimate area = {};
    double stdError = notComputed;
    Estimate standardized = {}; ///< 1/2 on the diagonal, 1 at the top
    double standardizedError = notComputed;
};

struct PrecisionRecallArea {
    std::string interval; ///< that the limits are by
    Estimate area = {};
    double prevalence = notComputed; ///< that it holds at, and the area of a test that says nothing
    double lowest = notComputed;     ///< of all areas of so many cases
};

struct NetBenefit {
    std::vector<double> thresholds;
    std::vector<double> model;
    std::vector<double> treatAll;
    std::vector<long long> truePositive;
    std::vector<long long> falsePositive;
    double meanScore = notComputed;
    double observed = notComputed; ///< share of positive cases, or the stated prevalence
};

/// Share of positive cases; missing without any case.
double samplePrevalence(const Area& area);

/// An answer about one curve of an analysis.
template <class Answer>
struct AboutCurve {
    std::string_view value; ///< of the column `by`
    const TestResult* test;
    Answer answer;
};

/// The cases of one test in one group, and what can be asked of them beyond the area. Without both states numbers are
/// missing, and lists are empty. Each call throws a usage error in the library's words where it refuses, and the
/// failure of a cancel; what there is to say of its answer goes to the remarks of the watch.
class CurveInference {
public:
    /// Refers to all of them.
    CurveInference(const TestResult& test, const Question& question, const CurveOptions& options, const Watch& watch);

    /// Of cut-offs that are named, or of all of the curve.
    [[nodiscard]] OperatingPoints points(const std::optional<std::vector<double>>& at) const;
    [[nodiscard]] BestCutOffs best(const std::string& criterion) const;
    [[nodiscard]] PartialArea partial(const Band& band) const;
    [[nodiscard]] PrecisionRecallArea precisionRecall(const std::string& rule) const;
    [[nodiscard]] NetBenefit benefit(const std::vector<double>& thresholds) const;

private:
    [[nodiscard]] vexroc_inference_options optionsFor(const std::string& interval) const;
    [[nodiscard]] bool hasBothStates() const;
    void addRate(BestCutOffs& best) const;
    void remark(const char* code, const std::string& detail = "") const;
    /// What bootstraps have to say of themselves.
    void remarkOnReplicates(const auto& result) const;

    const TestResult& test_;
    const Question& question_;
    const CurveOptions& options_;
    const Watch& watch_;
};

} // namespace vexroc
