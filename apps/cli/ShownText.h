// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// Columns that a UTF-8 text takes on a terminal: combining marks none, wide East Asian characters two. Stray bytes
/// count as one each.
std::size_t DisplayWidth(std::string_view text);

/// Fit for a line on a terminal: control characters, which a name from a hostile file may hold, become "?".
std::string OnOneLine(std::string_view text);

/// The longest beginning of a text, on one line, that is not wider than width.
std::string CutToWidth(std::string_view text, std::size_t width);

/// A value for people: numbers with the given decimals, more where a small one would show as 0, with an exponent where
/// it is huge. Null is empty; not-a-number and infinities are "NaN", "Infinity", "-Infinity".
std::string ShowValue(const OLMGis::Data::CDataBox& value, int decimals);

/// A count with what is counted: "1 section", "121 sections".
std::string Count(std::size_t count, std::string_view thing);

/// ", did you mean X?" for the candidate nearest to a mistyped word; empty when none is near.
std::string Suggest(std::string_view word, const std::vector<std::string>& candidates);

} // namespace Cli
