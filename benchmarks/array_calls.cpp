#include "benchmarks.h"
#include "samples.h"
#include "timing.h"
#include "vexrocproc/arraycalls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
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
    const prcurve_res res =
        prcurve(s.actual.data(), s.first.data(), n, nullptr, "include", "larger", "davis-goadrich");
    benchmark::DoNotOptimize(res.rows);
    release_prcurve_res(res);
}

void callPaired(const Sample& s, int n)
{
    benchmark::DoNotOptimize(auc_pairedcomparison(s.actual.data(), s.first.data(), s.second.data(), n, nullptr,
                                                  "include", "larger", 0.95));
}

/// What any method that sorts observations pays at least: a copy and one std::sort of (score, state) pairs.
void sortObservations(const Sample& s)
{
    std::vector<std::pair<double, double>> observations(s.first.size());
    for (std::size_t i = 0; i < observations.size(); ++i)
        observations[i] = {s.first[i], s.actual[i]};
    std::ranges::sort(observations, {}, &std::pair<double, double>::first);
    benchmark::DoNotOptimize(observations.data());
}

void run(benchmark::State& state, void (*call)(const Sample&, int), Shape shape)
{
    const Sample sample = samples::make(shape, static_cast<std::size_t>(state.range(0)));
    const int n = static_cast<int>(sample.first.size());
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(timing::seconds([&] { call(sample, n); }));
        state.SetIterationTime(times.back());
    }
    const double median = timing::median(times);
    state.counters["ns_per_case"] = median / n * 1e9;
    state.counters["x_sort"] = timing::medianSeconds(5, [&] { sortObservations(sample); }) / median;
}

void registerCall(const std::string& name, void (*call)(const Sample&, int))
{
    const std::pair<const char*, Shape> shapes[] = {
        {"continuous", Shape::Continuous}, {"tied", Shape::Tied}, {"ascending", Shape::Ascending}};
    for (const auto& [shapeName, shape] : shapes)
        benchmark::RegisterBenchmark((name + "/" + shapeName).c_str(),
                                     [call, shape = shape](benchmark::State& state) { run(state, call, shape); })
            ->RangeMultiplier(10)
            ->Range(1'000, 10'000'000)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
}

} // namespace

void registerArrayCalls()
{
    registerCall("auc", callAuc);
    registerCall("roccurve", callRocCurve);
    registerCall("prcurve", callPrCurve);
    registerCall("auc_pairedcomparison", callPaired);
}
