#include "cli/study/HostData.h"

#include "cli/words/Failure.h"
#include "cli/words/Lists.h"
#include "cli/words/Numbers.h"
#include "cli/words/VisibleText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace vexroc {

namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// The code of each row, from its match; other values share one code.
std::vector<double> codesOf(const std::vector<Match>& matches, double first, double second, double other)
{
    std::vector<double> codes;
    codes.reserve(matches.size());
    for (const Match match : matches)
        codes.push_back(match == missingValue ? missing : match == otherValue ? other : match == 0 ? first : second);
    return codes;
}

bool isZeroOrOne(const std::string& value, char decimal)
{
    const std::optional<double> number = parseNumber(value, decimal);
    return number == 0.0 || number == 1.0;
}

/// The numbers that the labels of a column spell.
std::vector<double> numbersIn(const DataColumn& column)
{
    std::vector<double> ofLabel;
    for (const std::string& text : column.labelTexts)
        ofLabel.push_back(parseNumber(text, column.decimal).value_or(missing));
    std::vector<double> numbers;
    for (const std::int32_t label : column.labels)
        numbers.push_back(label == DataColumn::missingLabel ? missing : ofLabel[static_cast<std::size_t>(label)]);
    return numbers;
}

/// Builds the host's data step by step; the rows stay complete until the last.
class HostDataBuilder {
public:
    HostDataBuilder(DataTable table, Roles& roles) : table_(std::move(table)), roles_(roles) {}

    HostData build()
    {
        data_.rows.read = table_.rows;
        addState();
        if (roles_.group)
            addGroup(*roles_.group);
        if (!roles_.weight.empty())
            data_.weight = add(data_.variables.AddContinuous(roles_.weight), numbers(roles_.weight));
        addTests();
        dropMissing();
        countRows();
        return std::move(data_);
    }

private:
    int add(int variable, std::vector<double> values)
    {
        data_.columns.push_back(std::move(values));
        return variable;
    }

    std::vector<double> numbers(const std::string& column) const
    {
        const std::span<const double> values = table_.numbers(column);
        return {values.begin(), values.end()};
    }

    void addState()
    {
        const std::string& positive = roles_.state.values.front();
        data_.state = add(data_.variables.AddTwoValued(roles_.state.column, {{0, "other"}, {1, positive}}),
                          codesOf(matchRows(table_, roles_.state), 1.0, 0.0, 0.0));
    }

    void addGroup(GroupSplit& group)
    {
        switch (group.by) {
        case GroupSplit::By::values: return addTwoValues(group);
        case GroupSplit::By::select: return addSelected(group);
        case GroupSplit::By::cut:
        case GroupSplit::By::midPoint: break;
        }
        data_.group = add(data_.variables.AddContinuous(group.column), numbers(group.column));
    }

    void addTwoValues(GroupSplit& group)
    {
        const DataColumn& column = table_.column(group.column, ColumnKind::labels);
        const std::vector<std::string> values = distinctValues(column);
        const auto fits = [&](const std::string& value) { return isZeroOrOne(value, column.decimal); };
        if (!values.empty() && std::ranges::all_of(values, fits)) {
            data_.group = add(data_.variables.AddTwoValued(group.column), numbersIn(column));
            return;
        }
        if (values.size() != 2)
            throw inputError(table_.source + ": the group column " + inQuotes(group.column) + " holds "
                             + (values.empty() ? "missing cells only" : listed(values, 6))
                             + "; it needs two values: pick them with --select, or split numbers with --cut or "
                               "--mid-point");
        group.by = GroupSplit::By::select;
        group.selected = values;
        addSelected(group);
    }

    void addSelected(const GroupSplit& group)
    {
        constexpr double otherCode = 2.0;
        const std::vector<Match> matches = matchRows(table_, {group.column, group.selected});
        const int variable = data_.variables.AddCategorical(
            group.column, {{0, group.selected[0]}, {1, group.selected[1]}, {2, "other"}});
        data_.group = add(variable, codesOf(matches, firstGroupCode, secondGroupCode, otherCode));
    }

    void addTests()
    {
        std::unordered_map<std::string_view, DataColumn*> columns; // there may be tens of thousands
        for (DataColumn& column : table_.columns)
            if (column.request.kind == ColumnKind::numbers)
                columns.emplace(column.request.name, &column);
        std::unordered_map<std::string_view, int> variables{{roles_.state.column, data_.state}};
        for (const std::string& test : roles_.tests) {
            const auto [known, isNew] = variables.try_emplace(test);
            if (isNew)
                known->second = add(data_.variables.AddContinuous(test), takeTest(*columns.at(test)));
            data_.tests.push_back(known->second);
        }
    }

