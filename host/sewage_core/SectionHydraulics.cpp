// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SectionHydraulics.h"

#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/PipeManager.h"

#include <optional>

namespace OLMGis::Sewage {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::CDataRW;
using Data::FindDefinition;
using Topology::CPipeManager;
using Topology::CSection;

namespace {

std::optional<double> Read(const CDataDefinition* definition, const boost::shared_ptr<CSection>& section) {
    CDataBox box;
    if (CDataRW::Read(definition, section, box, 0, nullptr) == 0)
        return std::nullopt;
    return box.AsDouble();
}

} // namespace

std::vector<std::string> GetHydraulicsReadKeys() {
    return {"FLOW_TOTAL", "FLOW_RAIN_IDF", "PIPE_REF", "PIPE_ROUGHNESS", "SECTION_SLOPE"};
}

std::vector<std::string> GetHydraulicsWrittenKeys() {
    return {"HYD_FILLING", "HYD_VELOCITY", "HYD_CAPACITY"};
}

CSectionHydraulicsReader::CSectionHydraulicsReader(double viscosity, const CDataDefinition* flow)
    : m_flows(flow == nullptr ? std::vector{FindDefinition("FLOW_TOTAL"), FindDefinition("FLOW_RAIN_IDF")}
                              : std::vector{flow}),
      m_slope(FindDefinition("SECTION_SLOPE")), m_roughness(FindDefinition("PIPE_ROUGHNESS")),
      m_filling(FindDefinition("HYD_FILLING")), m_velocity(FindDefinition("HYD_VELOCITY")),
      m_capacity(FindDefinition("HYD_CAPACITY")) {
    m_hydraulics.SetDViskozitet(viscosity);
}

CSectionHydraulics CSectionHydraulicsReader::Calculate(const boost::shared_ptr<CSection>& section) {
    CSectionHydraulics figures;
    std::optional<double> flow;
    for (const CDataDefinition* key : m_flows)
        if (flow = Read(key, section); flow) {
            figures.m_flowKey = key;
            break;
        }
    if (!flow)
        return figures;
    figures.m_flow = *flow;
    figures.m_pipe = section->GetPipe();
    if (!figures.m_pipe) {
        figures.m_gap = section->GetPipeReference().empty() ? enmHydraulicsGap::Pipe : enmHydraulicsGap::UnknownPipe;
        return figures;
    }
    figures.m_roughness =
        Read(m_roughness, section).value_or(CPipeManager::Instance()->GetPipeRoughness(figures.m_pipe));
    const std::optional<double> slope = Read(m_slope, section);
    if (!slope) {
        figures.m_gap = enmHydraulicsGap::Slope;
        return figures;
    }
    figures.m_gap = enmHydraulicsGap::None;
    figures.m_slope = *slope;
    m_hydraulics.SetDPad(figures.m_slope / Formulas::PerMille);
    m_hydraulics.SetDProtok(figures.m_flow);
    m_hydraulics.SetDHrapavost(figures.m_roughness / Formulas::MillimetresPerMetre);
    m_hydraulics.SetPipe(figures.m_pipe.get());
    m_hydraulics.CalculateFillingHeight();
    m_hydraulics.CalculateVelocityForPartiallyFilled();
    m_hydraulics.CalculateHydraulicsValues();
    figures.m_filling = m_hydraulics.GetDPostotakIspunjnosti();
    figures.m_velocity = m_hydraulics.GetDBrzinaDjelomicnoIsp();
    figures.m_capacity = m_hydraulics.GetFullBoreFlow();
    figures.m_depth = m_hydraulics.GetDepth();
    figures.m_hydraulicRadius = m_hydraulics.GetHydraulicRadius();
    figures.m_isOverfull = m_hydraulics.IsOverfull();
    return figures;
}

int CSectionHydraulicsReader::Store(const boost::shared_ptr<CSection>& section,
                                    const CSectionHydraulics& figures) const {
    const struct {
        const CDataDefinition* m_key;
        double m_value;
    } results[] = {{m_filling, figures.m_filling}, {m_velocity, figures.m_velocity}, {m_capacity, figures.m_capacity}};
    const bool hasNumbers = figures.m_gap == enmHydraulicsGap::None;
    int stored = 0;
    for (const auto& result : results) {
        CDataBox box;
        if (hasNumbers)
            box.SetDouble(result.m_value);
        else if (CDataRW::Read(result.m_key, section, box, 0, nullptr) == 0)
            continue;
        else
            box.Clear();
        stored += CDataRW::Write(result.m_key, section, box, nullptr);
    }
    return hasNumbers && stored > 0 ? 1 : 0;
}

} // namespace OLMGis::Sewage
