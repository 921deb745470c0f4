/** @file
 * What the texts of a column of labels mean, whatever file, database or language they come from: which of them are the
 * same value, which stand for a missing one, and which are the positive and the negative state. Compiles as C99 and
 * C++.
 *
 * The same value: texts that spell a decimal number are compared as that exact decimal, of any length: 1, 1.0, +1 and
 * 1e0 are one value, 9007199254740993 is not 9007199254740992. A zero before a further digit keeps it a text: 007 is
 * not 7. Every other text is compared byte for byte.
 *
 * Missing words, in any case of their letters: the empty text, NA, N/A, NULL, NaN, #N/A; in tests also ".", "?", "-".
 * In labels these three are missing only beside two other values or more, and "-" never beside "+". A word that the
 * caller names (vexroc_labels_name, or in a choice) is always a value.
 *
 * Order of calls: vexroc_labels_new; words and settings; vexroc_labels_add for each different text;
 * vexroc_labels_name for those that the caller named; vexroc_labels_settle; what they are; vexroc_labels_free.
 * Conventions of results, errors, ownership, growth and threads are those of analysis.h.
 */
#pragma once

#include "vexrocproc/remarks.h"

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/** The words that stand for a missing value. */
typedef struct vexroc_words vexroc_words;

/** Sets *words to a new list that holds the words above, or to null on failure. */
int vexroc_words_new(vexroc_words** words);
void vexroc_words_free(vexroc_words* words);
/** Takes all words from the list but the empty one: a cell without text is always missing. */
int vexroc_words_clear(vexroc_words* words);
/** One more, missing in tests and labels, in any case of its letters. */
int vexroc_words_add(vexroc_words* words, const char* word);
/** Is a text, without blanks around it, missing in a column of numbers? 1 or 0; NaN with a sign is. */
int vexroc_words_missing_in_test(const vexroc_words* words, const char* text, size_t length);

typedef struct vexroc_labels vexroc_labels;

/**
 * Sets *labels to the labels of a new column, or to null on failure.
 *
 * @param column   its name, for texts
 * @param words    are copied; null for the usual ones
 * @param decimal  decimal sign of numbers, '.' or ','
 * @param voice    of errors
 */
int vexroc_labels_new(const char* column, const vexroc_words* words, char decimal, enum vexroc_voice voice,
                      vexroc_labels** labels);
void vexroc_labels_free(vexroc_labels* labels);

/** How a text is taken. */
enum vexroc_label_kind {
    VEXROC_LABEL_TEXT = 0, /**< may be a missing word, or spell a number */
    VEXROC_LABEL_VALUE = 1 /**< is a value as it stands, such as a boolean of a language; equals itself only */
};

/**
 * Adds a text of the column.
 *
 * @param count     rows that hold it; a text may be added again
 * @param spelling  receives the index of the text, from 0 in the order in which they came first; may be null
 */
int vexroc_labels_add(vexroc_labels* labels, const char* text, size_t length, enum vexroc_label_kind kind,
                      long long count, int* spelling);

/** Says that the caller names this text as a value of the column: then it is no missing word. */
int vexroc_labels_name(vexroc_labels* labels, const char* text, size_t length);

/** Sorts out what was added; no more can be added then. */
int vexroc_labels_settle(vexroc_labels* labels);

/** A value: all spellings that are the same. */
typedef struct vexroc_label {
    size_t struct_size;
    const char* text; /**< as it is spelled first */
    size_t length;
    long long count; /**< rows that hold it */
    int is_number;   /**< 1 where it spells a decimal number */
} vexroc_label;

/* After vexroc_labels_settle. */

/** Number of different values that are not missing; 0 for null. */
int vexroc_labels_count(const vexroc_labels* labels);
/** One of them, in ascending order: numbers first, then texts byte by byte. VEXROC_INVALID for another index. */
int vexroc_labels_value(const vexroc_labels* labels, int value, vexroc_label* label);
/** The value that a spelling is, or -1: missing. -2 for an index that is not there. */
int vexroc_labels_value_of(const vexroc_labels* labels, int spelling);
/** The value that this text names, whether it was added or not; -1 when no row holds it. */
int vexroc_labels_find(const vexroc_labels* labels, const char* text, size_t length);

/** Which values are positive states, and which negative. */
typedef struct vexroc_state_choice {
    size_t struct_size;
    const char* const* positive; /**< texts; each has to occur */
    int positive_count;
    const char* const* negative; /**< likewise; null with 0: not said */
    int negative_count;
    int others;        /**< 1: all values that are not positive are negative; then no negative ones are given */
    const char* sign;  /**< ">=", ">", "<=" or "<": the values on that side of `bound` are positive, the others */
    const char* bound; /**< negative, and all have to be numbers; null: `positive` names them */
} vexroc_state_choice;

/** What the rows with a value are. */
enum vexroc_state {
    VEXROC_STATE_NEGATIVE = 0,
    VEXROC_STATE_POSITIVE = 1,
    VEXROC_STATE_OTHER = 2,  /**< neither: left out */
    VEXROC_STATE_MISSING = 3 /**< left out */
};

/**
 * Makes a column of states of the labels. With two values naming the positive one is enough. VEXROC_INVALID, with what
 * to do in the words of the voice: a value that never occurs, is named twice or for both sides; more than two values
 * and no word on the negative ones (the text lists every value with its count and two ways on).
 */
int vexroc_labels_choose(vexroc_labels* labels, const vexroc_state_choice* choice);
/** What a spelling is, after vexroc_labels_choose. */
enum vexroc_state vexroc_labels_state_of(const vexroc_labels* labels, int spelling);

/**
 * What may be wrong in one error, for callers that show it in their own form: the way on number `index` (0 or 1) after
 * a vexroc_labels_choose that ended because the negative values were not said, such as "--state state=ill --negative
 * well"; null otherwise.
 */
const char* vexroc_labels_way_on(const vexroc_labels* labels, int index);

/**
 * Adds what there is to say: "missing-words" (which, how many), "spellings" (values that differ only in the case of
 * letters or in blanks around them), "leading-zeros" (007 beside 7).
 */
int vexroc_labels_add_remarks(const vexroc_labels* labels, vexroc_remarks* remarks);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif
