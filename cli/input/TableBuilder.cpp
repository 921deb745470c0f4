#include "cli/input/TableBuilder.h"

#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/Lists.h"
#include "cli/words/NearWords.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <limits>

namespace vexroc {

namespace {

Failure unknownColumn(const ColumnRequest& request, const InputHeader& header)
{
    const std::string& name = request.name;
    std::string message = header.place + ": no column " + inQuotes(name) + " in " + header.collection;
    if (name == "all" && request.kind == ColumnKind::numbers)
        return inputError(message + "; for every column, analyze alone takes --test all, with no other test");
    if (const std::vector<std::string> near = nearWords(name, header.columns); !near.empty())
        message += "; did you mean " + listed(near, near.size()) + "?";
    else
        message += "; its columns are " + listed(header.columns, 8);
    return inputError(message + header.hint);
}

} // namespace

void DecimalDoubt::lookCloser(std::string_view text, const NumberForm& form)
{
    constexpr std::size_t groupLength = 3;
    std::size_t decimals = 0; // behind the last sign; from the end, where it is found soonest
    while (decimals < text.size() && text[text.size() - decimals - 1] != form.decimal)
        ++decimals;
    if (decimals == text.size()) {
        wholeSeen_ = true;
        return;
    }
    const auto grouped =
        decimals == groupLength ? groupedNumber(text, static_cast<Thousands>(form.decimal)) : std::nullopt;
    cleared_ = form.thousands != Thousands::notSaid || !grouped || !grouped->isDoubtful();
    zeroSeen_ = zeroSeen_ || text.back() == '0';
    if (first_.empty())
        first_ = text;
}

bool ColumnFiller::append(const Cell& cell, const MissingWords& words)
{
    if (givenUp_)
        return true;
    if (column_.request.kind == ColumnKind::labels)
        return appendLabel(cell);
    const bool fits = appendNumber(cell, words);
    if (fits || requested_)
        return fits;
    column_.numbers = {};
    return givenUp_ = true;
}

/// Whether a text is UTF-8 is looked at once for each different one.
bool ColumnFiller::appendLabel(const Cell& cell)
{
    const auto* const text = std::get_if<std::string_view>(&cell);
    const std::size_t known = column_.labelTexts.size();
    column_.labels.push_back(text                  ? labelOf(*text)
                                 : hasNoText(cell) ? DataColumn::missingLabel
                                                   : labelOf(textOf(cell)));
    return column_.labelTexts.size() == known || isUtf8(column_.labelTexts.back());
}

bool ColumnFiller::appendNumber(const Cell& cell, const MissingWords& words)
{
    const std::optional<double> number = numberIn(cell, form_);
    const bool missing = (!number || words.holdNumbers()) && isMissing(cell, words);
    if (!number && !missing)
        return false;
    if (missing && !hasNoText(cell))
        noteMissing(textOf(cell));
    numberSeen_ = numberSeen_ || !missing;
    if (const auto* const text = std::get_if<std::string_view>(&cell); text && !missing)
        doubt_.look(*text, *number, form_);
    column_.numbers.push_back(missing ? std::numeric_limits<double>::quiet_NaN() : *number);
    return true;
}

/// Empty cells are no words.
void ColumnFiller::noteMissing(const std::string& text)
{
    if (const std::string_view word = trimmed(text); !word.empty())
        ++column_.missingCells[std::string(word)];
}

std::int32_t ColumnFiller::labelOf(std::string_view text)
{
    if (lastLabel_ != DataColumn::missingLabel && column_.labelTexts[static_cast<std::size_t>(lastLabel_)] == text)
        return lastLabel_;
    if (const auto known = labelIndex_.find(text); known != labelIndex_.end())
        return lastLabel_ = known->second;
    lastLabel_ = static_cast<std::int32_t>(column_.labelTexts.size());
    column_.labelTexts.emplace_back(text);
    labelIndex_.emplace(text, lastLabel_);
    return lastLabel_;
}

TableBuilder::TableBuilder(std::span<const ColumnRequest> requests, OtherColumns others,
                           std::shared_ptr<const MissingWords> words)
    : others_(others), words_(std::move(words))
{
    for (const ColumnRequest& request : requests)
        if (std::ranges::find(fillers_, request, &ColumnFiller::request) == fillers_.end())
            fillers_.emplace_back(request, true);
}

std::vector<std::size_t> TableBuilder::begin(const InputHeader& header)
{
    header_ = header;
    for (std::size_t column = 0; column < header_.columns.size(); ++column)
        ++places_.try_emplace(header_.columns[column], Place{.position = column}).first->second.count;
    fillersOf_.resize(header_.columns.size());
    for (ColumnFiller& filler : fillers_)
        fillersOf_[positionOf(filler)].push_back(&filler);
    for (std::size_t column = 0; others_ == OtherColumns::numeric && column < header_.columns.size(); ++column)
        if (fillersOf_[column].empty())
            fillersOf_[column].push_back(
                &fillers_.emplace_back(ColumnRequest{header_.columns[column], ColumnKind::numbers}, false));
    for (ColumnFiller& filler : fillers_)
        filler.setForm(header.numbers);
    std::vector<std::size_t> wanted;
    for (std::size_t column = 0; column < fillersOf_.size(); ++column)
        if (!fillersOf_[column].empty())
            wanted.push_back(column);
    return wanted;
}

bool TableBuilder::take(std::size_t column, const Cell& cell)
{
    bool fits = true;
    for (ColumnFiller* const filler : fillersOf_[column])
        fits = filler->append(cell, *words_) && fits;
    return fits;
}

void TableBuilder::endRow()
{
    if (rows() == static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw inputError(header_.source + ": more than " + std::to_string(rows()) + " rows of data; split the data");
    RowSink::endRow();
}

DataTable TableBuilder::finish()
{
    DataTable table{.source = header_.source, .rows = rows(), .missingWords = words_};
    for (ColumnFiller& filler : fillers_) {
        if (!filler.isKept())
            continue;
        if (!filler.isRequested())
            requireOnce(filler.request().name, header_.source);
        table.columns.push_back(filler.take());
    }
    return table;
}

std::size_t TableBuilder::positionOf(ColumnFiller& filler) const
{
    if (const ColumnRequest& request = filler.request(); !places_.contains(request.name) && !request.orElse.empty())
        filler.rename(std::string(request.orElse));
    const ColumnRequest& request = filler.request();
    const auto found = places_.find(request.name);
    if (found == places_.end())
        throw unknownColumn(request, header_);
    requireOnce(request.name, header_.place);
    return found->second.position;
}

void TableBuilder::requireOnce(const std::string& name, const std::string& place) const
{
    if (places_.at(name).count > 1)
        throw inputError(place + ": the column name " + inQuotes(name) + " occurs more than once; rename one of them");
}

} // namespace vexroc
