// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <array>
#include <string_view>

/// Codes of the national variants of the design rules: values of the project's setting "edition", and message 0 of the
/// catalogue. Fixed: project files rely on them.
namespace OLMGis::System::Editions {

inline constexpr std::string_view Standard = "STANDARD";
inline constexpr std::string_view Romanian = "RO";
inline constexpr std::string_view Bulgarian = "BLG";

/// All of them in the order in which lists show them, that of a new project first.
inline constexpr std::array All = {Standard, Romanian, Bulgarian};

} // namespace OLMGis::System::Editions
