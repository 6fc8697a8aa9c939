// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <string_view>

/// What the checks do alike when they build their forms.
namespace Analysis {

/// Adds the one category of a form, with a name message.
boost::shared_ptr<OLMGis::Topology::CCategory> AddCategory(OLMGis::Topology::CPropertiesEx& form, int nameMessage);

/// Adds a required limit: a plain field, one number in all four boxes, one message for name and description.
void AddLimit(OLMGis::Topology::CCategory& category, std::string_view tag, int message, double value);

/// Adds a required choice of the whole numbers from 1 to count, shown as they are, that stands on 1 and has no default.
void AddNumberChoice(OLMGis::Topology::CCategory& category, std::string_view tag, int message, int count);

} // namespace Analysis
