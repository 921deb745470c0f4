/** @file
 * Inference on one ROC curve beyond that of the records: intervals that hold what they promise, operating points, best
 * cut-offs, partial and precision-recall areas, net benefit, the bootstrap. Each call takes a summary (summary.h) and
 * nothing else of the cases. docs/formulas.md has the formulas. Compiles as C99 and C++.
 *
 * Conventions that all calls share, beside those of analysis.h:
 *  - Options: one structure for all calls, each of which says which members it reads. vexroc_inference_defaults fills
 *    it; words are in letters of either case, null is the first of their list.
 *  - Missing: the quiet NaN with the payload 1954, as in arraycalls.h. A share 0/0 is missing, c/0 is infinite, and
 *    what depends on a missing value is missing. A level outside (0, 1) makes limits missing; any other number that
 *    cannot be is VEXROC_INVALID, and vexroc_last_error names it.
 *  - Direction: cut-offs are on the test's own scale, whichever end of it is positive.
 *  - Bits: results depend on the summary and the options alone: not on the machine, nor on threads.
 *  - Probability weights: what is not defined for them is VEXROC_INVALID, with the reason, as each call says.
 */
#pragma once

#include "vexrocproc/analysis.h"
#include "vexrocproc/summary.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** Options of all calls. Null for the whole structure: the defaults. */
typedef struct vexroc_inference_options {
    size_t struct_size;
    double level;            /**< of limits; 0.95 */
    int smaller_is_positive; /**< 1: smaller test values are more positive */
    int exclude_cut_off;     /**< 1: a value equal to a cut-off does not count as positive */
    const char* interval;    /**< words of the call */
    const char* proportion;  /**< of shares: "wilson", "exact" (Clopper and Pearson) */
    const char* p_method;    /**< "recommended", "mann-whitney", "wald" */
    const char* exact;       /**< of mann-whitney: "auto" (up to 4e6 steps), "always" (up to 1e11), "never" */
    const char* alternative; /**< "two-sided", "greater", "less" */
    double null_area;        /**< in (0, 1); 0.5 */
    int small_sample;        /**< 1: wald with DeLong's error takes Student's t */
    int uncorrected;         /**< 1: mann-whitney by the normal distribution without correction for continuity */
    double prevalence;       /**< in (0, 1); missing (the default) for that of the sample */
    double cost_ratio;       /**< above 0: cost of a missed positive over that of a false alarm; 1 */
    double min_sensitivity;  /**< in [0, 1]; 0 */
    double min_specificity;
    long long replicates;     /**< of the bootstrap; 1999. At least 2 / (1 - level) - 1 */
    unsigned long long seed;  /**< of the bootstrap; 1 */
    vexroc_progress progress; /**< told of what takes long, with 0 records; or null */
    vexroc_cancel cancel;     /**< asked by what takes long: VEXROC_CANCELLED; or null */
    vexroc_parallel parallel; /**< runs the pieces of a bootstrap; null: one after the other */
    void* user;               /**< for the three callbacks */
} vexroc_inference_options;

/** Fills as much of the structure as its struct_size says. */
int vexroc_inference_defaults(vexroc_inference_options* options);

/** An estimate between its limits. */
typedef struct vexroc_estimate {
    double value;
    double lower;
    double upper;
} vexroc_estimate;

/* One area ------------------------------------------------------------------------------------------------------- */

