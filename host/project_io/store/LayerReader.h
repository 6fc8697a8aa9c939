// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeStore.h"
#include "host/network_core/TopologyStorage.h"
#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SqlReader.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OLMGis::ProjectIo {

class COperationProgress;

/// Enters the rows of one layer into the topology and the attributes of the active project. Changes by other
/// programs are accepted as long as they make sense: rows added, removed, moved, reordered, attributes emptied. A row
/// without a GUID gets one made from layer, name and row; a node without a name gets one made from its row. Throws
/// CFailure.
class CLayerReader {
public:
    using CTextIds = std::unordered_map<std::int64_t, std::uint32_t>; ///< ids in the pool by row of the shared texts

    /// metresPerUnit: factor from the coordinates of the file to m.
    CLayerReader(const CSqliteDatabase& database, const CFileTables& tables, Data::enmEntityKind kind,
                 const CTextIds& texts, double metresPerUnit, CWarnings& warnings);

    /// Rows in the layer.
    std::size_t GetRowCount() const { return m_rowCount; }

    void Read(COperationProgress& progress);

private:
    /// An attribute with its column of values.
    struct CAttribute {
        const Data::CDataDefinition* m_definition;
        Data::CAttributeColumn* m_values;
        bool m_isShared;
    };

    void SortColumns(const std::vector<std::string>& inFile);
    void LookAtOrder();

    std::uint32_t EnterNode();
    std::uint32_t EnterSection();
    std::uint32_t EnterCatchment();
    void ReadIdentity(bool needsName);
    Topology::CNode* FindNode(int nameColumn, int guidColumn);
    Topology::CSection* FindSection();
    void WarnOfOtherName(std::string_view reference, std::string_view found, std::string_view named);
    void ReadAttributes(std::uint32_t row);
    std::optional<Data::CStoredValue> ReadAttribute(int column, const CAttribute& attribute);
    void Expect(const Utility::Status& status) const;
    void ToMetres(std::span<Topology::CPoint> points) const;

    template <class Entity>
    std::uint32_t Entered(const Utility::Result<boost::shared_ptr<Entity>>& entity) const;

    const CSqliteDatabase& m_database;
    const Layout::CLayer& m_layer;
    const CTextIds& m_texts;
    double m_metresPerUnit;
    CWarnings& m_warnings;
    Topology::CTopologyStorage& m_topology;
    std::vector<std::string> m_columns; ///< fixed ones, then those of the attributes
    std::vector<CAttribute> m_attributes;
    std::size_t m_rowCount = 0;
    bool m_isInOrder = true; ///< whether the order of rows is the order of the network

    // While rows are read.
    CSqlReader* m_reader = nullptr;
    std::string m_guid;
    std::string m_name;
    std::vector<Topology::CPoint> m_line;
};

/// The GUID of a row's entity: as in the file, else made from the layer, the name and the key of the row.
std::string GuidOfRow(const Layout::CLayer& layer, std::int64_t key, std::string_view guid, std::string_view name,
                      bool isNameMissing);

} // namespace OLMGis::ProjectIo
