/* A whole analysis from C: one test, compared between women and men, with what it warns about. */

#include "vexrocproc/analysis.h"

#include <stdio.h>

enum { n = 12 };

static int failed(void)
{
    fprintf(stderr, "%s\n", vexroc_last_error());
    return 1;
}

int main(void)
{
    const double sick[n] = {1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0};
    const double marker[n] = {7.1, 6.4, 8.0, 5.2, 6.9, 4.5, 4.8, 5.9, 5.2, 3.3, 4.1, 6.6};
    const double female[n] = {1, 1, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0};

    vexroc_analysis* analysis;
    int column;
    if (vexroc_analysis_new(&analysis) != VEXROC_OK)
        return failed();
    const int ready = vexroc_analysis_add_column(analysis, "sick", sick, n, &column) == VEXROC_OK
        && vexroc_analysis_set_column(analysis, "state", column) == VEXROC_OK
        && vexroc_analysis_add_column(analysis, "marker", marker, n, &column) == VEXROC_OK
        && vexroc_analysis_set_column(analysis, "test", column) == VEXROC_OK
        && vexroc_analysis_add_column(analysis, "female", female, n, &column) == VEXROC_OK
        && vexroc_analysis_set_column(analysis, "group", column) == VEXROC_OK
        && vexroc_analysis_set_number(analysis, "group_first", 0) == VEXROC_OK
        && vexroc_analysis_set_number(analysis, "group_second", 1) == VEXROC_OK
        && vexroc_analysis_set_word(analysis, "comparison", "independent") == VEXROC_OK
        && vexroc_analysis_run(analysis) == VEXROC_OK;
    if (!ready) {
        vexroc_analysis_free(analysis);
        return failed();
    }
    for (int i = 0; i < vexroc_analysis_record_count(analysis); ++i) {
        vexroc_record record = {.struct_size = sizeof record};
        vexroc_analysis_record(analysis, i, &record);
        printf("female = %g: area %.3f, standard error %.3f\n", record.group_value, record.area, record.std_error);
        vexroc_cut_off best = {.struct_size = sizeof best};
        if (vexroc_analysis_best_cut_off(analysis, i, 0, &best) == VEXROC_OK)
            printf("    at %.2f: %lld true and %lld false positive\n", best.cut_off, best.true_positive,
                   best.false_positive);
    }
    vexroc_rows rows = {.struct_size = sizeof rows};
    vexroc_analysis_rows(analysis, &rows);
    printf("%lld of %lld rows used\n", rows.positive + rows.negative, rows.read);
    for (int i = 0; i < vexroc_analysis_comparison_count(analysis); ++i) {
        vexroc_comparison comparison = {.struct_size = sizeof comparison};
        vexroc_analysis_comparison(analysis, i, &comparison);
        printf("difference %.3f (significance %.3f)\n", comparison.difference, comparison.significance);
    }
    for (int i = 0; i < vexroc_analysis_warning_count(analysis); ++i) {
        vexroc_warning warning = {.struct_size = sizeof warning};
        vexroc_analysis_warning(analysis, i, &warning);
        printf("warning %d %s\n", warning.code, warning.name);
    }
    vexroc_analysis_free(analysis);
    return 0;
}
