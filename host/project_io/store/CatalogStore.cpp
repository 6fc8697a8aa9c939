// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/CatalogStore.h"

#include "host/network_core/CatalogManager.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SqlReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <unordered_map>

namespace OLMGis::ProjectIo {

using Topology::CCatalog;
using Topology::CCatalogItem;
using Topology::CCatalogManager;
using Topology::CManholeData;
using Topology::CPipeData;
using Topology::CShapePoint;
using Topology::enmPipeShape;

namespace {

constexpr std::array CatalogIds = {CCatalogManager::PipeCatalog, CCatalogManager::ManholeCatalog};

/// Columns of the catalogue, as the layout orders them.
enum enmColumn : int {
    Id,
    Parent,
    CatalogId,
    Guid,
    Name,
    Shape,
    InnerWidth,
    InnerHeight,
    Wall,
    Roughness,
    Type,
    MinDiameter,
    InnerDiameter,
    H1,
    H2,
    Height,
    ColumnCount
};
enum enmShapeColumn : int { PointId, PointItem, PointHeight, PointWidth, PointColumnCount };

using CTables = std::unordered_map<std::int64_t, std::vector<CShapePoint>>; ///< points of shapes by row of the pipe

class CCatalogWriter {
public:
    explicit CCatalogWriter(CSqliteDatabase& database)
        : m_entry(database, Layout::InsertStatement(Layout::CatalogTable, ColumnCount)),
          m_point(database, Layout::InsertStatement(Layout::ShapesTable, PointColumnCount)) {}

    void Write(const CCatalog& catalog) {
        for (const auto& group : catalog.GetOwnGroups()) {
            const std::int64_t groupRow = WriteEntry(catalog, *group, 0);
            for (const auto& item : group->GetSubItems())
                WriteEntry(catalog, *item, groupRow);
        }
    }

private:
    void Put(int column, double value) { m_entry.Bind(column + 1, value); }
    void Put(int column, std::string_view text) { m_entry.Bind(column + 1, text); }

    std::int64_t WriteEntry(const CCatalog& catalog, const CCatalogItem& entry, std::int64_t groupRow) {
        for (int column = 0; column < ColumnCount; ++column)
            m_entry.BindNull(column + 1);
        m_entry.Bind(Id + 1, ++m_row);
        if (groupRow != 0)
            m_entry.Bind(Parent + 1, groupRow);
        Put(CatalogId, catalog.GetId());
        Put(Guid, entry.GetGUID());
        Put(Name, entry.GetName());
        if (const CPipeData* pipe = entry.GetPipeData(); pipe != nullptr)
            PutPipe(*pipe);
        if (const CManholeData* manhole = entry.GetManholeData(); manhole != nullptr)
            PutManhole(*manhole);
        m_entry.Run();
        return m_row;
    }

    void PutPipe(const CPipeData& pipe) {
        Put(Shape, Formulas::KindOfShape(pipe.m_shape).m_key);
        Put(InnerWidth, pipe.m_innerWidth);
        Put(InnerHeight, pipe.m_innerHeight);
        Put(Wall, pipe.m_wall);
        Put(Roughness, pipe.m_roughness);
        Put(Type, pipe.m_type);
        Put(MinDiameter, pipe.m_minDiameter);
        for (const CShapePoint& point : pipe.m_table)
            m_point.Bind(PointId + 1, ++m_pointRow)
                .Bind(PointItem + 1, m_row)
                .Bind(PointHeight + 1, point.m_height)
                .Bind(PointWidth + 1, point.m_width)
                .Run();
    }

    void PutManhole(const CManholeData& manhole) {
        Put(InnerDiameter, manhole.m_innerDiameter);
        Put(H1, manhole.m_h1);
        Put(H2, manhole.m_h2);
        Put(Height, manhole.m_height);
    }

    CSqliteStatement m_entry;
    CSqliteStatement m_point;
    std::int64_t m_row = 0;
    std::int64_t m_pointRow = 0;
};

/// A number of the catalogue; 0 for a null, as which not-a-number is stored.
double NumberAt(const CSqlReader& reader, int column, double least = 0.0) {
    const double number = reader.IsNull(column) ? 0.0 : reader.GetReal(column);
    if (!std::isfinite(number) || number < least)
        reader.Fail(fmt::format("found {}, expected a finite number not below {}", number, least));
    return number;
}

CTables ReadShapes(const CSqliteDatabase& database) {
    CTables tables;
    const auto columns = NamesOf(Layout::TableOf(Layout::ShapesTable).m_columns);
    CSqlReader reader(database, Layout::ShapesTable, columns, "id");
    while (reader.Next()) {
        std::vector<CShapePoint>& points = tables[reader.GetInteger(PointItem)];
        const double height = NumberAt(reader, PointHeight, std::numeric_limits<double>::lowest());
        const double least = points.empty() ? 0.0 : points.back().m_height;
        if (height < least)
            reader.Fail(fmt::format("found the height {} mm below the one before it, {} mm, expected heights in "
                                    "ascending order",
                                    height, least));
        const CShapePoint point{height, NumberAt(reader, PointWidth)};
        points.push_back(point);
    }
    return tables;
}

class CCatalogReader {
public:
    CCatalogReader(const CSqliteDatabase& database, CTables tables)
        : m_tables(std::move(tables)),
          m_reader(database, Layout::CatalogTable, NamesOf(Layout::TableOf(Layout::CatalogTable).m_columns), "id") {}

