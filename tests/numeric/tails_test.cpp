#include "folders.h"
#include "numeric/elementary.h"
#include "numeric/tails.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>

namespace ROCALG_920 {
namespace {

double computed(const std::string& function, double a, double b, double c)
{
    if (function == "normal")
        return normalUpperTail(a).probability;
    if (function == "log_normal")
        return normalUpperTail(a).logarithm;
    if (function == "chi_square")
        return chiSquareUpperTail(a, static_cast<std::int64_t>(b));
    if (function == "student")
        return studentUpperTail(a, b).probability;
    if (function == "fisher")
        return fisherUpperTail(a, b, c);
    return function == "beta" ? betaTails(a, b, c).lower : betaQuantile(a, b, c);
}

/// Against 60 digits; where a quantile is far out, a unit in its argument's logarithm moves it by more.
TEST(Tails, AgreeWithTheKeptTable)
{
    std::ifstream file(std::string(roctest::testFolder) + "/numeric/tails.txt");
    std::map<std::string, int> rows;
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string function;
        std::string word[4];
        words >> function >> word[0] >> word[1] >> word[2] >> word[3];
        const auto number = [&](int i) { return std::strtod(word[i].c_str(), nullptr); };
        const double expected = number(3);
        const double found = computed(function, number(0), number(1), number(2));
        EXPECT_LE(std::abs(found - expected), 1e-13 * std::abs(expected)) << line << " is " << found;
        ++rows[function];
    }
    EXPECT_EQ(rows.size(), 7U);
    EXPECT_GT(rows["beta"], 30);
}

TEST(Tails, MirrorAndInvertEachOther)
{
    for (const auto& [a, b] : {std::pair(0.5, 0.5), std::pair(3.0, 19.0), std::pair(4e11, 9e8), std::pair(1.0, 1e12)})
        for (const double p : {1e-200, 1e-9, 0.025, 0.5, 0.975}) {
            const double x = betaQuantile(p, a, b);
            EXPECT_NEAR(betaUpperQuantile(p, b, a), 1.0 - x, 1e-15) << a << ' ' << b << ' ' << p;
            if (x > 1e-290 && a < 1e6 && x < 0.5) {
                EXPECT_NEAR(betaTails(a, b, x).lower / p, 1.0, 1e-12) << a << ' ' << b << ' ' << p;
            }
        }
    EXPECT_NEAR(studentUpperTail(studentUpperQuantile(0.01, 3.5), 3.5).probability, 0.01, 1e-15);
    EXPECT_EQ(studentUpperQuantile(0.75, 7.0), -studentUpperQuantile(0.25, 7.0));
    EXPECT_NEAR(normalUpperTail(-2.0).probability + normalUpperTail(2.0).probability, 1.0, 1e-15);
}

TEST(Tails, HoldAtTheirEnds)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(normalUpperTail(infinity).probability, 0.0);
    EXPECT_EQ(normalUpperTail(-infinity).probability, 1.0);
    EXPECT_EQ(normalUpperTail(-1e300).probability, 1.0);
    EXPECT_EQ(normalUpperTail(1e300).probability, 0.0);
    EXPECT_EQ(normalUpperTail(0.0).probability, 0.5);
    EXPECT_EQ(studentUpperTail(0.0, 3.0).probability, 0.5);
    EXPECT_EQ(studentUpperTail(-infinity, 3.0).probability, 1.0);
    EXPECT_EQ(chiSquareUpperTail(0.0, 5), 1.0);
    EXPECT_EQ(chiSquareUpperTail(1e9, 5), 0.0);
    EXPECT_EQ(fisherUpperTail(infinity, 2.0, 3.0), 0.0);
    EXPECT_EQ(betaTails(2.0, 3.0, 0.0).lower, 0.0);
    EXPECT_EQ(betaTails(2.0, 3.0, 1.0).upper, 0.0);
    EXPECT_EQ(betaQuantile(0.0, 2.0, 3.0), 0.0);
    EXPECT_EQ(betaQuantile(1.0, 2.0, 3.0), 1.0);
    for (const double result :
         {normalUpperTail(nan).probability, studentUpperTail(nan, 2.0).probability, chiSquareUpperTail(1.0, 0),
          betaTails(2.0, nan, 0.5).lower, betaQuantile(2.0, 1.0, 1.0)})
        EXPECT_TRUE(std::isnan(result));
}

TEST(Elementary, ExponentialAndLogarithmInvertEachOther)
{
    for (double x = 1e-300; x < 1e300; x *= 7654.321) {
        const double log = static_cast<double>(logarithm(x));
        EXPECT_NEAR(quickExponential(log) / static_cast<double>(exponential(log)), 1.0, 4.5e-16) << x;
        const DoubleDouble back = exponential(logarithm(x));
        EXPECT_NEAR(back.high() / x, 1.0, 1e-15) << x;
        const DoubleDouble rest = (back - x) / x;
        EXPECT_LT(std::abs(rest.high()), 1e-28) << x;
    }
    for (double x = 1e-300; x < 0.5; x *= 97.0) {
        const DoubleDouble rest = (exponentialLessOne(logarithmOfOnePlus(x)) - x) / x;
        EXPECT_LT(std::abs(rest.high()), 1e-29) << x;
    }
}

} // namespace
} // namespace ROCALG_920
