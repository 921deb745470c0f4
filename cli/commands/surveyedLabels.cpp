#include "cli/commands/surveyedLabels.h"

#include "cli/study/require.h"

namespace vexroc {

SettledLabels surveyedLabels(const ColumnFacts& facts, const Input& input)
{
    vexroc_labels* made = nullptr;
    require(vexroc_labels_new(facts.name().c_str(), input.missingWords->list(), input.form.numbers.decimal,
                              VEXROC_VOICE_PROGRAM, &made));
    SettledLabels labels(made);
    for (const WordCounts* const words : {&facts.texts(), &facts.spelledNumbers(), &facts.missingWords()})
        for (const auto& [text, rows] : words->all())
            require(vexroc_labels_add(made, text.data(), text.size(), VEXROC_LABEL_TEXT, static_cast<long long>(rows),
                                      nullptr));
    require(vexroc_labels_settle(made));
    return labels;
}

} // namespace vexroc
