#include "cli/study/statusInWords.h"

#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <array>

namespace vexroc {

namespace {

namespace statusCode = ROCALG_920::statusCode;

struct Advice {
    int code;
    const char* sentence;
};

constexpr std::array adviceOnErrors{
    Advice{statusCode::unexpected, "the analysis broke off; there may not be enough memory for so many rows and tests"},
    Advice{statusCode::stateVarNotSet, "there is no state column; name one with --state COLUMN=VALUE"},
    Advice{statusCode::stateValueMissing, "the positive state is a missing value; name another with --state"},
    Advice{statusCode::stateValueNotFound, "there is no positive case; check --state and the rows that were left out"},
    Advice{statusCode::noTestVar, "no test is left; name columns of numbers other than the state with --test"},
    Advice{statusCode::fewerThanTwoTestVars, "a paired comparison needs two tests; name them with --test FIRST,SECOND"},
    Advice{statusCode::groupRequired,
           "an independent comparison needs two groups of cases; name their column with "
           "--group"},
    Advice{statusCode::noData, "no row is left; check the rows that were left out"},
    Advice{statusCode::groupConstant,
           "all rows have the same value in the group column, so there is one group only; split by another column"},
    Advice{statusCode::groupEmpty, "a group holds no case, so there is nothing to compare; choose another split"},
};

} // namespace

RunMessage statusInWords(int code)
{
    std::string name;
    ROCComponentDisplay::ParseErrCodeToStr(code, name);
    const auto advice = std::ranges::find(adviceOnErrors, code, &Advice::code);
    return {code, name, advice != adviceOnErrors.end() ? advice->sentence : "the analysis came to no result"};
}

} // namespace vexroc
