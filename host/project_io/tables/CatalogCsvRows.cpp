// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CatalogCsvRows.h"

#include "host/gis_core/Utility.h"
#include "host/gis_core/ValueRange.h"
#include "host/network_core/CatalogGuids.h"
#include "host/network_core/CatalogManager.h"
#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace OLMGis::ProjectIo {

using Topology::CCatalogManager;
using Topology::CManholeData;
using Topology::CPipeData;
using Topology::enmPipeShape;
using Utility::CUtility;
using Utility::Done;
using Utility::Result;
using Utility::Status;

namespace {

constexpr std::array<std::string_view, 10> PipeColumns = {
    "group",           "name",    "guid",         "shape", "inner_width_mm",
    "inner_height_mm", "wall_mm", "roughness_mm", "type",  "min_diameter_mm"};
constexpr std::array<std::string_view, 7> ManholeColumns = {"group", "name", "guid",    "inner_diameter_m",
                                                            "h1_m",  "h2_m", "height_m"};
constexpr std::array<std::string_view, 5> NeededPipeColumns = {"group", "name", "shape", "inner_width_mm",
                                                               "roughness_mm"};
constexpr std::array<std::string_view, 6> NeededManholeColumns = {"group", "name", "inner_diameter_m",
                                                                  "h1_m",  "h2_m", "height_m"};
constexpr std::string_view PointsColumn = "points";
constexpr std::string_view GroupGuidColumn = "group_guid";

/// A number of a table. Values outside the possible range are mostly in the wrong unit: pipes are in mm, manholes in m.
/// Wide enough for river beds.
struct CQuantity {
    std::string_view m_column;
    double m_least;
    double m_greatest;
    double m_leastUsual;
    double m_greatestUsual;

    std::string_view GetUnit() const { return m_column.ends_with("_mm") ? "mm" : "m"; }

    Data::CValueRange GetRange() const {
        Data::CValueRange range;
        range.m_min = m_least;
        range.m_max = m_greatest;
        range.m_usualMin = m_leastUsual;
        range.m_usualMax = m_greatestUsual;
        return range;
    }
};
constexpr CQuantity InnerWidth = {"inner_width_mm", 1.0, 1e6, 20.0, 20000.0};
constexpr CQuantity InnerHeight = {"inner_height_mm", 1.0, 1e6, 20.0, 20000.0};
constexpr CQuantity Wall = {"wall_mm", 0.0, 5000.0, 0.0, 600.0};
constexpr CQuantity Roughness = {"roughness_mm", 0.0, 1e6, 0.01, 10.0};
constexpr CQuantity MinDiameter = {"min_diameter_mm", 0.0, 1e6, 0.0, 20000.0};
constexpr CQuantity ManholeDiameter = {"inner_diameter_m", 0.1, 50.0, 0.3, 10.0};
constexpr CQuantity H1 = {"h1_m", 0.0, 100.0, 0.0, 3.0};
constexpr CQuantity H2 = {"h2_m", 0.0, 100.0, 0.0, 10.0};
constexpr CQuantity ManholeHeight = {"height_m", 0.0, 100.0, 0.0, 30.0};
constexpr double RatioTolerance = 0.01; // of height to width: nominal sizes are rounded
constexpr std::size_t MostShapePoints = 10000;

std::span<const std::string_view> ColumnsOf(enmCatalogKind kind) {
    return kind == enmCatalogKind::Pipe ? std::span<const std::string_view>(PipeColumns)
                                        : std::span<const std::string_view>(ManholeColumns);
}

std::string_view CatalogIdOf(enmCatalogKind kind) {
    return kind == enmCatalogKind::Pipe ? CCatalogManager::PipeCatalog : CCatalogManager::ManholeCatalog;
}

/// Reads the cells of one row; keeps the first fault.
class CRowReader {
public:
    CRowReader(const CCsvReader& reader, enmCatalogValues values)
        : m_reader(reader), m_takesAny(values == enmCatalogValues::Any) {}

    bool TakesAny() const { return m_takesAny; }

    std::string_view Field(std::string_view column) const { return m_reader.GetField(m_reader.FindColumn(column)); }

    std::string Text(std::string_view column) {
        const std::string_view text = Field(column);
        if (text.empty())
            Fail(column, "found an empty text, expected a name");
        return std::string(text);
    }

