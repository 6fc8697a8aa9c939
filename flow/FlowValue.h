// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

/// Mark of an absent number once it has left its box; compared by exact equality. A stored value of just this size
/// counts as absent too.
inline constexpr double AbsentValue = -1000000.0;

/// The definition behind a key, null for an unknown one. Loops over sections fetch it once.
const OLMGis::Data::CDataDefinition* FindDefinition(std::string_view key);

/// A flow of a section (m³/s) or another of its numbers (unit of the key); AbsentValue for a null attribute, a null
/// section, an unknown key. One hash look-up.
double ReadFlowValue(boost::shared_ptr<OLMGis::Topology::CSection> section, std::string_view key);

/// The same without a search.
double ReadFlowValue(const OLMGis::Topology::CSection& section, const OLMGis::Data::CDataDefinition* definition);

/// A number of a section, or fallback where the attribute is null. AbsentValue is a value like any other here.
double ReadValueOr(const OLMGis::Topology::CSection& section, const OLMGis::Data::CDataDefinition* definition,
                   double fallback);
