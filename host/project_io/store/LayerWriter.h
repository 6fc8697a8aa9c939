// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"
#include "host/project_io/store/GeoPackageGeometry.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SpatialIndex.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Topology {
class CCatchment;
class CNode;
class CSection;
} // namespace OLMGis::Topology

namespace OLMGis::ProjectIo {

class COperationProgress;
class CSharedTexts;

/// The content of a layer, for the tables in which GeoPackage describes it.
struct CLayerContent {
    const Layout::CLayer* m_layer = nullptr;
    std::vector<const Data::CDataDefinition*> m_attributes; ///< columns after the fixed ones
    CExtent m_extent;
};

/// Writes the entities of one kind of the active project as a layer with its spatial index, in the order of the
/// network. Throws CFailure.
class CLayerWriter {
public:
    CLayerWriter(CSqliteDatabase& database, Data::enmEntityKind kind, int srsId, CSharedTexts& texts,
                 COperationProgress& progress);

    CLayerContent Write();

private:
    /// An attribute with its column of values.
    struct CAttribute {
        const Data::CDataDefinition* m_definition;
        const Data::CAttributeColumn* m_values;
        bool m_isShared;
    };

    template <class Entities>
    void FindAttributes(const Entities& entities);
    template <class Entities>
    void WriteAll(const Entities& entities);

    CGeometryEncoder::CBlob EncodeGeometry(const Topology::CNode& node);
    CGeometryEncoder::CBlob EncodeGeometry(const Topology::CSection& section);
    CGeometryEncoder::CBlob EncodeGeometry(const Topology::CCatchment& catchment);
    void BindReferences(const Topology::CNode& node);
    void BindReferences(const Topology::CSection& section);
    void BindReferences(const Topology::CCatchment& catchment);
    void BindAttributes(std::uint32_t row);
    void BindAttribute(int place, const CAttribute& attribute, std::uint32_t row);

    /// Binds name and GUID of an entity, or two nulls for none.
    template <class Entity>
    void BindReference(int nameColumn, int guidColumn, const Entity& entity);

    CSqliteDatabase& m_database;
    const Layout::CLayer& m_layer;
    CSharedTexts& m_texts;
    COperationProgress& m_progress;
    CGeometryEncoder m_encoder;
    CSpatialIndex m_index;
    CExtent m_extent;
    std::vector<CAttribute> m_attributes;
    CSqliteStatement* m_insert = nullptr; ///< while rows are written
};

} // namespace OLMGis::ProjectIo
