#pragma once

#include "host/VexVarList.h"
#include "vexrocproc/RocAlgorithm.h"
#include "vexrocproc/analysis.h"

#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ROCALG_920 {

/// An argument or a setting that cannot be; says which.
class InvalidArgument : public std::invalid_argument {
public:
    using invalid_argument::invalid_argument;
};

/// What a caller asks for, collected by name.
class AnalysisRequest {
public:
    int addColumn(std::string_view name, std::span<const double> values);
    /// Column -1 takes back what was set.
    void setColumn(std::string_view setting, int column);
    void setNumber(std::string_view setting, double value);
    void setWord(std::string_view setting, std::string_view word);

    /// Throws where settings do not go together.
    [[nodiscard]] ROCSetting setting() const;
    [[nodiscard]] VexXML_920::VexVarList variables() const;
    [[nodiscard]] std::vector<std::span<const double>> columns() const;
    /// The columns without whose value a row cannot take part: state, and group and weight when set.
    [[nodiscard]] std::vector<int> requiredColumns() const;

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
    static constexpr int none = -1; ///< instead of a column

    void setTest(int column);
    void setGroupColumn(int column);
    void setSelectedGroup(std::optional<double> Split::*place, double value);
    void setGroup(ROCSetting& setting) const;

    std::vector<Column> columns_;
    std::vector<int> tests_;
    int state_ = none;
    int group_ = none;
    int weight_ = none;
    double positiveValue_ = 1.0;
    Split split_;
    ROCSetting options_; ///< what needs no other setting
};

/// The rows of columns that have a value in each of the required ones. Copies the columns only when rows are left out.
class CompleteRows {
public:
    CompleteRows(std::vector<std::span<const double>> columns, const std::vector<int>& required);
    CompleteRows(const CompleteRows&) = delete;
    CompleteRows& operator=(const CompleteRows&) = delete;

    [[nodiscard]] const std::vector<std::span<const double>>& columns() const noexcept { return columns_; }
    [[nodiscard]] int leftOut() const noexcept { return leftOut_; }

private:
    std::vector<std::span<const double>> columns_;
    std::vector<std::vector<double>> copies_;
    int leftOut_ = 0;
};

/// A run that has ended, with all that a caller may ask of it.
class AnalysisRun {
public:
    struct Warning {
        int code;
        std::string name;
        std::vector<int> parameters;
    };
    struct Callbacks {
        vexroc_progress progress = nullptr;
        void* progressUser = nullptr;
        vexroc_cancel cancel = nullptr;
        void* cancelUser = nullptr;
    };

    AnalysisRun(const AnalysisRequest& request, const Callbacks& callbacks);

    [[nodiscard]] int statusCode() const noexcept { return statusCode_; }
    [[nodiscard]] bool ranOutOfMemory() const noexcept { return ranOutOfMemory_; }
    [[nodiscard]] const std::string& statusName() const noexcept { return statusName_; }
    [[nodiscard]] const std::vector<Warning>& warnings() const noexcept { return warnings_; }
    [[nodiscard]] int leftOut() const noexcept { return leftOut_; }
    [[nodiscard]] std::span<ROCOutBase* const> records() const noexcept;
    [[nodiscard]] std::span<ROCComparisonOutStats* const> comparisons() const noexcept;

private:
    VexXML_920::VexVarList variables_;
    std::unique_ptr<RocAlgorithm> algorithm_;
    int statusCode_ = 0;
    bool ranOutOfMemory_ = false;
    std::string statusName_;
    std::vector<Warning> warnings_;
    int leftOut_ = 0;
};

} // namespace ROCALG_920

/// What the opaque handle of analysis.h points at.
struct vexroc_analysis {
    ROCALG_920::AnalysisRequest request;
    ROCALG_920::AnalysisRun::Callbacks callbacks;
    std::unique_ptr<ROCALG_920::AnalysisRun> run; ///< the last; null before, and when it was refused
    bool running = false;
    bool refused = false; ///< the last run had settings or memory that would not do
};
