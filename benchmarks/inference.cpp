#include "vexrocproc/inference.h"
#include "benchmarks.h"
#include "samples.h"
#include "timing.h"
#include "vexrocproc/arraycalls.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using samples::Sample;
using samples::Shape;

/// Stops the program where a call fails: there is nothing to time then.
void require(int result)
{
    if (result != VEXROC_OK)
        std::abort();
}

struct Release {
    void operator()(vexroc_summary* summary) const { vexroc_summary_free(summary); }
    void operator()(vexroc_analysis* analysis) const { vexroc_analysis_free(analysis); }
};
using Summary = std::unique_ptr<vexroc_summary, Release>;

Summary summaryOf(const Sample& s)
{
    vexroc_summary* summary = nullptr;
    require(vexroc_summary_new(&summary));
    Summary owned(summary);
    require(vexroc_summary_add(summary, s.first.data(), s.actual.data(), 1.0, nullptr, VEXROC_NO_WEIGHTS,
                               static_cast<long long>(s.first.size())));
    return owned;
}

vexroc_inference_options defaults()
{
    vexroc_inference_options options{};
    options.struct_size = sizeof options;
    require(vexroc_inference_defaults(&options));
    return options;
}

/// A structure for a result, told its size.
template <class Result>
Result empty()
{
    Result result{};
    result.struct_size = sizeof result;
    return result;
}

int sizeOf(const Sample& s) { return static_cast<int>(s.first.size()); }

void callAuc(const Sample& s)
{
    benchmark::DoNotOptimize(
        auc(s.actual.data(), s.first.data(), sizeOf(s), nullptr, "include", "larger", "nonparam", 0.95));
}

void callRocCurve(const Sample& s)
{
    release_roccurve_res(roccurve(s.actual.data(), s.first.data(), sizeOf(s), nullptr, "include", "larger"));
}

enum class Limits { none, ofShares, all };

/// Lists for every column of operating points, with limits or without.
class Lists {
public:
    Lists(std::size_t rows, Limits limits) : numbers_(rows * 40), counts_(rows * 4), next_(numbers_.data()), rows_(rows)
    {
        columns.struct_size = sizeof columns;
        columns.cut_off = next();
        columns.true_positive = counts_.data();
        columns.false_positive = counts_.data() + rows;
        columns.true_negative = counts_.data() + 2 * rows;
        columns.false_negative = counts_.data() + 3 * rows;
        for (auto* list : {&columns.sensitivity, &columns.specificity, &columns.ppv, &columns.npv, &columns.accuracy,
                           &columns.balanced_accuracy, &columns.f1, &columns.youden})
            fill(*list, limits != Limits::none);
        for (auto* list : {&columns.lr_positive, &columns.lr_negative, &columns.dor, &columns.mcc, &columns.kappa})
            fill(*list, limits == Limits::all);
    }

    vexroc_operating_columns columns{};

private:
    double* next()
    {
        double* const list = next_;
        next_ += rows_;
        return list;
    }
    void fill(double* (&list)[3], bool limits)
    {
        for (double*& numbers : list)
            if (&numbers == &list[0] || limits)
                numbers = next();
    }

    std::vector<double> numbers_;
    std::vector<long long> counts_;
    double* next_;
    std::size_t rows_;
};

/// A piece of work with what it is held against: "x_peer" is how many times as long it takes.
struct Race {
    std::function<void()> work;
    std::function<void()> peer;
};

/// Both in turns, so that what else the machine does meets both; medians.
void run(benchmark::State& state, const Race& race)
{
    std::vector<double> times;
    std::vector<double> peers;
    for (auto _ : state) {
        times.push_back(timing::seconds(race.work));
        peers.push_back(timing::seconds(race.peer));
        state.SetIterationTime(times.back());
    }
    state.counters["x_peer"] = timing::median(times) / timing::median(peers);
}

/// Columns of all operating points, from the cases on, beside roccurve.
void points(benchmark::State& state, Limits limits)
{
    const Sample sample = samples::make(Shape::Continuous, static_cast<std::size_t>(state.range(0)));
    const vexroc_inference_options options = defaults();
    Lists lists(sample.first.size() + 1, limits);
    run(state,
        {[&] {
             const Summary summary = summaryOf(sample);
             require(vexroc_operating_points(summary.get(), &options, nullptr, 0, vexroc_cut_off_count(summary.get()),
                                             &lists.columns));
         },
         [&] { callRocCurve(sample); }});
}

