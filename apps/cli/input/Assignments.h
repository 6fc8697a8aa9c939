// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// One argument "KEY=VALUE", split at its first equal sign.
struct CAssignment {
    std::string m_key;
    std::string m_value; ///< may be empty
};

/// The arguments in their order. BadArguments for one without an equal sign, without a key or with bytes that are no
/// UTF-8. shape: what messages expect, as "TAG=VALUE".
OLMGis::Utility::Result<std::vector<CAssignment>> SplitAssignments(const std::vector<std::string>& arguments,
                                                                   std::string_view shape);

} // namespace Cli
