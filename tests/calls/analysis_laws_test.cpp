// What the settings of a run mean, as laws between runs: equal to the bit.

#include "tests/calls/Analysis.h"
#include "tests/support/calls.h"
#include "vexrocproc/inference.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace {

using namespace roctest;
using testing::HasSubstr;
using Columns = std::vector<std::vector<double>>; ///< the state, then the tests

/// Ties, few and many values, states 0, 1 and now and then 2, gaps where asked for.
Columns draw(unsigned seed, std::size_t rows, double gaps)
{
    Random random(seed);
    std::uniform_real_distribution<> uniform(0, 1);
    std::normal_distribution<> normal;
    Columns columns(4, std::vector<double>(rows));
    for (std::size_t row = 0; row < rows; ++row) {
        const double state = columns[0][row] = uniform(random) < 0.06 ? 2 : uniform(random) < 0.4;
        const double shared = normal(random) + (state == 1);
        columns[1][row] = shared + normal(random);
        columns[2][row] = -std::floor(3 * shared + normal(random));
        columns[3][row] = std::floor(2 * normal(random));
        for (std::size_t test = 1; test < 4; ++test)
            if (uniform(random) < gaps)
                columns[test][row] = missing;
    }
    return columns;
}

struct Ask {
    const char* comparison = "paired";
    const char* cases = "pairwise";
    const char* interval = "wald";
    std::vector<const char*> directions = {}; ///< of the tests
    std::vector<std::size_t> tests = {1, 2, 3};
    double curves = 1;
};

/// A run over columns, which outlive it.
struct Asked : Analysis {
    Asked(const Columns& columns, const Ask& ask, const std::vector<double>& counts = {})
    {
        part("state", column("state", columns[0]));
        for (const std::size_t test : ask.tests) {
            const int index = column("test", columns[test]);
            part("test", index);
            if (!ask.directions.empty() && ask.directions[test - 1] != nullptr)
                expectOk(vexroc_analysis_set_direction(handle, index, ask.directions[test - 1]));
        }
        if (!counts.empty())
            part("count", column("count", counts));
        expectOk(vexroc_analysis_add_negative(handle, 0));
        word("comparison", ask.comparison);
        word("cases", ask.cases);
        word("interval", ask.interval);
        number("roc", ask.curves);
        number("pr", ask.curves);
        run();
    }
    /// But for the direction.
    [[nodiscard]] Numbers area(int i) const
    {
        const vexroc_record r = record(i);
        return {{r.area},
                {r.std_error},
                {r.significance},
                {r.ci_lower},
                {r.ci_upper},
                {r.gini},
                {r.ks_maximum},
                {r.p_value},
                {r.log10_p},
                {double(r.positive)},
                {double(r.ties)},
                {double(r.negative)},
                {double(r.distinct_values)},
                {double(r.curve_rows)}};
    }
    [[nodiscard]] Numbers difference(int i) const
    {
        const vexroc_comparison d = comparison(i);
        return {{d.difference}, {d.std_error},       {d.z},           {d.significance},     {d.ci_lower},
                {d.ci_upper},   {d.p_value},         {d.log10_p},     {double(d.positive)}, {double(d.negative)},
                {d.first_area}, {d.first_std_error}, {d.second_area}, {d.second_std_error}};
    }
    [[nodiscard]] Numbers curve(int i) const
    {
        std::vector<double> rows(static_cast<std::size_t>(record(i).curve_rows));
        std::vector<double> sensitivity(rows.size());
        std::vector<double> specificity(rows.size());
        expectOk(vexroc_analysis_curve(handle, i, rows.data(), sensitivity.data(), specificity.data()));
        Numbers all;
        for (std::size_t row = 0; row < rows.size(); ++row)
            all.insert(all.end(), {{rows[row]}, {sensitivity[row]}, {specificity[row]}});
        return all;
    }
    [[nodiscard]] std::vector<std::string> remarks() const
    {
        std::vector<std::string> codes;
        for (int i = 0; i < vexroc_analysis_remark_count(handle); ++i)
            codes.emplace_back(get<vexroc_remark>(vexroc_analysis_remark, i).code);
        return codes;
    }
};

