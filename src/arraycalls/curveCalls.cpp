#include "arraycalls/arrayInput.h"
#include "inference/OperatingPoint.h"
#include "inference/PrecisionRecallSweep.h"
#include "summary/SortedObservations.h"
#include "vexrocproc/arraycalls.h"
#include "vexrocproc/optionwords.h"

#include <limits>
#include <memory>
#include <new>
#include <optional>

namespace ROCALG_920::arraycalls {
namespace {

/// Throws when a result has more rows than its count can tell.
int checkedCount(std::size_t rows)
{
    if (rows > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::bad_alloc();
    return static_cast<int>(rows);
}

/// The cases behind a curve and their order; no order without a curve.
struct SortedCases {
    explicit SortedCases(const ArrayInput& input) : observations(observationsOf(input))
    {
        if (hasCurve(observations.counts()))
            sorted = sortedValues(observations);
    }
    [[nodiscard]] std::size_t cutOffs() const { return sorted ? countCutOffs(observations, *sorted) : 0; }
    template <class Visit>
    void forEachCutOff(CurveOptions options, Visit&& visit) const
    {
        if (sorted)
            ROCALG_920::forEachCutOff(observations, *sorted, options, visit);
    }

    Observations observations;
    std::optional<valuesort::SortedValues> sorted;
};

roccurve_res rocCurve(const ArrayInput& input, CurveOptions options)
{
    const SortedCases cases(input);
    const std::size_t cutOffs = cases.cutOffs();
    const int count = checkedCount(cutOffs);
    std::unique_ptr<double[]> rows(new double[3 * cutOffs]); // every one is written below
    double* row = rows.get();
    cases.forEachCutOff(options, [&](double cutOff, const CutOffCounts& result) {
        row[0] = cutOff;
        row[1] = 1.0 - specificity(result);
        row[2] = sensitivity(result);
        row += 3;
    });
    return {rows.release(), count};
}

/// Calls row(cut-off, precision, recall, interpolated) for every point in order; the sweep that it returns knows what
/// the end point lacks.
template <class Row>
PrecisionRecallSweep sweepPoints(const SortedCases& cases, CurveOptions options, bool alongTP, Row&& row)
{
    PrecisionRecallSweep sweep(alongTP);
    cases.forEachCutOff(options, [&](double cutOff, const CutOffCounts& result) {
        sweep.step(result, [&](double precision, double recall, bool interpolated) {
            row(cutOff, precision, recall, interpolated);
        });
    });
    return sweep;
}

prcurve_res prCurve(const ArrayInput& input, CurveOptions options, bool alongTP)
{
    const SortedCases cases(input);
    std::size_t points = 0;
    sweepPoints(cases, options, alongTP, [&](double, double, double, bool) { ++points; });
    const int count = checkedCount(points);
    std::unique_ptr<prcurve_row[]> rows(new prcurve_row[points]); // every one is written below
    prcurve_row* row = rows.get();
    const PrecisionRecallSweep sweep =
        sweepPoints(cases, options, alongTP, [&](double cutOff, double precision, double recall, bool interpolated) {
            *row++ = {cutOff, recall, precision, interpolated};
        });
    if (const auto precision = sweep.lentPrecision(options.largerTestMorePositive))
        rows[options.largerTestMorePositive ? points - 1 : 0].precision = *precision;
    return {rows.release(), count};
}

} // namespace
} // namespace ROCALG_920::arraycalls

using namespace ROCALG_920::arraycalls;

roccurve_res roccurve(const double* actual, const double* predicted, int n, const double* positiveValue,
                      const char* include, const char* larger)
{
    return guarded(
        [&] {
            return rocCurve({actual, predicted, n, positiveValue}, {isInclude(include), isLarger(larger)});
        },
        roccurve_res{nullptr, 0});
}

void release_roccurve_res(roccurve_res res) { delete[] res.rows; }

prcurve_res prcurve(const double* actual, const double* predicted, int n, const double* positiveValue,
                    const char* include, const char* larger, const char* interpolation)
{
    return guarded(
        [&] {
            return prCurve({actual, predicted, n, positiveValue}, {isInclude(include), isLarger(larger)},
                           isTP(interpolation));
        },
        prcurve_res{nullptr, 0});
}

void release_prcurve_res(prcurve_res res) { delete[] res.rows; }
