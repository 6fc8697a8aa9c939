// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Fuzz {

/// Fills the active project with a little of everything that a project file contains.
void MakeProject();

/// Changes values in the tables of a project file, the list of tables among them. An edit is four bytes: table, column,
/// row and kind; then what the kind needs (see the source). Edits that the file refuses are skipped.
void ChangeTables(std::string& file, const std::uint8_t* data, std::size_t size);

} // namespace Fuzz
