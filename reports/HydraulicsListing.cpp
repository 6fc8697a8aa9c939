// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/HydraulicsListing.h"

#include <array>
#include <string>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CSectionHydraulics;

namespace {

struct CFigure {
    const char* m_key;
    const char* m_label;
    const char* m_unit;
    int m_decimals;
    double CSectionHydraulics::*m_value;
};

constexpr std::array Figures = {
    CFigure{"flow_m3s", "flow", "m³/s", 6, &CSectionHydraulics::m_flow},
    CFigure{"slope_permille", "slope", "1/1000", 3, &CSectionHydraulics::m_slope},
    CFigure{"roughness_mm", "roughness", "mm", 3, &CSectionHydraulics::m_roughness},
    CFigure{"filling_percent", "filling", "%", 1, &CSectionHydraulics::m_filling},
    CFigure{"depth_m", "depth", "m", 3, &CSectionHydraulics::m_depth},
    CFigure{"velocity_ms", "velocity", "m/s", 3, &CSectionHydraulics::m_velocity},
    CFigure{"capacity_m3s", "capacity", "m³/s", 6, &CSectionHydraulics::m_capacity},
};

/// Texts in front of the figures.
enum : std::size_t { Name, Guid, Pipe, FlowKey, FirstFigure };

std::string ShowSurcharge(const CDataBox& value) {
    return value.AsInt() != 0 ? "surcharged" : "";
}

} // namespace

CTable MakeHydraulicsTable(const std::vector<CHydraulicsRow>& rows) {
    CTable table({TextColumn("name", "section"), TextColumn("guid", "", enmReader::Programs),
                  TextColumn("pipe", "pipe"), TextColumn("flow_key", "flow key")});
    for (const CFigure& figure : Figures)
        table.AddColumn(NumberColumn(figure.m_key, figure.m_label, figure.m_unit, figure.m_decimals));
    CColumn overfull = FlagColumn("overfull", "");
    overfull.m_show = ShowSurcharge;
    table.AddColumn(overfull);
    table.SetRows(rows.size(), [&rows](std::size_t row, CTable::CRow& values) {
        const CSectionHydraulics& figures = rows[row].m_figures;
        values[Name].SetText(rows[row].m_section->GetName());
        values[Guid].SetText(rows[row].m_section->GetGuid());
        values[Pipe].SetText(figures.m_pipe->GetName());
        values[FlowKey].SetText(figures.m_flowKey->m_id);
        for (std::size_t i = 0; i < Figures.size(); ++i)
            values[FirstFigure + i].SetDouble(figures.*Figures[i].m_value);
        values[FirstFigure + Figures.size()].SetInt(figures.m_isOverfull ? 1 : 0);
    });
    return table;
}

} // namespace Reports
