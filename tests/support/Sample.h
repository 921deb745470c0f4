#pragma once

#include <cstddef>
#include <ostream>
#include <random>
#include <span>
#include <string_view>
#include <vector>

/// Samples that are hard on a curve: ties, neighbours, extremes, every order, every balance of the states.
namespace roctest {

using Random = std::mt19937_64;

/// Cases of one or two test variables; state 1 is positive.
struct Sample {
    std::vector<double> states;
    std::vector<double> values;
    std::vector<double> others; ///< second test variable of the same cases

    [[nodiscard]] int size() const { return static_cast<int>(states.size()); }
    [[nodiscard]] bool positive(std::size_t i) const { return states[i] == 1.0; }
    void add(double state, double value, double other)
    {
        states.push_back(state);
        values.push_back(value);
        others.push_back(other);
    }
    friend void PrintTo(const Sample& sample, std::ostream* out) { *out << sample.size() << " cases"; }
};

/// A way to draw test values; `position` is the case's share of the way through the sample, in [0, 1).
struct Shape {
    std::string_view name;
    double (*draw)(Random& random, double position);
};
[[nodiscard]] std::span<const Shape> shapes();

/// Both states occur. The seed decides the share and the arrangement of the states and the shape of the second
/// variable; the two variables share some of their values.
[[nodiscard]] Sample drawSample(const Shape& shape, unsigned seed, std::size_t size);

/// The same cases in another order.
[[nodiscard]] Sample shuffled(const Sample& sample, unsigned seed);

/// How many samples of each shape a test of random data takes: `usual`, or as many as make VEXROC_RANDOM_CASES samples
/// in all, when the environment sets it.
[[nodiscard]] unsigned samplesPerShape(unsigned usual);

/// A short size for most seeds, some hundreds for one in sixteen.
[[nodiscard]] std::size_t sizeFor(unsigned seed);

} // namespace roctest
