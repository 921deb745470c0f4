/* One curve in depth: the area with an interval that covers, the best cut-offs, and what one of them is worth. */

#include "vexrocproc/inference.h"

#include <stdio.h>

enum { n = 12 };

static int failed(void)
{
    fprintf(stderr, "%s\n", vexroc_last_error());
    return 1;
}

static int tell(const vexroc_summary* cases)
{
    vexroc_area_result area = {.struct_size = sizeof area};
    if (vexroc_area_inference(cases, NULL, &area) != VEXROC_OK)
        return failed();
    printf("area %.3f, %s interval %.3f to %.3f, p %.3f (%s)\n", area.area, area.interval, area.lower, area.upper,
           area.p_value, area.p_method);

    vexroc_best_result best = {.struct_size = sizeof best};
    double cut_offs[n + 1];
    if (vexroc_best_cut_offs(cases, NULL, "youden", n + 1, cut_offs, &best) != VEXROC_OK)
        return failed();
    printf("%lld best cut-offs, youden %.3f\n", best.count, best.value);

    /* Three lists of one number each: sensitivity and its limits. The others are left out. */
    double sensitivity[3];
    vexroc_operating_columns row = {.struct_size = sizeof row};
    for (int i = 0; i < 3; ++i)
        row.sensitivity[i] = &sensitivity[i];
    if (vexroc_operating_points(cases, NULL, &cut_offs[best.chosen], 0, 1, &row) != VEXROC_OK)
        return failed();
    printf("at %.2f: sensitivity %.3f, %.3f to %.3f\n", cut_offs[best.chosen], sensitivity[0], sensitivity[1],
           sensitivity[2]);
    return 0;
}

int main(void)
{
    const double sick[n] = {1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0};
    const double marker[n] = {7.1, 6.4, 8.0, 5.2, 6.9, 4.5, 4.8, 5.9, 5.2, 3.3, 4.1, 6.6};

    vexroc_summary* cases;
    if (vexroc_summary_new(&cases) != VEXROC_OK)
        return failed();
    const int result =
        vexroc_summary_add(cases, marker, sick, 1.0, NULL, VEXROC_NO_WEIGHTS, n) == VEXROC_OK ? tell(cases) : failed();
    vexroc_summary_free(cases);
    return result;
}
