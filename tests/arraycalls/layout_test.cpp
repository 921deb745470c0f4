#include "vexrocproc/analysis.h"
#include "vexrocproc/arraycalls.h"

#include <cstddef>
#include <type_traits>

// What a binding in another language relies on; the compiler is the test.

static_assert(sizeof(prcurve_row) == 32);
static_assert(offsetof(prcurve_row, cutOff) == 0);
static_assert(offsetof(prcurve_row, recall) == 8);
static_assert(offsetof(prcurve_row, precision) == 16);
static_assert(offsetof(prcurve_row, interpolated) == 24 && sizeof(prcurve_row::interpolated) == 4);

static_assert(sizeof(roccurve_res) == 2 * sizeof(void*) && sizeof(prcurve_res) == 2 * sizeof(void*));
static_assert(offsetof(roccurve_res, rows) == 0 && offsetof(roccurve_res, count) == sizeof(void*));
static_assert(offsetof(prcurve_res, rows) == 0 && offsetof(prcurve_res, count) == sizeof(void*));

static_assert(sizeof(auc_res) == 7 * sizeof(double));
static_assert(offsetof(auc_res, posCount) == 0 && offsetof(auc_res, negCount) == 8 && offsetof(auc_res, area) == 16);
static_assert(offsetof(auc_res, stdError) == 24 && offsetof(auc_res, asymptoticSig) == 32);
static_assert(offsetof(auc_res, ciLower) == 40 && offsetof(auc_res, ciUpper) == 48);

static_assert(sizeof(auc_comparison_res) == 20 * sizeof(double));
static_assert(offsetof(auc_comparison_res, first) == 0 && offsetof(auc_comparison_res, second) == 7 * 8);
static_assert(offsetof(auc_comparison_res, z) == 14 * 8 && offsetof(auc_comparison_res, zSig) == 15 * 8);
static_assert(offsetof(auc_comparison_res, areaDiff) == 16 * 8 && offsetof(auc_comparison_res, stdErrorDiff) == 17 * 8);
static_assert(offsetof(auc_comparison_res, ciLower) == 18 * 8 && offsetof(auc_comparison_res, ciUpper) == 19 * 8);

static_assert(sizeof(roccurve_res::count) == 4 && sizeof(prcurve_res::count) == 4);
template <class... Record>
constexpr bool passLikeC = ((std::is_trivial_v<Record> && std::is_standard_layout_v<Record>)&&...);
static_assert(passLikeC<roccurve_res, prcurve_row, prcurve_res, auc_res, auc_comparison_res>);

// Structures that begin with their size grow at the end only: what is there stays where it is.
static_assert(passLikeC<vexroc_warning, vexroc_record, vexroc_comparison>);
static_assert(offsetof(vexroc_warning, parameters) == 16 && offsetof(vexroc_warning, code) == 28);
static_assert(offsetof(vexroc_record, group_value) == 24 && offsetof(vexroc_record, positive) == 32);
static_assert(offsetof(vexroc_record, weighted_positive) == 40 && offsetof(vexroc_record, area) == 56);
static_assert(offsetof(vexroc_record, ci_upper) == 88 && offsetof(vexroc_record, ks_cut_off) == 112);
static_assert(offsetof(vexroc_record, curve_rows) == 120 && offsetof(vexroc_record, distribution_changed) == 128);
static_assert(offsetof(vexroc_comparison, difference) == 16 && offsetof(vexroc_comparison, ci_upper) == 56);
