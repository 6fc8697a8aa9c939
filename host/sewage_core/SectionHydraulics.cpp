// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SectionHydraulics.h"

#include "host/formulas/Units.h"
#include "host/formulas/WallShearStress.h"
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

/// Figures with the flow and its key, where the section has one.
CSectionHydraulics CSectionHydraulicsReader::ReadFlow(const boost::shared_ptr<CSection>& section) const {
    CSectionHydraulics figures;
    for (const CDataDefinition* key : m_flows)
        if (const auto flow = Read(key, section)) {
            figures.m_flowKey = key;
            figures.m_flow = *flow;
            break;
        }
    return figures;
}

CSectionHydraulics CSectionHydraulicsReader::Calculate(const boost::shared_ptr<CSection>& section) {
    CSectionHydraulics figures = ReadFlow(section);
    if (figures.m_flowKey == nullptr)
        return figures;
    figures.m_pipe = section->GetPipe();
    if (figures.m_pipe)
        CalculateInPipe(section, figures);
    else
        figures.m_gap = section->GetPipeReference().empty() ? enmHydraulicsGap::Pipe : enmHydraulicsGap::UnknownPipe;
    return figures;
}

CSectionHydraulics CSectionHydraulicsReader::Calculate(const boost::shared_ptr<CSection>& section,
                                                       const boost::shared_ptr<Topology::CCatalogItem>& pipe) {
    CSectionHydraulics figures = ReadFlow(section);
    if (figures.m_flowKey == nullptr)
        return figures;
    figures.m_pipe = pipe;
    if (pipe)
        CalculateInPipe(section, figures);
    else
        figures.m_gap = enmHydraulicsGap::Pipe;
    return figures;
}

void CSectionHydraulicsReader::CalculateInPipe(const boost::shared_ptr<CSection>& section,
                                               CSectionHydraulics& figures) {
    figures.m_roughness =
        Read(m_roughness, section).value_or(CPipeManager::Instance()->GetPipeRoughness(figures.m_pipe));
    const std::optional<double> slope = Read(m_slope, section);
    if (!slope) {
        figures.m_gap = enmHydraulicsGap::Slope;
        return;
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
    if (figures.m_slope > 0.0)
        figures.m_shearStress =
            Formulas::WallShearStress(m_hydraulics.GetHydraulicRadius(), figures.m_slope / Formulas::PerMille);
    figures.m_isOverfull = m_hydraulics.IsOverfull();
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
