/// Prints what each array call takes from the heap at its peak, results included, in bytes a case.
/// Usage: peak_memory [CASES]

#include "samples.h"
#include "vexrocproc/arraycalls.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::size_t liveBytes = 0;
std::size_t peakBytes = 0;

} // namespace

// The libraries take all their memory through these.
void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    liveBytes += malloc_usable_size(memory);
    peakBytes = std::max(peakBytes, liveBytes);
    return memory;
}

void operator delete(void* memory) noexcept
{
    liveBytes -= memory != nullptr ? malloc_usable_size(memory) : 0;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace {

using samples::Sample;
using samples::Shape;

template <class Call>
void report(const char* call, const char* scores, const Sample& sample, Call&& work)
{
    const std::size_t before = liveBytes;
    peakBytes = before;
    work();
    std::printf("| %s | %s | %.2f |\n", call, scores,
                static_cast<double>(peakBytes - before) / static_cast<double>(sample.first.size()));
}

void reportAll(const char* scores, const Sample& s)
{
    const int n = static_cast<int>(s.first.size());
    const double* const y = s.actual.data();
    const double* const x = s.first.data();
    report("auc", scores, s, [&] { auc(y, x, n, nullptr, "include", "larger", "nonparam", 0.95); });
    report("roccurve", scores, s, [&] { release_roccurve_res(roccurve(y, x, n, nullptr, "include", "larger")); });
    for (const char* scheme : {"davis-goadrich", "keilwagen"})
        report((std::string("prcurve, ") + scheme).c_str(), scores, s,
               [&] { release_prcurve_res(prcurve(y, x, n, nullptr, "include", "larger", scheme)); });
    report("auc_pairedcomparison", scores, s,
           [&] { auc_pairedcomparison(y, x, s.second.data(), n, nullptr, "include", "larger", 0.95); });
}

} // namespace

int main(int argc, char** argv)
{
    const int cases = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    if (cases < 1) {
        std::fprintf(stderr, "peak_memory: '%s' is not a number of cases\n", argv[1]);
        return 2;
    }
    std::printf("| call | scores | bytes a case at the peak, %d cases |\n|---|---|---|\n", cases);
    for (const auto& [name, shape] :
         {std::pair{"continuous", Shape::Continuous}, std::pair{"100 distinct values", Shape::Tied},
          std::pair{"ascending", Shape::Ascending}})
        reportAll(name, samples::make(shape, static_cast<std::size_t>(cases)));
    return 0;
}
