/* Ownership, texts and remarks; the table of calls. */
#include "shim.h"

#include <R_ext/Rdynload.h>
#include <R_ext/Utils.h>
#include <stdio.h>
#include <string.h>

/* What the library complained about, with the argument that it begins with as R names that. */
static SEXP complaint(void)
{
    static const char* const arguments[][2] = {{"null_area", "null"},
                                               {"replicates", "boot.n"},
                                               {"criterion", "method"},
                                               {"p_method", "p.method"},
                                               {"interval", "ci.method"},
                                               {"cost_ratio", "cost.ratio"},
                                               {"summary", "test"},
                                               {"min_sensitivity", "min.sensitivity"},
                                               {"min_specificity", "min.specificity"}};
    const char* text = vexroc_last_error();
    const size_t length = strcspn(text, ": ");
    for (size_t i = 0; i < sizeof arguments / sizeof *arguments; ++i)
        if (strlen(arguments[i][0]) == length && strncmp(text, arguments[i][0], length) == 0) {
            const size_t size = strlen(text) + strlen(arguments[i][1]) + 3;
            char* spelled = R_alloc(size, 1);
            snprintf(spelled, size, "`%s`%s", arguments[i][1], text + length);
            return Rf_mkCharCE(spelled, CE_UTF8);
        }
    return Rf_mkCharCE(text, CE_UTF8);
}

void require_ok(int result)
{
    if (result != VEXROC_OK)
        Rf_errorcall(R_NilValue, "%s", Rf_translateChar(complaint()));
}

SEXP new_owner(R_CFinalizer_t end)
{
    SEXP pointer = PROTECT(R_MakeExternalPtr(NULL, R_NilValue, R_NilValue));
    R_RegisterCFinalizer(pointer, end);
    UNPROTECT(1);
    return pointer;
}

void* owned(SEXP pointer)
{
    void* address = TYPEOF(pointer) == EXTPTRSXP ? R_ExternalPtrAddr(pointer) : NULL;
    if (address == NULL)
        Rf_errorcall(R_NilValue, "the list of remarks is not of this session");
    return address;
}

static void check_interrupt(void* unused)
{
    (void)unused;
    R_CheckUserInterrupt();
}

int interrupted(void* unused)
{
    (void)unused;
    return R_ToplevelExec(check_interrupt, NULL) == FALSE;
}

SEXP text_of(const char* text, size_t length) { return Rf_mkCharLenCE(text, (int)length, CE_UTF8); }

void put_names(SEXP list, const char* const* names)
{
    SEXP texts = PROTECT(Rf_allocVector(STRSXP, Rf_length(list)));
    for (int i = 0; i < Rf_length(list); ++i)
        SET_STRING_ELT(texts, i, Rf_mkChar(names[i]));
    Rf_setAttrib(list, R_NamesSymbol, texts);
    UNPROTECT(1);
}

static void end_remarks(SEXP pointer)
{
    vexroc_remarks_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

/* An empty list of remarks in the voice of R. */
SEXP new_remarks(void)
{
    SEXP pointer = PROTECT(new_owner(end_remarks));
    vexroc_remarks* remarks = NULL;
    require_ok(vexroc_remarks_new(VEXROC_VOICE_R, &remarks));
    R_SetExternalPtrAddr(pointer, remarks);
    UNPROTECT(1);
    return pointer;
}

/* One occurrence of a remark; an empty subject is the whole. */
SEXP add_remark(SEXP remarks, SEXP code, SEXP subject, SEXP detail)
{
    require_ok(vexroc_remarks_add(owned(remarks), CHAR(STRING_ELT(code, 0)),
                                  Rf_translateCharUTF8(STRING_ELT(subject, 0)),
                                  Rf_translateCharUTF8(STRING_ELT(detail, 0))));
    return R_NilValue;
}

/* The lines of the list as columns. */
SEXP read_remarks(SEXP remarks)
{
    static const char* const members[] = {"code", "caution", "count", "text"};
    vexroc_remarks* list = owned(remarks);
    const int count = vexroc_remarks_count(list);
    SEXP columns = PROTECT(Rf_allocVector(VECSXP, 4));
    SEXP codes = SET_VECTOR_ELT(columns, 0, Rf_allocVector(STRSXP, count));
    SEXP cautions = SET_VECTOR_ELT(columns, 1, Rf_allocVector(LGLSXP, count));
    SEXP counts = SET_VECTOR_ELT(columns, 2, Rf_allocVector(REALSXP, count));
    SEXP texts = SET_VECTOR_ELT(columns, 3, Rf_allocVector(STRSXP, count));
    for (int i = 0; i < count; ++i) {
        vexroc_remark remark = {.struct_size = sizeof remark};
        require_ok(vexroc_remarks_get(list, i, &remark));
        SET_STRING_ELT(codes, i, Rf_mkChar(remark.code));
        LOGICAL(cautions)[i] = remark.caution != 0;
        REAL(counts)[i] = (double)remark.count;
        SET_STRING_ELT(texts, i, text_of(remark.text, strlen(remark.text)));
    }
    put_names(columns, members);
    UNPROTECT(1);
    return columns;
}

static const R_CallMethodDef calls[] = {{"C_new_remarks", (DL_FUNC)&new_remarks, 0},
                                        {"C_add_remark", (DL_FUNC)&add_remark, 4},
                                        {"C_read_remarks", (DL_FUNC)&read_remarks, 1},
                                        {"C_read_labels", (DL_FUNC)&read_labels, 5},
                                        {"C_integer64_texts", (DL_FUNC)&integer64_texts, 1},
                                        {"C_analyze", (DL_FUNC)&analyze, 5},
                                        {"C_add_area_remarks", (DL_FUNC)&add_area_remarks, 3},
                                        {"C_ask_area", (DL_FUNC)&ask_area, 2},
                                        {"C_ask_rate", (DL_FUNC)&ask_rate, 3},
                                        {"C_ask_partial", (DL_FUNC)&ask_partial, 4},
                                        {"C_ask_precision_recall", (DL_FUNC)&ask_precision_recall, 3},
                                        {"C_ask_calibration", (DL_FUNC)&ask_calibration, 2},
                                        {"C_ask_points", (DL_FUNC)&ask_points, 5},
                                        {"C_ask_best", (DL_FUNC)&ask_best, 3},
                                        {"C_ask_benefit", (DL_FUNC)&ask_benefit, 3},
                                        {NULL, NULL, 0}};

void R_init_vexroc(DllInfo* dll)
{
    R_registerRoutines(dll, NULL, calls, NULL, NULL);
    R_useDynamicSymbols(dll, FALSE);
    R_forceSymbols(dll, TRUE);
}
