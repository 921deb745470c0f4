#include "tests/driver/analyses.h"
#include "tests/support/calls.h"
#include "vexrocproc/ROCComparisonOutStats.h"

#include <gtest/gtest.h>

#include <string>

/// The facade against the array calls: the same columns give the same numbers, to the last bit.
namespace {

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;

enum { value = 1, other, side };

struct Option {
    Words words;
    Classification classification;
    Direction direction;
    PRInterpolation interpolation;
    Distribution distribution;
    double level;
};
const Option options[] = {
    {{}, Include, LargerMorePositive, AlongTP, NonParametric, 0.95},
    {{"exclude", "smaller", "keilwagen", "nonparam"}, Exclude, SmallerMorePositive, AlongFP, NonParametric, 0.9},
    {{"exclude", "larger", "davis-goadrich", "bi-negative"}, Exclude, LargerMorePositive, AlongTP,
     BiNegativeExponential, 0.99},
    {{"include", "smaller", "keilwagen", "bi-negative"}, Include, SmallerMorePositive, AlongFP, BiNegativeExponential,
     0.5},
};

ROCSetting settingWith(const Option& option)
{
    ROCSetting setting = areasOf({value});
    setting.setNeedPR(true);
    setting.setClassification(option.classification);
    setting.setDirection(option.direction);
    setting.setPRInterpolationType(option.interpolation);
    setting.setDistribution(option.distribution);
    setting.setConfidenceLevel(option.level);
    return setting;
}

/// Every second case is in group 1, the others in group 2.
HostData hostDataOf(const Sample& sample)
{
    HostData data;
    data.add(sample.states);
    data.add(sample.values);
    data.add(sample.others);
    data.add({});
    for (std::size_t i = 0; i < sample.states.size(); ++i)
        data.columns[side].push_back(i % 2 == 0 ? 1.0 : 2.0);
    return data;
}

Sample halfOf(const Sample& sample, std::size_t first)
{
    Sample half;
    for (std::size_t i = first; i < sample.states.size(); i += 2)
        half.add(sample.states[i], sample.values[i], sample.others[i]);
    return half;
}

Numbers areaNumbers(const ROCOutBase& record)
{
    return {{double(record.getPositiveCount())}, {double(record.getNegativeCount())}, {record.getArea()},
            {record.getStdError()}, {record.getAsymptoticSig()}, {record.getCILower()}, {record.getCIUpper()}};
}

/// Of the first comparison of a run.
Numbers comparisonNumbers(const ROCSetting& setting, HostData& data)
{
    Host host(setting, data);
    EXPECT_EQ(host.run(), 0);
    const ROCComparisonOutStats& comparison = *host.facade.GetOutputStats()->getROCComparisonStats().at(0);
    Numbers all = areaNumbers(*comparison.getCompare1Stats());
    const Numbers second = areaNumbers(*comparison.getCompare2Stats());
    all.insert(all.end(), second.begin(), second.end());
    for (const double number : {comparison.getZStats(), comparison.getAsymptoticSig(), comparison.getAUCDiff(),
                                comparison.getStdErrorDiff(), comparison.getCILower(), comparison.getCIUpper()})
        all.push_back({number});
    return all;
}

Numbers curveRows(const ROCOutBase& record)
{
    Numbers rows;
    for (std::size_t i = 0; i < record.getCutOffPoints().size(); ++i) {
        const auto [sensitivity, specificity] = record.getSensitivitySpecificity()[i];
        rows.insert(rows.end(), {{record.getCutOffPoints()[i]}, {1.0 - specificity}, {sensitivity}});
    }
    return rows;
}

/// (recall, precision) of all points, measured and interpolated.
Numbers precisionRecallPoints(const ROCOutBase& record)
{
    Numbers points;
    for (const auto& [precision, recall] : record.getPrecisionRecallDraw())
        points.insert(points.end(), {{recall}, {precision}});
    return points;
}

Numbers precisionRecallPoints(const Sample& sample, const Words& words)
{
    const Numbers rows = precisionRecall(sample.states, sample.values, words); // cut-off, recall, precision, flag
    Numbers points;
    for (std::size_t i = 0; i < rows.size(); i += 4)
        points.insert(points.end(), {rows[i + 1], rows[i + 2]});
    return points;
}

void expectSameAsArrayCalls(const Sample& sample, const Option& option)
{
    HostData data = hostDataOf(sample);
    Host areas(settingWith(option), data);
    ASSERT_EQ(areas.run(), 0);
    EXPECT_EQ(areaNumbers(areas.record()), numbers(areaOf(sample.states, sample.values, option.words, option.level)));
    EXPECT_EQ(curveRows(areas.record()), curve(sample.states, sample.values, option.words));
    EXPECT_EQ(precisionRecallPoints(areas.record()), precisionRecallPoints(sample, option.words));

    ROCSetting paired = settingWith(option);
    paired.setTestVars({value, other});
    paired.setComparisonType(PairedComparison);
    EXPECT_EQ(comparisonNumbers(paired, data), numbers(pairedOf(sample, option.words, option.level)));

    ROCSetting independent = settingWith(option);
    independent.setDistribution(NonParametric); // a call decides on the assumption per sample, a run for all
    independent.setSelectGroupVar(side, 2.0, 1.0);
    independent.setComparisonType(IndependentComparison);
    const Sample first = halfOf(sample, 1);
    const Sample second = halfOf(sample, 0);
    EXPECT_EQ(comparisonNumbers(independent, data),
              numbers(auc_indpendentcomparison(first.states.data(), first.values.data(), first.size(),
                                               second.states.data(), second.values.data(), second.size(), nullptr,
                                               option.words.include, option.words.larger, "nonparam", option.level)));
}

TEST(SameAsArrayCalls, OnSamplesOfEveryShapeAndOnBalancedOnes)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 6; ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            expectSameAsArrayCalls(drawSample(shape, seed, sizeFor(seed)), options[seed % 4]);
            Sample balanced = drawSample(shape, seed, 20);
            for (std::size_t i = 0; i < 20; ++i)
                balanced.states[i] = i % 2 == 0 ? 1.0 : 0.0;
            expectSameAsArrayCalls(balanced, options[2 + seed % 2]); // keeps the bi-negative assumption
        }
}

TEST(Comparisons, ComeInTheOrderOfTheList)
{
    HostData data = hostDataOf(drawSample(shapes()[1], 5, 50));
    ROCSetting setting = areasOf({other, side, value});
    setting.setComparisonType(PairedComparison);
    Host host(setting, data);
    ASSERT_EQ(host.run(), 0);
    const auto& base = host.facade.GetOutputStats()->getROCBaseStats();
    std::vector<std::pair<ROCOutBase*, ROCOutBase*>> compared;
    for (const ROCComparisonOutStats* const comparison : host.facade.GetOutputStats()->getROCComparisonStats())
        compared.emplace_back(comparison->getCompare1Stats(), comparison->getCompare2Stats());
    ASSERT_EQ(base.size(), 3u);
    EXPECT_EQ(compared, (decltype(compared){{base[0], base[1]}, {base[0], base[2]}, {base[1], base[2]}}));

    setting.setTestVars({value, value}); // a variable against itself differs by nothing
    const Numbers all = comparisonNumbers(setting, data);
    EXPECT_EQ(Numbers(all.end() - 6, all.end()), (Numbers{{0.0}, {1.0}, {0.0}, {0.0}, {0.0}, {0.0}}));
}

} // namespace
