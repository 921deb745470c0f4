#include "tests/driver/analyses.h"
#include "tests/support/calls.h"

#include <gtest/gtest.h>
#include <immintrin.h>

#include <functional>

namespace {

using namespace roctest;

constexpr unsigned exceptionsMasked = 0x1F80;
struct Mode {
    const char* name;
    unsigned bits; ///< of the control word of SSE arithmetic
};
constexpr Mode modes[] = {
    {"flush to zero, denormals are zero", 0x8040 | exceptionsMasked},
    {"rounding up", 0x4000 | exceptionsMasked},
    {"invalid operations trap", exceptionsMasked & ~0x80u},
};

/// Does the work as a host that has set the mode; what the work gives must not tell, and the mode must stay.
void expectSameBits(const std::function<Numbers()>& work)
{
    const Numbers expected = work();
    const unsigned usual = _mm_getcsr();
    for (const Mode& mode : modes) {
        SCOPED_TRACE(mode.name);
        _mm_setcsr(mode.bits);
        const Numbers got = work();
        const unsigned after = _mm_getcsr();
        _mm_setcsr(usual);
        EXPECT_EQ(after, mode.bits);
        ASSERT_EQ(got, expected);
    }
}

TEST(HostArithmetic, ChangesNoBitOfAnArrayCall)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 40; ++seed) {
            SCOPED_TRACE(testing::Message() << shape.name << ", seed " << seed);
            const Sample sample = drawSample(shape, seed, sizeFor(seed));
            expectSameBits([&] { return everything(sample, {.distribution = seed % 2 ? "nonparam" : "bi-negative"}); });
            expectSameBits([&] { return everything(sample, {"exclude", "smaller", "keilwagen"}); });
        }
}

TEST(HostArithmetic, ChangesNoBitOfARun)
{
    HostData data = analysisData(300);
    for (double& value : data.columns[test2])
        value *= 0x1p-1070; // denormals
    for (const Analysis& analysis : analyses()) {
        SCOPED_TRACE(analysis.name);
        Host host(settingOf(analysis), data);
        expectSameBits([&] {
            host.run();
            return numbers(host.outcome());
        });
    }
}

} // namespace
