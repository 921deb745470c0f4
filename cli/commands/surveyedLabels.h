#pragma once

#include "cli/input/ColumnSurvey.h"
#include "cli/sources/Input.h"
#include "vexrocproc/labels.h"

#include <memory>

namespace vexroc {

struct FreeLabels {
    void operator()(vexroc_labels* labels) const noexcept { vexroc_labels_free(labels); }
};
using SettledLabels = std::unique_ptr<vexroc_labels, FreeLabels>;

/// The words of a column as the library takes them for labels, with their rows; settled.
SettledLabels surveyedLabels(const ColumnFacts& facts, const Input& input);

} // namespace vexroc
