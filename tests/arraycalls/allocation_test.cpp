#include "tests/support/calls.h"
#include "tests/support/failingAllocator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace {

using namespace roctest;
using Results = std::vector<Numbers>;

/// Fails one allocation after the other until the call succeeds. Returns how many there were. Each failure gives one of
/// the results that mayFail(what the call gives otherwise) lists.
template <class Call, class MayFail>
int failEach(const Call& call, const MayFail& mayFail)
{
    const auto all = [](const auto& result) {
        if constexpr (requires { result.rows; })
            return result.rows != nullptr ? taken(result) : Numbers{{static_cast<double>(result.count)}};
        else
            return numbers(result);
    };
    const Numbers complete = all(call());
    for (int point = 0;; ++point) {
        SCOPED_TRACE("allocation " + std::to_string(point) + " fails");
        const long before = allocator::alive;
        allocator::failAt(point);
        const auto result = call();
        const bool failed = allocator::stopFailing();
        {
            const Results expected = failed ? mayFail(complete) : Results{complete};
            EXPECT_EQ(std::ranges::count(expected, all(result)), 1);
        }
        EXPECT_EQ(allocator::alive, before);
        if (!failed || testing::Test::HasFailure())
            return point;
    }
}

int failAllCalls(const Sample& s)
{
    constexpr double missing = VexCommon_920::VexMV::Missing();
    const Numbers noArea{{0}, {0}, {missing}, {missing}, {missing}, {missing}, {missing}};
    const auto joined = [](Numbers list, const Numbers& second) {
        list.insert(list.end(), second.begin(), second.end());
        list.resize(20, {missing});
        return Results{list};
    };
    const auto noRows = [](const Numbers&) { return Results{{{0}}}; };
    int covered = failEach(
        [&] { return roccurve(s.states.data(), s.values.data(), s.size(), nullptr, "include", "larger"); }, noRows);
    covered += failEach(
        [&] {
            return prcurve(s.states.data(), s.values.data(), s.size(), nullptr, "include", "larger",
                           "an unknown word longer than a small string");
        },
        noRows);
    covered += failEach([&] { return areaOf(s.states, s.values); }, [&](const Numbers&) { return Results{noArea}; });
    covered += failEach([&] { return pairedOf(s); }, [&](const Numbers&) { return joined(noArea, noArea); });
    return covered + failEach([&] { return independentOf(s); }, [&](const Numbers& complete) { // one of the areas
               const auto second = complete.begin() + 7;
               Results results = joined(noArea, Numbers(second, second + 7));
               results.push_back(joined(Numbers(complete.begin(), second), noArea).front());
               return results;
           });
}

TEST(FailedAllocation, IsReportedByTheDocumentedResultAndLeaksNothing)
{
    int covered = 0;
    for (const Shape& shape : {shapes()[0], shapes()[4], shapes()[16]}) // few values, buckets, ascending
        for (const std::size_t size : {5u, 4'000u})
            for (const bool withNaN : {false, true}) {
                SCOPED_TRACE(std::string(shape.name) + ", " + std::to_string(size));
                Sample sample = drawSample(shape, 14, size);
                if (withNaN)
                    sample.values[1] = std::nan("");
                covered += failAllCalls(sample);
            }
    std::cout << "failed allocations covered: " << covered << '\n';
    EXPECT_GT(covered, 100);
}

} // namespace
