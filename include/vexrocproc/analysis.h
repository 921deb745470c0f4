/** @file
 * The full analysis for callers in any language: groups, weights, comparisons, both curves, warnings, progress and
 * cancel, behind one opaque handle. Compiles as C99 and C++.
 *
 * Order of calls: vexroc_analysis_new; columns and settings; vexroc_analysis_run; results by index;
 * vexroc_analysis_free. A run may follow another; results are those of the last.
 *
 * Conventions that all calls share:
 *  - Results: calls that can fail return one of enum vexroc_result. vexroc_last_error tells in words what the last
 *    failed call of the thread complained about. No exception leaves a call and nothing is printed.
 *  - Ownership: the values of columns are not copied; they must stay as they are until the last run has ended. Names
 *    are copied. Texts and arrays that a call hands out belong to the handle and live until its next run or its end.
 *  - Missing values: any NaN in a column is missing. A row without a state, or without the group, weight or count in
 *    use, is left out; a test value that is missing leaves its row out of that test, and of every test in a paired
 *    comparison of complete cases, so that positive + negative of a record are fewer. vexroc_analysis_rows and
 *    vexroc_analysis_missing_test tell how many, by reason. A statistic that cannot be computed is the quiet NaN with
 *    the payload 1954, as in arraycalls.h.
 *  - Growth: the caller sets struct_size of a result structure to its sizeof; the library fills no more than that,
 *    so that a program goes on working with a later library. New members are added at the end only.
 *  - Threads: one handle is used by one thread at a time; handles share nothing. Callbacks run on the thread that
 *    called vexroc_analysis_run, and must not call anything with the same handle.
 */
#pragma once

#include "vexrocproc/remarks.h"
#include "vexrocproc/summary.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** Counts up with every addition to this header; what a program was compiled with. */
#define VEXROC_ANALYSIS_VERSION 4

/** The same of the library that is loaded. */
int vexroc_analysis_version(void);

enum vexroc_result {
    VEXROC_OK = 0,
    VEXROC_CANCELLED = 1, /**< the cancel callback ended the run */
    VEXROC_NO_RESULT = 2, /**< the run ended with an error: see vexroc_analysis_status; vexroc_last_error says why */
    VEXROC_INVALID = 3,   /**< an argument that cannot be, or settings that do not go together */
    VEXROC_NO_MEMORY = 4,
    VEXROC_FAILED = 5 /**< anything else, which vexroc_last_error tells */
};

/** What the last failed call of this thread complained about; "" before there was one. Never null. */
const char* vexroc_last_error(void);

typedef struct vexroc_analysis vexroc_analysis;

/** Sets *analysis to a new handle, or to null on failure. */
int vexroc_analysis_new(vexroc_analysis** analysis);

/** Ends the handle and all that it handed out; null is ignored. */
void vexroc_analysis_free(vexroc_analysis* analysis);

/**
 * Adds a column.
 *
 * @param name    of the variable
 * @param values  rows doubles, NaN for missing; may be null when rows is 0
 * @param rows    the same for all columns, at most 2147483647
 * @param column  receives the index of the column, from 0; may be null
 */
int vexroc_analysis_add_column(vexroc_analysis* analysis, const char* name, const double* values, long long rows,
                               int* column);

/**
 * Gives a column its part: "state" (required), "test" (once per test variable, required; not the state), "group",
 * "weight" or "count". A group also needs group_cut, group_first with group_second, or group_mid_point.
 *
 * A weight moves the numbers of cases, not areas and errors. A count is the number of cases that the row stands for, a
 * whole number from 0: all results are those of as many rows, to the bit. A row without a count is left out; a run
 * with any other count, or with a weight beside it, is refused.
 *
 * @param column  -1 takes the part back: "test" from all its columns, "group" together with the way of grouping
 */
int vexroc_analysis_set_column(vexroc_analysis* analysis, const char* setting, int column);

