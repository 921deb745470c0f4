#include "cli/output/comparisonRows.h"

#include "cli/output/resultColumns.h"

namespace vexroc {

namespace {

constexpr std::array groupCountColumns{
    TableColumn{"positive1", "positive 1", CellRole::count},
    TableColumn{"negative1", "negative 1", CellRole::count},
    TableColumn{"positive2", "positive 2", CellRole::count},
    TableColumn{"negative2", "negative 2", CellRole::count},
};

constexpr std::array leftOutColumns{TableColumn{"left_out", "left out", CellRole::count}};

constexpr std::array twoAreaColumns{
    TableColumn{"area1", "area 1", CellRole::statistic},
    TableColumn{"standard_error1", "std. error 1", CellRole::statistic},
    TableColumn{"area2", "area 2", CellRole::statistic},
    TableColumn{"standard_error2", "std. error 2", CellRole::statistic},
};

} // namespace

std::vector<TableColumn> comparisonColumns(bool paired)
{
    if (paired)
        return joined({testPairColumns, inPanel(1, stateColumns), inPanel(1, leftOutColumns),
                       inPanel(1, twoAreaColumns), inPanel(2, differenceColumns)});
    return joined({groupPairColumns, inPanel(1, groupCountColumns), inPanel(1, leftOutColumns),
                   inPanel(2, twoAreaColumns), inPanel(3, differenceColumns)});
}

std::vector<std::string_view> comparisonNames(const Difference& d, bool paired)
{
    if (paired)
        return {d.first.test, d.second.test};
    return {d.first.test, d.first.group, d.second.group};
}

std::vector<double> comparisonNumbers(const Difference& d, bool paired)
{
    std::vector<double> numbers;
    const auto add = [&](std::initializer_list<double> more) {
        for (const double number : more)
            numbers.push_back(number);
    };
    add({double(d.first.positive), double(d.first.negative)});
    if (!paired)
        add({double(d.second.positive), double(d.second.negative)});
    add({double(d.leftOut), d.first.area, d.first.stdError, d.second.area, d.second.stdError});
    add({d.difference, d.stdError, d.z, d.pValue, d.log10P, d.lower, d.upper});
    return numbers;
}

std::vector<double> areaNumbers(const Area& a) { return {a.area, a.stdError, a.pValue, a.log10P, a.lower, a.upper}; }

} // namespace vexroc
