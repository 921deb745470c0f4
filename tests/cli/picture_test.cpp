#include "cli/picture/Chart.h"
#include "cli/picture/Picture.h"
#include "cli/picture/Thinning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace vexroc {

namespace {

double stepsBetween(const PathPoint& a, const PathPoint& b) { return std::fabs(a.x - b.x) + std::fabs(a.y - b.y); }

} // namespace

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

TEST(Picture, ShadesTheRectanglesOfACurve)
{
    std::vector<DrawnCurve> curves(1);
    curves[0].boxes = {{0.25, 0.75, 0.5, 1.0}};
    const std::string svg = svgPicture({curves, "95 % interval", "a question", {"a note"}});
    EXPECT_NE(svg.find(" d=\"M0 330V110H220V330Z\""), std::string::npos) << svg;
    EXPECT_NE(svg.find("no curve to draw"), std::string::npos);
}

TEST(Chart, DrawsLinesBetweenWhatIsNoNumber)
{
    const double none = std::nan("");
    Chart chart{.title = "a < b", .x = "cut-off", .y = "share", .lines = {}, .yIsShare = true};
    chart.lines.push_back({"line", {{0, 0.5}, {1, 1.0}, {2, none}, {3, 0.25}, {4, 0.0}}});
    chart.lines.push_back({.name = "reference", .points = {{0, 0.0}, {4, 0.0}}, .isReference = true});
    const std::string svg = svgChart(chart);
    EXPECT_NE(svg.find("a &lt; b"), std::string::npos);
    EXPECT_NE(svg.find("d=\"M0 172.5L115 0\""), std::string::npos) << svg;
    EXPECT_NE(svg.find("d=\"M345 258.75L460 345\""), std::string::npos) << svg;
    EXPECT_NE(svg.find("stroke-dasharray=\"4 4\" d=\"M0 345H460\""), std::string::npos) << svg;
}

} // namespace vexroc
