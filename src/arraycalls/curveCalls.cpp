#include "arraycalls/arrayInput.h"
#include "inference/OperatingPoint.h"
#include "inference/PrecisionRecallSweep.h"
#include "vexrocproc/arraycalls.h"
#include "vexrocproc/optionwords.h"

#include <limits>
#include <memory>
#include <new>

namespace ROCALG_920::arraycalls {
namespace {

/// Throws when a result has more rows than its count can tell.
int checkedCount(std::size_t rows)
{
    if (rows > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::bad_alloc();
    return static_cast<int>(rows);
}

roccurve_res rocCurve(const ArrayInput& input, const char* include, const char* larger)
{
    ROCSpace space(isInclude(include), isLarger(larger), false, true, true);
    fill(space, input);
    const std::size_t cutOffs = space.countCutOffs();
    const int count = checkedCount(cutOffs);
    std::unique_ptr<double[]> rows(new double[3 * cutOffs]); // every one is written below
    double* row = rows.get();
    space.forEachCutOff([&](double cutOff, const CutOffCounts& result) {
        row[0] = cutOff;
        row[1] = 1.0 - specificity(result);
        row[2] = sensitivity(result);
        row += 3;
    });
    return {rows.release(), count};
}

/// Calls row(cut-off, true positives, cases classified as positive, interpolated) for every point in order; the sweep
/// that it returns knows what the end point lacks.
template <class Row>
PrecisionRecallSweep sweepPoints(const ROCSpace& space, bool alongTP, Row&& row)
{
    PrecisionRecallSweep sweep(alongTP);
    space.forEachCutOff([&](double cutOff, const CutOffCounts& result) {
        sweep.step(result, [&](double tp, double classifiedPositive, bool interpolated) {
            row(cutOff, tp, classifiedPositive, interpolated);
        });
    });
    return sweep;
}

prcurve_res prCurve(const ArrayInput& input, const char* include, const char* larger, const char* interpolation)
{
    const bool alongTP = isTP(interpolation);
    const bool largerTestMorePositive = isLarger(larger);
    ROCSpace space(isInclude(include), largerTestMorePositive, true, false, alongTP);
    fill(space, input);
    space.finish();

    std::size_t points = 0;
    sweepPoints(space, alongTP, [&](double, double, double, bool) { ++points; });
    const int count = checkedCount(points);
    std::unique_ptr<prcurve_row[]> rows(new prcurve_row[points]); // every one is written below
    const double nPos = space.getPositiveCount();
    prcurve_row* row = rows.get();
    const PrecisionRecallSweep sweep =
        sweepPoints(space, alongTP, [&](double cutOff, double tp, double classifiedPositive, bool interpolated) {
            *row++ = {cutOff, tp / nPos, tp / classifiedPositive, interpolated};
        });
    if (const auto precision = sweep.lentPrecision(largerTestMorePositive))
        rows[largerTestMorePositive ? points - 1 : 0].precision = *precision;
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
            return rocCurve({actual, predicted, n, positiveValue}, include, larger);
        },
        roccurve_res{nullptr, 0});
}

void release_roccurve_res(roccurve_res res) { delete[] res.rows; }

prcurve_res prcurve(const double* actual, const double* predicted, int n, const double* positiveValue,
                    const char* include, const char* larger, const char* interpolation)
{
    return guarded(
        [&] {
            return prCurve({actual, predicted, n, positiveValue}, include, larger, interpolation);
        },
        prcurve_res{nullptr, 0});
}

void release_prcurve_res(prcurve_res res) { delete[] res.rows; }
