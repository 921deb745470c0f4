/// Runs auc and roccurve on very many cases and compares the answers with counts made another way: scores are whole
/// numbers of a known range, so that counting them, and adding up the counts, is the definition.
/// Usage: size_check [CASES [DISTINCT]]    16 bytes a case and 8 a possible score, and what the calls take

#include "vexrocproc/arraycalls.h"

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

__extension__ typedef unsigned __int128 Wide;

struct Counts {
    std::uint32_t positives = 0;
    std::uint32_t negatives = 0;
};

struct Cases {
    std::vector<double> states;
    std::vector<double> scores;
    std::vector<Counts> counts; ///< per score
    std::uint64_t positives = 0;
    std::uint64_t negatives = 0;
};

/// One case in ten is positive; the larger of two scores is taken for it.
Cases draw(std::size_t cases, std::uint32_t distinct)
{
    std::mt19937_64 random(20240131);
    const auto score = [&] { return static_cast<std::uint32_t>((random() >> 32) * distinct >> 32); };
    Cases drawn{std::vector<double>(cases), std::vector<double>(cases), std::vector<Counts>(distinct)};
    for (std::size_t i = 0; i < cases; ++i) {
        const bool positive = random() % 10 == 0;
        const std::uint32_t x = positive ? std::max(score(), score()) : score();
        drawn.states[i] = positive;
        drawn.scores[i] = x;
        ++(positive ? drawn.counts[x].positives : drawn.counts[x].negatives);
        ++(positive ? drawn.positives : drawn.negatives);
    }
    return drawn;
}

double countedArea(const Cases& cases)
{
    Wide twice = 0;
    std::uint64_t below = 0;
    for (const Counts& x : cases.counts) {
        twice += Wide{x.positives} * (2 * below + x.negatives);
        below += x.negatives;
    }
    return static_cast<double>(twice)
        / (2.0 * static_cast<double>(cases.positives) * static_cast<double>(cases.negatives));
}

/// Rows that differ from the counts: the cut-off before score x leaves what is below x on its negative side.
std::size_t wrongRows(const Cases& cases, const roccurve_res& curve)
{
    std::size_t wrong = 0;
    int row = 0;
    Counts below;
    double previous = -1.0;
    const auto check = [&](double cutOff) {
        const double* const r = curve.rows + 3 * static_cast<std::ptrdiff_t>(row++);
        const double specificity = static_cast<double>(below.negatives) / static_cast<double>(cases.negatives);
        const double sensitivity =
            static_cast<double>(cases.positives - below.positives) / static_cast<double>(cases.positives);
        wrong += r[0] != cutOff || r[1] != 1.0 - specificity || r[2] != sensitivity;
    };
    for (std::size_t x = 0; x < cases.counts.size() && row < curve.count; ++x) {
        const Counts& here = cases.counts[x];
        if (here.positives + here.negatives == 0)
            continue;
        const double value = static_cast<double>(x);
        check(row == 0 ? value - 1.0 : (previous + value) * 0.5);
        below = {below.positives + here.positives, below.negatives + here.negatives};
        previous = value;
    }
    check(previous + 1.0);
    return wrong + static_cast<std::size_t>(std::abs(row - curve.count));
}

/// Peak of the whole process in bytes.
double peak()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
}

template <class Call>
auto timed(const char* name, std::size_t cases, Call&& call)
{
    const double before = peak();
    const auto start = std::chrono::steady_clock::now();
    const auto result = call();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%s: %.1f s, the process grew by %.1f bytes a case beyond its earlier peak\n", name, seconds.count(),
                (peak() - before) / static_cast<double>(cases));
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    const long cases = argc > 1 ? std::atol(argv[1]) : 100'000'000;
    const long distinct = argc > 2 ? std::atol(argv[2]) : 300'000'000;
    if (cases < 3 || cases > 2'147'483'647 || distinct < 2 || distinct > 4'294'967'295) {
        std::fprintf(stderr, "size_check: CASES is 3 to 2147483647, DISTINCT 2 to 4294967295\n");
        return 2;
    }
    const Cases drawn = draw(static_cast<std::size_t>(cases), static_cast<std::uint32_t>(distinct));
    const double* const states = drawn.states.data();
    const double* const scores = drawn.scores.data();
    const int n = static_cast<int>(cases);
    std::printf("%ld cases of up to %ld scores\n", cases, distinct);

    const auc_res area = timed("auc", drawn.scores.size(),
                               [&] { return auc(states, scores, n, nullptr, "include", "larger", "nonparam", 0.95); });
    const double truth = countedArea(drawn);
    const bool areaRight =
        area.posCount == static_cast<double>(drawn.positives) && std::abs(area.area - truth) <= 1e-15;
    std::printf("area %.17g, counted %.17g, standard error %.3g: %s\n", area.area, truth, area.stdError,
                areaRight ? "right" : "WRONG");

    const roccurve_res curve = timed("roccurve", drawn.scores.size(),
                                     [&] { return roccurve(states, scores, n, nullptr, "include", "larger"); });
    const std::size_t wrong = curve.rows != nullptr ? wrongRows(drawn, curve) : 1;
    std::printf("%d rows, %zu of them wrong\n", curve.count, wrong);
    release_roccurve_res(curve);
    return areaRight && wrong == 0 ? 0 : 1;
}
