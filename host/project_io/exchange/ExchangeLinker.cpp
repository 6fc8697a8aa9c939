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
    CLinker(CExchangeRecords& records, const std::string& fileName, CImportSummary& summary)
        : m_records(records), m_fileName(fileName), m_summary(summary) {}

    Status LinkSections();
    Status LinkCatchments();
    Status LinkMainOutlets();
    void CheckStoredOutlets();

private:
    std::string LabelOfSection(std::uint32_t section) const;
    Error Fault(std::string_view label, std::string_view text) const {
        return BadInput(fmt::format("{}: {}: {}", m_fileName, label, text));
    }

    Status LinkEnd(std::uint32_t section, bool isStart);
    Status Snap(std::uint32_t section, bool isStart, std::uint32_t& node);
    void NoteFarEnds(std::uint32_t section);
    Status FindSection(std::string_view text, std::string_view label, std::uint32_t& section) const;

    CExchangeRecords& m_records;
    const std::string& m_fileName;
    CImportSummary& m_summary;
    std::unique_ptr<CNodeSnapper> m_snapper; ///< made for the first end that needs it
};

std::string CLinker::LabelOfSection(std::uint32_t section) const {
    return LabelOfFeature(m_records.m_sections[section].m_feature, "section", m_records.m_sectionNames[section].View());
}

Status CLinker::LinkSections() {
    for (std::uint32_t i = 0; i < m_records.m_sections.size(); ++i) {
        if (const Status status = LinkEnd(i, true); !status)
            return status;
        if (const Status status = LinkEnd(i, false); !status)
            return status;
        NoteFarEnds(i);
        if (m_records.m_sections[i].m_from == m_records.m_sections[i].m_to)
            m_records.m_faults.Add(
                fmt::format("section {}: leads from a node to itself, expected two nodes (feature {})",
                            ShownName(m_records.m_sectionNames[i].View()), m_records.m_sections[i].m_feature));
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
        return Fault(LabelOfSection(section),
                     fmt::format("{}: found {}, expected the name of a node of the file", isStart ? "from" : "to",
                                 Quote(m_records.m_nodeNames[end].View())));
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
            LabelOfSection(section),
            fmt::format("found no node within {} m of its {} at {} {}, expected one, or a node named in \"{}\"",
                        SnapTolerance, isStart ? "start" : "end", point.m_x, point.m_y, isStart ? "from" : "to"));
    if (found.m_isAmbiguous)
        m_summary.Count("end of a section at which there are several nodes, of which the first was taken",
                        LabelOfSection(section));
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
        m_summary.Count("section whose line ends more than 1 m from its nodes", LabelOfSection(section));
}

Status CLinker::FindSection(std::string_view text, std::string_view label, std::uint32_t& section) const {
    section = m_records.m_sectionsByGuid.Find(text);
    if (section != NoRecord)
        return Done();
    section = m_records.m_sectionsByName.Find(text);
    if (section == NoRecord)
        return Fault(label,
                     fmt::format("section: found {}, expected the name or GUID of a section of the file", Quote(text)));
    if (m_records.m_isNameRepeated[section])
        return Fault(label, fmt::format("section: found {}, a name that several sections have, expected the GUID of "
                                        "one of them",
                                        Quote(text)));
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
        if (const Status status = FindSection(text, "", record.m_section); !status)
            return FindSection(text,
                               name.empty() ? LabelOfFeature(record.m_feature, "catchment of section", text)
                                            : LabelOfFeature(record.m_feature, "catchment", name),
                               record.m_section);
        last = record.m_section;
    }
    return Done();
}

Status CLinker::LinkMainOutlets() {
    const Data::CDataDefinition& key = *Data::CDataConfiguration::Instance()->GetDataDefinitionByID("MAIN_SECT_OUT");
    for (CExchangeRecords::CMainOutlet& record : m_records.m_mainOutlets) {
        const std::string_view name = m_records.m_nodeNames[record.m_nameId].View();
        const std::string label = LabelOfFeature(record.m_feature, "main_outlet of node", name);
        const std::uint32_t node = m_records.m_nodeOfName[record.m_nameId];
        if (node == NoRecord)
            return Fault(label, fmt::format("node: found {}, expected the name of a node of the file", Quote(name)));
        if (const Status status = FindSection(record.m_sectionText.View(), label, record.m_section); !status)
            return status;
        if (m_records.m_sections[record.m_section].m_from != node)
            return Fault(label, fmt::format("section: found {}, which does not leave the node, expected one that does",
                                            Quote(record.m_sectionText.View())));
        if (m_records.m_attributes.IsNotNull(key, node))
            return Fault(label, "found a second main outlet of the node, expected one");
        m_records.m_attributes.Set(key, node, Data::CDataBox(m_records.m_sectionGuids[record.m_section].View()));
    }
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

Status LinkExchange(CExchangeRecords& records, const std::string& fileName, CImportSummary& summary) {
    CLinker linker(records, fileName, summary);
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
