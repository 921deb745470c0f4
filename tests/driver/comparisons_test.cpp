#include "folders.h"
#include "tests/support/calls.h"
#include "tests/support/hosts.h"
#include "vexrocproc/ROCComparisonOutStats.h"
#include "vexrocproc/ROCOutBase.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

/// The facade against the array calls: the same columns give the same numbers, to the last bit.
namespace {

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;

enum Column { state, value, other, side };

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
    ROCSetting setting;
    setting.setStateVar(state, 1.0);
    setting.setTestVars({value});
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

Numbers comparisonNumbers(const ROCComparisonOutStats& comparison)
{
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

/// (recall, precision) of all points, then of the measured ones.
Numbers precisionRecallPoints(const ROCOutBase& record)
{
    Numbers points;
    for (const auto* list : {&record.getPrecisionRecallDraw(), &record.getPrecisionRecallCoordinates()})
        for (const auto& [precision, recall] : *list)
            points.insert(points.end(), {{recall}, {precision}});
    return points;
}

Numbers precisionRecallPoints(const Sample& sample, const Words& words)
{
    const Numbers rows = precisionRecall(sample.states, sample.values, words); // cut-off, recall, precision, flag
    Numbers all;
    Numbers measured;
    for (std::size_t i = 0; i < rows.size(); i += 4) {
        all.insert(all.end(), {rows[i + 1], rows[i + 2]});
        if (rows[i + 3].value == 0.0)
            measured.insert(measured.end(), {rows[i + 1], rows[i + 2]});
    }
    all.insert(all.end(), measured.begin(), measured.end());
    return all;
}

void expectSameAsArrayCalls(const Sample& sample, const Option& option)
{
    HostData data = hostDataOf(sample);
    const auto run = [&](ROCSetting setting, const auto& look) {
        RocAlgorithm facade(setting, data.variables);
        VexCommon_920::ColumnRecordIter records = data.records();
        ASSERT_EQ(facade.BuildModel(records).GetErrorCode(), 0);
        look(*facade.GetOutputStats());
    };
    run(settingWith(option), [&](const ROCOutputs& results) {
        const ROCOutBase& record = *results.getROCBaseStats().at(0);
        EXPECT_EQ(areaNumbers(record), numbers(areaOf(sample.states, sample.values, option.words, option.level)));
        EXPECT_EQ(curveRows(record), curve(sample.states, sample.values, option.words));
        EXPECT_EQ(precisionRecallPoints(record), precisionRecallPoints(sample, option.words));
    });

    ROCSetting paired = settingWith(option);
    paired.setTestVars({value, other});
    paired.setComparisonType(PairedComparison);
    run(paired, [&](const ROCOutputs& results) {
        EXPECT_EQ(comparisonNumbers(*results.getROCComparisonStats().at(0)),
                  numbers(pairedOf(sample, option.words, option.level)));
    });

    ROCSetting independent = settingWith(option);
    independent.setDistribution(NonParametric); // a call decides on the assumption per sample, a run for all
    independent.setSelectGroupVar(side, 2.0, 1.0);
    independent.setComparisonType(IndependentComparison);
    run(independent, [&](const ROCOutputs& results) {
        const Sample first = halfOf(sample, 1);
        const Sample second = halfOf(sample, 0);
        const auc_comparison_res called = auc_indpendentcomparison(
            first.states.data(), first.values.data(), first.size(), second.states.data(), second.values.data(),
            second.size(), nullptr, option.words.include, option.words.larger, "nonparam", option.level);
        EXPECT_EQ(comparisonNumbers(*results.getROCComparisonStats().at(0)), numbers(called));
    });
}

TEST(SameAsArrayCalls, OnSamplesOfEveryShape)
{
    for (const Shape& shape : shapes())
        for (unsigned seed = 1; seed <= 6; ++seed) {
            SCOPED_TRACE(std::string(shape.name) + ", seed " + std::to_string(seed));
            expectSameAsArrayCalls(drawSample(shape, seed, sizeFor(seed)), options[seed % 4]);
        }
}

TEST(SameAsArrayCalls, OnBalancedSamplesUnderTheBiNegativeAssumption)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        Sample sample = drawSample(shapes()[seed], seed, 20);
        for (std::size_t i = 0; i < 20; ++i)
            sample.states[i] = i % 2 == 0 ? 1.0 : 0.0;
        expectSameAsArrayCalls(sample, options[2 + seed % 2]);
    }
}

TEST(SameAsArrayCalls, OnTheBreastCancerData)
{
    std::ifstream file(std::string(dataFolder) + "/breast_cancer.csv");
    Sample sample;
    std::string line;
    for (std::getline(file, line); std::getline(file, line);) {
        std::istringstream cells(line);
        std::string diagnosis;
        std::string radius;
        std::string texture;
        std::getline(std::getline(std::getline(cells, diagnosis, ','), radius, ','), texture, ',');
        sample.add(diagnosis == "malignant" ? 1.0 : 0.0, std::stod(radius), std::stod(texture));
    }
    ASSERT_EQ(sample.size(), 569);
    for (const Option& option : options)
        expectSameAsArrayCalls(sample, option);
}

TEST(Comparisons, OfThreeVariablesComeInTheOrderOfTheList)
{
    const Sample sample = drawSample(shapes()[1], 5, 50);
    HostData data = hostDataOf(sample);
    ROCSetting setting;
    setting.setStateVar(state, 1.0);
    setting.setComparisonType(PairedComparison);
    setting.setTestVars({other, side, value});
    RocAlgorithm facade(setting, data.variables);
    VexCommon_920::ColumnRecordIter records = data.records();
    ASSERT_TRUE(facade.BuildModel(records).IsOK());
    const auto& base = facade.GetOutputStats()->getROCBaseStats();
    const auto& comparisons = facade.GetOutputStats()->getROCComparisonStats();
    ASSERT_EQ(base.size(), 3u);
    ASSERT_EQ(comparisons.size(), 3u);
    const std::pair<int, int> pairs[] = {{0, 1}, {0, 2}, {1, 2}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(comparisons[i]->getCompare1Stats(), base[static_cast<std::size_t>(pairs[i].first)]);
        EXPECT_EQ(comparisons[i]->getCompare2Stats(), base[static_cast<std::size_t>(pairs[i].second)]);
    }
    // A variable against itself differs by nothing.
    setting.setTestVars({value, value});
    RocAlgorithm itself(setting, data.variables);
    ASSERT_TRUE(itself.BuildModel(records).IsOK());
    const Numbers all = comparisonNumbers(*itself.GetOutputStats()->getROCComparisonStats().at(0));
    EXPECT_EQ(Numbers(all.end() - 6, all.end()), (Numbers{{0.0}, {1.0}, {0.0}, {0.0}, {0.0}, {0.0}}));
}

} // namespace
