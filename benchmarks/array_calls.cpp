#include "benchmarks.h"
#include "samples.h"
#include "timing.h"
#include "vexrocproc/arraycalls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

using samples::Sample;
using samples::Shape;

void callAuc(const Sample& s, int n)
{
    benchmark::DoNotOptimize(auc(s.actual.data(), s.first.data(), n, nullptr, "include", "larger", "nonparam", 0.95));
}

void callRocCurve(const Sample& s, int n)
{
    const roccurve_res res = roccurve(s.actual.data(), s.first.data(), n, nullptr, "include", "larger");
    benchmark::DoNotOptimize(res.rows);
    release_roccurve_res(res);
}

void callPrCurve(const Sample& s, int n)
{
    const prcurve_res res = prcurve(s.actual.data(), s.first.data(), n, nullptr, "include", "larger", "davis-goadrich");
    benchmark::DoNotOptimize(res.rows);
    release_prcurve_res(res);
}

void callPaired(const Sample& s, int n)
{
    benchmark::DoNotOptimize(
        auc_pairedcomparison(s.actual.data(), s.first.data(), s.second.data(), n, nullptr, "include", "larger", 0.95));
}

/// The area by one std::sort of the observations and a sweep: what a plain implementation pays at least.
double areaBySorting(const Sample& s)
{
    std::vector<std::pair<double, bool>> observations(s.first.size());
    for (std::size_t i = 0; i < observations.size(); ++i)
        observations[i] = {s.first[i], s.actual[i] == 1.0};
    std::ranges::sort(observations, {}, &std::pair<double, bool>::first);

    std::int64_t negatives = 0;
    std::int64_t positives = 0;
    std::int64_t twiceOrdered = 0;
    for (auto run = observations.begin(); run != observations.end();) {
        const auto end = std::find_if(run, observations.end(), [&](const auto& o) { return o.first != run->first; });
        const std::int64_t c = std::count_if(run, end, [](const auto& o) { return o.second; });
        const std::int64_t a = (end - run) - c;
        twiceOrdered += c * (2 * negatives + a);
        negatives += a;
        positives += c;
        run = end;
    }
    return static_cast<double>(twiceOrdered) / static_cast<double>(2 * negatives * positives);
}

/// Both ways give the same area to the bit; otherwise there is nothing to time.
void checkSameArea(const Sample& s, int n)
{
    if (auc(s.actual.data(), s.first.data(), n, nullptr, "include", "larger", "nonparam", 0.95).area
        != areaBySorting(s))
        std::abort();
}

void run(benchmark::State& state, void (*call)(const Sample&, int), Shape shape)
{
    const Sample sample = samples::make(shape, static_cast<std::size_t>(state.range(0)));
    const int n = static_cast<int>(sample.first.size());
    checkSameArea(sample, n);
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(timing::seconds([&] { call(sample, n); }));
        state.SetIterationTime(times.back());
    }
    const double median = timing::median(times);
    state.counters["ns_per_case"] = median / n * 1e9;
    state.counters["x_sort"] =
        timing::medianSeconds(3, [&] { benchmark::DoNotOptimize(areaBySorting(sample)); }) / median;
}

/// From 1e3 cases to the largest number, ten times as many at each step.
void registerCall(const std::string& name, void (*call)(const Sample&, int), std::int64_t largestContinuous)
{
    const std::pair<const char*, Shape> shapes[] = {
        {"continuous", Shape::Continuous}, {"tied", Shape::Tied}, {"ascending", Shape::Ascending}};
    for (const auto& [shapeName, shape] : shapes)
        benchmark::RegisterBenchmark((name + "/" + shapeName).c_str(),
                                     [call, shape = shape](benchmark::State& state) { run(state, call, shape); })
            ->RangeMultiplier(10)
            ->Range(1'000, shape == Shape::Continuous ? largestContinuous : 10'000'000)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
}

} // namespace

void registerArrayCalls()
{
    registerCall("auc", callAuc, 100'000'000);
    registerCall("roccurve", callRocCurve, 100'000'000);
    registerCall("prcurve", callPrCurve, 10'000'000);
    registerCall("auc_pairedcomparison", callPaired, 10'000'000);
}
