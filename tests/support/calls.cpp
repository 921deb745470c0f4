#include "tests/support/calls.h"

#include <array>
#include <stdexcept>

namespace roctest {
namespace {

int count(std::span<const double> list) { return static_cast<int>(list.size()); }

void append(Numbers& all, const Numbers& more) { all.insert(all.end(), more.begin(), more.end()); }

template <std::size_t N, class Record>
Numbers listed(const Record& record)
{
    Numbers result;
    for (const double value : std::bit_cast<std::array<double, N>>(record))
        result.push_back({value});
    return result;
}

void requireRows(const void* rows)
{
    if (rows == nullptr)
        throw std::runtime_error("a curve call returned null rows");
}

} // namespace

Numbers taken(const roccurve_res& result)
{
    requireRows(result.rows);
    Numbers rows;
    for (int i = 0; i < 3 * result.count; ++i)
        rows.push_back({result.rows[i]});
    release_roccurve_res(result);
    return rows;
}

Numbers taken(const prcurve_res& result)
{
    requireRows(result.rows);
    Numbers rows;
    for (const prcurve_row& row : std::span(result.rows, static_cast<std::size_t>(result.count)))
        append(rows, {{row.cutOff}, {row.recall}, {row.precision}, {static_cast<double>(row.interpolated)}});
    release_prcurve_res(result);
    return rows;
}

Numbers curve(std::span<const double> states, std::span<const double> values, const Words& words)
{
    return taken(
        roccurve(states.data(), values.data(), count(states), words.positiveValue, words.include, words.larger));
}

Numbers precisionRecall(std::span<const double> states, std::span<const double> values, const Words& words)
{
    return taken(prcurve(states.data(), values.data(), count(states), words.positiveValue, words.include, words.larger,
                         words.interpolation));
}

auc_res areaOf(std::span<const double> states, std::span<const double> values, const Words& words, double level)
{
    return auc(states.data(), values.data(), count(states), words.positiveValue, words.include, words.larger,
               words.distribution, level);
}

auc_comparison_res pairedOf(const Sample& sample, const Words& words, double level)
{
    return auc_pairedcomparison(sample.states.data(), sample.values.data(), sample.others.data(), sample.size(),
                                words.positiveValue, words.include, words.larger, level);
}

auc_comparison_res independentOf(const Sample& sample, const Words& words, double level)
{
    return auc_indpendentcomparison(sample.states.data(), sample.values.data(), sample.size(), sample.states.data(),
                                    sample.others.data(), sample.size(), words.positiveValue, words.include,
                                    words.larger, words.distribution, level);
}

Numbers numbers(const auc_res& record) { return listed<7>(record); }

Numbers numbers(const auc_comparison_res& record) { return listed<20>(record); }

Numbers everything(const Sample& sample, const Words& words)
{
    Numbers all = curve(sample.states, sample.values, words);
    append(all, precisionRecall(sample.states, sample.values, words));
    append(all, numbers(areaOf(sample.states, sample.values, words)));
    append(all, numbers(pairedOf(sample, words)));
    append(all, numbers(independentOf(sample, words)));
    return all;
}

} // namespace roctest
