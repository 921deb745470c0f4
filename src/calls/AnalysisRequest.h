#pragma once

#include "host/VexVarList.h"
#include "summary/RowRule.h"
#include "vexrocproc/ROCSetting.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ROCALG_920::calls {

/// What a caller asks for: columns, the parts that they play, and options. What does not go together is refused when
/// the settings are made of it; only then is everything said.
class AnalysisRequest {
public:
    static constexpr int none = RowRule::none; ///< instead of a column: takes its part back

    /// Index of the new column, whose values stay the caller's.
    int addColumn(std::string_view name, std::span<const double> values);
    [[nodiscard]] std::size_t columnCount() const noexcept { return columns_.size(); }

    void setState(int column) { state_ = column; }
    /// One more test; none takes all back.
    void addTest(int column);
    /// None takes back the way of grouping as well.
    void setGroup(int column);
    void setWeight(int column) { weight_ = column; }
    void setPositiveValue(double value) { positiveValue_ = value; }
    // The last way of grouping that was set is in force.
    void splitAtCut(double value) { split_ = {.cut = value}; }
    void selectFirst(double value) { split_ = {.first = value, .second = split_.second}; }
    void selectSecond(double value) { split_ = {.first = split_.first, .second = value}; }
    void splitInTheMiddle(bool on);
    /// What needs no other setting.
    [[nodiscard]] ROCSetting& options() noexcept { return options_; }

    /// Throws where settings do not go together.
    [[nodiscard]] ROCSetting setting() const;
    /// Who takes part: rows without state, group or weight do not.
    [[nodiscard]] RowRule rowRule() const;
    [[nodiscard]] VexXML_920::VexVarList variables() const;
    [[nodiscard]] std::vector<std::span<const double>> columns() const;

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

    void checkParts() const;
    void checkSplit() const;
    void setGroup(ROCSetting& setting) const;

    std::vector<Column> columns_;
    std::vector<int> tests_;
    int state_ = none;
    int group_ = none;
    int weight_ = none;
    double positiveValue_ = 1.0;
    Split split_;
    ROCSetting options_;
};

} // namespace ROCALG_920::calls
