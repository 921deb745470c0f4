#include "numeric/ExactSum.h"
#include "vexrocproc/inference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using Numbers = std::vector<double>;
using Bits = std::vector<std::uint64_t>;

struct Row {
    double value, state, weight;
};

/// A summary of rows, added some at a time.
class Cases {
public:
    Cases(const std::vector<Row>& rows, vexroc_weights kind, std::size_t piece = 1000)
    {
        EXPECT_EQ(vexroc_summary_new(&summary_), VEXROC_OK);
        for (std::size_t first = 0; first < rows.size(); first += piece) {
            Numbers values, states, weights;
            for (std::size_t i = first; i < std::min(rows.size(), first + piece); ++i) {
                values.push_back(rows[i].value);
                states.push_back(rows[i].state);
                weights.push_back(rows[i].weight);
            }
            EXPECT_EQ(vexroc_summary_add(summary_, values.data(), states.data(), 1.0,
                                         kind == VEXROC_NO_WEIGHTS ? nullptr : weights.data(), kind,
                                         std::ssize(values)),
                      VEXROC_OK)
                << vexroc_last_error();
        }
    }
    ~Cases() { vexroc_summary_free(summary_); }
    Cases(const Cases&) = delete;
    Cases& operator=(const Cases&) = delete;

    [[nodiscard]] const vexroc_summary* get() const { return summary_; }
    [[nodiscard]] int ask(const vexroc_inference_options& options, vexroc_area_result& result) const
    {
        result = {};
        result.struct_size = sizeof result;
        return vexroc_area_inference(summary_, &options, &result);
    }

private:
    vexroc_summary* summary_ = nullptr;
};

vexroc_inference_options optionsFor(const char* interval)
{
    vexroc_inference_options options{};
    options.struct_size = sizeof options;
    EXPECT_EQ(vexroc_inference_defaults(&options), VEXROC_OK);
    options.interval = interval;
    options.replicates = 1100;
    return options;
}

Bits bitsOf(const vexroc_area_result& r)
{
    Bits bits;
    for (const double x : {r.area, r.std_error, r.lower, r.upper, r.bootstrap_error, r.z, r.p_value, r.freedom, r.u})
        bits.push_back(std::isnan(x) ? 0 : std::bit_cast<std::uint64_t>(x));
    return bits;
}

Bits answer(const Cases& cases, const vexroc_inference_options& options)
{
    vexroc_area_result result;
    EXPECT_EQ(cases.ask(options, result), VEXROC_OK) << vexroc_last_error();
    return bitsOf(result);
}

std::vector<Row> randomRows(std::mt19937& random, bool whole)
{
    std::vector<Row> rows;
    for (unsigned i = 0; i < 40; ++i)
        rows.push_back({static_cast<double>(random() % 12), static_cast<double>(i % 3 == 0),
                        whole ? static_cast<double>(random() % 4) : static_cast<double>(1 + random() % 1000) / 7.0});
    return rows;
}

TEST(ExactSum, LosesNothing)
{
    const auto sumOf = [](const Numbers& terms) {
        ROCALG_920::ExactSum sum;
        for (const double term : terms)
            sum.add(term);
        return sum.value();
    };
    EXPECT_EQ(sumOf({1e308, 1.0, 5e-324, -1e308, -1.0}), 5e-324);
    EXPECT_EQ(sumOf({1.0, 0x1p-53}), 1.0); // the even one of two
    EXPECT_EQ(sumOf({1.0, 0x1p-53, 5e-324}), 1.0 + 0x1p-52);
    EXPECT_EQ(sumOf({-1.0, 0x1p-54, 0x1p-1000}), std::nextafter(-1.0, 0.0));
    EXPECT_EQ(sumOf({0x1p1023, 0x1p1023}), HUGE_VAL);
    EXPECT_EQ(sumOf({}), 0.0);
}