typedef struct vexroc_area_result {
    size_t struct_size;
    long long positive; /**< cases */
    long long negative;
    double area;
    double std_error;       /**< by the rule `error`; NaN for DeLong's with a single case of a state */
    const char* error;      /**< "delong", "hanley-mcneil" (interval wald), "weighted" (probability weights) */
    double lower, upper;    /**< by the rule `interval` */
    const char* interval;   /**< the word asked for; "score" where `edge` is 1; "bootstrap" where bca is not defined */
    int edge;               /**< 1: logit is not defined here, so the limits are those of score; never with weights */
    int percentile;         /**< 1: bca is not defined for these replicates, so the limits are percentiles */
    int held;               /**< 1: a limit is the first or last replicate, for want of more */
    double bootstrap_error; /**< standard deviation of the replicates; missing without a bootstrap */
    double z;               /**< of the test; t with small_sample; missing for an exact p */
    double p_value;
    double log10_p;       /**< its decimal logarithm, also where p_value underflows to 0 */
    const char* p_method; /**< "mann-whitney-exact", "mann-whitney", "wald", "wald-t" */
    double freedom;       /**< degrees of freedom of wald-t; missing for the others */
    double u;             /**< Mann-Whitney: P N area, in the direction asked for; missing with weights */
    double exact_steps;   /**< that the exact p takes */
    double null_area;     /**< that was tested */
} vexroc_area_result;

/**
 * The area with its interval and test. Reads level, direction, interval, p_method, exact, alternative, null_area,
 * small_sample, uncorrected, replicates, seed, callbacks.
 *
 * Words of interval: "score" (Newcombe 2006 with DeLong's variance as guard), "newcombe", "logit" (Pepe 2003), "wald"
 * (Hanley and McNeil's error), "wald-delong", "bootstrap" (percentile), "bca" (Efron 1987). With probability weights
 * "logit", which is the default there, and "wald-delong", both with the variance of Binder 1983.
 *
 * "recommended" p_method: mann-whitney for the null 0.5; wald for any other and with probability weights. wald divides
 * by std_error. A std_error of 0 says nothing beyond these cases: limits and p made of it are missing.
 *
 * Fills the structure without cases too: area and all that depends on it are missing.
 *
 * Memory: an exact p takes 4 bytes times exact_steps over the cases, 3 MB at 1e8 steps, at most half a GB; a bootstrap
 * 4 bytes a case, 8 a replicate and, for every piece that runs, 8 a distinct value.
 *
 * @return VEXROC_INVALID for mann-whitney with another null, for exact "always" beyond 1e11 steps
 */
int vexroc_area_inference(const vexroc_summary* summary, const vexroc_inference_options* options,
                          vexroc_area_result* result);

/**
 * Draws replicates of the bootstrap: 2 U, which is 2 P N times the area. Replicate b depends on summary, direction,
 * seed and b alone, so that ranges may be drawn anywhere. Reads direction, seed, progress and cancel.
 *
 * @param first, count  replicates first, first + 1, ...
 * @param twice_u       receives count numbers
 * @return VEXROC_INVALID without both states
 */
int vexroc_bootstrap_areas(const vexroc_summary* summary, const vexroc_inference_options* options, long long first,
                           long long count, long long* twice_u);

/**
 * What vexroc_area_inference says with interval "bootstrap" or "bca" (required), from replicates drawn before.
 *
 * @param twice_u  replicates 0 to count - 1, in any order; put into ascending order
 */
int vexroc_bootstrap_inference(const vexroc_summary* summary, const vexroc_inference_options* options,
                               long long* twice_u, long long count, vexroc_area_result* result);

/* Operating points ------------------------------------------------------------------------------------------------ */

/** Cut-offs of the curve: one more than distinct values; 0 for null. */
long long vexroc_cut_off_count(const vexroc_summary* summary);

/** Lists to fill, each with as many numbers as rows are asked for; null leaves one out. [0] the estimate, [1] and [2]
 *  its limits: limits that are left out cost nothing. */
typedef struct vexroc_operating_columns {
    size_t struct_size;
    double* cut_off;
    long long* true_positive; /**< cases; with probability weights the cases themselves, not their weights */
    long long* false_positive;
    long long* true_negative;
    long long* false_negative;
    double* sensitivity[3];
    double* specificity[3];
    double* ppv[3]; /**< at options->prevalence, else at that of the sample */
    double* npv[3];
    double* lr_positive[3];
    double* lr_negative[3];
    double* dor[3];
    double* accuracy[3];
    double* balanced_accuracy[3];
    double* f1[3];
    double* mcc[3]; /**< its limits are missing: no closed form holds */
    double* youden[3];
    double* kappa[3];
} vexroc_operating_columns;

