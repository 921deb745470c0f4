/** @file
 * What a reader of results has to be told beside the numbers: notes, which are true of the method, and cautions, which
 * say that these data make a number misleading. Every rule, every text and every code of the component, the program
 * and the bindings is here; docs/remarks.md lists the codes. Compiles as C99 and C++.
 *
 * A list of remarks is made, filled (by the calls below, by vexroc_analysis_add_remarks, by vexroc_labels_add_remarks)
 * and read. It says each kind of remark once, however often it was added: with a count and the first five subjects.
 *
 * Conventions of results, errors, growth and threads are those of analysis.h.
 */
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** Whose spelling of options and arguments the texts use. */
enum vexroc_voice {
    VEXROC_VOICE_C = 0,       /**< vexroc_analysis_set_direction(analysis, column, "smaller") */
    VEXROC_VOICE_PROGRAM = 1, /**< --test NAME:smaller */
    VEXROC_VOICE_PYTHON = 2,  /**< direction={"NAME": "smaller"} */
    VEXROC_VOICE_R = 3        /**< direction = c(NAME = "smaller") */
};

typedef struct vexroc_remarks vexroc_remarks;

/** Sets *remarks to a new, empty list, or to null on failure. */
int vexroc_remarks_new(enum vexroc_voice voice, vexroc_remarks** remarks);
/** Ends the list and the texts that it handed out; null is ignored. */
void vexroc_remarks_free(vexroc_remarks* remarks);

typedef struct vexroc_remark {
    size_t struct_size;
    const char* code; /**< stable, such as "few-cases" */
    int caution;      /**< 1 for a caution, 0 for a note */
    long long count;  /**< different subjects that it was added for; at least 1 */
    const char* text; /**< one line of UTF-8, without full stop; lives until the list changes */
} vexroc_remark;

/**
 * Number of different remarks; 0 for a null list. The note "ties", which nearly all data call for, gives way to any
 * other note.
 */
int vexroc_remarks_count(const vexroc_remarks* remarks);
/** One of them: cautions first, then in the order in which their kinds came. VEXROC_INVALID for another index. */
int vexroc_remarks_get(vexroc_remarks* remarks, int index, vexroc_remark* remark);

/**
 * Adds one occurrence of a remark by its code. A subject that the remark has already changes nothing.
 *
 * @param subject  what it is about: a test, a column, a pair; null or "" for the whole analysis
 * @param detail   what stands in the text beside the subject, such as the values that are spelled alike; or null
 */
int vexroc_remarks_add(vexroc_remarks* remarks, const char* code, const char* subject, const char* detail);

/** What is known of one area. */
typedef struct vexroc_area_facts {
    size_t struct_size;
    long long positive; /**< number of cases */
    long long negative;
    double area;             /**< missing where there is none */
    double std_error;        /**< the one that the interval is made of */
    double lower, upper;     /**< of the interval; missing where there is none */
    int smaller_is_positive; /**< 1: smaller test values are more positive */
    int distinct_values;     /**< different test values, as far as they are known: 0 not, 3 for three and more */
    const char* test;        /**< name of the test, for what to do about it; null or "": spelled as NAME */
    int ties;                /**< 1 when positive and negative cases share a test value */
    const char* interval;    /**< rule of the interval, in the words of inference.h; null: wald */
    const char* p_method;    /**< of the p value, likewise; null: wald */
    const char* alternative; /**< null: two-sided */
    double p_value;          /**< missing where there is none */
    double level;            /**< of the interval; 0 where it is not known */
    double null_area;        /**< that the p value is against */
    int edge;                /**< as in vexroc_area_result */
    int percentile;
    int held;
} vexroc_area_facts;

/**
 * Adds what there is to say of an area: "no-positive", "no-negative", "no-case", "no-error", "few-cases", "zero-error",
 * "bound-outside", "below-chance", "two-values", "ties", "interval-and-p", "one-sided", "score-instead",
 * "percentile-instead", "few-replicates", "bootstrap-at-end". Which of them depends on the rules of interval and p.
 */
int vexroc_remarks_area(vexroc_remarks* remarks, const char* subject, const vexroc_area_facts* facts);

/**
 * Adds what there is to say of a difference of two areas: "zero-error-of-difference" for any difference but 0 with the
 * standard error 0, "no-error" where the error alone is missing.
 */
int vexroc_remarks_difference(vexroc_remarks* remarks, const char* subject, double difference, double std_error);

/** Adds "many-comparisons" for three comparisons or more. */
int vexroc_remarks_comparisons(vexroc_remarks* remarks, const char* subject, long long count);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
