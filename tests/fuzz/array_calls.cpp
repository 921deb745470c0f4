#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/values.h"
#include "tests/support/agreement.h"

using namespace roctest;

namespace {

/// A word of the interface, a null pointer or any text.
const char* word(FuzzInput& input, std::string& text)
{
    static constexpr const char* known[] = {"include",   "exclude",  "larger",      "smaller", "davis-goadrich",
                                            "keilwagen", "nonparam", "bi-negative", nullptr};
    if (input.below(4) != 0)
        return input.oneOf(known);
    text = input.text(16);
    return text.c_str();
}

} // namespace

/// The array calls on any states, values, words, positive value and level agree with the definitions.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput input(data, size);
    std::string texts[4];
    Words words{word(input, texts[0]), word(input, texts[1]), word(input, texts[2]), word(input, texts[3])};
    const double positive = hardValue(input);
    words.positiveValue = input.coin() ? &positive : nullptr;
    const double level = input.coin() ? 0.95 : input.take<double>();
    Sample sample;
    while (input.left() > 0) {
        const double state = input.below(8) != 0 ? static_cast<double>(input.coin()) : hardValue(input);
        const double value = hardValue(input);
        sample.add(words.positiveValue != nullptr && state == 1.0 ? positive : state, value,
                   input.coin() ? value : hardValue(input));
    }
    requireNone(curveDisagreement(sample, words));
    requireNone(areaDisagreement(sample, words, level));
    requireNone(comparisonDisagreement(sample, words, level));
    return 0;
}