/**
 * Operating points. Reads level, direction, exclude_cut_off, proportion, prevalence.
 *
 * With probability weights shares are those of weights and limits are missing.
 *
 * @param at     cut-offs that the rows are of, in this order, infinite ones included; null: those of the curve,
 *               ascending, from number `first` on
 * @param count  rows
 * @return VEXROC_INVALID for a cut-off that is NaN, for rows that are not there, without both states
 */
int vexroc_operating_points(const vexroc_summary* summary, const vexroc_inference_options* options, const double* at,
                            long long first, long long count, vexroc_operating_columns* columns);

/* Best cut-offs --------------------------------------------------------------------------------------------------- */

typedef struct vexroc_best_result {
    size_t struct_size;
    long long count;       /**< of tied cut-offs; 0 where none is defined or meets the constraints */
    long long chosen;      /**< index of the one that calls fewest cases positive; -1 without any */
    double value;          /**< of the criterion, in the words of docs/formulas.md; missing without any */
    const char* criterion; /**< its name without a share */
    double share;          /**< of "specificity" and "sensitivity"; missing for others */
} vexroc_best_result;

/**
 * The best cut-offs by a criterion, all ties, decided by integers. Reads direction, exclude_cut_off, cost_ratio,
 * prevalence, min_sensitivity, min_specificity (of youden).
 *
 * @param criterion  "youden", "closest", "accuracy", "cost", "f1", "mcc", "equal", "specificity=SHARE",
 *                   "sensitivity=SHARE"
 * @param capacity   of cut_offs; with fewer than count the rest is left out
 * @param cut_offs   receives the cut-offs, ascending; may be null for capacity 0
 * @return VEXROC_INVALID for a criterion that is not there (the text lists them), and with probability weights
 */
int vexroc_best_cut_offs(const vexroc_summary* summary, const vexroc_inference_options* options, const char* criterion,
                         long long capacity, double* cut_offs, vexroc_best_result* result);

typedef struct vexroc_rate_result {
    size_t struct_size;
    double reached;      /**< the rate at the best cut-off with at least the share of the other rate */
    double cut_off;      /**< that one */
    double interpolated; /**< the rate of the curve at the share, upper end of a vertical step */
    double lower, upper; /**< of `reached`, by the bootstrap: held in [0, 1]; missing for btii of std_error 0 */
    const char* interval;
    double std_error; /**< standard deviation behind btii; of the replicates behind bootstrap */
} vexroc_rate_result;

/**
 * Sensitivity at a fixed specificity, or the reverse, with an interval that knows that the cut-off was chosen from the
 * same data. Reads level, direction, exclude_cut_off, interval, replicates, seed, callbacks.
 *
 * Words of interval: "btii" (Zhou and Qin 2005), "bootstrap" (percentile), "none" (no replicates are drawn).
 *
 * @param criterion  "specificity=SHARE": of the sensitivity; "sensitivity=SHARE": of the specificity
 * @return VEXROC_INVALID for any other criterion, too few replicates, and with probability weights
 */
int vexroc_rate_at(const vexroc_summary* summary, const vexroc_inference_options* options, const char* criterion,
                   vexroc_rate_result* result);

/* Parts of the area, and that of precision and recall ------------------------------------------------------------- */

typedef struct vexroc_partial_result {
    size_t struct_size;
    double from, to; /**< the band */
    long long positive;
    long long negative;
    double area;      /**< in the unit of the whole area: at most to - from */
    double std_error; /**< NaN with a single case of a state */
    double lower, upper;
    const char* interval;
    double standardized; /**< 1/2 on the diagonal, 1 at the top: McClish 1989 */
    double standardized_error;
    double standardized_lower, standardized_upper;
    int edge;       /**< 1: the limits by this rule are missing, for the area is 0 or fills the band, or is of
                                  variance 0 */
    int few;        /**< 1: the band holds fewer than 5 of the cases that it is a share of */
    int percentile; /**< as in vexroc_area_result */
    int held;
    double bootstrap_error;
} vexroc_partial_result;

