#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace ROCALG_920;

TEST(StatusCodes, HaveTheirValuesAndNames)
{
    const std::string unnamed = "Unrecognized error code";
    const struct {
        int code, value;
        std::string name;
    } cases[] = {
        {statusCode::noError, 0, "No error"},
        {statusCode::cancelled, 1, unnamed},
        {statusCode::unexpected, 430001, unnamed},
        {statusCode::stateVarNotSet, 430002, "Setting_Error_StateVar"},
        {statusCode::stateValueMissing, 430003, "Setting_Error_StateValue"},
        {statusCode::stateValueNotFound, 430004, "Setting_Error_StateValue_NotExist"},
        {statusCode::noTestVar, 430005, "Setting_Error_TestVar"},
        {statusCode::fewerThanTwoTestVars, 430006, "Setting_Error_AtLeast2Test"},
        {statusCode::groupRequired, 430007, "Setting_Error_Group_Required"},
        {430008, 430008, unnamed},
        {statusCode::noData, 430010, "Error_NoData"},
        {statusCode::groupConstant, 430011, "Error_GroupConst_IndCompare"},
        {statusCode::groupEmpty, 430012, "Error_No2Group_IndCompare"},
        {statusCode::zeroPositiveOrNegative, 430101, "WARN_ZERO_POS_NEG"},
        {statusCode::tiesExist, 430102, "WARN_TieExist"},
        {statusCode::distributionChanged, 430103, "WARN_DIST_CHANGE"},
        {statusCode::groupIgnored, 430104, "WARN_GROUP_IGNORE"},
        {-5, -5, unnamed},
    };
    std::string name = "what was there before";
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.value);
        ROCComponentDisplay::ParseErrCodeToStr(expected.code, name);
        EXPECT_EQ(expected.code, expected.value);
        EXPECT_EQ(name, expected.name);
    }
}

} // namespace