TEST(AreaCalls, OrderPiecesAndRepeatsChangeNoBit)
{
    std::mt19937 random(3);
    for (int run = 0; run < 20; ++run) {
        const bool whole = run % 2 == 0;
        std::vector<Row> rows = randomRows(random, whole);
        std::vector<Row> repeated;
        for (const Row& row : rows)
            for (int i = 0; whole && i < row.weight; ++i)
                repeated.push_back(row);
        const auto kind = whole ? VEXROC_FREQUENCY_WEIGHTS : VEXROC_PROBABILITY_WEIGHTS;
        const vexroc_inference_options options = optionsFor(whole ? "bca" : "logit");
        const Bits expected = answer(Cases(rows, kind), options);
        std::ranges::shuffle(rows, random);
        EXPECT_EQ(answer(Cases(rows, kind, 1 + random() % 9), options), expected);
        if (whole) {
            EXPECT_EQ(answer(Cases(repeated, VEXROC_NO_WEIGHTS, 3), options), expected);
        }
    }
}

/// And weights are scaled at will.
TEST(AreaCalls, EqualWeightsLeaveDeLongsVariance)
{
    std::mt19937 random(5);
    std::vector<Row> rows = randomRows(random, false);
    vexroc_inference_options options = optionsFor("wald-delong");
    options.p_method = "wald";
    Bits weighted = answer(Cases(rows, VEXROC_PROBABILITY_WEIGHTS), options);
    for (Row& row : rows)
        row.weight *= 0x1p-700;
    EXPECT_EQ(answer(Cases(rows, VEXROC_PROBABILITY_WEIGHTS), options), weighted);
    for (Row& row : rows)
        row.weight = 0.37;
    weighted = answer(Cases(rows, VEXROC_PROBABILITY_WEIGHTS), options);
    weighted.back() = 0; // U is of pairs, and missing with weights
    Bits counted = answer(Cases(rows, VEXROC_NO_WEIGHTS), options);
    counted.back() = 0;
    EXPECT_EQ(weighted, counted);
}

TEST(AreaCalls, ReplicatesComeInAnyPieces)
{
    std::mt19937 random(7);
    const Cases cases(randomRows(random, false), VEXROC_NO_WEIGHTS);
    vexroc_inference_options options = optionsFor("bca");
    const Bits expected = answer(cases, options);
    options.parallel = [](int pieces, void (*piece)(void*, int), void* work, void*) {
        for (int i = pieces; i-- > 0;)
            piece(work, i);
    };
    EXPECT_EQ(answer(cases, options), expected);

    std::vector<long long> twiceU(1100);
    ASSERT_EQ(vexroc_bootstrap_areas(cases.get(), &options, 300, 800, twiceU.data()), VEXROC_OK);
    ASSERT_EQ(vexroc_bootstrap_areas(cases.get(), &options, 0, 300, twiceU.data() + 800), VEXROC_OK);
    vexroc_area_result result{};
    result.struct_size = sizeof result;
    ASSERT_EQ(vexroc_bootstrap_inference(cases.get(), &options, twiceU.data(), 1100, &result), VEXROC_OK);
    EXPECT_EQ(bitsOf(result), expected);

    options.cancel = [](void*) { return 1; };
    EXPECT_EQ(cases.ask(options, result), VEXROC_CANCELLED);
}

TEST(AreaCalls, RefuseWhatCannotBeByName)
{
    std::mt19937 random(9);
    const Cases cases(randomRows(random, false), VEXROC_PROBABILITY_WEIGHTS);
    const auto refusal = [&](void (*change)(vexroc_inference_options&)) {
        vexroc_inference_options options = optionsFor("logit");
        change(options);
        vexroc_area_result result;
        EXPECT_EQ(cases.ask(options, result), VEXROC_INVALID);
        const std::string text = vexroc_last_error();
        return text.substr(0, text.find_first_of(": "));
    };
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.null_area = 1.0; }), "null_area");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.prevalence = 0.0; }), "prevalence");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.cost_ratio = NAN; }), "cost_ratio");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.min_specificity = 2.0; }), "min_specificity");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.replicates = 0; }), "replicates");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.interval = "score"; }), "interval");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.p_method = "mann-whitney"; }), "p_method");
    EXPECT_EQ(refusal([](vexroc_inference_options& o) { o.small_sample = 1; }), "small_sample");
}

} // namespace
