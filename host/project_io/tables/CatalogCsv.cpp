// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CatalogCsv.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/CatalogManager.h"
#include "host/project_io/base/AttributeText.h"
#include "host/project_io/base/Failure.h"
#include "host/project_io/base/ValueFaults.h"
#include "host/project_io/tables/CatalogCsvRows.h"
#include "host/project_io/tables/CsvReader.h"
#include "host/project_io/tables/CsvWriter.h"

#include <fmt/format.h>

#include <array>
#include <map>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OLMGis::ProjectIo {

using Topology::CCatalog;
using Topology::CCatalogItem;
using Topology::CCatalogManager;
using Utility::CUtility;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

CCatalog& CatalogOf(enmCatalogKind kind) {
    const auto id = kind == enmCatalogKind::Pipe ? CCatalogManager::PipeCatalog : CCatalogManager::ManholeCatalog;
    return *CCatalogManager::Instance()->GetCatalog(id, 1);
}

bool IsSameAs(const CCatalogItem& item, const CCatalogCsvRow& row, enmCatalogKind kind) {
    const auto group = item.GetParentItem();
    if (!group || group->GetName() != row.m_group || item.GetName() != row.m_name ||
        !Utility::GuidEqual()(item.GetGUID(), row.m_guid))
        return false;
    if (kind == enmCatalogKind::Pipe)
        return item.GetPipeData() != nullptr && *item.GetPipeData() == row.m_pipe;
    return item.GetManholeData() != nullptr && *item.GetManholeData() == row.m_manhole;
}

/// Reads a table and checks its rows against the catalogue and each other before any is entered.
class CCatalogImport {
public:
    CCatalogImport(CCatalog& catalog, enmCatalogKind kind, enmCatalogValues values, CCsvReader& reader)
        : m_catalog(catalog), m_kind(kind), m_values(values), m_reader(reader) {}

    Status ReadAll();
    Result<int> Enter();
    void ReportUnusual(std::vector<std::string>& warnings) const;

private:
    Status Take(CCatalogCsvRow row);
    Status CheckGuid(const std::string& guid, const std::string& what);

    CCatalog& m_catalog;
    enmCatalogKind m_kind;
    enmCatalogValues m_values;
    CCsvReader& m_reader;
    struct CUnusualColumn {
        CUnusualValues m_values;
        std::string m_usual;
    };

    std::vector<CCatalogCsvRow> m_rows;
    std::map<std::string_view, CUnusualColumn> m_unusual;      ///< by column
    std::unordered_map<std::string, std::string> m_groupGuids; ///< of new groups, by name
    std::unordered_map<std::string, std::size_t, Utility::GuidHash, Utility::GuidEqual> m_lineOfGuid;
    std::unordered_map<std::string, std::size_t> m_lineOfName; ///< by group and name
};

Status CCatalogImport::ReadAll() {
    for (;;) {
        const Result<bool> next = m_reader.Next();
        if (!next)
            return next.GetError();
        if (!next.Value())
            return Done();
        Result<CCatalogCsvRow> row = ReadCatalogRow(m_reader, m_kind, m_values);
        if (!row)
            return row.GetError();
        for (const CCatalogCsvRow::CUnusual& unusual : row->m_unusual) {
            CUnusualColumn& column = m_unusual[unusual.m_column];
            column.m_usual = unusual.m_usual;
            column.m_values.Add(row->m_name, CUtility::ToText(unusual.m_value));
        }
        if (Status status = Take(std::move(row.Value())); !status)
            return status;
    }
}

void CCatalogImport::ReportUnusual(std::vector<std::string>& warnings) const {
    for (const auto& [column, unusual] : m_unusual)
        unusual.m_values.Report(column, "usual are " + unusual.m_usual, warnings);
}

Status CCatalogImport::CheckGuid(const std::string& guid, const std::string& what) {
    if (m_catalog.GetItembyGuid(guid))
        return m_reader.Fault("guid", fmt::format("found {}, which an entry of the catalogue has already, expected "
                                                  "another for the {}",
                                                  Quote(guid), what));
    if (const auto [entry, isNew] = m_lineOfGuid.insert({guid, m_reader.GetLine()}); !isNew)
        return m_reader.Fault("guid", fmt::format("found {}, which line {} has already (case and braces do not "
                                                  "count), expected another for the {}",
                                                  Quote(guid), entry->second, what));
    return Done();
}