/**
 * Sets a number, never NaN:
 *   positive_value    state of a positive case, compared exactly; 1
 *   confidence_level  in (0, 1); 0.95
 *   group_cut         two groups: below this value of the group column, and from it on
 *   group_first, group_second  two groups of one value each, in this order, not the same; other cases are left out
 *   group_mid_point   not 0: two groups, below and from the middle of the group column's range
 *                     (the last way of grouping that was set is in force; it takes the others back)
 *   roc, pr           not 0: with ROC curves (1), with precision-recall curves (0)
 *   null_area         that the area is tested against, in (0, 1); 0.5
 *   replicates        of the bootstrap, a whole number; 1999
 *   summaries         not 0: the summary of every record is kept, for vexroc_analysis_summary (0)
 */
int vexroc_analysis_set_number(vexroc_analysis* analysis, const char* setting, double value);

/**
 * Adds a value of the negative state, never NaN, and sets the word "negative" to "listed": states that are neither
 * positive nor listed are left out then. Setting the word to "all" takes the list back.
 */
int vexroc_analysis_add_negative(vexroc_analysis* analysis, double value);

/**
 * The direction of one test: "larger" or "smaller"; null takes it back, then the word setting "direction" holds for it.
 * Cut-offs stay those of the test's own scale.
 *
 * @param column  of a test
 */
int vexroc_analysis_set_direction(vexroc_analysis* analysis, int column, const char* word);

/** How texts of remarks name a value of a column, such as "female" for 1. The text is copied. */
int vexroc_analysis_name_value(vexroc_analysis* analysis, int column, double value, const char* name);

/**
 * Sets a word, in letters of either case; the first of each list is in force before:
 *   direction      larger, smaller: which end of the scale is positive
 *   cut_off        include, exclude: does a value equal to a cut-off count as positive?
 *   distribution   nonparam, bi-negative: assumption behind the standard error
 *   interpolation  davis-goadrich, keilwagen: of precision-recall points
 *   comparison     none, independent, paired: of each test between the groups, or of all pairs of tests
 *   negative       all, listed: states other than the positive one, or those of vexroc_analysis_add_negative
 *   cases          complete, pairwise: of a paired comparison; pairwise, every two tests are compared on the rows in
 *                  which both are known, and each test has the record that it has without a comparison
 *   interval       record, wald, wald-delong, recommended, score, newcombe, logit, bootstrap, bca: interval of a
 *                  record's area. record: by the standard error of the distribution, but DeLong's in a paired
 *                  comparison of complete cases. wald: by that of the distribution, always; wald-delong: by DeLong's.
 *                  The others are those of vexroc_area_inference, beside DeLong's standard error; recommended is score
 *                  (logit with probability weights; wald for bi-negative). With all but record, each test settles its
 *                  distribution by itself, and significance, and limits made of a standard error of 0, are missing.
 *                  An independent comparison is made of the standard errors of its records, a paired one of DeLong's
 *   p_value        record, recommended, mann-whitney, wald: test behind p_value of a record. record: against 0.5 by
 *                  the standard error, missing where that is 0. wald: against null_area by the standard error.
 *                  recommended: mann-whitney, but wald for another null_area, bi-negative and probability weights
 *   exact          auto, always, never: of mann-whitney, as in inference.h
 *   alternative    two-sided, greater, less: of p_value, of areas and differences; intervals are two-sided
 *   weight_kind    unsaid, counts, probability: what weights are. unsaid: numbers of cases, with a caution that they
 *                  move nothing else; counts: that is meant, and needs no caution; probability: inverse sampling
 *                  probabilities on any scale
 *
 * With weight_kind probability the weights move area, error, limits, p, the rates of both curves and the best cut-offs;
 * numbers of cases and their counts at cut-offs stay those of the cases. A weight of 0 leaves its row out; the run
 * refuses one that is negative or infinite, and names its row. Precision-recall points are the measured ones.
 *
 * What does not go together is refused by the run: mann-whitney with another null_area or with bi-negative, bi-negative
 * with an interval that is not record, recommended or wald; null_area other than 0.5 with the p_value record;
 * probability without a weight, with an interval other than logit and wald-delong, with mann-whitney and in a paired
 * comparison; exact "always" beyond 1e11 steps.
 */
int vexroc_analysis_set_word(vexroc_analysis* analysis, const char* setting, const char* word);

