// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/SpatialIndex.h"

#include "host/project_io/store/SqliteDatabase.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <random>

using namespace OLMGis;
using ProjectIo::CExtent;
using ProjectIo::CSpatialIndex;
using ProjectIo::CSqliteDatabase;

namespace {

/// A file with an index of these rectangles, numbered from 1.
void WriteIndex(const std::string& path, const std::vector<CExtent>& extents) {
    WriteBytes(path, "");
    CSqliteDatabase database(path, path, CSqliteDatabase::enmAccess::Write);
    CSpatialIndex index;
    std::int64_t row = 0;
    for (const CExtent& extent : extents)
        index.Add(++row, extent);
    database.Execute("BEGIN");
    index.Write(database, "t", "geom");
    database.Execute("COMMIT");
}

CExtent Rectangle(double x, double y, double width, double height) {
    return {x, x + width, y, y + height};
}

bool Overlap(const CExtent& a, const CExtent& b) {
    return a.m_minX <= b.m_maxX && a.m_maxX >= b.m_minX && a.m_minY <= b.m_maxY && a.m_maxY >= b.m_minY;
}

/// Rows that the index finds in a window, ascending.
std::vector<std::size_t> RowsIn(const std::string& path, const CExtent& window) {
    std::istringstream rows(
        RunSql(path, fmt::format("SELECT coalesce(group_concat(id, ' '), '') FROM (SELECT id FROM rtree_t_geom WHERE "
                                 "minx <= {} AND maxx >= {} AND miny <= {} AND maxy >= {} ORDER BY id)",
                                 window.m_maxX, window.m_minX, window.m_maxY, window.m_minY)));
    return {std::istream_iterator<std::size_t>(rows), {}};
}

} // namespace

TEST(SpatialIndex, FindsWhatPlainComparisonFinds) {
    const CTestFolder folder;
    const std::string path = folder.File("index.sqlite");
    // Around the sizes at which a node is full, a level is added, a strip is cut.
    for (const std::size_t count : {0U, 1U, 51U, 52U, 103U, 153U, 2601U, 2602U, 7000U}) {
        SCOPED_TRACE(count);
        std::mt19937 random(static_cast<unsigned>(count));
        const auto upTo = [&random](unsigned limit) { return static_cast<double>(random() % limit); };
        std::vector<CExtent> extents;
        for (std::size_t i = 0; i < count; ++i)
            extents.push_back(i % 10 == 9
                                  ? CExtent()
                                  : Rectangle(5'000'000.1 + upTo(10000), upTo(10000) / 7.0 - 300.7, upTo(50), upTo(3)));
        WriteIndex(path, extents);
        EXPECT_EQ(RunSql(path, "SELECT rtreecheck('rtree_t_geom')"), "ok");
        for (int i = 0; i < 5; ++i) {
            const CExtent window = Rectangle(5'000'000 + upTo(9000), upTo(1000), 700, 300);
            const std::vector<std::size_t> found = RowsIn(path, window);
            std::vector<std::size_t> expected;
            for (std::size_t row = 1; row <= count; ++row)
                if (Overlap(extents[row - 1], window))
                    expected.push_back(row);
            // The index is rounded outwards: it finds all, and in addition only what is outside by less than a metre.
            std::vector<std::size_t> exact;
            std::copy_if(found.begin(), found.end(), std::back_inserter(exact),
                         [&](std::size_t row) { return Overlap(extents[row - 1], window); });
            EXPECT_EQ(exact, expected);
            const CExtent wider = Rectangle(window.m_minX - 1, window.m_minY - 1, 702, 302);
            for (const std::size_t row : found)
                EXPECT_TRUE(Overlap(extents[row - 1], wider)) << row;
        }
    }
}

TEST(SpatialIndex, RectanglesReachToTheirCornersThoughCoordinatesLosePrecision) {
    const CTestFolder folder;
    const std::string path = folder.File("index.sqlite");
    std::vector<CExtent> extents(100);
    for (std::size_t i = 0; i < extents.size(); ++i) {
        const double step = static_cast<double>(i);
        extents[i] = Rectangle(5'000'000.1 + 7.0 / 11.0 * step, -3'000'000.1 - 5.0 / 13.0 * step, 0.01 * step, 0.3);
    }
    WriteIndex(path, extents);
    for (std::size_t i = 0; i < extents.size(); ++i)
        for (const CExtent& corner : {Rectangle(extents[i].m_minX, extents[i].m_minY, 0, 0),
                                      Rectangle(extents[i].m_maxX, extents[i].m_maxY, 0, 0)})
            EXPECT_THAT(RowsIn(path, corner), testing::Contains(i + 1));
}

TEST(SpatialIndex, OthersMayGoOnChangingIt) {
    const CTestFolder folder;
    const std::string path = folder.File("index.sqlite");
    std::vector<CExtent> extents(3000);
    for (int i = 0; i < 3000; ++i)
        extents[static_cast<std::size_t>(i)] = Rectangle(i % 60, i / 60.0, 1.0, 1.0);
    WriteIndex(path, extents);
    RunSql(path, "BEGIN; DELETE FROM rtree_t_geom WHERE id % 3 = 0;"
                 "INSERT INTO rtree_t_geom SELECT id + 10000, minx + 7, maxx + 7, miny, maxy FROM rtree_t_geom;"
                 "DELETE FROM rtree_t_geom WHERE id < 2000; COMMIT");
    EXPECT_EQ(RunSql(path, "SELECT rtreecheck('rtree_t_geom')"), "ok");
    EXPECT_EQ(RunSql(path, "SELECT count(*) FROM rtree_t_geom"), "2667"); // 3000 - 1000, doubled, less 1333 below 2000
}
