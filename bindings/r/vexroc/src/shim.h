/* What the files of the glue between R and libvexrocproc920r share. */
#pragma once

#include <R.h>
#include <Rinternals.h>

#include <vexrocproc/analysis.h>

/* An error of R, in the words of the library, for any result but VEXROC_OK. */
void require_ok(int result);

/* An external pointer without address. What it gets belongs to it: an error of R, which jumps, cannot lose it. */
SEXP new_owner(R_CFinalizer_t end);

/* What the pointer owns; an error of R where it comes from another session. */
void* owned(SEXP pointer);

/* A text of the library, which is UTF-8. */
SEXP text_of(const char* text, size_t length);

void put_names(SEXP list, const char* const* names);

/* The calls that R makes; see the functions. */
SEXP new_remarks(void);
SEXP add_remark(SEXP remarks, SEXP code);
SEXP read_remarks(SEXP remarks);
SEXP read_labels(SEXP column, SEXP missing, SEXP named, SEXP choice, SEXP remarks);
SEXP integer64_texts(SEXP numbers);
SEXP analyze(SEXP columns, SEXP parts, SEXP settings, SEXP directions, SEXP remarks);
