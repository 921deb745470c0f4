#include "host/VexMV.h"
#include "tests/driver/analyses.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;
using VexCommon_920::VexMV;
using VexXML_920::IVexVariable;
using VexXML_920::VexContVar;
using VexXML_920::VexVarList;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Says that it is continuous, but is not the class that continuous variables have.
class StrangeContinuous final : public IVexVariable {
public:
    [[nodiscard]] int GetVarType() const override { return continuous; }
    [[nodiscard]] std::string GetName() const override { return "strange"; }
    [[nodiscard]] int GetValueType() const override { return plainValues; }
    [[nodiscard]] const VexXML_920::VexValueLabels* GetValueLabels() const override { return nullptr; }
};

/// What the host says of the group variable.
using Describe = void (*)(VexVarList&);
constexpr auto unknownRange = [](VexVarList& v) { v.AddContinuous("g"); };
constexpr auto from0To10 = [](VexVarList& v) { v.AddContinuous("g", 0.0, 10.0); };
constexpr auto at3 = [](VexVarList& v) { v.AddContinuous("g", 3.0, 3.0); };
constexpr auto onlyMinKnown = [](VexVarList& v) { v.AddContinuous("g", 0.0, VexContVar::unknownMax); };
constexpr auto onlyMaxKnown = [](VexVarList& v) { v.AddContinuous("g", VexContVar::unknownMin, 99.0); };
constexpr auto strange = [](VexVarList& v) { v.Add(std::make_unique<StrangeContinuous>()); };
constexpr auto twoValued = [](VexVarList& v) { v.AddTwoValued("g"); };
constexpr auto labelled = [](VexVarList& v) { v.AddCategorical("g", {{1, "one"}}); };

using Configure = void (*)(ROCSetting&);
constexpr auto cutAt5 = [](ROCSetting& s) { s.setCutOffGroupVar(2, 5.0); };
constexpr auto cutAtNaN = [](ROCSetting& s) { s.setCutOffGroupVar(2, nan); };
constexpr auto midPoint = [](ROCSetting& s) { s.setMidPointGroupVar(2); };
constexpr auto select21 = [](ROCSetting& s) { s.setSelectGroupVar(2, 2.0, 1.0); };
constexpr auto selectMissing = [](ROCSetting& s) { s.setSelectGroupVar(2, VexMV::Missing(), -0.0); };

/// A group of the result and the numbers of its positive and negative cases.
struct Group {
    double op;
    double value;
    double positives;
    double negatives;
};

struct Split {
    long code = -1;
    bool ignored = false;
    int passes = 0;
    Numbers groups; ///< four numbers each
};

/// Groups cases whose states are 1, 0, 1, 0, ...
Split split(Describe describe, const std::vector<double>& groupValues, Configure configure,
            ComparisonType comparison = NoComparison)
{
    HostData data;
    data.add({});
    data.add({});
    for (std::size_t i = 0; i < groupValues.size(); ++i) {
        data.columns[0].push_back(i % 2 == 0 ? 1.0 : 0.0);
        data.columns[1].push_back(static_cast<double>(i));
    }
    describe(data.variables);
    data.columns.push_back(groupValues);
    ROCSetting setting = areasOf({1});
    configure(setting);
    setting.setComparisonType(comparison);
    Host host(setting, data);
    Split result{.code = host.run(), .ignored = host.facade.GetWarningMessages().GetCount() > 0, .groups = {}};
    result.passes = host.calls(Script::next) / static_cast<int>(groupValues.size());
    if (const ROCOutputs* const outputs = host.facade.GetOutputStats())
        for (const ROCOutBase* const r : outputs->getROCBaseStats())
            for (const double number : {double(r->getGroupValueOperation()), r->getGroupValue(),
                                        double(r->getPositiveCount()), double(r->getNegativeCount())})
                result.groups.push_back({number});
    return result;
}

