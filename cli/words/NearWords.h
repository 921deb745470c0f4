#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexroc {

/// The candidates that differ from word by letter case or by a few of its letters, best first, at most three.
std::vector<std::string> nearWords(std::string_view word, std::span<const std::string> candidates);

/// "; did you mean 'auc'?" with the nearWords; empty when there are none.
std::string didYouMean(std::string_view word, std::span<const std::string> candidates);

} // namespace vexroc
