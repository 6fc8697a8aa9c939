// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <string>
#include <string_view>
#include <vector>

namespace Reports {

/// Columns that a UTF-8 text takes on a terminal: combining marks none, wide East Asian characters two. Stray bytes
/// count as one each.
std::size_t DisplayWidth(std::string_view text);

/// A text for one line of a terminal: control characters, which names from hostile files may contain, become "?"; so do
/// those that turn the direction of writing, with which a text can look like another one.
std::string OnOneLine(std::string_view text);

/// A text of several lines for a terminal: control characters other than line ends and tabs become "?".
std::string WithoutControls(std::string_view text);

/// The longest beginning of a text, made fit for one line, that is not wider than width (columns).
std::string CutToWidth(std::string_view text, std::size_t width);

/// A value for people: numbers with the given decimals (below 0: as many as they have), more where a small one would
/// show as 0, with an exponent where it is huge. Null is empty; not-a-number and infinities are "NaN", "Infinity",
/// "-Infinity".
std::string ShowValue(const OLMGis::Data::CDataBox& value, int decimals);

/// A number of things: "1 section", "121 sections".
std::string Count(std::size_t count, std::string_view thing);

/// ", did you mean X?" for the candidate nearest to a mistyped word; empty when none is near.
std::string Suggest(std::string_view word, const std::vector<std::string>& candidates);

/// The first names of a list: "P1, P2, ..." with at most that many.
std::string FirstNames(const std::vector<std::string_view>& names, std::size_t most);

} // namespace Reports
