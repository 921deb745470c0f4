#include "cli/picture/Picture.h"
#include "cli/picture/Thinning.h"
#include "programRun.h"

#include <algorithm>
#include <cmath>

namespace vexroc {

namespace {

// Columns of the table of best cut-offs.
enum {
    variable,
    group,
    cutOff,
    youden,
    sensitivity,
    specificity,
    truePositive,
    falsePositive,
    trueNegative,
    falseNegative
};

Rows bestCutOffs(const std::string& arguments, const std::string& data)
{
    Rows rows;
    int table = 0;
    for (const Cells& row : rowsOf("analyze " + arguments + " --best", data)) {
        table += row.empty() ? 1 : 0;
        if (table == 2 && !row.empty() && row[0] != "variable")
            rows.push_back(row);
    }
    return rows;
}

double stepsBetween(const PathPoint& a, const PathPoint& b) { return std::fabs(a.x - b.x) + std::fabs(a.y - b.y); }

} // namespace

TEST(BestCutOffs, AreAllTiesWithTheirCountsInTheCases)
{
    // Youden's index is 1/3 at 1.5 and at 3.5; as 1 - specificity is rounded, the two differ in the last digit.
    const std::string data = "s,t\n0,1\n1,2\n0,3\n1,4\n0,4\n1,5\n";
    const struct {
        const char* options;
        std::vector<Cells> expected; // cut-off, then TP, FP, TN, FN
    } cases[] = {
        {"", {{"1.5", "3", "2", "1", "0"}, {"3.5", "2", "1", "2", "1"}, {"4.5", "1", "0", "3", "2"}}},
        {"--smaller", {{"0", "0", "0", "3", "3"}, {"2.5", "1", "1", "2", "2"}, {"6", "3", "3", "0", "0"}}},
        {"--exclude", {{"1.5", "3", "2", "1", "0"}, {"3.5", "2", "1", "2", "1"}, {"4.5", "1", "0", "3", "2"}}},
    };
    for (const auto& [options, expected] : cases) {
        SCOPED_TRACE(options);
        std::vector<Cells> found;
        for (const Cells& row : bestCutOffs(std::string("- --state s=1 --test t ") + options, data)) {
            const Cells counts = slice(row, truePositive, 4);
            found.push_back({row[cutOff], counts[0], counts[1], counts[2], counts[3]});
            EXPECT_NEAR(number(row[youden]), number(counts[0]) / 3.0 - number(counts[1]) / 3.0, 1e-14);
            EXPECT_NEAR(number(row[sensitivity]) + number(row[specificity]) - 1.0, number(row[youden]), 1e-14);
        }
        EXPECT_EQ(found, expected);
    }
}

TEST(Thinning, KeepsEndsAndChosenPointsAndComesNearAllOthers)
{
    const auto at = [](int shape, std::size_t i, double share) -> PathPoint {
        switch (shape) {
        case 0: return {share, share + double(i % 2) * 1e-6}; // stairs
        case 1: return {i < 500000 ? 0.0 : 1.0, share};       // one long step
        case 2: return {share, double(i % 7) / 7.0};          // teeth
        default: return {0.5, 0.5};                           // one place
        }
    };
    constexpr std::size_t many = 1000000;
    constexpr std::size_t chosen = 345678;
    for (int shape = 0; shape < 4; ++shape) {
        SCOPED_TRACE(shape);
        std::vector<PathPoint> path;
        double length = 0.0;
        for (std::size_t i = 0; i < many; ++i) {
            path.push_back(at(shape, i, double(i) / (many - 1)));
            length += i == 0 ? 0.0 : stepsBetween(path[i - 1], path[i]);
        }
        const std::vector<std::size_t> drawn = thinned(path, {&chosen, 1});
        EXPECT_LE(drawn.size(), mostDrawnPoints + 1);
        EXPECT_EQ(drawn.front(), 0u);
        EXPECT_EQ(drawn.back(), many - 1);
        EXPECT_TRUE(std::ranges::binary_search(drawn, chosen));
        const double most = 2.0 * length / (mostDrawnPoints - 2) + 1e-9;
        for (std::size_t d = 1; d < drawn.size(); ++d)
            for (std::size_t i = drawn[d - 1]; i < drawn[d]; ++i)
                ASSERT_LE(stepsBetween(path[drawn[d - 1]], path[i]), most) << i;
    }
    EXPECT_EQ(thinned(std::vector<PathPoint>(5), {}), (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

TEST(Picture, ShadesABandAroundACurve)
{
    std::vector<DrawnCurve> curves(1);
    curves[0].band = {{0.0, 0.75, 1.0}, {0.5, 0.25, 0.75}, {1.0, 0.0, 0.5}};
    const std::string svg = svgPicture({curves, 0.95, "a question", {"a note"}});
    EXPECT_NE(svg.find(" d=\"M440 110L220 330L0 440V220L220 110L440 0Z\""), std::string::npos) << svg;
    EXPECT_NE(svg.find("no curve to draw"), std::string::npos);
}

} // namespace vexroc
