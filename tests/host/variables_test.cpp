#include "host/VexContVar.h"
#include "host/VexVarList.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;
using VexXML_920::IVexVariable;
using VexXML_920::VexContVar;
using VexXML_920::VexVarList;

TEST(VariableList, DescribesEachKind)
{
    VexVarList list;
    list.AddContinuous("score");
    list.AddTwoValued("disease");
    list.AddTwoValued("sex", {{0, "female"}, {1, "male"}});
    list.AddCategorical("clinic", {{-1, "unknown"}, {3, "north"}});

    // The numbers are part of the interface: 1 continuous; 2 two-valued, and from 2 on values may have labels.
    struct Expected {
        const char* name;
        int varType, valueType;
        const char* labelOf1;
    };
    const Expected expected[] = {
        {"score", 1, 1, ""}, {"disease", 2, 2, ""}, {"sex", 2, 2, "male"}, {"clinic", 2, 3, "1"}}; // the digits
    ASSERT_EQ(list.GetCount(), 4);
    for (int i = 0; i < list.GetCount(); ++i) {
        const IVexVariable& variable = *list.GetVarAt(i);
        SCOPED_TRACE(expected[i].name);
        EXPECT_EQ(variable.GetName(), expected[i].name);
        EXPECT_EQ(variable.GetVarType(), expected[i].varType);
        EXPECT_EQ(variable.GetValueType(), expected[i].valueType);
        const auto* const labels = variable.GetValueLabels();
        EXPECT_EQ(labels != nullptr ? labels->GetLabel(1) : "", expected[i].labelOf1);
    }
    EXPECT_EQ(list.GetVarAt(3)->GetValueLabels()->GetLabel(-1), "unknown");
}

TEST(VariableList, ARangeIsThatOfTheDoublesUnlessGivenInOrder)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    VexVarList list;
    EXPECT_THAT([&] { list.AddContinuous("age", 99.0, 18.0); },
                ThrowsMessage<std::invalid_argument>(AllOf(HasSubstr("\"age\""), HasSubstr("99"), HasSubstr("18"))));
    EXPECT_THROW(list.AddContinuous("age", nan, 1.0), std::invalid_argument);
    EXPECT_THROW(list.AddContinuous("age", 0.0, nan), std::invalid_argument);
    EXPECT_EQ(list.AddContinuous("constant", 3.0, 3.0), 0) << "refused variables are in the list";
    list.AddContinuous("score");
    const auto& score = dynamic_cast<const VexContVar&>(*list.GetVarAt(1));
    EXPECT_EQ(std::pair(score.GetMin(), score.GetMax()), std::pair(-1.7976931348623157e308, 1.7976931348623157e308));
}

TEST(VariableList, KeepsDescriptionsOfTheHostInPlaceWhenItGrowsOrMovesAndTurnsAwayAnIndexOutside)
{
    VexVarList list;
    EXPECT_EQ(list.Add(std::make_unique<VexContVar>("own", 0.0, 1.0)), 0);
    const IVexVariable* const own = list.GetVarAt(0);
    EXPECT_EQ(own->GetName(), "own");
    EXPECT_THROW(list.Add(nullptr), std::invalid_argument);
    for (int i = 1; i <= 100; ++i)
        EXPECT_EQ(list.AddContinuous("more"), i);
    const VexVarList moved = std::move(list);
    EXPECT_EQ(moved.GetVarAt(0), own);
    EXPECT_THAT([&] { static_cast<void>(moved.GetVarAt(-1)); },
                ThrowsMessage<std::out_of_range>(AllOf(HasSubstr("index -1"), HasSubstr("101 variables"))));
    EXPECT_THROW(static_cast<void>(moved.GetVarAt(101)), std::out_of_range);
}

} // namespace
