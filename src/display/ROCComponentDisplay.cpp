#include "vexrocproc/ROCComponentDisplay.h"

#include "host/VexDisplay.h"

namespace ROCComponentDisplay {

using VexCommon_920::VexStatus;

namespace {

constexpr long level = 1;

// The texts of the values, in one overload per enumeration; each also takes values outside it.

const char* meaning(ROCConst_920::Classification value)
{
    switch (value) {
    case ROCConst_920::Include: return " = Include";
    case ROCConst_920::Exclude: return " = Exclude";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::Distribution value)
{
    switch (value) {
    case ROCConst_920::NonParametric: return " = Nonparametric Assumption";
    case ROCConst_920::BiNegativeExponential: return " = Bi-negative Exponential Distribution Assumption";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::Direction value)
{
    switch (value) {
    case ROCConst_920::LargerMorePositive: return " = Larger or higher test result indicates more positive test";
    case ROCConst_920::SmallerMorePositive: return " = Smaller or lower test result indicates more positive test";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::PRInterpolation value)
{
    switch (value) {
    case ROCConst_920::AlongTP: return " = PR interpolate two adjacent points along TP";
    case ROCConst_920::AlongFP: return " = PR interpolate two adjacent points along FP";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::ComparisonType value)
{
    switch (value) {
    case ROCConst_920::NoComparison: return " = No comparison";
    case ROCConst_920::IndependentComparison: return " = Independent comparison";
    case ROCConst_920::PairedComparison: return " = Paired comparison";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::GroupType value)
{
    switch (value) {
    case ROCConst_920::NoGroup: return " = No Group";
    case ROCConst_920::SelectGroup: return " = Select";
    case ROCConst_920::MidPointGroup: return " = MidPoint";
    case ROCConst_920::CutPointGroup: return " = CutPoint";
    }
    return nullptr;
}

const char* meaning(ROCConst_920::Operation value)
{
    switch (value) {
    case ROCConst_920::Equal: return " = Equal";
    case ROCConst_920::GreaterOrEqual: return " = Greater Or Equal";
    case ROCConst_920::Less: return " = Less";
    }
    return nullptr;
}

template <class Enumeration>
void displayMeaning(const std::string& label, Enumeration value)
{
    const char* const text = meaning(value);
    VexDisplay_920::DisplayText(level, label + (text != nullptr ? text : " = unrecognized"));
}

/// Whether the status is an error, its code and the name of the code.
void displayOutcome(const VexStatus& status)
{
    const int code = static_cast<int>(status.GetErrorCode());
    VexDisplay_920::DisplayB("IsError", status.IsError());
    VexDisplay_920::DisplayI("error code", code);
    std::string name;
    ParseErrCodeToStr(code, name);
    VexDisplay_920::DisplayText(level, name);
}

} // namespace

void DisplayC(const std::string& label, ROCConst_920::Classification value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::Distribution value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::Direction value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::PRInterpolation value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::ComparisonType value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::GroupType value) { displayMeaning(label, value); }

void DisplayC(const std::string& label, ROCConst_920::Operation value) { displayMeaning(label, value); }

void DisplayStatus(const std::string& name, const VexStatus& status)
{
    VexDisplay_920::DisplayText(level, name);
    displayOutcome(status);
}

void DisplayVStatus(const std::string& name, const std::vector<VexStatus>& statuses)
{
    VexDisplay_920::DisplayI(name + "  size", static_cast<int>(statuses.size()));
    int index = 0;
    for (const VexStatus& status : statuses) {
        VexDisplay_920::DisplayText(level, "");
        VexDisplay_920::DisplayI("index", index++);
        displayOutcome(status);
    }
}

} // namespace ROCComponentDisplay
