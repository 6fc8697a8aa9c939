// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// A spreadsheet runs a cell that begins with = + - @ or a control character as a formula, whatever quotes it has in
/// the file. Names come from other people, so a table that we write has an apostrophe before such a text, unless it is
/// a number. A text that already has apostrophes there gets one more, so that reading is unambiguous.

/// Whether a field needs one more apostrophe: any number of them, then the beginning of a formula.
bool NeedsGuard(std::string_view field);

/// The text of a field as it was before it was written: without the apostrophe.
std::string_view WithoutGuard(std::string_view field);

} // namespace OLMGis::ProjectIo
