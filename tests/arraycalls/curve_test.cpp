#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace roctest;
using List = std::vector<double>;

TEST(RocCurve, HasTheRowsOfTheWorkedExamples)
{
    const List actual{1, 0, 1, 0, 1};
    const List predicted{0.9, 0.3, 0.6, 0.6, 0.2}; // 0.6 occurs with both states
    const double c = (0.3 + 0.6) * 0.5;
    const Numbers larger{{0},      {1},    {1}, {0.25},   {1}, {2. / 3}, {c}, {0.5},
                         {2. / 3}, {0.75}, {0}, {1. / 3}, {1}, {0},      {0}};
    const Numbers smaller{{0},      {0},    {0}, {0.25},   {0}, {1. / 3}, {c}, {0.5},
                          {1. / 3}, {0.75}, {1}, {2. / 3}, {1}, {1},      {1}};
    EXPECT_EQ(curve(actual, predicted), larger);
    EXPECT_EQ(curve(actual, predicted, {.larger = "LaRGer"}), larger);
    EXPECT_EQ(curve(actual, predicted, {.larger = " smaller"}), larger);
    EXPECT_EQ(curve(actual, predicted, {.larger = "SMALLER"}), smaller);
    EXPECT_EQ(curve(List{1, 1, 0}, List{0.5, 0.1, 0.3}),
              (Numbers{{0}, {1}, {1}, {0.2}, {1}, {0.5}, {0.4}, {0}, {0.5}, {1}, {0}, {0}}));
}

TEST(Curves, ReleaseWhatHasNoRows)
{
    release_roccurve_res({nullptr, 5});
    release_prcurve_res({nullptr, 5});
}

TEST(PrecisionRecallCurve, HasTheRowsOfTheWorkedExamples)
{
    const List actual{1, 1, 1, 0, 0, 1, 0};
    const List predicted{5, 5, 5, 5, 2, 1, 0};
    const auto rows = [](const std::vector<std::array<double, 4>>& list) {
        Numbers flat;
        for (const auto& row : list)
            for (const double number : row)
                flat.push_back({number});
        return flat;
    };
    EXPECT_EQ(precisionRecall(actual, predicted),
              rows({{-1, 1, 4. / 7, 0},
                    {0.5, 1, 4. / 6, 0},
                    {1.5, 0.75, 0.6, 0},
                    {3.5, 0.75, 0.75, 0},
                    {6, 0.5, 2 / (2 * (1. / 3) + (0. + 2)), 1},
                    {6, 0.25, 1 / (1 * (1. / 3) + (0. + 1)), 1},
                    {6, 0, 0.75, 0}}));
    EXPECT_EQ(precisionRecall(actual, predicted, {.larger = "smaller"}),
              rows({{-1, 0, 0, 0},
                    {0.5, 0, 0, 0},
                    {1.5, 0.25, 0.5, 0},
                    {3.5, 0.25, 1. / 3, 0},
                    {6, 0.5, 2 / (1 * (1. / 3) + (2. + 2)), 1},
                    {6, 0.75, 3 / (2 * (1. / 3) + (2. + 3)), 1},
                    {6, 1, 4. / 7, 0}}));
    // Along false positives the same step, 1 false positive wide, makes no point.
    EXPECT_EQ(precisionRecall(actual, predicted, {.interpolation = "Keilwagen"}).size(), 4u * 5);
    // From (TP 0, FP 0) to (TP 4, FP 3): points at FP 2 and 1, counting down to the empty end.
    EXPECT_EQ(precisionRecall(List{1, 1, 1, 1, 0, 0, 0}, List(7, 2.0), {.interpolation = "keilwagen"}),
              rows({{1, 1, 4. / 7, 0},
                    {3, 2 * (4. / 3) / 4, 2 * (4. / 3) / (2 * (4. / 3) + 2), 1},
                    {3, 4. / 3 / 4, 4. / 3 / (4. / 3 + 1), 1},
                    {3, 0, 4. / 7, 0}}));
}

} // namespace
