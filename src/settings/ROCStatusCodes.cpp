#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <iterator>

namespace {

using namespace ROCALG_920;

struct CodeName {
    int code;
    const char* name;
};

/// A cancel and an unexpected exception have no name of their own.
constexpr CodeName codeNames[] = {
    {statusCode::noError, "No error"},
    {statusCode::stateVarNotSet, "Setting_Error_StateVar"},
    {statusCode::stateValueMissing, "Setting_Error_StateValue"},
    {statusCode::stateValueNotFound, "Setting_Error_StateValue_NotExist"},
    {statusCode::noTestVar, "Setting_Error_TestVar"},
    {statusCode::fewerThanTwoTestVars, "Setting_Error_AtLeast2Test"},
    {statusCode::groupRequired, "Setting_Error_Group_Required"},
    {statusCode::noData, "Error_NoData"},
    {statusCode::groupConstant, "Error_GroupConst_IndCompare"},
    {statusCode::groupEmpty, "Error_No2Group_IndCompare"},
    {statusCode::zeroPositiveOrNegative, "WARN_ZERO_POS_NEG"},
    {statusCode::tiesExist, "WARN_TieExist"},
    {statusCode::distributionChanged, "WARN_DIST_CHANGE"},
    {statusCode::groupIgnored, "WARN_GROUP_IGNORE"},
};

} // namespace

void ROCComponentDisplay::ParseErrCodeToStr(int code, std::string& name)
{
    const auto found = std::ranges::find(codeNames, code, &CodeName::code);
    name = found != std::end(codeNames) ? found->name : "Unrecognized error code";
}
