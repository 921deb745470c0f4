#include "vexrocproc/remarks.h"

#include "calls/RemarksHandle.h"
#include "calls/guard.h"
#include "remarks/areaRules.h"

#include <string>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;

namespace {

/// The list, for a call that changes it.
remarks::RemarkList& changed(vexroc_remarks* remarks)
{
    vexroc_remarks& all = required(remarks, "the list of remarks");
    all.handedOut.clear();
    return all.list;
}

std::string_view orEmpty(const char* text) { return text != nullptr ? text : ""; }

/// As much of the caller's structure as it has.
vexroc_area_facts copied(const vexroc_area_facts* facts)
{
    const std::size_t size = required(facts, "the structure of facts").struct_size;
    vexroc_area_facts copy{};
    if (size < offsetof(vexroc_area_facts, test))
        throw InvalidArgument("struct_size is not set: give it the sizeof of the structure");
    std::memcpy(&copy, facts, std::min(size, sizeof copy));
    return copy;
}

} // namespace

int vexroc_remarks_new(enum vexroc_voice voice, vexroc_remarks** remarks)
{
    return guarded([&] {
        vexroc_remarks*& list = required(remarks, "the place for the list of remarks");
        list = nullptr;
        if (voice < VEXROC_VOICE_C || voice > VEXROC_VOICE_R)
            throw InvalidArgument("no voice " + std::to_string(voice) + "; there are 0 to 3");
        list = new vexroc_remarks{remarks::RemarkList(voice)};
        return VEXROC_OK;
    });
}

void vexroc_remarks_free(vexroc_remarks* remarks) { delete remarks; }

int vexroc_remarks_count(const vexroc_remarks* remarks)
{
    return remarks == nullptr ? 0 : static_cast<int>(remarks->list.size());
}

int vexroc_remarks_get(vexroc_remarks* remarks, int index, vexroc_remark* remark)
{
    return guarded([&] {
        vexroc_remarks& all = required(remarks, "the list of remarks");
        if (all.handedOut.empty())
            for (std::size_t i = 0; i < all.list.size(); ++i)
                all.handedOut.push_back(all.list.line(i).text);
        const std::string& text = at(all.handedOut, index, "remark");
        const auto line = all.list.line(static_cast<std::size_t>(index));
        return deliver({.struct_size = 0,
                        .code = line.kind.code.data(), // a literal
                        .caution = line.kind.caution,
                        .count = line.count,
                        .text = text.c_str()},
                       remark);
    });
}

int vexroc_remarks_add(vexroc_remarks* remarks, const char* code, const char* subject, const char* detail)
{
    return guarded([&] {
        const remarks::Kind* const kind = remarks::kindOf(&required(code, "the code of the remark"));
        if (kind == nullptr)
            throw InvalidArgument("no remark has the code " + quoted(code));
        changed(remarks).add(*kind, {.subject = orEmpty(subject), .detail = orEmpty(detail), .test = orEmpty(subject)});
        return VEXROC_OK;
    });
}

int vexroc_remarks_area(vexroc_remarks* remarks, const char* subject, const vexroc_area_facts* facts)
{
    return guarded([&] {
        const vexroc_area_facts known = copied(facts);
        remarks::addAreaRemarks(orEmpty(subject), known, changed(remarks));
        return VEXROC_OK;
    });
}

int vexroc_remarks_difference(vexroc_remarks* remarks, const char* subject, double difference, double std_error)
{
    return guarded([&] {
        remarks::addDifferenceRemarks(orEmpty(subject), difference, std_error, changed(remarks));
        return VEXROC_OK;
    });
}

int vexroc_remarks_comparisons(vexroc_remarks* remarks, const char* subject, long long count)
{
    return guarded([&] {
        remarks::addComparisonRemarks(orEmpty(subject), count, changed(remarks));
        return VEXROC_OK;
    });
}
