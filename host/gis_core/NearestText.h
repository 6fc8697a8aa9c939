// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Utility {

/// The candidate that a mistyped word was probably meant to be: the one with the fewest changed letters, or one that
/// begins with the word. Null when none is near.
const std::string* FindNearest(std::string_view word, const std::vector<std::string>& candidates);

} // namespace OLMGis::Utility
