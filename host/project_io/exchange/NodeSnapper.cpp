// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/NodeSnapper.h"

#include "host/gis_core/HashTableGrowth.h"
#include "host/project_io/base/TextIndex.h"

#include <bit>
#include <cmath>

namespace OLMGis::ProjectIo {

using Topology::CPoint;

std::size_t CNodeSnapper::KeyHash::operator()(const CKey& key) const {
    // The high bits of a product depend on all bits of its factors.
    const auto mix = [](std::uint64_t bits) {
        bits ^= bits >> 32;
        bits *= 0x9E3779B97F4A7C15ULL;
        return bits ^ (bits >> 29);
    };
    return mix(mix(std::bit_cast<std::uint64_t>(key.m_x)) * 3 + std::bit_cast<std::uint64_t>(key.m_y));
}

CNodeSnapper::CKey CNodeSnapper::CellOf(const CPoint& point) const {
    // Adding 0 turns a negative zero into a positive one: equal keys must have equal bits.
    return {std::floor(point.m_x / m_tolerance) + 0.0, std::floor(point.m_y / m_tolerance) + 0.0};
}

CNodeSnapper::CNodeSnapper(std::span<const CPoint> points, double tolerance)
    : m_points(points), m_tolerance(tolerance), m_next(points.size(), NoRecord) {
    Utility::MakeRoom(m_exact, points.size());
    Utility::MakeRoom(m_cells, points.size());
    for (std::uint32_t i = 0; i < points.size(); ++i) {
        if (!points[i].IsKnown())
            continue;
        const auto [exact, isNew] = m_exact.insert({CKey{points[i].m_x + 0.0, points[i].m_y + 0.0}, CExact{i, false}});
        if (isNew)
            EnterCell(i);
        else
            exact->second.m_isRepeated = true;
    }
}

void CNodeSnapper::EnterCell(std::uint32_t place) {
    const auto [cell, isNew] = m_cells.insert({CellOf(m_points[place]), place});
    if (isNew)
        return;
    int count = 1;
    for (std::uint32_t i = m_next[cell->second]; i != NoRecord; i = m_next[i])
        ++count;
    if (count < MostInCell) {
        m_next[place] = cell->second;
        cell->second = place;
    }
}

CNodeSnapper::CFound CNodeSnapper::Find(const CPoint& point) const {
    if (const auto exact = m_exact.find(CKey{point.m_x + 0.0, point.m_y + 0.0}); exact != m_exact.end())
        return {exact->second.m_place, exact->second.m_isRepeated};
    const CKey middle = CellOf(point);
    CFound found{NoRecord, false};
    double nearest = m_tolerance;
    for (const double dx : {-1.0, 0.0, 1.0}) {
        for (const double dy : {-1.0, 0.0, 1.0}) {
            const auto cell = m_cells.find(CKey{middle.m_x + dx + 0.0, middle.m_y + dy + 0.0});
            if (cell == m_cells.end())
                continue;
            for (std::uint32_t i = cell->second; i != NoRecord; i = m_next[i]) {
                const double distance = Topology::Distance(m_points[i], point);
                // Of two equally near points the first one of the list.
                if (distance < nearest || (distance == nearest && i < found.m_place)) {
                    nearest = distance;
                    found.m_place = i;
                }
            }
        }
    }
    if (found.m_place != NoRecord) {
        const CPoint& at = m_points[found.m_place];
        found.m_isAmbiguous = m_exact.find(CKey{at.m_x + 0.0, at.m_y + 0.0})->second.m_isRepeated;
    }
    return found;
}

} // namespace OLMGis::ProjectIo
