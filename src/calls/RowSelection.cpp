#include "calls/RowSelection.h"

#include <cmath>
#include <utility>

namespace ROCALG_920::calls {

namespace {

using Columns = std::vector<std::span<const double>>;
using Row = RowOf<Columns>;

bool hasParts(RowFate fate)
{
    return fate != RowFate::missingState && fate != RowFate::missingGroup && fate != RowFate::missingWeight;
}

/// Where rows that end so are counted; those that are used are counted by their state.
long long& placeOf(const RowPart& part, vexroc_rows& rows)
{
    switch (part.fate) {
    case RowFate::missingState: return rows.missing_state;
    case RowFate::missingGroup: return rows.missing_group;
    case RowFate::missingWeight: return rows.missing_weight;
    case RowFate::otherGroup: return rows.other_group;
    case RowFate::unusableWeight: return rows.unusable_weight;
    case RowFate::incomplete: return rows.incomplete;
    case RowFate::used: break;
    }
    return part.positive ? rows.positive : rows.negative;
}

/// Takes rows one by one, each with what the rule makes of it.
class RowCounter {
public:
    explicit RowCounter(const RowRule& rule) : rule_(rule)
    {
        for (const int test : rule.tests)
            counts_.gaps.push_back({test, 0, 0});
    }

    void take(const Row& row, const RowPart& part)
    {
        vexroc_rows& rows = counts_.rows;
        ++rows.read;
        ++placeOf(part, rows);
        countWeight(row, part);
        if (part.fate == RowFate::used)
            (part.positive ? rows.weighted_positive : rows.weighted_negative) += part.cases;
        if (isUsable(part.fate))
            for (RowTally::UnknownTest& gap : counts_.gaps)
                (part.positive ? gap.positive : gap.negative) += std::isnan(row[gap.column]) ? 1 : 0;
    }
    [[nodiscard]] RowTally counts() && { return std::move(counts_); }

private:
    void countWeight(const Row& row, const RowPart& part)
    {
        if (rule_.weight < 0 || !hasParts(part.fate))
            return;
        const bool rounded = !isWhole(row[rule_.weight]);
        counts_.rows.rounded_weights += rounded ? 1 : 0;
        counts_.rows.rounded_used += rounded && isUsable(part.fate) ? 1 : 0;
        counts_.rows.too_heavy += part.fate == RowFate::unusableWeight && row[rule_.weight] > 1.0 ? 1 : 0;
    }

    const RowRule& rule_;
    RowTally counts_;
};

} // namespace

RowSelection::RowSelection(Columns columns, const RowRule& rule) : columns_(std::move(columns))
{
    std::vector<bool> keep(columns_.front().size());
    RowCounter counter(rule);
    for (std::size_t i = 0; i < keep.size(); ++i) {
        const Row row{columns_, i};
        const RowPart part = rule.of(row);
        counter.take(row, part);
        keep[i] = hasParts(part.fate);
    }
    counts_ = std::move(counter).counts();
    if (counts_.withoutParts() > 0)
        copyRows(keep);
}

void RowSelection::copyRows(const std::vector<bool>& keep)
{
    for (std::span<const double>& column : columns_) {
        std::vector<double>& copy = copies_.emplace_back();
        copy.reserve(keep.size() - static_cast<std::size_t>(counts_.withoutParts()));
        for (std::size_t row = 0; row < keep.size(); ++row)
            if (keep[row])
                copy.push_back(column[row]);
        column = copy;
    }
}

} // namespace ROCALG_920::calls