Columns negated(Columns columns, std::size_t test)
{
    for (double& value : columns[test])
        value = -value;
    return columns;
}

Columns onRowsWhere(const Columns& columns, auto&& holds)
{
    Columns kept(columns.size());
    for (std::size_t row = 0; row < columns[0].size(); ++row)
        for (std::size_t c = 0; holds(row) && c < columns.size(); ++c)
            kept[c].push_back(columns[c][row]);
    return kept;
}

template <class Law>
void onSamples(Law&& law)
{
    for (unsigned seed = 0; seed < 12; ++seed) {
        SCOPED_TRACE(seed);
        law(draw(seed, 15 + 40 * seed, 0.1 * (seed % 3)), seed);
    }
}

TEST(AnalysisLaws, ATestOfItsOwnDirectionIsThatTestNegated)
{
    onSamples([](const Columns& columns, unsigned seed) {
        const char* const cases = seed % 2 == 0 ? "pairwise" : "complete";
        const char* const interval = seed % 4 < 2 ? "wald" : "record";
        const Asked own(columns, {.cases = cases, .interval = interval, .directions = {nullptr, "smaller", "larger"}});
        const Columns turned = negated(columns, 2);
        const Asked same(turned, {.cases = cases, .interval = interval});
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(own.area(i), same.area(i)) << i;
            EXPECT_EQ(own.difference(i), same.difference(i)) << i;
        }
        EXPECT_EQ(own.record(1).smaller_is_positive, 1);
        const Asked alone(columns, {.comparison = "none", .directions = {nullptr, "smaller"}, .tests = {2}});
        if (seed % 4 == 0) { // pairwise, wald: a record never changes because another question is asked too
            EXPECT_EQ(own.area(1), alone.area(0));
            EXPECT_EQ(own.curve(1), alone.curve(0));
        }
    });
}

TEST(AnalysisLaws, APairIsARunOfTwoTestsOnTheirCompleteRows)
{
    onSamples([](const Columns& columns, unsigned seed) {
        const Asked all(columns, {.interval = "wald-delong", .curves = double(seed % 2)});
        int pair = 0;
        for (const auto& [a, b] : {std::pair{1, 2}, {1, 3}, {2, 3}}) {
            const Columns rows = onRowsWhere(columns, [&, a = a, b = b](std::size_t row) {
                return columns[0][row] != 2 && !std::isnan(columns[a][row]) && !std::isnan(columns[b][row]);
            });
            const Numbers expected = numbers(pairedOf({rows[0], rows[a], rows[b]}));
            const vexroc_comparison d = all.comparison(pair);
            EXPECT_EQ((Numbers{{d.z}, {d.significance}, {d.difference}, {d.std_error}, {d.ci_lower}, {d.ci_upper}}),
                      Numbers(expected.end() - 6, expected.end()));
            const Asked two(rows,
                            {.comparison = "paired",
                             .cases = "complete",
                             .interval = "record",
                             .tests = {std::size_t(a), std::size_t(b)},
                             .curves = 0});
            EXPECT_EQ(all.difference(pair++), two.difference(0));
            if (seed % 3 == 0) { // without gaps
                EXPECT_EQ(all.area(a - 1)[1], two.area(0)[1]);
            }
        }
    });
}

TEST(AnalysisLaws, ACountIsAsManyRows)
{
    onSamples([](const Columns& columns, unsigned seed) {
        Random random(seed);
        std::vector<double> counts(columns[0].size());
        Columns repeated(columns.size());
        for (std::size_t row = 0; row < counts.size(); ++row) {
            counts[row] = double(random() % 4);
            for (std::size_t c = 0; c < columns.size(); ++c)
                repeated[c].insert(repeated[c].end(), static_cast<std::size_t>(counts[row]), columns[c][row]);
        }
        const Ask ask{.cases = seed % 2 == 0 ? "pairwise" : "complete", .directions = {nullptr, "smaller", nullptr}};
        const Asked counted(columns, ask, counts);
        const Asked rows(repeated, ask);
        EXPECT_EQ(counted.rows(), rows.rows());
        EXPECT_EQ(counted.recordRows(0), rows.recordRows(0));
        EXPECT_EQ(counted.remarks(), rows.remarks());
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(counted.gap(i + 1), rows.gap(i + 1));
            EXPECT_EQ(counted.area(i), rows.area(i));
            EXPECT_EQ(counted.curve(i), rows.curve(i));
            EXPECT_EQ(counted.difference(i), rows.difference(i));
        }
    });
}

