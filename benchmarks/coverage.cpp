// How often the intervals of an area hold the true one: draws from two normal distributions of equal spread.
//
//     coverage [--draws N] > docs/coverage.csv     all settings, 20,000 draws each: about a minute
//     coverage --check                             exits with 1 when "score" covers other than it should
#include "vexrocproc/inference.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string_view>
#include <vector>

namespace {

struct Setting {
    double area;
    int positive;
    int negative;
    double distance;   ///< of the means, in standard deviations: sqrt(2) times the normal quantile of the area
    double scoreHolds; ///< per cent, of 20,000 draws made elsewhere, by other code
};
constexpr std::array settings{
    Setting{0.7, 20, 20, 0.7416143, 95.9},   Setting{0.7, 50, 50, 0.7416143, 95.4},
    Setting{0.7, 20, 200, 0.7416143, 95.9},  Setting{0.9, 20, 20, 1.8123876, 97.0},
    Setting{0.9, 50, 50, 1.8123876, 96.5},   Setting{0.9, 20, 200, 1.8123876, 97.4},
    Setting{0.97, 20, 20, 2.6598583, 97.4},  Setting{0.97, 50, 50, 2.6598583, 97.9},
    Setting{0.97, 20, 200, 2.6598583, 98.2},
};
constexpr std::array intervals{"wald", "wald-delong", "logit", "newcombe", "score"};

void require(int result)
{
    if (result == VEXROC_OK)
        return;
    std::fprintf(stderr, "coverage: %s\n", vexroc_last_error());
    std::exit(2);
}

struct Tally {
    int below = 0; ///< the truth is below the lower limit
    int above = 0;
    double length = 0.0;
};

class Study {
public:
    Study(const Setting& setting, std::uint64_t seed) : setting_(setting), random_(seed)
    {
        states_.assign(static_cast<std::size_t>(setting.positive), 1.0);
        states_.resize(static_cast<std::size_t>(setting.positive + setting.negative), 0.0);
        values_.resize(states_.size());
    }
    void draw(std::array<Tally, intervals.size()>& tallies)
    {
        for (std::size_t i = 0; i < values_.size(); ++i)
            values_[i] = normal_(random_) + (states_[i] == 1.0 ? setting_.distance : 0.0);
        vexroc_summary* cases = nullptr;
        require(vexroc_summary_new(&cases));
        require(vexroc_summary_add(cases, values_.data(), states_.data(), 1.0, nullptr, VEXROC_NO_WEIGHTS,
                                   static_cast<long long>(values_.size())));
        for (std::size_t i = 0; i < intervals.size(); ++i)
            count(*cases, intervals[i], tallies[i]);
        vexroc_summary_free(cases);
    }

private:
    void count(const vexroc_summary& cases, const char* interval, Tally& tally) const
    {
        vexroc_inference_options options{};
        options.struct_size = sizeof options;
        require(vexroc_inference_defaults(&options));
        options.interval = interval;
        options.p_method = "wald";
        vexroc_area_result found{};
        found.struct_size = sizeof found;
        require(vexroc_area_inference(&cases, &options, &found));
        tally.below += setting_.area < found.lower;
        tally.above += setting_.area > found.upper;
        tally.length += found.upper - found.lower;
    }

    const Setting& setting_;
    std::mt19937_64 random_;
    std::normal_distribution<double> normal_;
    std::vector<double> states_;
    std::vector<double> values_;
};

std::array<Tally, intervals.size()> talliesOf(const Setting& setting, int draws)
{
    std::array<Tally, intervals.size()> tallies{};
    Study study(setting, 20240131);
    for (int i = 0; i < draws; ++i)
        study.draw(tallies);
    return tallies;
}

double coverageOf(const Tally& tally, int draws) { return 100.0 * (draws - tally.below - tally.above) / draws; }

int check()
{
    constexpr int draws = 10000;
    bool agrees = true;
    for (const std::size_t i : {std::size_t{0}, std::size_t{4}, std::size_t{8}}) {
        const double holds = coverageOf(talliesOf(settings[i], draws).back(), draws);
        std::printf("area %g, %d and %d cases: %.1f of 100, expected %.1f\n", settings[i].area, settings[i].positive,
                    settings[i].negative, holds, settings[i].scoreHolds);
        agrees = agrees && std::abs(holds - settings[i].scoreHolds) <= 0.5;
    }
    return agrees ? 0 : 1;
}

void writeAll(int draws)
{
    std::puts("area,positive,negative,interval,coverage,truth_below,truth_above,mean_length");
    for (const Setting& setting : settings) {
        const auto tallies = talliesOf(setting, draws);
        for (std::size_t i = 0; i < intervals.size(); ++i)
            std::printf("%g,%d,%d,%s,%.2f,%.2f,%.2f,%.4f\n", setting.area, setting.positive, setting.negative,
                        intervals[i], coverageOf(tallies[i], draws), 100.0 * tallies[i].below / draws,
                        100.0 * tallies[i].above / draws, tallies[i].length / draws);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::string_view(argv[1]) == "--check")
        return check();
    const bool hasDraws = argc == 3 && std::string_view(argv[1]) == "--draws";
    const int draws = hasDraws ? std::atoi(argv[2]) : 20000;
    if ((argc > 1 && !hasDraws) || draws < 1) {
        std::fputs("usage: coverage [--draws N | --check]\n", stderr);
        return 2;
    }
    writeAll(draws);
    return 0;
}
