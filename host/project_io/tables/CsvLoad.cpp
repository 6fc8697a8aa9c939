// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvLoad.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/ProjectValues.h"
#include "host/project_io/base/StagedAttributes.h"
#include "host/project_io/tables/CatalogReferences.h"
#include "host/project_io/tables/CsvTargets.h"
#include "host/project_io/tables/TableReader.h"

#include <fmt/format.h>

#include <vector>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::enmEntityKind;
using Topology::CTopologyStorage;
using Utility::CUtility;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

constexpr std::string_view RemovalWord = "null";

const CDataDefinition* Definition(std::string_view id) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

/// For messages.
std::string_view NameOf(const CCsvTarget& target) {
    return target.m_entity == nullptr ? target.m_section->GetName()
                                      : NameForMessages(static_cast<const Topology::CEntity&>(*target.m_entity));
}

class CTableLoad {
public:
    CTableLoad(CTopologyStorage& topology, enmEntityKind kind, CTableReader& table)
        : m_topology(topology), m_table(table), m_targets(topology, kind, table.GetRows()) {}

    Status CheckHead();

    /// Reads all rows. BadInput with all faults.
    Status ReadRows();
    Result<int> Store();

private:
    Status ReadRow(std::uint32_t record);
    void JudgeRow(std::uint32_t record);
    Status CompleteNewCatchment(std::uint32_t record);
    int StoreNew(const Topology::CCatchment& catchment, std::uint32_t record);
    int Write(const Data::CAttributeOwner& entity, const CDataDefinition& definition, std::uint32_t record);

    struct CRemoval {
        std::uint32_t m_record;
        const CDataDefinition* m_definition;
    };

    CTopologyStorage& m_topology;
    CTableReader& m_table;
    CCsvTargets m_targets;
    std::vector<std::size_t> m_columns; ///< with values of attributes
    std::vector<CCsvTarget> m_records;  ///< one per row
    CStagedAttributes m_values;         ///< by record
    std::vector<CRemoval> m_removals;
    CTableFaults m_faults;
};

Status CTableLoad::CheckHead() {
    for (std::size_t i = 0; i < m_table.GetColumns().size(); ++i)
        if (m_table.GetColumns()[i].m_definition != nullptr)
            m_columns.push_back(i);
    if (m_columns.empty())
        return m_table.GetRows().Fault("found no column with values, expected the key of an attribute");
    return m_targets.CheckHead();
}

Status CTableLoad::ReadRows() {
    Result<bool> next = m_table.Next();
    for (; !next || next.Value(); next = m_table.Next()) {
        const auto record = static_cast<std::uint32_t>(m_records.size());
        const Status status = next ? ReadRow(record) : Status(next.GetError());
        m_records.resize(record + std::size_t{1}); // an empty one for a row with a fault
        if (status)
            continue;
        if (status.GetError().kind != Utility::enmErrorKind::BadInput)
            return status;
        m_faults.Add(status.GetError().message);
        if (!next && !m_table.GetRows().CanGoOn())
            break;
    }
    return m_faults.ToStatus(m_table.GetName(), "Correct the table; nothing was loaded");
}

Status CTableLoad::ReadRow(std::uint32_t record) {
    std::optional<int> kinds;
    for (const std::size_t column : m_columns) {
        const CDataDefinition& definition = *m_table.GetColumns()[column].m_definition;
        if (CUtility::Trim(m_table.GetRows().GetField(column)) == RemovalWord) {
            m_removals.push_back({record, &definition});
            continue;
        }
        Result<CDataBox> value = m_table.GetValue(column);
        if (!value)
            return value.GetError();
        if (IsCatalogReference(definition)) {
            value = ResolveCatalogReference(definition, std::move(value.Value()));
            if (!value)
                return m_table.ColumnFault(column, value.GetError().message);
        }
        m_values.Set(definition, record, value.Value());
        if (definition.m_id == "kinds" && value.Value().IsNotNull())
            kinds = value.Value().AsInt();
    }
    Result<CCsvTarget> target = m_targets.Find(kinds);
    if (!target)
        return target.GetError();
    m_records.push_back(std::move(target.Value()));
    JudgeRow(record);
    return m_records.back().m_entity == nullptr ? CompleteNewCatchment(record) : Status(Done());
}

