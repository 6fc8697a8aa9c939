// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string_view>

/// National variants of the design rules, chosen by message 0 of the catalogue.
namespace Flow::Edition {

inline constexpr std::string_view Romanian = "RO";
inline constexpr std::string_view Bulgarian = "BLG";

/// Whether the edition code is exactly this text.
bool Is(std::string_view code);

} // namespace Flow::Edition
