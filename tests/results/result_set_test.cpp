#include "host/VexVarList.h"
#include "tests/results/FixedStats.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCOutputs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using namespace ROCALG_920;
using namespace results_test;
using testing::ElementsAre;

TEST(ResultSet, CopiesTheListsAndOwnsNothing)
{
    ROCSpace space = interleavedSpace();
    FixedStats stats(space, {.area = 0.75, .stdError = 0.1});
    ROCOutBase first(0, stats, false);
    ROCOutBase second(1, stats, false);
    FixedComparison compared({});
    ROCComparisonOutStats comparison(first, second, compared);

    VexXML_920::VexVarList varList;
    std::vector<ROCOutBase*> records{&first, &second};
    auto outputs = std::make_unique<ROCOutputs>(varList, records, std::vector{&comparison});
    records.clear();
    EXPECT_THAT(outputs->getROCBaseStats(), ElementsAre(&first, &second));
    EXPECT_THAT(outputs->getROCComparisonStats(), ElementsAre(&comparison));

    outputs.reset();
    EXPECT_EQ(second.getArea(), 0.75);
    EXPECT_EQ(comparison.getCompare2Stats()->getTestVarInd(), 1);
}

} // namespace
