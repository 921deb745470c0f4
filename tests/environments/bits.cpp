// Prints what all calls and runs say about made-up samples, as digests of the samples, of the answers of the specified
// calls and runs, and of inference.h. The same bits must come from every compiler, level of optimisation and processor.

#include "tests/driver/analyses.h"
#include "tests/support/calls.h"
#include "vexrocproc/inference.h"

#include <array>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace {

using namespace roctest;

/// FNV-1a over the words of numbers.
struct Digest {
    std::uint64_t state = 0xCBF29CE484222325u;
    std::size_t numbers = 0;

    void add(double number)
    {
        const std::uint64_t word = Exact{number}.key();
        for (int shift = 0; shift < 64; shift += 8)
            state = (state ^ (word >> shift & 0xFF)) * 0x100000001B3u;
        ++numbers;
    }
    void add(std::span<const double> list)
    {
        for (const double number : list)
            add(number);
    }
    void add(const Numbers& list)
    {
        for (const Exact& number : list)
            add(number.value);
    }
    void print(const char* name) const { std::printf("%s %016" PRIx64 " of %zu numbers\n", name, state, numbers); }
};

constexpr Words words[] = {
    {"include", "larger", "davis-goadrich", "nonparam"},
    {"exclude", "larger", "keilwagen", "bi-negative"},
    {"include", "smaller", "keilwagen", "nonparam"},
    {"exclude", "smaller", "davis-goadrich", "bi-negative"},
};

void addCalls(Digest& samples, Digest& answers)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 200; ++seed) {
            const Sample sample = drawSample(shape, seed, seed == 200 ? 5'000 : sizeFor(seed));
            samples.add(sample.states);
            samples.add(sample.values);
            samples.add(sample.others);
            answers.add(everything(sample, words[seed % 4]));
        }
}

void addRuns(Digest& answers)
{
    HostData data = analysisData(400);
    for (const Analysis& analysis : analyses())
        answers.add(numbers(analyse(settingOf(analysis), data)));
}

using SummaryOwner = std::unique_ptr<vexroc_summary, decltype(&vexroc_summary_free)>;

void require(int result)
{
    if (result == VEXROC_OK)
        return;
    std::fprintf(stderr, "%s\n", vexroc_last_error());
    std::exit(EXIT_FAILURE);
}

SummaryOwner summaryOf(const Sample& sample, bool weighted)
{
    vexroc_summary* made = nullptr;
    require(vexroc_summary_new(&made));
    SummaryOwner summary(made, vexroc_summary_free);
    std::vector<double> weights;
    for (std::size_t i = 0; i < sample.states.size(); ++i)
        weights.push_back(static_cast<double>(1 + i * 37 % 101) / 7.0);
    require(vexroc_summary_add(made, sample.values.data(), sample.states.data(), 1.0,
                               weighted ? weights.data() : nullptr,
                               weighted ? VEXROC_PROBABILITY_WEIGHTS : VEXROC_NO_WEIGHTS, sample.size()));
    return summary;
}

template <class Result, class Call, class... Arguments>
Result resultOf(Call call, Arguments... arguments)
{
    Result result{};
    result.struct_size = sizeof result;
    require(call(arguments..., &result));
    return result;
}

/// What inference.h says of one summary, call by call.
class Inference {
public:
    Inference(const vexroc_summary* summary, unsigned seed, Digest& answers) : summary_(summary), answers_(answers)
    {
        options_.struct_size = sizeof options_;
        require(vexroc_inference_defaults(&options_));
        constexpr std::array alternatives{"two-sided", "greater", "less"};
        options_.alternative = alternatives[seed % alternatives.size()];
        options_.smaller_is_positive = seed % 2 == 0;
        options_.exclude_cut_off = seed % 4 < 2;
        options_.uncorrected = seed % 3 == 0;
        options_.replicates = 79;
        options_.seed = seed;
    }

