#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <limits>
#include <new>
#include <string>

/// The allocator of this program: counts what is alive and fails one allocation on request.
namespace allocator {

constexpr long never = std::numeric_limits<long>::max();
long untilFailure = never;
long alive = 0;

void* allocate(std::size_t size)
{
    if (untilFailure != never && untilFailure-- == 0)
        throw std::bad_alloc();
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    ++alive;
    return memory;
}

void release(void* memory) noexcept
{
    if (memory == nullptr)
        return;
    --alive;
    std::free(memory);
}

} // namespace allocator

void* operator new(std::size_t size) { return allocator::allocate(size); }
void* operator new[](std::size_t size) { return allocator::allocate(size); }
void operator delete(void* memory) noexcept { allocator::release(memory); }
void operator delete[](void* memory) noexcept { allocator::release(memory); }
void operator delete(void* memory, std::size_t) noexcept { allocator::release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { allocator::release(memory); }

namespace {

using namespace roctest;

enum class Outcome { complete, failed, wrong };

/// A call with its outcome; `Record` is compared with what the call returned when memory was plenty.
struct Call {
    std::string name;
    std::function<Outcome(const Sample&)> run;
};

template <class Result, class Release>
Outcome outcomeOfRows(const Result& res, Release release)
{
    if (res.rows == nullptr)
        return res.count == 0 ? Outcome::failed : Outcome::wrong;
    release(res);
    return res.count > 0 ? Outcome::complete : Outcome::wrong;
}

Outcome outcomeOf(const auc_res& record)
{
    const double rest[] = {record.area, record.stdError, record.asymptoticSig, record.ciLower, record.ciUpper};
    int missing = 0;
    for (const double value : rest)
        missing += VexCommon_920::VexMV::IsMissing(value);
    if (missing == 0 && record.posCount > 0 && record.negCount > 0)
        return Outcome::complete;
    return missing == 5 && record.posCount == 0 && record.negCount == 0 ? Outcome::failed : Outcome::wrong;
}

Outcome outcomeOf(const auc_comparison_res& res)
{
    const Outcome first = outcomeOf(res.first);
    const Outcome second = outcomeOf(res.second);
    if (first == Outcome::wrong || second == Outcome::wrong)
        return Outcome::wrong;
    const Outcome both = first == second ? first : Outcome::failed;
    const double rest[] = {res.z, res.zSig, res.areaDiff, res.stdErrorDiff, res.ciLower, res.ciUpper};
    for (const double value : rest)
        if (VexCommon_920::VexMV::IsMissing(value) != (both == Outcome::failed))
            return Outcome::wrong;
    return both;
}

const Call calls[] = {
    {"roccurve",
     [](const Sample& s) {
         return outcomeOfRows(roccurve(s.states.data(), s.values.data(), s.size(), nullptr, "include", "larger"),
                              release_roccurve_res);
     }},
    {"prcurve",
     [](const Sample& s) {
         return outcomeOfRows(prcurve(s.states.data(), s.values.data(), s.size(), nullptr, "include", "larger",
                                      "an unknown word longer than a small string"),
                              release_prcurve_res);
     }},
    {"auc", [](const Sample& s) { return outcomeOf(areaOf(s.states, s.values)); }},
    {"auc_indpendentcomparison",
     [](const Sample& s) {
         return outcomeOf(auc_indpendentcomparison(s.states.data(), s.values.data(), s.size(), s.states.data(),
                                                   s.others.data(), s.size(), nullptr, "include", "larger", "nonparam",
                                                   0.95));
     }},
    {"auc_pairedcomparison", [](const Sample& s) { return outcomeOf(pairedOf(s)); }},
};

/// Fails one allocation after the other until the call succeeds. Returns how many there were.
int failEach(const Call& call, const Sample& sample)
{
    for (int point = 0;; ++point) {
        const long before = allocator::alive;
        allocator::untilFailure = point;
        const Outcome outcome = call.run(sample);
        const bool reached = allocator::untilFailure < 0;
        allocator::untilFailure = allocator::never;
        EXPECT_EQ(allocator::alive, before) << "leaks when allocation " << point << " fails";
        EXPECT_EQ(outcome, reached ? Outcome::failed : Outcome::complete) << "when allocation " << point << " fails";
        if (!reached || testing::Test::HasFailure())
            return point;
    }
}

TEST(FailedAllocation, IsReportedByTheDocumentedResultAndLeaksNothing)
{
    std::vector<std::pair<std::string, Sample>> samples;
    for (const Shape& shape : {shapes()[0], shapes()[4], shapes()[16]}) // few values, buckets, ascending
        for (const std::size_t size : {5u, 4'000u})
            samples.emplace_back(std::string(shape.name) + ", " + std::to_string(size), drawSample(shape, 14, size));
    samples.emplace_back("with NaN", samples[3].second);
    samples.back().second.values[1] = std::nan("");
    int covered = 0;
    for (const auto& [name, sample] : samples)
        for (const Call& call : calls) {
            SCOPED_TRACE(call.name + ": " + name);
            covered += failEach(call, sample);
        }
    std::cout << "failed allocations covered: " << covered << '\n';
    EXPECT_GT(covered, 100);
}

} // namespace
