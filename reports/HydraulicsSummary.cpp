// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The hydraulics of a network summed up by pipe, and what leaves it.
#include "host/network_core/PipeManager.h"
#include "reports/HydraulicsListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace Reports {

using OLMGis::Data::CDataBox;

namespace {

/// Least and greatest of some numbers.
struct CRange {
    double m_least = 0.0;
    double m_greatest = 0.0;
    std::size_t m_count = 0;

    void Add(double value) {
        m_least = m_count == 0 ? value : std::min(m_least, value);
        m_greatest = m_count == 0 ? value : std::max(m_greatest, value);
        ++m_count;
    }
    CDataBox Show(int decimals) const {
        return m_count == 0
                   ? CDataBox()
                   : CDataBox(fmt::format("{} to {}", ShowValue(m_least, decimals), ShowValue(m_greatest, decimals)));
    }
};

struct CPipeUse {
    double m_length = 0.0; ///< m
    CRange m_filling;      ///< %
    CRange m_velocity;     ///< m/s, of sections with a flow

    void Add(const CHydraulicsRow& row) {
        m_length += row.m_section->GetLength2D();
        m_filling.Add(row.m_figures.m_filling);
        if (row.m_figures.m_flow > 0.0)
            m_velocity.Add(row.m_figures.m_velocity);
    }
};

CTable MakePipeTable(const std::vector<CHydraulicsRow>& rows) {
    std::map<std::pair<double, std::string>, CPipeUse> uses; // by inside width, then by name
    CPipeUse all;
    for (const CHydraulicsRow& row : rows) {
        const auto& pipe = row.m_figures.m_pipe;
        uses[{OLMGis::Topology::CPipeManager::Instance()->GetInnerDiameter(pipe), pipe->GetName()}].Add(row);
        all.Add(row);
    }
    CTable table({TextColumn("pipe", "pipe"), NumberColumn("inner_width_mm", "inside", "mm", 1),
                  NumberColumn("sections", "sections"), NumberColumn("length_m", "length", "m", 1),
                  NumberColumn("filling_percent", "filling", "%"), NumberColumn("velocity_ms", "velocity", "m/s")});
    const auto add = [&table](const std::string& name, const CDataBox& inside, const CPipeUse& use) {
        table.AddRow({name, inside, static_cast<int>(use.m_filling.m_count), use.m_length, use.m_filling.Show(1),
                      use.m_velocity.Show(2)});
    };
    for (const auto& [pipe, use] : uses)
        add(pipe.second, pipe.first, use);
    if (uses.size() > 1)
        add("all pipes", {}, all);
    return table;
}

/// The flow at the last sections of the network.
CBlock MakeOutletBlock(const std::vector<CHydraulicsRow>& rows) {
    constexpr std::size_t MostOutlets = 20;
    CTable table({TextColumn("section", "last section"), NumberColumn("flow_m3s", "flow", "m³/s", 6),
                  TextColumn("flow_key", "flow key")});
    std::vector<boost::shared_ptr<OLMGis::Topology::CSection>> below;
    std::size_t count = 0;
    for (const CHydraulicsRow& row : rows) {
        below.clear();
        if (row.m_section->GetSectionsOut(below) == 0 && ++count <= MostOutlets)
            table.AddRow({row.m_section->GetName(), row.m_figures.m_flow, row.m_figures.m_flowKey->m_id});
    }
    return {count > MostOutlets ? fmt::format("{} end the network; the first {}:", Count(count, "section"), MostOutlets)
                                : std::string(),
            std::move(table)};
}

} // namespace

CListing MakeHydraulicsSummary(const std::vector<CHydraulicsRow>& rows) {
    CListing listing;
    listing.m_blocks.push_back({fmt::format("hydraulics: {}", Count(rows.size(), "section")), MakePipeTable(rows)});
    listing.m_blocks.push_back(MakeOutletBlock(rows));
    return listing;
}

} // namespace Reports
