#include "cli/study/Meanings.h"

#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "vexrocproc/ROCComponentDisplay.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <algorithm>
#include <array>
#include <set>

namespace vexroc {

namespace {

using namespace ROCALG_920;
using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;
using VexXML_920::VexVarList;

struct Advice {
    int code;
    const char* sentence;
};

constexpr std::array adviceOnErrors{
    Advice{statusCode::unexpected, "the analysis broke off; there may not be enough memory for so many rows and tests"},
    Advice{statusCode::stateVarNotSet, "there is no state column; name one with --state COLUMN=VALUE"},
    Advice{statusCode::stateValueMissing, "the positive state is a missing value; name another with --state"},
    Advice{statusCode::stateValueNotFound,
           "no row with the positive state is left; check --state and the rows that were left out"},
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

std::string nameOf(int code)
{
    std::string name;
    ROCComponentDisplay::ParseErrCodeToStr(code, name);
    return name;
}

std::string namesOf(const std::vector<VexWarnings::VexParameterValue>& indices, const VexVarList& variables)
{
    std::set<int> named;
    std::vector<std::string> names;
    for (const auto& index : indices)
        if (named.insert(index.GetInt()).second)
            names.push_back(variableName(variables, index.GetInt()));
    return listed(names, names.size());
}

std::string warningInWords(int code, const std::vector<VexWarnings::VexParameterValue>& parameters,
                           const VexVarList& variables)
{
    switch (code) {
    case statusCode::zeroPositiveOrNegative: return "there is no positive or no negative case";
    case statusCode::tiesExist:
        return "ties: positive and negative cases share test values in " + namesOf(parameters, variables)
            + "; each such pair counts one half";
    case statusCode::distributionChanged:
        return "the standard errors are nonparametric: the bi-negative exponential one needs as many positive as "
               "negative cases, for every test and group";
    case statusCode::groupIgnored: return "the groups are ignored: a paired comparison uses all cases";
    }
    return "the analysis has a warning without words";
}

} // namespace

std::string variableName(const VexVarList& variables, int index) { return variables.GetVarAt(index)->GetName(); }

std::string groupOf(const ROCOutBase& record, const VexVarList& variables)
{
    if (record.getGroupVarInd() < 0)
        return "all cases";
    const VexXML_920::IVexVariable& variable = *variables.GetVarAt(record.getGroupVarInd());
    const VexXML_920::VexValueLabels* const labels = variable.GetValueLabels();
    const std::string value =
        labels ? labels->GetLabel(static_cast<int>(record.getGroupValue())) : shortest(record.getGroupValue());
    switch (record.getGroupValueOperation()) {
    case ROCConst_920::Less: return variable.GetName() + " < " + value;
    case ROCConst_920::GreaterOrEqual: return variable.GetName() + " >= " + value;
    case ROCConst_920::Equal: break;
    }
    return variable.GetName() + " = " + value;
}

std::vector<Warning> inWords(const VexWarnings& warnings, const VexVarList& variables)
{
    std::vector<Warning> words;
    for (int i = 0; i < warnings.GetCount(); ++i) {
        const int code = static_cast<int>(warnings.GetStatus(i).GetErrorCode());
        words.push_back({code, nameOf(code), warningInWords(code, warnings.GetParameters(i), variables)});
    }
    return words;
}

Warning inWords(const VexStatus& status)
{
    const int code = static_cast<int>(status.GetErrorCode());
    const auto advice = std::ranges::find(adviceOnErrors, code, &Advice::code);
    const char* const sentence = advice != adviceOnErrors.end() ? advice->sentence : "the analysis came to no result";
    return {code, nameOf(code), sentence};
}

} // namespace vexroc