Status CCatalogImport::Take(CCatalogCsvRow row) {
    if (const auto known = m_catalog.GetItembyGuid(row.m_guid); known && IsSameAs(*known, row, m_kind))
        return Done();
    if (const auto known = m_catalog.GetGroupByName(row.m_group))
        return m_reader.Fault("group",
                              fmt::format("found {}, which the {} has already and without this {}, "
                                          "expected the name of a new group",
                                          Quote(row.m_group), known->IsBuiltIn() ? "built-in catalogue" : "catalogue",
                                          m_kind == enmCatalogKind::Pipe ? "pipe" : "manhole"));
    const auto [group, isNewGroup] = m_groupGuids.insert({row.m_group, row.m_groupGuid});
    if (isNewGroup) {
        if (Status status = CheckGuid(row.m_groupGuid, "group"); !status)
            return status;
    } else if (group->second != row.m_groupGuid) {
        return m_reader.Fault("group_guid", fmt::format("found {}, expected {} as on an earlier line of the group",
                                                        Quote(row.m_groupGuid), Quote(group->second)));
    }
    const std::string key = row.m_group + '\n' + row.m_name;
    if (const auto [entry, isNew] = m_lineOfName.insert({key, m_reader.GetLine()}); !isNew)
        return m_reader.Fault("name", fmt::format("found {}, which line {} has already in the same group, expected "
                                                  "another name",
                                                  Quote(row.m_name), entry->second));
    if (Status status = CheckGuid(row.m_guid, "item"); !status)
        return status;
    m_rows.push_back(std::move(row));
    return Done();
}

Result<int> CCatalogImport::Enter() {
    for (CCatalogCsvRow& row : m_rows) {
        auto group = m_catalog.GetGroupByName(row.m_group);
        if (!group) {
            auto added = m_catalog.AddGroup(row.m_groupGuid, row.m_group);
            if (!added)
                return added.GetError();
            group = added.Value();
        }
        const auto item = m_kind == enmCatalogKind::Pipe
                              ? m_catalog.AddPipe(*group, row.m_guid, row.m_name, std::move(row.m_pipe))
                              : m_catalog.AddManhole(*group, row.m_guid, row.m_name, row.m_manhole);
        if (!item)
            return item.GetError();
    }
    return static_cast<int>(m_rows.size());
}

bool HasTables(const CCatalog& catalog) {
    for (const auto& group : catalog.GetOwnGroups())
        for (const auto& item : group->GetSubItems())
            if (item->GetPipeData() != nullptr && !item->GetPipeData()->m_table.empty())
                return true;
    return false;
}

bool HasOwnGroupGuids(const CCatalog& catalog, enmCatalogKind kind) {
    for (const auto& group : catalog.GetOwnGroups())
        if (group->GetGUID() != GuidOfCatalogGroup(kind, group->GetName()))
            return true;
    return false;
}

Result<int> Import(std::istream& stream, const std::string& name, enmCatalogTable table, enmCatalogValues values,
                   std::vector<std::string>* warnings) {
    CCsvReader reader(stream, name);
    if (const Status head = reader.ReadHead(); !head)
        return head.GetError();
    enmCatalogKind kind = table == enmCatalogTable::Manhole ? enmCatalogKind::Manhole : enmCatalogKind::Pipe;
    if (table == enmCatalogTable::Detect && !reader.FindColumn("shape") && reader.FindColumn("inner_diameter_m"))
        kind = enmCatalogKind::Manhole;
    if (const Status head = CheckCatalogHead(reader, kind); !head)
        return head.GetError();
    CCatalogImport import(CatalogOf(kind), kind, values, reader);
    if (const Status status = import.ReadAll(); !status)
        return status.GetError();
    auto entered = import.Enter();
    if (entered && warnings != nullptr)
        import.ReportUnusual(*warnings);
    return entered;
}

} // namespace

Result<int> ImportCatalogCsv(std::istream& stream, const std::string& name, enmCatalogTable table,
                             enmCatalogValues values, std::vector<std::string>* warnings) {
    return CatchFailures<int>(name, [&] { return Import(stream, name, table, values, warnings); });
}

Status ExportCatalogCsv(std::ostream& stream, enmCatalogKind kind) {
    const CCatalog& catalog = CatalogOf(kind);
    CCsvWriter writer(stream);
    const bool hasTables = HasTables(catalog);
    const bool hasGroupGuids = HasOwnGroupGuids(catalog, kind);
    WriteCatalogHead(writer, kind, hasTables, hasGroupGuids);
    for (const auto& group : catalog.GetOwnGroups())
        for (const auto& item : group->GetSubItems())
            WriteCatalogRow(writer, *item, kind, hasTables, hasGroupGuids);
    return writer.Finish();
}

} // namespace OLMGis::ProjectIo