void CTableLoad::JudgeRow(std::uint32_t record) {
    CDataBox box;
    for (const std::size_t column : m_columns) {
        const CDataDefinition& key = *m_table.GetColumns()[column].m_definition;
        if (key.m_type == Data::enmDataType::Text || !m_values.Read(key, record, box) ||
            Data::Judge(key.m_range, box.AsDouble()) != Data::enmJudgement::Impossible)
            continue;
        CValueFaults& faults = m_faults.GetValues();
        faults.Add(faults.IsListed() ? fmt::format("line {}, column {}: {}", m_table.GetRows().GetLine(),
                                                   m_table.GetColumns()[column].m_head,
                                                   PlaceOfValue(key, NameOf(m_records[record]), box.AsDouble()))
                                     : std::string());
    }
}

Status CTableLoad::CompleteNewCatchment(std::uint32_t record) {
    for (const std::string_view needed : {"kinds", "area"})
        if (!m_values.IsNotNull(*Definition(needed), record))
            return m_table.GetRows().Fault(
                needed, "found no value, expected one for a catchment that the project doesn't have");
    const CDataDefinition& coefficient = *Definition("coefficient");
    if (!m_values.IsNotNull(coefficient, record))
        m_values.Set(coefficient, record, CDataBox(1.0));
    return Done();
}

Result<int> CTableLoad::Store() {
    int count = 0;
    for (std::uint32_t record = 0; record < m_records.size(); ++record) {
        const CCsvTarget& target = m_records[record];
        if (target.m_entity == nullptr) {
            const auto made = m_topology.AddCatchment(target.m_guid, target.m_name, target.m_section, {});
            if (!made)
                return made.GetError();
            count += StoreNew(*made.Value(), record);
            continue;
        }
        for (const std::size_t column : m_columns)
            if (const CDataDefinition& key = *m_table.GetColumns()[column].m_definition;
                m_values.IsNotNull(key, record))
                count += Write(*target.m_entity, key, record);
    }
    for (const CRemoval& removal : m_removals)
        if (const auto* entity = m_records[removal.m_record].m_entity; entity != nullptr)
            count += Write(*entity, *removal.m_definition, removal.m_record);
    return count;
}

int CTableLoad::StoreNew(const Topology::CCatchment& catchment, std::uint32_t record) {
    int count = 0;
    for (const std::size_t column : m_columns)
        if (const CDataDefinition& key = *m_table.GetColumns()[column].m_definition; m_values.IsNotNull(key, record))
            count += Write(catchment, key, record);
    if (!m_table.GetRows().FindColumn("coefficient"))
        count += Write(catchment, *Definition("coefficient"), record);
    return count;
}

int CTableLoad::Write(const Data::CAttributeOwner& entity, const CDataDefinition& definition, std::uint32_t record) {
    CDataBox box;
    m_values.Read(definition, record, box);
    return Data::CDataRW::Write(&definition, &entity, box, nullptr);
}

Result<CCsvLoaded> Load(std::istream& stream, const std::string& name, enmEntityKind kind, const CColumnMap* map) {
    CTableReader table(name);
    if (const Status head = table.Open(stream, kind, enmTableUse::Values, map); !head)
        return head.GetError();
    CTableLoad load(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology(), kind, table);
    if (const Status head = load.CheckHead(); !head)
        return head.GetError();
    if (const Status rows = load.ReadRows(); !rows)
        return rows.GetError();
    const Result<int> count = load.Store();
    if (!count)
        return count.GetError();
    return CCsvLoaded{count.Value(), table.Describe()};
}

} // namespace

Result<CCsvLoaded> LoadCsv(std::istream& stream, const std::string& name, enmEntityKind kind, const CColumnMap* map) {
    return CatchFailures<CCsvLoaded>(name, [&] { return Load(stream, name, kind, map); });
}

} // namespace OLMGis::ProjectIo