TEST(AnalysisLaws, TiesAreToldWithoutACurve)
{
    onSamples([](const Columns& columns, unsigned /*seed*/) {
        const Asked with(columns, {.comparison = "none"});
        const Asked without(columns, {.comparison = "none", .curves = 0});
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(with.record(i).ties, without.record(i).ties);
        EXPECT_EQ(without.record(2).ties, 1);
        EXPECT_EQ(vexroc_analysis_warning_count(without.handle), 1);
    });
}

TEST(AnalysisLaws, TheBiNegativeErrorOfATestDoesNotHangOnItsNeighbours)
{
    Columns columns{{1, 1, 1, 0, 0, 0}, {3, 5, 4, 1, 2, 4}, {3, 5, missing, 1, 2, 4}};
    const auto stdError = [&](const char* interval, std::vector<std::size_t> tests) {
        Analysis analysis;
        analysis.part("state", analysis.column("state", columns[0]));
        for (const std::size_t test : tests)
            analysis.part("test", analysis.column("test", columns[test]));
        analysis.word("distribution", "bi-negative");
        analysis.word("interval", interval);
        analysis.run();
        EXPECT_STREQ(analysis.record(0).interval,
                     tests.size() == 2 && interval == std::string("record") ? "nonparam" : "bi-negative");
        return analysis.record(0).std_error;
    };
    EXPECT_EQ(stdError("wald", {1, 2}), stdError("wald", {1}));
    EXPECT_EQ(stdError("record", {1}), stdError("wald", {1}));
    EXPECT_NE(stdError("record", {1, 2}), stdError("record", {1})); // the other test's unequal counts
}

TEST(AnalysisLaws, OnlyListedStatesTakePart)
{
    const Columns columns = draw(5, 300, 0.1);
    const Asked listed(columns, {});
    const Columns two = onRowsWhere(columns, [&](std::size_t row) { return columns[0][row] != 2; });
    const Asked all(two, {});
    const auto rows = listed.get<vexroc_rows>(vexroc_analysis_rows);
    EXPECT_EQ(rows.other_state, 300 - std::ssize(two[0]));
    EXPECT_EQ(rows.other_state + rows.positive + rows.negative, rows.read);
    EXPECT_EQ(listed.area(0), all.area(0));
    EXPECT_EQ(listed.difference(2), all.difference(2));
}

TEST(AnalysisLaws, ProgressOfSeveralPartsRisesToOneAndEachPartCanBeCancelled)
{
    struct Seen {
        std::vector<double> shares;
        double stopAt = 2;
    } seen;
    Columns columns = draw(4, 200, 0.2);
    Asked run(columns, {.directions = {"smaller", nullptr, nullptr}});
    const auto note = [](double share, int, void* user) { static_cast<Seen*>(user)->shares.push_back(share); };
    const auto stop = [](void* user) {
        const auto& [shares, stopAt] = *static_cast<Seen*>(user);
        return int(!shares.empty() && shares.back() >= stopAt);
    };
    expectOk(vexroc_analysis_on_progress(run.handle, note, &seen));
    expectOk(vexroc_analysis_on_cancel(run.handle, stop, &seen));
    run.run();
    EXPECT_TRUE(std::is_sorted(seen.shares.begin(), seen.shares.end()));
    EXPECT_EQ(seen.shares.back(), 1.0);
    for (const double stopAt : {0.01, 0.2, 0.4, 0.7, 0.8}) {
        seen = {{}, stopAt};
        EXPECT_EQ(vexroc_analysis_run(run.handle), VEXROC_CANCELLED) << stopAt;
        EXPECT_EQ(vexroc_analysis_record_count(run.handle), 0);
        EXPECT_LT(seen.shares.back(), 1.0);
    }
}

