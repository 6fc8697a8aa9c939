// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"
#include "reports/AttributeListing.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using Reports::CDefinitionList;

/// The definition of a key of a kind of entity. BadArguments for an unknown key and for one of another kind.
OLMGis::Utility::Result<const OLMGis::Data::CDataDefinition*> FindKey(OLMGis::Data::enmEntityKind kind,
                                                                      std::string_view key);

/// The attribute of sections in m³/s that --flow names. BadArguments for another key.
OLMGis::Utility::Result<const OLMGis::Data::CDataDefinition*> FindFlowKey(std::string_view key);

/// The same as FindKey for several keys; each definition once, in the order of the keys.
OLMGis::Utility::Result<CDefinitionList> FindKeys(OLMGis::Data::enmEntityKind kind,
                                                  const std::vector<std::string>& keys);

/// A value from its text; the empty text is null. BadArguments for a key that only calculations store, and for a text
/// that is no value of it.
OLMGis::Utility::Result<OLMGis::Data::CDataBox> ReadValue(const OLMGis::Data::CDataDefinition& definition,
                                                          std::string_view text);

} // namespace Cli
