// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainTrace.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "rain/FlowCalculator_RainITP.h"

#include <algorithm>
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

/// Null unless the mode or standard at hand asks for the number.
CDataBox If(bool isAsked, double value) {
    return isAsked ? CDataBox(value) : CDataBox();
}

void NoteBasis(CRunTrace& trace, const CRainITPParameters& params) {
    CTraceTable& table = trace.GetTable(RainTrace::Basis, {{"rainfall_mode", ""},
                                                           {"curve_file", ""},
                                                           {"frequency", ""},
                                                           {"base_intensity", "l/(s·ha)"},
                                                           {"frequency_n", "1/year"},
                                                           {"constant_time", "min"},
                                                           {"calc_standard", ""},
                                                           {"time_rule", ""},
                                                           {"branching", ""},
                                                           {"partial_area", ""},
                                                           {"precision", "%"},
                                                           {"viscosity", "m²/s"},
                                                           {"pipe_group", ""},
                                                           {"pipe_fill", "%"},
                                                           {"minimal_diameter", "mm"},
                                                           {"ignore_carriers", ""}});
    const bool isFile = params.m_rainfallMode == RainChoices::CurveFile;
    const bool isFormula = params.m_rainfallMode == RainChoices::Formula;
    const double constantTime =
        params.m_rainfallMode == RainChoices::TurkishParameters ? params.m_turkParams.GetConstantTime() : 0.0;
    table.m_rows.emplace_back().m_values = {params.m_rainfallMode,
                                            isFile ? CDataBox(params.m_curves.GetPath()) : CDataBox(),
                                            If(isFile, params.m_frequency),
                                            If(isFormula, params.m_rainIntensity),
                                            If(isFormula, params.m_frequencyN),
                                            If(constantTime > 0.0, constantTime),
                                            params.m_calcStandard,
                                            params.m_stormCad,
                                            params.m_branchingFlowTime,
                                            params.m_partialArea != 0       ? RainChoices::PartialAreaChains
                                            : params.m_variationSearch != 0 ? RainChoices::PartialAreaSearch
                                                                            : 0,
                                            params.m_precision,
                                            params.m_waterViscosity,
                                            NameOf(params.m_pipeGroup),
                                            params.m_pipeFill,
                                            params.m_minimalDiameter,
                                            params.m_ignoreCarrierPipes};
}

/// What the walk chose from at the starting node of a section. A chain that goes on with a later record of a section
/// than its first has that one noted too.
void NoteBranches(CRunTrace& trace, const CSectionDataIDF& record, bool isTurkish) {
    if (!record.m_startNode)
        return;
    CTraceTable& table =
        trace.GetTable(RainTrace::Branches, {{"below", ""}, {"time", "min"}, {"flow", "m³/s"}, {"taken", ""}});
    const auto note = [&](const CSectionDataIDF& branch) {
        AddRow(table, *branch.m_section).m_values = {
            record.m_section->GetGuid(), isTurkish ? branch.m_inletTime + branch.m_flowTime : branch.m_upstreamTime,
            branch.m_flow, &branch == record.m_previous.get() ? 1 : 0};
    };
    for (const auto& [name, list] : record.m_startNode->m_results) {
        note(*list.front());
        const auto taken = std::find(list.begin() + 1, list.end(), record.m_previous);
        if (taken != list.end())
            note(**taken);
    }
}

/// Repeats the iterations of a section and of its chain, which come out the same, and notes their passes.
void NoteDetail(CRunTrace& trace, CFlowCalculator_RainITP& calculator, const CSectionDataIDF& record) {
    std::vector<const CSectionDataIDF*> chain{&record};
    while (chain.back()->m_previous && chain.size() < RainTrace::MostChained)
        chain.push_back(chain.back()->m_previous.get());
    CRainPassTrace passes(CRainPassTrace::OpenTable(trace), calculator);
    calculator.SetPassTrace(&passes);
    const bool isTurkish = calculator.GetParams().m_rainfallMode == RainChoices::TurkishParameters;
    NoteBasis(trace, calculator.GetParams());
    for (auto noted = chain.rbegin(); noted != chain.rend(); ++noted) {
        NoteBranches(trace, **noted, isTurkish);
        const CRecordPtr repeated = calculator.MakeRecord((*noted)->m_section);
        calculator.IterateSection(*repeated, (*noted)->m_previous, calculator.GetParams().m_precision,
                                  CFlowCalculator_RainITP::MostPasses);
    }
    calculator.SetPassTrace(nullptr);
    if (calculator.GetParams().m_partialArea == 0)
        NoteAreas(trace, calculator, record);
}

const char* ShapeName(OLMGis::Topology::enmPipeShape shape) {
    using OLMGis::Topology::enmPipeShape;
    switch (shape) {
    case enmPipeShape::Circle:
        return "circle";
    case enmPipeShape::Egg:
        return "egg";
    case enmPipeShape::Box:
        return "box";
    case enmPipeShape::Table:
        break;
    }
    return "table";
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

void RainTrace::NoteFile(std::string_view path) {
    if (CRunTrace* const trace = CRunTrace::Active())
        trace->GetTable(Files, {}).m_rows.push_back({{}, std::string(path), {}});
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
                                              {"row_limit", "ha"},
                                              {"row_a", ""},
                                              {"row_b", "min"},
                                              {"row_c", "-"},
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
                                              {"pipe_group", ""},
                                              {"pipe", ""},
                                              {"shape", ""},
                                              {"inner_diameter", "mm"},
                                              {"inner_height", "mm"},
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
    std::array<CDataBox, 4> rain;
    if (params.m_rainfallMode == RainChoices::TurkishParameters)
        if (const auto* row = params.m_turkParams.FindRow(record.GetEffectiveArea()))
            rain = {row->m_limit, row->m_a, row->m_b, row->m_c};
    const auto* const pipe = hasPipe && record.m_pipe ? record.m_pipe->GetPipeData() : nullptr;
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
        rain[0],
        rain[1],
        rain[2],
        rain[3],
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
        hasPipe ? CDataBox(record.m_pipeGroupName) : CDataBox(),
        hasPipe ? NameOf(record.m_pipe) : CDataBox(),
        pipe != nullptr ? CDataBox(ShapeName(pipe->m_shape)) : CDataBox(),
        OfFlow(record, record.m_innerDiameter),
        pipe != nullptr ? CDataBox(pipe->m_innerHeight) : CDataBox(),
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
