#pragma once

#include "cli/study/DataTable.h"
#include "cli/words/CallLine.h"
#include "vexrocproc/labels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace vexroc {

/// Which values of a label column are positive, and which negative, as asked.
struct StateChoice {
    std::vector<std::string> positive;
    std::vector<std::string> negative = {}; ///< none: not said
    bool others = false;                    ///< all that are not positive are negative
    std::string sign = {};                  ///< ">=", ">", "<=" or "<": numbers on that side of the bound are positive
    std::string bound = {};
};

/// What the labels of a column mean, over all rows of a table. The rule is the library's.
class ColumnLabels {
public:
    struct Value {
        std::string text;
        long long rows;
        vexroc_state state = VEXROC_STATE_MISSING; ///< once chosen
    };

    /// `named` are texts that are values in any case.
    ColumnLabels(const DataTable& table, const std::string& column, std::span<const std::string> named = {});

    /// Throws an input error that says what to do; where the negative values are not said, with two calls that would
    /// do.
    void choose(const StateChoice& choice, const CallLine& call);

    [[nodiscard]] const std::string& column() const noexcept { return column_; }
    /// "data.csv: column 'site'".
    [[nodiscard]] std::string place() const;
    /// Ascending: numbers, then texts.
    [[nodiscard]] const std::vector<Value>& values() const noexcept { return values_; }
    /// Of a label of the table; -1 for a missing one.
    [[nodiscard]] int valueOf(std::int32_t label) const noexcept
    {
        return label == DataColumn::missingLabel ? -1 : valueOf_[static_cast<std::size_t>(label)];
    }
    /// The value that the text names; -1 for none.
    [[nodiscard]] int find(const std::string& text) const noexcept;
    /// A code for each row of the column, or of a slice of it: that of the row's state.
    [[nodiscard]] std::vector<double> codesOf(const DataColumn& column, double positive, double negative,
                                              double other) const;
    void addRemarks(vexroc_remarks* remarks) const;

private:
    struct Free {
        void operator()(vexroc_labels* labels) const noexcept { vexroc_labels_free(labels); }
    };
    void fill(const DataColumn& column, std::span<const std::string> named);
    void readValues(std::size_t labels);
    [[nodiscard]] std::string withCalls(const std::string& message, const CallLine& call) const;

    std::string source_;
    std::string column_;
    std::unique_ptr<vexroc_labels, Free> labels_;
    std::vector<Value> values_;
    std::vector<int> valueOf_; ///< of each label
};

} // namespace vexroc
