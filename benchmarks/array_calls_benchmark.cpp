/// Times the array calls per case, over sizes and shapes of scores, beside one std::sort of the same observations.
/// "x_sort" is how many times faster the call is than that sort, measured in the same run.

#include "samples.h"
#include "vexrocproc/arraycalls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
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
double secondsOfOneSort(const Sample& s)
{
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::pair<double, double>> observations(s.first.size());
    for (std::size_t i = 0; i < observations.size(); ++i)
        observations[i] = {s.first[i], s.actual[i]};
    std::ranges::sort(observations, {}, &std::pair<double, double>::first);
    benchmark::DoNotOptimize(observations.data());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double medianSortSeconds(const Sample& s)
{
    std::vector<double> seconds(5);
    std::ranges::generate(seconds, [&] { return secondsOfOneSort(s); });
    std::ranges::nth_element(seconds, seconds.begin() + 2);
    return seconds[2];
}

void run(benchmark::State& state, void (*call)(const Sample&, int), Shape shape)
{
    const Sample sample = samples::make(shape, static_cast<std::size_t>(state.range(0)));
    const int n = static_cast<int>(sample.first.size());
    std::vector<double> seconds;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        call(sample, n);
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        state.SetIterationTime(seconds.back());
    }
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::ranges::nth_element(seconds, middle);
    state.counters["ns_per_case"] = *middle / n * 1e9;
    state.counters["x_sort"] = medianSortSeconds(sample) / *middle;
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

int main(int argc, char** argv)
{
    registerCall("auc", callAuc);
    registerCall("roccurve", callRocCurve);
    registerCall("prcurve", callPrCurve);
    registerCall("auc_pairedcomparison", callPaired);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
