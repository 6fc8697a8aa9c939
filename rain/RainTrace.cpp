// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainTrace.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "rain/FlowCalculator_RainITP.h"

#include <array>

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;

namespace {

using CRecordPtr = CFlowCalculator_RainITP::CRecordPtr;

CTraceTable::CRow& AddRow(CTraceTable& table, const CSection& section) {
    CTraceTable::CRow& row = table.m_rows.emplace_back();
    row.m_guid = section.GetGuid();
    row.m_name = section.GetName();
    row.m_values.reserve(table.m_columns.size());
    return row;
}

CDataBox NameOf(const boost::shared_ptr<CCatalogItem>& pipe) {
    return pipe ? CDataBox(pipe->GetName()) : CDataBox();
}

/// Figures of a pipe, null where no flow asked for one.
CDataBox OfFlow(const CSectionDataIDF& record, double value) {
    return record.m_flow > 0.0 ? CDataBox(value) : CDataBox();
}

CTraceTable& OpenSections(CRunTrace& trace) {
    return trace.GetTable(RainTrace::Sections, {{"own_area", "ha"},
                                                {"effective_area", "ha"},
                                                {"concentration_time", "min"},
                                                {"intensity", "l/(s·ha)"},
                                                {"flow", "m³/s"},
                                                {"pipe", ""},
                                                {"pipe_before", ""},
                                                {"inner_diameter", "mm"},
                                                {"filling", "%"},
                                                {"velocity", "m/s"},
                                                {"upstream_time", "min"},
                                                {"flow_time", "min"}});
}

void NoteSection(CTraceTable& table, const CSectionDataIDF& record) {
    AddRow(table, *record.m_section).m_values = {record.m_ownArea,
                                                 record.GetEffectiveArea(),
                                                 record.GetConcentrationTime(),
                                                 record.m_intensity,
                                                 record.m_flow,
                                                 NameOf(record.m_pipe),
                                                 NameOf(record.m_existingPipe),
                                                 OfFlow(record, record.m_innerDiameter),
                                                 OfFlow(record, record.m_sizing.m_filling),
                                                 record.m_velocity,
                                                 record.m_upstreamTime,
                                                 record.m_flowTime};
}

void NoteAreas(CRunTrace& trace, CFlowCalculator_RainITP& calculator, const CSectionDataIDF& record) {
    CTraceTable& table = trace.GetTable(RainTrace::Areas, {{"own_area", "ha"}});
    AddRow(table, *record.m_section).m_values = {record.m_ownArea};
    CFlowCalculator_RainITP::CSectionList upstream;
    record.m_section->GetPreviousSections(upstream);
    for (const auto& section : upstream) {
        const double area = calculator.IsSelected(section) ? calculator.GetOwnArea(section) : 0.0;
        if (area != 0.0)
            AddRow(table, *section).m_values = {area};
    }
}

/// Repeats the iterations of a section and of its chain, which come out the same, and notes their passes.
void NoteDetail(CRunTrace& trace, CFlowCalculator_RainITP& calculator, const CSectionDataIDF& record) {
    std::vector<const CSectionDataIDF*> chain{&record};
    while (chain.back()->m_previous && chain.size() < RainTrace::MostChained)
        chain.push_back(chain.back()->m_previous.get());
    CRainPassTrace passes(CRainPassTrace::OpenTable(trace), calculator);
    calculator.SetPassTrace(&passes);
    for (auto noted = chain.rbegin(); noted != chain.rend(); ++noted) {
        const CRecordPtr repeated = calculator.MakeRecord((*noted)->m_section);
        calculator.IterateSection(*repeated, (*noted)->m_previous, calculator.GetParams().m_precision,
                                  CFlowCalculator_RainITP::MostPasses);
    }
    calculator.SetPassTrace(nullptr);
    if (calculator.GetParams().m_partialArea == 0)
        NoteAreas(trace, calculator, record);
}

/// Where the roughness in force comes from, as CSectionDataIDF::GetRoughness finds it.
const char* RoughnessSource(const CSectionDataIDF& record) {
    if (record.m_roughness != CSectionDataIDF::NotKnown)
        return "section";
    if (record.HasRelevantPipe())
        return "existing_pipe";
    return record.m_pipe ? "pass_before" : "smallest_pipe";
}

} // namespace

void RainTrace::NoteRun(CFlowCalculator_RainITP& calculator) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr)
        return;
    CTraceTable& table = OpenSections(*trace);
    std::vector<const CSectionDataIDF*> wanted;
    const auto* const topology = OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    calculator.GetSectionData().ForEach([&](std::string_view guid, const CRecordList& list) {
        if (list.empty()) {
            if (const auto section = topology->GetSectionByGuid(guid))
                AddRow(trace->GetTable(Unreached, {}), *section);
            return;
        }
        NoteSection(table, *list.front());
        if (OLMGis::Utility::GuidEqual()(guid, trace->GetDetailOf()))
            wanted.push_back(list.front().get());
    });
    for (const CSectionDataIDF* record : wanted)
        NoteDetail(*trace, calculator, *record);
}

