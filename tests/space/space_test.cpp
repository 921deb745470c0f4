#include "host/VexMV.h"
#include "space/ROCSpace.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

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

/// Runs compare their records with the definitions; here is what no record shows.
TEST(ROCSpace, ShowsItsObservationsByValueAndWhichPointsAreInterpolated)
{
    const Sample sample = sampleOf({1, 1, 0, 1, 0, 0}, {2, 2, 2, 5, 1, 5});
    const std::vector<ROCData> byValue{{false, 1.0}, {true, 2.0}, {true, 2.0}, {false, 2.0}, {true, 5.0}, {false, 5.0}};
    for (const bool larger : {true, false}) {
        ROCSpace space = spaceOf(sample, {true, larger});
        EXPECT_EQ(space.getROCData(), byValue);
        EXPECT_TRUE(space.existTies());
        EXPECT_TRUE(space.existTiesInPR());
        // Between the cut-offs 1.5 and 3.5 two positives and a negative move: one point along true positives.
        ROCBitSet interpolated;
        interpolated.set(2, true);
        EXPECT_EQ(space.getPRInterpolationFlag(), interpolated);
        EXPECT_EQ(space.getPrecisionRecall().size(), 5u);
        EXPECT_EQ(space.getCutOffPoints().size(), 4u);
        EXPECT_TRUE(spaceOf(sample, {true, larger}, true, true, false).existTiesInPR()); // although no point is drawn
    }
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
