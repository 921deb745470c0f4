#pragma once

#include "vexrocproc/analysis.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace roctest {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

inline void expectOk(int result) { EXPECT_EQ(result, VEXROC_OK) << vexroc_last_error(); }

/// A handle of analysis.h; every call has to succeed.
struct Analysis {
    vexroc_analysis* handle = nullptr;
    Analysis() { expectOk(vexroc_analysis_new(&handle)); }
    ~Analysis() { vexroc_analysis_free(handle); }
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;

    int column(const char* name, const std::vector<double>& values) const
    {
        int index = -1;
        expectOk(vexroc_analysis_add_column(handle, name, values.data(), std::ssize(values), &index));
        return index;
    }
    void part(const char* name, int index) const { expectOk(vexroc_analysis_set_column(handle, name, index)); }
    void word(const char* name, const char* value) const { expectOk(vexroc_analysis_set_word(handle, name, value)); }
    void number(const char* name, double value) const { expectOk(vexroc_analysis_set_number(handle, name, value)); }
    void run() const { expectOk(vexroc_analysis_run(handle)); }

    /// What a call fills in.
    template <class Result, class Call, class... Index>
    Result get(Call call, Index... index) const
    {
        Result result{};
        result.struct_size = sizeof result;
        expectOk(call(handle, index..., &result));
        return result;
    }
    vexroc_record record(int i) const { return get<vexroc_record>(vexroc_analysis_record, i); }
    vexroc_comparison comparison(int i) const { return get<vexroc_comparison>(vexroc_analysis_comparison, i); }
    vexroc_cut_off bestCutOff(int record, int i) const
    {
        return get<vexroc_cut_off>(vexroc_analysis_best_cut_off, record, i);
    }
    /// In the order of the structure.
    std::vector<double> rows() const
    {
        const auto r = get<vexroc_rows>(vexroc_analysis_rows);
        const auto listed = [](auto... numbers) { return std::vector{static_cast<double>(numbers)...}; };
        return listed(r.read, r.missing_state, r.missing_group, r.missing_weight, r.other_group, r.unusable_weight,
                      r.incomplete, r.positive, r.negative, r.weighted_positive, r.weighted_negative, r.rounded_weights,
                      r.rounded_used, r.too_heavy);
    }
    using Pair = std::pair<long long, long long>;
    /// Rows that lack only this test: positive, negative.
    Pair gap(int column) const
    {
        Pair rows;
        expectOk(vexroc_analysis_missing_test(handle, column, &rows.first, &rows.second));
        return rows;
    }
    /// Of the cases that a record stands for: read, usable.
    Pair recordRows(int record) const
    {
        Pair rows;
        expectOk(vexroc_analysis_record_rows(handle, record, &rows.first, &rows.second));
        return rows;
    }
};

} // namespace roctest
