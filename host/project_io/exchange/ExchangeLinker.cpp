// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeLinker.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/exchange/ExchangeFeature.h"
#include "host/project_io/exchange/NodeSnapper.h"

#include <fmt/format.h>

#include <memory>

namespace OLMGis::ProjectIo {

using Topology::CPoint;
using Utility::BadInput;
using Utility::Done;
using Utility::Error;
using Utility::Status;

namespace {

/// A drawn end farther from its node than this (m) is reported: the line may run against `from` and `to`.
constexpr double FarEnd = 1.0;

class CLinker {
public:
    CLinker(CExchangeRecords& records, const CFeaturePlaces& places, CImportSummary& summary)
        : m_records(records), m_places(places), m_summary(summary) {}

    Status LinkSections();
    Status LinkCatchments();
    Status LinkMainOutlets();
    void CheckStoredOutlets();

private:
    std::string LabelOfSection(std::uint32_t section) const;
    Error Fault(std::uint32_t feature, std::string_view label, std::string_view key, std::string_view text) const {
        return BadInput(m_places.Fault(feature, label, key, text));
    }

    /// Done where the fault is listed and the linking goes on, else the fault itself.
    Status Take(const Status& fault);

    Status LinkEnd(std::uint32_t section, bool isStart);
    Status Snap(std::uint32_t section, bool isStart, std::uint32_t& node);
    void NoteFarEnds(std::uint32_t section);
    Status LinkMainOutlet(CExchangeRecords::CMainOutlet& outlet);
    Status FindSection(std::string_view text, std::uint32_t feature, std::string_view label,
                       std::uint32_t& section) const;

