/** @file
 * The summary of one test variable: its distinct values, ascending, with the numbers of cases in each state. All that
 * inference.h asks of the cases. Compiles as C99 and C++.
 *
 * Order of calls: vexroc_summary_new, vexroc_summary_add as often as there are pieces, the calls of inference.h,
 * vexroc_summary_free. In what order cases come, and in which pieces, changes no result, to the bit.
 *
 * Conventions of results (one of enum vexroc_result of analysis.h; vexroc_last_error), errors and growth are those of
 * analysis.h. A summary that is not being added to may be read by any number of threads at once.
 */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

typedef struct vexroc_summary vexroc_summary;

/** What the numbers beside the cases are. */
enum vexroc_weights {
    VEXROC_NO_WEIGHTS = 0,         /**< every case counts once */
    VEXROC_FREQUENCY_WEIGHTS = 1,  /**< a row stands for so many cases: whole numbers from 0 */
    VEXROC_PROBABILITY_WEIGHTS = 2 /**< inverse sampling probabilities, on any scale; 0 leaves the case out */
};

/** Sets *summary to a new one without cases, or to null on failure. */
int vexroc_summary_new(vexroc_summary** summary);

/** Ends the summary; null is ignored. */
void vexroc_summary_free(vexroc_summary* summary);

/**
 * Adds cases. A row whose value, state or weight is NaN is left out and counted. On failure nothing was added. Kept are
 * 24 bytes a distinct value; with probability weights 24 a case and 56 a distinct value.
 *
 * @param values          n test values; infinite ones are the ends of the scale
 * @param states          n states
 * @param positive_value  state of a positive case, compared exactly; any other state is negative
 * @param weights         n weights of the kind; null for VEXROC_NO_WEIGHTS
 * @param kind            VEXROC_PROBABILITY_WEIGHTS does not go together with the others in one summary
 * @return VEXROC_INVALID for a weight that is negative or infinite, for a frequency that is no whole number, for kinds
 *         that do not go together, and beyond 2^40 cases; vexroc_last_error names the row
 */
int vexroc_summary_add(vexroc_summary* summary, const double* values, const double* states, double positive_value,
                       const double* weights, enum vexroc_weights kind, long long n);

/**
 * Adds counted values, such as a rating table or what vexroc_summary_values gave, in any order.
 *
 * @param values              n test values, none NaN
 * @param positive, negative  n numbers of cases each, from 0
 */
int vexroc_summary_add_counts(vexroc_summary* summary, const double* values, const long long* positive,
                              const long long* negative, long long n);

typedef struct vexroc_summary_facts {
    size_t struct_size;
    long long values; /**< distinct ones */
    long long positive;
    long long negative;
    long long left_out;       /**< rows with a value, state or weight that is NaN */
    enum vexroc_weights kind; /**< VEXROC_PROBABILITY_WEIGHTS, or VEXROC_NO_WEIGHTS: frequencies are cases */
    double weighted_positive; /**< sums of probability weights; the numbers of cases without */
    double weighted_negative;
    double lowest; /**< value; NaN without cases */
    double highest;
} vexroc_summary_facts;

int vexroc_summary_tell(const vexroc_summary* summary, vexroc_summary_facts* facts);

/**
 * Reads distinct values, ascending.
 *
 * @param first, count        from 0, as many as there are
 * @param values              receives count values; null leaves a list out
 * @param positive, negative  receive the numbers of cases of each state
 */
int vexroc_summary_values(const vexroc_summary* summary, long long first, long long count, double* values,
                          long long* positive, long long* negative);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
