#include "host/VexDisplay.h"
#include "vexrocproc/ROCComponentDisplay.h"
#include "vexrocproc/ROCSetting.h"

namespace ROCALG_920 {

using namespace VexDisplay_920;
using ROCComponentDisplay::DisplayC;

namespace {

constexpr long level = 1;

/// Makes a stream the host's current one, and the one that was current before, if any, again at the end.
class CurrentStream {
public:
    explicit CurrentStream(std::ostream& out) : previous_(GetOutStream()) { SetOutStream(out); }
    ~CurrentStream()
    {
        if (previous_ != nullptr)
            SetOutStream(*previous_);
    }
    CurrentStream(const CurrentStream&) = delete;
    CurrentStream& operator=(const CurrentStream&) = delete;

private:
    std::ostream* previous_;
};

void displayGroup(const ROCSetting& setting)
{
    if (setting.getGroupVar() < 0)
        return;
    DisplayI("Group Variable Index", setting.getGroupVar());
    DisplayC("Group Defined Type", setting.getGroupType());
    if (setting.getGroupType() == ROCConst_920::SelectGroup)
        DisplayDV("Group Selected Values", setting.getGroupSelectValues(), false);
    if (setting.getGroupType() == ROCConst_920::CutPointGroup)
        DisplayD("Group Cutoff Values", setting.getGroupCutValue());
}

void displayPrecisionRecall(const ROCSetting& setting)
{
    DisplayB("Need PR points:", setting.needPR());
    if (setting.needPR())
        DisplayC("PR iterpolate type", setting.getPRInterpolationType());
    else
        DisplayText(level, "PR points NOT required");
}

} // namespace

void ROCSetting::Display(std::ostream& out) const
{
    const CurrentStream current(out);
    DisplayText(level, "ROC setting display start:");
    DisplayI("State Variable Index", stateVar_);
    DisplayD("State Variable Positive value", stateValue_);
    DisplayIV("Test Variables", testVars_);
    displayGroup(*this);
    displayPrecisionRecall(*this);
    DisplayB("Need ROC points:", needROC_);
    DisplayC("Comparison Type", comparisonType_);
    DisplayC("CUTOFF", classification_);
    DisplayC("TESTPOS", direction_);
    DisplayC("DISTRIBUTION", distribution_);
    DisplayD("CI", confidenceLevel_);
    DisplayText(level, "ROC setting display end!");
}

} // namespace ROCALG_920
