// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/Network.h"
#include "host/network_core/GridSurface.h"
#include "host/network_core/Node.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace Bench {

using OLMGis::Topology::CGridFrame;
using OLMGis::Topology::CGridSurface;
using OLMGis::Topology::CTerrainSurfaces;
using OLMGis::Topology::ICellSource;
using OLMGis::Utility::BadInput;

namespace {

constexpr int Type = 2;            // not that of the invented nodes' own heights
constexpr int CellsOfASide = 2000; // 32 MB: all of them stay in memory

class CHills final : public ICellSource {
public:
    bool ReadCells(int column, int row, int columns, int rows, double* cells, std::size_t stride) override {
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < columns; ++c)
                cells[static_cast<std::size_t>(r) * stride + static_cast<std::size_t>(c)] =
                    100.0 + 0.01 * ((column + c) % 97) + 0.02 * ((row + r) % 89);
        return true;
    }
};

/// A grid over all nodes, one cell wider than they are on each side.
CGridFrame FrameOver(const OLMGis::Topology::CTopologyStorage& topology) {
    constexpr double most = std::numeric_limits<double>::max();
    double minX = most;
    double minY = most;
    double maxX = -most;
    double maxY = -most;
    for (const auto& node : topology.GetNodes()) {
        minX = std::min(minX, node->GetPoint().m_x);
        maxX = std::max(maxX, node->GetPoint().m_x);
        minY = std::min(minY, node->GetPoint().m_y);
        maxY = std::max(maxY, node->GetPoint().m_y);
    }
    const double cell = std::max({maxX - minX, maxY - minY, 1.0}) / (CellsOfASide - 3);
    return {{minX - 1.5 * cell, cell, 0.0, maxY + 1.5 * cell, 0.0, -cell}, CellsOfASide, CellsOfASide};
}

Result<CBenchProjectPtr> MakeHillyNetwork(const CSize& size) {
    auto project = MakeBareNetwork(size);
    if (project)
        CTerrainSurfaces::Instance()->Attach(Type, [frame = FrameOver(project.Value()->Topology())] {
            return std::make_shared<CGridSurface>(frame, std::make_unique<CHills>());
        });
    return project;
}

/// The height at every node: an operation is one sample.
Result<CSubject> SamplingNodes(const CSize& size) {
    const auto project = MakeHillyNetwork(size);
    if (!project)
        return project.GetError();
    const auto& nodes = project.Value()->Topology().GetNodes();
    CSubject subject;
    subject.m_operations = static_cast<double>(nodes.size());
    subject.m_pass = [project = project.Value(), &nodes]() -> Status {
        double sum = 0.0;
        double height = 0.0;
        int found = 0;
        for (const auto& node : nodes) {
            found += node->GetTerrainHeight(height, Type);
            sum += height;
        }
        benchmark::DoNotOptimize(sum);
        return found == static_cast<int>(nodes.size()) ? Status(Done{}) : Status(BadInput("a node has no height"));
    };
    return subject;
}

/// The samples along every section; an operation is one sample.
Result<CSubject> SamplingSections(const CSize& size) {
    const auto project = MakeHillyNetwork(size);
    if (!project)
        return project.GetError();
    const auto& sections = project.Value()->Topology().GetSections();
    const auto sample = [&sections] {
        std::vector<std::pair<double, double>> heights;
        std::size_t count = 0;
        for (const auto& section : sections)
            if (section->GetAllTerrainHeights(Type, heights) != 0)
                count += heights.size();
        return count;
    };
    CSubject subject;
    subject.m_operations = static_cast<double>(sample());
    subject.m_pass = [project = project.Value(), sample]() -> Status {
        return sample() > 0 ? Status(Done{}) : Status(BadInput("no section has terrain"));
    };
    return subject;
}

} // namespace

void RegisterTerrain() {
    RegisterOnNetworks("terrain/nodes", enmPace::Quick, SamplingNodes);
    RegisterOnNetworks("terrain/sections", enmPace::Quick, SamplingSections);
}

} // namespace Bench
