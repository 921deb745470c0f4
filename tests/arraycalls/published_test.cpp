#include "folders.h"
#include "tests/support/calls.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

using namespace roctest;

/// The numbers of a comma-separated file below its header.
std::vector<std::vector<double>> rowsOf(const std::string& name)
{
    std::ifstream file(std::string(dataFolder) + "/" + name);
    EXPECT_TRUE(file.good()) << name;
    std::string line;
    std::getline(file, line);
    std::vector<std::vector<double>> rows;
    while (std::getline(file, line)) {
        std::istringstream cells(line);
        rows.emplace_back();
        for (std::string cell; std::getline(cells, cell, ',');)
            rows.back().push_back(std::stod(cell));
    }
    return rows;
}

/// Cases from counts per value.
Sample expanded(const std::string& name, std::size_t negativeColumn, std::size_t positiveColumn)
{
    Sample sample;
    for (const std::vector<double>& row : rowsOf(name)) {
        for (int i = 0; i < row[positiveColumn]; ++i)
            sample.add(1.0, row[0], 0.0);
        for (int i = 0; i < row[negativeColumn]; ++i)
            sample.add(0.0, row[0], 0.0);
    }
    return sample;
}

TEST(Published, HanleyMcNeil1982)
{
    const Sample ratings = expanded("hanley_mcneil_1982.csv", 1, 2);
    const auc_res res = areaOf(ratings.states, ratings.values);
    EXPECT_EQ(res.posCount, 51);
    EXPECT_EQ(res.negCount, 58);
    EXPECT_NEAR(res.area, 0.893, 0.0005);
    EXPECT_NEAR(res.stdError, 0.032, 0.0005);
}

TEST(Published, Fawcett2006)
{
    Sample sample;
    for (const std::vector<double>& row : rowsOf("fawcett_2006.csv"))
        sample.add(row[1], row[2], 0.0);
    EXPECT_DOUBLE_EQ(areaOf(sample.states, sample.values).area, 0.68);
    // Every score occurs once: 21 points, in steps of one tenth.
    EXPECT_EQ(curve(sample.states, sample.values).size(), 3u * 21);
}

TEST(Published, DavisGoadrich2006)
{
    const Sample sample = expanded("davis_goadrich_2006.csv", 2, 1);
    // from B (TP 10, FP 30) back to A (TP 5, FP 5)
    const std::vector<std::pair<double, double>> published{{0.50, 0.250}, {0.45, 0.265}, {0.40, 0.286},
                                                           {0.35, 0.318}, {0.30, 0.375}, {0.25, 0.500}};
    const Numbers rows = precisionRecall(sample.states, sample.values);
    std::size_t found = 0;
    for (std::size_t i = 0; i < rows.size() && found < published.size(); i += 4) {
        if (std::abs(rows[i + 1].value - published[found].first) > 1e-12)
            continue;
        EXPECT_NEAR(rows[i + 2].value, published[found].second, 0.0005);
        EXPECT_EQ(rows[i + 3].value, found == 0 || found == 5 ? 0.0 : 1.0);
        ++found;
    }
    EXPECT_EQ(found, published.size());
}

} // namespace