/** Told how far a run is: the share of the work in [0, 1], and the records read so far. */
typedef void (*vexroc_progress)(double share, int records, void* user);
/** Asked again and again whether to stop: any answer but 0 cancels the run. */
typedef int (*vexroc_cancel)(void* user);

/** Null takes the callback back. */
int vexroc_analysis_on_progress(vexroc_analysis* analysis, vexroc_progress callback, void* user);
/** Null takes the callback back. */
int vexroc_analysis_on_cancel(vexroc_analysis* analysis, vexroc_cancel callback, void* user);

/** Seed of the bootstrap; 1 before. */
int vexroc_analysis_set_seed(vexroc_analysis* analysis, unsigned long long seed);

/**
 * Runs pieces of work that know nothing of each other: calls piece(work, index) once for each index from 0 to
 * pieces - 1, on whatever threads, and comes back when all have come back. The library starts no thread itself.
 */
typedef void (*vexroc_parallel)(int pieces, void (*piece)(void* work, int index), void* work, void* user);

/** Null takes the callback back: pieces run one after the other, on the thread of the run. */
int vexroc_analysis_on_parallel(vexroc_analysis* analysis, vexroc_parallel callback, void* user);

/** Runs the analysis. VEXROC_NO_RESULT: vexroc_last_error and vexroc_analysis_status tell why. */
int vexroc_analysis_run(vexroc_analysis* analysis);

/**
 * Status of the last run: 0 "No error", 1 "Cancelled", or an error code with its name, such as 430005
 * "Setting_Error_TestVar"; 430001 "Unexpected_Failure" when memory ran out (VEXROC_NO_MEMORY) or a callback threw.
 * Either pointer may be null.
 */
int vexroc_analysis_status(const vexroc_analysis* analysis, int* code, const char** name);

/* Numbers of results of the last run; 0 for a null handle and before a run. */
int vexroc_analysis_warning_count(const vexroc_analysis* analysis);
int vexroc_analysis_record_count(const vexroc_analysis* analysis);
int vexroc_analysis_comparison_count(const vexroc_analysis* analysis);
/** Rows that the last run left out, as state, group, weight or count was missing, or the state was not listed. */
int vexroc_analysis_left_out_count(const vexroc_analysis* analysis);

/**
 * What became of the rows of the last run. Each is counted once: under the first reason that leaves it out, in the
 * order missing_count, missing_state, other_state, missing_group and on, or as used. So read is the sum of all members
 * from missing_state to negative, other_state and missing_count. With a "count" a row counts as often as that says.
 */
typedef struct vexroc_rows {
    size_t struct_size;
    long long read;
    long long missing_state;
    long long missing_group;
    long long missing_weight;
    long long other_group;     /**< neither group_first nor group_second; 0 in a paired comparison: all are used */
    long long unusable_weight; /**< rounds to less than one case, or is beyond the range of int; a probability: 0 */
    long long incomplete;      /**< a test is missing, in a paired comparison of complete cases; 0 in others */
    long long positive;        /**< of the rows used */
    long long negative;
    double weighted_positive; /**< sum of their weights, rounded with halves up but for probabilities; their number
                                   without weights */
    double weighted_negative;
    long long rounded_weights; /**< of the rows with state, group and weight: the weight is not a whole number */
    long long rounded_used;    /**< of these: those used or incomplete */
    long long too_heavy;       /**< of unusable_weight: beyond the range of int */
    long long other_state;     /**< neither the positive state nor a listed negative one; part of the sum as well */
    long long missing_count;   /**< likewise: without a "count" */
    long long given;           /**< rows of the columns; read is their number, or the sum of their counts */
} vexroc_rows;

/** Fills the structure, also after a run that ended with an error or was cancelled: all rows are counted before. */
int vexroc_analysis_rows(const vexroc_analysis* analysis, vexroc_rows* rows);

/**
 * Rows of the last run that lack only the value of one test: those used or incomplete in the words of vexroc_rows.
 *
 * @param column              of a test; VEXROC_INVALID for any other
 * @param positive, negative  receive the rows of either state; either may be null
 */
int vexroc_analysis_missing_test(const vexroc_analysis* analysis, int column, long long* positive, long long* negative);

