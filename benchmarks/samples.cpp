#include "samples.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace samples {

namespace {

/// One of 100 values for a score that lies mostly in (-4, 5).
double binned(double score) { return std::clamp(std::floor((score + 4.0) / 9.0 * 100.0), 0.0, 99.0); }

void sortByFirst(Sample& sample)
{
    std::vector<std::size_t> order(sample.first.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t i) { return sample.first[i]; });
    for (std::vector<double>* column : {&sample.actual, &sample.second, &sample.first}) {
        const std::vector<double> unordered = *column;
        std::ranges::transform(order, column->begin(), [&](std::size_t i) { return unordered[i]; });
    }
}

} // namespace

Sample make(Shape shape, std::size_t cases)
{
    std::mt19937_64 random(20240131);
    std::normal_distribution<double> normal;
    Sample sample;
    for (std::size_t i = 0; i < cases; ++i) {
        const bool positive = random() % 10 == 0;
        const double signal = normal(random) + (positive ? 1.0 : 0.0);
        sample.actual.push_back(positive ? 1.0 : 0.0);
        sample.first.push_back(signal + 0.5 * normal(random));
        sample.second.push_back(signal + 0.5 * normal(random));
    }
    if (shape == Shape::Tied)
        for (std::vector<double>* column : {&sample.first, &sample.second})
            std::ranges::transform(*column, column->begin(), binned);
    if (shape == Shape::Ascending)
        sortByFirst(sample);
    return sample;
}

} // namespace samples
