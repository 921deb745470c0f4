#include "tests/support/hosts.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace roctest;
using namespace ROCALG_920;

TEST(Display, ShowsTheResultsToTheCharacterAndNothingBeforeARun)
{
    HostData data;
    data.columns = {{1, 0, 1, 0}, {4, 3, 3, 1}, {1, 0, 0, 1}};
    data.variables.AddTwoValued("disease");
    data.variables.AddContinuous("marker");
    data.variables.AddTwoValued("sex", {{0, "female"}, {1, "male"}});
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars({1});
    setting.setNeedPR(true);
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter records = data.records();
    std::ostringstream before;
    facade.Display(before);
    EXPECT_EQ(before.str(), "");
    ASSERT_TRUE(facade.BuildModel(records).IsOK());
    std::ostringstream shown;
    facade.Display(shown);
    // Counted by hand: 3.5 of 4 pairs in order; the maximum 0.5 is reached at 2 and at 3.5, the last one counts.
    EXPECT_EQ(shown.str(), R"(/////////////////////
Test Var:marker
Negative count:2 Positive count:2
Negative frequency count:2 Positive frequency count:2
Area:0.875 Gini Index:0.75 Std Error:0.200909 Asymptotic Sig.:0.0619696 CILower:0.481225 CIUpper: 1.26878
------------ROC Curve-----------:
CutPoints:[0,2,3.5,5]
Sensitivity:[1,1,0.5,0]
Specificity:[0,0.5,1,1]
Max K-S: 0.5 Cutoff of Max K-S: 3.5
Dose Ties exist? yes
Distribution changes to Nonparmetric? no
Positive or Negative count is zero (0)? no
------------PR Curve-----------:
Precision:[0.5,0.666667,1,1]
Recall:[1,1,0.5,0]
------------PR Coordinates-----------:
Precision:[0.5,0.666667,1,1]
Recall:[1,1,0.5,0]

)");

    setting.setNeedPR(false);
    setting.setSelectGroupVar(2, 0.0, 1.0);
    setting.setComparisonType(ROCConst_920::IndependentComparison);
    RocAlgorithm groups(setting, data.variables);
    ASSERT_TRUE(groups.BuildModel(records).IsOK());
    std::ostringstream compared;
    groups.Display(compared);
    EXPECT_EQ(compared.str(), R"(/////////////////////
Base stats size:2
+++++Comparison Variable 1:+++++
Test Var:marker
Group:sex = female
Negative count:1 Positive count:1
Negative frequency count:1 Positive frequency count:1
Area:0.5 Gini Index:0 Std Error:0.5 Asymptotic Sig.:1 CILower:-0.479982 CIUpper: 1.47998
------------ROC Curve-----------:
CutPoints:[]
Sensitivity:[]
Specificity:[]
Max K-S: -1 Cutoff of Max K-S: 0
Dose Ties exist? no
Distribution changes to Nonparmetric? no
Positive or Negative count is zero (0)? no
------------PR Curve-----------:
Precision:[]
Recall:[]
------------PR Coordinates-----------:
Precision:[]
Recall:[]

+++++Comparison Variable 2:+++++
Test Var:marker
Group:sex = male
Negative count:1 Positive count:1
Negative frequency count:1 Positive frequency count:1
Area:1 Gini Index:1 Std Error:0 Asymptotic Sig.:0 CILower:1 CIUpper: 1
------------ROC Curve-----------:
CutPoints:[]
Sensitivity:[]
Specificity:[]
Max K-S: -1 Cutoff of Max K-S: 0
Dose Ties exist? no
Distribution changes to Nonparmetric? no
Positive or Negative count is zero (0)? no
------------PR Curve-----------:
Precision:[]
Recall:[]
------------PR Coordinates-----------:
Precision:[]
Recall:[]

+++++Comparison stats:+++++
Z:-1
Asymptotic Sig:0.317311
AUC Diff:-0.5
Std Error Diff:0.5
CI Lower:-1.47998
CI Upper:0.479982
)");
}

} // namespace
