#pragma once

#include <string>
#include <string_view>

namespace vexroc {

/// The encoding, as iconv calls it, that a word with bytes that are not UTF-8 is probably in: a guess, for advice.
std::string likelyEncoding(std::string_view word);

} // namespace vexroc