    void Read() {
        while (m_reader.Next()) {
            CCatalog* const catalog = CCatalogManager::Instance()->GetCatalog(m_reader.GetText(CatalogId), 1);
            if (catalog == nullptr)
                m_reader.Fail(fmt::format("found the catalogue \"{}\", expected {} or {}", m_reader.GetText(CatalogId),
                                          CatalogIds[0], CatalogIds[1]));
            if (m_reader.IsNull(Parent))
                m_groups.emplace(m_reader.GetKey(),
                                 CGroup{catalog, Entered(catalog->AddGroup(GetText(Guid), GetText(Name)))});
            else
                ReadItem(*catalog);
        }
    }

private:
    struct CGroup {
        CCatalog* m_catalog;
        boost::shared_ptr<CCatalogItem> m_item;
    };

    std::string GetText(int column) { return std::string(m_reader.GetText(column)); }

    boost::shared_ptr<CCatalogItem> Entered(const Utility::Result<boost::shared_ptr<CCatalogItem>>& entry) const {
        if (!entry)
            m_reader.Fail(entry.GetError().message);
        return entry.Value();
    }

    void ReadItem(CCatalog& catalog) {
        const auto group = m_groups.find(m_reader.GetInteger(Parent));
        if (group == m_groups.end() || group->second.m_catalog != &catalog)
            m_reader.Fail(fmt::format("found row {} as its group, expected a group of the catalogue {} before it",
                                      m_reader.GetInteger(Parent), catalog.GetId()));
        CCatalogItem& parent = *group->second.m_item;
        if (catalog.GetId() == CCatalogManager::PipeCatalog)
            Entered(catalog.AddPipe(parent, GetText(Guid), GetText(Name), ReadPipe()));
        else
            Entered(catalog.AddManhole(parent, GetText(Guid), GetText(Name), ReadManhole()));
    }

    CPipeData ReadPipe() {
        const Formulas::CShapeKind* const shape = Formulas::FindShapeKind(m_reader.GetText(Shape));
        if (shape == nullptr)
            m_reader.Fail(fmt::format("found the shape \"{}\", expected {}", m_reader.GetText(Shape),
                                      fmt::join(Formulas::ShapeKeys(), ", ")));
        CPipeData pipe;
        pipe.m_shape = shape->m_shape;
        pipe.m_innerWidth = NumberAt(m_reader, InnerWidth);
        pipe.m_innerHeight = NumberAt(m_reader, InnerHeight);
        pipe.m_wall = NumberAt(m_reader, Wall);
        pipe.m_roughness = NumberAt(m_reader, Roughness);
        pipe.m_type = GetText(Type);
        pipe.m_minDiameter = NumberAt(m_reader, MinDiameter);
        if (const auto table = m_tables.find(m_reader.GetKey()); table != m_tables.end())
            pipe.m_table = std::move(table->second);
        if (pipe.m_shape == enmPipeShape::Table && pipe.m_table.size() < 2)
            m_reader.Fail(fmt::format("found a table shape of {} points, expected 2 at least", pipe.m_table.size()));
        return pipe;
    }

    CManholeData ReadManhole() const {
        return {NumberAt(m_reader, InnerDiameter), NumberAt(m_reader, H1), NumberAt(m_reader, H2),
                NumberAt(m_reader, Height)};
    }

    CTables m_tables;
    std::unordered_map<std::int64_t, CGroup> m_groups; ///< by row
    CSqlReader m_reader;
};

} // namespace

void WriteCatalogs(CSqliteDatabase& database) {
    CCatalogWriter writer(database);
    for (const std::string_view id : CatalogIds)
        writer.Write(*CCatalogManager::Instance()->GetCatalog(id, 1));
}

void ReadCatalogs(const CSqliteDatabase& database) {
    CCatalogReader(database, ReadShapes(database)).Read();
}

} // namespace OLMGis::ProjectIo
