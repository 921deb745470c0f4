#pragma once

#include <array>
#include <span>
#include <string_view>

/// What people call states, their values and columns beside them, in lower case: what a column is likely to be.
namespace vexroc::likelyNames {

using Words = std::span<const std::string_view>;

inline constexpr std::array<std::string_view, 41> stateNames{
    "state",    "status",    "disease",   "diagnosis", "diag",     "dx",        "outcome",   "class",     "target",
    "label",    "truth",     "true",      "gold",      "standard", "reference", "event",     "ill",       "sick",
    "death",    "died",      "dead",      "mortality", "cancer",   "tumor",     "tumour",    "malignant", "malignancy",
    "positive", "result",    "infection", "infected",  "sepsis",   "response",  "responder", "relapse",   "recurrence",
    "diseased", "condition", "case",      "y",         "diagnose"};
inline constexpr std::array<std::string_view, 8> otherNames{"sex",       "gender",     "group",  "arm",
                                                            "treatment", "geschlecht", "gruppe", "center"};
inline constexpr std::array<std::string_view, 45> positiveWords{
    "1",      "yes",     "y",          "true",     "t",        "positive",  "pos",       "p",        "+",
    "ill",    "sick",    "disease",    "diseased", "case",     "cases",     "malignant", "cancer",   "tumor",
    "tumour", "dead",    "died",       "death",    "deceased", "event",     "abnormal",  "present",  "bad",
    "poor",   "relapse", "recurrence", "infected", "affected", "responder", "failure",   "m",        "carcinoma",
    "krank",  "ja",      "positiv",    "tot",      "sepsis",   "septic",    "detected",  "reactive", "high"};
inline constexpr std::array<std::string_view, 41> negativeWords{"0",
                                                                "no",
                                                                "n",
                                                                "false",
                                                                "f",
                                                                "negative",
                                                                "neg",
                                                                "-",
                                                                "well",
                                                                "healthy",
                                                                "benign",
                                                                "control",
                                                                "controls",
                                                                "normal",
                                                                "alive",
                                                                "survived",
                                                                "absent",
                                                                "good",
                                                                "none",
                                                                "censored",
                                                                "uninfected",
                                                                "unaffected",
                                                                "nonresponder",
                                                                "non-responder",
                                                                "success",
                                                                "b",
                                                                "gesund",
                                                                "nein",
                                                                "negativ",
                                                                "lebend",
                                                                "no event",
                                                                "non-case",
                                                                "not detected",
                                                                "undetected",
                                                                "nonreactive",
                                                                "low",
                                                                "no disease",
                                                                "disease-free",
                                                                "noncase",
                                                                "survivor",
                                                                "h"};
inline constexpr std::array<std::string_view, 12> sexes{"male", "female", "man",      "woman",    "men", "women",
                                                        "boy",  "girl",   "männlich", "weiblich", "w",   "mann"};

} // namespace vexroc::likelyNames
