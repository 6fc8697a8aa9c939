// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Heights from grids, held against the surfaces that the cells were taken from: a plane and a product of coordinates
// come back from bilinear interpolation as they are.
#include "host/network_core/GridSurface.h"

#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <random>
#include <tuple>

using namespace OLMGis::Topology;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr double Close = 1e-9; // heights below 1000 at coordinates of millions of metres, which are good to 1e-9

using CHeights = std::function<double(int column, int row)>;

/// Cells from a function; counts what is read.
class CFunctionSource final : public ICellSource {
public:
    CFunctionSource(CHeights heights, int* reads) : m_heights(std::move(heights)), m_reads(reads) {}
    bool ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) override {
        *m_reads += 1;
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                cells[static_cast<std::size_t>(r) * stride + static_cast<std::size_t>(c)] =
                    m_heights(column + c, row + r);
        return column < 10000; // beyond, the disk is broken
    }

private:
    CHeights m_heights;
    int* m_reads;
};

class GridSurface : public ::testing::Test {
protected:
    CGridSurface& Make(const std::array<double, 6>& transform, int columns, int rows, CHeights heights,
                       std::size_t mostBlocks = CCellBlocks::DefaultMostBlocks) {
        m_reads = 0;
        m_surface.emplace(CGridFrame{transform, columns, rows},
                          std::make_unique<CFunctionSource>(std::move(heights), &m_reads), mostBlocks);
        return *m_surface;
    }
    /// Cells of 1 m, the centre of the first one at 0, 0, rows downwards: place (column, row) is at (column, -row).
    CGridSurface& MakePlain(int columns, int rows, CHeights heights) {
        return Make({-0.5, 1.0, 0.0, 0.5, 0.0, -1.0}, columns, rows, std::move(heights));
    }

    /// Not-a-number for none.
    double At(double x, double y) {
        double height = -7.0;
        return m_surface->GetHeight({x, y}, height) ? height : None;
    }
    std::vector<std::pair<double, double>> Crossings(const std::vector<CPoint>& line) {
        std::vector<std::pair<double, double>> samples;
        m_surface->AppendCrossings(line, samples);
        return samples;
    }

    std::optional<CGridSurface> m_surface;
    int m_reads = 0;
};

} // namespace

TEST_F(GridSurface, APlaneComesBackFromGridsHoweverTheyLie) {
    struct CCase {
        const char* m_name;
        std::array<double, 6> m_transform;
    };
    // Frames of 40 by 30 cells: outer corner, step of a column in x and of a row in x, the same in y.
    const CCase cases[] = {{"north up, far from the origin", {5e5, 2.5, 0.0, 5.2e6, 0.0, -2.5}},
                           {"rows upwards, cells not square", {100.0, 1.0, 0.0, -50.0, 0.0, 3.0}},
                           {"turned by 30 degrees", {6e5, std::sqrt(0.75), 0.5, 4.8e6, 0.5, -std::sqrt(0.75)}}};
    for (const CCase& row : cases) {
        SCOPED_TRACE(row.m_name);
        const auto& t = row.m_transform;
        const auto pointOf = [&t](double column, double line) {
            return CPoint{t[0] + t[1] * (column + 0.5) + t[2] * (line + 0.5),
                          t[3] + t[4] * (column + 0.5) + t[5] * (line + 0.5)};
        };
        const auto plane = [&t](const CPoint& point) {
            return 300.0 + 0.25 * (point.m_x - t[0]) - 0.125 * (point.m_y - t[3]);
        };
        auto& surface = Make(t, 40, 30, [&](int column, int line) { return plane(pointOf(column, line)); });
        std::mt19937_64 random(7);
        std::uniform_real_distribution<double> columns(0.0, 39.0);
        std::uniform_real_distribution<double> rows(0.0, 29.0);
        for (int i = 0; i < 500; ++i) {
            const CPoint from = pointOf(columns(random), rows(random));
            const CPoint to = pointOf(columns(random), rows(random));
            ASSERT_NEAR(At(from.m_x, from.m_y), plane(from), Close);
            double last = -1.0;
            for (const auto& [distance, height] : Crossings({from, to})) {
                const double part = distance / Distance(from, to);
                ASSERT_NEAR(height, plane(from) * (1.0 - part) + plane(to) * part, Close);
                ASSERT_GE(distance, last);
                last = distance;
            }
        }
        for (const auto& [column, line, isInside] :
             std::initializer_list<std::tuple<double, double, bool>>{{0, 0, true},
                                                                     {39, 29, true},
                                                                     {39, 0, true},
                                                                     {-0.01, 3, false},
                                                                     {39.01, 3, false},
                                                                     {3, 29.01, false}}) {
            const CPoint point = pointOf(column, line);
            double height = 0.0;
            EXPECT_EQ(surface.GetHeight(point, height), isInside) << column << ' ' << line;
        }
    }
    EXPECT_FALSE((CGridFrame{{0, 1, 2, 0, 2, 4}, 5, 5}.IsUsable())); // both directions the same
    EXPECT_FALSE((CGridFrame{{0, 1, 0, 0, 0, 1}, 0, 5}.IsUsable()));
}

