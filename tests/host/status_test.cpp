#include "host/VexStatus.h"
#include "host/VexWarnings.h"

#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::Pair;
using VexCommon_920::VexStatus;
using VexCommon_920::VexWarnings;

/// The content as (code, parameters) in order.
std::vector<std::pair<long, std::vector<int>>> contentOf(const VexWarnings& warnings)
{
    std::vector<std::pair<long, std::vector<int>>> content;
    for (int i = 0; i < warnings.GetCount(); ++i) {
        auto& [code, parameters] = content.emplace_back();
        code = warnings.GetStatus(i).GetErrorCode();
        for (const VexWarnings::VexParameterValue& parameter : warnings.GetParameters(i))
            parameters.push_back(parameter.GetInt());
    }
    return content;
}

const VexStatus ties(430102, true);
const VexStatus distribution(430103, true);

/// Ties of the variables 7 and 4, then a changed distribution.
VexWarnings tiesAndDistribution()
{
    VexWarnings warnings;
    warnings.AddWarning(ties, VexWarnings::Collection);
    warnings.AddWarning(distribution, VexWarnings::Collection);
    warnings.AddParameter(ties, 7);
    warnings.AddParameter(ties, 4);
    return warnings;
}

TEST(Status, WarningsAreOkAndNoErrors)
{
    struct Case { VexStatus status; long code; bool ok; };
    const Case cases[] = {{VexStatus(), 0, true}, {VexStatus(430102, true), 430102, true},
                          {VexStatus(430002, false), 430002, false}, {VexStatus(1, false), 1, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(c.status.GetErrorCode(), c.code);
        EXPECT_EQ(c.status.IsOK(), c.ok);
        EXPECT_EQ(c.status.IsError(), !c.ok);
    }
}

TEST(Warnings, KeepTheOrderOfWarningsAndParameters)
{
    EXPECT_THAT(contentOf(tiesAndDistribution()),
                ElementsAre(Pair(430102, ElementsAre(7, 4)), Pair(430103, ElementsAre())));
}

TEST(Warnings, AttachAParameterToTheLastWarningOfItsCode)
{
    VexWarnings warnings = tiesAndDistribution();
    warnings.AddWarning(ties, VexWarnings::Collection);
    warnings.AddParameter(VexStatus(430102, false), 9); // the code decides, not the flag
    EXPECT_EQ(warnings.Find(ties), 2);
    EXPECT_THAT(contentOf(warnings), ElementsAre(Pair(430102, ElementsAre(7, 4)), Pair(430103, ElementsAre()),
                                                 Pair(430102, ElementsAre(9))));
}

TEST(Warnings, AddTheWarningOfAParameterThatHasNone)
{
    VexWarnings warnings;
    EXPECT_EQ(warnings.Find(ties), std::nullopt);
    warnings.AddParameter(ties, 3);
    warnings.AddParameter(ties, 5);
    EXPECT_THAT(contentOf(warnings), ElementsAre(Pair(430102, ElementsAre(3, 5))));
    EXPECT_TRUE(warnings.GetStatus(0).IsOK());
}

TEST(Warnings, AppendAnotherCollectionOrThemselves)
{
    VexWarnings warnings;
    const VexWarnings source = tiesAndDistribution();
    warnings.AddWarnings(source);
    warnings.AddWarnings(warnings);
    const auto once = contentOf(source);
    auto twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(contentOf(warnings), twice);
    warnings.AddParameter(ties, 1);
    EXPECT_EQ(contentOf(source), once) << "the source is a collection of its own";
}

TEST(Warnings, TurnAwayAnIndexOutside)
{
    const VexWarnings warnings = tiesAndDistribution();
    for (const int i : {-1, 2}) {
        EXPECT_THROW(static_cast<void>(warnings.GetStatus(i)), std::out_of_range) << i;
        EXPECT_THROW(static_cast<void>(warnings.GetParameters(i)), std::out_of_range) << i;
    }
}

} // namespace
