/* Glue between R and the analysis handle of libvexrocproc920r. */
#include <R.h>
#include <R_ext/Rdynload.h>
#include <R_ext/Utils.h>
#include <Rinternals.h>

#include <vexrocproc/analysis.h>

/* The handle belongs to an external pointer: an error of R, which jumps, cannot lose it. */
static void finalize(SEXP pointer)
{
    vexroc_analysis_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

static SEXP new_handle(void)
{
    SEXP pointer = PROTECT(R_MakeExternalPtr(NULL, R_NilValue, R_NilValue));
    R_RegisterCFinalizer(pointer, finalize);
    vexroc_analysis* analysis = NULL;
    if (vexroc_analysis_new(&analysis) != VEXROC_OK)
        Rf_errorcall(R_NilValue, "%s", vexroc_last_error());
    R_SetExternalPtrAddr(pointer, analysis);
    UNPROTECT(1);
    return pointer;
}

static void require_ok(int result)
{
    if (result != VEXROC_OK)
        Rf_errorcall(R_NilValue, "%s", vexroc_last_error());
}

static void check_interrupt(void* unused)
{
    (void)unused;
    R_CheckUserInterrupt();
}

static int interrupted(void* unused)
{
    (void)unused;
    return R_ToplevelExec(check_interrupt, NULL) == FALSE;
}

static void put_names(SEXP list, const char* const* names)
{
    SEXP texts = PROTECT(Rf_allocVector(STRSXP, Rf_length(list)));
    for (int i = 0; i < Rf_length(list); ++i)
        SET_STRING_ELT(texts, i, Rf_mkChar(names[i]));
    Rf_setAttrib(list, R_NamesSymbol, texts);
    UNPROTECT(1);
}

/* A list of `count` columns with `rows` numbers each. */
static SEXP number_columns(const char* const* names, int count, int rows)
{
    SEXP list = PROTECT(Rf_allocVector(VECSXP, count));
    for (int i = 0; i < count; ++i)
        SET_VECTOR_ELT(list, i, Rf_allocVector(REALSXP, rows));
    put_names(list, names);
    UNPROTECT(1);
    return list;
}

static SEXP records_of(const vexroc_analysis* analysis)
{
    static const char* const names[] = {"test",
                                        "group",
                                        "group_value",
                                        "positive",
                                        "negative",
                                        "weighted_positive",
                                        "weighted_negative",
                                        "area",
                                        "std_error",
                                        "significance",
                                        "lower",
                                        "upper",
                                        "gini",
                                        "ks",
                                        "ks_cut_off",
                                        "ties",
                                        "left_out"};
    const int rows = vexroc_analysis_record_count(analysis);
    SEXP list = PROTECT(number_columns(names, 17, rows));
    for (int i = 0; i < rows; ++i) {
        vexroc_record r = {.struct_size = sizeof r};
        require_ok(vexroc_analysis_record(analysis, i, &r));
        long long usable = 0;
        require_ok(vexroc_analysis_record_rows(analysis, i, NULL, &usable));
        const double left_out = (double)(usable - r.positive - r.negative); /* the test is missing */
        const double values[17] = {r.test + 1.0, r.group + 1.0,       r.group_value,       r.positive,
                                   r.negative,   r.weighted_positive, r.weighted_negative, r.area,
                                   r.std_error,  r.significance,      r.ci_lower,          r.ci_upper,
                                   r.gini,       r.ks_maximum,        r.ks_cut_off,        r.ties,
                                   left_out};
        for (int c = 0; c < 17; ++c)
            REAL(VECTOR_ELT(list, c))[i] = values[c];
    }
    UNPROTECT(1);
    return list;
}

static SEXP comparisons_of(const vexroc_analysis* analysis)
{
    static const char* const names[] = {"first", "second",       "difference", "std_error",
                                        "z",     "significance", "lower",      "upper"};
    const int rows = vexroc_analysis_comparison_count(analysis);
    SEXP list = PROTECT(number_columns(names, 8, rows));
    for (int i = 0; i < rows; ++i) {
        vexroc_comparison c = {.struct_size = sizeof c};
        require_ok(vexroc_analysis_comparison(analysis, i, &c));
        const double values[8] = {c.first + 1.0, c.second + 1.0, c.difference, c.std_error,
                                  c.z,           c.significance, c.ci_lower,   c.ci_upper};
        for (int k = 0; k < 8; ++k)
            REAL(VECTOR_ELT(list, k))[i] = values[k];
    }
    UNPROTECT(1);
    return list;
}

static SEXP curve_of(const vexroc_analysis* analysis, int record)
{
    static const char* const names[] = {"cut_off", "sensitivity", "specificity"};
    vexroc_record r = {.struct_size = sizeof r};
    require_ok(vexroc_analysis_record(analysis, record, &r));
    SEXP list = PROTECT(number_columns(names, 3, r.curve_rows));
    require_ok(vexroc_analysis_curve(analysis, record, REAL(VECTOR_ELT(list, 0)), REAL(VECTOR_ELT(list, 1)),
                                     REAL(VECTOR_ELT(list, 2))));
    UNPROTECT(1);
    return list;
}

static SEXP precision_recall_of(const vexroc_analysis* analysis, int record)
{
    static const char* const names[] = {"precision", "recall", "interpolated"};
    vexroc_record r = {.struct_size = sizeof r};
    require_ok(vexroc_analysis_record(analysis, record, &r));
    SEXP list = PROTECT(number_columns(names, 3, r.pr_rows));
    unsigned char* flags = (unsigned char*)R_alloc((size_t)r.pr_rows + 1, 1);
    require_ok(vexroc_analysis_precision_recall(analysis, record, REAL(VECTOR_ELT(list, 0)), REAL(VECTOR_ELT(list, 1)),
                                                flags));
    for (int i = 0; i < r.pr_rows; ++i)
        REAL(VECTOR_ELT(list, 2))[i] = flags[i];
    UNPROTECT(1);
    return list;
}

static SEXP all_curves(const vexroc_analysis* analysis, SEXP (*curve)(const vexroc_analysis*, int))
{
    const int records = vexroc_analysis_record_count(analysis);
    SEXP list = PROTECT(Rf_allocVector(VECSXP, records));
    for (int i = 0; i < records; ++i)
        SET_VECTOR_ELT(list, i, curve(analysis, i));
    UNPROTECT(1);
    return list;
}

static SEXP warnings_of(const vexroc_analysis* analysis)
{
    static const char* const members[] = {"code", "name", "parameters"};
    const int count = vexroc_analysis_warning_count(analysis);
    SEXP list = PROTECT(Rf_allocVector(VECSXP, 3));
    SEXP codes = SET_VECTOR_ELT(list, 0, Rf_allocVector(INTSXP, count));
    SEXP names = SET_VECTOR_ELT(list, 1, Rf_allocVector(STRSXP, count));
    SEXP parameters = SET_VECTOR_ELT(list, 2, Rf_allocVector(VECSXP, count));
    for (int i = 0; i < count; ++i) {
        vexroc_warning warning = {.struct_size = sizeof warning};
        require_ok(vexroc_analysis_warning(analysis, i, &warning));
        INTEGER(codes)[i] = warning.code;
        SET_STRING_ELT(names, i, Rf_mkChar(warning.name));
        SEXP columns = SET_VECTOR_ELT(parameters, i, Rf_allocVector(INTSXP, warning.parameter_count));
        for (int k = 0; k < warning.parameter_count; ++k)
            INTEGER(columns)[k] = warning.parameters[k];
    }
    put_names(list, members);
    UNPROTECT(1);
    return list;
}

/* Rows by what became of them. */
static SEXP rows_of(const vexroc_analysis* analysis)
{
    static const char* const names[] = {"missing_state", "missing_group", "other_group", "missing_weight",
                                        "too_light",     "too_heavy",     "rounded"};
    vexroc_rows r = {.struct_size = sizeof r};
    require_ok(vexroc_analysis_rows(analysis, &r));
    const long long values[7] = {
        r.missing_state, r.missing_group, r.other_group, r.missing_weight, r.unusable_weight - r.too_heavy,
        r.too_heavy,     r.rounded_used};
    SEXP list = PROTECT(Rf_allocVector(VECSXP, 7));
    for (int i = 0; i < 7; ++i)
        SET_VECTOR_ELT(list, i, Rf_ScalarInteger((int)values[i])); /* columns have no more rows than an int counts */
    put_names(list, names);
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

/* Settings in a named list of one-element vectors, strings as words and numbers as numbers. */
static void set_all(vexroc_analysis* analysis, SEXP settings)
{
    SEXP names = Rf_getAttrib(settings, R_NamesSymbol);
    for (int i = 0; i < Rf_length(settings); ++i) {
        SEXP value = VECTOR_ELT(settings, i);
        const char* name = CHAR(STRING_ELT(names, i));
        if (TYPEOF(value) == STRSXP)
            require_ok(vexroc_analysis_set_word(analysis, name, CHAR(STRING_ELT(value, 0))));
        else
            require_ok(vexroc_analysis_set_number(analysis, name, Rf_asReal(value)));
    }
}

/*
 * columns: named list of equally long doubles; parts: integer vector of 1-based columns with the names of their parts;
 * settings: see set_all. Null after an interrupt; see failure_of for a run without result.
 */
static SEXP analyze(SEXP columns, SEXP parts, SEXP settings)
{
    SEXP pointer = PROTECT(new_handle());
    vexroc_analysis* analysis = R_ExternalPtrAddr(pointer);
    SEXP names = Rf_getAttrib(columns, R_NamesSymbol);
    for (int i = 0; i < Rf_length(columns); ++i) {
        SEXP column = VECTOR_ELT(columns, i);
        require_ok(vexroc_analysis_add_column(analysis, CHAR(STRING_ELT(names, i)), REAL(column),
                                              (long long)Rf_xlength(column), NULL));
    }
    SEXP part_names = Rf_getAttrib(parts, R_NamesSymbol);
    for (int i = 0; i < Rf_length(parts); ++i)
        require_ok(vexroc_analysis_set_column(analysis, CHAR(STRING_ELT(part_names, i)), INTEGER(parts)[i] - 1));
    set_all(analysis, settings);
    require_ok(vexroc_analysis_on_cancel(analysis, interrupted, NULL));
    const int result = vexroc_analysis_run(analysis);
    if (result == VEXROC_CANCELLED) {
        UNPROTECT(1);
        return R_NilValue;
    }
    if (result == VEXROC_NO_RESULT) {
        SEXP failure = failure_of(analysis);
        UNPROTECT(1);
        return failure;
    }
    require_ok(result);

    static const char* const members[] = {"areas", "comparisons", "curves", "precision_recall", "warnings", "rows"};
    SEXP all = PROTECT(Rf_allocVector(VECSXP, 6));
    SET_VECTOR_ELT(all, 0, records_of(analysis));
    SET_VECTOR_ELT(all, 1, comparisons_of(analysis));
    SET_VECTOR_ELT(all, 2, all_curves(analysis, curve_of));
    SET_VECTOR_ELT(all, 3, all_curves(analysis, precision_recall_of));
    SET_VECTOR_ELT(all, 4, warnings_of(analysis));
    SET_VECTOR_ELT(all, 5, rows_of(analysis));
    put_names(all, members);
    finalize(pointer);
    UNPROTECT(2);
    return all;
}

static const R_CallMethodDef calls[] = {{"C_analyze", (DL_FUNC)&analyze, 3}, {NULL, NULL, 0}};

void R_init_vexroc(DllInfo* dll)
{
    R_registerRoutines(dll, NULL, calls, NULL, NULL);
    R_useDynamicSymbols(dll, FALSE);
    R_forceSymbols(dll, TRUE);
}
