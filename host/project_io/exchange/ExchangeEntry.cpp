// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeEntry.h"

#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/exchange/ExchangeLinker.h"
#include "host/project_io/exchange/ExchangeMeasures.h"
#include "host/sewage_core/MissingDensities.h"

#include <fmt/format.h>

#include <vector>

namespace OLMGis::ProjectIo {

using Topology::CTopologyStorage;
using Utility::Done;
using Utility::Refused;
using Utility::Status;

namespace {

/// Enters linked records into a topology, kind by kind, and keeps the row of each record.
class CExchangeStore {
public:
    CExchangeStore(CExchangeRecords& records, CTopologyStorage& topology) : m_records(records), m_topology(topology) {}

    Status EnterNodes();
    Status EnterSections();
    Status EnterCatchments();

private:
    std::string NameOfCatchment(std::uint32_t catchment);

    CExchangeRecords& m_records;
    CTopologyStorage& m_topology;
    std::vector<std::uint32_t> m_nodeRows;
    std::vector<std::uint32_t> m_sectionRows;
    std::vector<std::uint32_t> m_catchmentCounts; ///< by section: catchments entered so far
};

Status CExchangeStore::EnterNodes() {
    m_nodeRows.reserve(m_records.m_nodes.size());
    for (std::size_t i = 0; i < m_records.m_nodes.size(); ++i) {
        const std::string_view name = m_records.m_nodeNames[m_records.m_nodes[i].m_nameId].View();
        const auto node = m_topology.AddNode(m_records.m_nodeGuids[i].View(), name, m_records.m_nodePoints[i]);
        if (!node)
            return node.GetError();
        m_nodeRows.push_back(node.Value()->GetRow());
    }
    m_records.m_attributes.Store(m_topology.GetStore(), Data::enmEntityKind::Node, m_nodeRows);
    return Done();
}

Status CExchangeStore::EnterSections() {
    m_sectionRows.reserve(m_records.m_sections.size());
    for (std::size_t i = 0; i < m_records.m_sections.size(); ++i) {
        const CExchangeRecords::CSection& record = m_records.m_sections[i];
        Topology::CNode* const from = m_topology.GetNodeAt(m_nodeRows[record.m_from]).get();
        Topology::CNode* const to = m_topology.GetNodeAt(m_nodeRows[record.m_to]).get();
        const auto section =
            m_topology.AddSection(m_records.m_sectionGuids[i].View(), m_records.m_sectionNames[i].View(), from, to,
                                  m_records.Points(record.m_line));
        if (!section)
            return section.GetError();
        m_sectionRows.push_back(section.Value()->GetRow());
    }
    m_records.m_attributes.Store(m_topology.GetStore(), Data::enmEntityKind::Section, m_sectionRows);
    return Done();
}

std::string CExchangeStore::NameOfCatchment(std::uint32_t catchment) {
    const std::uint32_t section = m_records.m_catchments[catchment].m_section;
    const std::uint32_t number = ++m_catchmentCounts[section];
    const std::string_view own = m_records.m_catchmentNames[catchment].View();
    return own.empty() ? fmt::format("{}/{}", m_records.m_sectionNames[section].View(), number) : std::string(own);
}

Status CExchangeStore::EnterCatchments() {
    m_catchmentCounts.resize(m_records.m_sections.size(), 0);
    std::vector<std::uint32_t> rows;
    rows.reserve(m_records.m_catchments.size());
    for (std::uint32_t i = 0; i < m_records.m_catchments.size(); ++i) {
        const CExchangeRecords::CCatchment& record = m_records.m_catchments[i];
        Topology::CSection* const section = m_topology.GetSectionAt(m_sectionRows[record.m_section]).get();
        const auto catchment = m_topology.AddCatchment(m_records.m_catchmentGuids[i].View(), NameOfCatchment(i),
                                                       section, m_records.RingsOf(record));
        if (!catchment)
            return catchment.GetError();
        rows.push_back(catchment.Value()->GetRow());
    }
    m_records.m_attributes.Store(m_topology.GetStore(), Data::enmEntityKind::Catchment, rows);
    return Done();
}

Status Enter(CExchangeRecords& records, CTopologyStorage& topology) {
    topology.Reserve(records.m_nodes.size(), records.m_sections.size(), records.m_catchments.size());
    CExchangeStore store(records, topology);
    if (Status status = store.EnterNodes(); !status)
        return status;
    if (Status status = store.EnterSections(); !status)
        return status;
    return store.EnterCatchments();
}

CTopologyStorage& ActiveNetwork() {
    return *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
}

} // namespace

Status CheckEmptyProject(const std::string& name) {
    if (ActiveNetwork().GetNodes().empty() && ActiveNetwork().GetSections().empty())
        return Done();
    return Refused(name + ": the project has a network already, expected an empty one");
}

const Topology::CCatalog& GetPipesToReferTo() {
    return *Topology::CCatalogManager::Instance()->GetCatalog(Topology::CCatalogManager::PipeCatalog, 1);
}

Status EnterExchange(CExchangeRecords& records, const std::optional<CCoordinateSystem>& system,
                     const CFeaturePlaces& places, CImportSummary& summary) {
    CTopologyStorage& topology = ActiveNetwork();
    if (Status status = MeasureExchange(records, system, places, summary); !status)
        return status;
    if (Status status = LinkExchange(records, places, summary); !status)
        return status;
    if (Status possible = records.m_faults.ToStatus(places.GetFileName(),
                                                    places.ListsAll() ? "Correct the tables; nothing was imported"
                                                                      : "Correct the file; nothing was imported",
                                                    places.ListsAll() ? "fault" : "impossible value");
        !possible)
        return possible;
    if (Status status = Enter(records, topology); !status)
        return status;
    if (system)
        System::CProjectSettings::Instance()->Set(System::CProjectSettings::Crs, SettingAfterConversion(*system));

    summary.m_nodeCount = records.m_nodes.size();
    summary.m_sectionCount = records.m_sections.size();
    summary.m_catchmentCount = records.m_catchments.size();
    summary.m_mainOutletCount = records.m_mainOutlets.size();
    if (auto warning = Sewage::WarnOfMissingDensities(topology))
        summary.m_warnings.push_back(std::move(*warning));
    return Done();
}

} // namespace OLMGis::ProjectIo
