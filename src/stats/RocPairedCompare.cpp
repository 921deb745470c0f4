#include "stats/RocPairedCompare.h"

#include "space/SpaceSummary.h"
#include "stats/ROCPairedStats.h"

#include <cmath>
#include <cstdint>

namespace ROCALG_920 {

using VexCommon_920::MultiPassRecordIter;
using VexCommon_920::Record;

/// Sums over records that are looked up by value: products of centred components, and the exact sums of the counts
/// behind the components, which serve when the records turn out to be the spaces' cases in another order.
struct RocPairedCompare::SearchedSums {
    SearchedSums(ROCPairedStats& first, ROCPairedStats& second, bool largerTestMorePositive)
        : first_(first), second_(second), centre1_(largerTestMorePositive ? first.getArea() : 1 - first.getArea()),
          centre2_(largerTestMorePositive ? second.getArea() : 1 - second.getArea())
    {
    }

    void add(bool positive, double value1, double value2)
    {
        if (std::isnan(value1) || std::isnan(value2))
            return;
        const double v1 = (positive ? first_.getTxs() : first_.getTys())[value1];
        const double v2 = (positive ? second_.getTxs() : second_.getTys())[value2];
        (positive ? nPos_ : nNeg_) += 1;
        (positive ? s10_ : s01_) += (v1 - centre1_) * (v2 - centre2_);
        const Int128 twice1 = first_.components().twiceOf(v1, positive);
        const Int128 twice2 = second_.components().twiceOf(v2, positive);
        totals1_.add(positive, twice1);
        totals2_.add(positive, twice2);
        products_.add(positive, twice1 * twice2);
    }
    [[nodiscard]] double covariance() const { return s10_ / (nPos_ - 1) / nPos_ + s01_ / (nNeg_ - 1) / nNeg_; }
    [[nodiscard]] const StateSums& products() const { return products_; }
    /// As many cases of each state as in both spaces, with the same totals? Then the means of the components are those
    /// of the spaces, which is all that exact centring asks for.
    [[nodiscard]] bool totalsMatch() const { return matches(first_, totals1_) && matches(second_, totals2_); }

private:
    [[nodiscard]] bool matches(ROCPairedStats& stats, const StateSums& totals) const
    {
        const ROCSpace& space = stats.getROCSpace();
        const Int128 ordered = stats.components().placements().pairs().twiceOrdered;
        return nPos_ == space.getPositiveCount() && nNeg_ == space.getNegtiveCount() && totals.positives == ordered
            && totals.negatives == ordered;
    }

    ROCPairedStats& first_;
    ROCPairedStats& second_;
    double centre1_; ///< mean of the components, which do not know the direction
    double centre2_;
    double nPos_ = 0;
    double nNeg_ = 0;
    double s10_ = 0;
    double s01_ = 0;
    StateSums totals1_;
    StateSums totals2_;
    StateSums products_;
};

RocPairedCompare::RocPairedCompare(ROCPairedStats& first, ROCPairedStats& second, bool largerTestMorePositive,
                                   double confidenceLevel, int stateVarIndex, double positiveStateValue)
    : zCritical_(criticalValue(confidenceLevel)), testVarIndex1_(first.getTestVarInd()),
      testVarIndex2_(second.getTestVarInd()), stateVarIndex_(stateVarIndex), positiveStateValue_(positiveStateValue),
      largerTestMorePositive_(largerTestMorePositive), first_(first), second_(second)
{
}

bool RocPairedCompare::hasBothStates() const
{
    return first_.components().placements().cases().bothStates()
        && second_.components().placements().cases().bothStates();
}

/// Is this record the case that arrived at this position, in both spaces?
bool RocPairedCompare::linesUp(std::size_t position, bool positive, double value1, double value2) const
{
    const Observations& cases1 = SpaceSummary(first_.getROCSpace()).observations();
    const Observations& cases2 = SpaceSummary(second_.getROCSpace()).observations();
    return position < first_.components().size() && position < second_.components().size()
        && cases1.value(position) == value1 && cases2.value(position) == value2 && cases1.positive(position) == positive
        && cases2.positive(position) == positive;
}

bool RocPairedCompare::computeStats(MultiPassRecordIter& iter)
{
    if (!hasBothStates())
        return false;
    if (!iter.HasMore())
        iter.NewPass();
    StateSums products;
    std::size_t linedUp = 0;
    const Record* record = nullptr;
    while (iter.HasMore() && (record = iter.Next()) != nullptr) {
        const bool positive = (*record)[stateVarIndex_] == positiveStateValue_; // exact: NaN is negative
        if (!linesUp(linedUp, positive, (*record)[testVarIndex1_], (*record)[testVarIndex2_])) {
            finishBySearch(linedUp, record, iter);
            return true;
        }
        products.add(positive, Int128{first_.components().twice(linedUp)} * second_.components().twice(linedUp));
        ++linedUp;
    }
    if (linedUp == first_.components().size() && linedUp == second_.components().size())
        finishExactly(products);
    else
        finishBySearch(linedUp, nullptr, iter);
    return true;
}

bool RocPairedCompare::computeOverSpaces()
{
    if (!hasBothStates())
        return false;
    const Observations& cases = SpaceSummary(first_.getROCSpace()).observations();
    finishExactly(PairedComponents::products(cases, first_.components(), second_.components()));
    return true;
}

void RocPairedCompare::finishExactly(const StateSums& products)
{
    finish(pairedDifference(first_.components().placements(), second_.components().placements(), products));
}

/// Goes on by value after the first records lined up; `next` is the record that did not, if there is one.
void RocPairedCompare::finishBySearch(std::size_t linedUp, const Record* next, MultiPassRecordIter& iter)
{
    SearchedSums sums(first_, second_, largerTestMorePositive_);
    const Observations& cases1 = SpaceSummary(first_.getROCSpace()).observations();
    const Observations& cases2 = SpaceSummary(second_.getROCSpace()).observations();
    for (std::size_t i = 0; i < linedUp; ++i)
        sums.add(cases1.positive(i), cases1.value(i), cases2.value(i));
    for (; next != nullptr; next = iter.HasMore() ? iter.Next() : nullptr)
        sums.add((*next)[stateVarIndex_] == positiveStateValue_, (*next)[testVarIndex1_], (*next)[testVarIndex2_]);
    if (sums.totalsMatch())
        return finishExactly(sums.products());
    const double covariance = sums.covariance();
    finish({covariance, pairedStdError(first_.getStdError(), second_.getStdError(), covariance)});
}

void RocPairedCompare::finish(const PairedDifference& difference)
{
    difference_ = difference;
    test_ = testDifference(areaDifference(first_.getArea(), second_.getArea()), difference.stdErrorDiff, zCritical_);
}

} // namespace ROCALG_920
