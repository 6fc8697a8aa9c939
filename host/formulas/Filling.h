// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/UniformFlow.h"

namespace OLMGis::Formulas {

/// How a flow fills a section.
struct CFilling {
    double m_percent = 0.0;  ///< depth over inside height (%); overfull: flow over full-pipe capacity (%), above 100
    double m_depth = 0.0;    ///< m; overfull: the inside height
    double m_velocity = 0.0; ///< m/s; overfull: flow over full area
    double m_fullFlow = 0.0; ///< full-pipe capacity (m³/s)
    CWetSection m_wet;       ///< overfull: the full section
    bool m_isOverfull = false;
};

/// Uniform flow of a given Q (m³/s): the smallest depth at which Q(h) equals it.
///
/// Q(h) rises from 0 to a maximum above the full-pipe capacity and falls back to it at the top. So every flow up to the
/// full-pipe capacity has a depth on the rising branch; the capacity itself, in a circle, at about 82 % of the height.
/// A larger flow (by more than 1e-11 of it, which allows for rounding) is overfull, also where Q(h) would reach it near
/// the top: such a flow fills the pipe at the least disturbance.
///
/// A flow of 0 or below and not-a-number: empty, filling 0. A section without capacity (slope of 0 or below, no size,
/// other bad conditions) is overfull with any flow: filling infinite, velocity 0 where slope or area is missing. Never
/// NaN. Flow and depth agree to about 1e-13. Cost: constant; for a table linear in its levels.
CFilling FillShape(const CSectionShape& shape, double flow, const CFlowConditions& conditions);

/// The same for a circle of a diameter (m), by the angle that the water's surface spans.
CFilling FillCircle(double diameter, double flow, const CFlowConditions& conditions);

} // namespace OLMGis::Formulas
