// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/NodeSnapper.h"

#include "host/project_io/base/TextIndex.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using Topology::CPoint;

TEST(NodeSnapper, FindsWhatASearchOverAllPointsFinds) {
    constexpr double tolerance = 0.25;
    std::mt19937_64 engine(7);
    const auto coordinate = [&] { return static_cast<double>(engine() % 400) / 16.0 - 12.0; };
    std::vector<CPoint> points;
    for (int i = 0; i < 300; ++i)
        points.push_back({coordinate(), coordinate()});
    points.emplace_back();
    const CNodeSnapper snapper(points, tolerance);
    int foundCount = 0;
    for (int i = 0; i < 3000; ++i) {
        const CPoint point{coordinate() + (i % 2 == 0 ? 0.0 : 0.01), coordinate()};
        std::uint32_t nearest = NoRecord;
        for (std::uint32_t k = 0; k < points.size(); ++k) {
            const double distance = Topology::Distance(points[k], point);
            if (distance <= tolerance && (nearest == NoRecord || distance < Topology::Distance(points[nearest], point)))
                nearest = k;
        }
        ASSERT_EQ(snapper.Find(point).m_place, nearest) << i;
        foundCount += nearest == NoRecord ? 0 : 1;
    }
    EXPECT_GT(foundCount, 100);
}

TEST(NodeSnapper, KeepsItsPaceWherePointsCrowdAndSurvivesHugeCoordinates) {
    std::vector<CPoint> points;
    for (int i = 0; i < 200000; ++i)
        points.push_back(i % 2 == 0 ? CPoint{1.0, 1.0} : CPoint{1.0 + i * 1e-12, 1.0});
    const double huge = std::numeric_limits<double>::max();
    points.push_back({huge, -huge});
    points.push_back({-0.0, 0.0});
    const CNodeSnapper snapper(points, 0.001);
    for (int i = 0; i < 200000; ++i)
        ASSERT_NE(snapper.Find({1.0, 1.0 + i * 1e-13}).m_place, NoRecord);
    EXPECT_TRUE(snapper.Find({1.0, 1.0}).m_isAmbiguous);
    EXPECT_EQ(snapper.Find({huge, -huge}).m_place, 200000U);
    EXPECT_EQ(snapper.Find({0.0, -0.0}).m_place, 200001U);
    EXPECT_EQ(snapper.Find({0.0, -0.0}).m_isAmbiguous, false);
}