    CExchangeRecords& m_records;
    const CFeaturePlaces& m_places;
    CImportSummary& m_summary;
    std::unique_ptr<CNodeSnapper> m_snapper; ///< made for the first end that needs it
};

std::string CLinker::LabelOfSection(std::uint32_t section) const {
    return LabelOfFeature(m_records.m_sections[section].m_feature, "section", m_records.m_sectionNames[section].View());
}

Status CLinker::Take(const Status& fault) {
    if (!m_places.ListsAll())
        return fault;
    m_records.m_faults.Add(fault.GetError().message);
    return Done();
}

Status CLinker::LinkSections() {
    for (std::uint32_t i = 0; i < m_records.m_sections.size(); ++i) {
        bool isLinked = true;
        for (const bool isStart : {true, false}) {
            const Status end = LinkEnd(i, isStart);
            isLinked = isLinked && end;
            if (!end)
                if (Status taken = Take(end); !taken)
                    return taken;
        }
        if (!isLinked)
            continue;
        NoteFarEnds(i);
        const CExchangeRecords::CSection& section = m_records.m_sections[i];
        if (section.m_from == section.m_to)
            m_records.m_faults.Add(
                m_places.Listed(section.m_feature, "to",
                                fmt::format("section {}: leads from a node to itself, expected two nodes",
                                            ShownName(m_records.m_sectionNames[i].View()))));
    }
    return Done();
}

Status CLinker::LinkEnd(std::uint32_t section, bool isStart) {
    CExchangeRecords::CSection& record = m_records.m_sections[section];
    std::uint32_t& end = isStart ? record.m_from : record.m_to;
    if (end == NoRecord)
        return Snap(section, isStart, end);
    const std::uint32_t node = m_records.m_nodeOfName[end];
    if (node == NoRecord)
        return Fault(
            record.m_feature, LabelOfSection(section), isStart ? "from" : "to",
            fmt::format("found {}, expected the name of a node of the file", Quote(m_records.m_nodeNames[end].View())));
    end = node;
    return Done();
}

Status CLinker::Snap(std::uint32_t section, bool isStart, std::uint32_t& node) {
    const auto line = m_records.Points(m_records.m_sections[section].m_line);
    const CPoint& point = isStart ? line.front() : line.back();
    if (!m_snapper)
        m_snapper = std::make_unique<CNodeSnapper>(m_records.m_nodePoints, SnapTolerance);
    const CNodeSnapper::CFound found = m_snapper->Find(point);
    if (found.m_place == NoRecord)
        return Fault(
            m_records.m_sections[section].m_feature, LabelOfSection(section), "",
            fmt::format("found no node within {} m of its {} at {} {}, expected one, or a node named in \"{}\"",
                        SnapTolerance, isStart ? "start" : "end", point.m_x, point.m_y, isStart ? "from" : "to"));
    if (found.m_isAmbiguous)
        m_summary.Count("end of a section at which there are several nodes, of which the first was taken",
                        m_places.Label(m_records.m_sections[section].m_feature, LabelOfSection(section)));
    node = found.m_place;
    return Done();
}

void CLinker::NoteFarEnds(std::uint32_t section) {
    const CExchangeRecords::CSection& record = m_records.m_sections[section];
    const auto line = m_records.Points(record.m_line);
    if (line.empty())
        return;
    const CPoint& start = m_records.m_nodePoints[record.m_from];
    const CPoint& end = m_records.m_nodePoints[record.m_to];
    if (Topology::Distance(start, line.front()) > FarEnd || Topology::Distance(end, line.back()) > FarEnd)
        m_summary.Count("section whose line ends more than 1 m from its nodes",
                        m_places.Label(record.m_feature, LabelOfSection(section)));
}

Status CLinker::FindSection(std::string_view text, std::uint32_t feature, std::string_view label,
                            std::uint32_t& section) const {
    section = m_records.m_sectionsByGuid.Find(text);
    if (section != NoRecord)
        return Done();
    section = m_records.m_sectionsByName.Find(text);
    if (section == NoRecord)
        return Fault(feature, label, "section",
                     fmt::format("found {}, expected the name or GUID of a section of the file", Quote(text)));
    if (m_records.m_isNameRepeated[section])
        return Fault(
            feature, label, "section",
            fmt::format("found {}, a name that several sections have, expected the GUID of one of them", Quote(text)));
    return Done();
}

Status CLinker::LinkCatchments() {
    std::uint32_t last = NoRecord;
    for (std::uint32_t i = 0; i < m_records.m_catchments.size(); ++i) {
        CExchangeRecords::CCatchment& record = m_records.m_catchments[i];
        // Consecutive catchments of one section share their text, which is looked up once.
        if (last != NoRecord &&
            m_records.m_catchments[i - 1].m_sectionText.View().data() == record.m_sectionText.View().data()) {
            record.m_section = last;
            continue;
        }
        const std::string_view text = record.m_sectionText.View();
        const std::string_view name = m_records.m_catchmentNames[i].View();
        last = NoRecord;
        if (const Status status = FindSection(text, record.m_feature, "", record.m_section); !status) {
            const std::string label = name.empty() ? LabelOfFeature(record.m_feature, "catchment of section", text)
                                                   : LabelOfFeature(record.m_feature, "catchment", name);
            if (Status taken = Take(FindSection(text, record.m_feature, label, record.m_section)); !taken)
                return taken;
            continue;
        }
        last = record.m_section;
    }
    return Done();
}

Status CLinker::LinkMainOutlets() {
    for (CExchangeRecords::CMainOutlet& outlet : m_records.m_mainOutlets)
        if (const Status status = LinkMainOutlet(outlet); !status)
            if (Status taken = Take(status); !taken)
                return taken;
    return Done();
}

Status CLinker::LinkMainOutlet(CExchangeRecords::CMainOutlet& outlet) {
    const Data::CDataDefinition& key = *Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MAIN_SECT_OUT");
    const std::string_view name = m_records.m_nodeNames[outlet.m_nameId].View();
    const std::string label = LabelOfFeature(outlet.m_feature, "main_outlet of node", name);
    const std::uint32_t node = m_records.m_nodeOfName[outlet.m_nameId];
    if (node == NoRecord)
        return Fault(outlet.m_feature, label, "node",
                     fmt::format("found {}, expected the name of a node of the file", Quote(name)));
    if (const Status status = FindSection(outlet.m_sectionText.View(), outlet.m_feature, label, outlet.m_section);
        !status)
        return status;
    if (m_records.m_sections[outlet.m_section].m_from != node)
        return Fault(outlet.m_feature, label, "section",
                     fmt::format("found {}, which does not leave the node, expected one that does",
                                 Quote(outlet.m_sectionText.View())));
    if (m_records.m_attributes.IsNotNull(key, node))
        return Fault(outlet.m_feature, label, "", "found a second main outlet of the node, expected one");
    m_records.m_attributes.Set(key, node, Data::CDataBox(m_records.m_sectionGuids[outlet.m_section].View()));
    return Done();
}

void CLinker::CheckStoredOutlets() {
    const Data::CDataDefinition& key = *Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MAIN_SECT_OUT");
    Data::CDataBox box;
    for (std::uint32_t node = 0; node < m_records.m_nodes.size(); ++node) {
        if (!m_records.m_attributes.Read(key, node, box))
            continue;
        const std::uint32_t section = m_records.m_sectionsByGuid.Find(box.TextView());
        if (section == NoRecord || m_records.m_sections[section].m_from != node)
            m_summary.Count("node whose MAIN_SECT_OUT names no section that leaves it",
                            m_records.m_nodeNames[m_records.m_nodes[node].m_nameId].View());
    }
}

} // namespace

Status LinkExchange(CExchangeRecords& records, const CFeaturePlaces& places, CImportSummary& summary) {
    CLinker linker(records, places, summary);
    if (const Status status = linker.LinkSections(); !status)
        return status;
    if (const Status status = linker.LinkCatchments(); !status)
        return status;
    if (const Status status = linker.LinkMainOutlets(); !status)
        return status;
    linker.CheckStoredOutlets();
    return Done();
}

} // namespace OLMGis::ProjectIo