typedef struct vexroc_warning {
    size_t struct_size;
    const char* name;      /**< such as "WARN_TieExist" */
    const int* parameters; /**< parameter_count integers, for example indices of columns */
    int parameter_count;
    int code; /**< such as 430102 */
} vexroc_warning;

/** Result of one test variable in one group. */
typedef struct vexroc_record {
    size_t struct_size;
    int test;                 /**< column of the test variable */
    int group;                /**< column of the group; -1 for all cases */
    int group_operation;      /**< group value of the cases: 0 equal to, 1 at least, 2 below group_value */
    int ties;                 /**< 1 when positive and negative cases share a test value, with a curve or without */
    double group_value;       /**< missing for all cases */
    int positive;             /**< number of positive cases */
    int negative;             /**< number of negative cases */
    double weighted_positive; /**< sum of their weights; their number without weights */
    double weighted_negative;
    double area;         /**< area under the ROC curve, in [0, 1] */
    double std_error;    /**< of the area, by the rule "error" */
    double significance; /**< two-sided, against the area 0.5; to about 2e-16 */
    double ci_lower;     /**< of the area, not clipped to [0, 1] */
    double ci_upper;
    double gini;               /**< 2 * area - 1 */
    double ks_maximum;         /**< largest sensitivity + specificity - 1; -1 without a curve */
    double ks_cut_off;         /**< its cut-off */
    int curve_rows;            /**< rows of the ROC curve */
    int pr_rows;               /**< points of the precision-recall curve, interpolated ones included */
    int distribution_changed;  /**< 1 when bi-negative was asked for and replaced: for the whole run, or by the test */
    int smaller_is_positive;   /**< direction of the test */
    int distinct_values;       /**< different test values of its cases, 3 for three and more; 0 without both states */
    double p_value;            /**< without a floor. With the word p_value "record": erfc(|z| / sqrt(2)) of
                               z = (area - 0.5) / std_error, missing for a standard error of 0 */
    double log10_p;            /**< its decimal logarithm, also where p_value underflows to 0 */
    const char* interval;      /**< "nonparam", "bi-negative", "delong" or "weighted": what std_error is */
    const char* error;         /**< the same in the words of vexroc_area_result: "hanley-mcneil", "bi-negative", ... */
    const char* interval_rule; /**< of ci_lower and ci_upper: "wald", "wald-delong", "score", "newcombe", "logit",
                                    "bootstrap", "bca"; in place of what was asked for where edge or percentile is 1 */
    int edge;                  /**< as in vexroc_area_result */
    int percentile;            /**< likewise */
    int held;                  /**< likewise */
    const char* p_method;      /**< of p_value: "wald", "mann-whitney", "mann-whitney-exact" */
    const char* alternative;   /**< of p_value: "two-sided", "greater", "less" */
    double null_area;          /**< that p_value is against */
    double z;                  /**< of p_value; missing for an exact p */
    double u;                  /**< Mann-Whitney, in the direction of the test; missing with probability weights */
    double exact_steps;        /**< that an exact p takes */
    double bootstrap_error;    /**< standard deviation of the replicates; missing without a bootstrap */
} vexroc_record;

/** Difference of two areas: first less second. */
typedef struct vexroc_comparison {
    size_t struct_size;
    int first; /**< index of a record */
    int second;
    double difference;
    double std_error;
    double z;
    double significance; /**< two-sided */
    double ci_lower;
    double ci_upper;
    double p_value;     /**< of z by the word alternative, without a floor */
    double log10_p;     /**< its decimal logarithm, also where p_value underflows to 0 */
    long long positive; /**< cases that the difference is of: of both groups together in an independent comparison */
    long long negative;
    double first_area; /**< on these cases */
    double first_std_error;
    double second_area;
    double second_std_error;
    const char* error;       /**< what the standard errors are: "delong", "hanley-mcneil", "bi-negative", "weighted" */
    const char* alternative; /**< of p_value: "two-sided"; "greater": first above second; "less" */
} vexroc_comparison;

/* Each fills the structure; VEXROC_INVALID for an index that is not there. */
int vexroc_analysis_warning(const vexroc_analysis* analysis, int index, vexroc_warning* warning);
int vexroc_analysis_record(const vexroc_analysis* analysis, int index, vexroc_record* record);
int vexroc_analysis_comparison(const vexroc_analysis* analysis, int index, vexroc_comparison* comparison);

