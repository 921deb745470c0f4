#include "host/VexDistFun.h"
#include "host/VexMV.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

using VexCommon_920::VexMV;
using VexMath_920::VexDistFun;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// One unit in the last place at most, as an absolute distance from the expected value.
double lastPlace(double expected) { return std::abs(expected) * std::numeric_limits<double>::epsilon(); }

TEST(MissingValue, IsOneBitPatternAndNoOtherNaN)
{
    EXPECT_EQ(std::bit_cast<std::uint64_t>(VexMV::Missing()), 0x7FF80000000007A2u);
    EXPECT_TRUE(VexMV::IsMissing(VexMV::Missing()));
    for (const double other : {notANumber, -VexMV::Missing(), std::nan("1953"), 0.0, 1954.0, infinity})
        EXPECT_FALSE(VexMV::IsMissing(other)) << other;
}

// The reference values of both tables are those of the doubles nearest to the arguments, computed with 60 digits
// by mpmath 1.3.0 from its erfc, the quantiles by Newton's method.
TEST(NormalDistribution, AgreesWithReferenceValuesInBothTails)
{
    const std::pair<double, double> cases[] = {{-37.5, 4.60535300958195484383e-308},
                                               {-20.0, 2.75362411860623369508e-89},
                                               {-5.0, 2.86651571879193911674e-7},
                                               {-1.0, 0.158655253931457051415},
                                               {0.0, 0.5},
                                               {1e-10, 0.50000000003989422804},
                                               {1.959963984540054, 0.974999999999999989124},
                                               {8.0, 0.999999999999999377904},
                                               {infinity, 1.0},
                                               {-infinity, 0.0}};
    for (const auto& [z, probability] : cases)
        EXPECT_NEAR(VexDistFun::CdfStdNorm(z), probability, lastPlace(probability)) << z;
    EXPECT_TRUE(VexMV::IsMissing(VexDistFun::CdfStdNorm(VexMV::Missing())));
    const double result = VexDistFun::CdfStdNorm(notANumber);
    EXPECT_TRUE(std::isnan(result) && !VexMV::IsMissing(result));
}

TEST(NormalQuantile, AgreesWithReferenceValues)
{
    // The approximations change at 0.075, 0.925 and exp(-25).
    const std::pair<double, double> cases[] = {
        {0.975, 1.9599639845400538556}, // 1.959963984540054 to 16 digits
        {0.025, -1.95996398454005421178},       {0.6, 0.253347103135799741325},
        {0.2, -0.841621233572914165522},        {0.5 + 0x1p-30, 2.33447949833329813992e-9},
        {0.075, -1.43953147093845593495},       {0.0749999, -1.43953217737590058642},
        {0.9250001, 1.43953217737590048838},    {1.3888e-11, -6.65790404926424963405},
        {1.3887e-11, -6.6579146354625080615},   {1e-5, -4.26489079392282461023},
        {1e-100, -21.2734535609653242942},      {std::numeric_limits<double>::denorm_min(), -38.4674056171443462508},
        {1.0 - 0x1p-53, 8.20953615160138685563}};
    for (const auto& [p, quantile] : cases)
        EXPECT_NEAR(VexDistFun::IdfNorm(p, 0.0, 1.0), quantile, lastPlace(quantile)) << p;
    EXPECT_EQ(VexDistFun::IdfNorm(0.5, 0.0, 1.0), 0.0);
}

TEST(NormalQuantile, UndoesTheDistributionFunction)
{
    for (double z = -37.0; z <= 0.0; z += 0.0625) // above 0 the probabilities near 1 lose the digits of z
        EXPECT_NEAR(VexDistFun::IdfNorm(VexDistFun::CdfStdNorm(z), 0.0, 1.0), z, 4.5e-16 * std::fmax(1.0, -z)) << z;
}

TEST(NormalQuantile, ScalesAndShifts)
{
    EXPECT_NEAR(VexDistFun::IdfNorm(0.975, 100.0, 15.0), 100.0 + 15.0 * 1.959963984540054, 1e-13);
    EXPECT_EQ(VexDistFun::IdfNorm(0.975, 4.0, 0.0), 4.0);
    EXPECT_EQ(VexDistFun::IdfNorm(0.0, 4.0, 0.0), -infinity);
    EXPECT_EQ(VexDistFun::IdfNorm(1.0, 4.0, 2.0), infinity);
}

TEST(NormalQuantile, IsMissingWithoutAProbabilityOrADistribution)
{
    for (const double p : {-1e-300, 1.0 + 0x1p-52, notANumber, infinity, VexMV::Missing()})
        EXPECT_TRUE(VexMV::IsMissing(VexDistFun::IdfNorm(p, 0.0, 1.0))) << p;
    for (const double stdDeviation : {-1.0, notANumber, infinity})
        EXPECT_TRUE(VexMV::IsMissing(VexDistFun::IdfNorm(0.5, 0.0, stdDeviation))) << stdDeviation;
    EXPECT_TRUE(VexMV::IsMissing(VexDistFun::IdfNorm(0.5, notANumber, 1.0)));
}

} // namespace
