// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpRoughness.h"

#include "host/formulas/Roughness.h"
#include "host/formulas/Units.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

namespace {

// Outside it the sixth power of n gives lengths without physical meaning, see Formulas::RoughnessOfManning.
constexpr double LeastSoundManning = 0.009;
constexpr double GreatestSoundManning = 0.03;

/// Above this share of the height the walls are no longer rough but part of the shape.
constexpr double RoughShare = 0.1;

double Derive(double manning) {
    return std::min(Formulas::RoughnessOfManning(manning), CInpRoughness::Greatest);
}

} // namespace

double CInpRoughness::Take(double manning, double height, std::string_view conduit) {
    if (!(manning > 0.0))
        return 0.0;
    m_leastManning = m_count == 0 ? manning : std::min(m_leastManning, manning);
    m_greatestManning = std::max(m_greatestManning, manning);
    ++m_count;
    const double roughness = Derive(manning);
    if (manning < LeastSoundManning || manning > GreatestSoundManning)
        m_outside.Add(conduit);
    if (height > 0.0 && roughness > RoughShare * height * Formulas::MillimetresPerMetre)
        m_tooRough.Add(conduit);
    if (roughness == Greatest)
        m_limited.Add(conduit);
    return roughness;
}

void CInpRoughness::Report(CImportSummary& summary) const {
    if (m_count == 0)
        return;
    summary.Count(fmt::format("roughness k derived from Manning's n: n {:.4g} to {:.4g}, k {:.3g} to {:.3g} mm "
                              "(k = (26 n)^6 in m, sound for n {} to {})",
                              m_leastManning, m_greatestManning, Derive(m_leastManning), Derive(m_greatestManning),
                              LeastSoundManning, GreatestSoundManning),
                  "", m_count);
    const auto report = [&summary](const CDoubtful& doubtful, const std::string& what) {
        if (doubtful.m_count > 0)
            summary.Count(what, doubtful.m_first, doubtful.m_count);
    };
    report(m_outside, fmt::format("conduits whose Manning's n is outside {} to {}: set PIPE_ROUGHNESS of them",
                                  LeastSoundManning, GreatestSoundManning));
    report(m_tooRough, "conduits whose roughness k is above a tenth of their height, which is unusual: the formula for "
                       "pipes calculates too little flow in them");
    report(m_limited, fmt::format("conduits whose roughness k was limited to {:.0f} mm", Greatest));
}

} // namespace OLMGis::ProjectIo
