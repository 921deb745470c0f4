#pragma once

#include "tests/support/Sample.h"
#include "tests/support/calls.h"

#include <string>

/// The array calls against the definitions counted the slow way. Each function says what differs first, and nothing
/// when all agrees. States, values, words and levels may be whatever a caller can give.
namespace roctest {

/// Both curves of the first variable, to the last bit.
[[nodiscard]] std::string curveDisagreement(const Sample& sample, const Words& words);
/// The area of the first variable.
[[nodiscard]] std::string areaDisagreement(const Sample& sample, const Words& words, double level);
/// The two variables compared on the same cases, and as if they were independent samples.
[[nodiscard]] std::string comparisonDisagreement(const Sample& sample, const Words& words, double level);

} // namespace roctest
