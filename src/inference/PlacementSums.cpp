#include "inference/PlacementSums.h"

#include "numeric/Int256.h"

#include <cmath>

namespace ROCALG_920 {

namespace {

/// Sums around the means of two variables, times positives and times negatives: at most 4 P^2 N^2 < 2^158.
using CentredSums = SumsByState<Int256>;

/// From the products of the twice counts and the product of what they add up to, which is the same over the cases of
/// either state: the number of ordered pairs.
CentredSums centred(const StateSums& products, const Int256& productOfTotals, const StateCounts& cases)
{
    return {Int256(cases.positives) * Int256(products.positives) - productOfTotals,
            Int256(cases.negatives) * Int256(products.negatives) - productOfTotals};
}

CentredSums centred(const StateSums& products, const PlacementSums& first, const PlacementSums& second)
{
    const Int256 productOfTotals = Int256(first.pairs().twiceOrdered) * Int256(second.pairs().twiceOrdered);
    return centred(products, productOfTotals, first.cases());
}

/// Sum over the cases of one state of (v - mean)(w - mean) / (count - 1) / count, where the components v and w are
/// halves of integers over the number of the other state's cases.
double meanProduct(const Int256& centredTimesCount, double count, double others)
{
    const double sum = static_cast<double>(centredTimesCount) / (4.0 * others * others * count);
    return sum / (count - 1) / count;
}

/// The covariance (variance) of areas that such sums stand for: over the cases of each state, the mean product divided
/// by its degrees of freedom.
SumsByState<double> covarianceTerms(const CentredSums& sums, const StateCounts& cases)
{
    const double nPos = static_cast<double>(cases.positives);
    const double nNeg = static_cast<double>(cases.negatives);
    return {meanProduct(sums.positives, nPos, nNeg), meanProduct(sums.negatives, nNeg, nPos)};
}

double covarianceOf(const CentredSums& sums, const StateCounts& cases)
{
    const SumsByState<double> terms = covarianceTerms(sums, cases);
    return terms.positives + terms.negatives;
}

} // namespace

// With a and c the negatives and positives at a value, b the positives above it: a * (2b + c)^2 is four thirds of
// a * (c^2 + 3bc + 3b^2), the sum of triples, less a * c^2 / 3; likewise for the positives.

OrderedTriples PlacementSums::triples() const noexcept
{
    return {cases_, pairs(), (3 * squares_.negatives + ties_.ofNegatives) / 4,
            (3 * squares_.positives + ties_.ofPositives) / 4, ties_};
}

SumsByState<double> deLongTerms(const OrderedTriples& sample) noexcept
{
    StateSums squares;
    squares.positives = (4 * sample.threeTimesS2 - sample.tieSums.ofPositives) / 3;
    squares.negatives = (4 * sample.threeTimesS1 - sample.tieSums.ofNegatives) / 3;
    const Int256 total = sample.pairs.twiceOrdered;
    return covarianceTerms(centred(squares, total * total, sample.cases), sample.cases);
}

double PlacementSums::variance() const noexcept { return covarianceOf(centred(squares_, *this, *this), cases_); }

/// The variance of the difference is that of the case-by-case differences: squares of both minus twice the products.
PairedDifference pairedDifference(const PlacementSums& first, const PlacementSums& second, const StateSums& products)
{
    const CentredSums cross = centred(products, first, second);
    const CentredSums squares1 = centred(first.squares(), first, first);
    const CentredSums squares2 = centred(second.squares(), second, second);
    const auto difference = [](const Int256& square1, const Int256& square2, const Int256& product) {
        return square1 + square2 - Int256(2) * product;
    };
    const CentredSums differences{difference(squares1.positives, squares2.positives, cross.positives),
                                  difference(squares1.negatives, squares2.negatives, cross.negatives)};
    return {covarianceOf(cross, first.cases()), std::sqrt(covarianceOf(differences, first.cases()))};
}

} // namespace ROCALG_920
