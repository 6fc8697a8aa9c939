// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string_view>

/// Variants of the design rules, chosen by message 0 of the catalogue.
namespace Edition {

inline constexpr std::string_view Romanian = "RO";
inline constexpr std::string_view Bulgarian = "BLG";

/// Whether the edition code is this text, whole and by plain characters.
bool Is(std::string_view code);

} // namespace Edition
