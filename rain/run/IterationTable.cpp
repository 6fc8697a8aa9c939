// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/IterationTable.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PipeManager.h"

using OLMGis::Topology::CPipeManager;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace Rain {

namespace {

constexpr const char* Break = "\r\n";

// Messages that head the rows.
constexpr int SectionLabel = 425;
constexpr int LengthLabel = 428;
constexpr int PipeLabel = 1130;
constexpr int SlopeLabel = 1351;
constexpr int IntensityLabel = 2128;
constexpr int FlowLabel = 2145;
constexpr int FlowTimeLabel = 2302;
constexpr int UpstreamTimeLabel = 2303;
constexpr int ConcentrationTimeLabel = 2304;
constexpr int OwnAreaLabel = 2310;
constexpr int EffectiveAreaLabel = 2311;
constexpr int InnerDiameterLabel = 7495;

std::string Head(const char* format, int message) {
    return CUtility::Format(format, Msg(message));
}

std::string Number(double value) {
    return CUtility::Format(";%.6f", value);
}

/// The rows of a table of sections.
class CTable {
public:
    CTable(const CRunInput& input, const CNetworkWalk& walk) {
        auto sections = walk.GetSections();
        input.SortByGuid(sections);
        for (const std::uint32_t section : sections)
            if (const CRecordList& list = *walk.FindRecords(section); !list.empty())
                m_records.push_back(list.front());
    }

    /// A row: a head and what field(record) makes of each section.
    template <class Field>
    void AddRow(std::string_view head, const Field& field) {
        m_text += Break;
        m_text += head;
        for (const CSectionDataIDF* record : m_records)
            m_text += field(*record);
    }
    void AddText(std::string_view text) { m_text += text; }
    std::string Take() { return std::move(m_text); }

private:
    std::vector<const CSectionDataIDF*> m_records;
    std::string m_text;
};

void AddSections(CTable& table) {
    table.AddRow(Head("%s", SectionLabel), [](const auto& r) { return CUtility::Format(";%s", r.m_name); });
    table.AddRow(Head("%s", OwnAreaLabel), [](const auto& r) { return Number(r.m_ownArea); });
    table.AddRow(Head("[0] %s", EffectiveAreaLabel), [](const auto& r) { return Number(r.GetEffectiveArea()); });
    table.AddRow(Head("%s[LL]", LengthLabel), [](const auto& r) { return Number(r.m_length); });
    table.AddRow(Head("%s", SlopeLabel), [](const auto& r) { return Number(r.m_slope); });
    table.AddRow("[FIT] FlowInletTime", [](const auto& r) { return Number(r.m_inletTime); });
}

void AddResults(CTable& table) {
    table.AddRow(Head("[1] %s", IntensityLabel), [](const auto& r) { return Number(r.m_intensity); });
    table.AddRow(Head("[2]=[1]*[0] : %s", FlowLabel), [](const auto& r) { return Number(r.m_flow); });
    table.AddRow("[3] MinPipeDiam", [](const auto& r) { return Number(r.m_minDiameter); });
    table.AddRow(Head("%s", PipeLabel), [](const auto& r) {
        return r.m_pipe ? CUtility::Format(";%s", r.m_pipe->GetName()) : std::string(";");
    });
    table.AddRow(Head("[4] %s", InnerDiameterLabel), [](const auto& r) {
        return r.m_pipe ? Number(CPipeManager::Instance()->GetInnerDiameter(r.m_pipe)) : std::string(";");
    });
    table.AddRow("[5] SpeedSemiFull", [](const auto& r) { return Number(r.m_velocity); });
    table.AddRow(Head("[6]=[SL]/[5] %s", FlowTimeLabel), [](const auto& r) { return Number(r.m_flowTime); });
    table.AddRow(Head("[7] %s", UpstreamTimeLabel), [](const auto& r) { return Number(r.m_upstreamTime); });
    table.AddRow(Head("[8]=[7]+[FIT] %s", ConcentrationTimeLabel),
                 [](const auto& r) { return Number(r.GetConcentrationTime()); });
}

} // namespace

std::string MakeIterationTable(const CRunInput& input, const CNetworkWalk& walk, int iteration) {
    CTable table(input, walk);
    if (iteration == 1)
        AddSections(table);
    table.AddText(CUtility::Format("%s%s ITERATION %d", Break, Break, iteration));
    AddResults(table);
    return table.Take();
}

} // namespace Rain
