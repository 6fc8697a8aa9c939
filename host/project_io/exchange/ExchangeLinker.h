// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/exchange/ExchangeRecords.h"
#include "host/project_io/exchange/FeaturePlaces.h"

#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// A drawn end of a section within this distance of a node (m) snaps to it: other programs round coordinates to the
/// millimetre.
inline constexpr double SnapTolerance = 0.001;

/// Joins the records of an exchange file: sections to nodes, by name or by their drawn ends, catchments to sections,
/// main outlets to both. BadInput, naming file and feature, for what refers to nothing or to something else than it
/// should; where places list all faults, these go to the records and the answer is Done. What is odd but usable is
/// noted in the summary. Linear.
Utility::Status LinkExchange(CExchangeRecords& records, const CFeaturePlaces& places, CImportSummary& summary);

} // namespace OLMGis::ProjectIo
