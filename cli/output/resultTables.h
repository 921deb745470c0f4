#pragma once

#include "cli/output/Table.h"
#include "cli/output/questionWords.h"
#include "cli/study/Question.h"
#include "cli/study/Results.h"

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace vexroc {

// What the tables of several documents have in common.

inline constexpr TableColumn testColumn{"test", "test", CellRole::name};
inline constexpr TableColumn cutOffColumn{"cut_off", "cut-off", CellRole::cutOff};
inline constexpr TableColumn sensitivityColumn{"sensitivity", "sensitivity", CellRole::statistic};
inline constexpr TableColumn specificityColumn{"specificity", "specificity", CellRole::statistic};
inline constexpr TableColumn recallColumn{"recall", "recall", CellRole::statistic};
inline constexpr TableColumn precisionColumn{"precision", "precision", CellRole::statistic};
inline constexpr TableColumn interpolatedColumn{"interpolated", "interpolated", CellRole::flag};

/// Which group a row is about: not for people where there is none.
TableColumn groupColumn(const Question& question);
/// "sex = female", "all cases"
std::string_view groupOf(const Area& area);

/// Columns that say which test and group a row is about, then others.
std::vector<TableColumn> perTest(const Question& question, std::span<const TableColumn> columns);

/// A row that is filled cell by cell, in the order of the columns of its table.
class TableMaker {
public:
    /// A column of values leads where the question has one.
    TableMaker(const Question& question, std::span<const TableColumn> columns);
    /// Of the rows that follow.
    void setValue(std::string_view value) { value_ = value; }
    void add(std::initializer_list<Table::Value> cells) { add(std::span(cells.begin(), cells.size())); }
    void add(std::span<const Table::Value> cells);
    Table take() { return std::move(table_); }

private:
    bool byValue_;
    std::string_view value_;
    std::vector<Table::Value> row_;
    Table table_;
};

/// The area with its inference, and the numbers of cases that it stands on.
std::vector<TableColumn> areaColumns(const Question& question, const AreaMethods& methods);
void addAreaCells(const Question& question, const Area& area, std::vector<Table::Value>& row);

/// A comparison, of two tests or of a test between two groups. Groups that all comparisons have in common are not for
/// people: a title says them once.
std::vector<TableColumn> comparisonColumns(const Question& question, bool groupsInCommon);
void addComparison(const Question& question, const Difference& difference, TableMaker& table);

/// The cut-off of a point of a curve.
CutOffCell cutOffCell(const TestResult& test, const CutOff& cutOff);
/// The cut-off of each point of a precision-recall curve; none of those between measured ones.
CutOffCell precisionRecallCutOff(const TestResult& test, std::size_t point);

} // namespace vexroc