/**
 * The partial area: under the curve over a band of false positive rates, or right of it over one of sensitivities.
 * Reads level, direction, interval, replicates, seed, callbacks.
 *
 * Words of interval: "logit", "wald", "bootstrap", "bca".
 *
 * @param rate      "fpr": false positive rates; "tpr": sensitivities
 * @param from, to  0 <= from < to <= 1
 * @return VEXROC_INVALID for another band, and with probability weights
 */
int vexroc_partial_area(const vexroc_summary* summary, const vexroc_inference_options* options, const char* rate,
                        double from, double to, vexroc_partial_result* result);

typedef struct vexroc_pr_result {
    size_t struct_size;
    double area;
    double lower, upper;
    const char* interval;
    const char* rule;
    double prevalence; /**< that the area holds at */
    double chance;     /**< the area of a test that says nothing: the prevalence */
    double lowest;     /**< the lowest area of so many cases without ties, at the sample's prevalence; missing for
                              "trapezoid", another prevalence and with weights */
    long long positive;
    long long negative;
    int edge;       /**< 1: limits of "logit" are missing, or those of "binomial" of length 0, for the area is 0 or 1 */
    int percentile; /**< as in vexroc_area_result */
    int held;
    double bootstrap_error;
} vexroc_pr_result;

/**
 * The area under the precision-recall curve. Reads level, direction, interval, prevalence, replicates, seed, callbacks.
 *
 * Words of interval: "logit", "binomial" (Boyd, Eng and Page 2013), "bootstrap", "bca". At a stated prevalence limits
 * are missing but for the bootstraps. With probability weights the shares are those of weights and limits are missing.
 *
 * @param rule  "integral" (the interpolated curve), "step" (average precision), "trapezoid"; null: the first
 */
int vexroc_pr_area(const vexroc_summary* summary, const vexroc_inference_options* options, const char* rule,
                   vexroc_pr_result* result);

/* Decisions ------------------------------------------------------------------------------------------------------- */

/**
 * Net benefit at thresholds of risk, a score from the threshold on being positive: Vickers and Elkin 2006. Test values
 * are probabilities of the positive state. Reads prevalence.
 *
 * @param thresholds  count of them, in (0, 1)
 * @param model, treat_all  receive count net benefits each; that of treating none is 0. Null leaves a list out
 * @param true_positive, false_positive  receive the numbers of cases; null leaves a list out
 * @return VEXROC_INVALID for a threshold or a test value that is no such probability, without both states, for
 *         smaller_is_positive, and with probability weights
 */
int vexroc_net_benefit(const vexroc_summary* summary, const vexroc_inference_options* options, const double* thresholds,
                       long long count, double* model, double* treat_all, long long* true_positive,
                       long long* false_positive);

typedef struct vexroc_calibration_result {
    size_t struct_size;
    double mean_score; /**< in [0, 1] */
    double observed;   /**< share of positive cases, or the stated prevalence */
    double std_error;  /**< sqrt(mean_score (1 - mean_score) / n), of the observed share if the scores are right */
    int differs;       /**< 1: by more than three of them */
} vexroc_calibration_result;

/**
 * Do scores, which are probabilities, agree with the share of positive cases on the whole? Reads prevalence: if q is
 * stated, the mean score is q times that of the positive cases and 1 - q times that of the negative ones, against q.
 *
 * @return VEXROC_INVALID for a test value that is no probability, and with probability weights
 */
int vexroc_calibration(const vexroc_summary* summary, const vexroc_inference_options* options,
                       vexroc_calibration_result* result);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
