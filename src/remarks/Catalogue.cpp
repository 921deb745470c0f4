#include "remarks/Catalogue.h"

#include <algorithm>

namespace ROCALG_920::remarks {

namespace {

constexpr bool note = false;
constexpr bool caution = true;

// docs/remarks.md shows the same texts.
constexpr std::array allKinds{
    Kind{"ties", note, "positive and negative cases share test values; each such pair counts one half"},
    Kind{"missing-words", note, "words taken for a missing value", "{missing} changes which"},
    Kind{"left-out", note, "rows left out"},
    Kind{"many-comparisons", note, "p values and intervals are not adjusted for the number of comparisons"},
    Kind{"costly-test", note, "the test that costs most rows", "without it more cases are compared"},
    Kind{"best-on-same-data", note, "best cut-offs are chosen on the data that they are judged by",
         "new cases will mostly show less sensitivity and specificity"},
    Kind{"sample-prevalence", note,
         "precision, predictive values and accuracy hold for the share of positive cases in these data",
         "elsewhere the share may differ, and they with it"},
    Kind{"two-values", note, "area of a yes/no test: (sensitivity + specificity)/2", "give {score}, not the class"},
    Kind{"interval-and-p", note, "interval and p value are two methods, and disagree about the area tested against",
         "report the p value for a test, the interval for how large the area may be"},
    Kind{"one-sided", note, "the p value is one-sided, the interval two-sided"},
    Kind{"score-instead", note,
         "logit has no limits for an area of 0 or 1, nor without a standard error; those of another rule stand there"},
    Kind{"percentile-instead", note, "bca has no limits for these replicates; those of the percentiles stand there"},
    Kind{"few-replicates", note, "a limit is the lowest or highest of all replicates", "more {replicates} may move it"},
    Kind{"bootstrap-at-end", note, "all replicates have the same area, so their interval has no length",
         "{score_interval} gives one"},
    Kind{"few-in-band", note, "the band holds fewer than 5 of the cases that it is a share of"},
    Kind{"no-interval-at-prevalence", note, "at a stated prevalence this area has an interval by the bootstraps alone",
         "ask for {bootstrap}"},
    Kind{"pr-edge", note,
         "at a precision-recall area of 0 or 1 the interval logit is not defined, and binomial has no length"},
    Kind{"state-no-test", note, "the state is not also a test"},
    Kind{"points-elsewhere", note, "the points of --pr are not shown",
         "--plot and --report draw them, --pr-curve FILE writes them"},
    Kind{"not-drawn", note, "pictures are limited"},
    Kind{"decimal-sign", note, "numbers with the other decimal sign"},
    Kind{"nearly-numbers", note, "cells that are nearly numbers"},
    Kind{"likely-codes", note, "whole numbers far from all others, perhaps codes for missing values",
         "if they are, name them with --missing"},
    Kind{"ids", note, "columns that number or name the cases, and are no tests"},
    Kind{"repeated-ids", note, "columns that repeat as the number of a patient does; rows count as independent cases",
         "if they are not, keep one row of each patient"},
    Kind{"next-call", note, "the commonest question to these data"},
    Kind{"undecodable", note, "cells with bytes that are not UTF-8", "--encoding names another encoding"},

    Kind{"no-result", caution, "no result"},
    Kind{"no-case", caution, "there is no case, so there is no area", "check which rows are left out"},
    Kind{"no-positive", caution, "there is no positive case, so there is no area",
         "check {state} and which rows are left out"},
    Kind{"no-negative", caution, "there is no negative case, so there is no area",
         "check {state} and which rows are left out"},
    Kind{"criterion-unmet", caution, "no cut-off meets the criterion"},
    Kind{"no-curve", caution, "fewer than 3 cases, so there is no curve"},
    Kind{"few-cases", caution, "fewer than 10 cases of a state, so areas, intervals and p values may be far off"},
    Kind{"no-error", caution,
         "fewer than 2 cases of a state, so there is no standard error, nor p value and interval by one"},
    Kind{"zero-error", caution, "the standard error is 0, so p value and interval by it say nothing beyond these cases",
         "more cases are needed"},
    Kind{"bound-outside", caution, "the interval goes beyond 0 or 1, so it is a poor approximation",
         "{score_interval} stays inside"},
    Kind{"below-chance", caution, "the area is clearly below 0.5",
         "if WORD values are more positive, give {direction}"},
    Kind{"zero-error-of-difference", caution,
         "the standard error of the difference is 0, so p value and interval say nothing beyond these cases"},
    Kind{"more-than-two-states", caution,
         "the state has more than two values; all but the positive one count as negative",
         "say which are negative with {negative}"},
    Kind{"spellings", caution, "values that differ only in case or blanks are different values",
         "if they are the same, change the data or name all of them"},
    Kind{"leading-zeros", caution, "a number with a leading zero is a text, and another value than the number",
         "if they are the same, change the data or name all of them"},
    Kind{"thousands", caution, "every decimal sign stands before exactly three digits, as between thousands",
         "if they separate thousands, say so with --thousands in place of --decimal; if not, give --thousands none"},
    Kind{"weight-counts-only", caution, "weights change the numbers of cases only, not areas, errors and curves",
         "for cases per row give {count}; for inverse sampling probabilities {probabilities}; if it is meant so, "
         "{weight_kind}"},
    Kind{"weights-rounded", caution, "weights that are not whole numbers are rounded, halves up"},
    Kind{"weights-dropped", caution, "rows left out because their weight is below one half or too large"},
    Kind{"distribution-changed", caution,
         "the standard error is nonparametric: bi-negative exponential needs as many positive as negative cases"},
    Kind{"not-calibrated", caution,
         "the mean score is more than three standard errors from the prevalence, so scores are no risks",
         "thresholds mean nothing before the scores are calibrated"},
    Kind{"groups-ignored", caution, "the groups are not used: a paired comparison takes all cases"},
};

constexpr std::array allSpellings{
    // clang-format off
    Spelling{"{direction}", {R"(vexroc_analysis_set_direction(analysis, column, "WORD"))", "--test NAME:WORD",
                             R"(direction={"NAME": "WORD"})", R"(direction = c(NAME = "WORD"))"}},
    Spelling{"{score}", {"the score", "the score", "the score", "the score, as in vexroc(score, state)"}},
    Spelling{"{state}", {R"("positive_value")", "--state", "pos_label", "positive"}},
    Spelling{"{negative}", {R"(vexroc_analysis_add_negative, or the word setting "negative")",
                            "--negative VALUE[,VALUE...] or --negative others", "neg_label", "negative"}},
    Spelling{"{missing}", {"vexroc_words_add", "--missing", "missing", "missing"}},
    Spelling{"{count}", {R"(the column "count")", "--count COLUMN", "count=", "count ="}},
    Spelling{"{weight_kind}", {R"(the word setting "weight_kind", "counts")", "--weight-kind counts",
                               R"(weight_kind="counts")", R"(weight.kind = "counts")"}},
    Spelling{"{probabilities}", {R"(the word setting "weight_kind", "probability")", "--weight-kind probability",
                                 R"(weight_kind="probability")", R"(weight.kind = "probability")"}},
    Spelling{"{score_interval}", {R"(the word setting "interval", "score")", "--interval score", R"(interval="score")",
                                  R"(ci.method = "score")"}},
    Spelling{"{bootstrap}", {R"(the interval "bootstrap")", "--interval bootstrap", R"(interval="bootstrap")",
                             R"(ci.method = "bootstrap")"}},
    Spelling{"{replicates}", {"replicates", "--replicates", "n_resamples", "boot.n"}},
    // clang-format on
};

} // namespace

std::span<const Kind> kinds() noexcept { return allKinds; }

std::span<const Spelling> spellings() noexcept { return allSpellings; }

const Kind* kindOf(std::string_view code) noexcept
{
    const auto kind = std::ranges::find(allKinds, code, &Kind::code);
    return kind == allKinds.end() ? nullptr : &*kind;
}

std::string replaced(std::string text, std::string_view from, std::string_view to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string inVoice(std::string_view text, vexroc_voice voice)
{
    std::string spelled(text);
    for (const auto& [placeHolder, words] : allSpellings)
        spelled = replaced(std::move(spelled), placeHolder, words[static_cast<std::size_t>(voice)]);
    return spelled;
}

} // namespace ROCALG_920::remarks
