// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/SpatialIndex.h"

#include "host/project_io/store/SqliteDatabase.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

namespace OLMGis::ProjectIo {

namespace {

// SQLite's R-tree of two dimensions in pages of 4096 bytes: a node is 4 bytes and 51 cells of 24 bytes, all big-endian.
constexpr std::size_t CellsPerNode = 51;
constexpr std::size_t CellBytes = 24;
constexpr std::size_t NodeBytes = 4 + CellsPerNode * CellBytes;
constexpr std::int64_t RootNode = 1;

float RoundedDown(double value) {
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) > value ? std::nextafter(rounded, -std::numeric_limits<float>::infinity())
                                                : rounded;
}

float RoundedUp(double value) {
    const auto rounded = static_cast<float>(value);
    return static_cast<double>(rounded) < value ? std::nextafter(rounded, std::numeric_limits<float>::infinity())
                                                : rounded;
}

template <class Number>
void PutBigEndian(std::byte* place, Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i)
        place[i] = static_cast<std::byte>(number >> (8 * (sizeof number - 1 - i)));
}

std::size_t CeilDivide(std::size_t a, std::size_t b) {
    return (a + b - 1) / b;
}

} // namespace

/// Writes nodes, owners and parents into the tables of one R-tree.
class CSpatialIndex::CTableWriter {
public:
    CTableWriter(CSqliteDatabase& database, const std::string& name)
        : m_database(database), m_name(name),
          m_node(database, fmt::format("INSERT OR REPLACE INTO {} VALUES (?, ?)", Quoted(name + "_node"))) {}

    /// depth: levels below the root; stored in the root only, 0 for other nodes.
    void PutNode(std::int64_t number, std::size_t depth, const std::vector<CCell>& cells, const CTile& tile) {
        std::array<std::byte, NodeBytes> node{};
        PutBigEndian(node.data(), static_cast<std::uint16_t>(depth));
        PutBigEndian(node.data() + 2, static_cast<std::uint16_t>(tile.m_end - tile.m_begin));
        std::byte* place = node.data() + 4;
        for (std::size_t i = tile.m_begin; i < tile.m_end; ++i) {
            const CCell& cell = cells[i];
            PutBigEndian(place, static_cast<std::uint64_t>(cell.m_id));
            place += 8;
            for (const float coordinate : {cell.m_minX, cell.m_maxX, cell.m_minY, cell.m_maxY}) {
                PutBigEndian(place, std::bit_cast<std::uint32_t>(coordinate));
                place += 4;
            }
        }
        m_node.Bind(1, number).Bind(2, std::span<const std::byte>(node)).Run();
    }

    /// owners: ids of cells, ascending, with the node that contains each.
    void PutOwners(const char* tableEnd, const std::vector<std::pair<std::int64_t, std::uint32_t>>& owners) {
        CSqliteStatement insert(m_database, fmt::format("INSERT INTO {} VALUES (?, ?)", Quoted(m_name + tableEnd)));
        for (const auto& [id, owner] : owners)
            insert.Bind(1, id).Bind(2, std::int64_t{owner}).Run();
    }

private:
    CSqliteDatabase& m_database;
    const std::string& m_name;
    CSqliteStatement m_node;
};

void CSpatialIndex::Add(std::int64_t row, const CExtent& extent) {
    if (!extent.IsEmpty())
        m_cells.push_back({row, RoundedDown(extent.m_minX), RoundedUp(extent.m_maxX), RoundedDown(extent.m_minY),
                           RoundedUp(extent.m_maxY)});
}

/// Sorts cells into tiles: vertical strips by the middle in x, each divided by the middle in y. Tiles have nearly equal
/// sizes, because the R-tree requires a minimum number of cells in a node.
std::vector<CSpatialIndex::CTile> CSpatialIndex::Pack(std::vector<CCell>& cells) {
    const auto byMiddle = [](auto low, auto high) {
        return [low, high](const CCell& a, const CCell& b) {
            const double middleOfA = static_cast<double>(a.*low) + static_cast<double>(a.*high);
            const double middleOfB = static_cast<double>(b.*low) + static_cast<double>(b.*high);
            return middleOfA != middleOfB ? middleOfA < middleOfB : a.m_id < b.m_id;
        };
    };
    std::sort(cells.begin(), cells.end(), byMiddle(&CCell::m_minX, &CCell::m_maxX));
    const std::size_t nodes = CeilDivide(cells.size(), CellsPerNode);
    const auto strips = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(nodes))));
    std::vector<CTile> tiles;
    tiles.reserve(nodes + strips);
    for (std::size_t strip = 0; strip < strips; ++strip) {
        const std::size_t begin = cells.size() * strip / strips;
        const std::size_t size = cells.size() * (strip + 1) / strips - begin;
        const auto first = cells.begin() + static_cast<std::ptrdiff_t>(begin);
        std::sort(first, first + static_cast<std::ptrdiff_t>(size), byMiddle(&CCell::m_minY, &CCell::m_maxY));
        const std::size_t pieces = CeilDivide(size, CellsPerNode);
        for (std::size_t piece = 0; piece < pieces; ++piece)
            tiles.push_back({begin + size * piece / pieces, begin + size * (piece + 1) / pieces});
    }
    return tiles;
}

