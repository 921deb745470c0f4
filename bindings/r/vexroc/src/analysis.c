/* A run of the analysis handle, and its results as columns of numbers. */
#include "columns.h"

#include <string.h>

static const member record_members[] = {
    {"test", is_int, offsetof(vexroc_record, test)},
    {"group_value", is_double, offsetof(vexroc_record, group_value)},
    {"positive", is_int, offsetof(vexroc_record, positive)},
    {"negative", is_int, offsetof(vexroc_record, negative)},
    {"weighted_positive", is_double, offsetof(vexroc_record, weighted_positive)},
    {"weighted_negative", is_double, offsetof(vexroc_record, weighted_negative)},
    {"area", is_double, offsetof(vexroc_record, area)},
    {"std_error", is_double, offsetof(vexroc_record, std_error)},
    {"error", is_text, offsetof(vexroc_record, error)},
    {"null_area", is_double, offsetof(vexroc_record, null_area)},
    {"alternative", is_text, offsetof(vexroc_record, alternative)},
    {"p_value", is_double, offsetof(vexroc_record, p_value)},
    {"log10_p", is_double, offsetof(vexroc_record, log10_p)},
    {"p_method", is_text, offsetof(vexroc_record, p_method)},
    {"lower", is_double, offsetof(vexroc_record, ci_lower)},
    {"upper", is_double, offsetof(vexroc_record, ci_upper)},
    {"interval", is_text, offsetof(vexroc_record, interval_rule)},
    {"gini", is_double, offsetof(vexroc_record, gini)},
    {"max_ks", is_double, offsetof(vexroc_record, ks_maximum)},
    {"max_ks_cut_off", is_double, offsetof(vexroc_record, ks_cut_off)},
    {"ties", is_int, offsetof(vexroc_record, ties)},
};

static const member comparison_members[] = {
    {"first", is_int, offsetof(vexroc_comparison, first)},
    {"second", is_int, offsetof(vexroc_comparison, second)},
    {"positive", is_long, offsetof(vexroc_comparison, positive)},
    {"negative", is_long, offsetof(vexroc_comparison, negative)},
    {"area1", is_double, offsetof(vexroc_comparison, first_area)},
    {"std_error1", is_double, offsetof(vexroc_comparison, first_std_error)},
    {"area2", is_double, offsetof(vexroc_comparison, second_area)},
    {"std_error2", is_double, offsetof(vexroc_comparison, second_std_error)},
    {"difference", is_double, offsetof(vexroc_comparison, difference)},
    {"std_error_difference", is_double, offsetof(vexroc_comparison, std_error)},
    {"error", is_text, offsetof(vexroc_comparison, error)},
    {"alternative", is_text, offsetof(vexroc_comparison, alternative)},
    {"z", is_double, offsetof(vexroc_comparison, z)},
    {"p_value", is_double, offsetof(vexroc_comparison, p_value)},
    {"log10_p", is_double, offsetof(vexroc_comparison, log10_p)},
    {"lower", is_double, offsetof(vexroc_comparison, ci_lower)},
    {"upper", is_double, offsetof(vexroc_comparison, ci_upper)},
};

static const member row_members[] = {
    {"missing_state", is_long, offsetof(vexroc_rows, missing_state)},
    {"other_state", is_long, offsetof(vexroc_rows, other_state)},
    {"missing_group", is_long, offsetof(vexroc_rows, missing_group)},
    {"other_group", is_long, offsetof(vexroc_rows, other_group)},
    {"missing_weight", is_long, offsetof(vexroc_rows, missing_weight)},
    {"missing_count", is_long, offsetof(vexroc_rows, missing_count)},
    {"unusable_weight", is_long, offsetof(vexroc_rows, unusable_weight)},
    {"incomplete", is_long, offsetof(vexroc_rows, incomplete)},
};

enum {
    record_count = sizeof record_members / sizeof *record_members,
    comparison_count = sizeof comparison_members / sizeof *comparison_members,
    row_count = sizeof row_members / sizeof *row_members
};

static SEXP records_of(const vexroc_analysis* analysis)
{
    const int rows = vexroc_analysis_record_count(analysis);
    SEXP list = PROTECT(columns_for(record_members, record_count, rows, 1));
    SEXP left_out = further_column(list, record_count, "left_out", REALSXP, rows);
    for (int i = 0; i < rows; ++i) {
        vexroc_record record = {.struct_size = sizeof record};
        require_ok(vexroc_analysis_record(analysis, i, &record));
        put_row(list, i, &record, record_members, record_count);
        long long usable = 0;
        require_ok(vexroc_analysis_record_rows(analysis, i, NULL, &usable));
        REAL(left_out)[i] = (double)(usable - record.positive - record.negative); /* the test is missing */
    }
    UNPROTECT(1);
    return list;
}

