// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/DesignSummary.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/network_core/PipeManager.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string>

namespace Cli {

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

std::string Show(double value, int decimals) {
    return ShowValue(OLMGis::Data::CDataBox(value), decimals);
}

void PrintPipes(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    std::map<std::pair<double, std::string>, CPipeUse> uses; // by inside width, then by name
    CPipeUse all;
    for (const CHydraulicsRow& row : rows) {
        const auto& pipe = row.m_figures.m_pipe;
        uses[{OLMGis::Topology::CPipeManager::Instance()->GetInnerDiameter(pipe), pipe->GetName()}].Add(row);
        all.Add(row);
    }
    CTable table;
    table.AddColumn("pipe");
    for (const char* head : {"inside, mm", "sections", "length, m", "filling, %", "velocity, m/s"})
        table.AddColumn(head, CTable::enmAlign::Right);
    const auto add = [&table](const std::string& name, const std::string& inside, const CPipeUse& use) {
        table.AddRow({name, inside, fmt::format("{}", use.m_filling.m_count), Show(use.m_length, 1),
                      fmt::format("{} to {}", Show(use.m_filling.m_least, 1), Show(use.m_filling.m_greatest, 1)),
                      use.m_velocity.m_count == 0 ? std::string()
                                                  : fmt::format("{} to {}", Show(use.m_velocity.m_least, 2),
                                                                Show(use.m_velocity.m_greatest, 2))});
    };
    for (const auto& [pipe, use] : uses)
        add(pipe.second, Show(pipe.first, 1), use);
    if (uses.size() > 1)
        add("all pipes", "", all);
    table.Print(stream);
}

void PrintOutlets(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    constexpr std::size_t MostOutlets = 20;
    CTable table;
    table.AddColumn("last section");
    table.AddColumn("flow, m³/s", CTable::enmAlign::Right);
    table.AddColumn("from");
    std::vector<boost::shared_ptr<OLMGis::Topology::CSection>> below;
    std::size_t count = 0;
    for (const CHydraulicsRow& row : rows) {
        below.clear();
        if (row.m_section->GetSectionsOut(below) == 0 && ++count <= MostOutlets)
            table.AddRow(
                {std::string(row.m_section->GetName()), Show(row.m_figures.m_flow, 6), row.m_figures.m_flowKey->m_id});
    }
    table.Print(stream);
    if (count > MostOutlets)
        stream << fmt::format("and {} more\n", count - MostOutlets);
}

} // namespace

void PrintHydraulicsSummary(std::ostream& stream, const std::vector<CHydraulicsRow>& rows) {
    stream << fmt::format("hydraulics: {}\n", Count(rows.size(), "section"));
    if (rows.empty())
        return;
    PrintPipes(stream, rows);
    stream << '\n';
    PrintOutlets(stream, rows);
}

} // namespace Cli