TEST_F(GridSurface, BetweenFourCentresHeightsAreBilinear) {
    MakePlain(2, 2, [](int column, int row) { return column * 10.0 + row * 100.0 + column * row * 40.0; });
    // 10 u + 100 v + 40 u v
    EXPECT_EQ(At(0.0, 0.0), 0.0);
    EXPECT_EQ(At(1.0, -1.0), 150.0);
    EXPECT_DOUBLE_EQ(At(0.25, -0.5), 2.5 + 50.0 + 5.0);
    EXPECT_DOUBLE_EQ(At(0.75, -0.125), 7.5 + 12.5 + 3.75);
}

TEST_F(GridSurface, WaysCrossTheLinesThroughCellCentres) {
    MakePlain(5, 4, [](int column, int row) { return column + 10.0 * row; }); // x from 0 to 4, y from 0 to -3
    // Along y = -0.5 from x = 0.5: lines of columns at 1, 2, 3.
    EXPECT_THAT(Crossings({{0.5, -0.5}, {3.5, -0.5}}), ElementsAre(Pair(0.5, 6.0), Pair(1.5, 7.0), Pair(2.5, 8.0)));
    EXPECT_THAT(Crossings({{3.5, -0.5}, {0.5, -0.5}}), ElementsAre(Pair(0.5, 8.0), Pair(1.5, 7.0), Pair(2.5, 6.0)));
    // Along a line of a row itself it crosses those of columns; both ends are on one.
    EXPECT_THAT(Crossings({{1.0, -1.0}, {3.0, -1.0}}), ElementsAre(Pair(0.0, 11.0), Pair(1.0, 12.0), Pair(2.0, 13.0)));
    // Steep: slope 2, from (1.25, -0.5): y = -1 at x = 1.5, x = 2 at y = -2, together, then y = -3 at x = 2.5.
    const double unit = std::sqrt(1.25);
    const auto steep = Crossings({{1.25, -0.5}, {2.75, -3.5}});
    ASSERT_EQ(steep.size(), 4U);
    EXPECT_NEAR(steep[0].first, 0.5 * unit, Close);
    EXPECT_NEAR(steep[0].second, 11.5, Close);
    EXPECT_NEAR(steep[1].first, 1.5 * unit, Close);
    EXPECT_EQ(steep[1].second, 22.0);
    EXPECT_EQ(steep[2], steep[1]); // both lines of the centre
    EXPECT_NEAR(steep[3].second, 32.5, Close);
    // Distances go on after a bend; beyond the outermost centres there is nothing.
    EXPECT_THAT(Crossings({{-5.0, -0.5}, {0.5, -0.5}, {0.5, 9.0}}), ElementsAre(Pair(5.0, 5.0), Pair(6.0, 0.5)));
    EXPECT_THAT(Crossings({{-5.0, 3.0}, {9.0, 3.0}}), IsEmpty());
    EXPECT_THAT(Crossings({{-5.0, -9.0}, {9.0, 20.0}}), IsEmpty()); // past a corner
    EXPECT_THAT(Crossings({{2.5, -0.5}, {2.5, -0.5}, {2.6, -0.6}}), IsEmpty());
    EXPECT_THAT(Crossings({{0.5, -0.5}, {None, -0.5}}), IsEmpty());
    EXPECT_LE(Crossings({{-1e300, -0.5}, {1e300, -0.5}}).size(), 5U); // rounding leaves less of it, but it ends
}

