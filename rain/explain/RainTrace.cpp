// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/explain/RainTrace.h"

#include "host/gis_core/RunTrace.h"
#include "host/gis_core/Utility.h"
#include "rain/editions/Editions.h"
#include "rain/explain/PassTrace.h"
#include "rain/explain/TraceRow.h"

#include <algorithm>

using OLMGis::Data::CDataBox;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;
using Rain::CNetworkWalk;
using Rain::CRunInput;
using Rain::CRunSettings;
using Rain::CVariationSearch;

namespace {

CDataBox NameOf(const boost::shared_ptr<CCatalogItem>& pipe) {
    return pipe ? CDataBox(pipe->GetName()) : CDataBox();
}

void NoteSection(CTraceTable& table, const CRunInput& input, const CSectionDataIDF& record) {
    const bool hasFlow = record.m_flow > 0.0;
    RainTrace::CTraceRow row(table, *input.GetSection(record.m_section));
    row.Add("own_area", "ha", record.m_ownArea);
    row.Add("effective_area", "ha", record.GetEffectiveArea());
    row.Add("concentration_time", "min", record.GetConcentrationTime());
    row.Add("intensity", "l/(s·ha)", record.m_intensity);
    row.Add("flow", "m³/s", record.m_flow);
    row.Add("pipe", "", NameOf(record.m_pipe));
    row.Add("pipe_before", "", NameOf(record.m_existingPipe));
    row.AddIf(hasFlow, "inner_diameter", "mm", record.m_innerDiameter);
    row.AddIf(hasFlow, "filling", "%", record.m_sizing.m_filling);
    row.Add("velocity", "m/s", record.m_velocity);
    row.Add("upstream_time", "min", record.m_upstreamTime);
    row.Add("flow_time", "min", record.m_flowTime);
}

void NoteAreas(CRunTrace& trace, const CRunInput& input, const CNetworkWalk& walk, const CSectionDataIDF& record) {
    CTraceTable& table = trace.GetTable(RainTrace::Areas, {});
    const auto note = [&](const OLMGis::Topology::CSection& section, double area) {
        RainTrace::CTraceRow(table, section).Add("own_area", "ha", area);
    };
    const auto& section = input.GetSection(record.m_section);
    note(*section, record.m_ownArea);
    std::vector<CRunInput::CSectionPtr> upstream;
    section->GetPreviousSections(upstream);
    for (const auto& above : upstream)
        if (const double area = input.Of(above->GetRow()).m_ownArea; area != 0.0 && walk.IsSelected(above->GetRow()))
            note(*above, area);
}

void NoteBasis(CRunTrace& trace, const CRunSettings& settings) {
    RainTrace::CTraceRow row(trace.GetTable(RainTrace::Basis, {}), {}, {});
    row.Add("rainfall_mode", "", settings.m_rainfallMode);
    for (const auto& rainfall : Rain::MakeRainfalls()) {
        const bool isUsed = rainfall->GetMode() == settings.m_rainfallMode;
        row.Add((isUsed ? *settings.m_rainfall : *rainfall).ExplainParameters(), isUsed);
    }
    row.Add("calc_standard", "", settings.m_calcStandard);
    row.Add("time_rule", "", settings.m_stormCad);
    row.Add("branching", "", settings.m_branchingFlowTime);
    row.Add("partial_area", "",
            settings.m_partialArea != 0       ? RainChoices::PartialAreaChains
            : settings.m_variationSearch != 0 ? RainChoices::PartialAreaSearch
                                              : 0);
    row.Add("precision", "%", settings.m_precision);
    row.Add("viscosity", "m²/s", settings.m_waterViscosity);
    row.Add("pipe_group", "", NameOf(settings.m_pipeGroup));
    row.Add("pipe_fill", "%", settings.m_pipeFill);
    row.Add("minimal_diameter", "mm", settings.m_minimalDiameter);
    row.Add("ignore_carriers", "", settings.m_ignoreCarrierPipes);
}

/// What the walk chose from at the starting node of a section. A chain that goes on with a later record of a section
/// than its first has that one noted too.
void NoteBranches(CRunTrace& trace, const CRunInput& input, const CSectionDataIDF& record) {
    if (record.m_startNode == nullptr || record.m_startNode->m_results.empty())
        return;
    CTraceTable& table = trace.GetTable(RainTrace::Branches, {});
    const auto note = [&](const CSectionDataIDF& branch) {
        RainTrace::CTraceRow row(table, *input.GetSection(branch.m_section));
        row.Add("below", "", input.GetSection(record.m_section)->GetGuid());
        row.Add("time", "min", branch.GetTimeToNode());
        row.Add("flow", "m³/s", branch.m_flow);
        row.Add("taken", "", &branch == record.m_previous ? 1 : 0);
    };
    for (const auto& [name, list] : record.m_startNode->m_results) {
        note(*list.front());
        const auto taken = std::find(list.begin() + 1, list.end(), record.m_previous);
        if (taken != list.end())
            note(**taken);
    }
}

/// Repeats the iterations of a section and of its chain, which come out the same, and notes their passes.
void NoteDetail(CRunTrace& trace, const CRunInput& input, const CRunSettings& settings, const CNetworkWalk& walk,
                const CSectionDataIDF& record) {
    std::vector<const CSectionDataIDF*> chain{&record};
    while (chain.back()->m_previous != nullptr && chain.size() < RainTrace::MostChained)
        chain.push_back(chain.back()->m_previous);
    RainTrace::CPassTrace passes(trace, input, settings);
    Rain::CSectionIteration iteration(settings, &passes);
    NoteBasis(trace, settings);
    for (auto noted = chain.rbegin(); noted != chain.rend(); ++noted) {
        NoteBranches(trace, input, **noted);
        CSectionDataIDF repeated((*noted)->m_section, input.Of((*noted)->m_section), settings);
        repeated.m_totalArea = (*noted)->m_totalArea;
        iteration.Iterate(repeated, (*noted)->m_previous);
    }
    if (settings.m_partialArea == 0)
        NoteAreas(trace, input, walk, record);
}

bool IsWanted(const CRunTrace& trace, const CRunInput& input, std::uint32_t section) {
    return OLMGis::Utility::GuidEqual()(input.GetSection(section)->GetGuid(), trace.GetDetailOf());
}

} // namespace

