#include "tests/support/Sample.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <string>

namespace roctest {
namespace {

using Limits = std::numeric_limits<double>;

double uniform(Random& random) { return static_cast<double>(random() >> 11) * 0x1p-53; }

int below(Random& random, unsigned limit) { return static_cast<int>(random() % limit); }

double sign(Random& random) { return below(random, 2) == 0 ? -1.0 : 1.0; }

/// A magnitude from 2^lowest to below 2^highest, made of integers alone: the same on every processor.
double magnitude(Random& random, int lowest, int highest)
{
    const int exponent = lowest + below(random, static_cast<unsigned>(highest - lowest));
    return std::ldexp(1.0 + uniform(random), exponent);
}

double ofEitherSign(Random& random, double magnitude) { return sign(random) * magnitude; }

constexpr std::array infinities{-Limits::infinity(), Limits::infinity(), -1.0, 0.5, Limits::max(), 1e-300};

constexpr std::array<Shape, 19> allShapes{{
    {"five ratings", [](Random& r, double) { return 1.0 + below(r, 5); }},
    {"half steps around 0", [](Random& r, double) { return 0.5 * (below(r, 41) - 20); }},
    {"probabilities", [](Random& r, double) { return std::nextafter(uniform(r), 0.5); }},
    {"rounded probabilities with 0 and 1", [](Random& r, double) { return below(r, 21) / 20.0; }},
    {"both signs", [](Random& r, double) { return ofEitherSign(r, magnitude(r, -40, 6)); }},
    {"all negative", [](Random& r, double) { return -1.0 - uniform(r); }},
    {"neighbouring doubles",
     [](Random& r, double) { return std::bit_cast<double>(std::bit_cast<std::uint64_t>(0.75) + r() % 9); }},
    {"neighbours below and above 1",
     [](Random& r, double) { return std::bit_cast<double>(std::bit_cast<std::uint64_t>(1.0) - 4 + r() % 9); }},
    {"denormals and signed zeros",
     [](Random& r, double) { return ofEitherSign(r, below(r, 6) * Limits::denorm_min()); }},
    {"around 1e300", [](Random& r, double) { return ofEitherSign(r, (1.0 + below(r, 30)) * 1e300); }},
    {"midpoints overflow", [](Random& r, double) { return ofEitherSign(r, Limits::max() - below(r, 7) * 0x1p971); }},
    {"infinities", [](Random& r, double) { return infinities[r() % infinities.size()]; }},
    {"all magnitudes", [](Random& r, double) { return ofEitherSign(r, magnitude(r, -1010, 1010)); }},
    {"mostly zero", [](Random& r, double) { return below(r, 10) != 0 ? 0.0 : magnitude(r, 0, 4); }},
    {"narrow band and an outlier", [](Random& r, double p) { return p == 0.0 ? 1e300 : 1.0 + 1e-9 * uniform(r); }},
    {"two bands",
     [](Random& r, double) {
         const double band = below(r, 2) * 1e6;
         return band + 1e-6 * uniform(r);
     }},
    {"ascending", [](Random&, double p) { return std::floor(p * 5000.0) / 8.0 - 100.0; }},
    {"descending", [](Random&, double p) { return 1.0 / (1.0 + std::floor(p * 7000.0)); }},
    {"at most 0", [](Random& r, double) { return -0.5 * below(r, 8); }},
}};

double drawState(Random& random, unsigned arrangement, double position)
{
    switch (arrangement) {
    case 0: return uniform(random) < 0.05;
    case 1: return uniform(random) < 0.9;
    case 2: return position >= 0.5;
    case 3: return 0.0; // one positive: the first case
    case 4: return 1.0; // one negative: the last case
    default: return below(random, 2);
    }
}

} // namespace

std::span<const Shape> shapes() { return allShapes; }

Sample drawSample(const Shape& shape, unsigned seed, std::size_t size)
{
    Random random(seed);
    const Shape& otherShape = allShapes[seed % allShapes.size()];
    Sample sample;
    for (std::size_t i = 0; i < size; ++i) {
        const double position = static_cast<double>(i) / static_cast<double>(size);
        const double value = shape.draw(random, position);
        const double other = below(random, 3) == 0 ? value : otherShape.draw(random, position);
        sample.add(drawState(random, seed % 9, position), value, other);
    }
    sample.states.front() = 1.0;
    sample.states.back() = 0.0;
    return sample;
}

Sample shuffled(const Sample& sample, unsigned seed)
{
    std::vector<std::size_t> order(sample.states.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::shuffle(order.begin(), order.end(), Random(seed));
    Sample result;
    for (const std::size_t i : order)
        result.add(sample.states[i], sample.values[i], sample.others[i]);
    return result;
}

unsigned samplesPerShape(unsigned usual)
{
    const char* const wanted = std::getenv("VEXROC_RANDOM_CASES");
    return wanted != nullptr ? static_cast<unsigned>(std::stoul(wanted) / allShapes.size() + 1) : usual;
}

std::size_t sizeFor(unsigned seed) { return seed % 16 == 0 ? 200 + 11 * (seed % 37) : 3 + seed * 7 % 38; }

} // namespace roctest
