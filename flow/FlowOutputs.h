// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

#include <initializer_list>
#include <utility>
#include <vector>

/// The lists of results with which a calculator presents itself.
namespace Flow::Outputs {

inline constexpr int Kind = 6; ///< fixed for every output of every calculator: others rely on it

/// The definitions of keys, in order; null for a key that the installation doesn't define.
std::vector<const OLMGis::Data::CDataDefinition*> Definitions(std::initializer_list<const char*> keys);

/// The same, each with Kind.
std::vector<std::pair<const OLMGis::Data::CDataDefinition*, int>>
DefinitionsWithKind(std::initializer_list<const char*> keys);

} // namespace Flow::Outputs
