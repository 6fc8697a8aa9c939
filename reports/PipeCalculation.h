// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/Filling.h"
#include "reports/Listing.h"

#include <optional>
#include <string>

namespace Reports {

/// Uniform flow in one pipe: the pipe, and a flow, a filling or neither.
struct CPipeQuestion {
    std::string m_shapeName; ///< circle, egg or box
    OLMGis::Formulas::CSectionShape m_shape;
    OLMGis::Formulas::CFlowConditions m_conditions;
    double m_width = 0.0;         ///< inside, mm
    double m_height = 0.0;        ///< inside, mm
    double m_slope = 0.0;         ///< 1/1000
    double m_roughness = 0.0;     ///< mm
    std::optional<double> m_flow; ///< m³/s
    std::optional<double> m_fill; ///< % of the inside height, 0 to 100
};

/// Full-pipe flow, velocity, area and hydraulic radius; then those of the flow or the filling, or without both the
/// greatest flow and velocity of all depths. One row per figure; nulls where a figure does not exist.
CListing MakePipeListing(const CPipeQuestion& question);

} // namespace Reports
