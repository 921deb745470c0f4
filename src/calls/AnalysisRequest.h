#pragma once

#include "host/VexVarList.h"
#include "inference/AreaInference.h"
#include "summary/RowRule.h"
#include "vexrocproc/ROCSetting.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ROCALG_920::calls {

/// Which rows a paired comparison is of.
enum class PairedRows { complete, pairwise };
/// The rule of an area's interval.
enum class IntervalKind { record, wald, waldDelong, recommended, score, newcombe, logit, bootstrap, bca };
/// The test behind the p value of an area.
enum class PKind { record, recommended, mannWhitney, wald };
/// What weights are: unsaid, they count as counts.
enum class WeightKind { unsaid, counts, probability };

/// What a caller asks for: columns, the parts that they play, and options. What does not go together is refused by
/// check; only then is everything said.
class AnalysisRequest {
public:
    static constexpr int none = RowRule::none; ///< instead of a column: takes its part back

    /// Index of the new column, whose values stay the caller's.
    int addColumn(std::string_view name, std::span<const double> values);
    [[nodiscard]] std::size_t columnCount() const noexcept { return columns_.size(); }
    [[nodiscard]] const std::string& nameOf(int column) const { return at(column).name; }
    [[nodiscard]] std::vector<std::span<const double>> columns() const;

    void setState(int column) { state_ = column; }
    /// One more test; none takes all back.
    void addTest(int column);
    /// None takes back the way of grouping as well.
    void setGroup(int column);
    void setWeight(int column) { weight_ = column; }
    void setCount(int column) { count_ = column; }
    void setPositiveValue(double value) { positiveValue_ = value; }
    /// Negative states are listed, or all others.
    void listNegatives(bool on);
    void addNegative(double value);
    /// None: the direction of all tests.
    void setDirection(int column, std::optional<ROCConst_920::Direction> direction);
    void nameValue(int column, double value, std::string_view name) { valueNames_[{column, value}] = name; }
    // The last way of grouping that was set is in force.
    void splitAtCut(double value) { split_ = {.cut = value}; }
    void selectFirst(double value) { split_ = {.first = value, .second = split_.second}; }
    void selectSecond(double value) { split_ = {.first = split_.first, .second = value}; }
    void splitInTheMiddle(bool on);
    void setPairedRows(PairedRows rows) { pairedRows_ = rows; }
    void setInterval(IntervalKind interval) { interval_ = interval; }
    void setPValue(PKind p) { p_ = p; }
    void setExact(ExactRule exact) { exact_ = exact; }
    void setAlternative(Alternative alternative) { alternative_ = alternative; }
    void setNullArea(double area) { nullArea_ = area; }
    void setReplicates(std::int64_t replicates) { replicates_ = replicates; }
    void setSeed(std::uint64_t seed) { seed_ = seed; }
    void keepSummaries(bool on) { keepsSummaries_ = on; }
    void setWeightKind(WeightKind kind) { weightKind_ = kind; }
    /// What needs no other setting.
    [[nodiscard]] ROCSetting& options() noexcept { return options_; }

    /// Throws where settings do not go together.
    void check() const;

    [[nodiscard]] int state() const noexcept { return state_; }
    [[nodiscard]] const std::vector<int>& tests() const noexcept { return tests_; }
    [[nodiscard]] int group() const noexcept { return group_; }
    [[nodiscard]] int weight() const noexcept { return weight_; }
    /// Of the column of counts, or else of weights; empty without.
    [[nodiscard]] std::string_view weighingName() const
    {
        const int column = count_ == none ? weight_ : count_;
        return column == none ? std::string_view() : nameOf(column);
    }
    [[nodiscard]] double positiveValue() const noexcept { return positiveValue_; }
    [[nodiscard]] bool listsNegatives() const noexcept { return negativeValues_.has_value(); }
    [[nodiscard]] const ROCSetting& options() const noexcept { return options_; }
    [[nodiscard]] bool isPaired() const noexcept;
    [[nodiscard]] PairedRows pairedRows() const noexcept { return pairedRows_; }
    /// Recommended is never in force: it is one of the others.
    [[nodiscard]] IntervalKind interval() const noexcept;
    [[nodiscard]] PKind pValue() const noexcept;
    [[nodiscard]] ExactRule exact() const noexcept { return exact_; }
    [[nodiscard]] Alternative alternative() const noexcept { return alternative_; }
    [[nodiscard]] double nullArea() const noexcept { return nullArea_; }
    [[nodiscard]] std::int64_t replicates() const noexcept { return replicates_; }
    [[nodiscard]] std::uint64_t seed() const noexcept { return seed_; }
    [[nodiscard]] bool keepsSummaries() const noexcept { return keepsSummaries_; }
    [[nodiscard]] WeightKind weightKind() const noexcept { return weightKind_; }
    [[nodiscard]] bool hasProbabilities() const noexcept { return weightKind_ == WeightKind::probability; }
    [[nodiscard]] ROCConst_920::Direction directionOf(int test) const;
    [[nodiscard]] bool hasOneDirection() const;
    /// Do areas have the standard error of their distribution, but where the record has DeLong's?
    [[nodiscard]] bool hasErrorOfDistribution() const noexcept
    {
        return interval() == IntervalKind::record || interval() == IntervalKind::wald;
    }
    /// Behind the standard errors of areas that are none of DeLong's.
    [[nodiscard]] ROCConst_920::Distribution distribution() const noexcept
    {
        return hasErrorOfDistribution() ? options_.getDistribution() : ROCConst_920::NonParametric;
    }
    /// As the caller named it, else the number.
    [[nodiscard]] std::string valueInWords(int column, double value) const;
    /// Who takes part: rows without a part do not.
    [[nodiscard]] RowRule rowRule() const;
    /// Sets the group, by its index among the columns of a run.
    void setGroup(ROCSetting& setting, int index) const;

private:
    struct Column {
        std::string name;
        std::span<const double> values;
    };
    /// How the group column makes two groups: one way is set, or two values, or nothing yet.
    struct Split {
        std::optional<double> cut{};
        std::optional<double> first{};
        std::optional<double> second{};
        bool midPoint = false;
        friend bool operator==(const Split&, const Split&) = default;
    };

    [[nodiscard]] const Column& at(int column) const { return columns_[static_cast<std::size_t>(column)]; }
    void checkParts() const;
    void checkStates() const;
    void checkSplit() const;
    void checkInference() const;
    void checkProbabilities() const;

    std::vector<Column> columns_;
    std::vector<int> tests_;
    int state_ = none;
    int group_ = none;
    int weight_ = none;
    int count_ = none;
    double positiveValue_ = 1.0;
    std::optional<std::vector<double>> negativeValues_; ///< none: all states that are not positive
    std::map<int, ROCConst_920::Direction> directions_; ///< by column, where it is not that of all
    std::map<std::pair<int, double>, std::string> valueNames_;
    Split split_;
    PairedRows pairedRows_ = PairedRows::complete;
    IntervalKind interval_ = IntervalKind::record;
    PKind p_ = PKind::record;
    ExactRule exact_ = ExactRule::automatic;
    Alternative alternative_ = Alternative::twoSided;
    WeightKind weightKind_ = WeightKind::unsaid;
    double nullArea_ = 0.5;
    std::int64_t replicates_ = 1999;
    std::uint64_t seed_ = 1;
    bool keepsSummaries_ = false;
    ROCSetting options_;
};

} // namespace ROCALG_920::calls