static SEXP comparisons_of(const vexroc_analysis* analysis)
{
    const int rows = vexroc_analysis_comparison_count(analysis);
    SEXP list = PROTECT(columns_for(comparison_members, comparison_count, rows, 0));
    for (int i = 0; i < rows; ++i) {
        vexroc_comparison comparison = {.struct_size = sizeof comparison};
        require_ok(vexroc_analysis_comparison(analysis, i, &comparison));
        put_row(list, i, &comparison, comparison_members, comparison_count);
    }
    UNPROTECT(1);
    return list;
}

static SEXP curve_of(const vexroc_analysis* analysis, int record)
{
    static const member members[] = {{.name = "cut_off"}, {.name = "sensitivity"}, {.name = "specificity"}};
    vexroc_record r = {.struct_size = sizeof r};
    require_ok(vexroc_analysis_record(analysis, record, &r));
    SEXP list = PROTECT(columns_for(members, 3, r.curve_rows, 0));
    require_ok(vexroc_analysis_curve(analysis, record, REAL(VECTOR_ELT(list, 0)), REAL(VECTOR_ELT(list, 1)),
                                     REAL(VECTOR_ELT(list, 2))));
    UNPROTECT(1);
    return list;
}

/* The last column has rows of the ROC curve, from 1: NA for an interpolated point, which has no cut-off. */
static SEXP precision_recall_of(const vexroc_analysis* analysis, int record)
{
    static const member members[] = {{.name = "precision"}, {.name = "recall"}};
    vexroc_record r = {.struct_size = sizeof r};
    require_ok(vexroc_analysis_record(analysis, record, &r));
    SEXP list = PROTECT(columns_for(members, 2, r.pr_rows, 1));
    SEXP rows = further_column(list, 2, "curve_row", INTSXP, r.pr_rows);
    require_ok(
        vexroc_analysis_precision_recall(analysis, record, REAL(VECTOR_ELT(list, 0)), REAL(VECTOR_ELT(list, 1)), NULL));
    require_ok(vexroc_analysis_precision_recall_rows(analysis, record, INTEGER(rows)));
    for (int i = 0; i < r.pr_rows; ++i)
        INTEGER(rows)[i] = INTEGER(rows)[i] < 0 ? NA_INTEGER : INTEGER(rows)[i] + 1;
    UNPROTECT(1);
    return list;
}

static SEXP of_all_records(const vexroc_analysis* analysis, SEXP (*part)(const vexroc_analysis*, int))
{
    const int records = vexroc_analysis_record_count(analysis);
    SEXP list = PROTECT(Rf_allocVector(VECSXP, records));
    for (int i = 0; i < records; ++i)
        SET_VECTOR_ELT(list, i, part(analysis, i));
    UNPROTECT(1);
    return list;
}

static long long* room_for(long long count) { return (long long*)R_alloc((size_t)count + 1, sizeof(long long)); }

/* Distinct values with their counts, of which further questions are asked; see inference.c. */
static SEXP summary_of(const vexroc_analysis* analysis, int record)
{
    static const member members[] = {{.name = "value", .type = is_double},
                                     {.name = "positive", .type = is_double},
                                     {.name = "negative", .type = is_double}};
    const vexroc_summary* summary = NULL;
    require_ok(vexroc_analysis_summary(analysis, record, &summary));
    vexroc_summary_facts facts = {.struct_size = sizeof facts};
    require_ok(vexroc_summary_tell(summary, &facts));
    SEXP list = PROTECT(columns_for(members, 3, (int)facts.values, 0));
    const void* before = vmaxget();
    long long* counts[] = {room_for(facts.values), room_for(facts.values)};
    require_ok(vexroc_summary_values(summary, 0, facts.values, REAL(VECTOR_ELT(list, 0)), counts[0], counts[1]));
    for (int state = 0; state < 2; ++state)
        for (long long i = 0; i < facts.values; ++i)
            REAL(VECTOR_ELT(list, state + 1))[i] = (double)counts[state][i];
    vmaxset(before);
    UNPROTECT(1);
    return list;
}

/* Rows by what became of them. */
static SEXP rows_of(const vexroc_analysis* analysis)
{
    vexroc_rows rows = {.struct_size = sizeof rows};
    require_ok(vexroc_analysis_rows(analysis, &rows));
    SEXP list = PROTECT(columns_for(row_members, row_count, 1, 0));
    put_row(list, 0, &rows, row_members, row_count);
    UNPROTECT(1);
    return list;
}

/* Why a run has no result: the code and its name, and the rows. */
static SEXP failure_of(const vexroc_analysis* analysis)
{
    static const char* const members[] = {"status", "name", "rows"};
    int code = 0;
    const char* name = NULL;
    require_ok(vexroc_analysis_status(analysis, &code, &name));
    SEXP failure = PROTECT(Rf_allocVector(VECSXP, 3));
    SET_VECTOR_ELT(failure, 0, Rf_ScalarInteger(code));
    SET_VECTOR_ELT(failure, 1, Rf_mkString(name));
    SET_VECTOR_ELT(failure, 2, rows_of(analysis));
    put_names(failure, members);
    UNPROTECT(1);
    return failure;
}