CSpatialIndex::CCell CSpatialIndex::Around(std::int64_t id, const std::vector<CCell>& cells, const CTile& tile) {
    CCell around = cells[tile.m_begin];
    around.m_id = id;
    for (std::size_t i = tile.m_begin + 1; i < tile.m_end; ++i) {
        around.m_minX = std::min(around.m_minX, cells[i].m_minX);
        around.m_maxX = std::max(around.m_maxX, cells[i].m_maxX);
        around.m_minY = std::min(around.m_minY, cells[i].m_minY);
        around.m_maxY = std::max(around.m_maxY, cells[i].m_maxY);
    }
    return around;
}

void CSpatialIndex::Write(CSqliteDatabase& database, std::string_view table, std::string_view geometryColumn) {
    const std::string name = fmt::format("rtree_{}_{}", table, geometryColumn);
    database.Execute(fmt::format("CREATE VIRTUAL TABLE {} USING rtree(id, minx, maxx, miny, maxy)", Quoted(name)));
    if (m_cells.empty())
        return;
    CTableWriter writer(database, name);
    std::vector<std::pair<std::int64_t, std::uint32_t>> owners; // keys of rows may be any numbers in any order
    owners.reserve(m_cells.size());
    std::vector<std::uint32_t> parents(RootNode + 1);
    std::vector<CCell> cells = std::move(m_cells);
    m_cells.clear();
    std::size_t depth = 0;
    for (; cells.size() > CellsPerNode; ++depth) {
        std::vector<CCell> above;
        for (const CTile& tile : Pack(cells)) {
            const auto number = static_cast<std::uint32_t>(parents.size());
            parents.push_back(RootNode); // replaced when a level between is packed
            writer.PutNode(number, 0, cells, tile);
            for (std::size_t i = tile.m_begin; i < tile.m_end; ++i)
                if (depth == 0)
                    owners.emplace_back(cells[i].m_id, number);
                else
                    parents[static_cast<std::size_t>(cells[i].m_id)] = number;
            above.push_back(Around(number, cells, tile));
        }
        cells = std::move(above);
    }
    writer.PutNode(RootNode, depth, cells, {0, cells.size()});
    if (depth == 0)
        for (const CCell& cell : cells)
            owners.emplace_back(cell.m_id, RootNode);
    std::sort(owners.begin(), owners.end());
    writer.PutOwners("_rowid", owners);
    std::vector<std::pair<std::int64_t, std::uint32_t>> nodes;
    for (std::size_t id = 0; id < parents.size(); ++id)
        if (parents[id] != 0)
            nodes.emplace_back(static_cast<std::int64_t>(id), parents[id]);
    writer.PutOwners("_parent", nodes);
}

void CreateSpatialIndexTriggers(CSqliteDatabase& database, std::string_view table, std::string_view geometryColumn) {
    constexpr const char* Enter = "INSERT OR REPLACE INTO {rtree} VALUES (NEW.\"fid\", ST_MinX(NEW.{geom}), "
                                  "ST_MaxX(NEW.{geom}), ST_MinY(NEW.{geom}), ST_MaxY(NEW.{geom}));";
    constexpr const char* Remove = "DELETE FROM {rtree} WHERE id = OLD.\"fid\";";
    constexpr const char* RemoveBoth = "DELETE FROM {rtree} WHERE id IN (OLD.\"fid\", NEW.\"fid\");";
    constexpr const char* HasGeometry = "(NEW.{geom} NOTNULL AND NOT ST_IsEmpty(NEW.{geom}))";
    constexpr const char* HasNone = "(NEW.{geom} ISNULL OR ST_IsEmpty(NEW.{geom}))";
    const std::string sameRow = "OLD.\"fid\" = NEW.\"fid\" AND ";
    const std::string otherRow = "OLD.\"fid\" != NEW.\"fid\" AND ";
    const std::string move = std::string(Remove) + " " + Enter;

    const auto create = [&](std::string_view name, std::string_view event, const std::string& condition,
                            std::string_view action) {
        const std::string sql = fmt::format("CREATE TRIGGER {{trigger}} AFTER {} ON {{table}} WHEN {} BEGIN {} END",
                                            event, condition, action);
        const std::string tree = fmt::format("rtree_{}_{}", table, geometryColumn);
        database.Execute(fmt::format(fmt::runtime(sql), fmt::arg("trigger", Quoted(fmt::format("{}_{}", tree, name))),
                                     fmt::arg("table", Quoted(table)), fmt::arg("geom", Quoted(geometryColumn)),
                                     fmt::arg("rtree", Quoted(tree))));
    };
    create("insert", "INSERT", HasGeometry, Enter);
    create("update1", "UPDATE OF {geom}", sameRow + HasGeometry, Enter);
    create("update2", "UPDATE OF {geom}", sameRow + HasNone, Remove);
    create("update3", "UPDATE", otherRow + HasGeometry, move);
    create("update4", "UPDATE", otherRow + HasNone, RemoveBoth);
    create("delete", "DELETE", "OLD.{geom} NOTNULL", Remove);
}

} // namespace OLMGis::ProjectIo
