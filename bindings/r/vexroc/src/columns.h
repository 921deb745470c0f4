/* Structures of the library as columns of R: a list of vectors, one for each member that the table names. */
#pragma once

#include "shim.h"

#include <stddef.h>

/* A member of a structure. Texts become a column of strings, all others one of numbers. */
typedef struct member {
    const char* name;
    enum { is_int, is_long, is_double, is_text, is_seed } type;
    size_t offset;
} member;

/* A list of `count` columns with `rows` values each, and room for `more` columns that the caller names and fills. */
SEXP columns_for(const member* members, int count, int rows, int more);

void put_row(SEXP list, int row, const void* structure, const member* members, int count);

/* The structure as a list of one row. */
SEXP one_row(const void* structure, const member* members, int count);

/* An empty column behind those of columns_for. */
SEXP further_column(SEXP list, int at, const char* name, SEXPTYPE type, int rows);

/* Sets the members that a named list of one-element vectors names. Texts live as long as the list. */
void set_members(void* structure, SEXP list, const member* members, int count);