/**
 * What the last run has to say beside its numbers, with the spelling of this header. Cautions first.
 *
 * @param index  from 0 to vexroc_analysis_remark_count - 1
 */
int vexroc_analysis_remark_count(const vexroc_analysis* analysis);
int vexroc_analysis_remark(const vexroc_analysis* analysis, int index, vexroc_remark* remark);

/**
 * Adds the remarks of the last run to a list, whose voice they take.
 *
 * @param prefix  stands before each subject, such as "site = A: "; null for none
 */
int vexroc_analysis_add_remarks(const vexroc_analysis* analysis, vexroc_remarks* remarks, const char* prefix);

/**
 * The two-sided p of a standard normal z, erfc(|z| / sqrt(2)), right to 1e-13 down to the smallest normal double.
 *
 * @param log10_p  receives its decimal logarithm, also where p underflows; may be null
 * @return NaN for NaN
 */
double vexroc_two_sided_p(double z, double* log10_p);

/**
 * The rows that a record is about: those of its group, or all without one. What is left of the usable ones beside its
 * positive and negative cases are rows without its test, or without some test in a paired comparison.
 *
 * @param read    receives those read, whether they take part or not; may be null
 * @param usable  receives those used or incomplete in the words of vexroc_rows; may be null
 */
int vexroc_analysis_record_rows(const vexroc_analysis* analysis, int record, long long* read, long long* usable);

/**
 * The summary of a record's cases, kept with the number setting "summaries"; the handle's own, like other results.
 *
 * @return VEXROC_INVALID for a record that is not there, and without "summaries"
 */
int vexroc_analysis_summary(const vexroc_analysis* analysis, int record, const vexroc_summary** summary);

/**
 * The ROC curve of a record, cut-offs ascending.
 *
 * @param cut_offs, sensitivity, specificity  receive curve_rows doubles each; null leaves a column out
 */
int vexroc_analysis_curve(const vexroc_analysis* analysis, int record, double* cut_offs, double* sensitivity,
                          double* specificity);

/**
 * The counts behind the rows of vexroc_analysis_curve. Every case counts once, whatever its weight.
 *
 * @param true_positive, false_positive  receive curve_rows numbers of cases each; null leaves a column out
 */
int vexroc_analysis_curve_counts(const vexroc_analysis* analysis, int record, long long* true_positive,
                                 long long* false_positive);

/** A row of a ROC curve, with its four counts. */
typedef struct vexroc_cut_off {
    size_t struct_size;
    double cut_off;
    double sensitivity;
    double specificity;
    long long true_positive; /**< numbers of cases; every case counts once, whatever its weight */
    long long false_positive;
    long long true_negative;
    long long false_negative;
} vexroc_cut_off;

/**
 * Number of best cut-offs of a record: those at which Youden's index, sensitivity + specificity - 1, is its ks_maximum,
 * ties within 1e-14. 0 for a null handle, a record that is not there and one without a ROC curve.
 */
int vexroc_analysis_best_cut_off_count(const vexroc_analysis* analysis, int record);

/** One of them, by its index in ascending order. VEXROC_INVALID for an index that is not there. */
int vexroc_analysis_best_cut_off(const vexroc_analysis* analysis, int record, int index, vexroc_cut_off* cut_off);

/**
 * The precision-recall curve of a record, in the order of ascending cut-offs.
 *
 * @param precision, recall  receive pr_rows doubles each; null leaves a column out
 * @param interpolated       receives pr_rows bytes: 1 for a point drawn between measured ones; or null
 */
int vexroc_analysis_precision_recall(const vexroc_analysis* analysis, int record, double* precision, double* recall,
                                     unsigned char* interpolated);

/**
 * Where the points of vexroc_analysis_precision_recall are measured.
 *
 * @param curve_rows  receives pr_rows indices: the row of the ROC curve whose cut-off it is; -1 for an interpolated
 *                    point, and for every point of a record without a ROC curve. Null is ignored.
 */
int vexroc_analysis_precision_recall_rows(const vexroc_analysis* analysis, int record, int* curve_rows);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
