#include "tests/driver/analyses.h"
#include "tests/support/failingAllocator.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

using namespace roctest;
using namespace ROCALG_920;

/// One run in which an allocation fails; its code.
long runFailing(RocAlgorithm& facade, ScriptedIter& records, long point)
{
    records.NewPass();
    allocator::failAt(point);
    const long code = facade.BuildModel(records).GetErrorCode();
    EXPECT_EQ(code, allocator::stopFailing() ? statusCode::unexpected : statusCode::noError)
        << "when allocation " << point << " fails";
    return code;
}

/// Fails one allocation of a run after the other until the run succeeds. Returns how many there were.
int failEach(const Analysis& analysis, HostData& data)
{
    const Outcome expected = analyse(settingOf(analysis), data);
    for (int point = 0;; ++point) {
        const long before = allocator::alive;
        long code = 0;
        {
            ROCSetting setting = settingOf(analysis);
            ScriptedIter records = data.records();
            RocAlgorithm facade(setting, data.variables);
            code = runFailing(facade, records, point);
            EXPECT_EQ(facade.GetOutputStats() != nullptr, code == 0);
            // The same again on a facade that has results: a failed run leaves them in place.
            records.NewPass();
            EXPECT_EQ(facade.BuildModel(records).GetErrorCode(), 0);
            const ROCOutputs* const results = facade.GetOutputStats();
            const bool failed = runFailing(facade, records, point) != 0;
            EXPECT_TRUE(!failed || facade.GetOutputStats() == results);
            EXPECT_EQ(readBack(facade).records, expected.records);
            EXPECT_EQ(readBack(facade).comparisons, expected.comparisons);
        }
        EXPECT_EQ(allocator::alive, before) << "leaks when allocation " << point << " fails";
        EXPECT_EQ(analyse(settingOf(analysis), data), expected) << "a new facade after allocation " << point;
        if (code == 0 || testing::Test::HasFailure())
            return point;
    }
}

TEST(FailedAllocation, EndsTheRunWithAStatusAndLeaksNothing)
{
    int covered = 0;
    for (const std::size_t size : {12u, 700u})
        for (const Analysis& analysis : analyses()) {
            SCOPED_TRACE(std::string(analysis.name) + ", " + std::to_string(size) + " records");
            HostData data = analysisData(size);
            for (double& value : data.columns[test1])
                value += static_cast<double>(&value - data.columns[test1].data()) * 0.37; // many distinct values
            covered += failEach(analysis, data);
        }
    std::cout << "failed allocations covered: " << covered << '\n';
    EXPECT_GT(covered, 100);
}

} // namespace
