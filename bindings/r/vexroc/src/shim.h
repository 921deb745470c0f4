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

/* Does the user want to stop? As the library asks it. */
int interrupted(void* unused);

/* A text of the library, which is UTF-8. */
SEXP text_of(const char* text, size_t length);

void put_names(SEXP list, const char* const* names);

/* The calls that R makes; see the functions. */
SEXP new_remarks(void);
SEXP add_remark(SEXP remarks, SEXP code, SEXP subject, SEXP detail);
SEXP read_remarks(SEXP remarks);
SEXP read_labels(SEXP column, SEXP missing, SEXP named, SEXP choice, SEXP remarks);
SEXP integer64_texts(SEXP numbers);
SEXP analyze(SEXP columns, SEXP parts, SEXP settings, SEXP directions, SEXP remarks);
SEXP add_area_remarks(SEXP remarks, SEXP subject, SEXP facts);
SEXP ask_area(SEXP cases, SEXP options);
SEXP ask_rate(SEXP cases, SEXP options, SEXP criterion);
SEXP ask_partial(SEXP cases, SEXP options, SEXP rate, SEXP band);
SEXP ask_precision_recall(SEXP cases, SEXP options, SEXP rule);
SEXP ask_calibration(SEXP cases, SEXP options);
SEXP ask_points(SEXP cases, SEXP options, SEXP cut_offs, SEXP quantities, SEXP limits);
SEXP ask_best(SEXP cases, SEXP options, SEXP criterion);
SEXP ask_benefit(SEXP cases, SEXP options, SEXP thresholds);