void RainTrace::NoteBest(CFlowCalculator_RainITP& calculator) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr)
        return;
    CTraceTable& table = OpenSections(*trace);
    const CVariationData* wanted = nullptr;
    calculator.GetVariations().ForEach([&](std::string_view guid, const CVariationData& data) {
        if (data.m_bestIndex == CVariationData::NoBest)
            return;
        NoteSection(table, data.m_best);
        if (OLMGis::Utility::GuidEqual()(guid, trace->GetDetailOf()))
            wanted = &data;
    });
    if (wanted == nullptr)
        return;
    // A best record stands alone: walking its combination once more brings its chain back.
    const auto section = wanted->m_best.m_section;
    if (calculator.CalculateNetwork(wanted->m_combinations[wanted->m_bestIndex]) == 0)
        return;
    if (const auto* list = calculator.FindSectionDataList(section); list != nullptr && !list->empty())
        NoteDetail(*trace, calculator, *list->front());
}

void RainTrace::NoteNotConverged(const CSectionDataIDF& record, double next) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr || !record.m_section)
        return;
    CTraceTable& table = trace->GetTable(NotConverged, {{"intensity", "l/(s·ha)"}, {"next_intensity", "l/(s·ha)"}});
    AddRow(table, *record.m_section).m_values = {record.m_intensity, next};
}

CTraceTable& CRainPassTrace::OpenTable(CRunTrace& trace) {
    return trace.GetTable(RainTrace::Passes, {{"pass", "-"},
                                              {"inlet_time", "min"},
                                              {"time_before", "min"},
                                              {"concentration_time", "min"},
                                              {"duration_below", "min"},
                                              {"intensity_below", "l/(s·ha)"},
                                              {"duration_above", "min"},
                                              {"intensity_above", "l/(s·ha)"},
                                              {"intensity", "l/(s·ha)"},
                                              {"own_area", "ha"},
                                              {"effective_area", "ha"},
                                              {"coefficient", "-"},
                                              {"flow", "m³/s"},
                                              {"slope", "1/1000"},
                                              {"roughness", "mm"},
                                              {"roughness_source", ""},
                                              {"full_diameter", "mm"},
                                              {"min_diameter", "mm"},
                                              {"pipe", ""},
                                              {"inner_diameter", "mm"},
                                              {"filling", "%"},
                                              {"velocity", "m/s"},
                                              {"length", "m"},
                                              {"retention", "-"},
                                              {"flow_time", "min"},
                                              {"upstream_time_above", "min"},
                                              {"carrier_time_above", "min"},
                                              {"contribution_above", "min"},
                                              {"upstream_time", "min"},
                                              {"carrier_time", "min"},
                                              {"next_intensity", "l/(s·ha)"}});
}

void CRainPassTrace::NoteBegin(const CSectionDataIDF& record) {
    m_concentrationTime = record.GetConcentrationTime();
    m_timeBefore = m_concentrationTime - record.m_inletTime;
    m_roughnessSource = RoughnessSource(record);
}

void CRainPassTrace::NoteEnd(const CSectionDataIDF& record, int pass, double next) {
    const CRainITPParameters& params = m_calculator.GetParams();
    const bool hasPipe = record.m_flow > 0.0;
    std::array<CDataBox, 4> points;
    if (params.m_rainfallMode == RainChoices::CurveFile) {
        const auto [below, above] = params.m_curves.FindPoints(params.m_frequency, m_concentrationTime);
        if (below != nullptr)
            points = {below->first, below->second, above->first, above->second};
    }
    const CSectionDataIDF* const above = record.m_previous.get();
    const auto ofAbove = [above](double value) { return above == nullptr ? CDataBox() : CDataBox(value); };
    AddRow(m_table, *record.m_section).m_values = {
        pass,
        record.m_inletTime,
        m_timeBefore,
        m_concentrationTime,
        points[0],
        points[1],
        points[2],
        points[3],
        record.m_intensity,
        record.m_ownArea,
        record.GetEffectiveArea(),
        params.m_calcStandard == RainChoices::StandardRomanian
            ? CDataBox(params.m_roCoefficients.GetCoefficient(record.m_inletTime))
            : CDataBox(),
        record.m_flow,
        record.m_slope,
        OfFlow(record, record.m_sizing.m_roughness),
        hasPipe ? CDataBox(m_roughnessSource) : CDataBox(),
        OfFlow(record, record.m_sizing.m_fullDiameter),
        OfFlow(record, record.m_minDiameter),
        hasPipe ? NameOf(record.m_pipe) : CDataBox(),
        OfFlow(record, record.m_innerDiameter),
        OfFlow(record, record.m_sizing.m_filling),
        record.m_velocity,
        record.m_length,
        record.m_retention,
        record.m_flowTime,
        ofAbove(above == nullptr ? 0.0 : above->m_upstreamTime),
        ofAbove(above == nullptr ? 0.0 : above->m_carrierTime),
        ofAbove(above == nullptr ? 0.0 : above->GetTimeContribution()),
        record.m_upstreamTime,
        record.m_carrierTime,
        next};
}
