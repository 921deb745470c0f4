#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <algorithm>
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

const char* otherDirection(const Words& words) { return words.larger == std::string("larger") ? "smaller" : "larger"; }

const char* otherSide(const Words& words) { return words.include == std::string("include") ? "exclude" : "include"; }

Sample withValues(Sample sample, double (*map)(double))
{
    std::ranges::transform(sample.values, sample.values.begin(), map);
    std::ranges::transform(sample.others, sample.others.begin(), map);
    return sample;
}

/// Each value's number among the distinct ones.
Sample ranked(Sample sample)
{
    for (std::vector<double>* column : {&sample.values, &sample.others}) {
        std::vector<double> sorted = *column;
        std::ranges::sort(sorted);
        sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
        for (double& value : *column)
            value = static_cast<double>(std::ranges::lower_bound(sorted, value) - sorted.begin());
    }
    return sample;
}

Numbers without(const Numbers& rows, std::size_t column, std::size_t width)
{
    Numbers rest;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (i % width != column)
            rest.push_back(rows[i]);
    return rest;
}

TEST(Laws, OrderOfTheCasesDoesNotMatter)
{
    forSamples([](const Sample& sample, const Words& words, unsigned seed) {
        ASSERT_EQ(everything(shuffled(sample, seed), words), everything(sample, words));
    });
    const Sample large = drawSample(shapes()[4], 14, 30'000);
    EXPECT_EQ(everything(shuffled(large, 1), {}), everything(large, {}));
}

TEST(Laws, OnlyTheOrderOfTheValuesMatters)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        const Sample ranks = ranked(sample);
        Words turned = words; // the include word does not touch areas
        turned.include = otherSide(words);
        EXPECT_EQ(numbers(areaOf(ranks.states, ranks.values, turned)),
                  numbers(areaOf(sample.states, sample.values, words)));
        EXPECT_EQ(numbers(pairedOf(ranks, turned)), numbers(pairedOf(sample, words)));
        // Ranks have exact midpoints, and so has a stretched copy: the curves differ in their cut-offs only.
        const Sample stretched = withValues(ranks, [](double v) { return v * v * 8.0 - 1e6; });
        EXPECT_EQ(without(curve(ranks.states, ranks.values, words), 0, 3),
                  without(curve(stretched.states, stretched.values, words), 0, 3));
        EXPECT_EQ(without(precisionRecall(ranks.states, ranks.values, words), 0, 4),
                  without(precisionRecall(stretched.states, stretched.values, words), 0, 4));
    });
}

TEST(Laws, SwappedStatesAndDirectionMirrorTheCurveAndKeepTheArea)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        Sample swapped = sample;
        for (double& state : swapped.states)
            state = 1.0 - state;
        Words turned = words;
        turned.larger = otherDirection(words);
        turned.include = otherSide(words);
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

TEST(Laws, TheOtherDirectionAndTheOtherStateTurnAreasAround)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        Sample swapped = sample;
        for (double& state : swapped.states)
            state = 1.0 - state;
        Words turned = words;
        turned.larger = otherDirection(words);
        const auc_comparison_res direct = pairedOf(sample, words);
        for (const auc_comparison_res& other : {pairedOf(sample, turned), pairedOf(swapped, words)}) {
            EXPECT_NEAR(other.first.area, 1.0 - direct.first.area, 2.3e-16);
            EXPECT_NEAR(other.areaDiff, -direct.areaDiff, 4.5e-16);
        }
        EXPECT_EQ(Exact{pairedOf(sample, turned).stdErrorDiff}, Exact{direct.stdErrorDiff});
    });
}

TEST(Laws, CopyingEveryCaseKeepsCurvesAndAreas)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        Sample doubled = sample;
        for (std::size_t i = 0; i < sample.states.size(); ++i)
            doubled.add(sample.states[i], sample.values[i], sample.others[i]);
        EXPECT_EQ(curve(doubled.states, doubled.values, words), curve(sample.states, sample.values, words));
        EXPECT_EQ(areaOf(doubled.states, doubled.values, words).area, areaOf(sample.states, sample.values, words).area);
        EXPECT_EQ(pairedOf(doubled, words).areaDiff, pairedOf(sample, words).areaDiff);
    });
}

void expectMirrored(const auc_comparison_res& a, const auc_comparison_res& b)
{
    const auto minus = [](double value) { return value == 0 ? 0.0 : -value; };
    EXPECT_EQ(numbers(b.first), numbers(a.second));
    EXPECT_EQ(numbers(b.second), numbers(a.first));
    EXPECT_EQ((Numbers{{b.z}, {b.zSig}, {b.areaDiff}, {b.stdErrorDiff}, {minus(b.ciLower)}, {minus(b.ciUpper)}}),
              (Numbers{{minus(a.z)},
                       {a.zSig},
                       {minus(a.areaDiff)},
                       {a.stdErrorDiff},
                       {minus(minus(a.ciUpper))},
                       {minus(minus(a.ciLower))}}));
}

TEST(Laws, SwappingTwoAreasFlipsTheSigns)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        const auc_comparison_res paired = pairedOf(sample, words);
        expectMirrored(paired, pairedOf({sample.states, sample.others, sample.values}, words));
        expectMirrored(auc_comparison(paired.first, paired.second, 0.9),
                       auc_comparison(paired.second, paired.first, 0.9));
    });
}

TEST(Laws, AVariableDoesNotDifferFromItself)
{
    forSamples([](const Sample& sample, const Words& words, unsigned) {
        const auc_comparison_res res = pairedOf({sample.states, sample.values, sample.values}, words);
        if (res.first.posCount < 2 || res.first.negCount < 2)
            return; // not a number
        EXPECT_EQ((Numbers{{res.z}, {res.zSig}, {res.areaDiff}, {res.stdErrorDiff}, {res.ciLower}, {res.ciUpper}}),
                  (Numbers{{0}, {1}, {0}, {0}, {0}, {0}}));
    });
}

TEST(Laws, CasesWithoutAValueMightAsWellNotBeThere)
{
    forSamples([](const Sample& sample, const Words& words, unsigned seed) {
        Random random(seed);
        const double nan = std::nan("");
        Sample gaps;
        Sample complete;
        for (std::size_t i = 0; i < sample.states.size(); ++i) {
            const bool gap = random() % 3 == 0;
            gaps.add(sample.states[i], gap ? nan : sample.values[i], sample.others[i]);
            if (!gap)
                complete.add(sample.states[i], sample.values[i], sample.others[i]);
        }
        EXPECT_EQ(curve(gaps.states, gaps.values, words), curve(complete.states, complete.values, words));
        EXPECT_EQ(precisionRecall(gaps.states, gaps.values, words),
                  precisionRecall(complete.states, complete.values, words));
        EXPECT_EQ(numbers(areaOf(gaps.states, gaps.values, words)),
                  numbers(areaOf(complete.states, complete.values, words)));
        EXPECT_EQ(numbers(pairedOf(gaps, words)), numbers(pairedOf(complete, words)));
        std::swap(gaps.values, gaps.others);
        std::swap(complete.values, complete.others);
        EXPECT_EQ(numbers(pairedOf(gaps, words)), numbers(pairedOf(complete, words)));
    });
}

} // namespace
