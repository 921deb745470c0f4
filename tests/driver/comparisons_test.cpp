#include "tests/driver/analyses.h"
#include "tests/driver/facade_agreement.h"
#include "tests/support/Sample.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

/// The facade against the array calls: the same columns give the same numbers, to the last bit.
namespace {

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;

enum { value = 1, other, side, frequency };

/// One of four settings, in which every choice has its turn.
ROCSetting settingWith(unsigned option)
{
    ROCSetting setting = areasOf({value});
    setting.setNeedPR(true);
    setting.setClassification(option % 4 == 1 || option % 4 == 2 ? Exclude : Include);
    setting.setDirection(option % 2 == 1 ? SmallerMorePositive : LargerMorePositive);
    setting.setPRInterpolationType(option % 2 == 1 ? AlongFP : AlongTP);
    setting.setDistribution(option % 4 >= 2 ? BiNegativeExponential : NonParametric);
    setting.setConfidenceLevel(std::array{0.95, 0.9, 0.99, 0.5}[option % 4]);
    return setting;
}

/// The variables of a sample, a group of 1 or 2 in turn, and weights from 0 to 3. One value in `gapEvery` is NaN.
HostData hostDataOf(const Sample& sample, std::size_t gapEvery)
{
    HostData data;
    for (const std::vector<double>& column : {sample.states, sample.values, sample.others})
        data.add(column);
    data.add({});
    data.add({});
    for (std::size_t i = 0; i < sample.states.size(); ++i) {
        data.columns[side].push_back(i % 2 == 0 ? 1.0 : 2.0);
        data.columns[frequency].push_back(static_cast<double>(i * i % 11 % 4));
        if (i % gapEvery == gapEvery - 1)
            data.columns[i % 3 == 0 ? value : other][i] = std::numeric_limits<double>::quiet_NaN();
    }
    return data;
}

TEST(SameAsArrayCalls, InEveryKindOfAnalysis)
{
    const auto check = [](const Sample& sample, unsigned option, std::size_t gapEvery) {
        HostData data = hostDataOf(sample, gapEvery);
        for (const bool weighted : {false, true}) {
            ROCSetting areas = settingWith(option);
            areas.setFrequencyWeightVar(weighted ? frequency : -1);
            areas.setNeedROC(!weighted);
            EXPECT_EQ(facadeDisagreement(areas, data), "");
            ROCSetting paired = areas;
            paired.setTestVars({value, other, value});
            paired.setComparisonType(PairedComparison);
            EXPECT_EQ(facadeDisagreement(paired, data), "");
            ROCSetting independent = areas;
            independent.setTestVars({other, value});
            independent.setSelectGroupVar(side, 2.0, 1.0);
            independent.setComparisonType(IndependentComparison);
            EXPECT_EQ(facadeDisagreement(independent, data), "");
        }
    };
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= samplesPerShape(40); ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            check(drawSample(shape, seed, sizeFor(seed)), seed, seed % 2 == 0 ? 7 : 10'000);
            Sample balanced = drawSample(shape, seed, 20);
            for (std::size_t i = 0; i < 20; ++i)
                balanced.states[i] = i / 2 % 2 == 0 ? 1.0 : 0.0;
            check(balanced, 2 + seed % 2, 10'000); // keeps the bi-negative assumption
        }
    HostData data = analysisData(60);
    for (const Analysis& analysis : analyses())
        EXPECT_EQ(facadeDisagreement(settingOf(analysis), data), "") << analysis.name;
}

} // namespace
