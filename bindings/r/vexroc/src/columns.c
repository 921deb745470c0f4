#include "columns.h"

#include <string.h>

static double number_of(const void* structure, const member* m)
{
    const char* at = (const char*)structure + m->offset;
    switch (m->type) {
    case is_int: return *(const int*)at;
    case is_long: return (double)*(const long long*)at;
    case is_double: return *(const double*)at;
    case is_seed: return (double)*(const unsigned long long*)at;
    case is_text: break;
    }
    return NA_REAL;
}

static SEXP text_member(const void* structure, const member* m)
{
    const char* text = *(const char* const*)((const char*)structure + m->offset);
    return text == NULL ? NA_STRING : Rf_mkCharCE(text, CE_UTF8);
}

SEXP columns_for(const member* members, int count, int rows, int more)
{
    SEXP list = PROTECT(Rf_allocVector(VECSXP, count + more));
    SEXP names = PROTECT(Rf_allocVector(STRSXP, count + more));
    for (int i = 0; i < count; ++i) {
        SET_VECTOR_ELT(list, i, Rf_allocVector(members[i].type == is_text ? STRSXP : REALSXP, rows));
        SET_STRING_ELT(names, i, Rf_mkChar(members[i].name));
    }
    Rf_setAttrib(list, R_NamesSymbol, names);
    UNPROTECT(2);
    return list;
}

void put_row(SEXP list, int row, const void* structure, const member* members, int count)
{
    for (int i = 0; i < count; ++i)
        if (members[i].type == is_text)
            SET_STRING_ELT(VECTOR_ELT(list, i), row, text_member(structure, members + i));
        else
            REAL(VECTOR_ELT(list, i))[row] = number_of(structure, members + i);
}

SEXP one_row(const void* structure, const member* members, int count)
{
    SEXP list = PROTECT(columns_for(members, count, 1, 0));
    put_row(list, 0, structure, members, count);
    UNPROTECT(1);
    return list;
}

SEXP further_column(SEXP list, int at, const char* name, SEXPTYPE type, int rows)
{
    SET_STRING_ELT(Rf_getAttrib(list, R_NamesSymbol), at, Rf_mkChar(name));
    return SET_VECTOR_ELT(list, at, Rf_allocVector(type, rows));
}

static void set_member(void* structure, const member* m, SEXP value)
{
    char* at = (char*)structure + m->offset;
    switch (m->type) {
    case is_int: *(int*)at = Rf_asInteger(value); break;
    case is_long: *(long long*)at = (long long)Rf_asReal(value); break;
    case is_double: *(double*)at = Rf_asReal(value); break;
    case is_seed: *(unsigned long long*)at = (unsigned long long)Rf_asReal(value); break;
    case is_text: *(const char**)at = CHAR(STRING_ELT(value, 0)); break;
    }
}

void set_members(void* structure, SEXP list, const member* members, int count)
{
    SEXP names = Rf_getAttrib(list, R_NamesSymbol);
    for (int i = 0; i < Rf_length(list); ++i)
        for (int j = 0; j < count; ++j)
            if (strcmp(CHAR(STRING_ELT(names, i)), members[j].name) == 0)
                set_member(structure, members + j, VECTOR_ELT(list, i));
}
