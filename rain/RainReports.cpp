// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainReports.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TopologyMultiStorage.h"

using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CUtility;

namespace {

constexpr const char* Break = "\r\n";
constexpr std::size_t PieceLength = 1U << 16U;

std::string Head(const char* format, int message) {
    return CUtility::Format(format, CModuleConfiguration::Instance()->GetMsg(message));
}

std::string Number(double value) {
    return CUtility::Format(";%.6f", value);
}

/// The rows of a table of sections.
class CTable {
public:
    explicit CTable(const CGuidMap<CRecordList>& sections) : m_sections(sections) {}

    /// A row: a head and what field(record) makes of each section.
    template <class Field>
    void AddRow(std::string_view head, const Field& field) {
        m_text += Break;
        m_text += head;
        m_sections.ForEach([&](std::string_view /*guid*/, const CRecordList& list) {
            if (!list.empty())
                m_text += field(*list.front());
        });
    }
    void AddText(std::string_view text) { m_text += text; }
    std::string Take() { return std::move(m_text); }

private:
    const CGuidMap<CRecordList>& m_sections;
    std::string m_text;
};

void AddSections(CTable& table) {
    table.AddRow(Head("%s", 425), [](const auto& r) { return CUtility::Format(";%s", r.m_section->GetName()); });
    table.AddRow(Head("%s", 2310), [](const auto& r) { return Number(r.m_ownArea); });
    table.AddRow(Head("[0] %s", 2311), [](const auto& r) { return Number(r.GetEffectiveArea()); });
    table.AddRow(Head("%s[LL]", 428), [](const auto& r) { return Number(r.m_section->GetLength2D()); });
    table.AddRow(Head("%s", 1351), [](const auto& r) { return Number(r.m_slope); });
    table.AddRow("[FIT] FlowInletTime", [](const auto& r) { return Number(r.m_inletTime); });
}

void AddResults(CTable& table) {
    table.AddRow(Head("[1] %s", 2128), [](const auto& r) { return Number(r.m_intensity); });
    table.AddRow(Head("[2]=[1]*[0] : %s", 2145), [](const auto& r) { return Number(r.m_flow); });
    table.AddRow("[3] MinPipeDiam", [](const auto& r) { return Number(r.m_minDiameter); });
    table.AddRow(Head("%s", 1130), [](const auto& r) {
        return r.m_pipe ? CUtility::Format(";%s", r.m_pipe->GetName()) : std::string(";");
    });
    table.AddRow(Head("[4] %s", 7495), [](const auto& r) {
        return r.m_pipe ? Number(CPipeManager::Instance()->GetInnerDiameter(r.m_pipe)) : std::string(";");
    });
    table.AddRow("[5] SpeedSemiFull", [](const auto& r) { return Number(r.m_velocity); });
    table.AddRow(Head("[6]=[SL]/[5] %s", 2302), [](const auto& r) { return Number(r.m_flowTime); });
    table.AddRow(Head("[7] %s", 2303), [](const auto& r) { return Number(r.m_upstreamTime); });
    table.AddRow(Head("[8]=[7]+[FIT] %s", 2304), [](const auto& r) { return Number(r.GetConcentrationTime()); });
}

/// The last column is the area of the combination, not the effective one: without the effect along chains both are the
/// same.
std::string ResultRow(const CSectionDataIDF& r) {
    return CUtility::Format("%s\t%.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f\t %.2f", r.m_name, r.m_intensity,
                            r.GetConcentrationTime(), r.m_upstreamTime, r.m_flowTime, r.m_flow, r.m_ownArea,
                            r.m_totalArea);
}

} // namespace

std::string RainReports::MakeIterationTable(const CGuidMap<CRecordList>& sections, int iteration) {
    CTable table(sections);
    if (iteration == 1)
        AddSections(table);
    table.AddText(CUtility::Format("%s%s ITERATION %d", Break, Break, iteration));
    AddResults(table);
    return table.Take();
}

bool RainReports::WriteVariations(const CGuidMap<CVariationData>& variations,
                                  const std::function<bool(std::string_view text, std::uint64_t told)>& append) {
    std::string text = CUtility::Format("%sBest variations: ", Break);
    std::uint64_t told = 0;
    bool goesOn = true;
    const auto pass = [&](bool isLast) {
        if (!goesOn || (!isLast && text.size() < PieceLength))
            return;
        goesOn = append(text, told);
        text.clear();
    };
    variations.ForEach([&](std::string_view /*guid*/, const CVariationData& data) {
        if (data.m_bestIndex == CVariationData::NoBest)
            return;
        text += CUtility::Format("%s%s: ", Break, data.m_best.m_name);
        data.m_combinations.AppendNames(data.m_bestIndex, text);
        pass(false);
    });
    text += Break;
    text += "S_NAME\tFLOW_IDF_INTENSITY\tFLOW_IDF_CONC_TIME\tFLOW_IDF_MJ_TIME\tFLOW_IDF_TIME\tFLOW_RAIN_IDF\t"
            "FLOW_IDF_AREA_CORRECTED_SECT\tFLOW_IDF_AREA_CORRECTED_TOTAL";
    variations.ForEach([&](std::string_view /*guid*/, const CVariationData& data) {
        if (data.m_bestIndex == CVariationData::NoBest)
            return;
        text += Break;
        text += ResultRow(data.m_best);
        pass(false);
    });
    const auto* const topology = CTopologyMultiStorage::Instance()->GetActiveTopology();
    variations.ForEach([&](std::string_view guid, const CVariationData& data) {
        if (!goesOn)
            return;
        const auto section = topology->GetSectionByGuid(guid);
        const std::size_t count = data.m_combinations.size();
        text += CUtility::Format("%s%s  - %d", Break, section ? section->GetName() : std::string_view(), count);
        for (std::size_t i = 0; i < count && goesOn; ++i, ++told) {
            text += CUtility::Format("%s%d :", Break, i + 1);
            data.m_combinations.AppendNames(i, text);
            pass(false);
        }
    });
    pass(true);
    return goesOn;
}
