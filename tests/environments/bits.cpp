// Prints what all calls and runs say about made-up samples, as one digest each of the samples and of the answers. The
// same bits must come from every compiler and every level of optimisation.

#include "tests/driver/analyses.h"
#include "tests/support/calls.h"

#include <cinttypes>
#include <cstdio>
#include <span>

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

} // namespace

int main()
{
    Digest samples;
    Digest answers;
    addCalls(samples, answers);
    addRuns(answers);
    samples.print("samples");
    answers.print("answers");
    return 0;
}
