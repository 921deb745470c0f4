/* Questions to the cases of one record, of which R keeps the distinct values with their counts. */
#include "columns.h"

#include <stdio.h>
#include <string.h>
#include <vexrocproc/inference.h>

static const member option_members[] = {
    {"level", is_double, offsetof(vexroc_inference_options, level)},
    {"smaller_is_positive", is_int, offsetof(vexroc_inference_options, smaller_is_positive)},
    {"exclude_cut_off", is_int, offsetof(vexroc_inference_options, exclude_cut_off)},
    {"interval", is_text, offsetof(vexroc_inference_options, interval)},
    {"proportion", is_text, offsetof(vexroc_inference_options, proportion)},
    {"p_method", is_text, offsetof(vexroc_inference_options, p_method)},
    {"exact", is_text, offsetof(vexroc_inference_options, exact)},
    {"alternative", is_text, offsetof(vexroc_inference_options, alternative)},
    {"null_area", is_double, offsetof(vexroc_inference_options, null_area)},
    {"uncorrected", is_int, offsetof(vexroc_inference_options, uncorrected)},
    {"prevalence", is_double, offsetof(vexroc_inference_options, prevalence)},
    {"cost_ratio", is_double, offsetof(vexroc_inference_options, cost_ratio)},
    {"min_sensitivity", is_double, offsetof(vexroc_inference_options, min_sensitivity)},
    {"min_specificity", is_double, offsetof(vexroc_inference_options, min_specificity)},
    {"replicates", is_long, offsetof(vexroc_inference_options, replicates)},
    {"seed", is_seed, offsetof(vexroc_inference_options, seed)},
};

static const member area_members[] = {
    {"u", is_double, offsetof(vexroc_area_result, u)},
    {"z", is_double, offsetof(vexroc_area_result, z)},
    {"p_value", is_double, offsetof(vexroc_area_result, p_value)},
    {"log10_p", is_double, offsetof(vexroc_area_result, log10_p)},
    {"p_method", is_text, offsetof(vexroc_area_result, p_method)},
    {"exact_steps", is_double, offsetof(vexroc_area_result, exact_steps)},
};

static const member rate_members[] = {
    {"reached", is_double, offsetof(vexroc_rate_result, reached)},
    {"reached_lower", is_double, offsetof(vexroc_rate_result, lower)},
    {"reached_upper", is_double, offsetof(vexroc_rate_result, upper)},
    {"reached_error", is_double, offsetof(vexroc_rate_result, std_error)},
    {"reached_interval", is_text, offsetof(vexroc_rate_result, interval)},
    {"interpolated", is_double, offsetof(vexroc_rate_result, interpolated)},
};

static const member partial_members[] = {
    {"from", is_double, offsetof(vexroc_partial_result, from)},
    {"to", is_double, offsetof(vexroc_partial_result, to)},
    {"partial_area", is_double, offsetof(vexroc_partial_result, area)},
    {"std_error", is_double, offsetof(vexroc_partial_result, std_error)},
    {"lower", is_double, offsetof(vexroc_partial_result, lower)},
    {"upper", is_double, offsetof(vexroc_partial_result, upper)},
    {"standardized", is_double, offsetof(vexroc_partial_result, standardized)},
    {"standardized_error", is_double, offsetof(vexroc_partial_result, standardized_error)},
    {"standardized_lower", is_double, offsetof(vexroc_partial_result, standardized_lower)},
    {"standardized_upper", is_double, offsetof(vexroc_partial_result, standardized_upper)},
    {"interval", is_text, offsetof(vexroc_partial_result, interval)},
    {"edge", is_int, offsetof(vexroc_partial_result, edge)},
    {"few", is_int, offsetof(vexroc_partial_result, few)},
    {"percentile", is_int, offsetof(vexroc_partial_result, percentile)},
    {"held", is_int, offsetof(vexroc_partial_result, held)},
};

