#pragma once

#include "tests/support/Exact.h"
#include "tests/support/Sample.h"
#include "vexrocproc/arraycalls.h"

#include <span>
#include <vector>

/// The array calls on samples, with everything they return as one list of numbers.
namespace roctest {

/// The options of a call.
struct Words {
    const char* include = "include";
    const char* larger = "larger";
    const char* interpolation = "davis-goadrich";
    const char* distribution = "nonparam";
    const double* positiveValue = nullptr;
};

/// The rows of a result, which is released; nothing at all (not even 0 rows) fails the test program.
[[nodiscard]] Numbers taken(const roccurve_res& result); ///< three numbers a row
[[nodiscard]] Numbers taken(const prcurve_res& result);  ///< four numbers a row

[[nodiscard]] Numbers curve(std::span<const double> states, std::span<const double> values, const Words& words = {});
[[nodiscard]] Numbers precisionRecall(std::span<const double> states, std::span<const double> values,
                                      const Words& words = {});
[[nodiscard]] auc_res areaOf(std::span<const double> states, std::span<const double> values, const Words& words = {},
                             double level = 0.95);
[[nodiscard]] auc_comparison_res pairedOf(const Sample& sample, const Words& words = {}, double level = 0.95);
/// The two variables as if other cases stood behind each.
[[nodiscard]] auc_comparison_res independentOf(const Sample& sample, const Words& words = {}, double level = 0.95);

[[nodiscard]] Numbers numbers(const auc_res& record);
[[nodiscard]] Numbers numbers(const auc_comparison_res& record);

/// What every call says about the sample.
[[nodiscard]] Numbers everything(const Sample& sample, const Words& words);

} // namespace roctest
