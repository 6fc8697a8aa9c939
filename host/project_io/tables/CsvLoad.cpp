// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvLoad.h"

#include "host/gis_core/DataRW.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/ProjectValues.h"
#include "host/project_io/base/StagedAttributes.h"
#include "host/project_io/base/ValueFaults.h"
#include "host/project_io/tables/CatalogReferences.h"
#include "host/project_io/tables/CsvReader.h"
#include "host/project_io/tables/CsvTargets.h"

#include <fmt/format.h>

#include <array>
#include <vector>

namespace OLMGis::ProjectIo {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::enmEntityKind;
using Topology::CTopologyStorage;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

const CDataDefinition* Definition(std::string_view id) {
    return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

/// For messages.
std::string_view NameOf(const CCsvTarget& target) {
    return target.m_entity == nullptr ? target.m_section->GetName()
                                      : NameForMessages(static_cast<const Topology::CEntity&>(*target.m_entity));
}

/// A column with values of an attribute.
struct CValueColumn {
    std::size_t m_place;
    const CDataDefinition* m_definition;
};

class CTableLoad {
public:
    CTableLoad(CTopologyStorage& topology, enmEntityKind kind, CCsvReader& reader)
        : m_topology(topology), m_kind(kind), m_reader(reader), m_targets(topology, kind, reader) {}

    Status ReadHead();

    /// Reads all rows. BadInput for the first that makes no sense, else for all impossible values together.
    Status ReadRows(const std::string& fileName);
    Result<int> Store();

private:
    Status ReadRow();
    void JudgeRow(std::uint32_t record);
    Status CompleteNewCatchment(std::uint32_t record);
    int StoreNew(const Topology::CCatchment& catchment, std::uint32_t record);
    int Write(const Data::CAttributeOwner& entity, const CDataDefinition& definition, std::uint32_t record);

    CTopologyStorage& m_topology;
    enmEntityKind m_kind;
    CCsvReader& m_reader;
    CCsvTargets m_targets;
    std::vector<CValueColumn> m_columns;
    std::vector<CCsvTarget> m_records; ///< one per row
    CStagedAttributes m_values;        ///< by record
    CValueFaults m_faults;
};

Status CTableLoad::ReadHead() {
    constexpr std::array<std::string_view, Data::EntityKindCount> plurals = {"nodes", "sections", "catchments"};
    for (std::size_t i = 0; i < m_reader.GetColumns().size(); ++i) {
        const std::string& column = m_reader.GetColumns()[i];
        if (m_targets.IsIdentifying(column))
            continue;
        const CDataDefinition* definition = Definition(column);
        if (definition == nullptr || definition->m_entityKind != m_kind)
            return m_reader.Fault(fmt::format("found the column {}, expected name, guid and keys of attributes of {}",
                                              Quote(column), plurals[static_cast<std::size_t>(m_kind)]));
        m_columns.push_back({i, definition});
    }
    if (m_columns.empty())
        return m_reader.Fault("found no column with values, expected the key of an attribute");
    return m_targets.CheckHead();
}

Status CTableLoad::ReadRows(const std::string& fileName) {
    for (;;) {
        const Result<bool> next = m_reader.Next();
        if (!next)
            return next.GetError();
        if (!next.Value())
            return m_faults.ToStatus(fileName, "Correct the table; nothing was loaded");
        if (Status status = ReadRow(); !status)
            return status;
    }
}

Status CTableLoad::ReadRow() {
    const auto record = static_cast<std::uint32_t>(m_records.size());
    std::optional<int> kinds;
    for (const CValueColumn& column : m_columns) {
        Result<CDataBox> value = ParseAttribute(*column.m_definition, m_reader.GetField(column.m_place));
        if (value && IsCatalogReference(*column.m_definition))
            value = ResolveCatalogReference(*column.m_definition, std::move(value.Value()));
        if (!value)
            return m_reader.Fault(value.GetError().message);
        m_values.Set(*column.m_definition, record, value.Value());
        if (column.m_definition->m_id == "kinds" && value.Value().IsNotNull())
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
    for (const CValueColumn& column : m_columns) {
        const CDataDefinition& key = *column.m_definition;
        if (key.m_type == Data::enmDataType::Text || !m_values.Read(key, record, box) ||
            Data::Judge(key.m_range, box.AsDouble()) != Data::enmJudgement::Impossible)
            continue;
        m_faults.Add(m_faults.IsListed() ? fmt::format("line {}: {}", m_reader.GetLine(),
                                                       PlaceOfValue(key, NameOf(m_records[record]), box.AsDouble()))
                                         : std::string());
    }
}

Status CTableLoad::CompleteNewCatchment(std::uint32_t record) {
    for (const std::string_view needed : {"kinds", "area"})
        if (!m_values.IsNotNull(*Definition(needed), record))
            return m_reader.Fault(needed, "found no value, expected one for a catchment that the project doesn't have");
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
        for (const CValueColumn& column : m_columns)
            count += Write(*target.m_entity, *column.m_definition, record);
    }
    return count;
}

int CTableLoad::StoreNew(const Topology::CCatchment& catchment, std::uint32_t record) {
    int count = 0;
    for (const CValueColumn& column : m_columns)
        if (m_values.IsNotNull(*column.m_definition, record))
            count += Write(catchment, *column.m_definition, record);
    if (!m_reader.FindColumn("coefficient"))
        count += Write(catchment, *Definition("coefficient"), record);
    return count;
}

int CTableLoad::Write(const Data::CAttributeOwner& entity, const CDataDefinition& definition, std::uint32_t record) {
    CDataBox box;
    m_values.Read(definition, record, box);
    return Data::CDataRW::Write(&definition, &entity, box, nullptr);
}

Result<int> Load(std::istream& stream, const std::string& name, enmEntityKind kind) {
    CCsvReader reader(stream, name);
    if (const Status head = reader.ReadHead(); !head)
        return head.GetError();
    CTableLoad load(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology(), kind, reader);
    if (const Status head = load.ReadHead(); !head)
        return head.GetError();
    if (const Status rows = load.ReadRows(name); !rows)
        return rows.GetError();
    return load.Store();
}

} // namespace

Result<int> LoadCsv(std::istream& stream, const std::string& name, enmEntityKind kind) {
    return CatchFailures<int>(name, [&] { return Load(stream, name, kind); });
}

} // namespace OLMGis::ProjectIo
