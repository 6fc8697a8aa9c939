// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/fuzz/TableEdits.h"

#include "host/gis_core/DataRW.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "tests/fuzz/FuzzSupport.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace Fuzz {

using namespace OLMGis;

namespace {

/// A good file in memory, open for any change.
class CMemoryFile {
public:
    explicit CMemoryFile(const std::string& bytes) {
        sqlite3_open(":memory:", &m_connection);
        const auto size = static_cast<sqlite3_int64>(bytes.size());
        auto* const copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size()));
        std::memcpy(copy, bytes.data(), bytes.size());
        sqlite3_deserialize(m_connection, "main", copy, size, size,
                            SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
        // The triggers of the layers call functions that only a GIS has.
        sqlite3_db_config(m_connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
        sqlite3_db_config(m_connection, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 1, nullptr);
        sqlite3_limit(m_connection, SQLITE_LIMIT_LENGTH, 1 << 20);
        Run("PRAGMA journal_mode = OFF; PRAGMA ignore_check_constraints = ON");
    }
    ~CMemoryFile() { sqlite3_close(m_connection); }
    CMemoryFile(const CMemoryFile&) = delete;
    CMemoryFile& operator=(const CMemoryFile&) = delete;

    void Run(const std::string& sql) { sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, nullptr); }

    /// The first column of the result of a query.
    std::vector<std::string> List(const std::string& sql) {
        std::vector<std::string> list;
        const auto add = [](void* texts, int /*count*/, char** values, char** /*names*/) {
            static_cast<std::vector<std::string>*>(texts)->emplace_back(values[0] == nullptr ? "" : values[0]);
            return 0;
        };
        sqlite3_exec(m_connection, sql.c_str(), add, &list, nullptr);
        return list;
    }

    std::string Bytes() {
        sqlite3_int64 size = 0;
        const std::unique_ptr<unsigned char, void (*)(void*)> bytes(sqlite3_serialize(m_connection, "main", &size, 0),
                                                                    &sqlite3_free);
        return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
    }

private:
    sqlite3* m_connection = nullptr;
};

struct CTable {
    std::string m_name;
    std::vector<std::string> m_columns;
};

std::vector<CTable> TablesOf(CMemoryFile& file) {
    std::vector<CTable> tables;
    for (const std::string& name :
         file.List("SELECT 'sqlite_schema' UNION ALL SELECT name FROM sqlite_schema WHERE type = 'table'"))
        tables.push_back({name, file.List(fmt::format("SELECT name FROM pragma_table_info('{}')", name))});
    return tables;
}