TEST(AnalysisLaws, TheNormalTailGoesOnWhereDoublesEnd)
{
    const struct {
        double z, p, log10;
    } rows[] = {
        // 60 digits
        {0, 1, 0},
        {0.1, 0.92034432544594203266, -0.036049661062642286128},
        {8.125, 4.4736241288882100934e-16, -15.349340507858337305},
        {25, 6.1133934127651218328e-138, -137.21371765533154499},
        {37.5, 9.2107060191639096877e-308, -307.03570707898065654},
        {40, 0, -349.13597646368186089},
        {-300, 0, -19545.826871664927192},
        {std::numeric_limits<double>::infinity(), 0, -std::numeric_limits<double>::infinity()},
    };
    for (const auto& [z, p, log10] : rows) {
        double found = 0;
        EXPECT_NEAR(vexroc_two_sided_p(z, &found), p, 1e-13 * p) << z;
        EXPECT_TRUE(found == log10 || std::abs(found - log10) <= 1e-13 * std::abs(log10)) << z;
    }
    EXPECT_TRUE(std::isnan(vexroc_two_sided_p(missing, nullptr)));
    // Separated cases: nothing is made of a standard error of 0, but for a difference.
    const Columns columns{{1, 1, 0, 0}, {4, 3, 2, 1}, {4, 3, 2, 1}, {1, 2, 3, 4}};
    const Asked run(columns, {});
    EXPECT_TRUE(std::isnan(run.record(0).p_value) && std::isnan(run.record(0).ci_lower));
    EXPECT_EQ(run.comparison(0).p_value, 1);
    EXPECT_EQ(run.comparison(1).p_value, 0);
    EXPECT_EQ(run.comparison(1).z, std::numeric_limits<double>::infinity());
    EXPECT_THAT(run.remarks(),
                testing::ElementsAre("few-cases", "zero-error", "below-chance", "zero-error-of-difference",
                                     "sample-prevalence", "many-comparisons"));
}

/// Runs the pieces of a bootstrap backwards.
void backwards(int pieces, void (*piece)(void*, int), void* work, void* calls)
{
    ++*static_cast<int*>(calls);
    while (pieces-- > 0)
        piece(work, pieces);
}

TEST(AnalysisLaws, ARecordIsWhatIsInferredFromItsSummary)
{
    int batches = 0;
    onSamples([&](const Columns& columns, unsigned seed) {
        constexpr const char* intervals[] = {"score", "newcombe", "logit", "wald-delong", "bootstrap", "bca", "wald"};
        constexpr const char* alternatives[] = {"two-sided", "greater", "less"};
        const char* const interval = intervals[seed % 7];
        const bool byWald = seed % 2 == 0;
        Asked run(columns,
                  {.comparison = seed % 3 == 0 ? "paired" : "none", .directions = {nullptr, "smaller", nullptr}});
        run.word("interval", interval);
        run.word("p_value", byWald ? "wald" : "mann-whitney");
        run.word("alternative", alternatives[seed % 3]);
        run.number("null_area", byWald ? 0.6 : 0.5);
        run.number("replicates", 199);
        run.number("summaries", 1);
        expectOk(vexroc_analysis_set_seed(run.handle, seed));
        expectOk(vexroc_analysis_on_parallel(run.handle, backwards, &batches));
        run.run();
        for (int i = 0; i < 3; ++i) {
            const vexroc_record record = run.record(i);
            vexroc_inference_options options{};
            options.struct_size = sizeof options;
            expectOk(vexroc_inference_defaults(&options));
            options.smaller_is_positive = i == 1;
            options.interval = interval;
            options.p_method = byWald ? "wald" : "mann-whitney";
            options.alternative = alternatives[seed % 3];
            options.null_area = byWald ? 0.6 : 0.5;
            options.replicates = 199;
            options.seed = seed;
            const vexroc_summary* summary = nullptr;
            expectOk(vexroc_analysis_summary(run.handle, i, &summary));
            vexroc_area_result found{};
            found.struct_size = sizeof found;
            expectOk(vexroc_area_inference(summary, &options, &found));
            EXPECT_EQ((Numbers{{record.area},
                               {record.std_error},
                               {record.ci_lower},
                               {record.ci_upper},
                               {record.z},
                               {record.p_value},
                               {record.log10_p},
                               {record.u},
                               {record.bootstrap_error},
                               {record.exact_steps},
                               {record.null_area}}),
                      (Numbers{{found.area},
                               {found.std_error},
                               {found.lower},
                               {found.upper},
                               {found.z},
                               {found.p_value},
                               {found.log10_p},
                               {found.u},
                               {found.bootstrap_error},
                               {found.exact_steps},
                               {found.null_area}}))
                << interval;
            EXPECT_EQ(
                (std::vector<std::string>{record.error, record.interval_rule, record.p_method, record.alternative}),
                (std::vector<std::string>{found.error, found.interval, found.p_method, options.alternative}));
            EXPECT_EQ((std::tuple(record.edge, record.percentile, record.held)),
                      (std::tuple(found.edge, found.percentile, found.held)));
        }
    });
    EXPECT_GT(batches, 0);
}