static const member pr_members[] = {
    {"pr_area", is_double, offsetof(vexroc_pr_result, area)},
    {"lower", is_double, offsetof(vexroc_pr_result, lower)},
    {"upper", is_double, offsetof(vexroc_pr_result, upper)},
    {"rule", is_text, offsetof(vexroc_pr_result, rule)},
    {"interval", is_text, offsetof(vexroc_pr_result, interval)},
    {"prevalence", is_double, offsetof(vexroc_pr_result, prevalence)},
    {"lowest", is_double, offsetof(vexroc_pr_result, lowest)},
    {"edge", is_int, offsetof(vexroc_pr_result, edge)},
    {"percentile", is_int, offsetof(vexroc_pr_result, percentile)},
    {"held", is_int, offsetof(vexroc_pr_result, held)},
};

static const member calibration_members[] = {
    {"mean_score", is_double, offsetof(vexroc_calibration_result, mean_score)},
    {"observed", is_double, offsetof(vexroc_calibration_result, observed)},
    {"differs", is_int, offsetof(vexroc_calibration_result, differs)},
};

static const member fact_members[] = {
    {"positive", is_long, offsetof(vexroc_area_facts, positive)},
    {"negative", is_long, offsetof(vexroc_area_facts, negative)},
    {"area", is_double, offsetof(vexroc_area_facts, area)},
    {"std_error", is_double, offsetof(vexroc_area_facts, std_error)},
    {"test", is_text, offsetof(vexroc_area_facts, test)},
    {"interval", is_text, offsetof(vexroc_area_facts, interval)},
    {"percentile", is_int, offsetof(vexroc_area_facts, percentile)},
    {"held", is_int, offsetof(vexroc_area_facts, held)},
};

/* Quantities of a cut-off: three lists each. */
static const member quantity_members[] = {
    {.name = "sensitivity", .offset = offsetof(vexroc_operating_columns, sensitivity)},
    {.name = "specificity", .offset = offsetof(vexroc_operating_columns, specificity)},
    {.name = "ppv", .offset = offsetof(vexroc_operating_columns, ppv)},
    {.name = "npv", .offset = offsetof(vexroc_operating_columns, npv)},
    {.name = "lr_positive", .offset = offsetof(vexroc_operating_columns, lr_positive)},
    {.name = "lr_negative", .offset = offsetof(vexroc_operating_columns, lr_negative)},
    {.name = "dor", .offset = offsetof(vexroc_operating_columns, dor)},
    {.name = "accuracy", .offset = offsetof(vexroc_operating_columns, accuracy)},
    {.name = "balanced_accuracy", .offset = offsetof(vexroc_operating_columns, balanced_accuracy)},
    {.name = "f1", .offset = offsetof(vexroc_operating_columns, f1)},
    {.name = "mcc", .offset = offsetof(vexroc_operating_columns, mcc)},
    {.name = "youden", .offset = offsetof(vexroc_operating_columns, youden)},
    {.name = "kappa", .offset = offsetof(vexroc_operating_columns, kappa)},
};

#define LENGTH_OF(array) ((int)(sizeof(array) / sizeof *(array)))

static void end_summary(SEXP pointer)
{
    vexroc_summary_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

static long long* whole_numbers(SEXP numbers)
{
    const R_xlen_t count = Rf_xlength(numbers);
    long long* whole = (long long*)R_alloc((size_t)count + 1, sizeof *whole);
    for (R_xlen_t i = 0; i < count; ++i)
        whole[i] = (long long)REAL(numbers)[i];
    return whole;
}

/* cases: distinct values, positive and negative counts; or values, states (1 is positive) and probability weights. */
static SEXP new_summary(SEXP cases)
{
    SEXP pointer = PROTECT(new_owner(end_summary));
    vexroc_summary* summary = NULL;
    require_ok(vexroc_summary_new(&summary));
    R_SetExternalPtrAddr(pointer, summary);
    SEXP values = VECTOR_ELT(cases, 0);
    const long long count = (long long)Rf_xlength(values);
    if (strcmp(CHAR(STRING_ELT(Rf_getAttrib(cases, R_NamesSymbol), 1)), "state") == 0)
        require_ok(vexroc_summary_add(summary, REAL(values), REAL(VECTOR_ELT(cases, 1)), 1.0,
                                      REAL(VECTOR_ELT(cases, 2)), VEXROC_PROBABILITY_WEIGHTS, count));
    else
        require_ok(vexroc_summary_add_counts(summary, REAL(values), whole_numbers(VECTOR_ELT(cases, 1)),
                                             whole_numbers(VECTOR_ELT(cases, 2)), count));
    UNPROTECT(1);
    return pointer;
}

static vexroc_inference_options options_of(SEXP list)
{
    vexroc_inference_options options = {.struct_size = sizeof options};
    require_ok(vexroc_inference_defaults(&options));
    set_members(&options, list, option_members, LENGTH_OF(option_members));
    options.cancel = interrupted;
    return options;
}

/* The answer as a list of one row; null after an interrupt. */
static SEXP answer_of(int result, const void* structure, const member* members, int count)
{
    if (result == VEXROC_CANCELLED)
        return R_NilValue;
    require_ok(result);
    return one_row(structure, members, count);
}

static const char* word_of(SEXP word) { return CHAR(STRING_ELT(word, 0)); }

SEXP ask_area(SEXP cases, SEXP list)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_area_result result = {.struct_size = sizeof result};
    const int code = vexroc_area_inference(R_ExternalPtrAddr(summary), &options, &result);
    SEXP answer = answer_of(code, &result, area_members, LENGTH_OF(area_members));
    UNPROTECT(1);
    return answer;
}

