// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// Keys under which calculators hand flows on as attributes of sections. All flows in m³/s.
namespace FlowKeys {

inline constexpr const char* SpecificFlow = "SPECIFIC_FLOW"; ///< m³/s per m of weighted length
inline constexpr const char* WastePercent = "FLOW_WASTE_PER";
inline constexpr const char* WastePercentParameters = "FLOW_WASTE_PER_S";
inline constexpr const char* DensityCoefficient = "FLOW_COEFDEN"; ///< -, entered on the section

} // namespace FlowKeys