/// The bytes of an edit; zeros after their end.
class CEditBytes {
public:
    CEditBytes(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool IsAtEnd() const { return m_size == 0; }
    std::uint8_t Take() {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }
    std::uint64_t TakeNumber() {
        std::uint64_t number = 0;
        for (unsigned i = 0; i < 8; ++i)
            number |= std::uint64_t{Take()} << (8 * i);
        return number;
    }
    /// A length, then as many bytes, as digits of SQL.
    std::string TakeHex() {
        const std::size_t length = std::min<std::size_t>(Take(), m_size);
        std::string hex;
        for (std::size_t i = 0; i < length; ++i)
            hex += fmt::format("{:02x}", Take());
        return hex;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

/// The new value as an expression of SQL.
std::string TakeValue(CEditBytes& bytes, std::uint8_t kind, const CTable& table, const std::string& column) {
    switch (kind % 8) {
    case 0:
        return "NULL";
    case 1:
        return fmt::format("{}", static_cast<std::int64_t>(bytes.TakeNumber()));
    case 2:
        return fmt::format("{}", static_cast<std::int8_t>(bytes.Take()));
    case 3:
        return fmt::format("{}e{}", static_cast<std::int8_t>(bytes.Take()),
                           static_cast<int>(static_cast<std::int8_t>(bytes.Take())) * 4);
    case 4:
        return fmt::format("CAST(x'{}' AS TEXT)", bytes.TakeHex());
    case 5:
        return fmt::format("x'{}'", bytes.TakeHex());
    case 6: // the value of another row
        return fmt::format("(SELECT \"{}\" FROM \"{}\" LIMIT 1 OFFSET {})", column, table.m_name, bytes.Take() % 8);
    default: { // one byte of a text or blob
        const unsigned place = bytes.Take() + 1U;
        return fmt::format("CAST(substr(CAST(\"{0}\" AS BLOB), 1, {1}) || x'{2:02x}' || "
                           "substr(CAST(\"{0}\" AS BLOB), {3}) AS BLOB)",
                           column, place - 1, bytes.Take(), place + 1);
    }
    }
}

} // namespace

void MakeProject() {
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto a = topology.AddNode("node-a", "A", {0, 0}).Value();
    const auto b = topology.AddNode("node-b", "B", {10, 0}).Value();
    const auto c = topology.AddNode("node-c", "C", {20, 5}).Value();
    const std::vector<Topology::CPoint> bent = {{0, 0}, {5, 1}, {10, 0}};
    const auto ab = topology.AddSection("section-1", "AB", a.get(), b.get(), bent).Value();
    const auto bc = topology.AddSection("section-2", "BC", b.get(), c.get(), {}).Value();
    const Topology::CRings rings = {{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}};
    const auto catchment = topology.AddCatchment("catchment-1", "AB/1", ab.get(), rings).Value();
    Data::CDataRW::Write("kinds", catchment, 3, nullptr);
    Data::CDataRW::Write("area", catchment, 0.01, nullptr);
    Data::CDataRW::Write("TERRAIN_1", a, 101.5, nullptr);
    Data::CDataRW::Write("LEVEL_LINE_0", bc, 99.25, nullptr);
    Data::CDataRW::Write("LEVEL_LINE_POSITION", bc, 1, nullptr);
    Data::CDataRW::Write("PIPE_REF", ab, "pipe-1", nullptr);
    Data::CDataRW::Write("FLOW_WASTE_PER_S", ab, R"({"PERIOD":30})", nullptr);
    auto& manager = *Topology::CCatalogManager::Instance();
    Topology::CCatalog& pipes = *manager.GetCatalog(Topology::CCatalogManager::PipeCatalog, 1);
    const auto group = pipes.AddGroup("group-1", "PVC").Value();
    Topology::CPipeData table;
    table.m_shape = Topology::enmPipeShape::Table;
    table.m_table = {{0, 100}, {50, 120}, {100, 80}};
    Require(pipes.AddPipe(*group, "pipe-1", "DN 300", {}) && pipes.AddPipe(*group, "pipe-2", "bed", table),
            "the pipes of the good file");
    Topology::CCatalog& manholes = *manager.GetCatalog(Topology::CCatalogManager::ManholeCatalog, 1);
    const auto series = manholes.AddGroup("group-2", "concrete").Value();
    Require(static_cast<bool>(manholes.AddManhole(*series, "manhole-1", "DN 1000", {1.0, 0.2, 0.8, 2.5})),
            "the manhole of the good file");
}

void ChangeTables(std::string& file, const std::uint8_t* data, std::size_t size) {
    constexpr int MostEdits = 16;
    CMemoryFile memory(file);
    static const std::vector<CTable> tables = TablesOf(memory);
    CEditBytes bytes(data, size);
    memory.Run("BEGIN");
    for (int i = 0; i < MostEdits && !bytes.IsAtEnd(); ++i) {
        const CTable& table = tables[bytes.Take() % tables.size()];
        const std::string& column = table.m_columns[bytes.Take() % table.m_columns.size()];
        const unsigned row = bytes.Take() % 64;
        const std::uint8_t kind = bytes.Take();
        const std::string value = TakeValue(bytes, kind, table, column);
        memory.Run(fmt::format("UPDATE OR IGNORE \"{0}\" SET \"{1}\" = {2} WHERE rowid = "
                               "(SELECT rowid FROM \"{0}\" LIMIT 1 OFFSET {3})",
                               table.m_name, column, value, row));
    }
    memory.Run("COMMIT");
    file = memory.Bytes();
}

} // namespace Fuzz