    void addArea(const char* interval, const char* p)
    {
        options_.interval = interval;
        options_.p_method = p;
        options_.small_sample = std::string_view(interval) == "score"; // counts where p is by wald
        const auto r = resultOf<vexroc_area_result>(vexroc_area_inference, summary_, &options_);
        add({r.area, r.std_error, r.lower, r.upper, r.bootstrap_error, r.z, r.p_value, r.log10_p, r.freedom, r.u});
    }
    void addPartialArea(const char* interval, const char* rate)
    {
        options_.interval = interval;
        const auto r = resultOf<vexroc_partial_result>(vexroc_partial_area, summary_, &options_, rate, 0.125, 0.75);
        add({r.area, r.std_error, r.lower, r.upper, r.standardized, r.standardized_error, r.standardized_lower,
             r.standardized_upper, r.bootstrap_error});
    }
    void addPrecisionRecallArea(const char* interval, const char* rule)
    {
        options_.interval = interval;
        const auto r = resultOf<vexroc_pr_result>(vexroc_pr_area, summary_, &options_, rule);
        add({r.area, r.lower, r.upper, r.prevalence, r.lowest, r.bootstrap_error});
    }
    void addBest(const char* criterion)
    {
        const auto r = resultOf<vexroc_best_result>(vexroc_best_cut_offs, summary_, &options_, criterion, 0LL,
                                                    static_cast<double*>(nullptr));
        add({static_cast<double>(r.count), r.value});
    }
    void addRate(const char* interval, const char* criterion)
    {
        options_.interval = interval;
        const auto r = resultOf<vexroc_rate_result>(vexroc_rate_at, summary_, &options_, criterion);
        add({r.reached, r.cut_off, r.interpolated, r.lower, r.upper, r.std_error});
    }
    void addPoints(const char* proportion, double prevalence)
    {
        options_.proportion = proportion;
        options_.prevalence = prevalence;
        const auto rows = static_cast<std::size_t>(vexroc_cut_off_count(summary_));
        std::vector<double> numbers(rows * 40);
        vexroc_operating_columns columns{};
        columns.struct_size = sizeof columns;
        std::size_t lists = 0;
        for (auto* estimate : {&columns.sensitivity, &columns.specificity, &columns.ppv, &columns.npv,
                               &columns.lr_positive, &columns.lr_negative, &columns.dor, &columns.accuracy,
                               &columns.balanced_accuracy, &columns.f1, &columns.mcc, &columns.youden, &columns.kappa})
            for (double*& list : *estimate)
                list = numbers.data() + rows * lists++;
        columns.cut_off = numbers.data() + rows * lists;
        require(vexroc_operating_points(summary_, &options_, nullptr, 0, static_cast<long long>(rows), &columns));
        answers_.add(std::span<const double>(numbers));
    }

private:
    void add(std::initializer_list<double> numbers)
    {
        answers_.add(std::span<const double>(numbers.begin(), numbers.size()));
    }

    const vexroc_summary* summary_;
    Digest& answers_;
    vexroc_inference_options options_{};
};

void addCounted(Inference ask)
{
    for (const char* interval : {"score", "newcombe", "logit", "wald", "wald-delong", "bootstrap", "bca"})
        for (const char* p : {"mann-whitney", "wald"})
            ask.addArea(interval, p);
    for (const char* rate : {"fpr", "tpr"})
        for (const char* interval : {"logit", "wald", "bca"})
            ask.addPartialArea(interval, rate);
    for (const char* rule : {"integral", "step", "trapezoid"})
        for (const char* interval : {"logit", "binomial", "bca"})
            ask.addPrecisionRecallArea(interval, rule);
    for (const char* criterion : {"youden", "closest", "accuracy", "cost", "f1", "mcc", "equal", "sensitivity=0.9"})
        ask.addBest(criterion);
    for (const char* interval : {"btii", "bootstrap"})
        ask.addRate(interval, "specificity=0.75");
    ask.addPoints("wilson", std::nan(""));
}

void addWeighted(Inference ask)
{
    ask.addArea("logit", "wald");
    ask.addPoints("wilson", 0.125);
    for (const char* rule : {"integral", "step", "trapezoid"})
        ask.addPrecisionRecallArea("logit", rule);
}

void addInference(Digest& answers)
{
    constexpr unsigned seeds = 6;
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= seeds; ++seed) {
            const Sample sample = drawSample(shape, seed, seed == seeds ? 200 : sizeFor(seed));
            const SummaryOwner counted = summaryOf(sample, false);
            const SummaryOwner weighted = summaryOf(sample, true);
            addCounted({counted.get(), seed, answers});
            if (seed == 1) // quantiles of Beta take their time
                Inference(counted.get(), seed, answers).addPoints("exact", 0.125);
            addWeighted({weighted.get(), seed, answers});
        }
}

} // namespace

int main()
{
    Digest samples;
    Digest answers;
    Digest inference;
    addCalls(samples, answers);
    addRuns(answers);
    samples.print("samples");
    addInference(inference);
    answers.print("answers");
    inference.print("inference");
    return 0;
}