    /// fallback: value of an empty or missing cell; without one a number is required.
    double Number(const CQuantity& quantity, std::optional<double> fallback = std::nullopt) {
        Data::CValueRange range = quantity.GetRange();
        if (m_takesAny) {
            range = Data::CValueRange();
            range.m_min = 0.0;
        }
        const std::string_view text = Field(quantity.m_column);
        if (CUtility::Trim(text).empty() && fallback)
            return *fallback;
        const auto number = CUtility::ParseDouble(text);
        const auto judgement = number ? Data::Judge(range, *number) : Data::enmJudgement::Impossible;
        if (judgement == Data::enmJudgement::Impossible)
            Fail(quantity.m_column, fmt::format("found {}, expected a number: {}", Quote(text),
                                                Data::PossibleValues(range, quantity.GetUnit())));
        if (judgement == Data::enmJudgement::Unusual)
            m_unusual.push_back({quantity.m_column, *number, Data::UsualValues(range, quantity.GetUnit())});
        return number.value_or(0.0);
    }

    std::vector<CCatalogCsvRow::CUnusual> TakeUnusual() { return std::move(m_unusual); }

    void Fail(std::string_view column, std::string_view text) {
        if (m_status)
            m_status = m_reader.Fault(column, text);
    }

    const Status& GetStatus() const { return m_status; }

private:
    const CCsvReader& m_reader;
    bool m_takesAny;
    Status m_status = Done();
    std::vector<CCatalogCsvRow::CUnusual> m_unusual;
};

/// "0:100 50:120": heights and widths, mm.
std::optional<std::vector<Topology::CShapePoint>> PointsOf(std::string_view text) {
    std::vector<std::string> pairs;
    CUtility::SplitString(text, pairs, ' ');
    std::vector<Topology::CShapePoint> points;
    for (const std::string& pair : pairs) {
        const std::size_t colon = pair.find(':');
        const auto height = CUtility::ParseDouble(std::string_view(pair).substr(0, colon));
        const auto width =
            colon == std::string::npos ? std::nullopt : CUtility::ParseDouble(std::string_view(pair).substr(colon + 1));
        const bool isAscending = points.empty() || (height && *height >= points.back().m_height);
        if (!height || !width || *height < 0.0 || *width < 0.0 || !isAscending)
            return std::nullopt;
        points.push_back({*height, *width});
    }
    if (points.size() < 2 || points.size() > MostShapePoints)
        return std::nullopt;
    return points;
}

void ReadShape(CRowReader& row, CPipeData& pipe) {
    const std::string_view shape = row.Field("shape");
    const Formulas::CShapeKind* const kind = Formulas::FindShapeKind(shape);
    if (kind == nullptr) {
        row.Fail("shape", fmt::format("found {}, expected {}", Quote(shape), fmt::join(Formulas::ShapeKeys(), ", ")));
        return;
    }
    pipe.m_shape = kind->m_shape;
    pipe.m_innerWidth = row.Number(InnerWidth);
    const bool isCircle = kind->m_dimensions == Formulas::enmShapeDimensions::Diameter;
    pipe.m_innerHeight = row.Number(InnerHeight, isCircle ? std::optional<double>(pipe.m_innerWidth) : std::nullopt);
    if (!row.TakesAny() && isCircle && pipe.m_innerHeight != pipe.m_innerWidth)
        row.Fail("inner_height_mm", fmt::format("found {} for a circle of width {}, expected both inner sizes equal",
                                                pipe.m_innerHeight, pipe.m_innerWidth));
    const double usualHeight = kind->m_heightRatio * pipe.m_innerWidth;
    if (!row.TakesAny() && !isCircle && kind->m_heightRatio > 0.0 &&
        std::abs(pipe.m_innerHeight - usualHeight) > RatioTolerance * usualHeight)
        row.Fail("inner_height_mm", fmt::format("found {} for the shape {} of width {}, expected {} times the width",
                                                pipe.m_innerHeight, shape, pipe.m_innerWidth, kind->m_heightRatio));
    const std::string_view points = row.Field(PointsColumn);
    if (kind->m_dimensions != Formulas::enmShapeDimensions::Levels) {
        if (!points.empty())
            row.Fail(PointsColumn,
                     fmt::format("found {} for a {}, expected points of a table only", Quote(points), shape));
        return;
    }
    if (auto table = PointsOf(points))
        pipe.m_table = std::move(*table);
    else
        row.Fail(PointsColumn,
                 fmt::format("found {}, expected pairs height:width in mm separated by blanks, two at least, "
                             "heights ascending",
                             Quote(points)));
}

CPipeData ReadPipe(CRowReader& row) {
    CPipeData pipe;
    ReadShape(row, pipe);
    pipe.m_wall = row.Number(Wall, 0.0);
    pipe.m_roughness = row.Number(Roughness);
    pipe.m_type = row.Field("type");
    pipe.m_minDiameter = row.Number(MinDiameter, 0.0);
    return pipe;
}

CManholeData ReadManhole(CRowReader& row) {
    CManholeData manhole;
    manhole.m_innerDiameter = row.Number(ManholeDiameter);
    manhole.m_h1 = row.Number(H1);
    manhole.m_h2 = row.Number(H2);
    manhole.m_height = row.Number(ManholeHeight);
    return manhole;
}

std::string TextOfPoints(const std::vector<Topology::CShapePoint>& points) {
    std::string text;
    for (const Topology::CShapePoint& point : points)
        text += fmt::format("{}{}:{}", text.empty() ? "" : " ", point.m_height, point.m_width);
    return text;
}

} // namespace

