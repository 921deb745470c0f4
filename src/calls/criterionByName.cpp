#include "calls/criterionByName.h"

#include "calls/guard.h"
#include "host/VexMV.h"
#include "vexrocproc/optionwords.h"

#include <charconv>
#include <string>

namespace ROCALG_920::calls {

namespace {

using Kind = CutOffCriterion::Kind;

struct Criterion {
    std::string_view name;
    Kind kind;
};
constexpr Criterion criteria[] = {
    {"youden", Kind::youden},
    {"closest", Kind::closest},
    {"accuracy", Kind::accuracy},
    {"cost", Kind::cost},
    {"f1", Kind::f1},
    {"mcc", Kind::mcc},
    {"equal", Kind::equal},
    {"specificity", Kind::specificity},
    {"sensitivity", Kind::sensitivity},
};

[[noreturn]] void refuse(std::string_view text, const std::string& why)
{
    throw InvalidArgument("criterion " + quoted(text) + ": " + why);
}

[[noreturn]] void refuseName(std::string_view text)
{
    std::string all;
    for (const Criterion& criterion : criteria) {
        const bool takesShare = NamedCriterion{criterion.kind, {}, 0.0}.hasShare();
        all += (all.empty() ? "" : ", ") + std::string(criterion.name) + (takesShare ? "=SHARE" : "");
    }
    refuse(text, "there is none of this name; there are " + all);
}

double shareOf(std::string_view text, std::string_view digits)
{
    double share = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), share);
    if (error != std::errc{} || end != digits.data() + digits.size() || !(share >= 0.0 && share <= 1.0))
        refuse(text, "the share must be a number from 0 to 1, such as 0.9, not " + quoted(digits));
    return share;
}

} // namespace

NamedCriterion criterionByName(const char* given)
{
    const std::string_view text = &required(given, "criterion");
    const std::size_t sign = text.find('=');
    const std::string name(text.substr(0, sign));
    for (const Criterion& criterion : criteria) {
        if (!compareIgnoreCase(name, std::string(criterion.name)))
            continue;
        NamedCriterion named{criterion.kind, criterion.name, VexCommon_920::VexMV::Missing()};
        const bool isGiven = sign != std::string_view::npos;
        if (named.hasShare() && !isGiven)
            refuse(text, "it needs a share, as in " + name + "=0.9");
        if (!named.hasShare() && isGiven)
            refuse(text, "it takes no share");
        if (isGiven)
            named.share = shareOf(text, text.substr(sign + 1));
        return named;
    }
    refuseName(text);
}

} // namespace ROCALG_920::calls
