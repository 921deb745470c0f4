#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace {

using namespace roctest;

TEST(Threads, EightCallersOnSharedArraysGetTheSameBits)
{
    std::vector<Sample> samples;
    for (unsigned seed = 5; seed < 5 + shapes().size(); ++seed)
        samples.push_back(drawSample(shapes()[seed - 5], 9 * seed + 5, 1'500));
    std::vector<Numbers> expected;
    for (const Sample& sample : samples)
        expected.push_back(everything(sample, {.distribution = "bi-negative"}));

    std::array<int, 8> different{};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < different.size(); ++t)
        threads.emplace_back([&, t] {
            for (std::size_t i = 0; i < samples.size(); ++i) {
                const std::size_t k = (i + t) % samples.size();
                different[t] += everything(samples[k], {.distribution = "bi-negative"}) != expected[k];
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(different, (std::array<int, 8>{}));
}

} // namespace
