#pragma once

#include "cli/input/ColumnSurvey.h"
#include "cli/sources/Input.h"
#include "cli/study/Remarks.h"

#include <span>
#include <string_view>
#include <vector>

namespace vexroc {

// What the cells of a column look like, beside what they are.

/// Whole numbers at an end of the column that are repeated and far from all others, as 999 and -9 for a missing value.
std::vector<NumberInRows> likelyCodes(const ColumnFacts& facts);
/// Do the values number or name the rows, each another one?
bool isId(const ColumnFacts& facts);
/// Do they repeat as the number of a patient does who has several rows?
bool isRepeatedId(const ColumnFacts& facts);
/// Does a name say one of these words, as a part of it in any case: "patient_id", "PatientId"?
bool saysAny(std::string_view name, std::span<const std::string_view> words);

/// All there is to say of a column.
void addFindings(const ColumnFacts& facts, const Input& input, Remarks& remarks);

} // namespace vexroc