TEST_F(GridSurface, WithoutDataThereIsNoHeightButOnTheLinesBeside) {
    MakePlain(4, 4, [](int column, int row) { return column == 2 && row == 1 ? None : 5.0; });
    for (const auto& [x, y, isThere] : std::initializer_list<std::tuple<double, double, bool>>{{1.5, -0.5, false},
                                                                                               {2.5, -1.5, false},
                                                                                               {2.0, -1.0, false},
                                                                                               {2.0, -0.9, false},
                                                                                               {1.0, -1.0, true},
                                                                                               {1.0, -0.5, true},
                                                                                               {3.0, -1.5, true},
                                                                                               {2.0, -2.0, true},
                                                                                               {0.9, -0.5, true}})
        EXPECT_EQ(std::isnan(At(x, y)), !isThere) << x << ' ' << y;
    // Along y = -1 the lines at 1 and 3 have heights, that at 2 has none.
    EXPECT_THAT(Crossings({{0.5, -1.0}, {3.0, -1.0}}), ElementsAre(Pair(0.5, 5.0), Pair(2.5, 5.0)));
}

TEST_F(GridSurface, FewBlocksStayInMemoryAndLoseNothing) {
    const auto heights = [](int column, int row) { return column + 0.001 * row; };
    auto& surface = Make({-0.5, 1.0, 0.0, 0.5, 0.0, -1.0}, 700, 600, heights, 2);
    std::mt19937 random(3);
    for (int i = 0; i < 300; ++i) {
        const int column = static_cast<int>(random() % 700);
        const int row = static_cast<int>(random() % 600);
        double height = 0.0;
        ASSERT_TRUE(surface.GetHeight({static_cast<double>(column), -static_cast<double>(row)}, height));
        ASSERT_EQ(height, heights(column, row));
    }
    EXPECT_GT(m_reads, 100); // nine blocks by turns in two places
    // With room for all of them each is read once.
    Make({-0.5, 1.0, 0.0, 0.5, 0.0, -1.0}, 700, 600, heights);
    for (int pass = 0; pass < 2; ++pass)
        for (double x = 0.0; x < 699.0; x += 2.5)
            for (double y = 0.0; y > -599.0; y -= 50.5)
                ASSERT_NEAR(At(x, y), x - 0.001 * y, Close);
    EXPECT_EQ(m_reads, 9);
    // What can't be read has no heights.
    Make({-0.5, 1.0, 0.0, 0.5, 0.0, -1.0}, 20000, 1, [](int, int) { return 1.0; });
    EXPECT_EQ(At(1.5, 0.0), 1.0);
    EXPECT_TRUE(std::isnan(At(15000.5, 0.0)));
}

TEST_F(GridSurface, SectionsOnAPlaneAreSampledAtEveryLineOnce) {
    const CTestProject project;
    const CTextNetwork network("A---B"); // drawn from (0, 0) to (100, 0), 30 m by its stored length
    auto* const topology = CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto bent = topology
                          ->AddSection("bent", "bent", network.Node('A').get(), network.Node('B').get(),
                                       std::vector<CPoint>{{0.0, 0.0}, {50.0, 50.0}, {100.0, 0.0}})
                          .Value();
    CTerrainSurfaces::Instance()->Attach(4, [this] {
        // Cells of 10 m with centres at 5, 15, ...; the plane 200 - x / 10 + y / 100
        return std::make_shared<CGridSurface>(CGridFrame{{-100.0, 10.0, 0.0, 200.0, 0.0, -10.0}, 40, 40},
                                              std::make_unique<CFunctionSource>(
                                                  [](int column, int row) {
                                                      return 200.0 - (10.0 * column - 95.0) / 10.0 +
                                                             (195.0 - 10.0 * row) / 100.0;
                                                  },
                                                  &m_reads));
    });
    std::vector<std::pair<double, double>> samples;
    ASSERT_EQ(network.Section("AB")->GetAllTerrainHeights(4, samples), 1);
    ASSERT_EQ(samples.size(), 12U); // 5, 15 ... 95 m and the ends
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double x = i == 0 ? 0.0 : i == 11 ? 100.0 : 10.0 * static_cast<double>(i) - 5.0;
        EXPECT_NEAR(samples[i].first, 0.3 * x, Close);
        EXPECT_NEAR(samples[i].second, 200.0 - x / 10.0, Close);
    }
    // Up and down the diagonals through centres, where two lines cross at each: 5 + 5 places and the ends.
    ASSERT_EQ(bent->GetAllTerrainHeights(4, samples), 1);
    ASSERT_EQ(samples.size(), 12U);
    EXPECT_NEAR(samples[5].first, 45.0 * std::sqrt(2.0), Close);
    EXPECT_NEAR(samples[5].second, 200.0 - 4.5 + 0.45, Close);
    EXPECT_NEAR(samples[6].first, 55.0 * std::sqrt(2.0), Close);
    EXPECT_NEAR(samples[6].second, 200.0 - 5.5 + 0.45, Close);
}
