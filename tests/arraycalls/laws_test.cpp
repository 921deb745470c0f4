#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace roctest;

const Words wordings[] = {{},
                          {.include = "exclude", .interpolation = "keilwagen", .distribution = "bi-negative"},
                          {.larger = "smaller"},
                          {"exclude", "smaller", "keilwagen", "bi-negative"}};

/// Calls check(sample, words, seed) over every shape, up to the first sample that breaks the law.
template <class Check>
void forSamples(Check&& check)
{
    const unsigned perShape = samplesPerShape(200);
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= perShape && !testing::Test::HasFailure(); ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            check(drawSample(shape, seed, sizeFor(seed)), wordings[seed % 4], seed);
        }
}

TEST(Laws, OrderOfTheCasesDoesNotMatter)
{
    forSamples([](const Sample& sample, const Words& words, unsigned seed) {
        ASSERT_EQ(everything(shuffled(sample, seed), words), everything(sample, words));
    });
    const Sample large = drawSample(shapes()[4], 14, 30'000);
    EXPECT_EQ(everything(shuffled(large, 1), {}), everything(large, {}));
}

TEST(Laws, SwappedStatesAndDirectionMirrorTheCurveAndKeepTheArea)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        Sample swapped = sample;
        for (double& state : swapped.states)
            state = 1.0 - state;
        Words turned = words;
        turned.larger = words.larger == std::string("larger") ? "smaller" : "larger";
        turned.include = words.include == std::string("include") ? "exclude" : "include";
        const Numbers rows = curve(sample.states, sample.values, words);
        const Numbers mirror = curve(swapped.states, swapped.values, turned);
        ASSERT_EQ(rows.size(), mirror.size());
        for (std::size_t i = 0; i < rows.size(); i += 3) {
            EXPECT_EQ(mirror[i], rows[i]);
            EXPECT_EQ(mirror[i + 1].value, 1.0 - rows[i + 2].value);
            EXPECT_EQ(1.0 - mirror[i + 2].value, rows[i + 1].value);
        }
        const auc_res a = areaOf(sample.states, sample.values, words);
        const auc_res b = areaOf(swapped.states, swapped.values, turned);
        EXPECT_EQ(b.area, a.area);
        EXPECT_LE(ulpsApart(b.stdError, a.stdError), 2);
        EXPECT_EQ(pairedOf(swapped, turned).areaDiff, pairedOf(sample, words).areaDiff);
    });
}

} // namespace