/// An area with its error or interval, from the cases on, beside auc.
void areas(benchmark::State& state, void (*area)(const vexroc_summary*))
{
    const Sample sample = samples::make(Shape::Continuous, static_cast<std::size_t>(state.range(0)));
    run(state, {[&] { area(summaryOf(sample).get()); }, [&] { callAuc(sample); }});
}

void partialArea(const vexroc_summary* summary)
{
    auto result = empty<vexroc_partial_result>();
    require(vexroc_partial_area(summary, nullptr, "fpr", 0.0, 0.1, &result));
}

void precisionRecallArea(const vexroc_summary* summary)
{
    auto result = empty<vexroc_pr_result>();
    require(vexroc_pr_area(summary, nullptr, "integral", &result));
}

/// An interval by 1999 replicates on one thread, beside as many auc calls.
void bootstrap(benchmark::State& state)
{
    const Sample sample = samples::make(Shape::Continuous, static_cast<std::size_t>(state.range(0)));
    vexroc_inference_options options = defaults();
    options.interval = "bootstrap";
    const Summary summary = summaryOf(sample);
    auto result = empty<vexroc_area_result>();
    run(state,
        {[&] { require(vexroc_area_inference(summary.get(), &options, &result)); },
         [&] {
             for (long long i = 0; i < options.replicates; ++i)
                 callAuc(sample);
         }});
}

/// The exact p of 70 and 70 cases without ties, 1e8 steps, beside one of 4e6 of those that the rule "auto" takes.
void exactMannWhitney(benchmark::State& state)
{
    vexroc_inference_options options = defaults();
    options.exact = "always";
    auto result = empty<vexroc_area_result>();
    const auto caseOf = [](std::size_t cases) {
        Sample sample;
        for (std::size_t i = 0; i < cases; ++i) {
            sample.first.push_back(static_cast<double>(i * 7 % cases));
            sample.actual.push_back(static_cast<double>(i % 2));
        }
        return summaryOf(sample);
    };
    const Summary many = caseOf(141);
    const Summary few = caseOf(63);
    const auto p = [&](const Summary& summary) { require(vexroc_area_inference(summary.get(), &options, &result)); };
    run(state, {[&] { p(many); }, [&] { p(few); }});
    p(many);
    state.counters["steps"] = result.exact_steps;
}

/// A record by score and Mann-Whitney beside one by the standard error of Hanley and McNeil.
void recordByScore(benchmark::State& state)
{
    const Sample sample = samples::make(Shape::Continuous, static_cast<std::size_t>(state.range(0)));
    const auto analyze = [&](const char* interval, const char* p) {
        vexroc_analysis* handle = nullptr;
        require(vexroc_analysis_new(&handle));
        const std::unique_ptr<vexroc_analysis, Release> analysis(handle);
        int column = 0;
        require(vexroc_analysis_add_column(handle, "state", sample.actual.data(), sizeOf(sample), &column));
        require(vexroc_analysis_set_column(handle, "state", column));
        require(vexroc_analysis_add_column(handle, "test", sample.first.data(), sizeOf(sample), &column));
        require(vexroc_analysis_set_column(handle, "test", column));
        require(vexroc_analysis_set_number(handle, "roc", 0.0));
        require(vexroc_analysis_set_word(handle, "interval", interval));
        require(vexroc_analysis_set_word(handle, "p_value", p));
        require(vexroc_analysis_run(handle));
    };
    run(state, {[&] { analyze("recommended", "recommended"); }, [&] { analyze("record", "record"); }});
}

template <class Work>
void add(const std::string& name, long long cases, Work work)
{
    benchmark::RegisterBenchmark(name.c_str(), work)->Arg(cases)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace

void registerInference()
{
    for (const auto& [name, limits] : {std::pair{"points/estimates", Limits::none},
                                       {"points/limits_of_shares", Limits::ofShares},
                                       {"points/all_limits", Limits::all}})
        add(name, 100'000, [limits = limits](benchmark::State& state) { points(state, limits); });
    add("partial_area", 1'000'000, [](benchmark::State& state) { areas(state, partialArea); });
    add("pr_area", 1'000'000, [](benchmark::State& state) { areas(state, precisionRecallArea); });
    add("bootstrap", 10'000, bootstrap);
    add("bootstrap", 100'000, bootstrap);
    add("exact_mann_whitney", 141, exactMannWhitney);
    add("record_by_score", 10'000, recordByScore);
}
