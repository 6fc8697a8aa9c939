// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/explain/PassTrace.h"

#include "host/formulas/SectionGeometry.h"
#include "rain/editions/Editions.h"
#include "rain/explain/RainTraceNames.h"
#include "rain/explain/TraceRow.h"

using OLMGis::Data::CDataBox;
using OLMGis::Formulas::KindOfShape;
using OLMGis::Utility::CRunTrace;

namespace RainTrace {

namespace {

const char* SourceName(CSectionDataIDF::enmRoughness source) {
    using enmRoughness = CSectionDataIDF::enmRoughness;
    switch (source) {
    case enmRoughness::Section:
        return "section";
    case enmRoughness::ExistingPipe:
        return "existing_pipe";
    case enmRoughness::PassBefore:
        return "pass_before";
    case enmRoughness::SmallestPipe:
        break;
    }
    return "smallest_pipe";
}

} // namespace

CPassTrace::CPassTrace(CRunTrace& trace, const Rain::CRunInput& input, const Rain::CRunSettings& settings)
    : m_table(trace.GetTable(Passes, {})), m_input(input), m_settings(settings), m_rainfalls(Rain::MakeRainfalls()) {}

void CPassTrace::OnBegin(const CSectionDataIDF& record) {
    m_concentrationTime = record.GetConcentrationTime();
    m_timeBefore = m_concentrationTime - record.m_inletTime;
    m_roughnessSource = record.GetRoughnessSource();
}

void CPassTrace::OnEnd(const CSectionDataIDF& record, int pass, double next) {
    const bool hasFlow = record.m_flow > 0.0;
    const auto* const pipe = hasFlow && record.m_pipe ? record.m_pipe->GetPipeData() : nullptr;
    const CSectionDataIDF* const above = record.m_previous;
    const auto factor = m_settings.m_standard ? m_settings.m_standard->GetFlowFactor(record.m_inletTime) : std::nullopt;
    CTraceRow row(m_table, *m_input.GetSection(record.m_section));
    row.Add("pass", "-", pass);
    row.Add("inlet_time", "min", record.m_inletTime);
    row.Add("time_before", "min", m_timeBefore);
    row.Add("concentration_time", "min", m_concentrationTime);
    for (const auto& rainfall : m_rainfalls) {
        const bool isUsed = m_settings.m_rainfall && rainfall->GetMode() == m_settings.m_rainfall->GetMode();
        const Rain::CRainfall& source = isUsed ? *m_settings.m_rainfall : *rainfall;
        row.Add(source.ExplainIntensity(m_concentrationTime, record.GetEffectiveArea()), isUsed);
    }
    row.Add("intensity", "l/(s·ha)", record.m_intensity);
    row.Add("own_area", "ha", record.m_ownArea);
    row.Add("effective_area", "ha", record.GetEffectiveArea());
    row.AddIf(factor.has_value(), "coefficient", "-", factor.value_or(1.0));
    row.Add("flow", "m³/s", record.m_flow);
    row.Add("slope", "1/1000", record.m_slope);
    row.AddIf(hasFlow, "roughness", "mm", record.m_sizing.m_roughness);
    row.AddIf(hasFlow, "roughness_source", "", SourceName(m_roughnessSource));
    row.AddIf(hasFlow, "full_diameter", "mm", record.m_sizing.m_fullDiameter);
    row.AddIf(hasFlow, "min_diameter", "mm", record.m_minDiameter);
    row.AddIf(hasFlow, "pipe_group", "", record.m_pipeGroupName);
    row.Add("pipe", "", hasFlow && record.m_pipe ? CDataBox(record.m_pipe->GetName()) : CDataBox());
    row.Add("shape", "", pipe == nullptr ? CDataBox() : CDataBox(std::string(KindOfShape(pipe->m_shape).m_key)));
    row.AddIf(hasFlow, "inner_diameter", "mm", record.m_innerDiameter);
    row.Add("inner_height", "mm", pipe == nullptr ? CDataBox() : CDataBox(pipe->m_innerHeight));
    row.AddIf(hasFlow, "filling", "%", record.m_sizing.m_filling);
    row.Add("velocity", "m/s", record.m_velocity);
    row.Add("length", "m", record.m_length);
    row.Add("retention", "-", record.m_retention);
    row.Add("flow_time", "min", record.m_flowTime);
    row.Add("upstream_time_above", "min", above == nullptr ? CDataBox() : CDataBox(above->m_upstreamTime));
    row.Add("carrier_time_above", "min", above == nullptr ? CDataBox() : CDataBox(above->m_carrierTime));
    row.Add("contribution_above", "min", above == nullptr ? CDataBox() : CDataBox(above->GetTimeContribution()));
    row.Add("upstream_time", "min", record.m_upstreamTime);
    row.Add("carrier_time", "min", record.m_carrierTime);
    row.Add("next_intensity", "l/(s·ha)", next);
}

} // namespace RainTrace
