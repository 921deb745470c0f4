#include "cli/study/Remarks.h"

#include "cli/study/require.h"
#include "cli/words/Failure.h"
#include "cli/words/VisibleText.h"
#include "vexrocproc/analysis.h"

#include <algorithm>
#include <utility>

namespace vexroc {

namespace {

/// Without area, error and interval: nothing is said of these.
vexroc_area_facts casesOf(const Area& area)
{
    vexroc_area_facts facts{};
    facts.struct_size = sizeof facts;
    facts.positive = area.positive;
    facts.negative = area.negative;
    facts.area = facts.std_error = facts.lower = facts.upper = notComputed;
    facts.smaller_is_positive = area.largerIsPositive ? 0 : 1;
    facts.distinct_values = area.distinctValues;
    facts.test = area.test.c_str();
    return facts;
}

} // namespace

void Remarks::Free::operator()(vexroc_remarks* list) const noexcept { vexroc_remarks_free(list); }

Remarks::Remarks()
{
    vexroc_remarks* list = nullptr;
    require(vexroc_remarks_new(VEXROC_VOICE_PROGRAM, &list));
    list_.reset(list);
}

void Remarks::add(const char* code, const std::string& subject, const std::string& detail)
{
    require(vexroc_remarks_add(handle(), code, subject.c_str(), detail.c_str()));
}

void Remarks::addCases(const Area& area)
{
    const vexroc_area_facts facts = casesOf(area);
    require(vexroc_remarks_area(handle(), subjectOf(area).c_str(), &facts));
}

std::vector<Remark> Remarks::linesOf(bool caution) const
{
    std::vector<Remark> lines;
    for (int i = 0; i < vexroc_remarks_count(list_.get()); ++i) {
        vexroc_remark remark{};
        remark.struct_size = sizeof remark;
        require(vexroc_remarks_get(list_.get(), i, &remark));
        if ((remark.caution != 0) == caution && std::ranges::find(leftOut_, remark.code) == leftOut_.end())
            lines.push_back({remark.code, remark.count, visible(remark.text)});
    }
    return lines;
}

std::string subjectOf(const Area& area) { return area.test + (area.group.empty() ? "" : " where " + area.group); }

std::string subjectOf(const Difference& difference)
{
    const auto& [first, second] = std::pair(difference.first.test, difference.second.test);
    return first == second ? first : first + " and " + second;
}

std::vector<std::pair<std::string, long long>> RowCounts::reasons() const
{
    std::vector<std::pair<std::string, long long>> reasons{
        {"missing state", missingState},     {"other state", otherState},       {"missing count", missingCount},
        {"missing group", missingGroup},     {"missing weight", missingWeight}, {"in neither group", otherGroup},
        {"unusable weight", unusableWeight}, {"missing test", incomplete}};
    std::erase_if(reasons, [](const auto& reason) { return reason.second == 0; });
    return reasons;
}

} // namespace vexroc
