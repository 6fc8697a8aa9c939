// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/BranchHydraulics.h"

#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/Branches.h"
#include "host/network_core/NominalDiameter.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/SectionHydraulics.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Formulas::MillimetresPerMetre;
using OLMGis::Formulas::Percent;
using OLMGis::Sewage::CSectionHydraulics;
using OLMGis::Sewage::enmHydraulicsGap;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CSection;

namespace {

constexpr double Viscosity = 1e-6; // m²/s
constexpr int TerrainOfDesign = 1;

/// The flows beside the one of the design, under their own keys.
constexpr std::array Flows = {"FLOW_SECT_TOTAL", "FLOW_TRANSIT", "FLOW_RAIN_IDF", "FLOW_TOTAL"};

using CSectionPointer = boost::shared_ptr<CSection>;

struct CPlacedSection {
    int m_branch; ///< from 1
    CSectionPointer m_section;
};

std::vector<CPlacedSection> ListSections() {
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    std::vector<CPlacedSection> sections;
    int branch = 0;
    for (const auto& rows : OLMGis::Topology::ListBranches(topology)) {
        ++branch;
        for (const std::uint32_t row : rows)
            sections.push_back({branch, topology.GetSectionAt(row)});
    }
    return sections;
}

CDataBox Read(const char* key, const CSection& section) {
    CDataBox box;
    CDataRW::Read(key, &section, box, 0, nullptr);
    return box;
}

/// What the level line of a section is above the invert of its pipe, m; null where that depends on a pipe and there is
/// none.
CDataBox ReadLineAboveInvert(const CSection& section) {
    const int position = Read("LEVEL_LINE_POSITION", section).AsInt(); // a null one means the invert
    if (position == OLMGis::Topology::LevelLineInsideBottom)
        return 0.0;
    double above = 0.0;
    double below = 0.0;
    const auto pipe = section.GetPipe();
    if (CPipeManager::Instance()->GetPipeHeight(pipe, position, above, below) == 0)
        return {};
    return (below - pipe->GetPipeData()->m_wall) / MillimetresPerMetre;
}

CDataBox Invert(const char* key, const CSection& section, const CDataBox& lineAboveInvert) {
    const CDataBox level = Read(key, section);
    return level.IsNotNull() && lineAboveInvert.IsNotNull() ? CDataBox(level.AsDouble() - lineAboveInvert.AsDouble())
                                                            : CDataBox();
}

CDataBox Ground(const boost::shared_ptr<CNode>& node) {
    double height = 0.0;
    return node && node->GetTerrainHeight(height, TerrainOfDesign) != 0 ? CDataBox(height) : CDataBox();
}

CDataBox NameOf(const boost::shared_ptr<CNode>& node) {
    return node ? CDataBox(node->GetName()) : CDataBox();
}

void AddPipe(const CSection& section, CTable::CRow& row) {
    const auto pipe = section.GetPipe();
    if (!pipe) {
        row.resize(row.size() + 4);
        return;
    }
    row.emplace_back(pipe->GetName());
    row.emplace_back(OLMGis::Topology::NominalDiameter(*pipe));
    row.emplace_back(pipe->GetPipeData()->m_innerWidth);
    row.emplace_back(pipe->GetPipeData()->m_innerHeight);
}

void AddHydraulics(const CSectionHydraulics& figures, CTable::CRow& row) {
    row.emplace_back(figures.m_flowKey == nullptr ? CDataBox() : CDataBox(figures.m_flowKey->m_id));
    row.emplace_back(figures.m_flowKey == nullptr ? CDataBox() : CDataBox(figures.m_flow));
    if (figures.m_gap != enmHydraulicsGap::None) {
        row.resize(row.size() + 8);
        return;
    }
    row.emplace_back(figures.m_roughness);
    row.emplace_back(figures.m_capacity);
    row.push_back(figures.m_capacity > 0.0 ? CDataBox(Percent * figures.m_flow / figures.m_capacity) : CDataBox());
    row.emplace_back(figures.m_isOverfull ? Percent : figures.m_filling);
    row.emplace_back(figures.m_depth);
    row.emplace_back(figures.m_velocity);
    row.emplace_back(figures.m_shearStress);
    row.emplace_back(figures.m_isOverfull ? 1 : 0);
}

std::vector<CColumn> MakeColumns() {
    std::vector<CColumn> columns = {NumberColumn("branch", "branch"),
                                    TextColumn("name", "section"),
                                    TextColumn("guid", "", enmReader::Programs),
                                    TextColumn("from", "from"),
                                    TextColumn("to", "to"),
                                    NumberColumn("length_m", "length", "m", 2),
                                    NumberColumn("ground_start_m", "ground at start", "m", 2),
                                    NumberColumn("ground_end_m", "ground at end", "m", 2),
                                    NumberColumn("invert_start_m", "invert at start", "m", 2),
                                    NumberColumn("invert_end_m", "invert at end", "m", 2),
                                    NumberColumn("slope_permille", "slope", "1/1000", 2),
                                    TextColumn("pipe", "pipe"),
                                    NumberColumn("dn_mm", "DN", "mm", 0),
                                    NumberColumn("inner_width_mm", "inner width", "mm", 0),
                                    NumberColumn("inner_height_mm", "inner height", "mm", 0)};
    for (const char* const key : Flows)
        columns.push_back(NumberColumn(key, key, "m³/s", 6));
    for (CColumn column :
         {TextColumn("flow_key", "flow key"), NumberColumn("flow_m3s", "flow", "m³/s", 6),
          NumberColumn("roughness_mm", "roughness", "mm", 2), NumberColumn("capacity_m3s", "Qfull", "m³/s", 6),
          NumberColumn("flow_ratio_percent", "Q/Qfull", "%", 1), NumberColumn("filling_percent", "filling", "%", 1),
          NumberColumn("depth_m", "depth", "m", 3), NumberColumn("velocity_ms", "velocity", "m/s", 2),
          NumberColumn("shear_nm2", "shear stress", "N/m²", 2), FlagColumn("overfull", "surcharged")})
        columns.push_back(std::move(column));
    return columns;
}

} // namespace

CTable MakeBranchHydraulicsTable() {
    CTable table(MakeColumns());
    const auto sections = std::make_shared<const std::vector<CPlacedSection>>(ListSections());
    const auto reader = std::make_shared<OLMGis::Sewage::CSectionHydraulicsReader>(Viscosity);
    table.SetRows(sections->size(), [sections, reader](std::size_t place, CTable::CRow& row) {
        const CSection& section = *(*sections)[place].m_section;
        const CDataBox lineAboveInvert = ReadLineAboveInvert(section);
        row = {(*sections)[place].m_branch,
               section.GetName(),
               section.GetGuid(),
               NameOf(section.GetStartingNode()),
               NameOf(section.GetEndingNode()),
               section.GetLength2D(),
               Ground(section.GetStartingNode()),
               Ground(section.GetEndingNode()),
               Invert("LEVEL_LINE_0", section, lineAboveInvert),
               Invert("LEVEL_LINE_1", section, lineAboveInvert),
               Read("SECTION_SLOPE", section)};
        AddPipe(section, row);
        for (const char* const key : Flows)
            row.push_back(Read(key, section));
        AddHydraulics(reader->Calculate((*sections)[place].m_section), row);
    });
    return table;
}

} // namespace Reports
