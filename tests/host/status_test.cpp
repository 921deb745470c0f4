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

TEST(Status, WarningsAreOkAndNoErrors)
{
    EXPECT_TRUE(VexStatus().IsOK() && ties.IsOK());
    EXPECT_FALSE(VexStatus().IsError() || ties.IsError());
    EXPECT_TRUE(VexStatus(430002, false).IsError());
    EXPECT_FALSE(VexStatus(1, false).IsOK());
}

TEST(Warnings, KeepTheirOrderAndAttachAParameterToTheLastOfItsCode)
{
    VexWarnings warnings;
    EXPECT_EQ(warnings.Find(ties), std::nullopt);
    warnings.AddParameter(ties, 7); // adds the warning that it belongs to
    warnings.AddWarning(VexStatus(430103, true), VexWarnings::Collection);
    warnings.AddParameter(ties, 4);
    warnings.AddWarnings(warnings);                     // themselves
    warnings.AddParameter(VexStatus(430102, false), 9); // the code decides, not the flag
    EXPECT_EQ(warnings.Find(ties), 2);
    EXPECT_THAT(contentOf(warnings),
                ElementsAre(Pair(430102, ElementsAre(7, 4)), Pair(430103, ElementsAre()),
                            Pair(430102, ElementsAre(7, 4, 9)), Pair(430103, ElementsAre())));
    EXPECT_THROW(static_cast<void>(warnings.GetStatus(-1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(warnings.GetParameters(4)), std::out_of_range);
}

} // namespace
