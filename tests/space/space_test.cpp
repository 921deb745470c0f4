#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "tests/support/Exact.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace roctest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

ROCSpace spaceOf(const Sample& sample, Options options, bool needPR = true, bool needROC = true, bool alongTP = true)
{
    ROCSpace space(options.include, options.larger, needPR, needROC, alongTP);
    for (std::size_t i = 0; i < sample.states.size(); ++i)
        EXPECT_TRUE(space.update(sample.positive(i), sample.values[i], 1));
    return space;
}

Sample sampleOf(const std::vector<double>& states, const std::vector<double>& values)
{
    return {states, values, values};
}

TEST(ROCSpace, IsTheCurveCountedCutOffByCutOff)
{
    int checked = 0;
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 160; ++seed, ++checked) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            const Sample sample = drawSample(shape, seed, sizeFor(seed));
            const Options options{(seed & 1) != 0, (seed & 2) != 0};
            const bool alongTP = (seed & 4) != 0;
            const CurveTruth truth = curveTruth(sample, options);
            ROCSpace space = spaceOf(sample, options, true, true, alongTP);

            std::vector<ROCData> byValue;
            for (std::size_t i = 0; i < sample.states.size(); ++i)
                byValue.push_back({sample.positive(i), sample.values[i]});
            std::ranges::sort(byValue, [](const ROCData& a, const ROCData& b) {
                return a.value != b.value ? a.value < b.value : a.positive > b.positive;
            });
            EXPECT_EQ(space.getROCData(), byValue);
            EXPECT_EQ(space.existTies(), truth.ties);
            EXPECT_EQ(space.getKolmogorovSmirnov(), kolmogorovSmirnov(truth, options.larger));
            Numbers rows;
            for (std::size_t i = 0; i < space.getCutOffPoints().size(); ++i) {
                const auto [sensitivity, specificity] = space.getSensitivitySpecificity()[i];
                rows.insert(rows.end(), {{space.getCutOffPoints()[i]}, {1.0 - specificity}, {sensitivity}});
            }
            EXPECT_EQ(rows, rocRows(truth));

            const Numbers pr = prRows(truth, options.larger, alongTP);
            const ROCBitSet interpolated = space.getPRInterpolationFlag();
            ASSERT_EQ(4 * space.getPrecisionRecall().size(), pr.size());
            bool anyInterpolated = false;
            for (std::size_t i = 0; i < space.getPrecisionRecall().size(); ++i) {
                anyInterpolated = anyInterpolated || pr[4 * i + 3].value == 1.0;
                EXPECT_EQ(Exact{space.getPrecisionRecall()[i].second}, pr[4 * i + 1]);
                EXPECT_EQ(Exact{space.getPrecisionRecall()[i].first}, pr[4 * i + 2]);
                EXPECT_EQ(interpolated.get(static_cast<int>(i)), pr[4 * i + 3].value == 1.0);
            }
            EXPECT_TRUE(!alongTP || space.existTiesInPR() == anyInterpolated);
        }
    RecordProperty("samples", checked);
}

TEST(ROCSpace, StaysOpenUntilThreeObservationsAreThere)
{
    ROCSpace space(true, true, true, true, true);
    EXPECT_TRUE(space.update(true, 3.0, 1));
    EXPECT_TRUE(space.update(false, 1.0, 1));
    EXPECT_THAT(space.getCutOffPoints(), IsEmpty());
    const std::vector<ROCData>& data = space.getROCData();
    EXPECT_THAT(data, ElementsAre(ROCData{true, 3.0}, ROCData{false, 1.0}));
    EXPECT_THAT(space.getKolmogorovSmirnov(), Pair(-1.0, 0.0));
    EXPECT_TRUE(space.update(false, 2.0, 1));
    EXPECT_THAT(data, ElementsAre(ROCData{true, 3.0}, ROCData{false, 1.0}, ROCData{false, 2.0}));
    EXPECT_THAT(space.getCutOffPoints(), ElementsAre(0, 1.5, 2.5, 4));
    EXPECT_THAT(space.getROCData(), ElementsAre(ROCData{false, 1.0}, ROCData{false, 2.0}, ROCData{true, 3.0}));
    EXPECT_FALSE(space.update(true, 9.0, 1));
    EXPECT_EQ(space.getPositiveCount(), 1);
    EXPECT_EQ(space.getPosFreqCount(), 1.0);
}

