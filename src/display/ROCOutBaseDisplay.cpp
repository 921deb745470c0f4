#include "host/VexVarList.h"
#include "vexrocproc/ROCOutBase.h"

#include <limits>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace ROCALG_920 {

using VexXML_920::IVexVariable;
using VexXML_920::VexVarList;

namespace {

using Points = std::vector<std::pair<double, double>>;

const char* yesOrNo(bool flag) { return flag ? "yes" : "no"; }

const char* relation(ROCConst_920::Operation op)
{
    switch (op) {
    case ROCConst_920::Less: return "<";
    case ROCConst_920::GreaterOrEqual: return ">=";
    case ROCConst_920::Equal: break;
    }
    return "=";
}

/// False for NaN.
bool isWithinInt(double value)
{
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

void writeGroup(std::ostream& out, const ROCOutBase& record, const VexVarList& varList)
{
    const IVexVariable& variable = *varList.GetVarAt(record.getGroupVarInd());
    const double value = record.getGroupValue();
    out << "Group:" << variable.GetName() << " " << relation(record.getGroupValueOperation()) << " ";
    const VexXML_920::VexValueLabels* const labels = variable.GetValueLabels();
    if (labels != nullptr && variable.GetValueType() >= IVexVariable::twoValued && isWithinInt(value))
        out << labels->GetLabel(static_cast<int>(value));
    else
        out << value;
    out << '\n';
}

void writeCounts(std::ostream& out, const ROCOutBase& record)
{
    out << "Negative count:" << record.getNegativeCount() << " Positive count:" << record.getPositiveCount() << '\n';
    out << "Negative frequency count:" << record.getNegFreqCount()
        << " Positive frequency count:" << record.getPosFreqCount() << '\n';
}

void writeArea(std::ostream& out, const ROCOutBase& record)
{
    out << "Area:" << record.getArea() << " Gini Index:" << record.getGiniIndex()
        << " Std Error:" << record.getStdError() << " Asymptotic Sig.:" << record.getAsymptoticSig()
        << " CILower:" << record.getCILower() << " CIUpper: " << record.getCIUpper() << '\n';
}

void writeCutOffs(std::ostream& out, const std::vector<double>& cutOffs)
{
    out << "CutPoints:[";
    const char* separator = "";
    for (const double cutOff : cutOffs)
        out << std::exchange(separator, ",") << cutOff;
    out << "]\n";
}

/// One member of all points, formatted in the default way of the classic locale whatever the stream's format is: a
/// decimal comma would run into the separators.
void writeList(std::ostream& out, const char* label, const Points& points, double Points::value_type::*member)
{
    std::ostringstream list;
    list.imbue(std::locale::classic());
    const char* separator = "";
    for (const auto& point : points)
        list << std::exchange(separator, ",") << point.*member;
    out << label << ":[" << list.str() << "]" << '\n';
}

void writeCurve(std::ostream& out, const ROCOutBase& record)
{
    const auto [maximum, cutOff] = record.getKolmogorovSmirnov();
    out << "------------ROC Curve-----------:" << '\n';
    writeCutOffs(out, record.getCutOffPoints());
    writeList(out, "Sensitivity", record.getSensitivitySpecificity(), &Points::value_type::first);
    writeList(out, "Specificity", record.getSensitivitySpecificity(), &Points::value_type::second);
    out << "Max K-S: " << maximum << " Cutoff of Max K-S: " << cutOff << '\n';
}

void writeFlags(std::ostream& out, const ROCOutBase& record)
{
    out << "Dose Ties exist? " << yesOrNo(record.existTies()) << '\n';
    out << "Distribution changes to Nonparmetric? " << yesOrNo(record.isDistrbutionChanged()) << '\n';
    out << "Positive or Negative count is zero (0)? " << yesOrNo(record.isZeroCountExist()) << '\n';
}

void writePrecisionRecall(std::ostream& out, const char* heading, const Points& points)
{
    out << heading << '\n';
    writeList(out, "Precision", points, &Points::value_type::first);
    writeList(out, "Recall", points, &Points::value_type::second);
}

} // namespace

void ROCOutBase::Display(std::ostream& out, const VexVarList& varList) const
{
    out << "Test Var:" << varList.GetVarAt(testVarInd_)->GetName() << '\n';
    if (groupVarInd_ >= 0)
        writeGroup(out, *this, varList);
    writeCounts(out, *this);
    writeArea(out, *this);
    writeCurve(out, *this);
    writeFlags(out, *this);
    writePrecisionRecall(out, "------------PR Curve-----------:", precisionRecallDraw_);
    writePrecisionRecall(out, "------------PR Coordinates-----------:", precisionRecallCoordinates_);
    out << '\n';
}

} // namespace ROCALG_920
