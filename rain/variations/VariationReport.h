// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/variations/VariationSearch.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace Rain {

/// The text of variations.txt for a search, in pieces: best combinations, their results, and all combinations that
/// were tried. Sections in the order of the GUIDs' characters; lines begin with their break, CR LF; numbers always have
/// a ".". It can be as long as a disk is large: append says whether to go on, with the number of combinations written
/// so far. False when it said no.
bool WriteVariations(const CRunInput& input, const CVariationSearch& search,
                     const std::function<bool(std::string_view text, std::uint64_t written)>& append);

} // namespace Rain
