#include "tests/support/agreement.h"
#include "tests/support/oracle.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using namespace roctest;

constexpr double tiny = std::numeric_limits<double>::denorm_min();
constexpr double positiveStates[] = {2.0, tiny, -1e300};

const Words wordings[] = {
    {},
    {"exclude", "smaller", "keilwagen", "bi-negative"},
    {"EXCLUDE", "larger", "Keilwagen", "nonparam", &positiveStates[0]},
    {"include", "sMALLER", "davis-goadrich", "BI-negative", &positiveStates[1]},
    {nullptr, "small", "", " keilwagen", &positiveStates[2]},
    {"exclude", "larger", "davis-goadrich", "bi-negative"},
    {"include", "smaller", "keilwagen", "nonparam"},
};
constexpr double levels[] = {0.95, 0.5, 0.999, 1e-9, 1.0};

/// What samples alone do not have: other states than 0 and 1, and now and then values that are NaN.
Sample disguised(Sample sample, const Words& words, unsigned seed)
{
    Random random(seed);
    for (std::size_t i = 0; i < sample.states.size(); ++i) {
        if (words.positiveValue != nullptr)
            sample.states[i] = sample.positive(i) ? *words.positiveValue : *words.positiveValue / 2;
        if (seed % 5 == 0 && random() % 4 == 0)
            (random() % 2 == 0 ? sample.values : sample.others)[i] = std::nan("");
    }
    return sample;
}

TEST(RandomData, AgreesWithTheDefinitionsCountedCaseByCase)
{
    const unsigned perShape = samplesPerShape(1500);
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= perShape; ++seed) {
            const Words& words = wordings[seed % std::size(wordings)];
            const std::size_t size = seed % 1000 == 0 ? 10'000 : sizeFor(seed);
            const Sample sample = disguised(drawSample(shape, seed, size), words, seed);
            const double level = levels[seed % std::size(levels)];
            const std::string findings[] = {curveDisagreement(sample, words), areaDisagreement(sample, words, level),
                                            comparisonDisagreement(sample, words, level)};
            for (const std::string& finding : findings)
                ASSERT_EQ(finding, "") << shape.name << ", seed " << seed;
        }
}

/// Pair by pair, which anchors the counting above.
TEST(RandomData, AreaIsTheShareOfOrderedPairsWithTiesCountingHalf)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const Sample s = drawSample(shapes()[seed % shapes().size()], seed, 3 + seed % 60);
        double ordered = 0.0;
        double pairs = 0.0;
        for (std::size_t i = 0; i < s.states.size(); ++i)
            for (std::size_t j = 0; j < s.states.size(); ++j)
                if (s.positive(i) && !s.positive(j)) {
                    pairs += 1.0;
                    ordered += s.values[i] > s.values[j] ? 1.0 : s.values[i] == s.values[j] ? 0.5 : 0.0;
                }
        EXPECT_EQ(areaOf(s.states, s.values).area, ordered / pairs) << "seed " << seed;
    }
}

} // namespace