static SEXP results_of(const vexroc_analysis* analysis, int with_summaries)
{
    static const char* const members[] = {"areas", "comparisons", "curves", "precision_recall", "rows", "summaries"};
    SEXP all = PROTECT(Rf_allocVector(VECSXP, 6));
    SET_VECTOR_ELT(all, 0, records_of(analysis));
    SET_VECTOR_ELT(all, 1, comparisons_of(analysis));
    SET_VECTOR_ELT(all, 2, of_all_records(analysis, curve_of));
    SET_VECTOR_ELT(all, 3, of_all_records(analysis, precision_recall_of));
    SET_VECTOR_ELT(all, 4, rows_of(analysis));
    SET_VECTOR_ELT(all, 5, with_summaries ? of_all_records(analysis, summary_of) : R_NilValue);
    put_names(all, members);
    UNPROTECT(1);
    return all;
}

/* A column of codes 0, 1, ... with the attribute "labels" has their names there. */
static void add_columns(vexroc_analysis* analysis, SEXP columns)
{
    SEXP names = Rf_getAttrib(columns, R_NamesSymbol);
    for (int i = 0; i < Rf_length(columns); ++i) {
        SEXP column = VECTOR_ELT(columns, i);
        require_ok(vexroc_analysis_add_column(analysis, Rf_translateCharUTF8(STRING_ELT(names, i)), REAL(column),
                                              (long long)Rf_xlength(column), NULL));
        SEXP labels = Rf_getAttrib(column, Rf_install("labels"));
        for (int value = 0; value < Rf_length(labels); ++value)
            require_ok(vexroc_analysis_name_value(analysis, i, value, Rf_translateCharUTF8(STRING_ELT(labels, value))));
    }
}

/* Settings in a named list of one-element vectors, strings as words and numbers as numbers. */
static void set_all(vexroc_analysis* analysis, SEXP settings)
{
    SEXP names = Rf_getAttrib(settings, R_NamesSymbol);
    for (int i = 0; i < Rf_length(settings); ++i) {
        SEXP value = VECTOR_ELT(settings, i);
        const char* name = CHAR(STRING_ELT(names, i));
        if (TYPEOF(value) == STRSXP)
            require_ok(vexroc_analysis_set_word(analysis, name, CHAR(STRING_ELT(value, 0))));
        else if (strcmp(name, "seed") == 0)
            require_ok(vexroc_analysis_set_seed(analysis, (unsigned long long)Rf_asReal(value)));
        else if (strcmp(name, "negative_value") == 0)
            require_ok(vexroc_analysis_add_negative(analysis, Rf_asReal(value)));
        else
            require_ok(vexroc_analysis_set_number(analysis, name, Rf_asReal(value)));
    }
}

/* Is the number setting there, and not 0? */
static int asks_for(SEXP settings, const char* setting)
{
    SEXP names = Rf_getAttrib(settings, R_NamesSymbol);
    for (int i = 0; i < Rf_length(settings); ++i)
        if (strcmp(CHAR(STRING_ELT(names, i)), setting) == 0)
            return Rf_asReal(VECTOR_ELT(settings, i)) != 0.0;
    return 0;
}

static void end_analysis(SEXP pointer)
{
    vexroc_analysis_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

/*
 * columns: named list of equally long doubles, see add_columns; parts: the part of each; settings: see set_all;
 * directions: the word of each column, or NA; remarks: the list that receives what there is to say.
 * Null after an interrupt; see failure_of for a run without result.
 */
SEXP analyze(SEXP columns, SEXP parts, SEXP settings, SEXP directions, SEXP remarks)
{
    SEXP pointer = PROTECT(new_owner(end_analysis));
    vexroc_analysis* analysis = NULL;
    require_ok(vexroc_analysis_new(&analysis));
    R_SetExternalPtrAddr(pointer, analysis);
    add_columns(analysis, columns);
    for (int i = 0; i < Rf_length(parts); ++i)
        require_ok(vexroc_analysis_set_column(analysis, CHAR(STRING_ELT(parts, i)), i));
    for (int i = 0; i < Rf_length(directions); ++i)
        if (STRING_ELT(directions, i) != NA_STRING)
            require_ok(vexroc_analysis_set_direction(analysis, i, CHAR(STRING_ELT(directions, i))));
    set_all(analysis, settings);
    require_ok(vexroc_analysis_on_cancel(analysis, interrupted, NULL));

    SEXP answer = R_NilValue;
    const int result = vexroc_analysis_run(analysis);
    if (result != VEXROC_CANCELLED && result != VEXROC_NO_RESULT)
        require_ok(result);
    if (result == VEXROC_OK)
        require_ok(vexroc_analysis_add_remarks(analysis, owned(remarks), NULL));
    if (result != VEXROC_CANCELLED)
        answer = result == VEXROC_OK ? results_of(analysis, asks_for(settings, "summaries")) : failure_of(analysis);
    PROTECT(answer);
    end_analysis(pointer);
    UNPROTECT(2);
    return answer;
}