    /// Moves the numbers out of the table, which no later step reads, unless another role has the column too.
    std::vector<double> takeTest(DataColumn& column) const
    {
        const std::string& name = column.request.name;
        if (name == roles_.weight || (roles_.group && name == roles_.group->column))
            return column.numbers;
        return std::move(column.numbers);
    }

    /// Counts a row under the first part that is missing, and keeps the others.
    void dropMissing()
    {
        std::vector<bool> keep(table_.rows);
        for (std::size_t row = 0; row < keep.size(); ++row) {
            if (isMissing(data_.state, row))
                ++data_.rows.missingState;
            else if (isMissing(data_.group, row))
                ++data_.rows.missingGroup;
            else if (isMissing(data_.weight, row))
                ++data_.rows.missingWeight;
            else
                keep[row] = true;
        }
        for (std::vector<double>& column : data_.columns) {
            std::size_t kept = 0;
            for (std::size_t row = 0; row < keep.size(); ++row)
                if (keep[row])
                    column[kept++] = column[row];
            column.resize(kept);
        }
    }

    [[nodiscard]] bool isMissing(int variable, std::size_t row) const
    {
        return variable >= 0 && std::isnan(value(variable, row));
    }
    [[nodiscard]] double value(int variable, std::size_t row) const
    {
        return data_.columns[static_cast<std::size_t>(variable)][row];
    }

    void countRows()
    {
        std::vector<int> tests = data_.tests;
        std::erase(tests, data_.state);
        std::ranges::sort(tests); // variables are numbered in the order of the tests
        tests.erase(std::unique(tests.begin(), tests.end()), tests.end());
        std::vector<RowCounts::Gap> gaps(tests.size());
        for (std::size_t row = 0; row < data_.columns.front().size(); ++row)
            countRow(row, tests, gaps);
        for (std::size_t test = 0; test < tests.size(); ++test) {
            if (gaps[test].rows() == 0)
                continue;
            gaps[test].test = data_.variables.GetVarAt(tests[test])->GetName();
            data_.rows.gaps.push_back(std::move(gaps[test]));
        }
    }

    void countRow(std::size_t row, const std::vector<int>& tests, std::vector<RowCounts::Gap>& gaps)
    {
        RowCounts& rows = data_.rows;
        const double weight = data_.weight < 0 ? 1.0 : value(data_.weight, row);
        const double cases = std::floor(weight + 0.5); // as the component rounds
        rows.roundedWeights += cases != weight ? 1 : 0;
        const bool selects = roles_.group && roles_.group->by == GroupSplit::By::select && !roles_.paired;
        if (selects && value(data_.group, row) > secondGroupCode) {
            ++rows.otherGroup;
            return;
        }
        if (!(cases >= 1.0 && cases <= std::numeric_limits<int>::max())) {
            ++rows.withoutWeight;
            return;
        }
        const bool positive = value(data_.state, row) == 1.0;
        bool incomplete = false;
        for (std::size_t test = 0; test < tests.size(); ++test) {
            const bool lacks = isMissing(tests[test], row);
            (positive ? gaps[test].positive : gaps[test].negative) += lacks ? 1 : 0;
            incomplete = incomplete || lacks;
        }
        if (incomplete && roles_.paired) {
            ++rows.incomplete;
            return;
        }
        ++(positive ? rows.positive : rows.negative);
        (positive ? rows.weightedPositive : rows.weightedNegative) += cases;
    }

    DataTable table_;
    Roles& roles_;
    HostData data_;
};

} // namespace

std::vector<std::pair<std::string, std::size_t>> RowCounts::leftOut() const
{
    std::vector<std::pair<std::string, std::size_t>> reasons{
        {"missing state", missingState},  {"missing group", missingGroup},    {"missing weight", missingWeight},
        {"in neither group", otherGroup}, {"unusable weight", withoutWeight}, {"missing test", incomplete}};
    std::erase_if(reasons, [](const auto& reason) { return reason.second == 0; });
    return reasons;
}

std::vector<ColumnRequest> requestsFor(const Roles& roles)
{
    std::vector<ColumnRequest> requests{{roles.state.column, ColumnKind::labels}};
    if (roles.group) {
        const bool labels = roles.group->by == GroupSplit::By::values || roles.group->by == GroupSplit::By::select;
        requests.push_back({roles.group->column, labels ? ColumnKind::labels : ColumnKind::numbers});
    }
    if (!roles.weight.empty())
        requests.push_back({roles.weight, ColumnKind::numbers});
    for (const std::string& test : roles.tests)
        if (test != roles.state.column)
            requests.push_back({test, ColumnKind::numbers});
    return requests;
}

HostData makeHostData(DataTable table, Roles& roles) { return HostDataBuilder(std::move(table), roles).build(); }

} // namespace vexroc
