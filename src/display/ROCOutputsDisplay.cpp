#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCOutputs.h"

#include <ostream>
#include <vector>

namespace ROCALG_920 {

using VexXML_920::VexVarList;

namespace {

constexpr const char* separatorLine = "/////////////////////\n";

template <class Item>
void writeSeparated(std::ostream& out, const std::vector<Item*>& items, const VexVarList& varList)
{
    const char* separator = "";
    for (const Item* item : items) {
        out << separator;
        item->Display(out, varList);
        separator = separatorLine;
    }
}

} // namespace

void ROCComparisonOutStats::Display(std::ostream& out, const VexVarList& varList) const
{
    out << "+++++Comparison Variable 1:+++++" << '\n';
    compare1_->Display(out, varList);
    out << "+++++Comparison Variable 2:+++++" << '\n';
    compare2_->Display(out, varList);
    out << "+++++Comparison stats:+++++" << '\n';
    out << "Z:" << zStats_ << '\n';
    out << "Asymptotic Sig:" << asymptoticSig_ << '\n';
    out << "AUC Diff:" << aucDiff_ << '\n';
    out << "Std Error Diff:" << stdErrorDiff_ << '\n';
    out << "CI Lower:" << ciLower_ << '\n';
    out << "CI Upper:" << ciUpper_ << '\n';
}

void ROCOutputs::Display(std::ostream& out) const
{
    out << separatorLine;
    if (comparisonStats_.empty()) {
        writeSeparated(out, baseStats_, varList_);
        return;
    }
    out << "Base stats size:" << static_cast<int>(baseStats_.size()) << '\n';
    writeSeparated(out, comparisonStats_, varList_);
}

} // namespace ROCALG_920
