#include "vexrocproc/labels.h"

#include "calls/guard.h"
#include "labels/LabelColumn.h"
#include "labels/States.h"
#include "labels/labelFindings.h"

#include <array>
#include <span>
#include <string>
#include <vector>

using namespace ROCALG_920;
using namespace ROCALG_920::calls;
using labels::LabelColumn;

struct vexroc_words {
    labels::MissingWords words;
};

struct vexroc_labels {
    LabelColumn column;
    vexroc_voice voice;
    bool settled = false;
    bool chosen = false;
    std::vector<labels::State> states = {}; ///< of each value, once chosen
    std::array<std::string, 2> waysOn = {};
};

namespace ROCALG_920::calls {
namespace {

vexroc_labels& open(vexroc_labels* labels)
{
    if (required(labels, "labels").settled)
        throw InvalidArgument("the labels are settled: nothing can be added");
    return *labels;
}

template <class Labels>
Labels& settled(Labels* labels)
{
    if (!required(labels, "labels").settled)
        throw InvalidArgument("the labels are not settled: call vexroc_labels_settle first");
    return *labels;
}

std::string_view textOf(const char* text, std::size_t length)
{
    return length == 0 ? std::string_view() : std::string_view(&required(text, "the text"), length);
}

std::vector<std::string> textsOf(const char* const* texts, int count, const char* what)
{
    if (count < 0)
        throw InvalidArgument(std::string("the number of ") + what + " is negative");
    std::vector<std::string> list;
    for (int i = 0; i < count; ++i)
        list.emplace_back(&required((&required(texts, what))[i], what));
    return list;
}

labels::StateChoice choiceOf(const vexroc_state_choice* given)
{
    vexroc_state_choice choice{};
    if (required(given, "the choice").struct_size < sizeof(std::size_t))
        throw InvalidArgument("struct_size is not set: give it the sizeof of the structure");
    std::memcpy(&choice, given, std::min(given->struct_size, sizeof choice));
    labels::StateChoice result{.positive = textsOf(choice.positive, choice.positive_count, "positive values"),
                               .negative = textsOf(choice.negative, choice.negative_count, "negative values"),
                               .others = choice.others != 0};
    if (choice.bound != nullptr || choice.sign != nullptr)
        result.cut = {&required(choice.sign, "the sign of the cut"), &required(choice.bound, "the bound of the cut")};
    return result;
}

/// The index of the value that a spelling is; -2 where there is no such spelling.
int valueOf(const vexroc_labels* labels, int spelling)
{
    constexpr int notThere = -2;
    if (labels == nullptr || spelling < 0 || spelling >= static_cast<int>(labels->column.spellings().size()))
        return notThere;
    return labels->column.spellings()[static_cast<std::size_t>(spelling)].value;
}

} // namespace
} // namespace ROCALG_920::calls

int vexroc_words_new(vexroc_words** words)
{
    return guarded([&] {
        required(words, "the place for the words") = nullptr;
        *words = new vexroc_words;
        return VEXROC_OK;
    });
}

void vexroc_words_free(vexroc_words* words) { delete words; }

int vexroc_words_clear(vexroc_words* words)
{
    return guarded([&] {
        required(words, "words").words.clear();
        return VEXROC_OK;
    });
}

int vexroc_words_add(vexroc_words* words, const char* word)
{
    return guarded([&] {
        required(words, "words").words.add(&required(word, "the word"));
        return VEXROC_OK;
    });
}

int vexroc_words_missing_in_test(const vexroc_words* words, const char* text, size_t length)
{
    return guardedOr(0, [&] {
        return words != nullptr && words->words.isMissingInTest({text, text != nullptr ? length : 0}) ? 1 : 0;
    });
}

int vexroc_labels_new(const char* column, const vexroc_words* words, char decimal, enum vexroc_voice voice,
                      vexroc_labels** labels)
{
    return guarded([&] {
        required(labels, "the place for the labels") = nullptr;
        if (decimal != '.' && decimal != ',')
            throw InvalidArgument("the decimal sign is neither '.' nor ','");
        *labels = new vexroc_labels{{&required(column, "the name of the column"),
                                     words != nullptr ? words->words : labels::MissingWords(), decimal},
                                    voice};
        return VEXROC_OK;
    });
}

