// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

namespace Flow {

/// Mark of an absent number outside a value box; compared by exact equality. A stored value of exactly this size counts
/// as absent too.
inline constexpr double AbsentValue = -1000000.0;

/// A flow of a section (m³/s) or another of its numbers (unit of the key); AbsentValue for a null attribute, a null
/// section, an unknown key. One hash look-up.
double ReadFlowValue(boost::shared_ptr<OLMGis::Topology::CSection> section, std::string_view key);

/// The same by a definition, without the look-up; null is an unknown key.
double ReadFlowValue(const OLMGis::Topology::CSection& section, const OLMGis::Data::CDataDefinition* definition);

/// A number of a section, or fallback where the attribute is null. A stored AbsentValue is returned as it is.
double ReadValueOr(const OLMGis::Topology::CSection& section, const OLMGis::Data::CDataDefinition* definition,
                   double fallback);

} // namespace Flow
