#include "calls/SummaryHandle.h"

#include "calls/guard.h"

#include <string>
#include <utility>

namespace ROCALG_920::calls {

void CollectedCases::requireRoom(std::int64_t cases) const
{
    if (cases > mostCases - cases_)
        throw InvalidArgument("more than 2^40 cases in one summary");
}

void CollectedCases::add(Summary piece)
{
    if (piece.values().empty())
        return;
    requireRoom(piece.counts().cases());
    if (!weighted_.empty())
        throw InvalidArgument("weights: the summary has cases with probability weights; give these theirs, or make "
                              "another summary");
    pieces_.reserve(pieces_.size() + 2);
    const std::int64_t cases = piece.counts().cases();
    if (settled_ && cases_ > 0) {
        pieces_.push_back(std::exchange(sample_.counts, Summary()));
        settled_ = false;
    }
    std::size_t kept = pieces_.size();
    while (kept > 0 && pieces_[kept - 1].values().size() < 2 * piece.values().size())
        piece = pieces_[--kept].mergedWith(piece);
    // Nothing fails from here on.
    pieces_.resize(kept);
    pieces_.push_back(std::move(piece));
    cases_ += cases;
    settled_ = false;
}

void CollectedCases::add(const std::vector<WeightedCase>& piece)
{
    if (piece.empty())
        return;
    requireRoom(static_cast<std::int64_t>(piece.size()));
    if (weighted_.empty() && cases_ > 0)
        throw InvalidArgument("weights: the summary has cases without probability weights; give those theirs, or make "
                              "another summary");
    weighted_.insert(weighted_.end(), piece.begin(), piece.end());
    cases_ += static_cast<std::int64_t>(piece.size());
    settled_ = false;
}

const WeightedSummary& CollectedCases::sample() const
{
    const std::scoped_lock lock(settling_);
    if (settled_)
        return sample_;
    for (; pieces_.size() > 1; pieces_.pop_back()) {
        Summary& before = pieces_[pieces_.size() - 2];
        before = before.mergedWith(pieces_.back());
    }
    if (weighted_.empty()) {
        sample_.counts = std::move(pieces_.front());
        pieces_.clear();
    } else {
        sample_ = weightedSummary(weighted_);
    }
    settled_ = true;
    return sample_;
}

} // namespace ROCALG_920::calls
