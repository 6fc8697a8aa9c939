// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/RainExplanation.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "rain/explain/RainTraceNames.h"
#include "reports/JsonDocument.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <map>

namespace Reports {

using nlohmann::ordered_json;
using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CCatchment;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;
using OLMGis::Utility::CRunTrace;
using OLMGis::Utility::CTraceTable;

namespace {

constexpr std::array Results = {"FLOW_IDF_INTENSITY",
                                "FLOW_IDF_CONC_TIME",
                                "FLOW_IDF_MJ_TIME",
                                "FLOW_IDF_TIME",
                                "FLOW_RAIN_IDF",
                                "FLOW_IDF_AREA_CORRECTED_SECT",
                                "FLOW_IDF_AREA_CORRECTED_TOTAL"};

std::vector<CTraceValues> RowsOf(const CTraceTable* table) {
    std::vector<CTraceValues> rows;
    if (table != nullptr)
        for (const CTraceTable::CRow& row : table->m_rows)
            rows.emplace_back(*table, row);
    return rows;
}

const CDataDefinition* FindKey(std::string_view id) {
    return OLMGis::Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

double ReadOf(const CCatchment& catchment, std::string_view key, double otherwise) {
    CDataBox box;
    const CDataDefinition* const definition = FindKey(key);
    return definition != nullptr && catchment.GetStore().Read(*definition, catchment.GetRow(), box) ? box.AsDouble()
                                                                                                    : otherwise;
}

CRainExplanation::CArea AreaOf(const CSection& section, double area) {
    CRainExplanation::CArea result{std::string(section.GetGuid()), std::string(section.GetName()), area, {}};
    for (const CCatchment* catchment = section.GetTopology().GetFirstCatchment(section); catchment != nullptr;
         catchment = CTopologyStorage::GetNextCatchment(*catchment))
        if ((static_cast<int>(ReadOf(*catchment, "kinds", 0.0)) & OLMGis::Topology::CatchmentRain) != 0)
            result.m_catchments.push_back({ReadOf(*catchment, "area", 0.0), ReadOf(*catchment, "coefficient", 1.0)});
    return result;
}

ordered_json ToObject(const CTraceValues& values) {
    ordered_json object = ordered_json::object();
    for (std::size_t i = 0; i < values.GetTable().m_columns.size(); ++i)
        object[values.GetTable().m_columns[i].m_name] = ToJson(values.GetRow().m_values[i]);
    return object;
}

ordered_json UnitsOf(const CTraceTable& table) {
    ordered_json units = ordered_json::object();
    for (const auto& column : table.m_columns)
        if (!column.m_unit.empty())
            units[column.m_name] = column.m_unit;
    return units;
}

ordered_json ToObject(const CRainExplanation::CArea& area) {
    ordered_json catchments = ordered_json::array();
    for (const auto& catchment : area.m_catchments)
        catchments.push_back({{"area", catchment.m_area}, {"coefficient", catchment.m_coefficient}});
    return {{"section", area.m_name}, {"guid", area.m_guid}, {"own_area", area.m_area}, {"catchments", catchments}};
}

} // namespace

const CTraceValues* CRainExplanation::CStep::FindTaken() const {
    const auto found = std::find_if(m_branches.begin(), m_branches.end(),
                                    [](const CTraceValues& branch) { return branch.Code("taken") != 0; });
    return found == m_branches.end() ? nullptr : &*found;
}

CRainExplanation ExplainRain(const CRunTrace& trace, const boost::shared_ptr<CSection>& section) {
    CRainExplanation explanation;
    explanation.m_section = section;
    explanation.m_basis = RowsOf(trace.FindTable(RainTrace::Basis));
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    for (const CTraceValues& row : RowsOf(trace.FindTable(RainTrace::Areas)))
        if (const auto found = topology.GetSectionByGuid(row.GetRow().m_guid))
            explanation.m_areas.push_back(AreaOf(*found, row.Number("own_area")));
    auto& chain = explanation.m_chain;
    std::map<std::string_view, std::size_t> places;
    for (const CTraceValues& row : RowsOf(trace.FindTable(RainTrace::Passes))) {
        const auto [place, isNew] = places.try_emplace(row.GetRow().m_guid, chain.size());
        if (isNew) {
            auto& step = chain.emplace_back();
            step.m_section = topology.GetSectionByGuid(row.GetRow().m_guid);
            step.m_own = AreaOf(*step.m_section, row.Number("own_area"));
        }
        chain[place->second].m_passes.push_back(row);
    }
    for (const CTraceValues& row : RowsOf(trace.FindTable(RainTrace::Branches)))
        if (const auto place = places.find(row.Text("below")); place != places.end())
            chain[place->second].m_branches.push_back(row);
    for (const char* key : Results) {
        CDataBox box;
        CDataRW::Read(key, section, box, 0, nullptr);
        explanation.m_stored.emplace_back(key, std::move(box));
    }
    return explanation;
}

void PrintRainDocument(std::ostream& stream, const CRainExplanation& explanation) {
    ordered_json sheet;
    sheet["section"] = explanation.m_section->GetName();
    sheet["guid"] = explanation.m_section->GetGuid();
    sheet["basis"] = ToObject(explanation.m_basis.front());
    sheet["areas"] = ordered_json::array();
    for (const auto& area : explanation.m_areas)
        sheet["areas"].push_back(ToObject(area));
    sheet["units"] = UnitsOf(explanation.m_chain.front().m_passes.front().GetTable());
    sheet["units"].update(UnitsOf(explanation.m_basis.front().GetTable()));
    sheet["chain"] = ordered_json::array();
    for (const auto& step : explanation.m_chain) {
        ordered_json object = ToObject(step.m_own);
        const CTraceValues* const taken = step.FindTaken();
        object["above"] = taken == nullptr ? ordered_json() : ordered_json(taken->GetRow().m_name);
        object["branches"] = ordered_json::array();
        for (const CTraceValues& branch : step.m_branches)
            object["branches"].push_back({{"section", branch.GetRow().m_name},
                                          {"time", branch.Number("time")},
                                          {"flow", branch.Number("flow")},
                                          {"taken", branch.Code("taken") != 0}});
        object["passes"] = ordered_json::array();
        for (const CTraceValues& pass : step.m_passes)
            object["passes"].push_back(ToObject(pass));
        sheet["chain"].push_back(std::move(object));
    }
    sheet["stored"] = ordered_json::object();
    for (const auto& [key, box] : explanation.m_stored)
        sheet["stored"][key] = ToJson(box);
    PrintDocument(stream, sheet);
}

CListing MakeRainListing(CRainExplanation explanation) {
    CListing listing;
    if (!explanation.IsEmpty())
        listing.m_blocks.push_back({MakeRainSheet(explanation)});
    listing.m_printDocument = [explanation = std::move(explanation)](std::ostream& stream) {
        if (explanation.IsEmpty())
            stream << "null\n";
        else
            PrintRainDocument(stream, explanation);
    };
    return listing;
}

} // namespace Reports
