#pragma once

#include "inference/OperatingPoint.h"
#include "inference/Proportion.h"

#include <optional>

/// What a cut-off makes of the cases, in the words of diagnostic tests, each with its interval.
namespace ROCALG_920 {

/// An estimate between its limits; missing where it is not defined.
struct Estimate {
    double value;
    double lower;
    double upper;
};

/// Every statistic of one cut-off. Ratios of a count to none are infinite, of none to none missing.
struct OperatingRow {
    double cutOff;
    CutOffCounts counts;
    Estimate sensitivity;
    Estimate specificity;
    Estimate ppv; ///< at the stated prevalence, or that of the sample
    Estimate npv;
    Estimate positiveLikelihoodRatio;
    Estimate negativeLikelihoodRatio;
    Estimate diagnosticOddsRatio;
    Estimate accuracy;
    Estimate balancedAccuracy;
    Estimate youden;
    Estimate f1;
    Estimate mcc; ///< without limits: no closed interval holds at small numbers
    Estimate kappa;
};

struct OperatingOptions {
    ProportionInterval proportion = ProportionInterval::wilson;
    double level = 0.95;
    double zCritical = 1.959963984540054; ///< of the level
    std::optional<double> prevalence{};   ///< in (0, 1); that of the sample without it
    bool limits = true;                   ///< estimates alone without
};

/// Sources: shares Wilson 1927 or Clopper and Pearson 1934; youden and balanced Newcombe 1998 and Shan 2015 (PLoS ONE
/// 10(7) e0127272); ratios Simel 1991 (J. Clin. Epidemiol. 44, 763-770) and Woolf 1955, with 1/2 added to every cell
/// when one is 0; ppv and npv at a prevalence Mercaldo, Lau and Zhou 2007 (Statist. Med. 26, 2170-2183); f1 Lam, Gopal
/// and Qian 2023 (arXiv 2309.14621); kappa Fleiss, Cohen and Everitt 1969.
[[nodiscard]] OperatingRow operatingRow(double cutOff, const CutOffCounts& counts, const OperatingOptions& options);

} // namespace ROCALG_920
