#include "host/VexMV.h"
#include "inference/TestAndInterval.h"
#include "tests/support/Exact.h"
#include "tests/support/oracle.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace ROCALG_920;
using namespace roctest;
using VexCommon_920::VexMV;

constexpr double missing = VexMV::Missing();
constexpr double eps = std::numeric_limits<double>::epsilon();

TEST(Inference, PassesMissingValuesOnAndOnlyThose)
{
    const auto isMissing = [](double value) { return VexMV::IsMissing(value); };
    EXPECT_TRUE(isMissing(twoSidedSignificance(missing)));
    EXPECT_TRUE(isMissing(stdErrorOfVariance(missing)));
    EXPECT_TRUE(isMissing(areaDifference(missing, 0.5)) && isMissing(areaDifference(0.5, missing)));
    EXPECT_TRUE(isMissing(independentStdError(0.1, missing)) && isMissing(independentStdError(missing, 0.1)));
    for (const auto& [v1, v2, cov] : {std::tuple{missing, 1.0, 0.0}, {1.0, missing, 0.0}, {1.0, 1.0, missing}})
        EXPECT_TRUE(isMissing(pairedStdError(v1, v2, cov)));
    for (const auto& [estimate, se, z] : {std::tuple{missing, 1.0, 2.0}, {0.5, missing, 2.0}, {0.5, 1.0, missing}})
        EXPECT_TRUE(isMissing(confidenceInterval(estimate, se, z).first)
                    && isMissing(confidenceInterval(estimate, se, z).second));
    const double nan = std::nan("");
    for (const double value :
         {twoSidedSignificance(nan), stdErrorOfVariance(nan), areaDifference(nan, 0.5), independentStdError(nan, 0.1),
          pairedStdError(nan, 1.0, 0.0), testDifference(0.1, nan, 2.0).z})
        EXPECT_TRUE(std::isnan(value) && !isMissing(value));
}

TEST(Inference, HasNoIntervalAroundAnEstimateWithoutError)
{
    for (const double z : {0.0, 1.96, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(confidenceInterval(0.75, 0.0, z), std::pair(0.75, 0.75));
}

TEST(Inference, TakesARadicandBelowZeroByRoundingAsZero)
{
    EXPECT_EQ(pairedStdError(1.0, 1.0, 1.0 + 2 * eps), 0.0);
    EXPECT_EQ(pairedStdError(1.0, 1.0, 0.5), 1.0);
    EXPECT_TRUE(std::isnan(pairedStdError(1.0, 1.0, 1.1)));
}

} // namespace
