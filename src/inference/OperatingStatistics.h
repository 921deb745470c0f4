#pragma once

#include "inference/CutOffWeights.h"
#include "inference/Proportion.h"
#include "summary/CutOffCounts.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>

/// What a cut-off makes of the cases, in the words of diagnostic tests, each with its interval.
namespace ROCALG_920 {

/// Ratios of a count to none are infinite, of none to none missing.
enum class OperatingStatistic {
    sensitivity,
    specificity,
    ppv, ///< at the stated prevalence, or that of the sample
    npv,
    positiveLikelihoodRatio,
    negativeLikelihoodRatio,
    diagnosticOddsRatio,
    accuracy,
    balancedAccuracy,
    f1,
    mcc, ///< without limits: no closed interval holds at small numbers
    youden,
    kappa,
};

struct OperatingOptions {
    ProportionInterval proportion = ProportionInterval::wilson;
    double level = 0.95;
    double zCritical = 1.959963984540054; ///< of the level
    std::optional<double> prevalence{};   ///< in (0, 1); that of the sample without it
};

/// Lists to fill, each as long as there are rows; null leaves one out. Limits that are left out cost nothing.
struct EstimateLists {
    double* value = nullptr;
    double* lower = nullptr;
    double* upper = nullptr;
};

/// Some cut-offs of one sample with both states, and their statistics, list by list. A statistic that is not defined
/// has no limits.
///
/// Sources: shares Wilson 1927 or Clopper and Pearson 1934; youden and balanced Newcombe 1998 and Shan 2015 (PLoS ONE
/// 10(7) e0127272); ratios Simel 1991 (J. Clin. Epidemiol. 44, 763-770) and Woolf 1955, with 1/2 added to every cell
/// when one is 0; ppv and npv at a prevalence Mercaldo, Lau and Zhou 2007 (Statist. Med. 26, 2170-2183); f1 Lam, Gopal
/// and Qian 2023 (arXiv 2309.14621); kappa Fleiss, Cohen and Everitt 1969 (Psychol. Bull. 72, 323-327).
class OperatingRows {
public:
    static constexpr std::size_t most = 512; ///< what stays near

    /// At most so many, until they are cleared.
    void add(const CutOffCounts& counts) noexcept
    {
        add(counts,
            {static_cast<double>(counts.truePositives), static_cast<double>(counts.falsePositives),
             static_cast<double>(counts.trueNegatives), static_cast<double>(counts.falseNegatives)});
        byWeight_ = false;
    }
    /// Shares of weights instead of cases, all rows alike: limits are not asked for.
    void add(const CutOffCounts& counts, const CutOffWeights& weights) noexcept
    {
        counts_[rows_] = counts;
        tp_[rows_] = weights.truePositives;
        fp_[rows_] = weights.falsePositives;
        tn_[rows_] = weights.trueNegatives;
        fn_[rows_] = weights.falseNegatives;
        byWeight_ = true;
        ++rows_;
    }
    void clear() noexcept { rows_ = 0; }
    [[nodiscard]] std::span<const CutOffCounts> counts() const noexcept { return {counts_.data(), rows_}; }
    void fill(OperatingStatistic statistic, const OperatingOptions& options, const EstimateLists& lists) const;

private:
    std::size_t rows_ = 0;
    bool byWeight_ = false;
    std::array<CutOffCounts, most> counts_;
    // The same as doubles, or their weights.
    std::array<double, most> tp_;
    std::array<double, most> fp_;
    std::array<double, most> tn_;
    std::array<double, most> fn_;
};

/// The value of one cut-off; missing where it is not defined.
[[nodiscard]] double estimateOf(OperatingStatistic statistic, const CutOffCounts& counts,
                                const OperatingOptions& options = {});

} // namespace ROCALG_920
