#include "calls/settingsByName.h"

#include "calls/guard.h"
#include "calls/words.h"

#include <cmath>
#include <optional>
#include <string>

namespace ROCALG_920::calls {

namespace {

using Request = AnalysisRequest;
using namespace ROCConst_920;

void setConfidenceLevel(Request& request, double level)
{
    if (!(level > 0.0 && level < 1.0))
        throw InvalidArgument("confidence_level: expected a number between 0 and 1, such as 0.95");
    request.options().setConfidenceLevel(level);
}

void setNullArea(Request& request, double area)
{
    if (!(area > 0.0 && area < 1.0))
        throw InvalidArgument("null_area: expected a number between 0 and 1, such as 0.5");
    request.setNullArea(area);
}

void setReplicates(Request& request, double replicates)
{
    constexpr double most = 1e8;
    if (!(replicates >= 1.0 && replicates <= most && replicates == std::floor(replicates)))
        throw InvalidArgument("replicates: expected a whole number from 1 to 100000000, such as 1999");
    request.setReplicates(static_cast<std::int64_t>(replicates));
}

constexpr NamedSetting directionOfAll{"direction", NamedSetting::Word{{"larger", "smaller"}, [](Request& r, int i) {
                                                                          r.options().setDirection(Direction(i));
                                                                      }}};

constexpr NamedSetting settings[] = {
    {"state", [](Request& r, int column) { r.setState(column); }},
    {"test", [](Request& r, int column) { r.addTest(column); }},
    {"group", [](Request& r, int column) { r.setGroup(column); }},
    {"weight", [](Request& r, int column) { r.setWeight(column); }},
    {"count", [](Request& r, int column) { r.setCount(column); }},

    {"positive_value", [](Request& r, double value) { r.setPositiveValue(value); }},
    {"confidence_level", setConfidenceLevel},
    {"group_cut", [](Request& r, double value) { r.splitAtCut(value); }},
    {"group_first", [](Request& r, double value) { r.selectFirst(value); }},
    {"group_second", [](Request& r, double value) { r.selectSecond(value); }},
    {"group_mid_point", [](Request& r, double value) { r.splitInTheMiddle(value != 0.0); }},
    {"roc", [](Request& r, double value) { r.options().setNeedROC(value != 0.0); }},
    {"pr", [](Request& r, double value) { r.options().setNeedPR(value != 0.0); }},

    {"null_area", setNullArea},
    {"replicates", setReplicates},
    {"summaries", [](Request& r, double value) { r.keepSummaries(value != 0.0); }},

    directionOfAll,
    {"cut_off",
     NamedSetting::Word{{"include", "exclude"},
                        [](Request& r, int i) { r.options().setClassification(Classification(i)); }}},
    {"distribution",
     NamedSetting::Word{{"nonparam", "bi-negative"},
                        [](Request& r, int i) { r.options().setDistribution(Distribution(i)); }}},
    {"interpolation",
     NamedSetting::Word{{"davis-goadrich", "keilwagen"},
                        [](Request& r, int i) { r.options().setPRInterpolationType(PRInterpolation(i)); }}},
    {"comparison",
     NamedSetting::Word{{"none", "independent", "paired"},
                        [](Request& r, int i) { r.options().setComparisonType(ComparisonType(i)); }}},
    {"negative", NamedSetting::Word{{"all", "listed"}, [](Request& r, int i) { r.listNegatives(i == 1); }}},
    {"cases", NamedSetting::Word{{"complete", "pairwise"}, [](Request& r, int i) { r.setPairedRows(PairedRows(i)); }}},
    {"interval",
     NamedSetting::Word{
         {"record", "wald", "wald-delong", "recommended", "score", "newcombe", "logit", "bootstrap", "bca"},
         [](Request& r, int i) { r.setInterval(IntervalKind(i)); }}},
    {"p_value",
     NamedSetting::Word{{"record", "recommended", "mann-whitney", "wald"},
                        [](Request& r, int i) { r.setPValue(PKind(i)); }}},
    {"exact", NamedSetting::Word{{"auto", "always", "never"}, [](Request& r, int i) { r.setExact(ExactRule(i)); }}},
    {"alternative",
     NamedSetting::Word{{"two-sided", "greater", "less"}, [](Request& r, int i) { r.setAlternative(Alternative(i)); }}},
    {"weight_kind",
     NamedSetting::Word{{"unsaid", "counts", "probability"},
                        [](Request& r, int i) { r.setWeightKind(WeightKind(i)); }}},
};

/// Appends to a list in words.
void enlist(std::string& list, std::string_view item)
{
    list += list.empty() ? "" : ", ";
    list += item;
}

/// The setting of this name that takes a value of this kind.
template <class Kind>
const Kind& find(std::string_view name, const char* kind)
{
    std::string names;
    for (const NamedSetting& setting : settings) {
        const Kind* const set = std::get_if<Kind>(&setting.set);
        if (set != nullptr && setting.name == name)
            return *set;
        if (set != nullptr)
            enlist(names, setting.name);
    }
    throw InvalidArgument("no setting " + quoted(name) + " takes a " + kind + "; those that do are " + names);
}

} // namespace

std::span<const NamedSetting> namedSettings() noexcept { return settings; }

void requireColumn(const AnalysisRequest& request, std::string_view setting, int column)
{
    if (column < 0 || static_cast<std::size_t>(column) >= request.columnCount())
        throw InvalidArgument(std::string(setting) + ": no column " + std::to_string(column) + "; there are "
                              + std::to_string(request.columnCount()));
}

void requireNumber(std::string_view setting, double value)
{
    if (std::isnan(value))
        throw InvalidArgument(std::string(setting) + ": NaN is missing and no number; give one");
}

void setColumn(AnalysisRequest& request, std::string_view setting, int column)
{
    if (column != Request::none)
        requireColumn(request, setting, column);
    find<NamedSetting::Column>(setting, "column")(request, column);
}

void setNumber(AnalysisRequest& request, std::string_view setting, double value)
{
    requireNumber(setting, value);
    find<NamedSetting::Number>(setting, "number")(request, value);
}

void setWord(AnalysisRequest& request, std::string_view setting, std::string_view word)
{
    const auto& [words, set] = find<NamedSetting::Word>(setting, "word");
    set(request, positionOf(std::string(word).c_str(), words, setting));
}

void setDirection(AnalysisRequest& request, int column, const char* word)
{
    requireColumn(request, "direction", column);
    std::optional<Direction> direction;
    if (word != nullptr)
        direction = Direction(positionOf(word, std::get<NamedSetting::Word>(directionOfAll.set).words, "direction"));
    request.setDirection(column, direction);
}

} // namespace ROCALG_920::calls
