// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/gis_core/ValueRange.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// A number that an option or argument takes.
struct CQuantity {
    const char* m_option; ///< or argument, for messages
    const char* m_unit;
    OLMGis::Data::CValueRange m_range;
};

OLMGis::Data::CValueRange Range(double least, double greatest, double leastUsual, double greatestUsual);

/// Reads a text into value. BadArguments for one that is no possible number of the quantity; an unusual one adds a
/// warning.
OLMGis::Utility::Status ReadNumber(const CQuantity& quantity, std::string_view text, double& value,
                                   std::vector<std::string>& warnings);

/// Adds a warning where the value is unusual.
void WarnOfUnusual(const CQuantity& quantity, double value, std::vector<std::string>& warnings);

/// The same for each verb that asks for it: m²/s; 0 where the walls alone brake.
CQuantity Viscosity();

} // namespace Cli
