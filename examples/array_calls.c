/* The plain calls over arrays, from C: a curve, its area, and two tests compared on the same cases. */

#include "vexrocproc/arraycalls.h"

#include <stdio.h>

enum { n = 10 };

int main(void)
{
    const double sick[n] = {1, 1, 1, 1, 1, 0, 0, 0, 0, 0};
    const double marker[n] = {7.1, 6.4, 8.0, 5.2, 6.9, 4.8, 5.9, 5.2, 3.3, 4.1};
    const double score[n] = {2, 3, 3, 1, 2, 1, 2, 1, 1, 3};

    /* The rows of a curve are ours until we give them back; null rows mean that memory ran out. */
    const roccurve_res curve = roccurve(sick, marker, n, NULL, "include", "larger");
    if (curve.rows == NULL)
        return 1;
    puts("positive from  1 - specificity  sensitivity");
    for (int i = 0; i < curve.count; ++i) {
        const double* row = curve.rows + 3 * i;
        printf("%13.2f  %15.1f  %11.1f\n", row[0], row[1], row[2]);
    }
    release_roccurve_res(curve);

    const auc_res area = auc(sick, marker, n, NULL, "include", "larger", "nonparam", 0.95);
    printf("area %.3f, standard error %.3f\n", area.area, area.stdError);

    const auc_comparison_res both = auc_pairedcomparison(sick, marker, score, n, NULL, "include", "larger", 0.95);
    printf("marker %.3f, score %.3f, difference %.3f (significance %.3f)\n", both.first.area, both.second.area,
           both.areaDiff, both.zSig);
    return 0;
}
