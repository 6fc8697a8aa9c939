// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// One word "KEY=VALUE", cut at its first equal sign.
struct CAssignment {
    std::string m_key;
    std::string m_value; ///< may be empty
};

/// The words in their order. BadWords for a word without an equal sign, without a key or with bytes that are no UTF-8;
/// shape is how messages call what was expected, as "TAG=VALUE".
OLMGis::Utility::Result<std::vector<CAssignment>> SplitAssignments(const std::vector<std::string>& words,
                                                                   std::string_view shape);

/// The parts of a comma-separated list, blanks around them taken off, empty ones left out.
std::vector<std::string> SplitList(std::string_view text);

} // namespace Cli
