// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Editions.h"

#include <string_view>

/// National variants of the design rules, chosen by message 0 of the catalogue.
namespace Flow::Edition {

using OLMGis::System::Editions::Bulgarian;
using OLMGis::System::Editions::Romanian;

/// Whether the edition code is exactly this text.
bool Is(std::string_view code);

} // namespace Flow::Edition
