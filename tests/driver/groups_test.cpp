#include "host/VexMV.h"
#include "tests/support/hosts.h"
#include "vexrocproc/ROCOutBase.h"
#include "vexrocproc/ROCStatusCodes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace roctest;
using namespace ROCALG_920;
using namespace ROCConst_920;
using VexCommon_920::VexMV;
using VexXML_920::IVexVariable;
using VexXML_920::VexContVar;

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

enum class Kind { unknownRange, from0To10, at3, onlyMinKnown, strange, twoValued, labelled };

void addGroup(HostData& data, Kind kind, const std::vector<double>& values)
{
    VexXML_920::VexVarList& list = data.variables;
    switch (kind) {
    case Kind::unknownRange: list.AddContinuous("g"); break;
    case Kind::from0To10: list.AddContinuous("g", 0.0, 10.0); break;
    case Kind::at3: list.AddContinuous("g", 3.0, 3.0); break;
    case Kind::onlyMinKnown: list.AddContinuous("g", 0.0, VexContVar::unknownMax); break;
    case Kind::strange: list.Add(std::make_unique<StrangeContinuous>()); break;
    case Kind::twoValued: list.AddTwoValued("g"); break;
    case Kind::labelled: list.AddCategorical("g", {{1, "one"}}); break;
    }
    data.columns.push_back(values);
}

/// A group of the result and the numbers of its positive and negative cases.
struct Group {
    Operation op;
    double value;
    int positives;
    int negatives;

    bool operator==(const Group& o) const
    {
        return op == o.op && Exact{value} == Exact{o.value} && positives == o.positives && negatives == o.negatives;
    }
    friend void PrintTo(const Group& g, std::ostream* out)
    {
        *out << "op " << g.op << " value " << g.value << ": " << g.positives << " and " << g.negatives;
    }
};

struct Split {
    long code = -1;
    bool ignored = false;
    int passes = 0;
    std::vector<Group> groups;
};

/// Groups cases whose states are 1, 0, 1, 0, ...
Split split(Kind kind, const std::vector<double>& groupValues, void (*configure)(ROCSetting&),
            ComparisonType comparison = NoComparison)
{
    HostData data;
    std::vector<double> states;
    std::vector<double> values;
    for (std::size_t i = 0; i < groupValues.size(); ++i) {
        states.push_back(i % 2 == 0 ? 1.0 : 0.0);
        values.push_back(static_cast<double>(i));
    }
    data.add(states);
    data.add(values);
    addGroup(data, kind, groupValues);
    ROCSetting setting;
    setting.setStateVar(0, 1.0);
    setting.setTestVars({1});
    setting.setComparisonType(comparison);
    configure(setting);

    Script script;
    ScriptedIter records(data, script);
    RocAlgorithm facade(setting, data.variables);
    Split result;
    result.code = facade.BuildModel(records).GetErrorCode();
    result.ignored = facade.GetWarningMessages().GetCount() > 0;
    result.passes = script.calls(Script::next) / static_cast<int>(groupValues.size());
    if (const ROCOutputs* const outputs = facade.GetOutputStats())
        for (const ROCOutBase* const record : outputs->getROCBaseStats())
            result.groups.push_back({record->getGroupValueOperation(), record->getGroupValue(),
                                     record->getPositiveCount(), record->getNegativeCount()});
    return result;
}

constexpr auto cutAt5 = [](ROCSetting& s) { s.setCutOffGroupVar(2, 5.0); };
constexpr auto cutAtNaN = [](ROCSetting& s) { s.setCutOffGroupVar(2, nan); };
constexpr auto midPoint = [](ROCSetting& s) { s.setMidPointGroupVar(2); };
constexpr auto select21 = [](ROCSetting& s) { s.setSelectGroupVar(2, 2.0, 1.0); };
constexpr auto select11 = [](ROCSetting& s) { s.setSelectGroupVar(2, 1.0, 1.0); };
constexpr auto selectMissing = [](ROCSetting& s) { s.setSelectGroupVar(2, VexMV::Missing(), -0.0); };

