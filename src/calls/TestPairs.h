#pragma once

#include "calls/AnalysisRequest.h"
#include "calls/RunWatch.h"
#include "inference/RankedCases.h"

#include <cstddef>
#include <map>
#include <span>
#include <vector>

namespace ROCALG_920::calls {

/// Every two tests of a request on the rows in which both are known, each in its own direction. A test is ordered once,
/// whatever the others lack.
class TestPairs {
public:
    /// The columns are all those of the request, of the rows that take part; the rule says which of them count.
    TestPairs(const AnalysisRequest& request, const std::vector<std::span<const double>>& columns, const RowRule& rule);

    /// Calls visit(comparison) for the pairs (0, 1), (0, 2), ... (1, 2), ... of the list of tests. False when it was
    /// cancelled.
    template <class Visit>
    [[nodiscard]] bool compareAll(RunWatch& watch, Visit&& visit)
    {
        const std::size_t tests = request_.tests().size();
        for (std::size_t i = 0; i < tests; ++i) {
            if (watch.cancelRequested())
                return false;
            order(request_.tests()[i]);
            watch.tell(0.5 * static_cast<double>(i + 1) / static_cast<double>(tests));
        }
        for (std::size_t i = 0; i < tests; ++i) {
            for (std::size_t j = i + 1; j < tests; ++j) {
                if (watch.cancelRequested())
                    return false;
                visit(compare(i, j));
            }
            watch.tell(0.5 + 0.5 * static_cast<double>(i + 1) / static_cast<double>(tests));
        }
        return true;
    }

private:
    void order(int column);
    [[nodiscard]] vexroc_comparison compare(std::size_t first, std::size_t second) const;

    const AnalysisRequest& request_;
    const std::vector<std::span<const double>>& columns_;
    double zCritical_;
    std::vector<std::size_t> rows_; ///< those that count; empty where all do
    std::vector<unsigned char> states_;
    std::map<int, RankedCases> tests_; ///< by column
};

} // namespace ROCALG_920::calls