/// Whole weights make the area and the curve of as many cases; the variance is of the cases that there are.
TEST(AnalysisLaws, AnInverseProbabilityMovesAreaAndCurveAsCountsDo)
{
    onSamples([](const Columns& columns, unsigned seed) {
        Random random(seed);
        std::vector<double> weights(columns[0].size());
        for (double& weight : weights)
            weight = double(random() % 4);
        const Ask ask{.comparison = "none", .interval = "recommended", .directions = {nullptr, "smaller", nullptr}};
        const Asked counted(columns, ask, weights);
        Asked weighted(columns, ask);
        weighted.part("weight", weighted.column("weight", weights));
        weighted.word("weight_kind", "probability");
        weighted.number("summaries", 1);
        weighted.run();
        for (int i = 0; i < 3; ++i) {
            const vexroc_record record = weighted.record(i);
            EXPECT_NEAR(record.area, counted.record(i).area, 1e-15);
            EXPECT_NEAR(record.ks_maximum, counted.record(i).ks_maximum, 1e-15);
            EXPECT_EQ(record.weighted_positive, counted.record(i).positive);
            EXPECT_EQ(weighted.curve(i), counted.curve(i));
            EXPECT_EQ(record.pr_rows, record.curve_rows);
            EXPECT_EQ(weighted.bestCutOff(i, 0).sensitivity, counted.bestCutOff(i, 0).sensitivity);
            EXPECT_EQ((std::vector<std::string>{record.error, record.interval_rule, record.p_method}),
                      (std::vector<std::string>{"weighted", "logit", "wald"}));
            const vexroc_summary* summary = nullptr;
            expectOk(vexroc_analysis_summary(weighted.handle, i, &summary));
            vexroc_inference_options options{};
            options.struct_size = sizeof options;
            expectOk(vexroc_inference_defaults(&options));
            options.smaller_is_positive = i == 1;
            vexroc_area_result found{};
            found.struct_size = sizeof found;
            expectOk(vexroc_area_inference(summary, &options, &found));
            EXPECT_EQ((Numbers{{record.area}, {record.std_error}}), (Numbers{{found.area}, {found.std_error}}));
            if (record.std_error > 0) {
                EXPECT_EQ((Numbers{{record.ci_lower}, {record.p_value}}), (Numbers{{found.lower}, {found.p_value}}));
            }
        }
        EXPECT_THAT(weighted.remarks(), testing::Not(testing::Contains("weight-counts-only")));
    });
}

/// The first test alone has an error; among the cases that the second knows it has none.
TEST(AnalysisLaws, AnAreaOfAPairIsLookedAtWhereItDiffersFromThatOfItsTest)
{
    const Columns columns{{1, 1, 1, 0, 0, 0}, {1, 4, 5, 2, 3, 0}, {missing, 3, 5, 4, 2, 1}};
    const Asked run(columns, {.tests = {1, 2}});
    EXPECT_GT(run.record(0).std_error, 0);
    const std::vector<std::string> codes = run.remarks();
    const auto zero = std::ranges::find(codes, "zero-error") - codes.begin();
    ASSERT_LT(zero, std::ssize(codes));
    EXPECT_THAT(run.get<vexroc_remark>(vexroc_analysis_remark, static_cast<int>(zero)).text,
                testing::HasSubstr("beyond these cases: test and test; "));
}

} // namespace