SEXP ask_rate(SEXP cases, SEXP list, SEXP criterion)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_rate_result result = {.struct_size = sizeof result};
    const int code = vexroc_rate_at(R_ExternalPtrAddr(summary), &options, word_of(criterion), &result);
    SEXP answer = answer_of(code, &result, rate_members, LENGTH_OF(rate_members));
    UNPROTECT(1);
    return answer;
}

/* band: from, to */
SEXP ask_partial(SEXP cases, SEXP list, SEXP rate, SEXP band)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_partial_result result = {.struct_size = sizeof result};
    const int code =
        vexroc_partial_area(R_ExternalPtrAddr(summary), &options, word_of(rate), REAL(band)[0], REAL(band)[1], &result);
    SEXP answer = answer_of(code, &result, partial_members, LENGTH_OF(partial_members));
    UNPROTECT(1);
    return answer;
}

SEXP ask_precision_recall(SEXP cases, SEXP list, SEXP rule)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_pr_result result = {.struct_size = sizeof result};
    const int code = vexroc_pr_area(R_ExternalPtrAddr(summary), &options, word_of(rule), &result);
    SEXP answer = answer_of(code, &result, pr_members, LENGTH_OF(pr_members));
    UNPROTECT(1);
    return answer;
}

SEXP ask_calibration(SEXP cases, SEXP list)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_calibration_result result = {.struct_size = sizeof result};
    const int code = vexroc_calibration(R_ExternalPtrAddr(summary), &options, &result);
    SEXP answer = answer_of(code, &result, calibration_members, LENGTH_OF(calibration_members));
    UNPROTECT(1);
    return answer;
}

/* A column of numbers behind those that are there. */
static double* next_numbers(SEXP list, int* at, const char* name, int rows)
{
    return REAL(further_column(list, (*at)++, name, REALSXP, rows));
}

static SEXP named_list(int length)
{
    SEXP list = PROTECT(Rf_allocVector(VECSXP, length));
    Rf_setAttrib(list, R_NamesSymbol, Rf_allocVector(STRSXP, length));
    UNPROTECT(1);
    return list;
}

static void put_counts(double* column, const long long* counts, int rows)
{
    for (int i = 0; i < rows; ++i)
        column[i] = (double)counts[i];
}

/* A quantity alone (1) or with its limits (3). */
static void ask_quantity(SEXP list, int* at, const member* quantity, int parts, vexroc_operating_columns* columns,
                         int rows)
{
    double** lists = (double**)((char*)columns + quantity->offset);
    static const char* const ends[] = {"", "_lower", "_upper"};
    for (int i = 0; i < parts; ++i) {
        char name[40];
        snprintf(name, sizeof name, "%s%s", quantity->name, ends[i]);
        lists[i] = next_numbers(list, at, name, rows);
    }
}

static const member* quantity_called(const char* name)
{
    for (int i = 0; i < LENGTH_OF(quantity_members); ++i)
        if (strcmp(quantity_members[i].name, name) == 0)
            return quantity_members + i;
    return NULL;
}

/* cut_offs: null for all of the curve; quantities: names, see quantity_members; limits: with those? Columns: cut-off,
   counts, quantities. */