TEST(Groups, EveryKindOfGroupSplitsAsDefined)
{
    struct Case {
        const char* name;
        Describe describe;
        std::vector<double> values;
        Configure configure;
        std::vector<Group> groups;
        int passes = 1;
    };
    const std::vector<Group> at5{{Less, 5, 2, 0}, {GreaterOrEqual, 5, 0, 2}};
    const Case cases[] = {
        {"cut point: the value itself is at or above, NaN is below",
         unknownRange,
         {4.9, 5.0, 7.0, nan, infinity, -infinity},
         cutAt5,
         {{Less, 5, 1, 2}, {GreaterOrEqual, 5, 2, 1}}},
        {"cut point NaN: nothing is at or above it",
         unknownRange,
         {1, 2, 3},
         cutAtNaN,
         {{Less, nan, 2, 1}, {GreaterOrEqual, nan, 0, 0}}},
        {"selected values keep their order, others are left out",
         labelled,
         {2, 1, 3, 2, 1, nan},
         select21,
         {{Equal, 2, 1, 1}, {Equal, 1, 1, 1}}},
        {"a missing value equals nothing, zeros are equal",
         unknownRange,
         {VexMV::Missing(), 0.0, -0.0},
         selectMissing,
         {{Equal, VexMV::Missing(), 0, 0}, {Equal, -0.0, 1, 1}}},
        {"two-valued: 0 and 1 whatever was set",
         twoValued,
         {0, 1, 1, 0, 2},
         cutAt5,
         {{Equal, 0, 1, 1}, {Equal, 1, 1, 1}}},
        {"two-valued with a mid point", twoValued, {0, 1, 1, 0}, midPoint, {{Equal, 0, 1, 1}, {Equal, 1, 1, 1}}},
        {"mid point of the host's range", from0To10, {3, 9, 1, 7}, midPoint, at5},
        {"mid point of the data", unknownRange, {3, 9, 1, 7}, midPoint, at5, 2},
        {"half of the range is not a range", onlyMinKnown, {3, 9, 1, 7}, midPoint, at5, 2},
        {"nor is the other half", onlyMaxKnown, {3, 9, 1, 7}, midPoint, at5, 2},
        {"a description of another class has no range", strange, {3, 9, 1, 7}, midPoint, at5, 2},
        {"NaN moves no bound", unknownRange, {2, nan, 8, 4}, midPoint, {{Less, 5, 1, 2}, {GreaterOrEqual, 5, 1, 0}}, 2},
        {"a NaN at the start stays",
         unknownRange,
         {nan, 1, 2},
         midPoint,
         {{Less, nan, 2, 1}, {GreaterOrEqual, nan, 0, 0}},
         2},
        {"constant data are one group", unknownRange, {4, 4, 4}, midPoint, {{GreaterOrEqual, 4, 2, 1}}, 2},
        {"a constant range is one group, whatever the data say",
         at3,
         {3, 9, nan},
         midPoint,
         {{GreaterOrEqual, 3, 2, 1}}},
        {"negative values only",
         unknownRange,
         {-3, -9, -1, -7},
         midPoint,
         {{Less, -5, 0, 2}, {GreaterOrEqual, -5, 2, 0}},
         2},
        {"labelled values have no mid point", labelled, {1, 2, 1, 2}, midPoint, {{Equal, VexMV::Missing(), 2, 2}}},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.name);
        Numbers groups;
        for (const Group& g : expected.groups)
            groups.insert(groups.end(), {{g.op}, {g.value}, {g.positives}, {g.negatives}});
        const Split result = split(expected.describe, expected.values, expected.configure);
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.groups, groups);
        EXPECT_EQ(result.passes, expected.passes);
        EXPECT_EQ(result.ignored, expected.describe == Describe(labelled) && expected.configure == Configure(midPoint));
    }
}

TEST(Groups, TheirVariableMayStandFirst)
{
    HostData data;
    data.add({9, 1, 9, 1});
    data.add({1, 1, 0, 0});
    data.add({4, 3, 2, 1});
    ROCSetting setting = areasOf({2});
    setting.setStateVar(1, 1.0);
    setting.setCutOffGroupVar(0, 5.0);
    Host host(setting, data);
    ASSERT_EQ(host.run(), 0);
    for (const ROCOutBase* const record : host.facade.GetOutputStats()->getROCBaseStats())
        EXPECT_EQ(record->getPositiveCount() + 10 * record->getNegativeCount(), 11);
}

TEST(Groups, ThatAComparisonCannotUse)
{
    for (const Describe describe : {Describe(unknownRange), Describe(at3)})
        EXPECT_EQ(split(describe, {4, 4, 4, 4}, midPoint, IndependentComparison).code, statusCode::groupConstant);
    EXPECT_EQ(split(unknownRange, {4, 4, 4, 5}, midPoint, IndependentComparison).code, 0);

    const Split labels = split(labelled, {1, 2, 1, 2}, midPoint, IndependentComparison);
    EXPECT_EQ(labels.code, statusCode::groupRequired);
    EXPECT_TRUE(labels.ignored);
}

} // namespace
