#include "inference/BestCutOffs.h"
#include "results/RunRecord.h"
#include "summary/SortedValues.h"
#include "tests/results/FixedStats.h"
#include "tests/support/oracle.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ROCALG_920;
using namespace roctest;

using Points = std::vector<std::tuple<Exact, double, double, double, double>>; // cut-off, TP, FP, TN, FN

Points pointsOf(const std::vector<OperatingPoint>& points)
{
    Points list;
    for (const auto& [cutOff, counts] : points)
        list.emplace_back(Exact{cutOff}, counts.truePositives, counts.falsePositives, counts.trueNegatives,
                          counts.falseNegatives);
    return list;
}

/// Every cut-off whose index ties with the maximum, counted case by case.
Points bestOf(const CurveTruth& truth)
{
    const double maximum = kolmogorovSmirnov(truth, true).first;
    Points best;
    for (std::size_t i = 0; i < truth.cutOffs.size(); ++i) {
        const double tp = truth.truePositives[i];
        const double tn = truth.nNeg - truth.falsePositives[i];
        if (std::abs(tp / truth.nPos - (1.0 - tn / truth.nNeg) - maximum) <= 1e-14)
            best.emplace_back(Exact{truth.cutOffs[i]}, tp, truth.falsePositives[i], tn, truth.nPos - tp);
    }
    return best;
}

TEST(BestCutOffs, AreAllThatTieWithTheMaximumFromAWalkAndFromARecord)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 40; ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            const Sample sample = drawSample(shape, seed, sizeFor(seed));
            const Options options{(seed & 1) != 0, (seed & 2) != 0};
            const CurveTruth truth = curveTruth(sample, options);
            const Points expected = bestOf(truth);

            const BorrowedColumns columns{sample.values.data(), sample.states.data(), 1.0, sample.values.size()};
            const valuesort::SortedValues sorted(columns);
            const auto [lowest, highest] = sorted.range(columns);
            const CurveTotals totals{lowest, highest, {truth.nPos, truth.nNeg}};
            sorted.withWalk(columns, [&](const auto& walk) {
                EXPECT_EQ(pointsOf(bestCutOffs(walk, totals, {options.include, options.larger})), expected);
            });

            ROCSpace space(options.include, options.larger, true, true, true);
            for (std::size_t i = 0; i < sample.states.size(); ++i)
                space.update(sample.positive(i), sample.values[i], 1);
            results_test::FixedStats stats(space);
            const RunRecord record(0, stats, false);
            EXPECT_EQ(pointsOf(record.bestCutOffs()), expected);

            const Numbers pr = prRows(truth, options.larger, true);
            for (std::size_t i = 0; 4 * i < pr.size(); ++i)
                ASSERT_EQ(record.isInterpolated(i), pr[4 * i + 3].value == 1.0) << i;
        }
}

} // namespace
