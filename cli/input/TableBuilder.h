#pragma once

#include "cli/study/DataTable.h"
#include "cli/study/RowSink.h"

#include <deque>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace vexroc {

/// What becomes of the columns that no request names.
enum class OtherColumns {
    skipped,
    numeric, ///< kept as numbers, behind the requested ones, where every cell is a number or missing and some a number
};

/// Tells whether the decimal signs of a column may as well stand between thousands: each stands before exactly three
/// digits and behind one to three that do not begin with 0. With decimal points, which most people write, only where
/// other numbers have none and one ends with a zero that no decimal needs.
class DecimalDoubt {
public:
    void look(std::string_view text, double number, const NumberForm& form)
    {
        if (!cleared_ && (form.decimal != '.' || mayHaveThreeDecimals(text, number)))
            lookCloser(text, form);
        else
            wholeSeen_ = true;
    }
    /// The first cell in doubt; empty where there is none.
    [[nodiscard]] std::string cell(const NumberForm& form) const
    {
        return cleared_ || (form.decimal == '.' && !(wholeSeen_ && zeroSeen_)) ? std::string() : first_;
    }

private:
    /// Quick, and false only for whole numbers.
    static bool mayHaveThreeDecimals(std::string_view text, double number) noexcept
    {
        const bool mayBeWhole =
            number > -1e15 && number < 1e15 && static_cast<double>(static_cast<std::int64_t>(number)) == number;
        return !mayBeWhole || (text.size() > 4 && text[text.size() - 4] == '.');
    }
    void lookCloser(std::string_view text, const NumberForm& form);

    std::string first_;
    bool cleared_ = false;
    bool wholeSeen_ = false;
    bool zeroSeen_ = false; ///< at the end of one in doubt
};

/// Fills one column.
class ColumnFiller {
public:
    ColumnFiller(ColumnRequest request, bool requested) : requested_(requested)
    {
        column_.request = std::move(request);
    }

    /// False, and nothing is stored, for a cell that the column's kind does not allow. A column that nobody requested
    /// takes such a cell and is given up.
    bool append(const Cell& cell, const MissingWords& words);
    [[nodiscard]] bool isKept() const noexcept { return requested_ || (!givenUp_ && numberSeen_); }
    [[nodiscard]] bool isRequested() const noexcept { return requested_; }
    [[nodiscard]] const ColumnRequest& request() const noexcept { return column_.request; }
    void rename(const std::string& name) { column_.request.name = name; }
    void setForm(const NumberForm& form) noexcept
    {
        form_ = form;
        column_.decimal = form.decimal;
    }
    DataColumn take()
    {
        column_.doubtful = doubt_.cell(form_);
        return std::move(column_);
    }

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>{}(text); }
    };

    bool appendLabel(const Cell& cell);
    bool appendNumber(const Cell& cell, const MissingWords& words);
    void noteMissing(const std::string& text);
    std::int32_t labelOf(std::string_view text);

    DataColumn column_;
    NumberForm form_;
    DecimalDoubt doubt_;
    bool requested_;
    bool givenUp_ = false;
    bool numberSeen_ = false;
    std::int32_t lastLabel_ = DataColumn::missingLabel; ///< labels come in runs more often than not
    std::unordered_map<std::string, std::int32_t, TextHash, std::equal_to<>> labelIndex_;
};

/// Keeps the requested columns of an input (a request made twice is kept once).
///
/// Memory: the columns kept, or still candidates: 8 bytes for a number, 4 for a label, and each distinct label once.
class TableBuilder final : public RowSink {
public:
    TableBuilder(std::span<const ColumnRequest> requests, OtherColumns others,
                 std::shared_ptr<const MissingWords> words = std::make_shared<MissingWords>());

    std::vector<std::size_t> begin(const InputHeader& header) override;
    bool take(std::size_t column, const Cell& cell) override;
    void endRow() override;

    /// The columns, once all rows are taken.
    DataTable finish();

private:
    /// Where a name stands in the header, first, and how often.
    struct Place {
        std::size_t position;
        std::size_t count = 0;
    };
    [[nodiscard]] std::size_t positionOf(ColumnFiller& filler) const;
    void requireOnce(const std::string& name, const std::string& place) const;

    OtherColumns others_;
    std::shared_ptr<const MissingWords> words_;
    InputHeader header_;
    std::unordered_map<std::string_view, Place> places_; ///< of the header's names; there may be tens of thousands
    std::deque<ColumnFiller> fillers_;                   ///< a deque: fillersOf_ points into it
    std::vector<std::vector<ColumnFiller*>> fillersOf_;  ///< parallel to the header's columns
};

} // namespace vexroc
