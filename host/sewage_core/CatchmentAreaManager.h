// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

namespace OLMGis::Sewage {

/// Areas and densities of the catchments that drain to a section. One per project context. Sums run in the order in
/// which the catchments were entered; a catchment of several kinds counts in full for each. A null section gives 0 and
/// changes nothing. Cost of each call: the catchments of the section.
class CCatchmentAreaManager {
public:
    static CCatchmentAreaManager* Instance();

    /// Mark of an absent density.
    static constexpr double NoDensity = -1000000.0;

    /// Sum of the areas (ha) of the section's catchments of a kind (see enmCatchmentKind). Without one area is not
    /// changed and the result is 0, else 1.
    int GetCATotalArea(const boost::shared_ptr<Topology::CSection>& section, double& area, int kind) const;

    /// Mean population density (inhabitants/ha) of the section's household catchments that have one, weighted by area;
    /// NoDensity when there is none or their areas sum to 0. 1 when there is a density, else 0.
    int GetCAAverageDensityInhab(const boost::shared_ptr<Topology::CSection>& section, double& density) const;

    /// Contributing area (ha): sum of area times runoff coefficient over the section's rain catchments; a catchment
    /// without a coefficient counts in full. Without a catchment area is not changed and the result is 0, else 1.
    int GetCATotalCorectedArea(const boost::shared_ptr<Topology::CSection>& section, double& area) const;
};

} // namespace OLMGis::Sewage