TEST(ROCSpace, TurnsAwayWeightsBelowOneAndNaN)
{
    ROCSpace space(true, true, false, true, true);
    EXPECT_TRUE(space.update(true, 0.7, 5));
    for (const auto& [value, weight] :
         {std::pair{0.7, 0}, {0.7, -3}, {std::nan(""), 1}, {VexCommon_920::VexMV::Missing(), 1}})
        EXPECT_FALSE(space.update(true, value, weight));
    EXPECT_TRUE(space.update(false, 0.5, 2'000'000'000));
    EXPECT_TRUE(space.update(false, 0.5, 2'000'000'000));
    EXPECT_EQ(space.getPositiveCount(), 1);
    EXPECT_EQ(space.getPosFreqCount(), 5.0);
    EXPECT_EQ(space.getNegtiveCount(), 2);
    EXPECT_EQ(space.getNegFreqCount(), 4e9);
    EXPECT_THAT(space.getSensitivitySpecificity(), ElementsAre(Pair(1, 0), Pair(1, 1), Pair(0, 1))); // unweighted
}

TEST(ROCSpace, MakesOnlyWhatIsAskedFor)
{
    const Sample sample = sampleOf({1, 0, 1, 1}, {3, 2, 3, 1});
    ROCSpace accumulated = spaceOf(sample, {true, true}, false, false);
    EXPECT_THAT(accumulated.getROCData(),
                ElementsAre(ROCData{true, 3.0}, ROCData{false, 2.0}, ROCData{true, 3.0}, ROCData{true, 1.0}));
    EXPECT_THAT(accumulated.getCutOffPoints(), IsEmpty());
    EXPECT_FALSE(spaceOf(sampleOf({1, 0, 1}, {2, 2, 1}), {true, true}, false, false).existTies()); // no summary
    ROCSpace prOnly = spaceOf(sample, {true, true}, true, false);
    EXPECT_THAT(prOnly.getSensitivitySpecificity(), IsEmpty());
    EXPECT_THAT(prOnly.getKolmogorovSmirnov(), Pair(-1.0, 0.0));
    EXPECT_EQ(prOnly.getCutOffPoints().size(), 4u);
    ROCSpace rocOnly = spaceOf(sample, {true, true}, false, true);
    EXPECT_THAT(rocOnly.getPrecisionRecall(), IsEmpty());
    EXPECT_FALSE(rocOnly.existTiesInPR());
    EXPECT_EQ(rocOnly.getPRInterpolationFlag(), ROCBitSet());
    EXPECT_THAT(std::pair(rocOnly.getTestVar(), rocOnly.getGroupVar()), Pair(-1, -1)); // none was set
    ROCSpace oneState = spaceOf(sampleOf({1, 1, 1}, {2, 1, 2}), {true, true});
    EXPECT_THAT(oneState.getCutOffPoints(), IsEmpty());
    EXPECT_FALSE(oneState.existTies());
    EXPECT_THAT(oneState.getROCData(), ElementsAre(ROCData{true, 2.0}, ROCData{true, 1.0}, ROCData{true, 2.0}));
    EXPECT_FALSE(oneState.update(false, 1.0, 1)); // finished all the same
}

TEST(ROCSpace, CopiesAreIndependent)
{
    ROCSpace open(true, true, true, true, true);
    for (const double value : {2.0, 1.0}) // out of order, so that copies hold a sorted list
        open.update(value > 1.5, value, 1);
    open.setTestVarInd(7);
    open.setGroup(3, ROCConst_920::Less, 2.5);
    ROCSpace copy = open;
    EXPECT_TRUE(copy.update(true, 3.0, 1));
    EXPECT_EQ(copy.getCutOffPoints().size(), 4u);
    ROCSpace finished(false, false, false, false, false);
    finished = copy;
    EXPECT_FALSE(finished.update(true, 4.0, 1));
    EXPECT_EQ(finished.getCutOffPoints(), copy.getCutOffPoints());
    EXPECT_EQ(finished.getPrecisionRecall(), copy.getPrecisionRecall());
    EXPECT_TRUE(open.update(true, 4.0, 1)); // still open
    EXPECT_THAT(
        std::tuple(finished.getTestVar(), finished.getGroupVar(), finished.getGroupOp(), finished.getGroupValue()),
        testing::FieldsAre(7, 3, ROCConst_920::Less, 2.5));
}

} // namespace
