// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/exchange/ExchangeParser.h"
#include "host/project_io/exchange/ExchangeRecords.h"
#include "host/project_io/exchange/FeaturePlaces.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::Topology {
class CCatalog;
}

namespace OLMGis::ProjectIo {

/// Turns features into records one by one; references are resolved later by LinkExchange. Checks every key, type and
/// value of a feature, and that GUIDs and names of nodes are unique.
class CExchangeReader final : public IExchangeSink {
public:
    /// Everything is borrowed; pipes is the catalogue that the property `pipe` refers to.
    CExchangeReader(const CFeaturePlaces& places, const Topology::CCatalog& pipes, CExchangeRecords& records,
                    CImportSummary& summary)
        : m_places(places), m_pipes(pipes), m_records(records), m_summary(summary) {}

    Utility::Status TakeCrs(std::string_view name) override;
    Utility::Status TakeCatalog(enmCatalogTable kind, std::string_view table) override;
    Utility::Status TakeFeature(const CExchangeFeature& feature) override;

    /// Nothing when the file names none.
    const std::optional<CCoordinateSystem>& GetCoordinateSystem() const { return m_system; }

private:
    Utility::Status ReadNode();
    Utility::Status ReadSection();
    Utility::Status ReadCatchment();
    Utility::Status ReadMainOutlet();

    Utility::Status ReadText(std::string_view key, bool isRequired, std::string_view& text);
    Utility::Status ReadGuid(std::string_view layer, std::string_view name, std::vector<Data::CKeptText>& guids,
                             CGuidIndex& index);
    Utility::Status ReadPipe();
    Utility::Status ReadTerrain();
    Utility::Status ReadKinds();
    Utility::Status ReadRings();
    Utility::Status ReadAttributes(Data::enmEntityKind kind, std::initializer_list<std::string_view> ownKeys);
    Utility::Status ReadAttribute(const Data::CDataDefinition& definition, const CJsonValue& value);
    Utility::Status Stage(const Data::CDataDefinition& definition, const Data::CDataBox& box);
    void AddFault(const Data::CDataDefinition& definition, double value);
    Utility::Status CheckGeometry(std::string_view type, bool isRequired);
    std::uint32_t NameId(std::string_view name);

    Utility::Error Fault(std::string_view text) const { return Fault({}, text); }
    Utility::Error Fault(std::string_view key, std::string_view text) const;
    std::string Label() const { return m_places.Label(m_feature->GetNumber(), m_feature->Label()); }
    std::uint32_t FeatureNumber() const { return static_cast<std::uint32_t>(m_feature->GetNumber()); }

    const CFeaturePlaces& m_places;
    const Topology::CCatalog& m_pipes;
    CExchangeRecords& m_records;
    CImportSummary& m_summary;
    std::optional<CCoordinateSystem> m_system;
    const CExchangeFeature* m_feature = nullptr; ///< the present one
    std::uint32_t m_record = 0;                  ///< its place among its kind
    std::string m_lastPipeText; ///< neighbouring sections often have the same pipe, which is then not looked up again
    std::string m_lastPipeGuid;
};

} // namespace OLMGis::ProjectIo
