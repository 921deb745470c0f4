#include "benchmarks.h"
#include "host/ColumnRecordIter.h"
#include "host/VexVarList.h"
#include "samples.h"
#include "timing.h"
#include "vexrocproc/RocAlgorithm.h"
#include "vexrocproc/arraycalls.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace {

using ROCALG_920::ROCOutBase;
using ROCALG_920::ROCSetting;
using ROCALG_920::RocAlgorithm;

/// A state column and test variables measured on the same cases.
struct Table {
    std::vector<double> state;
    std::vector<std::vector<double>> tests;

    Table(std::size_t cases, int variables)
    {
        samples::Sample sample = samples::make(samples::Shape::Continuous, cases);
        state = std::move(sample.actual);
        std::mt19937_64 random(7);
        std::normal_distribution<double> normal;
        for (int v = 0; v < variables; ++v) {
            tests.push_back(sample.first);
            for (double& score : tests.back())
                score += normal(random);
        }
    }
    [[nodiscard]] VexCommon_920::ColumnRecordIter records() const
    {
        std::vector<std::span<const double>> columns{state};
        columns.insert(columns.end(), tests.begin(), tests.end());
        return VexCommon_920::ColumnRecordIter(std::move(columns));
    }
};

/// Runs the analysis of all test variables; stops the program when it does not succeed.
void analyze(const Table& table, ROCConst_920::ComparisonType comparison, bool curves,
             std::vector<double>* areas = nullptr)
{
    VexXML_920::VexVarList variables;
    variables.AddTwoValued("state");
    for (std::size_t v = 0; v < table.tests.size(); ++v)
        variables.AddContinuous("test " + std::to_string(v));
    std::vector<int> testVars(table.tests.size());
    std::iota(testVars.begin(), testVars.end(), 1);
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars(testVars);
    setting.setComparisonType(comparison);
    setting.setNeedROC(curves);

    RocAlgorithm algorithm(setting, variables);
    VexCommon_920::ColumnRecordIter records = table.records();
    if (!algorithm.BuildModel(records).IsOK())
        std::abort();
    if (areas != nullptr)
        for (const ROCOutBase* record : algorithm.GetOutputStats()->getROCBaseStats())
            areas->push_back(record->getArea());
}

auc_res areaOf(const Table& table, std::size_t v)
{
    return auc(table.state.data(), table.tests[v].data(), static_cast<int>(table.state.size()), nullptr, "include",
               "larger", "nonparam", 0.95);
}

void callOneByOne(const Table& table)
{
    for (std::size_t v = 0; v < table.tests.size(); ++v) {
        const roccurve_res curve = roccurve(table.state.data(), table.tests[v].data(),
                                            static_cast<int>(table.state.size()), nullptr, "include", "larger");
        benchmark::DoNotOptimize(curve.rows);
        release_roccurve_res(curve);
        benchmark::DoNotOptimize(areaOf(table, v));
    }
}

/// The facade and the calls give the same areas to the bit; otherwise there is nothing to time.
void checkSameAreas(const Table& table)
{
    std::vector<double> areas;
    analyze(table, ROCConst_920::NoComparison, true, &areas);
    for (std::size_t v = 0; v < areas.size(); ++v)
        if (areas[v] != areaOf(table, v).area)
            std::abort();
}

/// Curves and areas of ten test variables; "x_calls" is the time of ten roccurve and auc calls over that of the run.
void curvesOfTenTests(benchmark::State& state)
{
    const Table table(1'000'000, 10);
    checkSameAreas(table);
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(timing::seconds([&] { analyze(table, ROCConst_920::NoComparison, true); }));
        state.SetIterationTime(times.back());
    }
    state.counters["x_calls"] = timing::medianSeconds(5, [&] { callOneByOne(table); }) / timing::median(times);
}

/// 190 paired comparisons; "ns_per_cell" is the time per case and variable.
void pairsOfTwentyTests(benchmark::State& state)
{
    const Table table(100'000, 20);
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(timing::seconds([&] { analyze(table, ROCConst_920::PairedComparison, false); }));
        state.SetIterationTime(times.back());
    }
    const double cells = static_cast<double>(table.state.size() * table.tests.size());
    state.counters["ns_per_cell"] = timing::median(times) / cells * 1e9;
}

} // namespace

void registerFacade()
{
    benchmark::RegisterBenchmark("facade/curves_of_10_tests/1000000", curvesOfTenTests)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("facade/pairs_of_20_tests/100000", pairsOfTwentyTests)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}
