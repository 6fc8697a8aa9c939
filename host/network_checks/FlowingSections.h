// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/AnalysedNetwork.h"
#include "host/network_core/ProgressWalk.h"
#include "host/sewage_core/SectionHydraulics.h"

#include <cmath>
#include <string_view>

namespace OLMGis::NetworkChecks {

/// Calls test(section, hydraulics) for each section that carries the flow of the design: a pipe, a slope, and a flow
/// that is finite and above 0. Viscosity as in the hydraulics of a design: water at about 20 °C.
template <class Test>
void ForEachFlowing(std::string_view caption, const Topology::CAnalysedNetwork& network, Test test) {
    constexpr double Viscosity = 1e-6; // m²/s
    Sewage::CSectionHydraulicsReader reader(Viscosity);
    WalkWithProgress(caption, network.m_sections, [&](const boost::shared_ptr<Topology::CSection>& section) {
        const Sewage::CSectionHydraulics hydraulics = reader.Calculate(section);
        if (hydraulics.m_gap == Sewage::enmHydraulicsGap::None && hydraulics.m_flow > 0.0 &&
            std::isfinite(hydraulics.m_flow))
            test(*section, hydraulics);
    });
}

} // namespace OLMGis::NetworkChecks
