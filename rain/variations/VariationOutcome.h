// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace Rain {

/// What the section below takes from one combination of a section: all that a search keeps of it.
struct CVariationOutcome {
    double m_upstreamTime = 0.0;     ///< min
    double m_flowTime = 0.0;         ///< min
    double m_inletTime = 0.0;        ///< min
    double m_carrierTime = 0.0;      ///< min, of the carrier sections directly upstream and this one
    double m_takenCarrierTime = 0.0; ///< min, the same of the section above, as far as it was built on one
    double m_totalArea = 0.0;        ///< ha
    bool m_isComputed = false;       ///< false where the walk never comes to the section, as below equal names
};

// A line of n sections has n² / 2 combinations: what one of them takes decides how long a line may be.
static_assert(sizeof(CVariationOutcome) < 64);

} // namespace Rain
