#pragma once

#include <string>

/// The option words and the state rule of the array calls, as C++ functions.
///
/// Words are compared whole; case is ignored in the classic locale, whatever locale the process has set. A null
/// pointer or an unknown word means the first word of its pair.

/// Is this the state of a positive case? Exact equality with *positiveValue, or with 1.0 when it is null; NaN never is.
[[nodiscard, gnu::visibility("default")]] bool yTrue(double state, const double* positiveValue);

/// The text with the letters A to Z in lower case; every other byte as it is.
[[nodiscard, gnu::visibility("default")]] std::string lower(std::string s);

/// Equal texts but for the case of the letters A to Z?
[[nodiscard, gnu::visibility("default")]] bool compareIgnoreCase(std::string a, std::string b);

/// "larger" (true) or "smaller": which test values indicate the positive state.
[[nodiscard, gnu::visibility("default")]] bool isLarger(const char* word);

/// "include" (true) or "exclude": is a test value equal to the cut-off on the positive side?
[[nodiscard, gnu::visibility("default")]] bool isInclude(const char* word);

/// "davis-goadrich" (true) or "keilwagen": precision-recall interpolation along true or along false positives.
[[nodiscard, gnu::visibility("default")]] bool isTP(const char* word);

/// "nonparam" (true) or "bi-negative": distribution assumption behind the standard error of an area.
[[nodiscard, gnu::visibility("default")]] bool isNonParamDist(const char* word);
