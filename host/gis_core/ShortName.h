// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::Utility {

/// A name for a message: at most 80 characters, the last one of them an ellipsis where it is longer. Names in files of
/// other people may have any length.
std::string ShortName(std::string_view name);

} // namespace OLMGis::Utility
