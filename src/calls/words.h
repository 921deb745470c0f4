#pragma once

#include <span>
#include <string_view>

namespace ROCALG_920::calls {

/// Which of the words it is, whatever the case of its letters; null is the first. An empty one ends the list. Throws
/// with the name of the thing and the words that there are.
[[nodiscard]] int positionOf(const char* word, std::span<const std::string_view> words, std::string_view thing);

} // namespace ROCALG_920::calls
