#include "remarks/RemarkList.h"

#include <algorithm>

namespace ROCALG_920::remarks {

namespace {

constexpr std::size_t subjectsNamed = 5;

/// Can the name stand in a command or a call without quotation marks?
bool isPlain(std::string_view name)
{
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_.";
    return !name.empty() && name.find_first_not_of(plain) == std::string_view::npos;
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
    if (remark.known.size() == 1) {
        remark.test = about.test;
        remark.direction = about.direction;
    }
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
    if (remark.kind->advice.empty())
        return "";
    std::string advice = replaced(inVoice(remark.kind->advice, voice_), "WORD", remark.direction);
    if (isPlain(remark.test))
        advice = replaced(std::move(advice), "NAME", remark.test);
    return "; " + advice;
}

} // namespace ROCALG_920::remarks
