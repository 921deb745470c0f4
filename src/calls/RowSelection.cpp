#include "calls/RowSelection.h"

#include "calls/guard.h"
#include "numeric/ExactSum.h"

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace ROCALG_920::calls {

namespace {

using Columns = std::vector<std::span<const double>>;
using Row = RowOf<Columns>;

/// Where rows that end so are counted; those that are used are counted by their state.
long long& placeOf(const RowPart& part, vexroc_rows& rows)
{
    switch (part.fate) {
    case RowFate::missingCount: return rows.missing_count;
    case RowFate::missingState: return rows.missing_state;
    case RowFate::otherState: return rows.other_state;
    case RowFate::missingGroup: return rows.missing_group;
    case RowFate::missingWeight: return rows.missing_weight;
    case RowFate::otherGroup: return rows.other_group;
    case RowFate::unusableWeight: return rows.unusable_weight;
    case RowFate::incomplete: return rows.incomplete;
    case RowFate::used: break;
    }
    return part.positive ? rows.positive : rows.negative;
}

/// Takes rows one by one, each with what the rule makes of it and how often it counts.
class RowCounter {
public:
    explicit RowCounter(const RowRule& rule) : rule_(rule)
    {
        for (const int test : rule.tests)
            counts_.gaps.push_back({test, 0, 0});
    }

    void take(const Row& row, const RowPart& part, std::int64_t times)
    {
        vexroc_rows& rows = counts_.rows;
        ++rows.given;
        rows.read += times;
        placeOf(part, rows) += times;
        countWeight(row, part);
        if (part.fate == RowFate::used)
            addWeight(row, part, times);
        if (isUsable(part.fate))
            countGaps(row, part, times);
        if (times > 0 && part.fate > RowFate::otherState && !part.positive)
            noteState(row[rule_.state]);
    }
    [[nodiscard]] RowTally counts() &&
    {
        counts_.rows.weighted_positive += positiveWeight_.value();
        counts_.rows.weighted_negative += negativeWeight_.value();
        return std::move(counts_);
    }

private:
    void addWeight(const Row& row, const RowPart& part, std::int64_t times)
    {
        if (rule_.weightIsProbability)
            (part.positive ? positiveWeight_ : negativeWeight_).add(row[rule_.weight]);
        else
            (part.positive ? counts_.rows.weighted_positive : counts_.rows.weighted_negative) +=
                part.cases * static_cast<double>(times);
    }
    void countWeight(const Row& row, const RowPart& part)
    {
        if (rule_.weight < 0 || rule_.weightIsProbability || !hasParts(part.fate))
            return;
        const bool rounded = !isWhole(row[rule_.weight]);
        counts_.rows.rounded_weights += rounded ? 1 : 0;
        counts_.rows.rounded_used += rounded && isUsable(part.fate) ? 1 : 0;
        counts_.rows.too_heavy += part.fate == RowFate::unusableWeight && row[rule_.weight] > 1.0 ? 1 : 0;
    }

    void countGaps(const Row& row, const RowPart& part, std::int64_t times)
    {
        bool anyGap = false;
        for (RowTally::UnknownTest& gap : counts_.gaps) {
            const bool isGap = std::isnan(row[gap.column]);
            (part.positive ? gap.positive : gap.negative) += isGap ? times : 0;
            anyGap = anyGap || isGap;
        }
        counts_.lackingSomeTest += anyGap ? times : 0;
    }

    void noteState(double negative)
    {
        counts_.moreThanTwoStates =
            counts_.moreThanTwoStates || (!std::isnan(negativeState_) && negativeState_ != negative);
        negativeState_ = negative;
    }

    const RowRule& rule_;
    RowTally counts_;
    ExactSum positiveWeight_; ///< of probabilities; whole cases need no care
    ExactSum negativeWeight_;
    double negativeState_ = std::numeric_limits<double>::quiet_NaN(); ///< the last; NaN before
};

/// Refuses counts and weights that are none.
class WeighingCheck {
public:
    explicit WeighingCheck(std::string_view column) : column_(column) {}

    void takeWeight(std::size_t row, double weight) const
    {
        if (weight < 0 || std::isinf(weight))
            throw fault("weight", row, " holds " + shortest(weight) + "; a weight is a number from 0");
    }
    void takeCount(std::size_t row, double count)
    {
        if (std::isnan(count))
            return;
        if (count < 0 || count != std::floor(count))
            throw fault("count", row, " holds " + shortest(count) + "; a count is a whole number from 0");
        constexpr double most = std::numeric_limits<int>::max();
        if ((total_ += count) > most)
            throw fault("count", row, " brings the cases to more than 2147483647, the most that there may be");
    }

private:
    [[nodiscard]] InvalidArgument fault(const char* part, std::size_t row, const std::string& what) const
    {
        return InvalidArgument(std::string(part) + ": row " + std::to_string(row + 1) + " of column " + quoted(column_)
                               + what);
    }

    std::string_view column_;
    double total_ = 0.0; // exact up to its limit
};

} // namespace

RowSelection::RowSelection(Columns columns, const RowRule& rule, std::string_view weighingName)
    : columns_(std::move(columns))
{
    std::vector<std::int32_t> times(columns_.front().size()); // how often each row is kept
    WeighingCheck check(weighingName);
    RowCounter counter(rule);
    bool keepsAll = true;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const Row row{columns_, i};
        if (rule.count >= 0)
            check.takeCount(i, row[rule.count]);
        if (rule.weightIsProbability)
            check.takeWeight(i, row[rule.weight]);
        const RowPart part = rule.of(row);
        const std::int64_t repeats = rule.repeats(row);
        counter.take(row, part, repeats);
        const bool isKept = hasParts(part.fate) && !(rule.weightIsProbability && part.cases == 0);
        times[i] = isKept ? static_cast<std::int32_t>(repeats) : 0;
        keepsAll = keepsAll && times[i] == 1;
    }
    counts_ = std::move(counter).counts();
    if (!keepsAll)
        copyRows(times);
}

void RowSelection::copyRows(const std::vector<std::int32_t>& times)
{
    const auto kept = static_cast<std::size_t>(counts_.rows.read - counts_.withoutParts());
    copies_.resize(columns_.size());
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        copies_[c].reserve(kept);
        for (std::size_t row = 0; row < times.size(); ++row)
            for (std::int32_t left = times[row]; left > 0; --left)
                copies_[c].push_back(columns_[c][row]);
        columns_[c] = copies_[c];
    }
}

void RowSelection::blankIncomplete(const RowRule& rule)
{
    if (counts_.lackingSomeTest == 0)
        return;
    std::vector<bool> lacking(columns_.front().size());
    for (std::size_t i = 0; i < lacking.size(); ++i)
        lacking[i] = rule.lacksTest(Row{columns_, i});
    copies_.resize(columns_.size());
    for (const int test : rule.tests) {
        const auto c = static_cast<std::size_t>(test);
        if (copies_[c].empty())
            copies_[c].assign(columns_[c].begin(), columns_[c].end());
        for (std::size_t i = 0; i < lacking.size(); ++i)
            if (lacking[i])
                copies_[c][i] = std::numeric_limits<double>::quiet_NaN();
        columns_[c] = copies_[c];
    }
}

} // namespace ROCALG_920::calls
