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

/// Members of the collection with the project's own catalogues as tables, so that the file contains every pipe that it
/// refers to. They come before the features.
inline constexpr std::string_view PipeCatalogMember = "pipe_catalog";
inline constexpr std::string_view ManholeCatalogMember = "manhole_catalog";

/// Receives what ParseExchange reads; an error ends the reading.
class IExchangeSink {
public:
    virtual ~IExchangeSink() = default;

    /// The name of the coordinate system as it is in the file; called before, between or after the features.
    virtual Utility::Status TakeCrs(std::string_view name) = 0;

    /// A table of the project's own catalogue, see ImportCatalogCsv.
    virtual Utility::Status TakeCatalog(enmCatalogTable kind, std::string_view table) = 0;

    /// The next feature, complete; valid during the call.
    virtual Utility::Status TakeFeature(const CExchangeFeature& feature) = 0;
};

/// How deep lists and objects of an exchange file may be nested.
inline constexpr std::size_t MostExchangeDepth = 64;

/// Reads a GeoJSON text of one FeatureCollection, one feature in memory at a time. BadInput, naming line and byte or
/// feature, for any other text; the sink checks the content of features. Unknown members are skipped, as GeoJSON asks.
/// Linear in the text.
Utility::Status ParseExchange(std::istream& stream, const std::string& name, IExchangeSink& sink);

} // namespace OLMGis::ProjectIo
