// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/exchange/ExchangeRecords.h"
#include "host/project_io/exchange/FeaturePlaces.h"

#include <optional>
#include <string>

namespace OLMGis::ProjectIo {

/// Converts the coordinates of all records to m, notes unsound polygons among the faults, and gives catchments without
/// an area that of their polygon (ha).
/// Nothing for system: plane coordinates in m. BadInput, naming the first features, for coordinates in degrees from
/// which a length, an area or an end of a section would be taken. Linear.
Utility::Status MeasureExchange(CExchangeRecords& records, const std::optional<CCoordinateSystem>& system,
                                const CFeaturePlaces& places, CImportSummary& summary);

} // namespace OLMGis::ProjectIo
