/* Texts of states and groups, which the library sorts out. */
#include "shim.h"

#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <vexrocproc/labels.h>

static void end_labels(SEXP pointer)
{
    vexroc_labels_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

static void end_words(SEXP pointer)
{
    vexroc_words_free(R_ExternalPtrAddr(pointer));
    R_ClearExternalPtr(pointer);
}

/* said: further words, or FALSE for none at all but the empty one. */
static SEXP new_words(SEXP said)
{
    SEXP pointer = PROTECT(new_owner(end_words));
    vexroc_words* words = NULL;
    require_ok(vexroc_words_new(&words));
    R_SetExternalPtrAddr(pointer, words);
    if (TYPEOF(said) == LGLSXP)
        require_ok(vexroc_words_clear(words));
    for (int i = 0; TYPEOF(said) == STRSXP && i < Rf_length(said); ++i)
        require_ok(vexroc_words_add(words, Rf_translateCharUTF8(STRING_ELT(said, i))));
    UNPROTECT(1);
    return pointer;
}

static SEXP new_labels(const char* column, SEXP missing)
{
    SEXP words = PROTECT(new_words(missing));
    SEXP pointer = PROTECT(new_owner(end_labels));
    vexroc_labels* labels = NULL;
    require_ok(vexroc_labels_new(column, R_ExternalPtrAddr(words), '.', VEXROC_VOICE_R, &labels));
    R_SetExternalPtrAddr(pointer, labels);
    end_words(words);
    UNPROTECT(2);
    return pointer;
}

/* The texts of a character vector; the array lives until the call of R ends. */
static const char** texts_of(SEXP texts)
{
    const int count = Rf_length(texts);
    const char** all = (const char**)R_alloc((size_t)count + 1, sizeof *all);
    for (int i = 0; i < count; ++i)
        all[i] = Rf_translateCharUTF8(STRING_ELT(texts, i));
    return all;
}

/* choice: positive texts, negative texts, others or not. */
static void choose_states(vexroc_labels* labels, SEXP choice)
{
    const vexroc_state_choice said = {.struct_size = sizeof said,
                                      .positive = texts_of(VECTOR_ELT(choice, 0)),
                                      .positive_count = Rf_length(VECTOR_ELT(choice, 0)),
                                      .negative = texts_of(VECTOR_ELT(choice, 1)),
                                      .negative_count = Rf_length(VECTOR_ELT(choice, 1)),
                                      .others = Rf_asLogical(VECTOR_ELT(choice, 2)) == TRUE};
    require_ok(vexroc_labels_choose(labels, &said));
}

static void put_values(SEXP list, const vexroc_labels* labels)
{
    const int count = vexroc_labels_count(labels);
    SEXP texts = SET_VECTOR_ELT(list, 1, Rf_allocVector(STRSXP, count));
    for (int i = 0; i < count; ++i) {
        vexroc_label label = {.struct_size = sizeof label};
        require_ok(vexroc_labels_value(labels, i, &label));
        SET_STRING_ELT(texts, i, text_of(label.text, label.length));
    }
}

/* column: name, different texts, rows of each, whether they are logical values. */
static void add_texts(vexroc_labels* labels, SEXP column, const char** texts)
{
    const double* counts = REAL(VECTOR_ELT(column, 2));
    const int logical = Rf_asLogical(VECTOR_ELT(column, 3)) == TRUE;
    for (int i = 0; i < Rf_length(VECTOR_ELT(column, 1)); ++i)
        require_ok(vexroc_labels_add(labels, texts[i], strlen(texts[i]),
                                     logical ? VEXROC_LABEL_VALUE : VEXROC_LABEL_TEXT, (long long)counts[i], NULL));
}

/* An element of a list: as many whole numbers. */
static int* put_numbers(SEXP list, int at, int count)
{
    return INTEGER(SET_VECTOR_ELT(list, at, Rf_allocVector(INTSXP, count)));
}

/*
 * column: see add_texts; missing: see new_words; named: texts that the caller names; choice: null, or see
 * choose_states; remarks: null, or the list that receives what there is to say.
 * Per text its value, from 1, or 0 for a missing one; the values, ascending; per text its enum vexroc_state, with a
 * choice; per named text its value, or 0.
 */
SEXP read_labels(SEXP column, SEXP missing, SEXP named, SEXP choice, SEXP remarks)
{
    static const char* const members[] = {"value", "values", "state", "named"};
    SEXP pointer = PROTECT(new_labels(Rf_translateCharUTF8(STRING_ELT(VECTOR_ELT(column, 0), 0)), missing));
    vexroc_labels* labels = R_ExternalPtrAddr(pointer);
    const char** names = texts_of(named);
    add_texts(labels, column, texts_of(VECTOR_ELT(column, 1)));
    for (int i = 0; i < Rf_length(named); ++i)
        require_ok(vexroc_labels_name(labels, names[i], strlen(names[i])));
    require_ok(vexroc_labels_settle(labels));
    if (choice != R_NilValue)
        choose_states(labels, choice);
    if (remarks != R_NilValue)
        require_ok(vexroc_labels_add_remarks(labels, owned(remarks)));

    const int texts = Rf_length(VECTOR_ELT(column, 1));
    SEXP list = PROTECT(Rf_allocVector(VECSXP, 4));
    int* value = put_numbers(list, 0, texts);
    put_values(list, labels);
    int* state = put_numbers(list, 2, choice == R_NilValue ? 0 : texts);
    int* found = put_numbers(list, 3, Rf_length(named));
    for (int i = 0; i < texts; ++i)
        value[i] = vexroc_labels_value_of(labels, i) + 1;
    for (int i = 0; i < Rf_length(VECTOR_ELT(list, 2)); ++i)
        state[i] = vexroc_labels_state_of(labels, i);
    for (int i = 0; i < Rf_length(named); ++i)
        found[i] = vexroc_labels_find(labels, names[i], strlen(names[i])) + 1;
    put_names(list, members);
    end_labels(pointer);
    UNPROTECT(2);
    return list;
}

/* The whole numbers that are kept in the 64 bits of doubles, as R's class integer64 does. */
SEXP integer64_texts(SEXP numbers)
{
    const R_xlen_t count = Rf_xlength(numbers);
    SEXP texts = PROTECT(Rf_allocVector(STRSXP, count));
    for (R_xlen_t i = 0; i < count; ++i) {
        int64_t number = 0;
        memcpy(&number, REAL(numbers) + i, sizeof number);
        char text[24];
        snprintf(text, sizeof text, "%lld", (long long)number);
        SET_STRING_ELT(texts, i, number == INT64_MIN ? NA_STRING : Rf_mkChar(text));
    }
    UNPROTECT(1);
    return texts;
}
