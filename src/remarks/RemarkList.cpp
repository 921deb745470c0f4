#include "remarks/RemarkList.h"

#include "remarks/typed.h"

#include <algorithm>

namespace ROCALG_920::remarks {

namespace {

constexpr std::size_t subjectsNamed = 5;

/// The direction of a test as a reader types it; without a test the voice's place holders remain.
std::string typedDirection(std::string advice, const RemarkList::Example& example, vexroc_voice voice)
{
    const auto& [test, direction] = example;
    advice = replaced(std::move(advice), "WORD", direction);
    if (test.empty())
        return advice;
    switch (voice) {
    case VEXROC_VOICE_PROGRAM:
        return replaced(std::move(advice), "NAME:" + direction, shellWord(listItem(test + ':' + direction)));
    case VEXROC_VOICE_PYTHON: return replaced(std::move(advice), R"("NAME")", stringLiteral(test));
    case VEXROC_VOICE_R: return replaced(std::move(advice), "NAME", nameInR(test));
    case VEXROC_VOICE_C: break; // tells tests by their columns
    }
    return advice;
}

std::string named(const RemarkList::About& about)
{
    if (about.subject.empty() || about.detail.empty())
        return std::string(about.subject) += about.detail;
    return std::string(about.subject).append(" (").append(about.detail) += ')';
}

} // namespace

RemarkList::Remark& RemarkList::remarkOf(const Kind& kind)
{
    if (const auto found = std::ranges::find(remarks_, &kind, &Remark::kind); found != remarks_.end())
        return *found;
    const auto end = kind.caution
        ? std::ranges::find_if(remarks_, [](const Remark& remark) { return !remark.kind->caution; })
        : remarks_.end();
    return *remarks_.insert(end, Remark{.kind = &kind});
}

void RemarkList::add(const Kind& kind, const About& about)
{
    Remark& remark = remarkOf(kind);
    const bool isNew = remark.known.emplace(about.subject.empty() ? about.detail : about.subject).second;
    if (!isNew)
        return;
    if (std::ranges::find(remark.examples, about.direction, &Example::direction) == remark.examples.end())
        remark.examples.push_back({std::string(about.test), std::string(about.direction)});
    if (std::string name = named(about); !name.empty() && remark.named.size() < subjectsNamed)
        remark.named.push_back(std::move(name));
}

bool RemarkList::hidesTies() const noexcept
{
    const auto notes = std::ranges::count_if(remarks_, [](const Remark& remark) { return !remark.kind->caution; });
    return notes > 1 && std::ranges::any_of(remarks_, isTies);
}

RemarkList::Line RemarkList::line(std::size_t index) const
{
    const auto ties = static_cast<std::size_t>(std::ranges::find_if(remarks_, isTies) - remarks_.begin());
    const Remark& remark = remarks_[hidesTies() && index >= ties ? index + 1 : index];
    return {*remark.kind, static_cast<long long>(remark.known.size()), textOf(remark)};
}

std::string RemarkList::textOf(const Remark& remark) const
{
    std::string text(remark.kind->says);
    const char* separator = ": ";
    for (const std::string& name : remark.named) {
        text.append(separator) += name;
        separator = ", ";
    }
    if (remark.known.size() > subjectsNamed)
        text += " and more, " + std::to_string(remark.known.size()) + " in all";
    return text + adviceOf(remark);
}

std::string RemarkList::adviceOf(const Remark& remark) const
{
    const std::string advice = inVoice(remark.kind->advice, voice_);
    std::string text;
    for (const Example& example : remark.examples)
        if (std::string typed = typedDirection(advice, example, voice_); !typed.empty() && !text.ends_with(typed))
            text.append("; ").append(typed);
    return text;
}

} // namespace ROCALG_920::remarks
