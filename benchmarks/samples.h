#pragma once

#include <cstddef>
#include <vector>

/// Made-up samples for the benchmarks: 10 % positive cases whose scores lie higher, the same for every run.
namespace samples {

enum class Shape {
    Continuous, ///< normal scores, nearly all distinct
    Tied,       ///< 100 distinct values
    Ascending,  ///< continuous scores, already in ascending order
};

struct Sample {
    std::vector<double> actual;
    std::vector<double> first;
    std::vector<double> second; ///< correlated with the first
};

[[nodiscard]] Sample make(Shape shape, std::size_t cases);

} // namespace samples
