/** @file
 * ROC analysis over plain arrays of doubles, for callers in any language. Compiles as C99 and C++.
 *
 * Conventions that all calls share:
 *  - States: a case is positive when its state equals *positiveValue exactly, or 1.0 when positiveValue is
 *    null. Every other state, NaN included, is negative.
 *  - Test values: any scale. A case whose test value is NaN is left out of that test variable. Infinities are
 *    the largest and smallest values; -0.0 and 0.0 are equal.
 *  - Option words ignore case and locale; null or an unknown word means the first of its pair:
 *      include        "include" or "exclude": does a value equal to a cut-off count as positive?
 *      larger         "larger" or "smaller": which end of the scale is positive
 *      interpolation  "davis-goadrich" or "keilwagen": points between tied steps, along TP or along FP
 *      distribution   "nonparam" or "bi-negative": assumption behind the standard error
 *  - Missing results: a statistic that cannot be computed holds the missing value, the quiet NaN with the
 *    payload 1954 (bits 0x7FF80000000007A2); R reads it as its own NA. One that is not defined (the variance
 *    with one positive case) is an ordinary NaN.
 *  - Arrays are only read. Null arrays, or n <= 0, are an empty analysis.
 *  - No exception leaves a call and nothing is printed. On failure (no memory) the curve calls return a null
 *    row pointer, the others counts of 0 and missing values.
 *  - Threads: the calls share no data and may run at the same time.
 *  - Arithmetic: rounding to nearest, denormals kept, whatever the caller has set; it is set again on return.
 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** Rows of a ROC curve: rows[3i] cut-off, rows[3i + 1] 1 - specificity, rows[3i + 2] sensitivity. */
typedef struct roccurve_res {
    double* rows; /**< 3 * count doubles, owned by the caller */
    int count;    /**< number of rows */
} roccurve_res;

/** One point of a precision-recall curve. */
typedef struct prcurve_row {
    double cutOff;    /**< cut-off of the measured point; of the next one for an interpolated point */
    double recall;    /**< in [0, 1] */
    double precision; /**< in [0, 1], or NaN where nothing is classified positive and no neighbour lends one */
    int interpolated; /**< 1 for an interpolated point, 0 for a measured one */
} prcurve_row;

/** Points of a precision-recall curve. */
typedef struct prcurve_res {
    prcurve_row* rows; /**< count rows, owned by the caller */
    int count;         /**< number of rows */
} prcurve_res;

/** Area under one ROC curve. */
typedef struct auc_res {
    double posCount;      /**< number of positive cases */
    double negCount;      /**< number of negative cases */
    double area;          /**< share of (positive, negative) pairs in the right order, ties counting half */
    double stdError;      /**< standard error of the area */
    double asymptoticSig; /**< two-sided significance against the area 0.5 */
    double ciLower;       /**< lower confidence bound, not clipped to [0, 1] */
    double ciUpper;       /**< upper confidence bound, not clipped to [0, 1] */
} auc_res;

/** Comparison of two areas. */
typedef struct auc_comparison_res {
    auc_res first;       /**< first area */
    auc_res second;      /**< second area */
    double z;            /**< areaDiff / stdErrorDiff, and 0 when areaDiff is 0 */
    double zSig;         /**< two-sided significance of z */
    double areaDiff;     /**< first area - second area */
    double stdErrorDiff; /**< standard error of areaDiff */
    double ciLower;      /**< lower confidence bound of areaDiff */
    double ciUpper;      /**< upper confidence bound of areaDiff */
} auc_comparison_res;

/**
 * ROC curve of one test variable (Fawcett 2006, Pattern Recognition Letters 27, 861-874).
 *
 * @param actual         n state values, one per case
 * @param predicted      n test values in the same order
 * @param n              number of cases
 * @param positiveValue  state of a positive case; null means 1.0
 * @param include        "include" or "exclude"
 * @param larger         "larger" or "smaller"
 * @return               one row per cut-off, ascending; k distinct test values give k + 1 rows.
 *                       count is 0 with fewer than 3 cases or with one state only.
 *
 * The rows belong to the caller, also when count is 0: give them back once through release_roccurve_res.
 */
roccurve_res roccurve(const double* actual, const double* predicted, int n, const double* positiveValue,
                      const char* include, const char* larger);

/** Frees the rows of a roccurve result; null rows are ignored, count is not read. */
void release_roccurve_res(roccurve_res res);

/**
 * Precision-recall curve of one test variable (Davis and Goadrich 2006, ICML; Keilwagen, Grosse and Grau 2014,
 * PLoS ONE 9(3) e92209).
 *
 * @param interpolation  "davis-goadrich" or "keilwagen"; the other parameters are those of roccurve
 * @return               measured points in ascending order of cut-off, each preceded by the interpolated points
 *                       that lead up to it. count is 0 with fewer than 3 cases or with one state only.
 *
 * The rows belong to the caller, also when count is 0: give them back once through release_prcurve_res.
 */
prcurve_res prcurve(const double* actual, const double* predicted, int n, const double* positiveValue,
                    const char* include, const char* larger, const char* interpolation);

/** Frees the rows of a prcurve result; null rows are ignored, count is not read. */
void release_prcurve_res(prcurve_res res);

/**
 * Area under the ROC curve with standard error, significance and confidence interval (Hanley and McNeil 1982,
 * Radiology 143, 29-36).
 *
 * @param include          accepted for symmetry; the area does not depend on it
 * @param distribution     "nonparam" or "bi-negative"; the latter applies only when positive and negative cases
 *                         are equally many, otherwise the call falls back to "nonparam"
 * @param confidenceLevel  of the interval, in (0, 1), e.g. 0.95; outside it the bounds are missing
 * @return                 counts and statistics; without a positive or a negative case the statistics are missing
 */
auc_res auc(const double* actual, const double* predicted, int n, const double* positiveValue, const char* include,
            const char* larger, const char* distribution, double confidenceLevel);

/**
 * Compares two areas of independent samples: difference, z, two-sided significance, interval.
 *
 * @param first, second    results of auc; only area and stdError enter the comparison
 * @param confidenceLevel  of the interval of the difference, in (0, 1)
 * @return                 both records unchanged and the comparison; what depends on a missing value is missing
 */
auc_comparison_res auc_comparison(auc_res first, auc_res second, double confidenceLevel);

/**
 * Areas of one test variable in two independent samples, and their comparison. Each sample goes through auc with
 * the shared options, the two records through auc_comparison.
 */
auc_comparison_res auc_indpendentcomparison(const double* actual1, const double* predicted1, int size1,
                                            const double* actual2, const double* predicted2, int size2,
                                            const double* positiveValue, const char* include, const char* larger,
                                            const char* distribution, double confidenceLevel);

/**
 * Areas of two test variables measured on the same cases, and their comparison with the covariance of the areas
 * (DeLong, DeLong and Clarke-Pearson 1988, Biometrics 44, 837-845).
 *
 * @param predicted1, predicted2  n test values each, the same cases in the same order; a case with NaN in either
 *                                is left out of the whole analysis
 * @return                        as auc_comparison; the standard errors of both areas are the DeLong ones. With
 *                                exactly one positive or negative case they are not a number.
 */
auc_comparison_res auc_pairedcomparison(const double* actual, const double* predicted1, const double* predicted2, int n,
                                        const double* positiveValue, const char* include, const char* larger,
                                        double confidenceLevel);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