std::string GuidOfCatalogGroup(enmCatalogKind kind, std::string_view group) {
    return Topology::GuidOfCatalogGroup(CatalogIdOf(kind), group);
}

std::string GuidOfCatalogItem(enmCatalogKind kind, std::string_view group, std::string_view name) {
    return Topology::GuidOfCatalogItem(CatalogIdOf(kind), group, name);
}

Status CheckCatalogHead(const CCsvReader& reader, enmCatalogKind kind) {
    const std::span<const std::string_view> known = ColumnsOf(kind);
    for (const std::string& column : reader.GetColumns()) {
        const bool isFurther = column == GroupGuidColumn || (kind == enmCatalogKind::Pipe && column == PointsColumn);
        if (!isFurther && std::find(known.begin(), known.end(), column) == known.end())
            return reader.Fault(fmt::format("found the column {}, expected {}", Quote(column), fmt::join(known, ",")));
    }
    const std::span<const std::string_view> needed = kind == enmCatalogKind::Pipe
                                                         ? std::span<const std::string_view>(NeededPipeColumns)
                                                         : std::span<const std::string_view>(NeededManholeColumns);
    for (const std::string_view column : needed)
        if (!reader.FindColumn(column))
            return reader.Fault(fmt::format("found no column {}, expected {}", column, fmt::join(known, ",")));
    return Done();
}

Result<CCatalogCsvRow> ReadCatalogRow(const CCsvReader& reader, enmCatalogKind kind, enmCatalogValues values) {
    CRowReader cells(reader, values);
    CCatalogCsvRow row;
    row.m_group = cells.Text("group");
    row.m_name = cells.Text("name");
    row.m_guid = cells.Field("guid");
    if (row.m_guid.empty())
        row.m_guid = GuidOfCatalogItem(kind, row.m_group, row.m_name);
    row.m_groupGuid = cells.Field(GroupGuidColumn);
    if (row.m_groupGuid.empty())
        row.m_groupGuid = GuidOfCatalogGroup(kind, row.m_group);
    if (kind == enmCatalogKind::Pipe)
        row.m_pipe = ReadPipe(cells);
    else
        row.m_manhole = ReadManhole(cells);
    row.m_unusual = cells.TakeUnusual();
    if (!cells.GetStatus())
        return cells.GetStatus().GetError();
    return row;
}

void WriteCatalogHead(CCsvWriter& writer, enmCatalogKind kind, bool hasTables, bool hasGroupGuids) {
    for (const std::string_view column : ColumnsOf(kind))
        writer.Write(column);
    if (hasTables)
        writer.Write(PointsColumn);
    if (hasGroupGuids)
        writer.Write(GroupGuidColumn);
    writer.EndRow();
}

void WriteCatalogRow(CCsvWriter& writer, const Topology::CCatalogItem& item, enmCatalogKind kind, bool hasTables,
                     bool hasGroupGuids) {
    const auto group = item.GetParentItem();
    writer.Write(group->GetName());
    writer.Write(item.GetName());
    writer.Write(item.GetGUID());
    if (kind == enmCatalogKind::Pipe) {
        const CPipeData pipe = item.GetPipeData() != nullptr ? *item.GetPipeData() : CPipeData();
        writer.Write(Formulas::KindOfShape(pipe.m_shape).m_key);
        for (const double number : {pipe.m_innerWidth, pipe.m_innerHeight, pipe.m_wall, pipe.m_roughness})
            writer.Write(CUtility::ToText(number));
        writer.Write(pipe.m_type);
        writer.Write(CUtility::ToText(pipe.m_minDiameter));
        if (hasTables)
            writer.Write(TextOfPoints(pipe.m_table));
    } else {
        const CManholeData manhole = item.GetManholeData() != nullptr ? *item.GetManholeData() : CManholeData();
        for (const double number : {manhole.m_innerDiameter, manhole.m_h1, manhole.m_h2, manhole.m_height})
            writer.Write(CUtility::ToText(number));
    }
    if (hasGroupGuids)
        writer.Write(group->GetGUID());
    writer.EndRow();
}

} // namespace OLMGis::ProjectIo