void vexroc_labels_free(vexroc_labels* labels) { delete labels; }

int vexroc_labels_add(vexroc_labels* labels, const char* text, size_t length, enum vexroc_label_kind kind,
                      long long count, int* spelling)
{
    return guarded([&] {
        const int index = open(labels).column.add(
            textOf(text, length), kind == VEXROC_LABEL_VALUE ? labels::TextKind::value : labels::TextKind::text, count);
        put(spelling, 0, index);
        return VEXROC_OK;
    });
}

int vexroc_labels_name(vexroc_labels* labels, const char* text, size_t length)
{
    return guarded([&] {
        open(labels).column.nameValue(textOf(text, length));
        return VEXROC_OK;
    });
}

int vexroc_labels_settle(vexroc_labels* labels)
{
    return guarded([&] {
        open(labels).column.settle();
        labels->settled = true;
        return VEXROC_OK;
    });
}

int vexroc_labels_count(const vexroc_labels* labels)
{
    return labels != nullptr ? static_cast<int>(labels->column.values().size()) : 0;
}

int vexroc_labels_value(const vexroc_labels* labels, int value, vexroc_label* label)
{
    return guarded([&] {
        const LabelColumn& column = settled(labels).column;
        const LabelColumn::Value& found = at(column.values(), value, "value");
        const LabelColumn::Spelling& spelling = column.spellingOf(found);
        return deliver({.struct_size = 0,
                        .text = spelling.text.c_str(),
                        .length = spelling.text.size(),
                        .count = found.count,
                        .is_number = spelling.number ? 1 : 0},
                       label);
    });
}

int vexroc_labels_value_of(const vexroc_labels* labels, int spelling) { return valueOf(labels, spelling); }

int vexroc_labels_find(const vexroc_labels* labels, const char* text, size_t length)
{
    constexpr int notThere = LabelColumn::missing;
    return guardedOr(notThere, [&] {
        return labels != nullptr ? labels->column.find({text, text != nullptr ? length : 0}) : notThere;
    });
}

int vexroc_labels_choose(vexroc_labels* labels, const vexroc_state_choice* choice)
{
    return guarded([&] {
        settled(labels).chosen = false;
        labels->states.clear();
        labels->waysOn = {};
        try {
            labels->states = labels::statesOf(labels->column, choiceOf(choice), labels->voice);
        } catch (labels::UnfitChoice& unfit) {
            labels->waysOn = std::move(unfit.waysOn);
            throw InvalidArgument(unfit.what());
        }
        labels->chosen = true;
        return VEXROC_OK;
    });
}

enum vexroc_state vexroc_labels_state_of(const vexroc_labels* labels, int spelling)
{
    const int value = valueOf(labels, spelling);
    if (value < 0 || !labels->chosen)
        return VEXROC_STATE_MISSING;
    switch (labels->states[static_cast<std::size_t>(value)]) {
    case labels::State::negative: return VEXROC_STATE_NEGATIVE;
    case labels::State::positive: return VEXROC_STATE_POSITIVE;
    case labels::State::other: break;
    }
    return VEXROC_STATE_OTHER;
}

const char* vexroc_labels_way_on(const vexroc_labels* labels, int index)
{
    const bool exists = labels != nullptr && (index == 0 || index == 1) && !labels->waysOn[0].empty();
    return exists ? labels->waysOn[static_cast<std::size_t>(index)].c_str() : nullptr;
}

int vexroc_labels_add_remarks(const vexroc_labels* labels, vexroc_remarks* remarks)
{
    return guarded([&] {
        const vexroc_labels& known = settled(labels);
        for (const labels::LabelFinding& finding : labels::findingsOf(known.column, known.states, known.voice))
            if (const int result =
                    vexroc_remarks_add(remarks, finding.code, known.column.name().c_str(), finding.detail.c_str());
                result != VEXROC_OK)
                return result;
        return static_cast<int>(VEXROC_OK);
    });
}