SEXP ask_points(SEXP cases, SEXP list, SEXP cut_offs, SEXP quantities, SEXP limits)
{
    static const char* const counts[] = {"true_positive", "false_positive", "true_negative", "false_negative"};
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    const int all = cut_offs == R_NilValue;
    const int rows = all ? (int)vexroc_cut_off_count(R_ExternalPtrAddr(summary)) : Rf_length(cut_offs);
    const int parts = Rf_asLogical(limits) == TRUE ? 3 : 1;
    SEXP answer = PROTECT(named_list(5 + parts * Rf_length(quantities)));
    vexroc_operating_columns columns = {.struct_size = sizeof columns};
    int at = 0;
    columns.cut_off = next_numbers(answer, &at, "cut_off", rows);
    long long** const numbers[] = {&columns.true_positive, &columns.false_positive, &columns.true_negative,
                                   &columns.false_negative};
    for (int i = 0; i < 4; ++i)
        *numbers[i] = (long long*)R_alloc((size_t)rows + 1, sizeof **numbers[i]);
    at += 4;
    for (int i = 0; i < Rf_length(quantities); ++i)
        ask_quantity(answer, &at, quantity_called(CHAR(STRING_ELT(quantities, i))), parts, &columns, rows);
    require_ok(
        vexroc_operating_points(R_ExternalPtrAddr(summary), &options, all ? NULL : REAL(cut_offs), 0, rows, &columns));
    at = 1;
    for (int i = 0; i < 4; ++i)
        put_counts(next_numbers(answer, &at, counts[i], rows), *numbers[i], rows);
    UNPROTECT(2);
    return answer;
}

/* facts: a named list of members of vexroc_area_facts; there is no other. */
SEXP add_area_remarks(SEXP remarks, SEXP subject, SEXP list)
{
    vexroc_area_facts facts = {.struct_size = sizeof facts,
                               .area = NA_REAL,
                               .std_error = NA_REAL,
                               .lower = NA_REAL,
                               .upper = NA_REAL,
                               .p_value = NA_REAL};
    set_members(&facts, list, fact_members, LENGTH_OF(fact_members));
    require_ok(vexroc_remarks_area(owned(remarks), Rf_translateCharUTF8(STRING_ELT(subject, 0)), &facts));
    return R_NilValue;
}

/* Value of the criterion; the best cut-offs, ascending; which of them is chosen, from 1, or 0. */
SEXP ask_best(SEXP cases, SEXP list, SEXP criterion)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    vexroc_best_result best = {.struct_size = sizeof best};
    require_ok(vexroc_best_cut_offs(R_ExternalPtrAddr(summary), &options, word_of(criterion), 0, NULL, &best));
    SEXP answer = PROTECT(named_list(3));
    int at = 0;
    double* cut_offs = next_numbers(answer, &at, "cut_off", (int)best.count);
    require_ok(
        vexroc_best_cut_offs(R_ExternalPtrAddr(summary), &options, word_of(criterion), best.count, cut_offs, &best));
    *next_numbers(answer, &at, "value", 1) = best.value;
    *next_numbers(answer, &at, "chosen", 1) = (double)best.chosen + 1;
    UNPROTECT(2);
    return answer;
}

/* Columns: net benefit of the test and of treating all, counts. */
SEXP ask_benefit(SEXP cases, SEXP list, SEXP thresholds)
{
    SEXP summary = PROTECT(new_summary(cases));
    const vexroc_inference_options options = options_of(list);
    const int rows = Rf_length(thresholds);
    SEXP answer = PROTECT(named_list(4));
    int at = 0;
    double* model = next_numbers(answer, &at, "net_benefit", rows);
    double* all = next_numbers(answer, &at, "treat_all", rows);
    long long* true_positive = (long long*)R_alloc((size_t)rows + 1, sizeof *true_positive);
    long long* false_positive = (long long*)R_alloc((size_t)rows + 1, sizeof *false_positive);
    require_ok(vexroc_net_benefit(R_ExternalPtrAddr(summary), &options, REAL(thresholds), rows, model, all,
                                  true_positive, false_positive));
    put_counts(next_numbers(answer, &at, "true_positive", rows), true_positive, rows);
    put_counts(next_numbers(answer, &at, "false_positive", rows), false_positive, rows);
    UNPROTECT(2);
    return answer;
}
