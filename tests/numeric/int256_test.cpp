#include "numeric/Int256.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace ROCALG_920;

/// Numbers of every width, those next to powers of two and of both signs among them.
std::vector<Int128> numbersUpTo(int bits, unsigned seed)
{
    std::mt19937_64 random(seed);
    std::vector<Int128> numbers{0};
    for (int width = 1; width < bits; ++width)
        for (const Int128 low : {Int128{-1}, Int128{0}, Int128{1}, Int128{random() % (1u << std::min(width, 30))}})
            for (const Int128 sign : {-1, 1})
                numbers.push_back(sign * ((Int128{1} << width) + low));
    return numbers;
}

TEST(Int256, AgreesWithTheBuiltInIntegerWhereThatSuffices)
{
    const std::vector<Int128> numbers = numbersUpTo(62, 1);
    for (const Int128 a : numbers)
        for (const Int128 b : numbers) {
            const Int256 wideA = a;
            const Int256 wideB = b;
            ASSERT_EQ(wideA + wideB, Int256(a + b));
            ASSERT_EQ(wideA - wideB, Int256(a - b));
            ASSERT_EQ(wideA * wideB, Int256(a * b));
            ASSERT_EQ(wideA < wideB, a < b);
            ASSERT_EQ(static_cast<double>(wideA * wideB), static_cast<double>(a * b));
        }
}

/// (x + y) (x - y) = x^2 - y^2 over operands whose products take all words.
TEST(Int256, KeepsTheLawsOfArithmeticOnAllWords)
{
    const std::vector<Int128> numbers = numbersUpTo(125, 2);
    for (std::size_t i = 1; i < numbers.size(); i += 3)
        for (std::size_t j = 0; j < numbers.size(); j += 5) {
            const Int256 x = numbers[i];
            const Int256 y = numbers[j];
            ASSERT_EQ((x + y) * (x - y), x * x - y * y);
            ASSERT_EQ(x * y - y * x, Int256());
            ASSERT_EQ(x * x < y * y, (x < y && Int256() < x + y) || (y < x && x + y < Int256()));
            ASSERT_GE(x * x, Int256());
        }
}

/// m * 2^shift + rest, for every shift: the exact middle between two doubles goes to the even one.
TEST(Int256, BecomesTheNearestDoubleOnceRounded)
{
    constexpr Int128 odd = (Int128{1} << 53) + 1;
    const Int128 mantissas[] = {odd, odd + 2};
    const double down[] = {0x1p53, 0x1p53 + 4}; // both middles go to the even neighbour
    for (int shift = 1; shift < 195; ++shift) {
        SCOPED_TRACE(shift);
        Int256 unit = 1;
        for (int i = 0; i < shift; ++i)
            unit = unit + unit;
        for (int i : {0, 1}) {
            const Int256 middle = Int256(mantissas[i]) * unit;
            EXPECT_EQ(static_cast<double>(middle), std::ldexp(down[i], shift));
            EXPECT_EQ(static_cast<double>(-middle), -std::ldexp(down[i], shift));
            EXPECT_EQ(static_cast<double>(middle + Int256(1)), std::ldexp(i == 0 ? 0x1p53 + 2 : 0x1p53 + 4, shift));
            EXPECT_EQ(static_cast<double>(middle - Int256(1)), std::ldexp(i == 0 ? 0x1p53 : 0x1p53 + 2, shift));
        }
    }
}

} // namespace
