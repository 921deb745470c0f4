#pragma once

#include "remarks/RemarkList.h"

namespace ROCALG_920::remarks {

/// Adds what there is to say of an area; see vexroc_remarks_area.
void addAreaRemarks(std::string_view subject, const vexroc_area_facts& facts, RemarkList& list);
/// Are there too few cases for the rules of interval and p?
[[nodiscard]] bool needsMoreCases(const vexroc_area_facts& facts);
/// The same for the difference of two areas; see vexroc_remarks_difference.
void addDifferenceRemarks(std::string_view subject, double difference, double stdError, RemarkList& list);
/// The same for so many comparisons; see vexroc_remarks_comparisons.
void addComparisonRemarks(std::string_view subject, long long count, RemarkList& list);

} // namespace ROCALG_920::remarks
