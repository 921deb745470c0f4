/* Calls every array call from C99; the exit code tells which number was wrong. */
#include "vexrocproc/arraycalls.h"
#include "vexrocproc/inference.h"

#include <math.h>
#include <stdio.h>

static int failures = 0;

static void expect(const char* what, double got, double expected)
{
    if (fabs(got - expected) <= 1e-6)
        return;
    printf("%s is %.17g instead of %.17g\n", what, got, expected);
    ++failures;
}

int main(void)
{
    const double actual[] = {1, 1, 1, 1, 0, 0, 0, 0};
    const double predicted1[] = {2, 3, 3, 5, 1, 2, 3, 4};
    const double predicted2[] = {4, 6, 5, 8, 3, 2, 7, 1};
    const double positive = 1;

    const roccurve_res roc = roccurve(actual, predicted1, 8, &positive, "include", "larger");
    expect("rows of the ROC curve", roc.count, 6);
    expect("second cut-off", roc.rows[3], 1.5);
    expect("1 - specificity there", roc.rows[4], 0.75);
    expect("sensitivity there", roc.rows[5], 1);
    release_roccurve_res(roc);

    const prcurve_res pr = prcurve(actual, predicted1, 8, NULL, "include", "larger", "keilwagen");
    expect("rows of the precision-recall curve", pr.count, 6);
    expect("first precision", pr.rows[0].precision, 0.5);
    expect("interpolated", pr.rows[0].interpolated, 0);
    release_prcurve_res(pr);

    const auc_res first = auc(actual, predicted1, 8, NULL, "include", "larger", "nonparam", 0.95);
    const auc_res second = auc(actual, predicted2, 8, NULL, "include", "larger", "nonparam", 0.95);
    expect("area", first.area, 0.65625);
    expect("standard error", first.stdError, 0.205069);
    expect("second area", auc_comparison(first, second, 0.95).second.area, 0.8125);
    expect("difference",
           auc_indpendentcomparison(actual, predicted1, 8, actual + 2, predicted2 + 2, 4, NULL, "include", "larger",
                                    "bi-negative", 0.95)
               .areaDiff,
           -0.34375);
    expect("paired z", auc_pairedcomparison(actual, predicted1, predicted2, 8, NULL, "include", "larger", 0.95).z,
           -0.688973);

    vexroc_summary* summary = NULL;
    vexroc_area_result area = {.struct_size = sizeof area};
    const int result = vexroc_summary_new(&summary)
        || vexroc_summary_add(summary, predicted1, actual, positive, NULL, VEXROC_NO_WEIGHTS, 8)
        || vexroc_area_inference(summary, NULL, &area);
    expect("the result of the calls of a summary", result, VEXROC_OK);
    expect("area of the summary", area.area, 0.65625);
    vexroc_summary_free(summary);
    return failures;
}
