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

namespace OLMGis::Topology {
class CCatalog;
}

namespace OLMGis::ProjectIo {

/// Refused when the active project has a network. name: of the source in the message.
Utility::Status CheckEmptyProject(const std::string& name);

/// The catalogue of the active project that the pipe of a section refers to.
const Topology::CCatalog& GetPipesToReferTo();

/// The way of all records into the active project, which must be empty: measures and links them, enters them when
/// nothing is wrong, makes the coordinate system the project's (nothing: that stays) and completes the summary. Nothing
/// is entered when the answer is an error: BadInput with what is wrong. Linear.
Utility::Status EnterExchange(CExchangeRecords& records, const std::optional<CCoordinateSystem>& system,
                              const CFeaturePlaces& places, CImportSummary& summary);

} // namespace OLMGis::ProjectIo