void RainTrace::NoteRun(const CRunInput& input, const CRunSettings& settings, const CNetworkWalk& walk) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr)
        return;
    CTraceTable& table = trace->GetTable(Sections, {});
    auto sections = walk.GetSections();
    input.SortByGuid(sections);
    const CSectionDataIDF* wanted = nullptr;
    for (const std::uint32_t section : sections) {
        const Rain::CRecordList& list = *walk.FindRecords(section);
        if (list.empty()) {
            CTraceRow(trace->GetTable(Unreached, {}), *input.GetSection(section));
            continue;
        }
        NoteSection(table, input, *list.front());
        if (IsWanted(*trace, input, section))
            wanted = list.front();
    }
    if (wanted != nullptr)
        NoteDetail(*trace, input, settings, walk, *wanted);
}

void RainTrace::NoteBest(const CRunInput& input, const CRunSettings& settings, const CVariationSearch& search) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr)
        return;
    CTraceTable& table = trace->GetTable(Sections, {});
    auto sections = search.GetSections();
    input.SortByGuid(sections);
    const CVariationData* wanted = nullptr;
    for (const std::uint32_t section : sections) {
        const CVariationData& data = *search.FindData(section);
        if (data.m_bestIndex == CVariationData::NoBest)
            continue;
        NoteSection(table, input, data.m_best);
        if (IsWanted(*trace, input, section))
            wanted = &data;
    }
    if (wanted == nullptr)
        return;
    // A best record is without its chain: walking its combination once more brings the chain back.
    const std::uint32_t section = wanted->m_best.m_section;
    std::vector<std::uint32_t> combination;
    search.GetTable().List(section, wanted->m_bestIndex, combination);
    CNetworkWalk walk(input, settings);
    if (walk.Walk(combination).IsStopped())
        return;
    if (const auto* list = walk.FindRecords(section); list != nullptr && !list->empty())
        NoteDetail(*trace, input, settings, walk, *list->front());
}

void RainTrace::NoteNotConverged(const Rain::CRunNetwork& network, const Rain::CRunStop& stop) {
    CRunTrace* const trace = CRunTrace::Active();
    if (trace == nullptr || stop.m_reason != Rain::CRunStop::enmReason::NotConverged)
        return;
    CTraceRow row(trace->GetTable(NotConverged, {}), *network.GetSection(stop.m_section));
    row.Add("intensity", "l/(s·ha)", stop.m_intensity);
    row.Add("next_intensity", "l/(s·ha)", stop.m_nextIntensity);
}

void RainTrace::NoteFile(std::string_view path) {
    if (CRunTrace* const trace = CRunTrace::Active())
        CTraceRow(trace->GetTable(Files, {}), {}, path);
}
