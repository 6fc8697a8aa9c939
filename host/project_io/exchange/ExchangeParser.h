// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/exchange/ExchangeFeature.h"
#include "host/project_io/tables/CatalogCsv.h"

#include <istream>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// Members of the collection that hold the project's own catalogues as tables, so that a file is whole by itself. They
/// stand before the features.
inline constexpr std::string_view PipeCatalogMember = "pipe_catalog";
inline constexpr std::string_view ManholeCatalogMember = "manhole_catalog";

/// Takes what ParseExchange reads; an error ends the reading.
class IExchangeSink {
public:
    virtual ~IExchangeSink() = default;

    /// The name of the coordinate system, as it stands in the file; before, between or after the features.
    virtual Utility::Status TakeCrs(std::string_view name) = 0;

    /// A table of the project's own catalogue, see ImportCatalogCsv: the file carries what its sections refer to.
    virtual Utility::Status TakeCatalog(enmCatalogTable kind, std::string_view table) = 0;

    /// The next feature, complete; valid during the call.
    virtual Utility::Status TakeFeature(const CExchangeFeature& feature) = 0;
};

/// Lists and objects of an exchange file may stand in each other so deep.
inline constexpr std::size_t MostExchangeDepth = 64;

/// Reads a GeoJSON text of one FeatureCollection, one feature in memory at a time. BadInput, naming line and byte or
/// feature, for what is no such text; what a feature means is the sink's matter. Members that the format doesn't know
/// are passed over, as GeoJSON has it. Linear in the text.
Utility::Status ParseExchange(std::istream& stream, const std::string& name, IExchangeSink& sink);

} // namespace OLMGis::ProjectIo