TEST(Groups, EveryKindOfGroupSplitsAsDefined)
{
    struct Case {
        const char* name;
        Kind kind;
        std::vector<double> values;
        void (*configure)(ROCSetting&);
        std::vector<Group> groups;
        int passes = 1;
    };
    const Case cases[] = {
        {"cut point: the value itself is at or above, NaN is below", Kind::unknownRange,
         {4.9, 5.0, 7.0, nan, infinity, -infinity}, cutAt5, {{Less, 5, 1, 2}, {GreaterOrEqual, 5, 2, 1}}},
        {"cut point NaN: nothing is at or above it", Kind::unknownRange, {1, 2, 3}, cutAtNaN,
         {{Less, nan, 2, 1}, {GreaterOrEqual, nan, 0, 0}}},
        {"selected values keep their order, others are left out", Kind::labelled, {2, 1, 3, 2, 1, nan}, select21,
         {{Equal, 2, 1, 1}, {Equal, 1, 1, 1}}},
        {"the same value twice fills the first group", Kind::labelled, {1, 1, 2, 1}, select11,
         {{Equal, 1, 1, 2}, {Equal, 1, 0, 0}}},
        {"a missing value equals nothing, zeros are equal", Kind::unknownRange, {VexMV::Missing(), 0.0, -0.0},
         selectMissing, {{Equal, VexMV::Missing(), 0, 0}, {Equal, 0.0, 1, 1}}},
        {"two-valued: 0 and 1 whatever was set", Kind::twoValued, {0, 1, 1, 0, 2}, cutAt5,
         {{Equal, 0, 1, 1}, {Equal, 1, 1, 1}}},
        {"two-valued with a mid point", Kind::twoValued, {0, 1, 1, 0}, midPoint, {{Equal, 0, 1, 1}, {Equal, 1, 1, 1}}},
        {"mid point of the host's range", Kind::from0To10, {3, 9, 1, 7}, midPoint,
         {{Less, 5, 2, 0}, {GreaterOrEqual, 5, 0, 2}}},
        {"mid point of the data", Kind::unknownRange, {3, 9, 1, 7}, midPoint,
         {{Less, 5, 2, 0}, {GreaterOrEqual, 5, 0, 2}}, 2},
        {"half of the range is not a range", Kind::onlyMinKnown, {3, 9, 1, 7}, midPoint,
         {{Less, 5, 2, 0}, {GreaterOrEqual, 5, 0, 2}}, 2},
        {"a description of another class has no range", Kind::strange, {3, 9, 1, 7}, midPoint,
         {{Less, 5, 2, 0}, {GreaterOrEqual, 5, 0, 2}}, 2},
        {"NaN moves no bound", Kind::unknownRange, {2, nan, 8, 4}, midPoint,
         {{Less, 5, 1, 2}, {GreaterOrEqual, 5, 1, 0}}, 2},
        {"a NaN at the start stays", Kind::unknownRange, {nan, 1, 2}, midPoint,
         {{Less, nan, 2, 1}, {GreaterOrEqual, nan, 0, 0}}, 2},
        {"constant data are one group", Kind::unknownRange, {4, 4, 4}, midPoint, {{GreaterOrEqual, 4, 2, 1}}, 2},
        {"a constant range is one group, whatever the data say", Kind::at3, {3, 9, nan}, midPoint,
         {{GreaterOrEqual, 3, 2, 1}}},
        {"negative values only", Kind::unknownRange, {-3, -9, -1, -7}, midPoint,
         {{Less, -5, 0, 2}, {GreaterOrEqual, -5, 2, 0}}, 2},
    };
    for (const Case& expected : cases) {
        SCOPED_TRACE(expected.name);
        std::vector<Group> groups = split(expected.kind, expected.values, expected.configure).groups;
        for (std::size_t i = 0; i < groups.size() && i < expected.groups.size(); ++i)
            if (groups[i].value == 0.0)
                groups[i].value = 0.0; // whichever sign
        EXPECT_EQ(groups, expected.groups);
        EXPECT_EQ(split(expected.kind, expected.values, expected.configure).passes, expected.passes);
    }
}

TEST(Groups, AConstantGroupEndsAnIndependentComparison)
{
    for (const Kind kind : {Kind::unknownRange, Kind::at3})
        EXPECT_EQ(split(kind, {4, 4, 4, 4}, midPoint, IndependentComparison).code, statusCode::groupConstant);
    EXPECT_EQ(split(Kind::at3, {4, 4, 4, 4}, midPoint, IndependentComparison).passes, 0);
    EXPECT_EQ(split(Kind::unknownRange, {4, 4, 4, 5}, midPoint, IndependentComparison).code, 0);
}

TEST(Groups, AMidPointOfLabelledValuesIsIgnoredWithAWarning)
{
    const Split ignored = split(Kind::labelled, {1, 2, 1, 2}, midPoint);
    EXPECT_EQ(ignored.code, 0);
    EXPECT_TRUE(ignored.ignored);
    EXPECT_EQ(ignored.groups, (std::vector<Group>{{Equal, VexMV::Missing(), 2, 2}}));

    const Split compared = split(Kind::labelled, {1, 2, 1, 2}, midPoint, IndependentComparison);
    EXPECT_EQ(compared.code, statusCode::groupRequired);
    EXPECT_TRUE(compared.ignored);
}

TEST(Groups, APairedComparisonDoesNotReadTheDataForAMidPoint)
{
    const Split paired = split(Kind::unknownRange, {3, 9, 1, 7}, [](ROCSetting& s) {
        s.setMidPointGroupVar(2);
        s.setTestVars({1, 2});
    }, PairedComparison);
    EXPECT_EQ(paired.passes, 1);
    EXPECT_TRUE(paired.ignored);
    EXPECT_EQ(paired.groups.size(), 2u);
}

} // namespace
