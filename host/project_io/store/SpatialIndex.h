// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/GeoPackageGeometry.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// Builds the R-tree of a layer at once: entries are packed into full nodes by sort-tile-recursive tiling (Leutenegger,
/// Lopez and Edgington 1997) and written directly into the tables of SQLite's R-tree, in its documented format. Reason:
/// with one INSERT per row, opening and saving a project takes twice as long. The result is an ordinary R-tree that any
/// program may change.
class CSpatialIndex {
public:
    /// Adds the extent of a row (m); in any order. An empty extent is left out.
    void Add(std::int64_t row, const CExtent& extent);

    /// Creates and fills the R-tree of a layer's geometry column. Linear, except for two sorts. Throws CFailure.
    void Write(CSqliteDatabase& database, std::string_view table, std::string_view geometryColumn);

private:
    /// As the R-tree stores it: coordinates rounded outwards to single precision.
    struct CCell {
        std::int64_t m_id; ///< row of the layer in a leaf, number of a node above
        float m_minX;
        float m_maxX;
        float m_minY;
        float m_maxY;
    };
    /// A range of cells that becomes one node.
    struct CTile {
        std::size_t m_begin;
        std::size_t m_end;
    };
    class CTableWriter;

    static std::vector<CTile> Pack(std::vector<CCell>& cells);
    static CCell Around(std::int64_t id, const std::vector<CCell>& cells, const CTile& tile);

    std::vector<CCell> m_cells;
};

/// Creates the triggers that update the R-tree when another program changes the layer. Names and texts are those of the
/// GeoPackage standard. Throws CFailure.
void CreateSpatialIndexTriggers(CSqliteDatabase& database, std::string_view table, std::string_view geometryColumn);

} // namespace OLMGis::ProjectIo
